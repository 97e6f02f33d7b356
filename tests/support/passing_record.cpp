#include "tests/support/passing_record.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "tests/support/tracing_object.h"

namespace qortest {

using qorcred::Arguments;
using qorcred::InvokeKind;
using qorcred::ObjectRef;
using qorcred::Passing;
using qorcred::Value;

namespace {

using Lines = std::vector<std::string>;

std::string_view WordFor(Passing passing) {
  switch (passing) {
    case Passing::kValue:
      return "value";
    case Passing::kVariable:
      return "variable";
    case Passing::kReadBack:
      return "back";
  }
  return "?";
}

/// Notes its calls and hands them on. A tracing decorator, so that the services find what they know
/// behind it.
class Witness final : public TracingObject {
 public:
  Witness(ObjectRef inner, std::shared_ptr<Lines> lines)
      : TracingObject(std::move(inner), [](std::string_view) {}), lines_(std::move(lines)) {}

  Value Invoke(std::string_view member, InvokeKind kind, Arguments arguments) override {
    const std::string line = std::string(member) + PassingWords(arguments);
    if (std::find(lines_->begin(), lines_->end(), line) == lines_->end()) lines_->push_back(line);
    return Forward(line, member, kind, arguments);
  }

 private:
  std::shared_ptr<Lines> lines_;
};

}  // namespace

std::string PassingWords(const Arguments& arguments) {
  std::string words;
  for (std::size_t at = 0; at < arguments.size(); ++at) {
    words += ' ';
    words += WordFor(arguments.PassingOf(at));
  }
  return words;
}

ObjectRef PassingRecord::Watched(ObjectRef object) const {
  return std::make_shared<Witness>(std::move(object), lines_);
}

std::vector<std::string> PassingRecord::TakeLines() {
  return std::exchange(*lines_, {});
}

}  // namespace qortest
