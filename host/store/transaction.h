// Work on a store that is kept whole or undone whole.
#pragma once

#include "frame/data_services.h"

namespace qorhost {

/// Begins, commits and rolls back. Failures raise StoreError and leave no transaction behind,
/// except where a member says otherwise.
class Transaction {
 public:
  virtual ~Transaction() = default;
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// Refuses a second one inside the first.
  virtual void Begin() = 0;
  /// A commit that fails undoes all changes before it raises.
  virtual void Commit() = 0;
  /// Refuses when nothing is open; after a failed commit there is nothing left to do.
  virtual void Rollback() = 0;
  /// Whether it was begun and not yet ended.
  [[nodiscard]] virtual bool open() const noexcept = 0;

 protected:
  Transaction() = default;
};

/// Begins a transaction, which must live longer, and undoes it at its own end unless it was kept or
/// undone before.
class Undoable {
 public:
  explicit Undoable(Transaction& transaction);
  ~Undoable();
  Undoable(const Undoable&) = delete;
  Undoable& operator=(const Undoable&) = delete;

  void Keep();
  void Undo();

 private:
  Transaction& transaction_;
  bool ended_ = false;
};

/// The transaction of a connection that is reached by member name: each call is visible to whoever
/// watches the connection.
class ConnectionTransaction final : public Transaction {
 public:
  explicit ConnectionTransaction(const qorcred::ObjectRef& connection) : connection_(connection) {}

  void Begin() override;
  void Commit() override;
  void Rollback() override;
  [[nodiscard]] bool open() const noexcept override { return open_; }

 private:
  qorcred::Connection connection_;
  bool open_ = false;
};

}  // namespace qorhost
