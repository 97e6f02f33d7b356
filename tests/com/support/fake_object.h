// Automation objects of a host, made of what a test wants them to do.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tests/com/support/variant.h"

namespace qortest {

/// One call on a fake object as it arrived.
struct FakeCall {
  WORD flags = 0;
  std::vector<VARIANT*> arguments;  ///< in the order of the parameters; a put's value is the last
  VARIANT* result = nullptr;        ///< null when the caller wants none
  EXCEPINFO* info = nullptr;

  /// Gives the result and says S_OK.
  HRESULT Return(Variant value) const;
  /// An argument with references followed.
  [[nodiscard]] Variant Argument(std::size_t at) const { return Variant::From(*arguments.at(at)); }
  /// Writes to an argument as its type allows; fails the test when it is no reference.
  void Assign(std::size_t at, const Variant& value) const;
};

/// What is kept of a call.
struct SeenCall {
  std::wstring member;
  WORD flags;
  std::vector<VARTYPE> types;  ///< of the arguments in the order of the parameters
  std::vector<DISPID> named;   ///< identifiers of the named arguments
  friend bool operator==(const SeenCall&, const SeenCall&) = default;
};

/// An object with members that the test defines; their names have no regard to case, "" is the
/// default member. Anything else is an unknown name. Belongs to one thread.
class FakeObject final : public IDispatch {
 public:
  using Behaviour = std::function<HRESULT(const FakeCall&)>;

  [[nodiscard]] static ComPtr<FakeObject> Make();
  /// How many live.
  [[nodiscard]] static long Alive();
  FakeObject(const FakeObject&) = delete;
  FakeObject& operator=(const FakeObject&) = delete;

  /// Defines a member, or defines it anew.
  FakeObject& On(const std::wstring& name, Behaviour behaviour);
  /// A property that keeps what is put, first of all `value`.
  FakeObject& Property(const std::wstring& name, Variant value);
  /// Answers as objects of script engines do.
  FakeObject& AsScriptObject();

  [[nodiscard]] const Variant& PropertyValue(const std::wstring& name) const;
  [[nodiscard]] const std::vector<SeenCall>& calls() const { return calls_; }
  /// How often the identifier of that name was asked for.
  [[nodiscard]] int AskedFor(const std::wstring& name) const;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                                   UINT* badArgument) override;

 private:
  struct NoCase {
    bool operator()(const std::wstring& one, const std::wstring& other) const;
  };
  struct Member {
    std::wstring name;
    Behaviour behaviour;
  };

  FakeObject();
  ~FakeObject();

  ULONG references_ = 1;
  bool isScript_ = false;
  std::vector<Member> members_;  ///< the identifier is the place; the default member comes first
  std::map<std::wstring, Variant, NoCase> values_;
  std::map<std::wstring, int, NoCase> asked_;
  std::vector<SeenCall> calls_;
};

/// While it lives, one call on a fake object fails: the `number`th from here on, counting from 1.
class FailingCall {
 public:
  FailingCall(int number, HRESULT code);
  ~FailingCall();
  FailingCall(const FailingCall&) = delete;
  FailingCall& operator=(const FailingCall&) = delete;

  /// Whether there were so many calls.
  [[nodiscard]] bool HasFailed() const;
};

}  // namespace qortest
