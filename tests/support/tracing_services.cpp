#include "tests/support/tracing_services.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "frame/convert.h"
#include "frame/manager_operations.h"
#include "frame/result_table.h"
#include "frame/sql_text.h"

namespace qortest {

using qorcred::Arguments;
using qorcred::InvokeKind;
using qorcred::ObjectRef;
using qorcred::SameMember;
using qorcred::Value;
using qorcred::ValueType;

namespace {

constexpr std::string_view kExecute = "Execute";
constexpr std::size_t kExecuteArguments = 2;
constexpr std::string_view kUnitStatus = "pbGetUnitStatus";
constexpr std::size_t kUnitStatusArguments = 9;
constexpr std::size_t kFirstCount = 5;
constexpr std::size_t kCounts = 3;

/// The arguments of a statement that a reader wants: neither connection nor error, and nothing for
/// optional arguments left out at the end.
std::string StatementArguments(const qorcred::ManagerOperation& statement,
                               std::span<const Value> arguments) {
  std::vector<Value> shown;
  for (std::size_t at = 0; at < arguments.size(); ++at) {
    if (at != statement.errorFlagAt && at != statement.errorFlagAt + 1) {
      shown.push_back(arguments[at]);
    }
  }
  while (!shown.empty() && shown.back().Is(ValueType::kMissing)) {
    shown.pop_back();
  }
  return ArgumentList(shown);
}

/// Whether cell (0, 0) is there and counts as the empty string, the sign of no rows.
bool HoldsEmptyFirstCell(const qorcred::ResultTable& table) {
  for (const int dimension : {1, 2}) {
    if (table.LowerBound(dimension) > 0 || table.UpperBound(dimension) < 0) return false;
  }
  return qorcred::IsEmptyText(table.At(0, 0));
}

/// "3 rows" for a result table; nothing for any other result. Looks into the table's own cells, so
/// that the table sees no call but those of the controller.
std::optional<std::string> RowCount(const Value& result) {
  const ObjectRef* object = result.As<ObjectRef>();
  if (object == nullptr) return std::nullopt;
  const auto* table = dynamic_cast<const qorcred::ResultTable*>(Undecorated(*object).get());
  if (table == nullptr) return std::nullopt;
  if (HoldsEmptyFirstCell(*table)) return "no rows";
  const std::int32_t rows = table->UpperBound(1) - table->LowerBound(1) + 1;
  return qorcred::Concat(rows, rows == 1 ? " row" : " rows");
}

std::string ResultSuffix(const Value& result) {
  if (const auto rows = RowCount(result)) {
    return " -> " + *rows;
  }
  return result.Is(ValueType::kEmpty) ? std::string() : " -> " + TranscriptText(result);
}

std::string ErrorSuffix(const qorcred::ManagerOperation& statement,
                        std::span<const Value> arguments) {
  const bool* flag = arguments[statement.errorFlagAt].As<bool>();
  if (flag == nullptr || !*flag) {
    return {};
  }
  const Value& text = arguments[statement.errorFlagAt + 1];
  const std::string* words = text.As<std::string>();
  return " ! " + (words != nullptr ? QuotedText(*words) : TranscriptText(text));
}

std::string CountsSuffix(std::span<const Value> arguments) {
  std::string suffix = " ->";
  for (const Value& count : arguments.subspan(kFirstCount, kCounts)) {
    const std::string* text = count.As<std::string>();
    suffix += " " + (text != nullptr && !text->empty() ? *text : TranscriptText(count));
  }
  return suffix;
}

}  // namespace

Value TracingConnection::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  if (SameMember(member, kExecute) && arguments.size() == kExecuteArguments) {
    const std::string line = std::string(member) + ArgumentList(arguments.first(1));
    Value result = Forward(line, member, kind, arguments);
    Write(line + " -> " + TranscriptText(arguments[1]));
    return result;
  }
  const std::string line = std::string(member) + ArgumentList(arguments);
  Value result = Forward(line, member, kind, arguments);
  Write(line + ResultSuffix(result));
  return result;
}

TracingComponent::TracingComponent(std::string programmaticId, ObjectRef inner, TranscriptSink sink)
    : TracingObject(std::move(inner), std::move(sink)),
      programmaticId_(std::move(programmaticId)) {}

TracingComponent::~TracingComponent() {
  try {
    Write("Release " + QuotedText(programmaticId_));
  } catch (...) {
    // A transcript that cannot be written must not end the program while objects go.
    return;
  }
}

Value TracingComponent::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  if (SameMember(member, kUnitStatus) && arguments.size() == kUnitStatusArguments) {
    const std::string line = std::string(member) + ArgumentList(arguments.subspan(1, 1));
    Value result = Forward(line, member, kind, arguments);
    Write(line + CountsSuffix(arguments));
    return result;
  }
  const qorcred::ManagerOperation* statement =
      qorcred::FindManagerOperation(member, arguments.size());
  const std::string line =
      std::string(member) +
      (statement != nullptr ? StatementArguments(*statement, arguments) : ArgumentList(arguments));
  Value result = Forward(line, member, kind, arguments);
  Write(line + ResultSuffix(result) +
        (statement != nullptr ? ErrorSuffix(*statement, arguments) : std::string()));
  return result;
}

}  // namespace qortest
