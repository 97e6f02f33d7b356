// A form bound to a screen, control by control.
#pragma once

#include <QWidget>
#include <memory>
#include <string_view>
#include <vector>

#include "host/desktop/binding/control_binding.h"
#include "host/desktop/binding/list_binding.h"
#include "host/desktop/binding/pending_shows.h"
#include "host/screens/screen_model.h"

namespace qorhost {

/// Binds every control of a screen to the widget of the form that carries its name; a control of an
/// array, "cboField(0)", to "cboField_0". Kinds: combo box or list view, line edit, check box,
/// radio button, DateField, spin box, label, button. The screen and the form must outlive it.
class ScreenBinding {
 public:
  /// `unseen` names the controls that the form does not show. Raises std::logic_error that names
  /// every other control without a widget, every widget of the wrong kind, and every unseen one
  /// that the screen does not have.
  ScreenBinding(ScreenModel& screen, QWidget& form, const std::vector<std::string_view>& unseen);

  /// Told of every widget that a person changes.
  void OnEdit(const EditHandler& handler);
  /// Told of the entry that a person chooses in the list, in place of its selection.
  void OnChoice(std::string_view list, ChoiceOfEntry handler);
  /// Shows the entries of the list, whose texts the control keeps, as the function says.
  void ShowTextsBy(std::string_view list, EntryText text);
  /// Shows what was put off.
  void Flush();
  /// The widget of a control; null for one that is not shown.
  [[nodiscard]] QWidget* WidgetOf(std::string_view control) const;

 private:
  [[nodiscard]] ListBinding& ListOf(std::string_view list) const;

  PendingShows pending_;
  std::vector<std::unique_ptr<ControlBinding>> bindings_;
};

}  // namespace qorhost
