#include "host/store/audit_chain.h"

#include <fmt/format.h>
#include <sodium/crypto_generichash.h>
#include <sodium/utils.h>

#include <array>

namespace qorhost {

namespace {

constexpr std::size_t kHashSize = 32;

/// Takes texts one after the other. Each goes in with its length before it, so that nothing can
/// move from one to the next unnoticed.
class Digest {
 public:
  Digest() { crypto_generichash_init(&state_, nullptr, 0, kHashSize); }

  void Add(std::string_view text) {
    AddLength(text.size());
    AddBytes(text);
  }
  /// Texts that are one text in pieces.
  void AddPieces(std::span<const std::string> pieces) {
    std::size_t size = 0;
    for (const std::string& piece : pieces) {
      size += piece.size();
    }
    AddLength(size);
    for (const std::string& piece : pieces) {
      AddBytes(piece);
    }
  }

  [[nodiscard]] std::string End() {
    std::array<unsigned char, kHashSize> hash{};
    crypto_generichash_final(&state_, hash.data(), hash.size());
    std::array<char, 2 * kHashSize + 1> hex{};
    return sodium_bin2hex(hex.data(), hex.size(), hash.data(), hash.size());
  }

 private:
  void AddLength(std::size_t size) {
    const fmt::format_int digits(size);
    AddBytes({digits.data(), digits.size()});
    AddBytes(":");
  }
  void AddBytes(std::string_view bytes) {
    // The library reads bytes as unsigned ones.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast)
    const auto* first = reinterpret_cast<const unsigned char*>(bytes.data());
    crypto_generichash_update(&state_, first, bytes.size());
  }

  crypto_generichash_state state_{};
};

}  // namespace

std::string HashOf(const WorkEntry& entry, std::span<const std::string> before,
                   std::span<const std::string> rows) {
  Digest digest;
  digest.Add(fmt::format("{}", before.size()));
  for (const std::string& hash : before) {
    digest.Add(hash);
  }
  digest.Add(fmt::format("{}", entry.entry));
  digest.Add(entry.at);
  digest.Add(entry.who);
  digest.Add(entry.origin);
  digest.Add(entry.unitKey ? fmt::format("{}", *entry.unitKey) : "");
  digest.Add(entry.what);
  digest.AddPieces(rows);
  return digest.End();
}

}  // namespace qorhost
