#include "host/desktop/running/operation_runner.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QGuiApplication>
#include <QObject>

namespace qorhost {

namespace {

constexpr std::chrono::milliseconds kLongest(std::chrono::minutes(10));
constexpr std::chrono::milliseconds kUnnoticed(500);

/// What holds while an operation runs.
class Running {
 public:
  Running(bool& busy, InputGate& gate, BusyBar& bar) : busy_(busy), gate_(gate), bar_(bar) {
    busy_ = true;
    gate_.Shut();
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  }
  ~Running() {
    QGuiApplication::restoreOverrideCursor();
    bar_.Finish();
    gate_.Open();
    busy_ = false;
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  bool& busy_;
  InputGate& gate_;
  BusyBar& bar_;
};

}  // namespace

OperationRunner::OperationRunner(BusyBar& bar) : bar_(bar), gate_(&bar.cancelButton()) {
  QObject::connect(&bar.cancelButton(), &QAbstractButton::clicked, &gate_,
                   [this] { cancelled_ = busy_; });
}

bool OperationRunner::Run(const QString& what, const std::function<void()>& operation) {
  if (busy_) {
    return false;
  }
  cancelled_ = false;
  counted_ = false;
  what_ = what;
  sincePumped_.start();
  sinceBegun_.start();
  const Running running(busy_, gate_, bar_);
  operation();
  return true;
}

Progress OperationRunner::progress() {
  return [this](std::int64_t done, std::int64_t total) {
    if (busy_ && isTimeToPump()) {
      counted_ = true;
      bar_.Tell(what_, done, total);
      Pump();
    }
    return !cancelled_;
  };
}

Patience OperationRunner::patience() {
  return {kLongest,
          [this](std::chrono::milliseconds waited) {
            if (busy_ && waited >= kUnnoticed) {
              bar_.TellWaiting();
            }
            if (busy_) {
              Pump();
            }
            return !cancelled_;
          },
          [this] { return LookUp(); }};
}

bool OperationRunner::LookUp() {
  if (!busy_ || !gate_.isShut()) {
    return true;  // while a message is shown it pumps for itself
  }
  if (isTimeToPump()) {
    if (!counted_ && sinceBegun_.elapsed() >= kUnnoticed.count()) {
      bar_.Tell(what_, 0, 0);
    }
    Pump();
  }
  return !cancelled_;
}

bool OperationRunner::isTimeToPump() const {
  return sincePumped_.elapsed() >= pace_.count();
}

void OperationRunner::LetEventsRun() {
  (void)LookUp();
}

void OperationRunner::Pump() {
  QCoreApplication::processEvents(QEventLoop::AllEvents);
  sincePumped_.restart();
}

}  // namespace qorhost
