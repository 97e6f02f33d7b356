// A stream's buffer on a file that is open already.
#pragma once

#include <array>
#include <cstddef>
#include <streambuf>
#include <system_error>

namespace qorhost {

/// Writes to or reads from a descriptor, which must outlive it; one of both. A write that fails
/// ends the writing and leaves the system's reason in failure(); a read that fails raises
/// std::ios_base::failure with it, as the buffers of the standard library do.
class DescriptorBuffer final : public std::streambuf {
 public:
  explicit DescriptorBuffer(int descriptor) : descriptor_(descriptor) {
    setp(bytes_.data(), bytes_.data() + bytes_.size());
  }

  [[nodiscard]] const std::error_code& failure() const noexcept { return failure_; }

 protected:
  int_type overflow(int_type character) override;
  int sync() override;
  int_type underflow() override;

 private:
  [[nodiscard]] bool WriteOut();

  static constexpr std::size_t kSize = std::size_t{64} << 10;

  int descriptor_;
  std::error_code failure_;
  std::array<char, kSize> bytes_{};
};

}  // namespace qorhost
