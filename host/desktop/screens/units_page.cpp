#include "host/desktop/screens/units_page.h"

#include <screens/ui_units_page.h>

#include <QItemSelectionModel>
#include <QSignalBlocker>
#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <utility>

#include "frame/convert.h"
#include "host/desks/shown_value.h"
#include "host/desks/unit_deletion.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/binding/wheel_guard.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/screens/fitted_table.h"
#include "host/desktop/screens/table_finder.h"
#include "host/desktop/words/desk_words.h"

namespace qorhost {

namespace {

namespace input = unit_input;

/// The columns of the list of settings.
enum UnitColumn : int {
  kKey,
  kName,
  kType,
  kCapacity,
  kCodeDigits,
  kEntryDigits,
  kDefaultEnd,
  kIgnoresFacility,
  kCardFacility,
  kTransmitterFacility
};
constexpr std::array kShown{kKey, kName, kCapacity};  // the form has them all

constexpr std::array kFields{FieldWidget{input::kKey, "key"},
                             FieldWidget{input::kName, "name"},
                             FieldWidget{input::kType, "type"},
                             FieldWidget{input::kCapacity, "capacity"},
                             FieldWidget{input::kCodeDigits, "codeDigits"},
                             FieldWidget{input::kEntryDigits, "entryDigits"},
                             FieldWidget{input::kDefaultEnd, "defaultEnd"},
                             FieldWidget{input::kIgnoresFacility, "ignoresFacility"},
                             FieldWidget{input::kCardFacility, "cardFacility"},
                             FieldWidget{input::kTransmitterFacility, "transmitterFacility"}};

/// The last entry of each unit's audit.
std::map<std::int32_t, std::int64_t> LastEntries(DeskSession& session) {
  std::map<std::int32_t, std::int64_t> entries;
  for (const ChainHead& head : session.sql().audit().Heads()) {
    entries[head.unitKey] = head.entry;
  }
  return entries;
}

/// The types that units have, in the order of their names.
std::vector<std::string> UnitTypesIn(const List& units) {
  std::set<std::string> types;
  for (const auto& row : units.rows) {
    types.insert(ShownText(row[kType]));
  }
  types.erase("");
  return {types.begin(), types.end()};
}

/// What is in the line, where that is something else than it showed.
std::optional<std::string> Changed(const QString& text, const std::optional<std::string>& shown) {
  const std::string now = FromQt(text.trimmed());
  return now == shown.value_or("") ? std::nullopt : std::optional(now);
}

QString Named(std::int32_t key, const std::string& name) {
  return name.empty() ? UnitsPage::tr("Unit %1").arg(key)
                      : UnitsPage::tr("Unit %1, %2").arg(key).arg(ToQt(name));
}

/// What would go with a unit; empty for one with nothing in it.
QString ContentsText(const UnitContents& contents) {
  QStringList parts;
  const auto add = [&parts](const QString& text, std::size_t count) {
    if (count > 0) {
      parts.append(text.arg(static_cast<qulonglong>(count)));
    }
  };
  add(UnitsPage::tr("tenants: %1"), contents.tenants);
  add(UnitsPage::tr("credentials: %1"), contents.credentials);
  add(UnitsPage::tr("directory codes: %1"), contents.codes);
  add(UnitsPage::tr("steps that wait: %1"), contents.steps);
  return parts.join(QStringLiteral(", "));
}

}  // namespace

UnitsPage::UnitsPage(Workplace& place) : EntryPage(place), ui_(std::make_unique<Ui::UnitsPage>()) {
  ui_->setupUi(this);
  SetUp(*ui_->units, list_);
  SqueezeColumns(*ui_->units);
  ui_->type->setCompleter(nullptr);  // a new type may begin as one that is there
  WheelGuard::Watch(*ui_->type);
  ConnectWidgets();
  chosen_ = this->place().unitKey();
  ShowStored();
}

UnitsPage::~UnitsPage() = default;

std::span<const FieldWidget> UnitsPage::Fields() const {
  return kFields;
}

void UnitsPage::ConnectWidgets() {
  connect(ui_->units->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    if (!showing_) {
      TakeSelection();
    }
  });
  FindRowsBy(*ui_->findUnit, *ui_->units);
  connect(ui_->units->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this,
          [this] { SelectChosen(); });
  for (QLineEdit* line : {ui_->name, ui_->key, ui_->capacity, ui_->codeDigits, ui_->entryDigits,
                          ui_->defaultEnd, ui_->cardFacility, ui_->transmitterFacility}) {
    connect(line, &QLineEdit::textEdited, this, [this, line] { NoteEdit(*line); });
  }
  connect(ui_->type, &QComboBox::editTextChanged, this, [this](const QString& type) {
    if (!showing_) {
      NoteEdit(*ui_->type);
      ShowCapacityOf(type);
    }
  });
  connect(ui_->ignoresFacility, &QCheckBox::clicked, this,
          [this] { NoteEdit(*ui_->ignoresFacility); });
  connect(ui_->saveButton, &QPushButton::clicked, this, [this] { Save(OtherUnits::kAsked); });
  connect(ui_->newButton, &QPushButton::clicked, this, [this] {
    if (MayLeaveEntry()) {
      ShowAgain({});
      ui_->name->setFocus();
    }
  });
  connect(ui_->deleteButton, &QPushButton::clicked, this, [this] { Delete(); });
}

