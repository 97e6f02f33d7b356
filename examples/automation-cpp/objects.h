// What a C++ program without a framework needs for automation: references and variants that let go
// of what they hold, and objects whose members are called by name.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cwchar>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

struct Releasing {
  void operator()(IUnknown* object) const { object->Release(); }
};
template <typename Interface>
using Held = std::unique_ptr<Interface, Releasing>;

/// A variant that clears itself. What it is made from it copies.
class Variant {
 public:
  Variant() { VariantInit(&variant_); }
  Variant(bool flag) : Variant() {
    V_VT(&variant_) = VT_BOOL;
    V_BOOL(&variant_) = flag ? VARIANT_TRUE : VARIANT_FALSE;
  }
  Variant(long number) : Variant() {
    V_VT(&variant_) = VT_I4;
    V_I4(&variant_) = number;
  }
  Variant(const wchar_t* text) : Variant() {
    V_VT(&variant_) = VT_BSTR;
    V_BSTR(&variant_) = SysAllocString(text);
  }
  Variant(IDispatch* object) : Variant() {
    V_VT(&variant_) = VT_DISPATCH;
    V_DISPATCH(&variant_) = object;
    if (object != nullptr) object->AddRef();
  }
  Variant(VARIANT other) : Variant() { VariantCopyInd(&variant_, &other); }
  Variant(const Variant& other) : Variant(other.variant_) {}
  Variant& operator=(Variant other) {
    std::swap(variant_, other.variant_);
    return *this;
  }
  ~Variant() { VariantClear(&variant_); }

  /// For automation, whose functions take what they only read as if they changed it.
  VARIANT* get() const { return &variant_; }

 private:
  mutable VARIANT variant_;
};

/// An object of the host. Member names are found in any letter case, as automation asks for.
class HostObject final : public IDispatch {
 public:
  using Arguments = std::vector<Variant>;
  using Function = std::function<Variant(const Arguments&)>;

  static Held<HostObject> Make() { return Held<HostObject>(new HostObject); }

  /// A member that is called or, with an index, read.
  HostObject& Does(const wchar_t* name, Function function) {
    members_.push_back({name, std::move(function), {}});
    return *this;
  }
  /// A member that is read and put.
  HostObject& Has(const wchar_t* name, Variant value) {
    members_.push_back({name, nullptr, std::move(value)});
    return *this;
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch);
    *object = known ? this : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                          DISPID* ids) override {
    const auto found = std::find_if(members_.begin(), members_.end(), [&](const Member& member) {
      return _wcsicmp(member.name.c_str(), names[0]) == 0;
    });
    ids[0] =
        found == members_.end() ? DISPID_UNKNOWN : static_cast<DISPID>(found - members_.begin());
    return found == members_.end() ? DISP_E_UNKNOWNNAME : S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* given,
                                   VARIANT* result, EXCEPINFO*, UINT*) override {
    if (id < 0 || static_cast<std::size_t>(id) >= members_.size()) return DISP_E_MEMBERNOTFOUND;
    Member& member = members_[static_cast<std::size_t>(id)];
    // Automation has the last argument first.
    const Arguments arguments(std::make_reverse_iterator(given->rgvarg + given->cArgs),
                              std::make_reverse_iterator(given->rgvarg));
    if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
      if (member.function || arguments.size() != 1) return DISP_E_MEMBERNOTFOUND;
      member.value = arguments.front();
      return S_OK;
    }
    const Variant answer = member.function ? member.function(arguments) : member.value;
    return result == nullptr ? S_OK : VariantCopy(result, answer.get());
  }

 private:
  struct Member {
    std::wstring name;
    Function function;
    Variant value;
  };

  ~HostObject() = default;

  ULONG references_ = 1;
  std::vector<Member> members_;
};
