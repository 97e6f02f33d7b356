#include "tests/com/fuzz/array_state.h"

#include <algorithm>
#include <cstddef>

#include "tests/com/fuzz/odd_values.h"

namespace qortest {

namespace {

bool IsSameBound(const SAFEARRAYBOUND& one, const SAFEARRAYBOUND& other) {
  return one.lLbound == other.lLbound && one.cElements == other.cElements;
}

const char* KindOfLowest(LONG lowest) {
  return lowest < 0 ? "a negative" : lowest == 0 ? "the usual" : "another";
}

}  // namespace

ArrayState::ArrayState(SAFEARRAY& array, bool isByReference)
    : array_(array),
      isByReference_(isByReference),
      locks_(array.cLocks),
      data_(array.pvData),
      bounds_(Bounds()),
      elements_(Elements()),
      features_(Features()) {}

std::vector<SAFEARRAYBOUND> ArrayState::Bounds() const {
  return {&array_.rgsabound[0], &array_.rgsabound[0] + array_.cDims};
}

std::vector<unsigned char> ArrayState::Elements() const {
  const auto* first = static_cast<const unsigned char*>(array_.pvData);
  if (first == nullptr) return {};
  return {first, first + CountElements(array_) * array_.cbElements};
}

std::vector<std::string> ArrayState::Features() const {
  VARTYPE type = VT_EMPTY;
  if (FAILED(SafeArrayGetVartype(&array_, &type))) type = VT_EMPTY;
  std::string shape = std::to_string(array_.cDims) + " dimensions, " +
                      KindOfLowest(bounds_.back().lLbound) + " lower bound";
  if (CountElements(array_) == 0) shape += ", no elements";
  if (data_ == nullptr) shape += ", no memory";
  if (locks_ != 0) shape += ", locked";
  return {"array of " + std::to_string(type) + (isByReference_ ? " by reference" : " by value"),
          std::move(shape)};
}

std::string ArrayState::Damage() const {
  if (array_.cLocks != locks_) return "an array has other locks than before";
  const std::vector<SAFEARRAYBOUND> bounds = Bounds();
  const bool isSame =
      array_.pvData == data_ &&
      std::equal(bounds.begin(), bounds.end(), bounds_.begin(), bounds_.end(), IsSameBound);
  if (!isSame) return "an array has another shape than before";
  if (!isByReference_ && IsWritten()) return "an array that came by value was written to";
  return {};
}

bool ArrayState::IsWritten() const {
  return Elements() != elements_;
}

}  // namespace qortest