void UnitsPage::Refresh() {
  ShowAgain(chosen_);
}

void UnitsPage::ShowAgain(std::optional<std::int32_t> unitKey) {
  (void)Look(tr("The units cannot be shown."), [&] {
    chosen_ = unitKey;
    ShowStored();
  });
}

/// What an operation has left, which is told already: the unit that was saved, as it is now, or,
/// when the chosen one was deleted, none. Of a reading that was cancelled this much is known.
void UnitsPage::ShowSaved(const std::vector<qorcred::Value>& unit) {
  const auto key = unit.empty() ? std::nullopt : std::optional(qorcred::ToLong(unit[kKey]));
  const auto deleted = chosen_;
  const bool shown = LookBehind(tr("The units cannot be shown."), [&] {
    chosen_ = key;
    ShowStored();
  });
  if (!shown) {
    chosen_ = key;
    if (unit.empty()) {
      Forget(*deleted);
    } else {
      Remember(unit);
    }
    ShowUnits(UnitTypesIn(units_));
  }
  place().TellUnits();
  place().TellChanged();
}

void UnitsPage::Forget(std::int32_t unitKey) {
  units_.rows.erase(
      std::remove_if(units_.rows.begin(), units_.rows.end(),
                     [&](const auto& row) { return qorcred::ToLong(row[kKey]) == unitKey; }),
      units_.rows.end());
}

void UnitsPage::Remember(const std::vector<qorcred::Value>& unit) {
  const std::int32_t key = qorcred::ToLong(unit[kKey]);
  Forget(key);
  const auto behind = std::find_if(units_.rows.begin(), units_.rows.end(), [&](const auto& row) {
    return qorcred::ToLong(row[kKey]) > key;
  });
  units_.rows.insert(behind, unit);
  for (auto& row : units_.rows) {
    if (ShownText(row[kType]) == ShownText(unit[kType])) {
      row[kCapacity] = unit[kCapacity];  // is that of the type
    }
  }
  if (const auto committed = session().sql().work().Committed(key)) {
    entries_[key] = std::max(entries_[key], committed->entry);
  }
}

void UnitsPage::ShowStored() {
  auto entries = LastEntries(session());  // before what is shown: who changes that is told
  List units = UnitSettingsList(session(), session().Units());
  const std::vector<std::string> types = UnitTypes(session());
  units_ = std::move(units);
  entries_ = std::move(entries);
  ShowUnits(types);
}

