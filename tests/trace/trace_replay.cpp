#include "tests/trace/trace_replay.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <stdexcept>
#include <utility>

#include "credentials/cls_credential.h"
#include "dircodes/cls_dir_code.h"
#include "frame/host.h"
#include "frame/runtime_error.h"
#include "reports/cls_credential_report.h"
#include "reports/cls_dir_code_report.h"
#include "tests/trace/trace_reader.h"
#include "trace/traced_call.h"
#include "trace/traced_host.h"
#include "trace/tracer.h"

namespace qortest {

namespace {

using qorcred::Arguments;
using qorcred::InvokeKind;
using qorcred::ObjectRef;
using qorcred::Value;

class Replay;

/// Whatever the trace calls by one name. It may stand for an object that a controller has made.
class ScriptedObject final : public qorcred::Object {
 public:
  explicit ScriptedObject(Replay& replay) : replay_(replay) {}

  void StandFor(ObjectRef object) { object_ = std::move(object); }
  [[nodiscard]] const qorcred::Object* object() const { return object_.get(); }

  Value Invoke(std::string_view member, InvokeKind kind, Arguments arguments) override;

 private:
  Replay& replay_;
  ObjectRef object_;
};

class Replay : public qorcred::Host {
 public:
  Replay() = default;
  Replay(const Replay&) = delete;
  Replay& operator=(const Replay&) = delete;

  void Run(const std::vector<TracedLine>& trace) {
    for (const TracedLine& line : trace) RunLine(line);
  }

  /// The next answer for an object's call; writes what the call changed into `arguments`.
  Value Answer(InvokeKind kind, Arguments arguments);

  ObjectRef CreateComponent(std::string_view) override { return ObjectIn(AnswerOf(Next())); }
  qorcred::MessageButton ShowMessage(std::string_view, qorcred::MessageStyle,
                                     std::string_view) override {
    return static_cast<qorcred::MessageButton>(*AnswerOf(Next()).As<std::int32_t>());
  }
  qorcred::Date Now() override { return *AnswerOf(Next()).As<qorcred::Date>(); }
  void LetEventsRun() override { (void)AnswerOf(Next()); }
  void ReportFailure(std::string_view, const qorcred::RuntimeError&) noexcept override {
    Frame& frame = frames_.back();
    while (frame.next < frame.lines->size() &&
           (*frame.lines)[frame.next].head.starts_with("Release ")) {
      ++frame.next;
    }
    if (frame.next < frame.lines->size()) ++frame.next;
  }
  std::string DateText(qorcred::Date) override { return ReadText(Next().result); }
  std::vector<std::uint8_t> TextToAnsi(std::string_view) override {
    const std::string bytes = ReadBytes(Next().result);
    return {bytes.begin(), bytes.end()};
  }
  std::string AnsiToText(std::span<const std::uint8_t>) override { return ReadText(Next().result); }

 protected:
  ~Replay() override = default;

  // The controllers call their host to the end: they have to go before it.
  void DropControllers() {
    controllers_.clear();
    objects_.clear();
  }

 private:
  // What the replay does with the controllers, and with what it comes across.
  virtual void NoteHostsOwn(const TracedLine& line) = 0;
  virtual std::unique_ptr<qorcred::Controller> Make(std::string_view className) = 0;
  virtual Value RunOn(qorcred::Controller& controller, const qorcred::Member& member,
                      const std::string& name, InvokeKind kind, std::vector<Value>& arguments) = 0;
  virtual void Release(const TracedLine& line, std::unique_ptr<qorcred::Controller> controller) = 0;
  virtual void EndOperation(const TracedLine& line, bool hasAskedForAll) = 0;

  struct Frame {
    const std::vector<TracedLine>* lines;
    std::size_t next = 0;
    bool asksForMore = false;
  };
  static ObjectRef ObjectIn(const Value& value) { return *value.As<ObjectRef>(); }

