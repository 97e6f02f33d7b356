// The tour's part about directory codes.
#include <fmt/format.h>

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "frame/convert.h"
#include "frame/screen_names.h"
#include "frame/text.h"
#include "host/desks/dir_code_desk.h"
#include "host/desks/dir_code_entry.h"
#include "host/desks/dir_code_list.h"
#include "host/desks/store_overview.h"
#include "host/desks/unit_export.h"
#include "host/desks/unit_merge.h"
#include "host/store/demo.h"
#include "host/tour/tour_stage.h"

namespace qorhost {

namespace {

using qorcred::unit_place::Place;

constexpr std::int32_t kUnit = demo::kLongDoorNamesUnit;

/// An entry that the controller refuses with a message that contains `expected`.
struct RefusedCode {
  std::string_view act;
  std::string code;
  DirCodeEntry entry;
  std::string_view expected;
};

DirCodeEntry WithPhone(std::string phone) {
  DirCodeEntry entry;
  entry.phone = std::move(phone);
  return entry;
}

std::vector<RefusedCode> RefusedCodes() {
  DirCodeEntry forwardedNowhere = WithPhone("555-0199");
  forwardedNowhere.forwardSchedule = "Late Shift";
  DirCodeEntry backwards = WithPhone("555-0199");
  backwards.from = "2027-06-30";
  backwards.to = "2027-01-01";
  return {
      {"saves without a code", "", WithPhone("555-0199"), "Please enter a Directory Code."},
      {"types -1", "-1", WithPhone("555-0199"), "the positive number as Directory Code."},
      {"leaves the phone number out", "250", {}, "a Phone No. to apply to the Directory Code."},
      {"forwards calls without a phone number", "250", forwardedNowhere,
       "Please enter a Call Forwarding Phone No."},
      {"lets the period end before it starts", "250", backwards,
       "The End Date must be later than the Start Date."},
      {"enters 101 a second time", "101", WithPhone("555-0199"),
       "This Directory Code already exists."},
  };
}

class DirCodeTour {
 public:
  explicit DirCodeTour(const TourStage& stage)
      : stage_(stage), guide_(stage.guide), session_(stage.session) {}

  void Run() {
    OpenScreen();
    ShowRefusals();
    Add();
    Renumber();
    Merge();
  }

 private:
  void OpenScreen();
  void ShowRefusals();
  void Add();
  void Renumber();
  void Merge();

  void ShowCode(DirCodeDesk& desk);
  void ShowLastStep(std::string_view kind);
  void ShowPlan(const UnitMerge& merge, const UnitFile& unit);
  /// What the unit holds: what the store has, but for three codes.
  [[nodiscard]] UnitFile CodesAtUnit();

