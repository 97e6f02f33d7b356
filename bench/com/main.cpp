// Measures the component through automation against an object written by hand, on the same host and
// in the same process, and checks that both did the same. com_bench [JSON-FILE]
#include <windows.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "bench/com/boundary.h"
#include "bench/com/fast_host.h"
#include "bench/com/hand_written_object.h"
#include "bench/com/rows.h"
#include "com/call_trace.h"
#include "com/ownership.h"
#include "com/windows_host.h"
#include "credentials/cls_credential.h"

namespace qorbench {

namespace {

using qorcred::com::ComPtr;
using qorcred::com::OwnedVariant;

constexpr double kGoalOfTracing = 1.05;
constexpr std::int32_t kCredentials = 10000;
constexpr std::int32_t kUnit = 1;

std::wstring Decode(IDispatch* object, DISPID id, BSTR text) {
  VARIANT argument;
  V_VT(&argument) = VT_BSTR;
  V_BSTR(&argument) = text;
  OwnedVariant result;
  Call(object, id, DISPATCH_METHOD, &argument, 1, &result);
  return {V_BSTR(&result), SysStringLen(V_BSTR(&result))};
}

Row MeasureDecoding(IDispatch* component, IDispatch* byHand) {
  constexpr int kCalls = 5000;
  BSTR text = SysAllocString(L"UGVsbG8gUlQ6IG1heGltdW0gb2YgY29tYmluZWQgY29kZXMgMzI3Njc=");
  const DISPID ours = IdOf(component, L"pbBase64Dec");
  const DISPID floor = IdOf(byHand, L"pbBase64Dec");
  const std::wstring decoded = Decode(component, ours, text);
  if (decoded.rfind(L"Pello RT: maximum of combined codes 32767", 0) != 0) Fail("decoded wrongly");
  const auto repeat = [text](IDispatch* object, DISPID id) {
    return [object, id, text] {
      for (int call = 0; call < kCalls; ++call) Decode(object, id, text);
    };
  };
  Row row = Compare("com-decode", repeat(component, ours), repeat(byHand, floor), kCalls);
  SysFreeString(text);
  return row;
}

void Retrieve(IDispatch* object, DISPID id, IDispatch* connection) {
  std::array<VARIANT, 2> arguments{};
  V_VT(&arguments[0]) = VT_I4;
  V_I4(&arguments[0]) = kUnit;
  V_VT(&arguments[1]) = VT_DISPATCH;
  V_DISPATCH(&arguments[1]) = connection;
  Call(object, id, DISPATCH_METHOD, arguments.data(), 2, nullptr);
}

Row MeasureRetrieval(IDispatch* component, IDispatch* byHand, const FastHost& host) {
  const DISPID ours = IdOf(component, L"pbRetrieveCredentials");
  const DISPID floor = IdOf(byHand, L"pbRetrieveCredentials");
  Retrieve(byHand, floor, host.connection.get());
  const ListContent expected = *host.list;
  Retrieve(component, ours, host.connection.get());
  if (expected.texts.size() != kCredentials + 1 || host.list->texts != expected.texts ||
      host.list->data != expected.data) {
    Fail("the two lists differ");
  }
  const auto run = [&host](IDispatch* object, DISPID id) {
    return [&host, object, id] { Retrieve(object, id, host.connection.get()); };
  };
  return Compare("com-retrieve", run(component, ours), run(byHand, floor), kCredentials);
}

// What it costs that calls can be traced while they are not: the same operation through what the
// component holds a controller by, and past it.
Row MeasureTracing() {
  constexpr int kCalls = 5000;
  const qorcred::Member& decode =
      *qorcred::FindMember(qorcred::clsCredential::MemberTable(), "pbBase64Dec");
  const std::string text = "UGVsbG8gUlQ6IG1heGltdW0gb2YgY29tYmluZWQgY29kZXMgMzI3Njc=";
  alignas(qorcred::clsCredential) std::array<std::byte, sizeof(qorcred::clsCredential)> room;
  qorcred::com::TraceableController traceable(
      "clsCredential", qorcred::com::ControllerMaker::For<qorcred::clsCredential>(), room.data(),
      qorcred::com::TheHost());
  qorcred::clsCredential direct(qorcred::com::TheHost());
  const auto repeat = [&text](const auto& run) {
    return [&text, run] {
      for (int call = 0; call < kCalls; ++call) {
        qorcred::Value argument(text);
        if (run(qorcred::Arguments(&argument, 1)).type() != qorcred::ValueType::kString) {
          Fail("decoded nothing");
        }
      }
    };
  };
  Row row = Compare("com-trace-off", repeat([&](qorcred::Arguments given) {
                      return traceable.Run(decode, qorcred::InvokeKind::kCall, given);
                    }),
                    repeat([&](qorcred::Arguments given) {
                      return decode.run(direct, qorcred::InvokeKind::kCall, given);
                    }),
                    kCalls);
  row.goal = kGoalOfTracing;
  return row;
}

int Run(int count, char** arguments) {
  const FastHost host = MakeFastHost(kCredentials);
  const OfferedManager offered(host.manager);
  CLSID id{};
  ComPtr<IDispatch> component;
  if (FAILED(CLSIDFromProgID(L"qorCred.clsCredential", &id)) ||
      FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                              component.ReceiveVoid()))) {
    Fail("the component is not registered");
  }
  VARIANT screen;
  V_VT(&screen) = VT_DISPATCH;
  V_DISPATCH(&screen) = host.screen.get();
  Call(component.get(), IdOf(component.get(), L"gmobjCredentialScreen"), DISPATCH_PROPERTYPUT,
       &screen, 1, nullptr);
  const ComPtr<IDispatch> byHand = MakeHandWritten(host.screen, host.manager);

  std::vector<Row> rows{MeasureDecoding(component.get(), byHand.get()),
                        MeasureRetrieval(component.get(), byHand.get(), host), MeasureTracing()};
  for (Row& row : MeasureCreations()) rows.push_back(std::move(row));
  rows.push_back(MeasurePut());
  rows.push_back(MeasureSave(host));
  rows.push_back(MeasureSaveOfTheLibrary(host));
  Print(rows);
  if (count > 1) WriteJson(rows, arguments[1]);
  return EXIT_SUCCESS;
}

}  // namespace

}  // namespace qorbench

int main(int count, char** arguments) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const int status = qorbench::Run(count, arguments);
  CoUninitialize();
  return status;
}
