#include "com/windows_host.h"

#include <windows.h>

#include <string>

#include "com/dispatch_object.h"
#include "com/ownership.h"
#include "com/text.h"
#include "frame/date.h"
#include "frame/sql_text.h"
#include "frame/utf8.h"

namespace qorcred::com {

namespace {

[[noreturn]] void RaiseCannotCreate(std::string_view programmaticId) {
  throw RuntimeError(
      ErrorNumber::kCannotCreateComponent,
      Concat(DescriptionOf(ErrorNumber::kCannotCreateComponent), ": ", programmaticId));
}

}  // namespace

ObjectRef WindowsHost::CreateComponent(std::string_view programmaticId) {
  CLSID id;
  if (FAILED(CLSIDFromProgID(ToWide(programmaticId).c_str(), &id))) {
    RaiseCannotCreate(programmaticId);
  }
  ComPtr<IDispatch> component;
  if (FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                              IID_IDispatch, component.ReceiveVoid()))) {
    RaiseCannotCreate(programmaticId);
  }
  return Wrap(component.get());
}

MessageButton WindowsHost::ShowMessage(std::string_view text, MessageStyle style,
                                       std::string_view title) {
  HWND owner = GetActiveWindow();
  // While the user works in another program no window of the thread is active. They all wait for an
  // answer nevertheless.
  const UINT modality = owner == nullptr ? MB_TASKMODAL : MB_APPLMODAL;
  const int button = MessageBoxW(owner, ToWide(text).c_str(), ToWide(title).c_str(),
                                 static_cast<UINT>(style) | modality);
  return static_cast<MessageButton>(button);
}

Date WindowsHost::Now() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  return FromCivil({now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond});
}

void WindowsHost::LetEventsRun() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    if (message.message == WM_QUIT) {
      // The host's own loop is to end, not this one.
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void WindowsHost::ReportFailure(std::string_view operation, const RuntimeError& failure) noexcept {
  try {
    OutputDebugStringW(ToWide(Concat("qorCred: ", operation, ": ", failure.description(), " (",
                                     static_cast<std::int32_t>(failure.number()), ")\n"))
                           .c_str());
  } catch (...) {
    OutputDebugStringW(L"qorCred: a failure could not be reported\n");
  }
}

std::string WindowsHost::DateText(Date date) {
  BSTR text = nullptr;
  if (FAILED(VarBstrFromDate(date.serial, LOCALE_USER_DEFAULT, 0, &text))) {
    return qorcred::DateText(date);
  }
  std::string result = FromBstr(text);
  SysFreeString(text);
  return result;
}

std::vector<std::uint8_t> WindowsHost::TextToAnsi(std::string_view text) {
  // Every ANSI code page of the system has ASCII.
  if (IsAscii(text)) return {text.begin(), text.end()};
  const std::wstring wide = ToWide(text);
  const auto units = static_cast<int>(wide.size());
  const int size = WideCharToMultiByte(CP_ACP, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
  WideCharToMultiByte(CP_ACP, 0, wide.data(), units, reinterpret_cast<char*>(bytes.data()), size,
                      nullptr, nullptr);
  return bytes;
}

std::string WindowsHost::AnsiToText(std::span<const std::uint8_t> bytes) {
  const auto* ansi = reinterpret_cast<const char*>(bytes.data());
  if (IsAscii({ansi, bytes.size()})) return {ansi, bytes.size()};
  const auto count = static_cast<int>(bytes.size());
  const int size = MultiByteToWideChar(CP_ACP, 0, ansi, count, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(CP_ACP, 0, ansi, count, wide.data(), size);
  return ToUtf8(wide);
}

WindowsHost& TheHost() {
  static WindowsHost host;
  return host;
}

}  // namespace qorcred::com
