// What all tests of late-bound clients share.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/com/support/client.h"
#include "tests/com/support/component.h"
#include "tests/com/support/host_objects.h"
#include "tests/com/support/offered_component.h"

namespace qortest {

inline constexpr const wchar_t* kCredential = L"qorCred.clsCredential";
inline constexpr const wchar_t* kDirCode = L"qorCred.clsDirCode";
inline constexpr const wchar_t* kCredentialReport = L"qorCred.clsCredentialReport";
inline constexpr const wchar_t* kDirCodeReport = L"qorCred.clsDirCodeReport";

/// After each test no object of the host lives, and nothing keeps the component loaded.
class ComTest : public testing::Test {
 protected:
  void TearDown() override {
    EXPECT_EQ(FakeObject::Alive(), 0) << "objects of the host that somebody still refers to";
    EXPECT_EQ(CanUnload(), S_OK);
  }

  /// Offers the manager for as long as the result lives.
  [[nodiscard]] static std::unique_ptr<OfferedComponent> Offer(const FakeManager& manager) {
    return std::make_unique<OfferedComponent>(L"qorDBI.clsDBManager", [object = manager.object] {
      return ComPtr<IDispatch>(object.get());
    });
  }
};

/// A reference to what the variant holds, in its own type.
[[nodiscard]] inline Variant ReferenceTo(VARIANT& content) {
  const bool isDecimal = V_VT(&content) == VT_DECIMAL;  // the only one that fills the whole variant
  return Variant::Reference(V_VT(&content), isDecimal ? static_cast<void*>(&V_DECIMAL(&content))
                                                      : static_cast<void*>(&V_I8(&content)));
}

/// How a client may pass what it has.
enum class Shape { kValue, kReference, kVariantReference, kReferenceInVariant };

/// One argument in one of the shapes, with the places that it refers to.
class Shaped {
 public:
  Shaped(Shape shape, Variant content) : content_(std::move(content)) {
    switch (shape) {
      case Shape::kValue:
        argument_ = content_;
        break;
      case Shape::kReference:
        argument_ = ReferenceTo(content_);
        break;
      case Shape::kVariantReference:
        argument_ = Variant::Reference(content_);
        break;
      case Shape::kReferenceInVariant:
        inner_ = ReferenceTo(content_);
        argument_ = Variant::Reference(inner_);
        break;
    }
  }
  Shaped(const Shaped&) = delete;
  Shaped& operator=(const Shaped&) = delete;

  [[nodiscard]] const Variant& argument() const { return argument_; }
  /// What the client holds after the call.
  [[nodiscard]] const Variant& content() const { return content_; }

 private:
  Variant content_;
  Variant inner_;
  Variant argument_;
};

[[nodiscard]] inline std::string NameOf(Shape shape) {
  switch (shape) {
    case Shape::kValue:
      return "ByValue";
    case Shape::kReference:
      return "ByReference";
    case Shape::kVariantReference:
      return "InAVariantByReference";
    case Shape::kReferenceInVariant:
      return "ByReferenceInAVariantByReference";
  }
  return {};
}

}  // namespace qortest
