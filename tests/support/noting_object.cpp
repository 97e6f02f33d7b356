#include "tests/support/noting_object.h"

#include <array>
#include <memory>
#include <utility>

#include "frame/manager_operations.h"
#include "tests/support/surface_record.h"

namespace qortest {

using qorcred::Arguments;
using qorcred::InvokeKind;
using qorcred::ObjectRef;
using qorcred::Passing;
using qorcred::SameMember;
using qorcred::Value;

namespace {

SurfaceRecord& Record() {
  return SurfaceRecord::Instance();
}

/// One letter for each argument of a component's member: a variable, one that is read back, a
/// value.
std::string PassingLetters(const Arguments& arguments) {
  std::string letters;
  for (std::size_t at = 0; at < arguments.size(); ++at) {
    const Passing passing = arguments.PassingOf(at);
    letters += passing == Passing::kVariable ? 'V' : passing == Passing::kReadBack ? 'B' : '-';
  }
  return letters;
}

/// Makes arguments bare and puts those back at the end that the receiver left as they were.
class BareArguments {
 public:
  explicit BareArguments(Arguments arguments) : arguments_(arguments) {
    for (std::size_t at = 0; at < arguments_.size(); ++at) {
      const Value given = arguments_[at];
      MakeBare(arguments_[at]);
      if (arguments_[at] != given) replaced_.push_back({at, given, arguments_[at]});
    }
  }
  ~BareArguments() {
    for (const Replaced& replaced : replaced_) {
      if (arguments_[replaced.at] == replaced.bare) arguments_[replaced.at] = replaced.given;
    }
  }
  BareArguments(const BareArguments&) = delete;
  BareArguments& operator=(const BareArguments&) = delete;

 private:
  struct Replaced {
    std::size_t at;
    Value given;
    Value bare;
  };
  Arguments arguments_;
  std::vector<Replaced> replaced_;
};

std::string_view Ending(InvokeKind kind) {
  return kind == InvokeKind::kGet ? " get" : kind == InvokeKind::kPut ? " put" : "";
}

class NotingObject final : public qorcred::Object {
 public:
  NotingObject(ObjectRef inner, std::string_view partName, std::string path)
      : inner_(std::move(inner)), part_(partName), path_(std::move(path)) {}

  [[nodiscard]] const ObjectRef& inner() const { return inner_; }

  Value Invoke(std::string_view member, InvokeKind kind, Arguments arguments) override {
    const bool isFetch = part_ == part::kScreen && path_.empty() && kind != InvokeKind::kPut;
    if (!isFetch) Note(member, kind, arguments);
    const BareArguments bare(arguments);
    Value result = CallInner(member, kind, arguments);
    const ObjectRef* object = result.As<ObjectRef>();
    const bool isObject = object != nullptr && *object != nullptr;
    // Only what comes back tells a control from a variable.
    if (isFetch) {
      if (isObject) {
        Record().Note(part_, member);
      } else {
        Note(member, kind, arguments);
      }
    }
    return isObject ? Value(Part(member, *object)) : result;
  }

 private:
  Value CallInner(std::string_view member, InvokeKind kind, Arguments arguments) const {
    const SurfaceRecord::HostsTurn turn;
    return inner_->Invoke(member, kind, arguments);
  }

  [[nodiscard]] bool IsComponent() const { return part_.find('.') != std::string::npos; }

  void Note(std::string_view member, InvokeKind kind, const Arguments& arguments) const {
    std::string what = path_;
    if (!what.empty() && !member.empty()) what += '.';
    what += member;
    if (IsComponent() || part_ == part::kConnection) {
      what += "(" + PassingLetters(arguments) + ")";
    } else {
      const std::size_t count =
          kind == InvokeKind::kPut && !arguments.empty() ? arguments.size() - 1 : arguments.size();
      if (count > 0 || kind == InvokeKind::kCall) what += "(" + std::string(count, '-') + ")";
    }
    Record().Note(part_, what + std::string(Ending(kind)));
    NoteStatement(member, arguments);
  }

