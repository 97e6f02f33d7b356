// The checks of an entry, in the order in which the user is told of the first that fails.
#include "dircodes/entry.h"

#include "dircodes/cls_dir_code.h"
#include "frame/active_period.h"
#include "frame/capacity.h"
#include "frame/convert.h"
#include "frame/messages.h"
#include "frame/screen_names.h"
#include "frame/text.h"

namespace qorcred {

namespace {

constexpr std::int32_t kNothingSelected = -1;

bool IsChecked(const Screen& screen, std::string_view box) {
  return Equals(screen.Check(box).State(), 1);
}

std::string_view FlagOf(bool flag) {
  return flag ? "True" : "False";
}

std::string DelayFor(std::string_view extension, const Screen& screen, std::string_view spinner) {
  if (Trim(extension).empty()) return std::string(kDelayWithoutExtension);
  return TextOrEmpty(screen.Spin(spinner).Number());
}

}  // namespace

bool clsDirCode::RefuseEntry(const Control& control, std::string_view message) {
  Notify(host_, message);
  control.SetFocus();
  return false;
}

bool clsDirCode::FitsCapacity(const ObjectRef& connection, std::int32_t& unitKey,
                              ObjectRef& application) {
  const std::int16_t limit =
      ReadUnitCapacity(host_, base64_, Manager(), connection, unitKey, error_);
  application = host_.CreateComponent(component::kApplication);
  if (ApplicationComponent(application).CodesInUse(connection, unitKey).Sum16() < limit) {
    return true;
  }
  // Hosts rely on the figure, whatever the limit of the unit's type is.
  Notify(host_, "You cannot enter more than 2000 combined codes.");
  return false;
}

bool clsDirCode::ReadEntry(const Screen& screen, DirCodeEntry& entry) {
  if (!ReadCode(screen, entry)) return false;
  if (!ReadPhone(screen, entry)) return false;
  if (IsChecked(screen, "chkDND") &&
      screen.List(kDndScheduleList).ListIndex() == kNothingSelected) {
    return RefuseEntry(screen.Any(kDndScheduleList),
                       "Please select a Time Zone for the Do Not Disturb schedule.");
  }
  if (!ReadCallForwarding(screen, entry)) return false;
  ReadSchedules(screen, entry);
  if (!ReadActivePeriod(screen, entry)) return false;
  entry.displayName = Trim(screen.Box("txtDisplayName").Text());
  return true;
}

bool clsDirCode::ReadCode(const Screen& screen, DirCodeEntry& entry) {
  const TextBox box = screen.Box("txtdirectorycode");
  if (Trim(entry.code).empty()) return RefuseEntry(box, "Please enter a Directory Code.");
  // From here on the code is its leading number: a text without one becomes 0 and passes.
  entry.code = NumberText(Val(entry.code));
  if (!IsNumeric(Trim(entry.code))) {
    return RefuseEntry(box, "Please enter the Directory Code in number.");
  }
  if (Val(Trim(entry.code)) < 0) {
    return RefuseEntry(box, "Please enter the positive number as Directory Code.");
  }
  return true;
}

bool clsDirCode::ReadPhone(const Screen& screen, DirCodeEntry& entry) {
  const TextBox box = screen.Box("txtPhoneNo");
  entry.phone = box.Text();
  entry.extension = screen.Box("txtExtn").Text();
  entry.timeDelay = DelayFor(entry.extension, screen, "pvnTimeDelay");
  if (!Trim(entry.phone).empty()) return true;
  return RefuseEntry(box, "Please enter a Phone No. to apply to the Directory Code.");
}

bool clsDirCode::ReadCallForwarding(const Screen& screen, DirCodeEntry& entry) {
  if (!IsChecked(screen, "chkCallForwarding")) return true;
  const TextBox phoneBox = screen.Box("txtPhoneNocf");
  const ListControl schedules = screen.List(kCfScheduleList);
  entry.cfPhone = phoneBox.Text();
  entry.cfExtension = screen.Box("txtExtnCF").Text();
  if (schedules.ListIndex() == kNothingSelected) {
    return RefuseEntry(schedules, "Please select a Time Zone for the Call Forwarding schedule.");
  }
  if (Trim(entry.cfPhone).empty()) {
    return RefuseEntry(phoneBox, "Please enter a Call Forwarding Phone No.");
  }
  return true;
}

void clsDirCode::ReadSchedules(const Screen& screen, DirCodeEntry& entry) {
  if (IsChecked(screen, "chkDND")) {
    entry.isDndChecked = "True";
    entry.dndSchedule = NumberText(screen.List(kDndScheduleList).SelectedItemData());
  }
  entry.showDisplayName = FlagOf(IsChecked(screen, "chkShowDisplayName"));
  entry.showDirectoryCode = FlagOf(IsChecked(screen, "chkShowDirCode"));
  if (IsChecked(screen, "chkCallForwarding")) {
    entry.isCfChecked = "True";
    entry.cfSchedule = NumberText(screen.List(kCfScheduleList).SelectedItemData());
    entry.cfTimeDelay = DelayFor(entry.cfExtension, screen, "pvnTimeDelayCF");
  }
}

bool clsDirCode::ReadActivePeriod(const Screen& screen, DirCodeEntry& entry) {
  if (!IsChecked(screen, "chkActive")) return true;
  const DatePicker endPicker = screen.Picker("dtpEnd");
  const Value start = screen.Picker("dtpStart").Chosen();
  const Value end = endPicker.Chosen();
  if (IsPeriodWithoutLength(start, end)) return RefuseEntry(endPicker, kPeriodWithoutLength);
  entry.active = "True";
  entry.startDateText = TextOf(host_, start);
  entry.endDateText = TextOf(host_, end);
  return true;
}

}  // namespace qorcred
