#include "host/cli/error_report.h"

#include <string_view>
#include <utility>

#include "host/files/json_writer.h"

namespace qorhost {

namespace {

using qorcred::Value;

qorcred::StringArray LinesOf(std::string_view text) {
  constexpr std::string_view kProgram = "qorhost: ";
  qorcred::StringArray lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    line.remove_prefix(line.starts_with(kProgram) ? kProgram.size() : 0);
    lines.emplace_back(line);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

Table MessagesOf(const Console& console) {
  Table table;
  table.columns = {{"Title", "title"}, {"Icon", "icon"}, {"Text", "text"}, {"Answer", "answer"}};
  for (const ToldMessage& message : console.messages) {
    table.rows.push_back({message.title, message.icon, message.text,
                          message.answer.empty() ? Value(qorcred::Null{}) : Value(message.answer)});
  }
  return table;
}

std::string_view KindOf(ExitStatus status, const Console& console) {
  switch (status) {
    case ExitStatus::kRefused:
      return console.stale ? "stale" : "refused";
    case ExitStatus::kUsage:
      return "usage";
    default:
      return "failure";
    case ExitStatus::kUnknown:
      return "unknown";
  }
}

Value OrNull(const std::string& text) {
  return text.empty() ? Value(qorcred::Null{}) : Value(text);
}

}  // namespace

void PrintEndedAsJson(std::ostream& err, const Ended& ended, const Console& console,
                      const std::string& notes) {
  const qorcred::StringArray lines = LinesOf(notes);
  JsonObject told;
  const bool failed = ended.status != ExitStatus::kDone;
  if (failed) {
    std::string message = ended.message;
    if (message.empty() && !console.messages.empty()) {
      message = console.messages.back().text;
    } else if (message.empty() && !lines.empty()) {
      message = lines.back();
    } else if (message.empty()) {
      message = "standard output tells what is wrong";
    }
    told.Add("kind", KindOf(ended.status, console))
        .Add("status", static_cast<std::int32_t>(ended.status))
        .Add("message", message)
        .Add("field", OrNull(ended.field))
        .Add("value", ended.field.empty() ? Value(qorcred::Null{}) : Value(ended.value));
  } else if (lines.empty() && console.messages.empty()) {
    return;
  }
  told.Add("messages", MessagesOf(console)).Add("notes", lines);
  JsonObject().Add(failed ? "error" : "told", told).Print(err);
}

}  // namespace qorhost
