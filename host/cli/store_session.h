// A store opened for one command, and the host that controllers see on it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "frame/date.h"
#include "host/cli/console.h"
#include "host/cli/operator.h"
#include "host/cli/watched_manager.h"
#include "host/components/store_host.h"
#include "host/store/store_connection.h"
#include "trace/tracing_host.h"

namespace qorhost {

/// Options that every command has.
struct GlobalOptions {
  std::filesystem::path file = "building.db";
  std::optional<std::int32_t> unit;
  std::optional<bool> answer;  ///< --yes or --no
  bool json = false;
  bool trace = false;
};

struct UnitName {
  std::int32_t key = 0;
  std::string name;
};

/// Opens the file of `options`; an older store is brought up to date first, whatever the mode.
/// Raises FailureError that names `qorhost init --demo` when there is no such file, and StoreError.
[[nodiscard]] std::unique_ptr<Store> OpenFile(const GlobalOptions& options, OpenMode mode);

/// Keeps everything that controllers need alive: the connection, the operator and the host, each
/// behind its tracing decorator with --trace. One thread.
class StoreSession {
 public:
  StoreSession(std::unique_ptr<Store> store, const GlobalOptions& options, Console& console);
  StoreSession(const StoreSession&) = delete;
  StoreSession& operator=(const StoreSession&) = delete;

  /// The host and connection to hand to controllers.
  [[nodiscard]] qorcred::Host& host();
  [[nodiscard]] const qorcred::ObjectRef& connection() const { return visibleConnection_; }
  /// The connection itself.
  [[nodiscard]] StoreConnection& store() { return *connection_; }
  [[nodiscard]] SqlSession& sql() { return connection_->session(); }
  [[nodiscard]] OperationLog& log() { return log_; }
  [[nodiscard]] const TranscriptSink& transcript() const { return transcript_; }
  [[nodiscard]] qorcred::Date Today() { return qorcred::DayOf(clock_()); }
  [[nodiscard]] bool traced() const { return tracingHost_ != nullptr; }

  /// Is told of every row inserted from now on, or no more.
  void OnInsert(InsertHandler handler) { *onInsert_ = std::move(handler); }
  /// Shows messages in another way from now on.
  void OnMessage(MessageBox messageBox) { messageBox_ = std::move(messageBox); }

  [[nodiscard]] std::vector<UnitName> Units();
  /// The unit of --unit, or the first. Raises UsageError for a unit that is not in the store and
  /// RefusedError when there is none.
  [[nodiscard]] UnitName ChosenUnit();
  /// The unit of --unit alone, or all units.
  [[nodiscard]] std::vector<UnitName> ChosenUnits();

 private:
  [[nodiscard]] StoreHost::Services MakeServices();

  GlobalOptions options_;
  OperationLog log_;
  Operator operator_;
  MessageBox messageBox_;
  Clock clock_;
  std::shared_ptr<InsertHandler> onInsert_ = std::make_shared<InsertHandler>();
  TranscriptSink transcript_;
  std::shared_ptr<StoreConnection> connection_;
  qorcred::ObjectRef visibleConnection_;
  StoreHost storeHost_;
  std::unique_ptr<TracingHost> tracingHost_;
};

}  // namespace qorhost
