#include "tests/com/fuzz/episode.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>
#include <span>

#include "com/text.h"
#include "credentials/cls_credential.h"
#include "dircodes/cls_dir_code.h"
#include "reports/cls_credential_report.h"
#include "reports/cls_dir_code_report.h"
#include "tests/com/fuzz/odd_arguments.h"
#include "tests/com/fuzz/planted.h"
#include "tests/com/support/component.h"

namespace qortest {

using qorcred::Member;
using qorcred::MemberKind;
using qorcred::ValueType;
using qorcred::com::OwnedExcepInfo;

namespace {

struct FuzzedClass {
  const wchar_t* programmaticId;
  std::span<const Member> (*members)();
};

constexpr std::array<FuzzedClass, 4> kClasses{
    {{L"qorCred.clsCredential", qorcred::clsCredential::MemberTable},
     {L"qorCred.clsDirCode", qorcred::clsDirCode::MemberTable},
     {L"qorCred.clsDirCodeReport", qorcred::clsDirCodeReport::MemberTable},
     {L"qorCred.clsCredentialReport", qorcred::clsCredentialReport::MemberTable}}};

constexpr std::array kComponents{L"qorDBI.clsDBManager", L"qorSPS.clsSendProgSteps",
                                 L"qorTent.clsTenant", L"qorAppln.clsApplication",
                                 L"qorCommn.clsConnectionManager"};

// The codes that the component ends a call with, and no other.
constexpr std::array<HRESULT, 10> kCodes{S_OK,
                                         DISP_E_EXCEPTION,
                                         DISP_E_TYPEMISMATCH,
                                         DISP_E_OVERFLOW,
                                         DISP_E_BADPARAMCOUNT,
                                         DISP_E_PARAMNOTFOUND,
                                         DISP_E_PARAMNOTOPTIONAL,
                                         DISP_E_MEMBERNOTFOUND,
                                         DISP_E_UNKNOWNINTERFACE,
                                         E_INVALIDARG};

// Codes that say that nothing was done, whatever the arguments hold.
constexpr std::array<HRESULT, 4> kRefusals{DISP_E_BADPARAMCOUNT, DISP_E_MEMBERNOTFOUND,
                                           DISP_E_UNKNOWNINTERFACE, E_INVALIDARG};

constexpr std::array<WORD, 10> kFlags{DISPATCH_METHOD,
                                      DISPATCH_PROPERTYGET,
                                      DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                                      DISPATCH_PROPERTYPUT,
                                      DISPATCH_PROPERTYPUTREF,
                                      DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF,
                                      0,
                                      0xFFFF,
                                      DISPATCH_METHOD | DISPATCH_PROPERTYPUT,
                                      0x4000};

template <typename Items, typename Item>
bool Contains(const Items& items, const Item& item) {
  return std::find(items.begin(), items.end(), item) != items.end();
}

// Fixed, so that it can be read when nothing else of the process is sound.
std::array<char, 400> current{};

void SetCurrent(const std::string& text) {
  std::snprintf(current.data(), current.size(), "%s", text.c_str());
}

/// One call as it is made.
struct Shape {
  const Member* member = nullptr;  ///< null for an identifier that no member has
  DISPID id = DISPID_UNKNOWN;
  WORD flags = 0;
  IID iid = IID_NULL;
  bool wantsResult = true;
  bool wantsInfo = true;
};

struct Ended {
  HRESULT code = S_OK;
  VARIANT result{};
  UINT badArgument = 0;
};

// The type in which a result of that type comes.
VARTYPE TypeOfResult(ValueType type) {
  switch (type) {
    case ValueType::kBoolean:
      return VT_BOOL;
    case ValueType::kLong:
      return VT_I4;
    case ValueType::kString:
      return VT_BSTR;
    case ValueType::kObject:
      return VT_DISPATCH;
    default:
      return VT_EMPTY;
  }
}

// What a number property holds after a put of a number, by arithmetic of its own; nothing for a
// value that needs more than arithmetic, `fits` false for a number that no 32 bits hold.
struct ExpectedNumber {
  bool fits = false;
  LONG number = 0;
};

std::optional<ExpectedNumber> NumberPutBy(const VARIANT& value) {
  double number = 0;
  switch (V_VT(&value)) {
    case VT_I2:
      number = V_I2(&value);
      break;
    case VT_I4:
      number = V_I4(&value);
      break;
    case VT_UI4:
      number = V_UI4(&value);
      break;
    case VT_BOOL:
      number = V_BOOL(&value) == 0 ? 0 : -1;
      break;
    case VT_R8:
      number = V_R8(&value);
      break;
    default:
      return std::nullopt;
  }
  if (std::isnan(number)) return std::nullopt;
  const double whole = std::nearbyint(number);  // half to even
  constexpr double kLeast = std::numeric_limits<LONG>::min();
  constexpr double kMost = std::numeric_limits<LONG>::max();
  if (whole < kLeast || whole > kMost) return ExpectedNumber{};
  return ExpectedNumber{true, static_cast<LONG>(whole)};
}

// Every surrogate without its other half becomes U+FFFD.
std::wstring Whole(std::wstring text) {
  const auto isHigh = [&](std::size_t at) { return text[at] >= 0xD800 && text[at] < 0xDC00; };
  const auto isLow = [&](std::size_t at) { return text[at] >= 0xDC00 && text[at] < 0xE000; };
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (isHigh(at) && at + 1 < text.size() && isLow(at + 1)) {
      ++at;
    } else if (isHigh(at) || isLow(at)) {
      text[at] = 0xFFFD;
    }
  }
  return text;
}

}  // namespace

