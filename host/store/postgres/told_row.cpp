#include "host/store/postgres/told_row.h"

#include <algorithm>
#include <charconv>

#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

/// Reads JSON as the server writes that of rows: objects of objects, texts and other plain values.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  /// Whether there is a member more of the object that was begun; its name then.
  bool NextMember(std::string_view& name) {
    SkipBlanks();
    if (TakeIf('}')) {
      return false;
    }
    (void)TakeIf(',');
    name = Text();
    Take(':');
    return true;
  }

  void Take(char sign) {
    SkipBlanks();
    if (!TakeIf(sign)) {
      Refuse();
    }
  }

  /// What stands between the quotes.
  std::string_view Text() {
    const std::string_view quoted = Quoted();
    return quoted.substr(1, quoted.size() - 2);
  }

  /// A value that is no object, as it stands.
  std::string_view Plain() {
    SkipBlanks();
    if (at_ < text_.size() && text_[at_] == '"') {
      return Quoted();
    }
    const std::size_t end = std::min(text_.find_first_of(",} ", at_), text_.size());
    const std::string_view value = text_.substr(at_, end - at_);
    at_ = end;
    return value;
  }

  ToldRow Row() {
    ToldRow row;
    Take('{');
    for (std::string_view column; NextMember(column);) {
      row.Add({column, Plain()});
    }
    return row;
  }

 private:
  [[noreturn]] static void Refuse() {
    throw StoreError("The server told of a changed row in words that are not this store's");
  }

  void SkipBlanks() {
    while (at_ < text_.size() && text_[at_] == ' ') {
      ++at_;
    }
  }

  bool TakeIf(char sign) {
    const bool isThere = at_ < text_.size() && text_[at_] == sign;
    at_ += isThere ? 1 : 0;
    return isThere;
  }

  std::string_view Quoted() {
    SkipBlanks();
    const std::size_t begin = at_;
    Take('"');
    while (at_ < text_.size() && text_[at_] != '"') {
      at_ += text_[at_] == '\\' ? 2 : 1;
    }
    if (!TakeIf('"')) {
      Refuse();
    }
    return text_.substr(begin, at_ - begin);
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

std::int64_t WholeNumberIn(std::string_view json) {
  std::int64_t number = 0;
  const auto read = std::from_chars(json.data(), json.data() + json.size(), number);
  if (read.ec != std::errc()) {
    throw StoreError("The server told of a changed row without its identity");
  }
  return number;
}

}  // namespace

std::string_view ToldRow::At(std::string_view column) const {
  const auto found = std::find_if(cells_.begin(), cells_.end(),
                                  [&](const Cell& cell) { return cell.column == column; });
  return found == cells_.end() ? std::string_view() : found->json;
}

Told::Told(std::string_view text) : text_(text.begin(), text.end()) {
  Reader reader({text_.data(), text_.size()});
  std::string_view last;
  reader.Take('{');
  for (std::string_view name; reader.NextMember(name);) {
    if (name == "table") {
      table_ = reader.Text();
    } else if (name == "before") {
      before_ = reader.Row();
    } else if (name == "after") {
      after_ = reader.Row();
    } else {
      last = reader.Plain();
    }
  }
  rid_ = WholeNumberIn((after_.empty() ? before_ : after_).At("RID"));
  last_ = last.empty() ? rid_ : WholeNumberIn(last);
}

}  // namespace qorhost::postgres
