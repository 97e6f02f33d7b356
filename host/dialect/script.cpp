#include "host/dialect/script.h"

#include <algorithm>

#include "host/dialect/lexer.h"
#include "host/dialect/refusal.h"

namespace qorhost::dialect {

namespace {

bool IsBlank(char byte) {
  return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n';
}

class ScriptReader {
 public:
  explicit ScriptReader(std::string_view script) : script_(script), text_(script) {}

  std::vector<ScriptStatement> Read() {
    while (at_ < script_.size()) {
      if (IsBlank(script_[at_])) {
        ++at_;
      } else if (script_.substr(at_, 2) == "--") {
        BlankUntil(std::min(script_.find('\n', at_), script_.size()));
      } else if (script_.substr(at_, 2) == "/*") {
        BlankUntil(EndOfComment());
      } else {
        TakeToken();
      }
    }
    EndStatement();
    return std::move(statements_);
  }

 private:
  [[nodiscard]] std::size_t EndOfComment() const {
    constexpr std::size_t kMarks = 2;
    const std::size_t end = script_.find("*/", at_ + kMarks);
    if (end == std::string_view::npos) {
      Refuse(script_, at_, "a comment that is not closed");
    }
    return end + kMarks;
  }

  void BlankUntil(std::size_t end) {
    for (; at_ < end; ++at_) {
      if (text_[at_] != '\n') {
        text_[at_] = ' ';
      }
    }
  }

  void TakeToken() {
    const Token token = TokenAt(script_, at_);
    const std::size_t begin = at_;
    at_ = token.end;
    if (token.kind == TokenKind::kSymbol && token.text == ";") {
      EndStatement();
      return;
    }
    if (!begun_) {
      begun_ = true;
      begin_ = begin;
    }
    last_ = at_;
  }

  void EndStatement() {
    if (!begun_) {
      return;
    }
    for (; counted_ < begin_; ++counted_) {
      const auto byte = static_cast<unsigned char>(script_[counted_]);
      if (byte == '\n') {
        ++line_;
        column_ = 1;
      } else if ((byte & 0xC0U) != 0x80U) {
        ++column_;
      }
    }
    statements_.push_back({text_.substr(begin_, last_ - begin_), line_, column_});
    begun_ = false;
  }

  std::string_view script_;
  std::string text_;  // without comments
  std::size_t at_ = 0;
  bool begun_ = false;
  std::size_t begin_ = 0;  // of the statement
  std::size_t last_ = 0;   // behind its last token
  std::size_t counted_ = 0;
  std::size_t line_ = 1;  // of what was counted
  std::size_t column_ = 1;
  std::vector<ScriptStatement> statements_;
};

}  // namespace

std::vector<ScriptStatement> StatementsOf(std::string_view script) {
  return ScriptReader(script).Read();
}

}  // namespace qorhost::dialect
