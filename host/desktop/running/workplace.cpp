#include "host/desktop/running/workplace.h"

#include <QCoreApplication>
#include <algorithm>
#include <exception>
#include <vector>

#include "host/desktop/running/messages.h"

namespace qorhost {

namespace {

Surroundings SurroundingsOf(QWidget& window, OperationRunner& runner,
                            const WorkSurroundings& given) {
  Surroundings surroundings;
  surroundings.clock = given.clock;
  surroundings.author = given.author;
  surroundings.trace = given.trace;
  surroundings.tracedLater = true;
  surroundings.patience = runner.patience();
  surroundings.pendingEvents = [&runner] { runner.LetEventsRun(); };
  surroundings.messageBox = [&window, &runner](std::string_view text, qorcred::MessageStyle style,
                                               std::string_view title) {
    const OpenGate open(runner.gate());
    return ShowMessageBox(&window, text, style, title);
  };
  return surroundings;
}

}  // namespace

Workplace::Workplace(QWidget& window, OperationRunner& runner, std::unique_ptr<Store> store,
                     std::filesystem::path file, const WorkSurroundings& surroundings)
    : window_(window),
      runner_(runner),
      session_(std::move(store), SurroundingsOf(window, runner, surroundings)),
      file_(std::move(file)),
      givenTrace_(surroundings.trace) {
  takingBack_.setSingleShot(true);
  QObject::connect(&takingBack_, &QTimer::timeout, &takingBack_, [this] {
    if (onTell_) {
      onTell_({});
    }
  });
}

void Workplace::TraceTo(const qorcred::trace::TraceSink& sink) {
  if (!sink || !givenTrace_) {
    session_.TraceTo(sink ? sink : givenTrace_);
    return;
  }
  session_.TraceTo([given = givenTrace_, sink](std::string_view line) {
    given(line);
    sink(line);
  });
}

void Workplace::Tell(const QString& what) const {
  if (what.isEmpty()) {
    takingBack_.start(0);
    return;
  }
  takingBack_.stop();
  if (onTell_) {
    onTell_(what);
  }
}

void Workplace::TellChanged() const {
  if (onChanged_) {
    onChanged_();
  }
}

void Workplace::TellUnits() const {
  if (onUnits_) {
    onUnits_();
  }
}

bool Workplace::FindsUnitGone() {
  if (unitKey_ == 0) {
    return false;
  }
  try {
    bool isGone = false;
    (void)runner_.Run(QCoreApplication::translate("qorhost::MainWindow", "Reading the units"), [&] {
      const std::vector<UnitName> units = session_.Units();
      isGone = std::none_of(units.begin(), units.end(),
                            [this](const UnitName& unit) { return unit.key == unitKey_; });
    });
    return isGone;
  } catch (const std::exception&) {
    return false;  // what is wrong with the store is told by whoever asks
  }
}

void Workplace::TellUnitGone() const {
  if (onUnitGone_) {
    onUnitGone_();
  }
}

}  // namespace qorhost