  void NoteStatement(std::string_view member, const Arguments& arguments) const {
    const bool isExecute = part_ == part::kConnection && SameMember(member, "Execute");
    const std::size_t at = isExecute ? 0 : 1;
    if (!isExecute &&
        (!IsComponent() || qorcred::FindManagerOperation(member, arguments.size()) == nullptr)) {
      return;
    }
    const std::string* text = at < arguments.size() ? arguments[at].As<std::string>() : nullptr;
    if (text == nullptr) return;
    const bool isRow = SameMember(member, qorcred::kExecuteDelete.name);
    Record().Note(isRow ? part::kDeletion : part::kStatement, *text);
  }

  [[nodiscard]] ObjectRef Part(std::string_view member, const ObjectRef& object) const {
    if (IsComponent()) return Noted(object, part::kTable);
    if (part_ == part::kGrid && SameMember(member, "NewValueItem")) {
      return Noted(object, part::kValueItem);
    }
    std::string path = path_;
    if (!path.empty() && !member.empty()) path += '.';
    path += member;
    return std::make_shared<NotingObject>(object, part_, std::move(path));
  }

  ObjectRef inner_;
  std::string part_;
  std::string path_;
};

}  // namespace

ObjectRef Noted(ObjectRef object, std::string_view partName) {
  if (object == nullptr) return object;
  return std::make_shared<NotingObject>(std::move(object), partName, std::string());
}

ObjectRef Bare(const ObjectRef& object) {
  const auto* noting = dynamic_cast<const NotingObject*>(object.get());
  return noting == nullptr ? object : noting->inner();
}

void MakeBare(Value& value) {
  const ObjectRef* object = value.As<ObjectRef>();
  if (object != nullptr && *object != nullptr) value = Bare(*object);
}

std::string_view PartOf(std::string_view name) {
  static constexpr std::array<std::pair<std::string_view, std::string_view>, 14> kParts{
      {{"gmobjCredentialScreen", part::kScreen},
       {"mobjDirCodeScreen", part::kScreen},
       {"gfrmTxFilter", part::kScreen},
       {"mfrmConnectionScreen", part::kConnectionScreen},
       {"objConn", part::kConnection},
       {"objCon", part::kConnection},
       {"objGrid", part::kGrid},
       {"objColGrid", part::kTable},
       {"colValueItem", part::kValueItem},
       {"arrXDBDirCode", part::kTable},
       {"arrXDBTx", part::kTable},
       {"arrXDBObj1", part::kTable},
       {"arrXDBObj2", part::kTable},
       {"objDB", "qorDBI.clsDBManager"}}};
  for (const auto& [known, partName] : kParts) {
    if (SameMember(known, name)) return partName;
  }
  return {};
}

ObjectRef NotingHost::CreateComponent(std::string_view programmaticId) {
  Record().Note(part::kCreated, programmaticId);
  const SurfaceRecord::HostsTurn turn;
  return Noted(inner_.CreateComponent(programmaticId), programmaticId);
}

qorcred::MessageButton NotingHost::ShowMessage(std::string_view text, qorcred::MessageStyle style,
                                               std::string_view title) {
  Record().Note(part::kMessage, std::to_string(static_cast<int>(style)) + " " + std::string(text));
  const SurfaceRecord::HostsTurn turn;
  return inner_.ShowMessage(text, style, title);
}

qorcred::Date NotingHost::Now() {
  Record().Note(part::kSurroundings, "Now()");
  const SurfaceRecord::HostsTurn turn;
  return inner_.Now();
}

void NotingHost::LetEventsRun() {
  Record().Note(part::kSurroundings, "LetEventsRun()");
  const SurfaceRecord::HostsTurn turn;
  inner_.LetEventsRun();
}

std::string NotingHost::DateText(qorcred::Date date) {
  Record().Note(part::kSurroundings, "DateText(-)");
  const SurfaceRecord::HostsTurn turn;
  return inner_.DateText(date);
}

std::vector<std::uint8_t> NotingHost::TextToAnsi(std::string_view text) {
  Record().Note(part::kSurroundings, "TextToAnsi(-)");
  const SurfaceRecord::HostsTurn turn;
  return inner_.TextToAnsi(text);
}

std::string NotingHost::AnsiToText(std::span<const std::uint8_t> bytes) {
  Record().Note(part::kSurroundings, "AnsiToText(-)");
  const SurfaceRecord::HostsTurn turn;
  return inner_.AnsiToText(bytes);
}

}  // namespace qortest