void UnitsPage::ShowUnits(const std::vector<std::string>& types) {
  showing_ = true;
  ui_->type->clear();
  for (const std::string& type : types) {
    ui_->type->addItem(ToQt(type));
  }
  list_.Show(units_);
  showing_ = false;
  for (int column = 0; column < list_.columnCount(); ++column) {
    ui_->units->setColumnHidden(column,
                                std::find(kShown.begin(), kShown.end(), column) == kShown.end());
  }
  FitColumns(*ui_->units);
  SelectChosen();
  ShowChosen();
}

void UnitsPage::SelectChosen() {
  showing_ = true;
  ui_->units->clearSelection();
  for (int row = 0; row < list_.rowCount(); ++row) {
    if (chosen_ && qorcred::ToLong(list_.Row(row)[kKey]) == *chosen_) {
      ui_->units->selectRow(row);
    }
  }
  showing_ = false;
}

void UnitsPage::TakeSelection() {
  const QModelIndexList selected = ui_->units->selectionModel()->selectedRows();
  const std::optional<std::int32_t> key =
      selected.isEmpty() ? std::nullopt
                         : std::optional(qorcred::ToLong(list_.Row(selected.front().row())[kKey]));
  if (key == chosen_) {
    return;
  }
  if (!MayLeaveEntry()) {
    SelectChosen();
    return;
  }
  chosen_ = key;
  mark().Clear();
  ShowChosen();
}

void UnitsPage::ShowChosen() {
  const auto row = std::find_if(units_.rows.begin(), units_.rows.end(), [this](const auto& one) {
    return chosen_ && qorcred::ToLong(one[kKey]) == *chosen_;
  });
  const bool isNew = row == units_.rows.end();
  if (isNew) {
    chosen_.reset();
    seen_.reset();
  } else {
    seen_ = SeenRow{*row, entries_[*chosen_]};
  }
  const auto text = [&](std::size_t column) { return isNew ? "" : ShownText((*row)[column]); };
  shown_ = {text(kName),
            text(kType),
            text(kCapacity),
            text(kCodeDigits),
            text(kEntryDigits),
            text(kDefaultEnd),
            text(kIgnoresFacility),
            text(kCardFacility),
            text(kTransmitterFacility)};
  showing_ = true;
  ui_->key->clear();
  ui_->name->setText(ToQt(*shown_.name));
  ui_->type->setEditText(ToQt(*shown_.type));
  ui_->capacity->setText(ToQt(*shown_.capacity));
  ui_->codeDigits->setText(ToQt(*shown_.codeDigits));
  ui_->entryDigits->setText(ToQt(*shown_.entryDigits));
  ui_->defaultEnd->setText(ToQt(*shown_.defaultEnd));
  ui_->ignoresFacility->setChecked(shown_.ignoresFacility == "yes");
  ui_->cardFacility->setText(ToQt(*shown_.cardFacility));
  ui_->transmitterFacility->setText(ToQt(*shown_.transmitterFacility));
  showing_ = false;
  ui_->title->setText(isNew ? tr("New unit") : Named(*chosen_, *shown_.name));
  ui_->keyLabel->setVisible(isNew);
  ui_->key->setVisible(isNew);
  ui_->deleteButton->setEnabled(!isNew);
  SetEntered(false);
}

/// Whoever chooses another type is shown the capacity that it has.
void UnitsPage::ShowCapacityOf(const QString& type) {
  const auto same = std::find_if(units_.rows.begin(), units_.rows.end(), [&type](const auto& row) {
    return ToQt(ShownText(row[kType])) == type.trimmed();
  });
  shown_.capacity = same == units_.rows.end() ? "" : ShownText((*same)[kCapacity]);
  ui_->capacity->setText(ToQt(*shown_.capacity));
}

