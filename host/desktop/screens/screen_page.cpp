#include "host/desktop/screens/screen_page.h"

#include <QLabel>
#include <algorithm>
#include <exception>
#include <string>
#include <vector>

#include "host/desks/desk_error.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/words/desk_words.h"

namespace qorhost {

namespace {

/// Without the ampersand of the mnemonic and the colon behind it.
QString Plain(QString text) {
  text.remove(QLatin1Char('&'));
  return text.endsWith(QLatin1Char(':')) ? text.chopped(1) : text;
}

/// Who was faster: the latest of them.
QString Others(const Outcome& outcome) {
  constexpr std::size_t kMost = 5;
  QString told;
  const std::size_t count = outcome.changes.size();
  for (std::size_t at = count > kMost ? count - kMost : 0; at < count; ++at) {
    const WorkEntry& change = outcome.changes[at];
    told += QStringLiteral("\n%1 UTC, %2: %3")
                .arg(ToQt(change.at),
                     change.who.empty() ? ScreenPage::tr("somebody") : ToQt(change.who),
                     Told(change.what));
  }
  return told;
}

QString Capitalized(QString text) {
  return text.replace(0, 1, text.left(1).toUpper());
}

QString NotKnown() {
  return ScreenPage::tr("It is not known whether it was stored.");
}

/// A line for each.
QString Failures(const Outcome& outcome) {
  QStringList lines;
  for (const std::string& failure : outcome.failures) {
    lines.append(Told(failure));
  }
  return lines.join(QLatin1Char('\n'));
}

}  // namespace

QString CalledAs(const QWidget& widget) {
  if (!widget.accessibleName().isEmpty()) {
    return widget.accessibleName();
  }
  for (const QLabel* label : widget.parentWidget()->findChildren<QLabel*>()) {
    if (label->buddy() == &widget) {
      return Plain(label->text());
    }
  }
  return Plain(widget.property("text").toString());
}

ScreenPage::ScreenPage(Workplace& place, QWidget* parent)
    : QWidget(parent), place_(place), mark_(new FaultMark(*this)) {}

bool ScreenPage::Run(const QString& what, const std::function<void()>& operation) {
  if (!place_.runner().busy()) {
    before_ = session().sql().work().Committed(place_.unitKey());
  }
  return RunBehind(what, operation);
}

bool ScreenPage::RunBehind(const QString& what, const std::function<void()>& operation) {
  if (place_.runner().busy()) {
    return false;
  }
  mark_->Clear();
  const bool isTitle = what.endsWith(QLatin1Char('.'));
  if (!isTitle) {
    place_.Tell({});  // what was told was told of an earlier operation
  }
  try {
    return place_.runner().Run(isTitle ? tr("Working") : what, operation);
  } catch (const InputFault& fault) {
    if (WidgetFor(fault.field()) != nullptr || !FindsUnitGone()) {
      TellFault(fault);
    }
  } catch (const CancelledError&) {
    TellCancelled();
  } catch (const std::exception& failure) {
    if (EndingBy(failure) == Ending::kUnknown) {
      TellFailure(place_.window(), NotKnown(), Told(failure.what()));
    } else if (place_.runner().cancelled()) {
      TellCancelled();
    } else if (!FindsUnitGone()) {
      TellFailure(place_.window(), what, Told(failure.what()));
    }
  }
  return false;
}

bool ScreenPage::Look(const QString& what, const std::function<void()>& show) {
  return Run(what, [&] {
    const Undoable oneState = session().OneState();
    show();
  });
}

bool ScreenPage::LookBehind(const QString& what, const std::function<void()>& show) {
  return RunBehind(what, [&] {
    const Undoable oneState = session().OneState();
    show();
  });
}

/// What was stored before the cancelling stays, as when rows cannot be shown again behind it. A
/// unit of work that was undone has committed nothing, whatever an earlier one has.
void ScreenPage::TellCancelled() {
  const std::optional<UnitVersion> committed = session().sql().work().Committed(place_.unitKey());
  const bool stored = committed && committed != before_;
  place_.Tell(stored ? tr("Cancelled behind the change, which is stored. F5 shows it.")
                     : tr("Cancelled. Nothing was changed."));
}

/// Whether others have deleted the unit: then nothing else is told, and the window leaves it.
bool ScreenPage::FindsUnitGone() {
  const bool isGone = place_.FindsUnitGone();
  if (isGone) {
    place_.TellUnitGone();
  }
  return isGone;
}

QWidget* ScreenPage::WidgetFor(std::string_view field) const {
  QWidget* found = nullptr;
  for (const FieldWidget& known : Fields()) {
    if (known.field == field && (found == nullptr || !found->isVisible())) {
      found = findChild<QWidget*>(ToQt(known.widget));
    }
  }
  return found;
}

void ScreenPage::TellFault(const InputFault& fault) {
  std::vector<std::string> names;
  for (const FieldWidget& known : Fields()) {
    const auto* widget = findChild<QWidget*>(ToQt(known.widget));
    names.push_back(widget == nullptr ? std::string(known.field) : FromQt(CalledAs(*widget)));
  }
  std::vector<FieldWord> words;
  for (std::size_t at = 0; at < names.size(); ++at) {
    words.push_back({Fields()[at].field, names[at], ""});
  }
  const InputFault inLanguage(fault.field(), fault.value(), FromQt(Told(fault.reason())),
                              fault.kind());
  const QString told = ToQt(InWords(inLanguage, words));
  ShowChanges();
  QWidget* widget = WidgetFor(fault.field());
  if (widget == nullptr || !widget->isVisible()) {
    TellFailure(place_.window(), tr("This cannot be entered."), told);
    return;
  }
  widget->setFocus(Qt::OtherFocusReason);
  mark_->Show(*widget, told);
}

bool ScreenPage::RunTold(const QString& title, std::string_view what,
                         const std::function<Outcome()>& operation) {
  return RunTold(title, operation, [&](const Outcome& outcome) { return Tell(outcome, what); });
}

bool ScreenPage::RunTold(const QString& title, std::string_view what, const ScreenModel& screen,
                         const std::function<Outcome()>& operation) {
  return RunTold(title, operation,
                 [&](const Outcome& outcome) { return Tell(outcome, what, screen); });
}

bool ScreenPage::RunTold(const QString& title, const std::function<Outcome()>& operation,
                         const std::function<bool(const Outcome&)>& tell) {
  Outcome outcome;
  if (!Run(title, [&] { outcome = operation(); })) {
    return false;
  }
  const bool done = tell(outcome);
  if (outcome.ending == Ending::kStale) {
    ShowOvertaken();
  }
  return done;
}

bool ScreenPage::Tell(const Outcome& outcome, std::string_view what, const ScreenModel& screen) {
  const bool done = Tell(outcome, what);
  if (outcome.ending != Ending::kRefused || outcome.messages.empty() || screen.focused().empty()) {
    return done;
  }
  ShowChanges();
  auto* widget = findChild<QWidget*>(ToQt(screen.focused()));
  if (widget != nullptr && widget->isVisible()) {
    widget->setFocus(Qt::OtherFocusReason);
    mark_->Show(*widget, ToQt(outcome.messages.back().text));
  }
  return done;
}

bool ScreenPage::Tell(const Outcome& outcome, std::string_view what) {
  const QString nothing = tr("Nothing was changed.");
  switch (outcome.ending) {
    case Ending::kDone:
      return true;
    case Ending::kCancelled:
      place_.Tell(tr("Cancelled. Nothing was changed."));
      break;
    case Ending::kStale: {
      if (FindsUnitGone()) {
        break;
      }
      const QString told = outcome.cause == StaleCause::kRowDeleted
                               ? QStringLiteral("%1.")
                               : tr("%1. What you entered is still there: look at it and try "
                                    "again.");
      TellFailure(place_.window(), nothing,
                  told.arg(Capitalized(Told(StaleReason(outcome.cause, what)))) + Others(outcome));
      break;
    }
    case Ending::kFailed:
      if (place_.runner().cancelled()) {
        place_.Tell(tr("Cancelled. Nothing was changed."));
        break;
      }
      if (FindsUnitGone()) {
        break;
      }
      TellFailure(place_.window(), nothing, Failures(outcome));
      break;
    case Ending::kUnknown:
      TellFailure(place_.window(), NotKnown(), Failures(outcome));
      break;
    case Ending::kRefused:
      place_.Tell(nothing);
      if (outcome.messages.empty()) {
        TellFailure(place_.window(), nothing, Failures(outcome));
      }
      break;
  }
  return false;
}

}  // namespace qorhost