  TourStage stage_;
  TourGuide& guide_;
  DeskSession& session_;
};

void DirCodeTour::ShowCode(DirCodeDesk& desk) {
  ScreenModel& screen = desk.screen();
  const auto during = [&](std::string_view box, std::string_view list) {
    return screen.Check(box).state() == 1 ? screen.List(list).SelectedText() : std::string("off");
  };
  guide_.Fact("Directory code",
              fmt::format("{} \"{}\", phone {}", desk.codes().SelectedText(),
                          screen.Box("txtDisplayName").text(), screen.Box("txtPhoneNo").text()));
  guide_.Fact("Do not disturb", during("chkDND", qorcred::kDndScheduleList));
  const std::string forwarded = during("chkCallForwarding", qorcred::kCfScheduleList);
  guide_.Fact("Call forwarding",
              forwarded == "off"
                  ? forwarded
                  : fmt::format("{}, to {}", forwarded, screen.Box("txtPhoneNocf").text()));
  const std::vector<std::string> tenants = TenantsShown(desk);
  guide_.Fact("Tenants", tenants.empty() ? "nobody" : fmt::format("{}", fmt::join(tenants, ", ")));
}

void DirCodeTour::OpenScreen() {
  guide_.Chapter("The directory-code screen opens");
  stage_.ShowUnit(kUnit);
  DirCodeDesk desk(session_, kUnit);
  guide_.FactOfList("Codes", desk.codes());
  guide_.FactOfList("Schedules", desk.screen().List(qorcred::kDndScheduleList));
  guide_.Act("The operator picks 0103 from the list");
  (void)desk.Select("103");
  ShowCode(desk);
  guide_.Expect(desk.screen().Check("chkCallForwarding").state() == 1, "103 is forwarded");
}

void DirCodeTour::ShowRefusals() {
  guide_.Chapter("Directory codes that the screen refuses");
  for (const RefusedCode& refused : RefusedCodes()) {
    guide_.Act(fmt::format("The operator {}", refused.act));
    DirCodeDesk desk(session_, kUnit);
    const std::int32_t before = desk.codes().count();
    EnterNewCode(desk, refused.code, refused.entry);
    guide_.Expect(!desk.SaveNew().returned, "the entry is refused");
    guide_.Result(desk.screen().focused().empty()
                      ? "refused"
                      : fmt::format("refused; the cursor stands in {}", desk.screen().focused()));
    stage_.ExpectMessage(refused.expected);
    desk.RefreshCodes();
    guide_.Expect(desk.codes().count() == before, "nothing was written");
  }
}

void DirCodeTour::ShowLastStep(std::string_view kind) {
  const std::vector<ProgramStep> steps = StepsOf(session_, kUnit);
  const bool queued = !steps.empty() && steps.back().kind == kind;
  guide_.Expect(queued, fmt::format("the step \"{}\" is queued", kind));
  if (queued) {
    guide_.Fact("Step queued", fmt::format("{} (RID {})", kind, steps.back().subjectRid));
  }
}

void DirCodeTour::Add() {
  guide_.Chapter("A directory code with call forwarding and Do Not Disturb");
  guide_.Act("The operator enters 250, not to be disturbed at night and forwarded by day");
  DirCodeDesk desk(session_, kUnit);
  DirCodeEntry entry = WithPhone("555-0199");
  entry.extension = "12";
  entry.delay = "5";
  entry.dnd = "Night Shift";
  entry.forwardPhone = "555-0290";
  entry.forwardSchedule = "Early Shift";
  entry.displayName = "Karin Abel";
  EnterNewCode(desk, "250", entry);
  const AddedDirCode added = desk.AddCode();
  guide_.Expect(added.returned, "the code is saved");
  guide_.Result(fmt::format("saved as RID {}", added.rid));
  ShowCode(desk);
  guide_.Expect(desk.codes().SelectedText() == "0250", "the list shows the code");
  ShowLastStep(step::kProgramDirectoryCode);

  guide_.Act("The operator forwards it to its own number and answers No");
  guide_.PlanAnswer(qorcred::MessageButton::kNo);
  desk.screen().Box("txtPhoneNocf").SetText("555-0199");
  guide_.Expect(!desk.SaveEdited().returned, "No keeps the code");
  stage_.ExpectMessage("Do you still want to proceed?");
  guide_.Result("kept as it was");
}

void DirCodeTour::Renumber() {
  guide_.Chapter("A directory code gets another number");
  DirCodeDesk desk(session_, kUnit);
  (void)desk.Select("101");
  ShowCode(desk);
  guide_.Act("The operator types 102, which another row has");
  desk.TypeCode("102");
  guide_.Expect(!desk.Renumber().returned, "a code in use is refused");
  stage_.ExpectMessage("This Directory Code already exists.");
  guide_.Act("The operator types 180");
  desk.TypeCode("180");
  guide_.Expect(desk.Renumber().returned, "a free code is taken");
  guide_.Result(fmt::format("saved; the list shows {} in its place", desk.codes().SelectedText()));
  guide_.Expect(desk.codes().SelectedText() == "0180", "the list shows the new code");
  ShowLastStep(step::kChangeDirectoryCode);
}

UnitFile DirCodeTour::CodesAtUnit() {
  const UnitFile stored = ExportUnit(session_, kUnit, "", Unholdable::kRefused).file;
  UnitFile unit;
  for (UnitCode code : stored.codes) {
    if (code[Place::kCode] == "104") {
      code[Place::kPhone] = "555-0777";
    }
    if (code[Place::kCode] != "106") {
      unit.codes.push_back(std::move(code));
    }
  }
  UnitCode fresh = unit.codes.front();
  fresh[Place::kCode] = "300";
  fresh[Place::kDisplayName] = "Lodge; ring twice";
  unit.codes.push_back(std::move(fresh));
  return unit;
}

void DirCodeTour::ShowPlan(const UnitMerge& merge, const UnitFile& unit) {
  for (const auto& row : PlanTable(merge.plan(), unit.codes, merge.stored()).rows) {
    guide_.Fact(
        fmt::format("{} {}", qorcred::ToText(row[0]), qorcred::ToText(row[1])),
        qorcred::IsEmptyText(row.back()) ? "new in the unit" : qorcred::TextOrEmpty(row.back()));
  }
}

void DirCodeTour::Merge() {
  guide_.Chapter("A merge with what the unit holds");
  std::stringstream file;
  WriteUnitFile(file, CodesAtUnit());
  std::string line;
  while (std::getline(file, line)) {
    if (qorcred::Contains(line, "Lodge")) {
      guide_.Fact("Line of the file", line);
    }
  }
  file.clear();
  file.seekg(0);
  const UnitReading reading = ReadUnitFile(file);
  guide_.Expect(reading.faults.empty(), "every line is good");

  guide_.Act("The operator merges the unit file");
  UnitMerge merge(session_, kUnit, reading, BadLines::kRefused);
  const MergeReport report = merge.Apply([&](std::int64_t done, std::int64_t) {
    if (done == 0) {
      ShowPlan(merge, reading.file);
    }
    return true;
  });
  guide_.Result(fmt::format("{} inserted, {} updated, {} deleted, {} unchanged", report.inserted,
                            report.updated, report.deleted, report.unchanged));
  guide_.Expect(report.inserted == 1 && report.updated == 1 && report.deleted == 1,
                "three codes differed");
  guide_.Expect(report.aftermath.tenantsReleased == 1, "the tenant of 106 is without a code");

  DirCodeDesk desk(session_, kUnit);
  guide_.FactOfList("Codes now", desk.codes());
  (void)desk.Select("300");
  guide_.Expect(desk.screen().Box("txtDisplayName").text() == "Lodge; ring twice",
                "the inserted code shows its name");
}

}  // namespace

void TourDirCodes(const TourStage& stage) {
  DirCodeTour(stage).Run();
}

}  // namespace qorhost
