// What all screens of the program have in common.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

#include "host/desks/input_fault.h"
#include "host/desks/outcome.h"
#include "host/desktop/binding/screen_binding.h"
#include "host/desktop/running/workplace.h"
#include "host/desktop/screens/fault_mark.h"

namespace qorhost {

/// Which widget of a form holds an input of a desk.
struct FieldWidget {
  std::string_view field;   ///< the desk's own name of the input
  std::string_view widget;  ///< the control's name
};

/// A screen for one unit, or for the whole store. The workplace must outlive it.
class ScreenPage : public QWidget {
  Q_OBJECT

 public:
  explicit ScreenPage(Workplace& place, QWidget* parent = nullptr);

  /// Whether something was entered and not stored.
  [[nodiscard]] virtual bool HasEntries() const { return false; }
  /// Called once, when the screen is to be shown for the first time: for operations that may be
  /// cancelled or refused, behind which it is there all the same.
  virtual void Begin() {}
  /// Shows what is stored now; called whenever the screen comes to the front and has no entries.
  virtual void Refresh() {}

  [[nodiscard]] FaultMark& mark() { return *mark_; }

 protected:
  [[nodiscard]] Workplace& place() { return place_; }
  [[nodiscard]] DeskSession& session() { return place_.session(); }

  /// Runs an operation; false when another one runs, or when it raised, which is told: an input
  /// that is wrong at its widget, anything else in a box, under `what`: a sentence, or what is
  /// done, which is shown meanwhile ("Saving credentials").
  bool Run(const QString& what, const std::function<void()>& operation);
  /// Runs what shows what the operation before it has stored: when it is cancelled, that is told to
  /// be stored.
  bool RunBehind(const QString& what, const std::function<void()>& operation);
  /// Runs what shows something: it sees one state of the store, and may write nothing.
  bool Look(const QString& what, const std::function<void()>& show);
  /// The same behind an operation, as RunBehind() does it.
  bool LookBehind(const QString& what, const std::function<void()>& show);
  /// Runs an operation on `what` ("credential") and tells how it ended; true when it was done. What
  /// others have changed meanwhile is shown by ShowOvertaken().
  bool RunTold(const QString& title, std::string_view what,
               const std::function<Outcome()>& operation);
  /// The same on a screen: a refusal is shown at the control that the controller has sent the focus
  /// to.
  bool RunTold(const QString& title, std::string_view what, const ScreenModel& screen,
               const std::function<Outcome()>& operation);
  /// Tells how an operation on `what` ("credential") ended; true when it was done. A refusal is
  /// shown at the control of `screen` that the controller has sent the focus to.
  bool Tell(const Outcome& outcome, std::string_view what, const ScreenModel& screen);
  bool Tell(const Outcome& outcome, std::string_view what);

  /// Others have changed what an operation was about, which is told already: it is to be shown as
  /// it is now, with what was entered kept for another try.
  virtual void ShowOvertaken() {}
  /// Shows what an operation has changed on the screen's controls, as a screen that is bound to
  /// some has to before something is told at one of its widgets.
  virtual void ShowChanges() {}
  /// Where inputs of the desk are found: the widgets bear these names. Of several for one input the
  /// first that is visible counts.
  virtual std::span<const FieldWidget> Fields() const { return {}; }

 private:
  bool RunTold(const QString& title, const std::function<Outcome()>& operation,
               const std::function<bool(const Outcome&)>& tell);
  [[nodiscard]] bool FindsUnitGone();
  void TellCancelled();
  void TellFault(const InputFault& fault);
  [[nodiscard]] QWidget* WidgetFor(std::string_view field) const;

  Workplace& place_;
  FaultMark* mark_;
  std::optional<UnitVersion> before_;  // the unit as the latest operation found it
};

/// What a label or a box is called on the form: its accessible name, its label's text, or its own.
[[nodiscard]] QString CalledAs(const QWidget& widget);

}  // namespace qorhost
