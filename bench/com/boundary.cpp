#include "bench/com/boundary.h"

#include <array>
#include <cstdint>

#include "com/dispatch_object.h"
#include "com/ownership.h"
#include "com/windows_host.h"
#include "credentials/cls_credential.h"
#include "frame/object.h"
#include "reports/cls_dir_code_report.h"

namespace qorbench {

namespace {

using qorcred::com::ComPtr;
using qorcred::com::OwnedVariant;

constexpr std::int32_t kUnit = 1;
constexpr std::int32_t kNumbers = 1000;

ComPtr<IClassFactory> FactoryOf(const wchar_t* programmaticId) {
  CLSID id{};
  ComPtr<IClassFactory> factory;
  if (FAILED(CLSIDFromProgID(programmaticId, &id)) ||
      FAILED(CoGetClassObject(id, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                              factory.ReceiveVoid()))) {
    Fail("the component is not registered");
  }
  return factory;
}

ComPtr<IDispatch> MadeBy(const ComPtr<IClassFactory>& factory) {
  ComPtr<IDispatch> made;
  if (FAILED(factory->CreateInstance(nullptr, IID_IDispatch, made.ReceiveVoid()))) {
    Fail("an object was not created");
  }
  return made;
}

void Put(IDispatch* object, DISPID id, IDispatch* value) {
  VARIANT argument;
  V_VT(&argument) = VT_DISPATCH;
  V_DISPATCH(&argument) = value;
  Call(object, id, DISPATCH_PROPERTYPUT, &argument, 1, nullptr);
}

void Require(bool isSaved, const FastHost& host, std::int32_t before, std::int32_t lastRid) {
  if (!isSaved || *host.inserts - before != kNumbers || lastRid != *host.inserts) {
    Fail("the range was not saved");
  }
}

}  // namespace

Row MeasureCreation() {
  constexpr int kObjects = 50;
  const ComPtr<IClassFactory> factory = FactoryOf(L"qorCred.clsCredential");
  return Compare(
      "com-create",
      [&] {
        for (int at = 0; at < kObjects; ++at) (void)MadeBy(factory);
      },
      [] {
        for (int at = 0; at < kObjects; ++at) {
          const qorcred::clsCredential controller(qorcred::com::TheHost());
        }
      },
      kObjects);
}

Row MeasurePut() {
  constexpr std::int32_t kPuts = 20000;
  const ComPtr<IDispatch> component = MadeBy(FactoryOf(L"qorCred.clsDirCodeReport"));
  const DISPID id = IdOf(component.get(), L"mlngUnitKey");
  qorcred::clsDirCodeReport direct(qorcred::com::TheHost());
  Row row = Compare(
      "com-put",
      [&] {
        for (std::int32_t number = 1; number <= kPuts; ++number) {
          VARIANT argument;
          V_VT(&argument) = VT_I4;
          V_I4(&argument) = number;
          Call(component.get(), id, DISPATCH_PROPERTYPUT, &argument, 1, nullptr);
        }
      },
      [&] {
        for (std::int32_t number = 1; number <= kPuts; ++number) {
          qorcred::Put(direct, "mlngUnitKey", number);
        }
      },
      kPuts);
  OwnedVariant read;
  Call(component.get(), id, DISPATCH_PROPERTYGET, nullptr, 0, &read);
  if (V_I4(&read) != kPuts || direct.mlngUnitKey() != kPuts) Fail("the number was not put");
  return row;
}

Row MeasureSave(const FastHost& host) {
  const ComPtr<IDispatch> component = MadeBy(FactoryOf(L"qorCred.clsCredential"));
  const DISPID screen = IdOf(component.get(), L"gmobjCredentialScreen");
  const DISPID save = IdOf(component.get(), L"pbSave");
  Put(component.get(), screen, host.screen.get());
  qorcred::clsCredential direct(qorcred::com::TheHost());
  direct.set_gmobjCredentialScreen(qorcred::com::Wrap(host.screen.get()));
  const qorcred::ObjectRef connection = qorcred::com::Wrap(host.connection.get());

  return Compare(
      "com-save",
      [&] {
        const std::int32_t before = *host.inserts;
        std::int32_t lastRid = 0;
        std::array<VARIANT, 5> arguments{};
        V_VT(&arguments[0]) = VT_BYREF | VT_I4;
        V_I4REF(&arguments[0]) = reinterpret_cast<LONG*>(&lastRid);
        V_VT(&arguments[1]) = VT_BOOL;
        V_VT(&arguments[2]) = VT_BOOL;
        V_VT(&arguments[3]) = VT_I4;
        V_I4(&arguments[3]) = kUnit;
        V_VT(&arguments[4]) = VT_DISPATCH;
        V_DISPATCH(&arguments[4]) = host.connection.get();
        OwnedVariant saved;
        Call(component.get(), save, DISPATCH_METHOD, arguments.data(), 5, &saved);
        Require(V_BOOL(&saved) != VARIANT_FALSE, host, before, lastRid);
      },
      [&] {
        const std::int32_t before = *host.inserts;
        std::int32_t lastRid = 0;
        const bool isSaved = direct.pbSave(connection, kUnit, false, false, &lastRid);
        Require(isSaved, host, before, lastRid);
      },
      kNumbers);
}

}  // namespace qorbench
