// The tour's part about credentials.
#include <fmt/format.h>

#include <array>
#include <optional>
#include <string>

#include "frame/convert.h"
#include "frame/screen_names.h"
#include "frame/text.h"
#include "host/desks/credential_desk.h"
#include "host/desks/credential_entry.h"
#include "host/desks/store_overview.h"
#include "host/store/demo.h"
#include "host/tour/tour_stage.h"

namespace qorhost {

namespace {

using qorcred::MessageButton;

/// An entry that the controller refuses with a message that contains `expected`.
struct RefusedEntry {
  std::string_view act;
  NewCredentials entry;
  std::string_view expected;
};

NewCredentials Card(std::string start, std::optional<std::string> end = std::nullopt,
                    std::optional<std::string> facility = "7") {
  NewCredentials entry;
  entry.type = "card26";
  entry.first = std::move(start);
  entry.last = std::move(end);
  entry.facility = std::move(facility);
  return entry;
}

NewCredentials Transmitter(std::string start, std::string idCode, std::string sequence) {
  NewCredentials entry = Card(std::move(start));
  entry.type = "transmitter";
  entry.idCode = std::move(idCode);
  entry.sequence = std::move(sequence);
  return entry;
}

NewCredentials WithTenants(NewCredentials entry) {
  entry.withTenants = true;
  return entry;
}

NewCredentials Corvin(std::string start, std::string facility) {
  NewCredentials entry = Card(std::move(start), std::nullopt, std::move(facility));
  entry.type = "card30";
  return entry;
}

std::vector<RefusedEntry> RefusedEntries() {
  NewCredentials backwards = WithTenants(Card("9001"));
  backwards.from = "2027-06-30";
  backwards.to = "2027-01-01";
  return {
      {"saves without a number", Card(""), "You must enter a credential number."},
      {"types 'abc' as the number", Card("abc"), "Please enter a numeric value"},
      {"types 0", Card("0"), "between 1 and 65535"},
      {"types 65536", Card("65536"), "smaller than 65535"},
      {"asks for the range 20 to 10", Card("20", "10"), "must be greater than the starting number"},
      {"gives a 30-bit card the facility code 64", Corvin("9001", "64"), "between 0 and 63"},
      {"gives a transmitter the ID code 27", Transmitter("9001", "27", "1"), "an ID Code"},
      {"gives a transmitter the sequence code 3", Transmitter("9001", "3", "3"), "a Sequence Code"},
      {"issues card 20001 a second time", Card("20001"), "Credential Number = 20001"},
      {"issues the range 19990 to 20010, of which some exist", Card("19990", "20010"),
       "Credential Number = 20001"},
      {"lets a new tenant's period end before it starts", backwards,
       "The End Date must be later than the Start Date."},
  };
}

class CredentialTour {
 public:
  explicit CredentialTour(const TourStage& stage)
      : stage_(stage), guide_(stage.guide), session_(stage.session) {}

  void Run();

 private:
  void OpenScreen();
  void ShowRefusals();
  void IssueRange();
  void FillUnit();
  void Assign();
  void Renumber();
  void Delete();

  /// Saves an entry that must be refused; the unit must hold as many codes as before.
  void Refuse(const RefusedEntry& refused);
  [[nodiscard]] std::int64_t CredentialsOf(std::int32_t unit) {
    return UnitStatusOf(session_, unit).credentials;
  }

