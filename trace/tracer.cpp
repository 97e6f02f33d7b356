#include "trace/tracer.h"

#include <utility>

#include "trace/traced_object.h"

namespace qorcred::trace {

namespace {

constexpr std::size_t kIndent = 2;

}  // namespace

Tracer::Tracer(TraceSink sink, Identity identity)
    : sink_(std::move(sink)), identity_(std::move(identity)) {}

void Tracer::Write(const std::string& line) {
  if (!sink_) return;
  try {
    sink_(line);
  } catch (...) {
    // A trace that cannot be written changes nothing else.
    sink_ = nullptr;
  }
}

void Tracer::WriteOut() {
  if (!waits_) return;
  waits_ = false;
  Write(waiting_);
}

void Tracer::Begin(std::string call) {
  WriteOut();
  waiting_ = std::string(depth_ * kIndent, ' ') + std::move(call);
  waits_ = true;
  ++depth_;
}

void Tracer::End(std::string_view outcome) {
  --depth_;
  if (waits_) {
    waiting_ += outcome;
    WriteOut();
  } else if (!outcome.empty()) {
    Write(std::string(depth_ * kIndent, ' ').append(outcome.substr(1)));
  }
}

void Tracer::Note(std::string_view line) {
  WriteOut();
  Write(std::string(depth_ * kIndent, ' ').append(line));
}

std::string Tracer::NewName(std::string_view label) {
  return std::string(label) + "@" + std::to_string(++lastNumber_);
}

void Tracer::ForgetTheDead() {
  if (known_.size() < forgetAt_) return;
  std::erase_if(known_, [](const auto& entry) { return entry.second.object.expired(); });
  forgetAt_ = 2 * known_.size() + 256;
}

Tracer::Known& Tracer::KnownAs(const ObjectRef& object, std::string_view label) {
  const void* key = identity_ ? identity_(*object) : nullptr;
  if (key == nullptr) key = object.get();
  ForgetTheDead();
  Known& known = known_[key];
  // Another object may stand where a former one has stood.
  if (known.object.expired()) known = {NewName(label), object, {}};
  return known;
}

std::string Tracer::NameOf(const ObjectRef& object, std::string_view label) {
  return KnownAs(Untraced(object), label).name;
}

std::string Tracer::Spelled(const Value& value, std::string_view label) {
  return SpelledValue(value,
                      [this, label](const ObjectRef& object) { return NameOf(object, label); });
}

ObjectRef Tracer::Traced(const ObjectRef& object, std::string_view label) {
  return Wrapped(object, label, false);
}

ObjectRef Tracer::TracedComponent(const ObjectRef& component, std::string_view label) {
  return Wrapped(component, label, true);
}

ObjectRef Tracer::Wrapped(const ObjectRef& object, std::string_view label, bool tellsRelease) {
  if (object == nullptr || dynamic_cast<const TracedObject*>(object.get()) != nullptr)
    return object;
  Known& known = KnownAs(object, label);
  ObjectRef traced = known.traced.lock();
  if (traced == nullptr) {
    traced = std::make_shared<TracedObject>(shared_from_this(), known.name, object, tellsRelease);
    known.traced = traced;
  }
  return traced;
}

ObjectRef Untraced(const ObjectRef& object) {
  const auto* traced = dynamic_cast<const TracedObject*>(object.get());
  return traced == nullptr ? object : traced->inner();
}

}  // namespace qorcred::trace