  /// The host's next line in the operation that runs; what it is in between is no question to it.
  const TracedLine& Next();
  Value AnswerOf(const TracedLine& line);
  Value Read(std::string_view text) {
    return ReadValue(text, [this](std::string_view name) { return Scripted(name); });
  }
  std::shared_ptr<ScriptedObject> Scripted(std::string_view name);
  /// Objects that a controller has made get the names that the trace has for them.
  void Learn(std::string_view text, const Value& value);

  void RunLine(const TracedLine& line);
  void RunMember(const TracedLine& line);
  [[nodiscard]] static bool HasAskedForAll(const Frame& frame);

  std::vector<Frame> frames_;
  std::map<std::string, std::shared_ptr<ScriptedObject>, std::less<>> objects_;
  std::map<std::string, std::unique_ptr<qorcred::Controller>, std::less<>> controllers_;
};

Value ScriptedObject::Invoke(std::string_view, InvokeKind kind, Arguments arguments) {
  return replay_.Answer(kind, arguments);
}

std::shared_ptr<ScriptedObject> Replay::Scripted(std::string_view name) {
  auto& object = objects_[std::string(name)];
  if (object == nullptr) object = std::make_shared<ScriptedObject>(*this);
  return object;
}

void Replay::Learn(std::string_view text, const Value& value) {
  const ObjectRef* object = value.As<ObjectRef>();
  if (object == nullptr || *object == nullptr || text.find('@') == std::string_view::npos) return;
  if (dynamic_cast<const ScriptedObject*>(object->get()) == nullptr) {
    Scripted(text)->StandFor(*object);
  }
}

const TracedLine& Replay::Next() {
  Frame& frame = frames_.back();
  while (frame.next < frame.lines->size()) {
    const TracedLine& line = (*frame.lines)[frame.next++];
    if (!line.head.starts_with("Release ")) return line;
  }
  frame.asksForMore = true;
  throw qorcred::RuntimeError(qorcred::ErrorNumber::kInternal, "The trace has no further call");
}

Value Replay::AnswerOf(const TracedLine& line) {
  for (const TracedLine& inner : line.inner) RunLine(inner);
  if (!line.failure.empty()) {
    const std::size_t blank = line.failure.find(' ');
    throw qorcred::RuntimeError(
        static_cast<qorcred::ErrorNumber>(std::stoi(line.failure.substr(0, blank))),
        ReadText(std::string_view(line.failure).substr(blank + 1)));
  }
  return line.result.empty() ? Value() : Read(line.result);
}

/// The items between the outermost parentheses of a call.
std::vector<std::string_view> ArgumentsIn(std::string_view head) {
  const std::size_t open = FindOutsideTexts(head, "(");
  if (open == std::string_view::npos) return {};
  const std::size_t close = head.rfind(')');
  return ListItems(head.substr(open + 1, close - open - 1));
}

Value Replay::Answer(InvokeKind kind, Arguments arguments) {
  const TracedLine& line = Next();
  const std::vector<std::string_view> told = ArgumentsIn(line.head);
  for (std::size_t at = 0; at < told.size() && at < arguments.size(); ++at) {
    Learn(NamedItem(told[at]).second, arguments[at]);
  }
  if (kind == InvokeKind::kPut && !arguments.empty()) {
    const std::size_t put = FindOutsideTexts(line.head, " = ");
    if (put != std::string_view::npos) {
      Learn(std::string_view(line.head).substr(put + 3), arguments.back());
    }
  }
  const auto writeOuts = [&] {
    for (const std::string_view item : ListItems(line.outs)) {
      const auto [name, text] = NamedItem(item);
      for (std::size_t at = 0; at < arguments.size(); ++at) {
        const bool isMeant = name == std::to_string(at + 1) ||
                             (at < told.size() && NamedItem(told[at]).first == name);
        if (isMeant) arguments[at] = Read(text);
      }
    }
  };
  try {
    Value result = AnswerOf(line);
    writeOuts();
    return result;
  } catch (const qorcred::RuntimeError&) {
    writeOuts();
    throw;
  }
}

void Replay::RunLine(const TracedLine& line) {
  if (line.head.starts_with("host ")) {
    NoteHostsOwn(line);
    return;
  }
  frames_.push_back({&line.inner});
  if (line.head.starts_with("new ")) {
    const std::string name = line.head.substr(4);
    controllers_[name] = Make(std::string_view(name).substr(0, name.find('@')));
  } else if (line.head.starts_with("Release ")) {
    const auto found = controllers_.find(line.head.substr(8));
    if (found != controllers_.end()) {
      std::unique_ptr<qorcred::Controller> released = std::move(found->second);
      controllers_.erase(found);
      Release(line, std::move(released));
    }
  } else {
    RunMember(line);
  }
  const bool hasAskedForAll = HasAskedForAll(frames_.back());
  frames_.pop_back();
  EndOperation(line, hasAskedForAll);
}

bool Replay::HasAskedForAll(const Frame& frame) {
  for (std::size_t at = frame.next; at < frame.lines->size(); ++at) {
    const std::string& head = (*frame.lines)[at].head;
    if (!head.starts_with("Release ") && !head.starts_with("host ")) return false;
  }
  return !frame.asksForMore;
}

void Replay::RunMember(const TracedLine& line) {
  const std::string_view head = line.head;
  const std::size_t point = head.find('.');
  const std::string name(head.substr(0, point));
  const std::size_t end = head.find_first_of("( ", point);
  const auto found = controllers_.find(name);
  const qorcred::Member* member =
      found == controllers_.end()
          ? nullptr
          : FindMember(found->second->Members(), head.substr(point + 1, end - point - 1));
  if (member == nullptr) {
    throw std::runtime_error("line " + std::to_string(line.number) +
                             " is no operation of a controller: " + line.head);
  }
  InvokeKind kind = InvokeKind::kGet;
  std::vector<std::string_view> told;
  if (member->kind == qorcred::MemberKind::kOperation) {
    kind = InvokeKind::kCall;
    told = ArgumentsIn(head);
  } else if (const std::size_t put = head.find(" = "); put != std::string_view::npos) {
    kind = InvokeKind::kPut;
    told = {head.substr(put + 3)};
  }
  std::vector<Value> arguments;
  for (const std::string_view item : told) arguments.push_back(Read(NamedItem(item).second));
  try {
    const Value result = RunOn(*found->second, *member, name, kind, arguments);
    Learn(line.result, result);
  } catch (const qorcred::RuntimeError&) {
    // It stands in the trace.
  }
  for (const std::string_view item : ListItems(line.outs)) {
    const auto [outName, text] = NamedItem(item);
    for (std::size_t at = 0; at < arguments.size(); ++at) {
      if (NamedItem(told[at]).first == outName) Learn(text, arguments[at]);
    }
  }
}

/// The controllers of today, traced anew.
class TracedReplay final : public Replay {
 public:
  TracedReplay()
      : tracer_(std::make_shared<qorcred::trace::Tracer>(
            [this](std::string_view line) { lines_.emplace_back(line); },
            [](const qorcred::Object& object) -> const void* {
              const auto* scripted = dynamic_cast<const ScriptedObject*>(&object);
              return scripted == nullptr ? nullptr : scripted->object();
            })),
        host_(*this, tracer_) {}
  ~TracedReplay() override { DropControllers(); }