class Episodes::Episode {
 public:
  Episode(Episodes& all, Random& random)
      : all_(all),
        random_(random),
        host_(random),
        class_(kClasses.at(random.Below(kClasses.size()))) {
    all_.host_ = &host_;
    controller_ = WithDefect(CreateObject(class_.programmaticId), all_.defect_);
  }
  ~Episode() {
    controller_ = {};
    all_.hostCalls_ += hostCalls_;
    all_.host_ = nullptr;
  }
  Episode(const Episode&) = delete;
  Episode& operator=(const Episode&) = delete;

  std::string Run() {
    if (!controller_) return "the controller could not be created";
    const std::size_t calls = 2 + random_.Below(12);
    for (std::size_t at = 0; at < calls; ++at) {
      std::string wrong = at == 0 ? PutScreen() : random_.Below(12) == 0 ? AskNames() : CallOne();
      if (!wrong.empty()) return wrong + ": " + Current();
    }
    return {};
  }

 private:
  [[nodiscard]] std::span<const Member> Members() const { return class_.members(); }

  // Nearly every operation needs it: without it all calls would end at their beginning.
  std::string PutScreen() {
    const Member& screen = Members()[0];
    OddArguments arguments(host_.values());
    arguments.MakePut(screen.type, true);
    return Make({.member = &screen, .id = screen.id, .flags = DISPATCH_PROPERTYPUT}, arguments);
  }

  Shape SomeShape() {
    Shape shape;
    const Member& member = Members()[random_.Below(Members().size())];
    shape.member = &member;
    shape.id = member.id;
    const bool isProperty = member.kind == MemberKind::kProperty;
    shape.flags = !isProperty             ? DISPATCH_METHOD
                  : random_.Below(3) == 0 ? DISPATCH_PROPERTYGET
                                          : DISPATCH_PROPERTYPUT;
    if (random_.Below(8) == 0) shape.flags = kFlags.at(random_.Below(kFlags.size()));
    if (random_.Below(15) == 0) {
      constexpr std::array<DISPID, 6> kIds{0, -1, 13, 99, DISPID_PROPERTYPUT, 0x7FFFFFFF};
      shape.id = kIds.at(random_.Below(kIds.size()));
      shape.member = nullptr;
    }
    if (random_.Below(40) == 0) shape.iid = IID_IDispatch;
    shape.wantsResult = random_.Below(6) != 0;
    shape.wantsInfo = random_.Below(6) != 0;
    return shape;
  }

