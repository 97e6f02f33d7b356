// What a client's array was like before a call.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace qortest {

/// The shape of an array, its locks and its elements to the byte. The array must outlive it.
class ArrayState {
 public:
  ArrayState(SAFEARRAY& array, bool isByReference);

  /// What a call has done to the array that no call may do; empty when nothing.
  [[nodiscard]] std::string Damage() const;
  /// Whether any element is another one.
  [[nodiscard]] bool IsWritten() const;
  /// What is special about the array: one text for its elements, one for its shape.
  [[nodiscard]] const std::vector<std::string>& features() const { return features_; }

 private:
  [[nodiscard]] std::vector<SAFEARRAYBOUND> Bounds() const;
  [[nodiscard]] std::vector<unsigned char> Elements() const;
  [[nodiscard]] std::vector<std::string> Features() const;

  SAFEARRAY& array_;
  bool isByReference_;
  ULONG locks_;
  void* data_;
  std::vector<SAFEARRAYBOUND> bounds_;
  std::vector<unsigned char> elements_;
  std::vector<std::string> features_;
};

}  // namespace qortest
