// The host of both clients: the screen with the range 20 to 22, and a connection that tells what
// happens.
#pragma once

#include <cstdio>

#include "objects.h"

inline Held<HostObject> MakeBox(const wchar_t* text) {
  Held<HostObject> box = HostObject::Make();
  box->Has(L"Text", text).Does(L"SetFocus", [](const auto&) { return Variant(); });
  return box;
}

inline Held<HostObject> MakeScreen() {
  const Held<HostObject> types = HostObject::Make();
  types->Has(L"ListIndex", 0L).Does(L"ItemData", [](const auto&) { return Variant(0L); });
  const Held<HostObject> button = HostObject::Make();
  button->Has(L"Value", false);
  Held<HostObject> screen = HostObject::Make();
  screen->Has(L"gstrTag", L"Range")
      .Has(L"cboCredentialType", types.get())
      .Has(L"txtPINStart", MakeBox(L"20").get())
      .Has(L"txtPINEND", MakeBox(L"22").get())
      .Has(L"txtFacilityCode", MakeBox(L"7").get())
      .Has(L"txtIDCode", MakeBox(L"").get())
      .Has(L"txtSequenceCode", MakeBox(L"").get())
      .Has(L"optButton4", button.get());
  return screen;
}

inline Variant Tell(const wchar_t* line) {
  std::printf("%ls\n", line);
  return {};
}

inline Held<HostObject> MakeConnection() {
  Held<HostObject> connection = HostObject::Make();
  // The database manager, which is a component of its own, tells its statements here.
  connection->Does(L"Tell", [](const auto& arguments) { return Tell(V_BSTR(arguments[0].get())); })
      .Does(L"BeginTrans", [](const auto&) { return Tell(L"BeginTrans"); })
      .Does(L"CommitTrans", [](const auto&) { return Tell(L"CommitTrans"); })
      .Does(L"RollbackTrans", [](const auto&) { return Tell(L"RollbackTrans"); });
  return connection;
}

/// Runs `client` in a single-threaded apartment; what fails in it ends the program with status 1.
inline int RunInApartment(HRESULT (*client)()) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const HRESULT result = client();
  CoUninitialize();
  if (FAILED(result)) std::printf("failed: %08lX\n", static_cast<unsigned long>(result));
  return FAILED(result) ? 1 : 0;
}
