// "qorTest.Broker": gives script hosts what a script engine alone cannot do.
#pragma once

#include <windows.h>

#include <atomic>
#include <memory>

#include "com/ownership.h"
#include "tests/com/support/broker/box_answerer.h"
#include "tests/com/support/broker/offered_classes.h"

namespace qortest {

/// Automation object with the members
///   Provide progId, object   creating `progId` in this thread gives `object` from now on
///   AnswerBoxes answer       message boxes are answered "OK", "Yes" or "No"; "" leaves them alone
///   Rename(object, name, member)  the script object with its member `member` called `name`
///   Listener (put)           an object with Created(progId) and
///                            Box(title, text, icon, buttons, answer), told of both as they happen
class Broker final : public IDispatch {
 public:
  Broker();
  Broker(const Broker&) = delete;
  Broker& operator=(const Broker&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                                   UINT* badArgument) override;

 private:
  ~Broker();

  HRESULT Provide(const DISPPARAMS& given);
  HRESULT AnswerBoxes(const DISPPARAMS& given);
  HRESULT Rename(const DISPPARAMS& given, VARIANT* result);
  HRESULT SetListener(const DISPPARAMS& given);

  std::atomic<ULONG> references_{1};
  ComPtr<IDispatch> listener_;
  OfferedClasses classes_;
  std::unique_ptr<BoxAnswerer> answerer_;
};

/// Whether no broker lives.
[[nodiscard]] bool NoBrokerLives();

}  // namespace qortest
