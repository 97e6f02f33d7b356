#include "host/components/watched_manager.h"

#include <string>
#include <utility>

#include "frame/manager_operations.h"

namespace qorhost {

using qorcred::Arguments;
using qorcred::InvokeKind;
using qorcred::Value;

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
  } else if (onInsert_ && operation->name == qorcred::kExecuteInsert.name) {
    const std::string* table = arguments[qorcred::kTableOfInsert].As<std::string>();
    onInsert_(table != nullptr ? *table : "");
  }
  return result;
}

}  // namespace qorhost
