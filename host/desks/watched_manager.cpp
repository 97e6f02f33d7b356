#include "host/desks/watched_manager.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>

namespace qorhost {

using qorcred::Arguments;
using qorcred::InvokeKind;
using qorcred::SameMember;
using qorcred::Value;

namespace {

constexpr std::string_view kInsert = "ExecuteInsert";
constexpr std::size_t kInsertArguments = 6;
constexpr std::size_t kInsertTable = 3;

// Where each operation keeps its error flag; the text follows it.
struct FlagPlace {
  std::string_view operation;
  std::size_t at;
};
constexpr std::array kFlags{FlagPlace{"ExecuteSelect", 2}, FlagPlace{"ExecuteScalar", 2},
                            FlagPlace{"ExecuteUpdate", 3}, FlagPlace{kInsert, 4},
                            FlagPlace{"ExecuteDelete", 3}, FlagPlace{"ExecuteQueryDelete", 2}};

}  // namespace

WatchedManager::WatchedManager(qorcred::ObjectRef inner, StatementErrorHandler onError,
                               InsertHandler onInsert)
    : inner_(std::move(inner)), onError_(std::move(onError)), onInsert_(std::move(onInsert)) {}

Value WatchedManager::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  Value result = inner_->Invoke(member, kind, arguments);
  const auto* flag = std::find_if(kFlags.begin(), kFlags.end(), [member](const FlagPlace& place) {
    return SameMember(place.operation, member);
  });
  if (flag == kFlags.end() || arguments.size() < flag->at + 2) {
    return result;
  }
  const bool* failed = arguments[flag->at].As<bool>();
  if (failed != nullptr && *failed) {
    const std::string* text = arguments[flag->at + 1].As<std::string>();
    onError_(text != nullptr ? *text : "the statement failed");
  } else if (onInsert_ && flag->operation == kInsert && arguments.size() == kInsertArguments) {
    const std::string* table = arguments[kInsertTable].As<std::string>();
    onInsert_(table != nullptr ? *table : "");
  }
  return result;
}

}  // namespace qorhost