  std::string CallOne() {
    const Shape shape = SomeShape();
    OddArguments arguments(host_.values());
    const bool isSound = random_.Below(3) != 0;
    const bool isPut = (shape.flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    const bool isGet = shape.flags == DISPATCH_PROPERTYGET;
    if (shape.member == nullptr || (!isSound && random_.Below(2) == 0)) {
      arguments.MakeOdd(shape.member == nullptr ? std::span<const qorcred::Parameter>()
                                                : shape.member->parameters);
    } else if (shape.member->kind == MemberKind::kOperation) {
      if (isSound) {
        arguments.MakeSound(shape.member->parameters);
      } else {
        arguments.MakeOdd(shape.member->parameters);
      }
    } else if (isPut && !isGet) {
      arguments.MakePut(shape.member->type, isSound);
    }
    return Make(shape, arguments);
  }

  std::string Make(const Shape& shape, OddArguments& arguments) {
    arguments.Freeze();
    if (random_.Below(60) == 0) arguments.Break();
    SetCurrent(Described(shape, arguments));
    host_.Begin();
    Ended ended;
    OwnedExcepInfo info;
    const bool isNull = arguments.isBroken() && random_.Below(4) == 0;
    ended.code = controller_->Invoke(shape.id, shape.iid, LOCALE_USER_DEFAULT, shape.flags,
                                     isNull ? nullptr : arguments.parameters(),
                                     shape.wantsResult ? &ended.result : nullptr,
                                     shape.wantsInfo ? &info : nullptr, &ended.badArgument);
    ++all_.calls_;
    ++all_.codes_[ended.code];
    hostCalls_ += host_.calls();
    if (all_.keepsEndings_) {
      all_.endings_.insert(Ending(shape, ended));
      KeepArrays(arguments, ended);
    }
    std::string wrong = Judge(shape, arguments, ended, info);
    if (wrong.empty() && ended.code == S_OK) wrong = JudgeContent(shape, arguments, ended);
    if (wrong.empty() && ended.code != S_OK) wrong = JudgeRefusal(shape, arguments, ended);
    Drop(ended.result);
    if (wrong.empty()) return {};
    std::array<char, 16> code{};
    std::snprintf(code.data(), code.size(), "%08lX", static_cast<unsigned long>(ended.code));
    return wrong + " (code " + code.data() + ")";
  }

  [[nodiscard]] std::string Described(const Shape& shape, const OddArguments& arguments) const {
    return qorcred::com::ToUtf8(class_.programmaticId) + "." +
           (shape.member == nullptr ? "(no member)" : std::string(shape.member->name)) + ", id " +
           std::to_string(shape.id) + ", flags " + std::to_string(shape.flags) + ", types " +
           arguments.Types() + (arguments.isBroken() ? ", broken" : "");
  }

  [[nodiscard]] std::string Ending(const Shape& shape, const Ended& ended) const {
    std::array<char, 24> code{};
    std::snprintf(code.data(), code.size(), " %08lX%s", static_cast<unsigned long>(ended.code),
                  host_.calls() == 0 ? "" : " calls");
    return qorcred::com::ToUtf8(class_.programmaticId) + "." +
           (shape.member == nullptr ? "(no member)" : std::string(shape.member->name)) +
           code.data();
  }

  // Which arrays were taken, and which were refused as such.
  void KeepArrays(const OddArguments& arguments, const Ended& ended) const {
    if (ended.code != S_OK && ended.code != DISP_E_TYPEMISMATCH) return;
    for (const ArrayState& array : arguments.arrays()) {
      for (const std::string& feature : array.features()) {
        all_.endings_.insert(feature + (ended.code == S_OK ? " taken" : " refused"));
      }
    }
  }

  // What holds for every call.
  std::string Judge(const Shape& shape, const OddArguments& arguments, const Ended& ended,
                    const EXCEPINFO& info) const {
    if (!Contains(kCodes, ended.code)) return "the call ended with a code that nobody expects";
    std::string damage = arguments.Damage();
    if (!damage.empty()) return damage;
    if (arguments.isBroken() && ended.code == S_OK) return "a broken structure was taken";
    if (Contains(kRefusals, ended.code) && host_.calls() != 0) {
      return "a refused call has called the host";
    }
    const bool isTold = info.scode != 0 || info.bstrSource != nullptr;
    const bool hasRaised = ended.code == DISP_E_EXCEPTION;
    if (shape.wantsInfo && isTold != hasRaised) return "EXCEPINFO does not fit the code";
    if (hasRaised && shape.wantsInfo) {
      if (SUCCEEDED(info.scode)) return "a failure was told with a code that is none";
      if (std::wstring(info.bstrSource, SysStringLen(info.bstrSource)) != class_.programmaticId) {
        return "a failure was told with another source";
      }
    }
    // Behind an operation only what is handed back may be refused, and its result stands.
    const bool mayBeDone =
        ended.code == DISP_E_TYPEMISMATCH || ended.code == DISP_E_OVERFLOW || ended.code == S_OK;
    if (!mayBeDone && V_VT(&ended.result) != VT_EMPTY) return "a failed call gave a result";
    if (!mayBeDone && arguments.AreWritten()) return "a failed call has written to an argument";
    return {};
  }

  std::string JudgeRefusal(const Shape& shape, OddArguments& arguments, const Ended& ended) {
    const bool names = ended.code == DISP_E_TYPEMISMATCH || ended.code == DISP_E_OVERFLOW ||
                       ended.code == DISP_E_PARAMNOTFOUND;
    if (names && ended.badArgument >= arguments.parameters()->cArgs) {
      return "the refused argument is none of the client's";
    }
    // A number that fits must not be refused.
    const auto expected = ExpectedOf(shape, arguments);
    if (expected.has_value() && expected->fits) return "a number that fits was refused";
    return {};
  }

  std::string JudgeContent(const Shape& shape, OddArguments& arguments, const Ended& ended) {
    if (shape.member == nullptr) return "an identifier without a member was taken";
    const bool isPut = IsPut(shape);
    if (shape.wantsResult) {
      const VARTYPE type = isPut ? VARTYPE{VT_EMPTY} : TypeOfResult(shape.member->type);
      if (V_VT(&ended.result) != type) return "the result has another type";
      if (type == VT_BOOL && V_BOOL(&ended.result) != 0 && V_BOOL(&ended.result) != -1) {
        return "the result is neither True nor False";
      }
    }
    return isPut ? ReadBack(shape, arguments) : std::string();
  }

  static bool IsPut(const Shape& shape) {
    return shape.member != nullptr && shape.member->kind == MemberKind::kProperty &&
           (shape.flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  }

  // What a sound put of a number must do.
  std::optional<ExpectedNumber> ExpectedOf(const Shape& shape, OddArguments& arguments) const {
    if (!IsPut(shape) || shape.member->type != ValueType::kLong || arguments.isBroken() ||
        arguments.parameters()->cArgs != 1 || !IsEqualIID(shape.iid, IID_NULL)) {
      return std::nullopt;
    }
    return NumberPutBy(arguments.parameters()->rgvarg[0]);
  }

  std::string ReadBack(const Shape& shape, OddArguments& arguments) {
    VARIANT read{};
    DISPPARAMS none{};
    const HRESULT code = controller_->Invoke(shape.id, IID_NULL, LOCALE_USER_DEFAULT,
                                             DISPATCH_PROPERTYGET, &none, &read, nullptr, nullptr);
    if (code != S_OK) return "a property that was put cannot be read";
    const VARIANT& put = arguments.parameters()->rgvarg[0];
    std::string wrong;
    const auto expected = ExpectedOf(shape, arguments);
    if (expected.has_value() && (!expected->fits || V_I4(&read) != expected->number)) {
      wrong = "a number was put, and another one is read";
    } else if (shape.member->type == ValueType::kString && V_VT(&put) == VT_BSTR) {
      const std::wstring text(V_BSTR(&put) == nullptr ? L"" : V_BSTR(&put),
                              SysStringLen(V_BSTR(&put)));
      if (std::wstring(V_BSTR(&read), SysStringLen(V_BSTR(&read))) != Whole(text)) {
        wrong = "a text was put, and another one is read";
      }
    } else if (shape.member->type == ValueType::kObject && V_VT(&put) == VT_DISPATCH &&
               V_DISPATCH(&put) != V_DISPATCH(&read)) {
      wrong = "an object was put, and another one is read";
    }
    Drop(read);
    return wrong;
  }

  std::string AskNames() {
    const Member& member = Members()[random_.Below(Members().size())];
    std::array<std::wstring, 10> texts;
    std::array<LPOLESTR, 10> names{};
    std::array<DISPID, 10> ids{};
    const auto count = static_cast<UINT>(random_.Below(names.size() + 1));
    for (std::size_t at = 0; at < names.size(); ++at) {
      const bool isKnown = at == 0 && random_.Below(3) != 0;
      texts[at] = isKnown ? qorcred::com::ToWide(member.name) : host_.values().Text();
      // A text of this kind ends at its first zero.
      texts[at].resize(std::wcslen(texts[at].c_str()));
      names[at] = random_.Below(30) == 0 ? nullptr : texts[at].data();
    }
    SetCurrent("GetIDsOfNames of " + std::to_string(count) + " names");
    const HRESULT code = controller_->GetIDsOfNames(
        random_.Below(30) == 0 ? IID_IDispatch : IID_NULL,
        random_.Below(30) == 0 ? nullptr : names.data(), count, LOCALE_USER_DEFAULT,
        random_.Below(30) == 0 ? nullptr : ids.data());
    ++all_.calls_;
    constexpr std::array<HRESULT, 4> kNameCodes{S_OK, DISP_E_UNKNOWNNAME, DISP_E_UNKNOWNINTERFACE,
                                                E_INVALIDARG};
    if (!Contains(kNameCodes, code))
      return "asking for names ended with a code that nobody expects";
    if (code == S_OK && ids[0] == DISPID_UNKNOWN) return "a name was found without an identifier";
    return {};
  }

  Episodes& all_;
  Random& random_;
  OddHost host_;
  const FuzzedClass& class_;
  ComPtr<IDispatch> controller_;
  std::size_t hostCalls_ = 0;
};

Episodes::Episodes(std::string_view defect) : defect_(defect) {
  for (const wchar_t* name : kComponents) {
    offered_.push_back(std::make_unique<OfferedComponent>(name, [this] {
      ComPtr<IDispatch> component;
      const bool isMissing = host_ == nullptr || host_->random().Below(50) == 0;
      if (!isMissing) *component.Receive() = host_->NewObject();
      return component;
    }));
  }
}

const char* Episodes::Current() {
  return current.data();
}

std::string Episodes::Run(Random& random) {
  std::string wrong = Episode(*this, random).Run();
  SetCurrent("the end of the episode");
  if (wrong.empty() && OddHost::Alive() != 0) wrong = "somebody still holds an object of the host";
  if (wrong.empty() && CanUnload() != S_OK) wrong = "the component is still in use";
  return wrong;
}

}  // namespace qortest
