#include "com/failures.h"

#include <array>
#include <string>

#include "com/ownership.h"
#include "com/text.h"

namespace qorcred::com {

namespace {

constexpr int kLastNumber = 0xFFFF;

// "Automation error": what an object raised without saying what.
constexpr int kUnnumbered = 440;

HRESULT CodeOfNumber(int number) noexcept {
  return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number);
}

// The number behind a code; the code itself when it has none.
int NumberOf(HRESULT code) noexcept {
  return HRESULT_FACILITY(code) == FACILITY_CONTROL ? HRESULT_CODE(code) : static_cast<int>(code);
}

std::string SystemText(HRESULT code) {
  std::array<wchar_t, 512> buffer{};
  DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                static_cast<DWORD>(code), 0, buffer.data(),
                                static_cast<DWORD>(buffer.size()), nullptr);
  while (length > 0 && buffer[length - 1] <= L' ') --length;
  if (length == 0) return "Automation error";
  return ToUtf8({buffer.data(), length});
}

// What a number means, or the system's text for a code that is none.
std::string TextOf(int number, HRESULT code) {
  return number > 0 ? std::string(DescriptionOf(static_cast<ErrorNumber>(number)))
                    : SystemText(code);
}

RuntimeError Raised(EXCEPINFO& info) {
  if (info.pfnDeferredFillIn != nullptr) info.pfnDeferredFillIn(&info);
  int number = info.wCode != 0 ? info.wCode : NumberOf(info.scode);
  if (number == 0) number = kUnnumbered;
  std::string text = FromBstr(info.bstrDescription);
  if (text.empty()) text = TextOf(number, info.scode);
  return {static_cast<ErrorNumber>(number), std::move(text)};
}

void LeaveErrorObject(std::wstring source, std::wstring text) {
  SetErrorInfo(0, nullptr);
  ComPtr<ICreateErrorInfo> creation;
  if (FAILED(CreateErrorInfo(creation.Receive()))) return;
  creation->SetGUID(IID_IDispatch);
  creation->SetSource(source.data());
  creation->SetDescription(text.data());
  ComPtr<IErrorInfo> error;
  if (SUCCEEDED(creation->QueryInterface(IID_IErrorInfo, error.ReceiveVoid()))) {
    SetErrorInfo(0, error.get());
  }
}

}  // namespace

HRESULT CodeOf(const RuntimeError& failure) noexcept {
  const int number = static_cast<int>(failure.number());
  return number > 0 && number <= kLastNumber ? CodeOfNumber(number) : static_cast<HRESULT>(number);
}

RuntimeError FailureFrom(HRESULT result, EXCEPINFO& info) {
  switch (result) {
    case DISP_E_EXCEPTION:
      return Raised(info);
    case DISP_E_UNKNOWNNAME:
    case DISP_E_MEMBERNOTFOUND:
      return RuntimeError(ErrorNumber::kUnknownMember);
    case DISP_E_TYPEMISMATCH:
    case DISP_E_BADVARTYPE:
      return RuntimeError(ErrorNumber::kTypeMismatch);
    case DISP_E_OVERFLOW:
      return RuntimeError(ErrorNumber::kOverflow);
    case DISP_E_BADPARAMCOUNT:
      return RuntimeError(ErrorNumber::kWrongArgumentCount);
    case DISP_E_PARAMNOTFOUND:
      return RuntimeError(ErrorNumber::kUnknownArgument);
    case DISP_E_PARAMNOTOPTIONAL:
      return RuntimeError(ErrorNumber::kArgumentNotOptional);
    case DISP_E_BADINDEX:
      return RuntimeError(ErrorNumber::kIndexOutOfRange);
    case E_OUTOFMEMORY:
      return RuntimeError(ErrorNumber::kOutOfMemory);
    default:
      return {static_cast<ErrorNumber>(NumberOf(result)), TextOf(NumberOf(result), result)};
  }
}

HRESULT TellCurrent(const wchar_t* source, EXCEPINFO* info) noexcept {
  EXCEPINFO told{};
  told.scode = CodeOfNumber(static_cast<int>(ErrorNumber::kOutOfMemory));
  try {
    const RuntimeError failure = CurrentFailure();
    told.scode = CodeOf(failure);
    const std::wstring text = ToWide(failure.description());
    LeaveErrorObject(source, text);
    told.bstrSource = SysAllocString(source);
    told.bstrDescription = SysAllocString(text.c_str());
  } catch (...) {
    // Out of memory: the code alone has to do.
    SetErrorInfo(0, nullptr);
  }
  if (info != nullptr) {
    *info = told;
  } else {
    SysFreeString(told.bstrSource);
    SysFreeString(told.bstrDescription);
  }
  return DISP_E_EXCEPTION;
}

HRESULT Refuse(HRESULT code) noexcept {
  SetErrorInfo(0, nullptr);
  return code;
}

}  // namespace qorcred::com