/// What was changed; of a new unit what was entered.
UnitEntry UnitsPage::Entered() const {
  UnitEntry entry;
  entry.name = Changed(ui_->name->text(), shown_.name);
  entry.type = Changed(ui_->type->currentText(), shown_.type);
  entry.capacity = Changed(ui_->capacity->text(), shown_.capacity);
  entry.codeDigits = Changed(ui_->codeDigits->text(), shown_.codeDigits);
  entry.entryDigits = Changed(ui_->entryDigits->text(), shown_.entryDigits);
  entry.defaultEnd = Changed(ui_->defaultEnd->text(), shown_.defaultEnd);
  if (ui_->ignoresFacility->isChecked() != (shown_.ignoresFacility == "yes")) {
    entry.ignoresFacility = ui_->ignoresFacility->isChecked() ? "yes" : "no";
  }
  entry.cardFacility = Changed(ui_->cardFacility->text(), shown_.cardFacility);
  entry.transmitterFacility = Changed(ui_->transmitterFacility->text(), shown_.transmitterFacility);
  return entry;
}

/// What was changed before, into what is shown now.
void UnitsPage::Enter(const UnitEntry& entry) {
  const auto enter = [](QLineEdit& line, const std::optional<std::string>& text) {
    if (text) {
      line.setText(ToQt(*text));
    }
  };
  if (entry.type) {
    ui_->type->setEditText(ToQt(*entry.type));  // shows its capacity
  }
  enter(*ui_->name, entry.name);
  enter(*ui_->capacity, entry.capacity);
  enter(*ui_->codeDigits, entry.codeDigits);
  enter(*ui_->entryDigits, entry.entryDigits);
  enter(*ui_->defaultEnd, entry.defaultEnd);
  if (entry.ignoresFacility) {
    ui_->ignoresFacility->setChecked(entry.ignoresFacility == "yes");
  }
  enter(*ui_->cardFacility, entry.cardFacility);
  enter(*ui_->transmitterFacility, entry.transmitterFacility);
  SetEntered(entry.any());
}

/// Others have changed the unit: it is shown as it is now, with what was entered.
void UnitsPage::ShowOvertaken() {
  const UnitEntry entry = Entered();
  (void)Look(tr("The units cannot be shown."), [&] {
    ShowStored();
    if (chosen_) {
      Enter(entry);
    }
  });
}

void UnitsPage::Save(OtherUnits others) {
  const UnitEntry entry = Entered();
  ChangedUnit changed;
  std::optional<std::string> shared;
  const bool done = RunTold(tr("Saving the unit"), "unit", [&] {
    try {
      changed = chosen_
                    ? EditUnit(session(), *chosen_, entry, others, Trial::kNo, seen_)
                    : AddUnit(session(), Changed(ui_->key->text(), {}), entry, others, Trial::kNo);
    } catch (const SharedType& type) {
      shared = type.what();
    }
    return WithoutFacts(changed);
  });
  if (!done) {
    return;
  }
  if (shared) {
    if (AskToGoOn(this, tr("%1 Change it for all of them?").arg(Told(*shared)))) {
      Save(OtherUnits::kChanged);
    }
    return;
  }
  const QString named = Named(changed.unit.key, changed.unit.name);
  place().Tell(changed.unchanged ? tr("%1 is stored so already.").arg(named)
                                 : tr("Saved: %1.").arg(named));
  ShowSaved(changed.row);
}

void UnitsPage::Delete() {
  const UnitName unit{*chosen_, *shown_.name};
  std::vector<UnitToDelete> toDelete;
  if (!Look(tr("The unit cannot be read."), [&] { toDelete = WithContents(session(), {unit}); })) {
    return;
  }
  toDelete.front().seen = seen_;
  const QString named = Named(unit.key, unit.name);
  const QString contents = ContentsText(ContentsOf(toDelete));
  if (!AskToGoOn(this, contents.isEmpty()
                           ? tr("Delete %1?").arg(named)
                           : tr("Delete %1 with all that is in it (%2)?").arg(named, contents))) {
    return;
  }
  const bool done = RunTold(tr("Deleting the unit"), "unit",
                            [&] { return DeleteUnits(session(), toDelete, Trial::kNo); });
  if (!done) {
    return;
  }
  place().Tell(tr("Deleted: %1.").arg(named));
  ShowSaved({});
}

}  // namespace qorhost
