// A client that was written against the type library: it asks for the class's own interface and
// calls identifiers, which never change; every argument is passed in the type that the library
// gives it.
#include "host.h"

// The identifiers of qorcred.idl that this client uses.
constexpr CLSID kCredentialClass = {
    0x0d5b98bd, 0xb7da, 0x4381, {0x90, 0xfb, 0x09, 0xb3, 0xc4, 0x03, 0x61, 0xcc}};
constexpr IID kCredentialInterface = {
    0xa92ad42f, 0xf836, 0x4150, {0x9b, 0x79, 0xc7, 0x85, 0xc9, 0x8a, 0x1d, 0xb4}};

class Controller {
 public:
  static HRESULT Create(std::unique_ptr<Controller>& controller) {
    IDispatch* created = nullptr;
    const HRESULT result =
        CoCreateInstance(kCredentialClass, nullptr, CLSCTX_INPROC_SERVER, kCredentialInterface,
                         reinterpret_cast<void**>(&created));
    if (SUCCEEDED(result)) controller.reset(new Controller(created));
    return result;
  }

  HRESULT SetScreen(IDispatch* screen) {
    VARIANT argument;
    V_VT(&argument) = VT_DISPATCH;
    V_DISPATCH(&argument) = screen;
    DISPID put = DISPID_PROPERTYPUT;
    return Invoke(kScreen, DISPATCH_PROPERTYPUTREF, {&argument, &put, 1, 1}, nullptr);
  }

  HRESULT GetScreen(Variant& screen) {
    return Invoke(kScreen, DISPATCH_PROPERTYGET, {nullptr, nullptr, 0, 0}, screen.get());
  }

  HRESULT Save(IDispatch*& connection, long unitKey, bool createTenants, bool edit, long& rid,
               Variant& saved) {
    VARIANT arguments[5];
    V_VT(&arguments[4]) = VT_BYREF | VT_DISPATCH;
    V_DISPATCHREF(&arguments[4]) = &connection;
    V_VT(&arguments[3]) = VT_I4;
    V_I4(&arguments[3]) = unitKey;
    V_VT(&arguments[2]) = VT_BOOL;
    V_BOOL(&arguments[2]) = createTenants ? VARIANT_TRUE : VARIANT_FALSE;
    V_VT(&arguments[1]) = VT_BOOL;
    V_BOOL(&arguments[1]) = edit ? VARIANT_TRUE : VARIANT_FALSE;
    V_VT(&arguments[0]) = VT_BYREF | VT_I4;
    V_I4REF(&arguments[0]) = &rid;
    return Invoke(kSave, DISPATCH_METHOD, {arguments, nullptr, 5, 0}, saved.get());
  }

 private:
  enum Members : DISPID { kScreen = 1, kSave = 5 };

  explicit Controller(IDispatch* object) : object_(object) {}

  HRESULT Invoke(DISPID id, WORD flags, DISPPARAMS given, VARIANT* result) {
    return object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &given, result, nullptr,
                           nullptr);
  }

  Held<IDispatch> object_;
};

HRESULT SaveRange() {
  std::unique_ptr<Controller> controller;
  HRESULT result = Controller::Create(controller);
  if (FAILED(result)) return result;
  const Held<HostObject> screen = MakeScreen();
  result = controller->SetScreen(screen.get());
  if (FAILED(result)) return result;

  const Held<HostObject> connection = MakeConnection();
  IDispatch* passed = connection.get();
  long rid = 0;
  Variant saved;
  result = controller->Save(passed, 3, false, false, rid, saved);
  if (FAILED(result)) return result;
  std::printf("saved: %s, last RID %ld\n", V_BOOL(saved.get()) != VARIANT_FALSE ? "True" : "False",
              rid);

  result = controller->SetScreen(nullptr);
  if (FAILED(result)) return result;
  Variant left;
  result = controller->GetScreen(left);
  std::printf("screen let go of: %s\n", V_DISPATCH(left.get()) == nullptr ? "True" : "False");
  return result;
}

int main() {
  return RunInApartment(SaveRange);
}
