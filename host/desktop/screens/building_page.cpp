#include "host/desktop/screens/building_page.h"

#include <screens/ui_building_page.h>

#include <QItemSelectionModel>
#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "frame/convert.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/screens/empty_hint.h"
#include "host/desktop/screens/fitted_table.h"
#include "host/desktop/screens/table_finder.h"

namespace qorhost {

namespace {

constexpr std::array kDoorFields{FieldWidget{door_input::kName, "doorName"}};
constexpr std::array kScheduleFields{FieldWidget{schedule_input::kName, "scheduleName"},
                                     FieldWidget{schedule_input::kId, "scheduleId"}};

/// The columns of what is shown, and in the desk's list of schedules.
constexpr std::size_t kNumber = 0;
constexpr std::size_t kName = 1;
constexpr int kUnitOfSchedule = 0;
constexpr std::size_t kScheduleNumber = 1;
constexpr std::size_t kScheduleName = 2;

/// The row in which the number stands; -1 for none.
int RowWith(const ListTableModel& list, std::size_t column, std::optional<std::int32_t> number) {
  for (int row = 0; number && row < list.rowCount(); ++row) {
    if (qorcred::ToLong(list.Row(row)[column]) == *number) {
      return row;
    }
  }
  return -1;
}

std::optional<std::int32_t> ChosenIn(const QTableView& view, const ListTableModel& list,
                                     std::size_t column) {
  const QModelIndexList rows = view.selectionModel()->selectedRows();
  return rows.isEmpty() ? std::nullopt
                        : std::optional(qorcred::ToLong(list.Row(rows.front().row())[column]));
}

QString NamedIn(const ListTableModel& list, int row, std::size_t column) {
  return row < 0 ? QString() : ToQt(qorcred::TextOrEmpty(list.Row(row)[column]));
}

std::optional<SeenRow> SeenIn(const ListTableModel& list, int row, std::int64_t entry) {
  return row < 0 ? std::nullopt : std::optional(SeenRow{list.Row(row), entry});
}

/// With what was stored of a row, found by its number; a new one that nobody uses yet behind all.
List WithRow(List list, std::size_t number, const std::vector<qorcred::Value>& stored) {
  auto row = std::find_if(list.rows.begin(), list.rows.end(), [&](const auto& one) {
    return qorcred::ToLong(one[number]) == qorcred::ToLong(stored[number]);
  });
  if (row == list.rows.end()) {
    list.rows.emplace_back(list.fields.size(), qorcred::Value(std::int32_t{0}));
    row = std::prev(list.rows.end());
  }
  std::copy(stored.begin(), stored.end(), row->begin());
  return list;
}

void Select(QTableView& view, int row) {
  view.clearSelection();
  if (row >= 0) {
    view.selectRow(row);
  }
}

}  // namespace

BuildingPage::BuildingPage(Workplace& place)
    : EntryPage(place), ui_(std::make_unique<Ui::BuildingPage>()) {
  ui_->setupUi(this);
  SetUp(*ui_->doors, doors_);
  SetUp(*ui_->schedules, schedules_);
  SqueezeColumns(*ui_->doors);
  SqueezeColumns(*ui_->schedules);
  EmptyHint::Show(*ui_->doors, [] { return tr("The unit has no doors."); });
  ConnectWidgets();
  ShowDoors(1);
  ShowSchedules({});
}

BuildingPage::~BuildingPage() = default;

void BuildingPage::ConnectWidgets() {
  connect(ui_->doors->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { TakeDoor(); });
  connect(ui_->schedules->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { TakeSchedule(); });
  connect(ui_->doors->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this,
          [this] { SelectChosen(); });
  connect(ui_->schedules->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this,
          [this] { SelectChosen(); });
  FindRowsBy(*ui_->findDoor, *ui_->doors);
  FindRowsBy(*ui_->findSchedule, *ui_->schedules);
  for (QLineEdit* line : {ui_->doorName, ui_->scheduleName, ui_->scheduleId}) {
    connect(line, &QLineEdit::textEdited, this, [this, line] { NoteEdit(*line); });
  }
  connect(ui_->renameButton, &QPushButton::clicked, this, [this] { RenameChosenDoor(); });
  connect(ui_->saveButton, &QPushButton::clicked, this, [this] { SaveSchedule(); });
  connect(ui_->newButton, &QPushButton::clicked, this, [this] {
    if (MayLeaveEntry(HasScheduleEntry())) {
      ShowSchedules({});
      ui_->scheduleName->setFocus();
    }
  });
  connect(ui_->deleteButton, &QPushButton::clicked, this, [this] { DeleteChosenSchedule(); });
}

bool BuildingPage::HasDoorEntry() const {
  return ui_->doorName->text() != doorName_;
}

bool BuildingPage::HasScheduleEntry() const {
  return ui_->scheduleName->text() != scheduleName_ || !ui_->scheduleId->text().isEmpty();
}

bool BuildingPage::HasEntries() const {
  return HasDoorEntry() || HasScheduleEntry();
}

void BuildingPage::Refresh() {
  (void)Look(tr("Doors and schedules cannot be shown."), [this] {
    ShowDoors(door_);
    ShowSchedules(schedule_);
  });
}

/// Others have changed the unit: it is shown as it is now, with the names that were entered.
void BuildingPage::ShowOvertaken() {
  const QString doorName = ui_->doorName->text();
  const QString scheduleName = ui_->scheduleName->text();
  const QString scheduleId = ui_->scheduleId->text();
  const bool doorEntered = HasDoorEntry();
  const bool scheduleEntered = HasScheduleEntry();
  const bool wasNew = !schedule_;
  (void)Look(tr("Doors and schedules cannot be shown."), [&] {
    ShowDoors(door_);
    ShowSchedules(schedule_);
    if (doorEntered && door_) {
      ui_->doorName->setText(doorName);
    }
    if (scheduleEntered && (schedule_ || wasNew)) {  // what was deleted has no use for it
      ui_->scheduleName->setText(scheduleName);
      ui_->scheduleId->setText(scheduleId);
    }
  });
}

/// Read before what is shown, so that whoever changes that is told with it.
std::int64_t BuildingPage::LastEntry() {
  return session().sql().work().VersionOf(place().unitKey()).entry;
}

void BuildingPage::ShowDoors(Number door) {
  const std::int64_t entry = LastEntry();
  List list = DoorList(session(), place().unitKey());
  showing_ = true;
  doors_.Show(std::move(list));
  entryOfDoors_ = entry;
  showing_ = false;
  FitColumns(*ui_->doors);
  door_ = door;
  ShowDoor();
}

void BuildingPage::ShowSchedules(Number schedule) {
  const std::int64_t entry = LastEntry();
  List list = ScheduleList(session(), {UnitName{place().unitKey(), FromQt(place().unitName())}});
  showing_ = true;
  schedules_.Show(std::move(list));
  entryOfSchedules_ = entry;
  showing_ = false;
  ui_->schedules->setColumnHidden(kUnitOfSchedule, true);
  FitColumns(*ui_->schedules);
  schedule_ = schedule;
  ShowSchedule();
}

/// The entry that this window has made itself, unless what is shown is newer.
std::int64_t BuildingPage::OwnEntry(std::int64_t shown) {
  const auto committed = session().sql().work().Committed(place().unitKey());
  return committed ? std::max(committed->entry, shown) : shown;
}

/// Of a reading that was cancelled behind the saving: what is stored is what was seen.
void BuildingPage::ShowSavedDoor(const ChangedDoor& saved) {
  showing_ = true;
  doors_.Show(WithRow(doors_.shown(), kNumber, {saved.door, saved.name}));
  showing_ = false;
  door_ = saved.door;
  ShowDoor();
  seenDoor_->entry = OwnEntry(entryOfDoors_);
}

/// The same of a schedule.
void BuildingPage::ShowSavedSchedule(const ChangedSchedule& saved) {
  showing_ = true;
  schedules_.Show(
      WithRow(schedules_.shown(), kScheduleNumber, {place().unitKey(), saved.id, saved.name}));
  showing_ = false;
  schedule_ = saved.id;
  ShowSchedule();
  seenSchedule_->entry = OwnEntry(entryOfSchedules_);
}

void BuildingPage::ShowDeletedSchedule() {
  List list = schedules_.shown();
  list.rows.erase(list.rows.begin() + RowWith(schedules_, kScheduleNumber, schedule_));
  showing_ = true;
  schedules_.Show(std::move(list));
  showing_ = false;
  schedule_.reset();
  ShowSchedule();
}

void BuildingPage::SelectChosen() {
  showing_ = true;
  Select(*ui_->doors, RowWith(doors_, kNumber, door_));
  Select(*ui_->schedules, RowWith(schedules_, kScheduleNumber, schedule_));
  showing_ = false;
}

void BuildingPage::ShowDoor() {
  const int row = RowWith(doors_, kNumber, door_);
  if (row < 0) {
    door_.reset();
  }
  seenDoor_ = SeenIn(doors_, row, entryOfDoors_);
  doorName_ = NamedIn(doors_, row, kName);
  ui_->doorName->setText(doorName_);
  ui_->groupDoor->setTitle(door_ ? tr("Door %1").arg(*door_) : tr("Door"));
  ui_->doorName->setEnabled(door_.has_value());
  ui_->renameButton->setEnabled(door_.has_value());
  SelectChosen();
}

void BuildingPage::ShowSchedule() {
  const int row = RowWith(schedules_, kScheduleNumber, schedule_);
  if (row < 0) {
    schedule_.reset();
  }
  const bool isNew = !schedule_;
  const bool isFixed = schedule_ && IsOfEveryUnit(*schedule_);
  seenSchedule_ = SeenIn(schedules_, row, entryOfSchedules_);
  scheduleName_ = NamedIn(schedules_, row, kScheduleName);
  ui_->scheduleName->setText(scheduleName_);
  ui_->scheduleId->clear();
  ui_->groupSchedule->setTitle(isNew     ? tr("New schedule")
                               : isFixed ? tr("Schedule %1, which every unit has").arg(*schedule_)
                                         : tr("Schedule %1").arg(*schedule_));
  ui_->scheduleIdLabel->setVisible(isNew);
  ui_->scheduleId->setVisible(isNew);
  ui_->scheduleName->setEnabled(!isFixed);
  ui_->saveButton->setEnabled(!isFixed);
  ui_->deleteButton->setEnabled(!isNew && !isFixed);
  SelectChosen();
}

void BuildingPage::TakeDoor() {
  const Number chosen = ChosenIn(*ui_->doors, doors_, kNumber);
  if (showing_ || chosen == door_) {
    return;
  }
  if (!MayLeaveEntry(HasDoorEntry())) {
    SelectChosen();
    return;
  }
  door_ = chosen;
  mark().Clear();
  ShowDoor();
}

void BuildingPage::TakeSchedule() {
  const Number chosen = ChosenIn(*ui_->schedules, schedules_, kScheduleNumber);
  if (showing_ || chosen == schedule_) {
    return;
  }
  if (!MayLeaveEntry(HasScheduleEntry())) {
    SelectChosen();
    return;
  }
  schedule_ = chosen;
  mark().Clear();
  ShowSchedule();
}

void BuildingPage::RenameChosenDoor() {
  fields_ = kDoorFields;
  ChangedDoor changed;
  const bool done = RunTold(tr("Renaming the door"), "door", [&] {
    changed = RenameDoor(session(), place().unitKey(), std::to_string(*door_),
                         FromQt(ui_->doorName->text()), Trial::kNo, seenDoor_);
    return WithoutFacts(changed);
  });
  if (!done) {
    return;
  }
  const QString name = ToQt(changed.name);
  place().Tell(changed.unchanged ? tr("Door %1 is called %2 already.").arg(changed.door).arg(name)
                                 : tr("Door %1 is called %2 now.").arg(changed.door).arg(name));
  if (!LookBehind(tr("The doors cannot be shown."), [&] { ShowDoors(changed.door); })) {
    ShowSavedDoor(changed);
  }
  place().TellChanged();
}

void BuildingPage::SaveSchedule() {
  fields_ = kScheduleFields;
  const std::string name = FromQt(ui_->scheduleName->text());
  const std::string id = FromQt(ui_->scheduleId->text().trimmed());
  ChangedSchedule changed;
  const bool done = RunTold(tr("Saving the schedule"), "schedule", [&] {
    changed = schedule_ ? RenameSchedule(session(), place().unitKey(), std::to_string(*schedule_),
                                         name, Trial::kNo, seenSchedule_)
                        : AddSchedule(session(), place().unitKey(), name,
                                      id.empty() ? std::nullopt : std::optional(id), Trial::kNo);
    return WithoutFacts(changed);
  });
  if (!done) {
    return;
  }
  const QString named = tr("%1, %2").arg(changed.id).arg(ToQt(changed.name));
  place().Tell(changed.unchanged ? tr("Schedule %1 is stored so already.").arg(named)
                                 : tr("Saved schedule %1.").arg(named));
  if (!LookBehind(tr("The schedules cannot be shown."), [&] { ShowSchedules(changed.id); })) {
    ShowSavedSchedule(changed);
  }
  place().TellChanged();
}

void BuildingPage::DeleteChosenSchedule() {
  const QString named = tr("%1, %2").arg(*schedule_).arg(scheduleName_);
  if (!AskToGoOn(this, tr("Delete the schedule %1?").arg(named))) {
    return;
  }
  fields_ = {};
  const bool done = RunTold(tr("Deleting the schedule"), "schedule", [&] {
    return WithoutFacts(DeleteSchedule(session(), place().unitKey(), std::to_string(*schedule_),
                                       Trial::kNo, seenSchedule_));
  });
  if (!done) {
    return;
  }
  place().Tell(tr("Deleted schedule %1.").arg(named));
  if (!LookBehind(tr("The schedules cannot be shown."), [&] { ShowSchedules({}); })) {
    ShowDeletedSchedule();
  }
  place().TellChanged();
}

}  // namespace qorhost
