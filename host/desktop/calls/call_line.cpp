#include "host/desktop/calls/call_line.h"

#include <algorithm>
#include <array>

namespace qorhost {

namespace {

constexpr std::size_t kIndent = 2;
constexpr std::string_view kHost = "host";

/// Where one of the marks stands outside of texts first; npos where none does.
std::size_t FindFirst(std::string_view text, std::initializer_list<std::string_view> marks) {
  bool inText = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    // A quote inside of a text is doubled: it ends the text and begins it again.
    if (text[at] == '"') {
      inText = !inText;
    }
    if (!inText && std::any_of(marks.begin(), marks.end(), [&](std::string_view mark) {
          return text.substr(at).starts_with(mark);
        })) {
      return at;
    }
  }
  return std::string_view::npos;
}

/// The text up to a place, and what stands behind it.
std::string_view TakeUpTo(std::string_view& text, std::size_t at) {
  const std::string_view taken = text.substr(0, at);
  text.remove_prefix(taken.size());
  return taken;
}

bool TakePrefix(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) {
    return false;
  }
  text.remove_prefix(prefix.size());
  return true;
}

std::string_view WithoutBlank(std::string_view text) {
  return text.starts_with(' ') ? text.substr(1) : text;
}

/// "(a, b)" is what stands in it; "(a) = value" and "= value" stay.
std::string_view WithoutParentheses(std::string_view text) {
  return text.starts_with('(') && text.ends_with(')') ? text.substr(1, text.size() - 2)
                                                      : WithoutBlank(text);
}

void ReadCallee(std::string_view callee, CallLine& line) {
  const std::size_t number = callee.find('@');
  if (number == std::string_view::npos) {
    line.object = kHost;  // one of its services
    line.member = callee;
    return;
  }
  const std::size_t point = callee.find('.', number);
  line.object = callee.substr(0, point);
  if (point != std::string_view::npos) {
    line.member = callee.substr(point + 1);
  }
}

}  // namespace

CallLine ReadCallLine(std::string_view line) {
  CallLine read;
  const std::size_t begin = std::min(line.find_first_not_of(' '), line.size());
  read.depth = begin / kIndent;
  std::string_view text = line.substr(begin);
  if (text.starts_with("-> ") || text.starts_with("! ") || text.starts_with("out ")) {
    read.kind = CallKind::kOutcome;
    read.outcome = text;
    return read;
  }
  std::string_view call = TakeUpTo(text, FindFirst(text, {" -> ", " ! ", " out "}));
  read.outcome = WithoutBlank(text);
  if (TakePrefix(call, "host ")) {
    read.kind = CallKind::kHostStatement;
    read.object = kHost;
    read.arguments = call;
    return read;
  }
  for (const std::string_view word : {std::string_view("new "), std::string_view("Release ")}) {
    if (TakePrefix(call, word)) {
      read.object = call;
      read.member = word.substr(0, word.size() - 1);
      return read;
    }
  }
  ReadCallee(TakeUpTo(call, FindFirst(call, {"(", " = "})), read);
  read.arguments = WithoutParentheses(call);
  if (read.member.starts_with("Execute")) {
    read.kind = CallKind::kStatement;
  }
  return read;
}

}  // namespace qorhost
