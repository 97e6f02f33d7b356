#include "host/desks/watched_manager.h"

#include <cstddef>
#include <string>
#include <utility>

#include "frame/manager_operations.h"

namespace qorhost {

using qorcred::Arguments;
using qorcred::InvokeKind;
using qorcred::Value;

namespace {

constexpr std::size_t kInsertArguments = 6;
constexpr std::size_t kInsertTable = 3;

}  // namespace

WatchedManager::WatchedManager(qorcred::ObjectRef inner, StatementErrorHandler onError,
                               InsertHandler onInsert)
    : inner_(std::move(inner)), onError_(std::move(onError)), onInsert_(std::move(onInsert)) {}

Value WatchedManager::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  Value result = inner_->Invoke(member, kind, arguments);
  const qorcred::ManagerOperation* operation =
      qorcred::FindManagerOperation(member, arguments.size());
  if (operation == nullptr) {
    return result;
  }
  const bool* failed = arguments[operation->errorFlagAt].As<bool>();
  if (failed != nullptr && *failed) {
    const std::string* text = arguments[operation->errorFlagAt + 1].As<std::string>();
    onError_(text != nullptr ? *text : "the statement failed");
  } else if (onInsert_ && operation->name == qorcred::kExecuteInsert.name &&
             arguments.size() == kInsertArguments) {
    const std::string* table = arguments[kInsertTable].As<std::string>();
    onInsert_(table != nullptr ? *table : "");
  }
  return result;
}

}  // namespace qorhost
