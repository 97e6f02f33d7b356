// Runs one operation of the desks at a time on the window's thread, and keeps the window alive.
#pragma once

#include <QElapsedTimer>
#include <QString>
#include <chrono>
#include <functional>

#include "host/desks/progress.h"
#include "host/desktop/running/busy_bar.h"
#include "host/desktop/running/input_gate.h"
#include "host/store/patience.h"

namespace qorhost {

/// Operations run where they are called. Whatever an operation calls back (its progress, a
/// statement that works, a wait for another seat's lock, a controller's wait for pending events)
/// lets the window paint and its Cancel button work; all other input is held back. A statement that
/// works when Cancel is pressed fails, and with it what it is a part of. One thread.
class OperationRunner {
 public:
  static constexpr std::chrono::milliseconds kUsualPace{30};  // a moment that nobody sees

  /// The bar, with its Cancel button, must outlive it.
  explicit OperationRunner(BusyBar& bar);

  [[nodiscard]] bool busy() const { return busy_; }
  /// Whether Cancel was pressed while the latest operation ran.
  [[nodiscard]] bool cancelled() const { return cancelled_; }
  /// The gate to be opened for a message.
  [[nodiscard]] InputGate& gate() { return gate_; }
  /// Runs an operation, told as `what` while it takes long. False, and nothing is run, while
  /// another one runs. What the operation raises passes through.
  bool Run(const QString& what, const std::function<void()>& operation);

  /// How long the window may stand still while an operation calls back. 0 looks up at each call.
  void SetPace(std::chrono::milliseconds pace) { pace_ = pace; }

  // What the operation is handed.

  /// Shows how far it has come; false once Cancel was pressed.
  [[nodiscard]] Progress progress();
  /// Waits for others who write, as long as they take or until Cancel is pressed; looks up while a
  /// statement works.
  [[nodiscard]] Patience patience();
  /// Paints, when it is time to.
  void LetEventsRun();

 private:
  void Pump();
  /// False once Cancel was pressed.
  bool LookUp();
  [[nodiscard]] bool isTimeToPump() const;

  BusyBar& bar_;
  InputGate gate_;
  std::chrono::milliseconds pace_ = kUsualPace;
  QElapsedTimer sincePumped_;
  QElapsedTimer sinceBegun_;
  bool counted_ = false;  // the bar shows how far it has come
  QString what_;
  bool busy_ = false;
  bool cancelled_ = false;
};

}  // namespace qorhost
