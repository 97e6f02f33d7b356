// Watching the database manager: failed statements and inserted rows.
#pragma once

#include <functional>
#include <string_view>

#include "frame/object.h"

namespace qorhost {

/// Told of every statement that set the manager's error flag: its error text.
using StatementErrorHandler = std::function<void(std::string_view errorText)>;
/// Told of every row inserted: the table as the caller named it.
using InsertHandler = std::function<void(std::string_view table)>;

/// A database manager that hands every call on and tells its handlers what came of it.
class WatchedManager final : public qorcred::Object {
 public:
  WatchedManager(qorcred::ObjectRef inner, StatementErrorHandler onError, InsertHandler onInsert);

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  qorcred::ObjectRef inner_;
  StatementErrorHandler onError_;
  InsertHandler onInsert_;
};

}  // namespace qorhost
