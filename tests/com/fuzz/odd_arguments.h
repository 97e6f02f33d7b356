// The arguments of one call, and what the call must leave alone of them.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <deque>
#include <span>
#include <string>
#include <vector>

#include "frame/member_table.h"
#include "tests/com/fuzz/array_state.h"
#include "tests/com/fuzz/odd_values.h"

namespace qortest {

/// Builds the arguments in automation's order and owns what they hold. Every place that is handed
/// over by reference stands between bytes that nobody may write to.
class OddArguments {
 public:
  explicit OddArguments(OddValues& values) : values_(values) {}
  ~OddArguments();
  OddArguments(const OddArguments&) = delete;
  OddArguments& operator=(const OddArguments&) = delete;

  /// As a sound client would call: some optional ones left out, some named.
  void MakeSound(std::span<const qorcred::Parameter> parameters);
  /// Any number of anything, with any names.
  void MakeOdd(std::span<const qorcred::Parameter> parameters);
  /// The value of a put, as sound clients name it.
  void MakePut(qorcred::ValueType type, bool isSound);

  /// From here on nothing but the call changes anything.
  void Freeze();
  [[nodiscard]] DISPPARAMS* parameters() { return &parameters_; }
  /// Says that the client's structure is broken: the call must be refused as such.
  void Break();
  [[nodiscard]] bool isBroken() const { return isBroken_; }

  /// What the call has done to bytes that it may not touch; empty when nothing.
  [[nodiscard]] std::string Damage() const;
  /// Whether the call has written to any place.
  [[nodiscard]] bool AreWritten() const;
  /// The types, for whoever looks for the mistake.
  [[nodiscard]] std::string Types() const;
  /// The arrays among the arguments, as they were before the call.
  [[nodiscard]] const std::vector<ArrayState>& arrays() const { return arrays_; }

 private:
  static constexpr std::size_t kGuard = 32;

  struct Place {
    alignas(16) std::array<unsigned char, 2 * kGuard + 32> bytes{};
    std::array<unsigned char, 2 * kGuard + 32> frozen{};
    VARTYPE type = VT_EMPTY;
    std::size_t size = 0;

    [[nodiscard]] void* content() { return &bytes[kGuard]; }
  };

  [[nodiscard]] VARIANT OfParameter(qorcred::ValueType type);
  [[nodiscard]] VARIANT Passed(VARIANT value);
  [[nodiscard]] VARIANT OddReference();
  [[nodiscard]] VARIANT ReferenceTo(VARTYPE type, VARIANT value);
  [[nodiscard]] VARIANT ArrayInItself();
  VARIANT Keep(VARIANT value);
  void FreezeArrays();
  Random& random() { return values_.random(); }

  OddValues& values_;
  std::vector<VARIANT> arguments_;  ///< the last one first
  std::vector<VARIANT> frozen_;
  std::vector<DISPID> named_;
  std::vector<VARIANT> kept_;  ///< what was passed by value
  std::deque<Place> places_;
  std::vector<ArrayState> arrays_;
  DISPPARAMS parameters_{};
  bool isBroken_ = false;
};

}  // namespace qortest