  TourStage stage_;
  TourGuide& guide_;
  DeskSession& session_;
};

void CredentialTour::Run() {
  OpenScreen();
  ShowRefusals();
  IssueRange();
  FillUnit();
  Assign();
  Renumber();
  Delete();
}

void CredentialTour::OpenScreen() {
  guide_.Chapter("The credential screen opens");
  stage_.ShowUnit(demo::kLongDoorNamesUnit);
  CredentialDesk desk(session_, demo::kLongDoorNamesUnit, DeskScreen::kCredentials);
  ScreenModel& screen = desk.screen();
  guide_.FactOfList("Types", screen.List("cboCredentialType"));
  guide_.FactOfList("Schedules", screen.List(qorcred::kScheduleLists.front()));
  guide_.FactOfList("Assigned to", screen.List("cboAssignedTo"));
  guide_.FactOfList("Credentials", screen.List("cboCredentials"));
  std::string captions;
  for (const std::string_view label : {"lblDoor1", "lblDoor2", "lblDoor3", "lblDoor4"}) {
    captions += (captions.empty() ? "" : " | ") + screen.Any(label).caption();
  }
  guide_.Fact("Door captions", captions);
  guide_.Expect(screen.List(qorcred::kScheduleLists.back()).SelectedText() == "Full Access",
                "Full Access is the schedule selected");
  guide_.Expect(screen.List("cboCredentials").count() > 1, "the unit has credentials");

  guide_.Act("The operator picks a transmitter from the list");
  ListModel& list = screen.List("cboCredentials");
  const std::int32_t transmitter = list.FindText("Transmitter-301");
  guide_.Expect(transmitter > 0, "there is a Transmitter-301");
  desk.SelectCredential(transmitter);
  guide_.Fact("Credential", list.SelectedText());
  guide_.Fact(
      "Codes",
      fmt::format("facility {}, ID {}, sequence {}, button {}",
                  screen.Box("txtFacilityCode").text(), screen.Box("txtIDCode").text(),
                  screen.Box("txtSequenceCode").text(), screen.Option("optButton4").on() ? 4 : 1));
  guide_.Fact("Assigned to", screen.List("cboAssignedTo").SelectedText());
}

void CredentialTour::Refuse(const RefusedEntry& refused) {
  guide_.Act(fmt::format("The operator {}", refused.act));
  const std::int64_t before = CredentialsOf(demo::kLongDoorNamesUnit);
  CredentialDesk desk(
      session_, demo::kLongDoorNamesUnit,
      refused.entry.withTenants ? DeskScreen::kTenantCreating : DeskScreen::kCredentials);
  EnterCredentials(desk, refused.entry);
  guide_.Expect(!desk.SaveNew().returned, "the entry is refused");
  if (!desk.screen().focused().empty()) {
    guide_.Result(fmt::format("refused; the cursor stands in {}", desk.screen().focused()));
  } else {
    guide_.Result("refused");
  }
  stage_.ExpectMessage(refused.expected);
  guide_.Expect(CredentialsOf(demo::kLongDoorNamesUnit) == before, "nothing was written");
}

void CredentialTour::ShowRefusals() {
  guide_.Chapter("Entries that the screen refuses");
  for (const RefusedEntry& refused : RefusedEntries()) {
    Refuse(refused);
  }
}

void CredentialTour::IssueRange() {
  guide_.Chapter("A range of cards, each with a tenant of its own");
  guide_.Act("The operator issues cards 9001 to 9005 and chooses the tenants' schedules");
  CredentialDesk desk(session_, demo::kLongDoorNamesUnit, DeskScreen::kTenantCreating);
  NewCredentials entry = WithTenants(Card("9001", "9005"));
  entry.schedules = "Full Access,Late Shift,Full Access,No Access";
  entry.from = "2027-01-01";
  entry.to = "2027-12-31";
  EnterCredentials(desk, entry);
  ScreenModel& screen = desk.screen();
  guide_.Fact("Type", screen.List("cboCredentialType").SelectedText());
  guide_.Fact("Numbers",
              fmt::format("{} to {}, facility {}", screen.Box("txtPINStart").text(),
                          screen.Box("txtPINEND").text(), screen.Box("txtFacilityCode").text()));
  guide_.Fact("Active",
              fmt::format("{} to {}", qorcred::TextOrEmpty(screen.Date("dtpStart").Chosen()),
                          qorcred::TextOrEmpty(screen.Date("dtpEnd").Chosen())));
  const IssuedCredentials issued = desk.SaveNew();
  guide_.Expect(issued.returned, "the range is issued");
  guide_.Result(fmt::format("saved; the last row is RID {}", issued.lastRid));
  guide_.Fact("New tenants", issued.newTenantIds);
  desk.RefreshCredentials(issued.lastRid);
  guide_.Fact("Selected now", screen.List("cboCredentials").SelectedText());
  guide_.Expect(screen.List("cboCredentials").SelectedText() == "Standard 26-Bit Card-9005",
                "the last card issued is selected");
}

void CredentialTour::FillUnit() {
  guide_.Chapter("A unit that is nearly full");
  stage_.ShowUnit(demo::kNearlyFullUnit);
  CredentialDesk desk(session_, demo::kNearlyFullUnit, DeskScreen::kCredentials);
  guide_.Act("The operator asks for five more cards, 1 to 5");
  EnterCredentials(desk, Card("1", "5", "12"));
  guide_.Expect(!desk.SaveNew().returned, "five cards are too many");
  stage_.ExpectMessage("Reduce the ending number to 2");
  guide_.Act("The operator takes the advice: 1 to 2");
  desk.screen().Box("txtPINEND").SetText("2");
  guide_.Expect(desk.SaveNew().returned, "two cards fit");
  guide_.Result("saved; the unit is full");
  guide_.Act("The operator tries card 3");
  EnterCredentials(desk, Card("3", std::nullopt, "12"));
  guide_.Expect(!desk.SaveNew().returned, "the unit is full");
  stage_.ExpectMessage("You cannot assign more than 500 codes combined.");

  guide_.Act("The operator assigns one of the new cards to a tenant of the full unit");
  desk.RefreshCredentials();
  ListModel& list = desk.screen().List("cboCredentials");
  desk.SelectCredential(list.FindText("Standard 26-Bit Card-1"));
  desk.screen().List("cboAssignedTo").Select(1);
  // The controller reports such an assignment as saved; only the message tells.
  const ChangedCredential assigned = desk.SaveEdited();
  guide_.Expect(assigned.returned, "the save reports success");
  stage_.ExpectMessage("You cannot enter more than 500 combined codes.");
  guide_.Expect(assigned.credential.tenant.empty(), "nobody holds the card");
  guide_.Result("not assigned");
}

void CredentialTour::Assign() {
  guide_.Chapter("An assignment");
  CredentialDesk desk(session_, demo::kLongDoorNamesUnit, DeskScreen::kCredentials);
  ScreenModel& screen = desk.screen();
  desk.SelectCredential(screen.List("cboCredentials").FindText("Standard 26-Bit Card-20040"));
  guide_.Fact("Credential", screen.List("cboCredentials").SelectedText());
  guide_.Fact("Assigned to", screen.List("cboAssignedTo").SelectedText());
  ListModel& tenants = screen.List("cboAssignedTo");
  tenants.Select(2);
  screen.List("cboActivate").Select(2);
  guide_.Act(fmt::format("The operator chooses {} and the door {}",
                         qorcred::Trim(tenants.SelectedText()),
                         screen.List("cboActivate").SelectedText()));
  guide_.Expect(desk.SaveEdited().returned, "the assignment is saved");
  const std::int32_t chosen = tenants.selected();
  desk.RefreshCredentials(
      screen.List("cboCredentials").ItemData(screen.List("cboCredentials").selected()));
  guide_.Expect(tenants.selected() == chosen, "the tenant holds the card");
  guide_.Result(fmt::format("saved; loaded again it is assigned to {}",
                            qorcred::Trim(tenants.SelectedText())));
}

void CredentialTour::Renumber() {
  guide_.Chapter("A renumbering");
  CredentialDesk desk(session_, demo::kLongDoorNamesUnit, DeskScreen::kCredentials);
  ListModel& list = desk.screen().List("cboCredentials");
  desk.SelectCredential(list.FindText("Standard 26-Bit Card-20040"));
  guide_.Fact("Credential", list.SelectedText());
  guide_.Act("The operator types 0 as the new number");
  guide_.Expect(!desk.Renumber(CredentialNumber("0")).returned, "0 is refused");
  stage_.ExpectMessage("Please enter a Credential Number between 1 and 65535.");
  guide_.Act("The operator types 20039, which another card has");
  guide_.Expect(!desk.Renumber(CredentialNumber("20039")).returned, "a number in use is refused");
  stage_.ExpectMessage("Credential Number already exists.");
  guide_.Act("The operator types 31000");
  guide_.Expect(desk.Renumber(CredentialNumber("31000")).returned, "a free number is taken");
  guide_.Result(fmt::format("saved; the list shows {} in its place", list.SelectedText()));
  guide_.Expect(list.SelectedText() == "Standard 26-Bit Card-31000", "the list shows the number");
}

void CredentialTour::Delete() {
  guide_.Chapter("Deletions");
  CredentialDesk desk(session_, demo::kLongDoorNamesUnit, DeskScreen::kCredentials);
  ListModel& list = desk.screen().List("cboCredentials");
  desk.SelectCredential(list.FindText("Standard 26-Bit Card-31000"));
  guide_.Act("The operator deletes Standard 26-Bit Card-31000 and answers No");
  guide_.PlanAnswer(MessageButton::kNo);
  guide_.Expect(!desk.Delete().returned, "No keeps the card");
  stage_.ExpectMessage("Do you want to continue?");
  guide_.Result("kept");
  guide_.Act("The operator deletes it again and answers Yes");
  guide_.PlanAnswer(MessageButton::kYes);
  guide_.Expect(desk.Delete().returned, "Yes deletes the card");
  stage_.ExpectMessage("Do you want to continue?");
  guide_.Result("deleted; its tenant is without it");
  desk.RefreshCredentials();

  guide_.Act("The operator deletes Standard 26-Bit Card-20038, which nobody holds");
  desk.SelectCredential(list.FindText("Standard 26-Bit Card-20038"));
  guide_.Expect(desk.Delete().returned, "the card is deleted");
  guide_.Expect(guide_.TakeMessages().empty(), "nothing is asked");
  guide_.Result("deleted without a question");
}

}  // namespace

void TourCredentials(const TourStage& stage) {
  CredentialTour(stage).Run();
}

}  // namespace qorhost
