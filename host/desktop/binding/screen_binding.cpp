#include "host/desktop/binding/screen_binding.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "frame/object.h"
#include "host/desktop/binding/picker_binding.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/binding/simple_bindings.h"

namespace qorhost {

namespace {

/// "cboField(0)" is "cboField_0" in a form.
QString WidgetName(std::string_view control) {
  QString name = ToQt(control);
  return name.replace(QLatin1Char('('), QLatin1Char('_')).remove(QLatin1Char(')'));
}

/// The binding when both are of these kinds; else null.
template <typename Binding, typename Model, typename Widget>
std::unique_ptr<ControlBinding> BindAs(ControlModel& control, QWidget& widget) {
  auto* model = dynamic_cast<Model*>(&control);
  auto* shown = qobject_cast<Widget*>(&widget);
  if (model == nullptr || shown == nullptr) {
    return nullptr;
  }
  return std::make_unique<Binding>(*model, *shown);
}

using Binder = std::unique_ptr<ControlBinding> (*)(ControlModel& control, QWidget& widget);

constexpr std::array<Binder, 9> kBinders{BindAs<ComboBinding, ListModel, QComboBox>,
                                         BindAs<ListBoxBinding, ListModel, QListView>,
                                         BindAs<TextBinding, TextModel, QLineEdit>,
                                         BindAs<CheckBinding, CheckModel, QCheckBox>,
                                         BindAs<OptionBinding, OptionModel, QRadioButton>,
                                         BindAs<PickerBinding, PickerModel, DateField>,
                                         BindAs<SpinnerBinding, SpinnerModel, QSpinBox>,
                                         BindAs<LabelBinding, LabelModel, QLabel>,
                                         BindAs<ButtonBinding, ButtonModel, QAbstractButton>};

std::unique_ptr<ControlBinding> Bind(ControlModel& control, QWidget& widget) {
  for (const Binder binder : kBinders) {
    if (auto binding = binder(control, widget)) {
      return binding;
    }
  }
  return nullptr;
}

}  // namespace

ScreenBinding::ScreenBinding(ScreenModel& screen, QWidget& form,
                             const std::vector<std::string_view>& unseen) {
  std::string faults;
  for (const std::string_view name : unseen) {
    if (screen.SpelledName(name) != name) {
      faults += "\nthe screen has no control " + std::string(name);
    }
  }
  for (ControlModel* control : screen.controls()) {
    if (std::find(unseen.begin(), unseen.end(), control->name()) != unseen.end()) {
      continue;
    }
    auto* widget = form.findChild<QWidget*>(WidgetName(control->name()));
    if (widget == nullptr) {
      faults += "\nthe form has no widget for " + control->name();
    } else if (auto binding = Bind(*control, *widget)) {
      binding->ShowLater(pending_);
      bindings_.push_back(std::move(binding));
    } else {
      faults += "\nthe widget for " + control->name() +
                " is of another kind: " + widget->metaObject()->className();
    }
  }
  if (!faults.empty()) {
    throw std::logic_error("the form '" + FromQt(form.objectName()) + "' does not fit the screen " +
                           screen.name() + ":" + faults);
  }
}

void ScreenBinding::OnEdit(const EditHandler& handler) {
  for (const auto& binding : bindings_) {
    binding->OnEdit(handler);
  }
}

ListBinding& ScreenBinding::ListOf(std::string_view list) const {
  for (const auto& binding : bindings_) {
    auto* bound = dynamic_cast<ListBinding*>(binding.get());
    if (bound != nullptr && bound->list().name() == list) {
      return *bound;
    }
  }
  throw std::logic_error("the form shows no list " + std::string(list));
}

void ScreenBinding::OnChoice(std::string_view list, ChoiceOfEntry handler) {
  ListOf(list).OnChoice(std::move(handler));
}

void ScreenBinding::ShowTextsBy(std::string_view list, EntryText text) {
  ListOf(list).ShowTextsBy(std::move(text));
}

void ScreenBinding::Flush() {
  pending_.Flush();
}

QWidget* ScreenBinding::WidgetOf(std::string_view control) const {
  for (const auto& binding : bindings_) {
    if (binding->control().name() == control) {
      return &binding->widget();
    }
  }
  return nullptr;
}

}  // namespace qorhost
