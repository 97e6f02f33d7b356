#include "host/store/statement_rules.h"

#include <fmt/format.h>

#include "frame/convert.h"
#include "frame/date.h"
#include "frame/text.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace {

using dialect::StatementKind;
using qorcred::Value;

std::string_view NameOf(StatementKind kind) {
  switch (kind) {
    case StatementKind::kSelect:
      return "a SELECT";
    case StatementKind::kInsert:
      return "an INSERT";
    case StatementKind::kUpdate:
      return "an UPDATE";
    case StatementKind::kDelete:
      return "a DELETE";
  }
  return "another statement";
}

// A last-modified value as hosts hand it over (a date or a text of one) as a date.
std::optional<qorcred::Date> AsDate(const Value& value) {
  if (const auto* date = value.As<qorcred::Date>()) {
    return *date;
  }
  const auto* text = value.As<std::string>();
  return text == nullptr ? std::nullopt : qorcred::ParseDate(*text);
}

}  // namespace

void RequireChange(StatementKind found, std::optional<StatementKind> wanted) {
  if (found != wanted && (wanted.has_value() || found == StatementKind::kSelect)) {
    throw StoreError(fmt::format(
        "This takes {}, and the statement is {}",
        wanted.has_value() ? NameOf(*wanted) : "an INSERT, UPDATE or DELETE", NameOf(found)));
  }
}

void RequireSelect(StatementKind found) {
  if (found != StatementKind::kSelect) {
    throw StoreError(fmt::format("This takes a SELECT, and the statement is {}", NameOf(found)));
  }
}

const dialect::Table* VersionedTable(std::string_view named, std::string_view changed) {
  const dialect::Table* table = dialect::FindTable(named);
  table = table != nullptr ? table : dialect::FindTable(changed);
  const bool hasVersion = table != nullptr && dialect::FindColumn(*table, "RID") != nullptr &&
                          dialect::FindColumn(*table, "LASTMODIFIEDDATE") != nullptr;
  return hasVersion ? table : nullptr;
}

bool IsSameVersion(const Value& stored, const Value& meant) {
  const auto now = AsDate(stored);
  const auto then = AsDate(meant);
  if (now.has_value() && then.has_value()) {
    return qorcred::SecondsBetween(*now, *then) == 0;
  }
  return qorcred::Trim(qorcred::TextOrEmpty(stored)) == qorcred::Trim(qorcred::TextOrEmpty(meant));
}

const dialect::Table& RequireTable(std::string_view name) {
  const dialect::Table* found = dialect::FindTable(name);
  if (found == nullptr) {
    throw StoreError(fmt::format("There is no table '{}' in the store", name));
  }
  return *found;
}

std::string_view WordsOf(VoidReason reason) {
  switch (reason) {
    case VoidReason::kStale:
      return "Somebody else has changed the unit meanwhile: nothing was stored";
    case VoidReason::kReplaced:
      return "The store was moved or replaced while it was open: nothing was stored";
    case VoidReason::kCancelled:
      return "The operation was cancelled: nothing was stored";
    case VoidReason::kFailed:
    case VoidReason::kNone:
      break;
  }
  return "The operation was given up after an earlier failure: nothing was stored";
}

}  // namespace qorhost
