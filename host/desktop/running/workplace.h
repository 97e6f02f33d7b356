// A store that is open in the window, and what its screens need to work on it.
#pragma once

#include <QString>
#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>

#include "host/desks/session.h"
#include "host/desktop/running/operation_runner.h"

namespace qorhost {

/// What the window hands in for every store that it opens.
struct WorkSurroundings {
  Clock clock = SystemClock();
  Author author;
  qorcred::trace::TraceSink trace;  ///< none: nothing is traced
  /// The program that reads desktop database files; none: the one that belongs to this.
  std::filesystem::path desktopReader;
};

/// One thread. The window and the runner must outlive it; screens must not outlive it.
class Workplace {
 public:
  Workplace(QWidget& window, OperationRunner& runner, std::unique_ptr<Store> store,
            std::filesystem::path file, const WorkSurroundings& surroundings);

  [[nodiscard]] DeskSession& session() { return session_; }
  [[nodiscard]] OperationRunner& runner() { return runner_; }
  /// Where messages are shown.
  [[nodiscard]] QWidget* window() { return &window_; }
  [[nodiscard]] std::int32_t unitKey() const { return unitKey_; }
  [[nodiscard]] QString unitName() const { return unitName_; }
  void SetUnit(std::int32_t unitKey, const QString& name) {
    unitKey_ = unitKey;
    unitName_ = name;
  }
  /// The store's own file, over which nothing is written; empty for one in memory.
  [[nodiscard]] const std::filesystem::path& file() const { return file_; }

  /// Writes a trace to this sink, too, from now on; none ends that. No screen may be open.
  void TraceTo(const qorcred::trace::TraceSink& sink);

  /// Tells in one line what was done; the window shows it for a while. An empty line takes away
  /// what was told, as soon as events are worked off: a line that is told before that stands in its
  /// place, and is not painted anew where it says the same.
  void Tell(const QString& what) const;
  void OnTell(std::function<void(const QString& what)> handler) { onTell_ = std::move(handler); }
  /// To be called when an operation has changed the store: what other screens show may be old.
  void TellChanged() const;
  void OnChanged(std::function<void()> handler) { onChanged_ = std::move(handler); }
  /// To be called when units were added, changed or deleted, outside of an operation: the unit that
  /// screens work on may be another one then.
  void TellUnits() const;
  void OnUnits(std::function<void()> handler) { onUnits_ = std::move(handler); }
  /// Looks whether others have deleted the unit that screens work on; false where nobody can tell.
  [[nodiscard]] bool FindsUnitGone();
  /// To be called when they have: the window leaves it when the operation is over.
  void TellUnitGone() const;
  void OnUnitGone(std::function<void()> handler) { onUnitGone_ = std::move(handler); }

 private:
  QWidget& window_;
  OperationRunner& runner_;
  DeskSession session_;
  std::filesystem::path file_;
  qorcred::trace::TraceSink givenTrace_;
  std::int32_t unitKey_ = 0;
  QString unitName_;
  std::function<void(const QString& what)> onTell_;
  mutable QTimer takingBack_;  // what was told stands there until it is over
  std::function<void()> onChanged_;
  std::function<void()> onUnits_;
  std::function<void()> onUnitGone_;
};

}  // namespace qorhost
