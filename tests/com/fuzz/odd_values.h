// Variants as broken clients and hosts send them.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <utility>

#include "tests/com/support/random.h"

namespace qortest {

/// Makes values. What they hold belongs to whoever gets them, and is given back by Drop().
class OddValues {
 public:
  /// Gives a reference to an object of the host, an automation object or one that is none.
  using Maker = std::function<IUnknown*(bool isAutomation)>;

  OddValues(Random& random, Maker makeObject)
      : random_(random), makeObject_(std::move(makeObject)) {}

  /// Any value without a reference: every type that automation knows, and some that it does not.
  [[nodiscard]] VARIANT Any();
  /// A value of that type, with whatever content.
  [[nodiscard]] VARIANT OfType(VARTYPE type);
  /// An array of whatever automation keeps in arrays.
  [[nodiscard]] VARIANT AnyArray();
  /// A value that hosts and clients do send.
  [[nodiscard]] VARIANT Usual();
  /// Texts with zeros, lone surrogates, numbers, marks of statements; now and then a long one.
  [[nodiscard]] std::wstring Text();
  /// Small ones mostly, and the bounds of every width.
  [[nodiscard]] double Number();

  [[nodiscard]] Random& random() { return random_; }

 private:
  [[nodiscard]] SAFEARRAY* Array(VARTYPE type);
  void Fill(SAFEARRAY* array, VARTYPE type);
  void FillElement(void* element, ULONG size, VARTYPE type);

  Random& random_;
  Maker makeObject_;
  int depth_ = 0;
};

/// Types that a sound variant may have, so that it is cleared as such.
[[nodiscard]] bool IsSoundType(VARTYPE type);

/// Clears a value that OddValues made, or what a call has put in its place.
void Drop(VARIANT& value);

/// Takes back every lock of an array, which cannot be freed with them; nothing for other values.
void Unlock(const VARIANT& value);

/// How many elements an array has, in all dimensions.
[[nodiscard]] std::size_t CountElements(const SAFEARRAY& array);

}  // namespace qortest
