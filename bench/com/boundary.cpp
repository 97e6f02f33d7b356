#include "bench/com/boundary.h"

#include <array>
#include <cstdint>
#include <string>

#include "bench/com/hand_written_controllers.h"
#include "com/dispatch_object.h"
#include "com/ownership.h"
#include "com/windows_host.h"
#include "credentials/cls_credential.h"
#include "frame/object.h"

namespace qorbench {

namespace {

using qorcred::com::ComPtr;
using qorcred::com::OwnedVariant;

constexpr std::int32_t kUnit = 1;
constexpr std::int32_t kNumbers = 1000;
constexpr std::int32_t kPuts = 20000;

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

/// pbSave through automation, of a controller that has the host's screen.
class Saving {
 public:
  Saving(const ComPtr<IDispatch>& object, const FastHost& host)
      : object_(object), host_(host), id_(IdOf(object.get(), L"pbSave")) {
    Put(object.get(), IdOf(object.get(), L"gmobjCredentialScreen"), host.screen.get());
  }

  void operator()() const {
    const std::int32_t before = *host_.inserts;
    LONG lastRid = 0;
    std::array<VARIANT, 5> arguments{};
    V_VT(&arguments[0]) = VT_BYREF | VT_I4;
    V_I4REF(&arguments[0]) = &lastRid;
    V_VT(&arguments[1]) = VT_BOOL;
    V_VT(&arguments[2]) = VT_BOOL;
    V_VT(&arguments[3]) = VT_I4;
    V_I4(&arguments[3]) = kUnit;
    V_VT(&arguments[4]) = VT_DISPATCH;
    V_DISPATCH(&arguments[4]) = host_.connection.get();
    OwnedVariant saved;
    Call(object_.get(), id_, DISPATCH_METHOD, arguments.data(), 5, &saved);
    Require(V_BOOL(&saved) != VARIANT_FALSE, host_, before, lastRid);
  }

 private:
  ComPtr<IDispatch> object_;
  const FastHost& host_;
  DISPID id_;
};

void PutNumbers(IDispatch* object) {
  for (std::int32_t number = 1; number <= kPuts; ++number) {
    VARIANT argument;
    V_VT(&argument) = VT_I4;
    V_I4(&argument) = number;
    Call(object, IdOf(object, L"mlngUnitKey"), DISPATCH_PROPERTYPUT, &argument, 1, nullptr);
  }
}

void RequirePut(IDispatch* object) {
  OwnedVariant read;
  Call(object, IdOf(object, L"mlngUnitKey"), DISPATCH_PROPERTYGET, nullptr, 0, &read);
  if (V_I4(&read) != kPuts) Fail("the number was not put");
}

}  // namespace

std::vector<Row> MeasureCreations() {
  struct Measured {
    const char* row;
    const wchar_t* className;
    int objects;
  };
  constexpr std::array kMeasured{
      Measured{"com-create-credential", L"clsCredential", 50},
      Measured{"com-create-dircode", L"clsDirCode", 50},
      Measured{"com-create-dircode-report", L"clsDirCodeReport", 5000},
      Measured{"com-create-credential-report", L"clsCredentialReport", 5000}};
  std::vector<Row> rows;
  for (const Measured& one : kMeasured) {
    const auto repeat = [&one](const ComPtr<IClassFactory>& factory) {
      return [&one, factory] {
        for (int at = 0; at < one.objects; ++at) (void)MadeBy(factory);
      };
    };
    rows.push_back(Compare(one.row,
                           repeat(FactoryOf((L"qorCred." + std::wstring(one.className)).c_str())),
                           repeat(HandWrittenFactory(one.className)), one.objects));
  }
  return rows;
}

Row MeasurePut() {
  const ComPtr<IDispatch> component = MadeBy(FactoryOf(L"qorCred.clsDirCodeReport"));
  const ComPtr<IDispatch> byHand = MadeBy(HandWrittenFactory(L"clsDirCodeReport"));
  Row row = Compare(
      "com-put", [&] { PutNumbers(component.get()); }, [&] { PutNumbers(byHand.get()); }, kPuts);
  RequirePut(component.get());
  RequirePut(byHand.get());
  return row;
}

Row MeasureSave(const FastHost& host) {
  const Saving ours(MadeBy(FactoryOf(L"qorCred.clsCredential")), host);
  const Saving floor(MadeBy(HandWrittenFactory(L"clsCredential")), host);
  ours();
  const std::wstring last = *host.lastInsert;
  floor();
  if (last.empty() || *host.lastInsert != last) Fail("the two saves differ");
  return Compare("com-save", ours, floor, kNumbers);
}

Row MeasureSaveOfTheLibrary(const FastHost& host) {
  const Saving ours(MadeBy(FactoryOf(L"qorCred.clsCredential")), host);
  qorcred::clsCredential direct(qorcred::com::TheHost());
  direct.set_gmobjCredentialScreen(qorcred::com::Wrap(host.screen.get()));
  const qorcred::ObjectRef connection = qorcred::com::Wrap(host.connection.get());
  return Compare(
      "com-save-library", ours,
      [&] {
        const std::int32_t before = *host.inserts;
        std::int32_t lastRid = 0;
        const bool isSaved = direct.pbSave(connection, kUnit, false, false, &lastRid);
        Require(isSaved, host, before, lastRid);
      },
      kNumbers);
}

}  // namespace qorbench