  std::vector<std::string> TakeLines() { return std::move(lines_); }

 private:
  void NoteHostsOwn(const TracedLine& line) override {
    tracer_->Note(line.head + (line.result.empty() ? "" : " -> " + line.result) +
                  (line.failure.empty() ? "" : " ! " + line.failure));
  }

  std::unique_ptr<qorcred::Controller> Make(std::string_view className) override {
    tracer_->Begin("new " + tracer_->NewName(className));
    std::unique_ptr<qorcred::Controller> made = MakeByName(className);
    tracer_->End("");
    return made;
  }

  std::unique_ptr<qorcred::Controller> MakeByName(std::string_view className) {
    if (className == "clsCredential") return std::make_unique<qorcred::clsCredential>(host_);
    if (className == "clsDirCode") return std::make_unique<qorcred::clsDirCode>(host_);
    if (className == "clsDirCodeReport") return std::make_unique<qorcred::clsDirCodeReport>(host_);
    if (className == "clsCredentialReport") {
      return std::make_unique<qorcred::clsCredentialReport>(host_);
    }
    throw std::runtime_error("no class of controllers: " + std::string(className));
  }

  Value RunOn(qorcred::Controller& controller, const qorcred::Member& member,
              const std::string& name, InvokeKind kind, std::vector<Value>& arguments) override {
    return RunTraced(*tracer_, name, controller, member, kind, arguments);
  }

