// A client that knows the controller by its names alone.
#include "host.h"

HRESULT Invoke(IDispatch* object, const wchar_t* name, WORD flags, std::vector<VARIANT> arguments,
               VARIANT* result = nullptr) {
  std::wstring copy(name);
  LPOLESTR names = copy.data();
  DISPID id = DISPID_UNKNOWN;
  const HRESULT found = object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(found)) return found;
  std::reverse(arguments.begin(), arguments.end());
  DISPID put = DISPID_PROPERTYPUT;
  const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  DISPPARAMS given{arguments.data(), isPut ? &put : nullptr, static_cast<UINT>(arguments.size()),
                   isPut ? 1U : 0U};
  return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &given, result, nullptr, nullptr);
}

HRESULT SaveRange() {
  CLSID id{};
  HRESULT result = CLSIDFromProgID(L"qorCred.clsCredential", &id);
  if (FAILED(result)) return result;
  IDispatch* created = nullptr;
  result = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                            reinterpret_cast<void**>(&created));
  if (FAILED(result)) return result;
  const Held<IDispatch> controller(created);

  const Held<HostObject> screen = MakeScreen();
  const Variant screenArgument(screen.get());
  result = Invoke(controller.get(), L"gmobjCredentialScreen", DISPATCH_PROPERTYPUTREF,
                  {*screenArgument.get()});
  if (FAILED(result)) return result;

  const Held<HostObject> connection = MakeConnection();
  const Variant connectionArgument(connection.get());
  Variant rid(0L);
  VARIANT ridReference;
  V_VT(&ridReference) = VT_BYREF | VT_I4;
  V_I4REF(&ridReference) = &V_I4(rid.get());
  Variant saved;
  result = Invoke(controller.get(), L"pbSave", DISPATCH_METHOD,
                  {*connectionArgument.get(), *Variant(3L).get(), *Variant(false).get(),
                   *Variant(false).get(), ridReference},
                  saved.get());
  if (FAILED(result)) return result;
  std::printf("saved: %s, last RID %ld\n", V_BOOL(saved.get()) != VARIANT_FALSE ? "True" : "False",
              V_I4(rid.get()));

  const Variant nothing(static_cast<IDispatch*>(nullptr));
  result =
      Invoke(controller.get(), L"gmobjCredentialScreen", DISPATCH_PROPERTYPUTREF, {*nothing.get()});
  if (FAILED(result)) return result;
  Variant left;
  result = Invoke(controller.get(), L"gmobjCredentialScreen", DISPATCH_PROPERTYGET, {}, left.get());
  std::printf("screen let go of: %s\n", V_DISPATCH(left.get()) == nullptr ? "True" : "False");
  return result;
}

int main() {
  return RunInApartment(SaveRange);
}
