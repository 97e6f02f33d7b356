// The open connection that hosts hand to controllers.
#pragma once

#include <memory>

#include "frame/object.h"
#include "host/store/sql_session.h"
#include "host/store/store.h"
#include "host/store/time_stamp.h"

namespace qorhost {

/// Late-bound members: BeginTrans, CommitTrans, RollbackTrans, Execute(sql[, rows ByRef]). What
/// fails raises kApplicationDefined with a text for people. Execute takes INSERT, UPDATE or DELETE
/// in the dialect. Owns its store; what is uncommitted when it ends is undone.
class StoreConnection final : public qorcred::Object {
 public:
  /// `clock` gives the time that rows are stamped with.
  StoreConnection(std::unique_ptr<Store> store, Clock clock);
  ~StoreConnection() override;
  StoreConnection(const StoreConnection&) = delete;
  StoreConnection& operator=(const StoreConnection&) = delete;

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

  /// For the host's own components. Raises kApplicationDefined after Close().
  [[nodiscard]] SqlSession& session();
  [[nodiscard]] Store& store();

  /// Undoes what is uncommitted and closes the store. Every later use raises.
  void Close() noexcept;

  /// Transactions that were begun and not ended: 0 or 1.
  [[nodiscard]] int OpenTransactions() const noexcept;
  /// Statements that an operation left running; 0 between any two calls.
  [[nodiscard]] int BusyStatements() const noexcept;

 private:
  void RequireOpen() const;
  qorcred::Value BeginTrans(qorcred::Arguments arguments);
  qorcred::Value CommitTrans(qorcred::Arguments arguments);
  qorcred::Value RollbackTrans(qorcred::Arguments arguments);
  qorcred::Value Execute(qorcred::Arguments arguments);

  std::unique_ptr<Store> store_;
  std::unique_ptr<SqlSession> session_;  // refers to store_ and goes before it
};

/// The store connection in an argument of a call. Raises kObjectRequired, kObjectNotSet,
/// kTypeMismatch for an object of another kind and kApplicationDefined for a closed connection.
[[nodiscard]] SqlSession& SessionOf(const qorcred::Value& connection);

}  // namespace qorhost