  void Release(const TracedLine& line, std::unique_ptr<qorcred::Controller> controller) override {
    tracer_->Begin(line.head);
    controller.reset();
    tracer_->End("");
  }

  // What is other than it was stands in the new trace.
  void EndOperation(const TracedLine&, bool) override {}

  std::vector<std::string> lines_;
  std::shared_ptr<qorcred::trace::Tracer> tracer_;
  qorcred::trace::TracedHost host_;
};

/// Somebody's own controllers.
class UntracedReplay final : public Replay {
 public:
  explicit UntracedReplay(const ControllerMaker& make) : make_(make) {}
  ~UntracedReplay() override { DropControllers(); }

 private:
  void NoteHostsOwn(const TracedLine&) override {}
  std::unique_ptr<qorcred::Controller> Make(std::string_view className) override {
    return make_(className, *this);
  }
  Value RunOn(qorcred::Controller& controller, const qorcred::Member& member, const std::string&,
              InvokeKind kind, std::vector<Value>& arguments) override {
    return controller.Invoke(member.name, kind, arguments);
  }
  void Release(const TracedLine&, std::unique_ptr<qorcred::Controller> controller) override {
    controller.reset();
  }
  void EndOperation(const TracedLine& line, bool hasAskedForAll) override {
    if (!hasAskedForAll) {
      throw std::runtime_error("line " + std::to_string(line.number) +
                               " asks its host for other things than it did: " + line.head);
    }
  }

  const ControllerMaker& make_;
};

std::vector<std::string> TracedReplayOf(const std::vector<TracedLine>& read) {
  TracedReplay replay;
  replay.Run(read);
  return replay.TakeLines();
}

std::string Difference(const std::vector<std::string>& trace,
                       const std::vector<std::string>& replayed) {
  const auto [was, is] =
      std::mismatch(trace.begin(), trace.end(), replayed.begin(), replayed.end());
  if (was == trace.end() && is == replayed.end()) return {};
  return "line " + std::to_string(was - trace.begin() + 1) + " of " + std::to_string(trace.size()) +
         " was\n" + (was == trace.end() ? "(the end)" : *was) + "\nand is\n" +
         (is == replayed.end() ? "(the end)" : *is);
}

}  // namespace

std::vector<std::string> Replayed(const std::vector<std::string>& trace) {
  return TracedReplayOf(ReadTrace(trace));
}

std::string DifferenceInReplay(const std::vector<std::string>& trace) {
  return Difference(trace, Replayed(trace));
}

void ReplayOn(const ControllerMaker& make, const std::vector<std::string>& trace) {
  UntracedReplay(make).Run(ReadTrace(trace));
}

std::string DifferenceInReplays(const ControllerMaker& make,
                                const std::vector<std::string>& trace) {
  const std::vector<TracedLine> read = ReadTrace(trace);
  UntracedReplay(make).Run(read);
  return Difference(trace, TracedReplayOf(read));
}

}  // namespace qortest
