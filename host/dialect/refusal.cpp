#include "host/dialect/refusal.h"

#include "host/dialect/translator.h"

namespace qorhost::dialect {

namespace {

constexpr std::size_t kLongestExcerpt = 40;

bool StartsPoint(char byte) noexcept {
  return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

}  // namespace

void Refuse(std::string_view sql, std::size_t offset, const std::string& message) {
  std::size_t line = 1;
  std::size_t column = 1;
  for (const char byte : sql.substr(0, offset)) {
    if (byte == '\n') {
      ++line;
      column = 1;
    } else if (StartsPoint(byte)) {
      ++column;
    }
  }
  throw SqlError(message, line, column);
}

std::string Quoted(std::string_view text) {
  std::string_view excerpt = text;
  if (excerpt.size() > kLongestExcerpt) {
    std::size_t end = kLongestExcerpt;
    while (end > 0 && !StartsPoint(excerpt[end])) {
      --end;
    }
    excerpt = excerpt.substr(0, end);
  }
  std::string quoted = "'";
  quoted += excerpt;
  return quoted + (excerpt.size() < text.size() ? "...'" : "'");
}

}  // namespace qorhost::dialect
