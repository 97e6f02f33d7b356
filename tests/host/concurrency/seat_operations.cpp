#include "tests/host/concurrency/seat_operations.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <span>
#include <utility>

#include "frame/convert.h"
#include "host/desks/credential_desk.h"
#include "host/desks/credential_entry.h"
#include "host/desks/credential_import.h"
#include "host/desks/credential_replacement.h"
#include "host/desks/credential_report.h"
#include "host/desks/desk_error.h"
#include "host/desks/dir_code_desk.h"
#include "host/desks/dir_code_entry.h"
#include "host/desks/dir_code_import.h"
#include "host/desks/door_desk.h"
#include "host/desks/history_undo.h"
#include "host/desks/schedule_desk.h"
#include "host/desks/step_desk.h"
#include "host/desks/store_statement.h"
#include "host/desks/tenant_desk.h"
#include "host/desks/tenant_file.h"
#include "host/desks/tenant_import.h"
#include "host/desks/unit_deletion.h"
#include "host/desks/unit_desk.h"
#include "host/desks/unit_export.h"
#include "host/desks/unit_merge.h"
#include "tests/host/concurrency/small_building.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {

namespace {

Told Telling(const Outcome& outcome) {
  Told told;
  told.ending = outcome.ending;
  for (const ShownMessage& message : outcome.messages) {
    told.messages.push_back(message.text);
  }
  told.failures = outcome.failures;
  told.cause = outcome.cause;
  for (const WorkEntry& entry : outcome.changes) {
    told.changedBy.push_back(fmt::format("{}: {}", entry.who, entry.what));
  }
  return told;
}

std::string CardEntry(const std::string& card) {
  return "Standard 26-Bit Card-" + card;
}

using Desk = std::shared_ptr<CredentialDesk>;

/// What is done with a desk at which everything is entered.
template <typename D, typename Work>
PreparedDesk At(std::shared_ptr<D> desk, Work work) {
  return {[desk, work = std::move(work)] { return Telling(work(*desk)); },
          [desk] { return desk->screen().Snapshot(); }};
}

SeatOperation Issue(const std::string& first, const std::string& last, bool withTenants) {
  return {fmt::format("issue {} to {}{}", first, last, withTenants ? " with tenants" : ""),
          [=](Seat& seat) {
            NewCredentials entry;
            entry.type = "card26";
            entry.first = first;
            entry.last = last;
            entry.facility = "7";
            entry.withTenants = withTenants;
            auto desk = std::make_shared<CredentialDesk>(
                seat.session(), seat.unit,
                withTenants ? DeskScreen::kTenantCreating : DeskScreen::kCredentials);
            EnterCredentials(*desk, entry);
            return At(desk, [](CredentialDesk& at) -> Outcome { return at.SaveNew(); });
          }};
}

template <typename Work>
SeatOperation OnCard(std::string name, const std::string& card, Work work) {
  return {std::move(name), [card, work](Seat& seat) {
            auto desk = std::make_shared<CredentialDesk>(seat.session(), seat.unit,
                                                         DeskScreen::kCredentials);
            (void)desk->Select(CardEntry(card));
            return work(desk);
          }};
}

template <typename Work>
SeatOperation OnCode(std::string name, const std::string& code, Work work) {
  return {std::move(name), [code, work](Seat& seat) {
            auto desk = std::make_shared<DirCodeDesk>(seat.session(), seat.unit);
            (void)desk->Select(code);
            return work(desk);
          }};
}

using Importer = ImportReport (*)(DeskSession&, std::int32_t, ImportFile&, const ImportRules&,
                                  const Progress&);

SeatOperation Import(std::string name, std::span<const ImportColumn> columns, Importer importer,
                     const std::string& text) {
  return {std::move(name), [=](Seat& seat) {
            const auto run = [=, &seat] {
              ImportFile file(text, columns);
              const ImportReport report =
                  importer(seat.session(), seat.unit, file, {.answerYes = true}, nullptr);
              return Told{report.ending, report.texts, {}, {}};
            };
            return PreparedDesk{run, nullptr};
          }};
}

/// With a tenant who is chosen when the desk is prepared.
template <typename Work>
SeatOperation OnTenant(std::string name, const std::string& tenant, Work work) {
  return {std::move(name), [tenant, work](Seat& seat) {
            auto desk = std::make_shared<TenantDesk>(seat.session(), seat.unit);
            desk->Choose({tenant});
            return PreparedDesk{[desk, work] { return Telling(work(*desk)); }, nullptr};
          }};
}

SeatOperation EditTenant(std::string name, const std::string& tenant, const TenantEntry& entry) {
  return OnTenant(std::move(name), tenant,
                  [entry](TenantDesk& desk) { return desk.Edit(entry, Trial::kNo); });
}

/// What the unit of a new building holds, but another phone for 102, no 103, and 300.
UnitReading ChangedUnit() {
  using qorcred::unit_place::Place;
  const TemporaryFolder folder;
  MakeBuilding(folder.File("unit.db"), kCodesInUse);
  Seat seat(folder.File("unit.db"), "unit");
  UnitReading reading{ExportUnit(seat.session(), seat.unit, "", Unholdable::kRefused).file, {}};
  std::vector<UnitCode>& codes = reading.file.codes;
  std::erase_if(codes, [](const UnitCode& code) { return NumberOf(code) == 103; });
  for (UnitCode& code : codes) {
    if (NumberOf(code) == 102) {
      code[Place::kPhone] = "555-9999";
    }
  }
  codes.push_back(codes.front());
  codes.back()[Place::kCode] = "300";
  return reading;
}

}  // namespace

SeatOperation IssueCards(const std::string& first, const std::string& last) {
  return Issue(first, last, false);
}

SeatOperation IssueCardsWithTenants(const std::string& first, const std::string& last) {
  return Issue(first, last, true);
}

SeatOperation AssignCard(const std::string& card, std::optional<std::string> tenant) {
  return OnCard(fmt::format("assign {} to {}", card, tenant.value_or("nobody")), card,
                [tenant](const Desk& desk) {
                  CredentialChange change;
                  change.tenant = tenant;
                  change.release = !tenant;
                  EnterChange(*desk, change);
                  return At(desk, [](CredentialDesk& at) -> Outcome { return at.SaveEdited(); });
                });
}

SeatOperation DeleteCard(const std::string& card) {
  return OnCard("delete card " + card, card, [](const Desk& desk) {
    return At(desk, [](CredentialDesk& at) { return at.Delete(); });
  });
}

SeatOperation RenumberCard(const std::string& card, std::int32_t number) {
  return OnCard(fmt::format("renumber {} to {}", card, number), card, [number](const Desk& desk) {
    return At(desk, [number](CredentialDesk& at) -> Outcome {
      return at.Renumber(CredentialNumber(std::to_string(number)));
    });
  });
}

SeatOperation ImportCards(const std::string& lines) {
  return Import("import cards", CredentialImportColumns(), &ImportCredentials,
                "Credential Type,Card Number,Facility Code,Assigned To\n" + lines);
}

SeatOperation DeleteInReport(const std::string& rids) {
  return {"delete in a report " + rids, [rids](Seat& seat) {
            auto report = std::make_shared<CredentialReport>(seat.session(), seat.unit,
                                                             std::vector<std::string>());
            (void)report->Run();
            const auto run = [report, rids] { return Telling(report->Delete(GivenRids(rids))); };
            return PreparedDesk{run, nullptr};
          }};
}

SeatOperation AddCode(const std::string& code) {
  return {"add code " + code, [code](Seat& seat) {
            auto desk = std::make_shared<DirCodeDesk>(seat.session(), seat.unit);
            DirCodeEntry entry;
            entry.phone = "555-7000";
            EnterNewCode(*desk, code, entry);
            return At(desk, [](DirCodeDesk& at) -> Outcome { return at.AddCode(); });
          }};
}

SeatOperation EditPhone(const std::string& code, const std::string& phone) {
  return OnCode(fmt::format("phone of {}: {}", code, phone), code,
                [phone](const std::shared_ptr<DirCodeDesk>& desk) {
                  DirCodeEntry entry;
                  entry.phone = phone;
                  (void)EnterDirCodeChange(*desk, entry);
                  return At(desk, [](DirCodeDesk& at) { return at.SaveEdited(); });
                });
}

SeatOperation ForwardToItself(const std::string& code) {
  return OnCode("forward to itself " + code, code, [](const std::shared_ptr<DirCodeDesk>& desk) {
    DirCodeEntry entry;
    entry.phone = "555-8888";
    entry.forwardPhone = "555-8888";
    entry.forwardSchedule = "Weekdays";
    (void)EnterDirCodeChange(*desk, entry);
    return At(desk, [](DirCodeDesk& at) { return at.SaveEdited(); });
  });
}

SeatOperation RenumberCode(const std::string& code, const std::string& number) {
  return OnCode(fmt::format("renumber code {} to {}", code, number), code,
                [number](const std::shared_ptr<DirCodeDesk>& desk) {
                  desk->TypeCode(number);
                  return At(desk, [](DirCodeDesk& at) { return at.Renumber(); });
                });
}

SeatOperation DeleteCode(const std::string& code) {
  return OnCode("delete code " + code, code, [](const std::shared_ptr<DirCodeDesk>& desk) {
    return At(desk, [](DirCodeDesk& at) { return at.Delete(); });
  });
}

SeatOperation ImportCodes(const std::string& lines) {
  return Import("import codes", DirCodeImportColumns(), &ImportDirCodes,
                "Directory Code,Phone No.\n" + lines);
}

SeatOperation MergeUnit() {
  return {"merge", [](Seat& seat) {
            const auto run = [&seat] {
              static const UnitReading kUnitAtTheDoor = ChangedUnit();
              UnitMerge merge(seat.session(), seat.unit, kUnitAtTheDoor, BadLines::kRefused,
                              Deletions::kAll);
              return Telling(merge.Apply(nullptr));
            };
            return PreparedDesk{run, nullptr};
          }};
}

SeatOperation AddTenant(const std::string& lastName) {
  return {"add tenant " + lastName, [lastName](Seat& seat) {
            auto desk = std::make_shared<TenantDesk>(seat.session(), seat.unit);
            const auto run = [desk, lastName] {
              TenantEntry entry;
              entry.lastName = lastName;
              return Telling(desk->Add(entry, Trial::kNo));
            };
            return PreparedDesk{run, nullptr};
          }};
}

SeatOperation NameTenant(const std::string& tenant, const std::string& lastName) {
  TenantEntry entry;
  entry.lastName = lastName;
  return EditTenant("rename " + tenant, tenant, entry);
}

SeatOperation GiveTenant(const std::string& tenant, const std::string& card) {
  TenantEntry entry;
  entry.cards = {card};
  return EditTenant(fmt::format("give {} {}", tenant, card), tenant, entry);
}

SeatOperation MoveTenant(const std::string& tenant, const std::string& code) {
  TenantEntry entry;
  entry.code = code;
  return EditTenant(fmt::format("move {} to {}", tenant, code), tenant, entry);
}

SeatOperation EndTenant(const std::string& tenant) {
  return OnTenant("end the lease of " + tenant, tenant, [](TenantDesk& desk) {
    constexpr bool kFreeCards = true;
    return desk.End("2026-12-31", kFreeCards, Trial::kNo);
  });
}

SeatOperation DeleteTenant(const std::string& tenant) {
  return OnTenant("delete " + tenant, tenant,
                  [](TenantDesk& desk) { return desk.Delete(Trial::kNo); });
}

SeatOperation ImportPeople(const std::string& lines) {
  const auto importer = [](DeskSession& session, std::int32_t unitKey, ImportFile& file,
                           const ImportRules& rules, const Progress& progress) {
    TenantImportRules whole;
    static_cast<ImportRules&>(whole) = rules;
    whole.cards = {"card26", "7"};
    return ImportTenants(session, unitKey, file, whole, progress);
  };
  return Import("import people", TenantFileColumns(), importer,
                "Last Name,Directory Code,Phone No.,Card Number\n" + lines);
}

SeatOperation ReplaceCard(const std::string& card, const std::string& successor) {
  return {fmt::format("replace {} by {}", card, successor), [card, successor](Seat& seat) {
            const auto run = [&seat, card, successor] {
              return Telling(
                  ReplaceCredential(seat.session(), seat.unit, {card, successor}, Trial::kNo));
            };
            return PreparedDesk{run, nullptr};
          }};
}

SeatOperation MarkStepsSent() {
  return {"steps done", [](Seat& seat) {
            const auto run = [&seat] {
              (void)MarkSent(seat.session(), seat.unit, {}, Trial::kNo);
              return Told();
            };
            return PreparedDesk{run, nullptr};
          }};
}

SeatOperation NameSchedule(const std::string& schedule, const std::string& name) {
  return {"rename schedule " + schedule, [schedule, name](Seat& seat) {
            const auto run = [&seat, schedule, name] {
              (void)RenameSchedule(seat.session(), seat.unit, schedule, name, Trial::kNo);
              return Told();
            };
            return PreparedDesk{run, nullptr};
          }};
}

namespace {

std::int64_t LastEntry(Seat& seat) {
  return seat.session().sql().work().VersionOf(seat.unit).entry;
}

/// The row of the list in which the number stands; without one the operation finds none either.
std::optional<SeenRow> SeenIn(const List& list, std::size_t column, std::int32_t number,
                              std::int64_t entry) {
  for (const auto& row : list.rows) {
    if (qorcred::ToLong(row.at(column)) == number) {
      return SeenRow{row, entry};
    }
  }
  return std::nullopt;
}

std::optional<SeenRow> SeenSchedule(Seat& seat, std::int32_t schedule) {
  constexpr std::size_t kSchedule = 1;
  const std::int64_t entry = LastEntry(seat);
  return SeenIn(ScheduleList(seat.session(), {{seat.unit, ""}}), kSchedule, schedule, entry);
}

std::optional<SeenRow> SeenUnit(Seat& seat) {
  const std::int64_t entry = LastEntry(seat);
  return SeenIn(UnitSettingsList(seat.session(), seat.session().Units()), 0, seat.unit, entry);
}

SeatOperation EditShownUnit(std::string what, const UnitEntry& entry) {
  return {std::move(what), [entry](Seat& seat) {
            const auto run = [&seat, entry, seen = SeenUnit(seat)] {
              return Telling(
                  EditUnit(seat.session(), seat.unit, entry, OtherUnits::kAsked, Trial::kNo, seen));
            };
            return PreparedDesk{run, nullptr};
          }};
}

}  // namespace

SeatOperation NameShownDoor(std::int32_t door, const std::string& name) {
  return {fmt::format("rename door {} as shown", door), [door, name](Seat& seat) {
            const std::int64_t entry = LastEntry(seat);
            const auto seen = SeenIn(DoorList(seat.session(), seat.unit), 0, door, entry);
            const auto run = [&seat, door, name, seen] {
              return Telling(RenameDoor(seat.session(), seat.unit, std::to_string(door), name,
                                        Trial::kNo, seen));
            };
            return PreparedDesk{run, nullptr};
          }};
}

SeatOperation NameShownSchedule(std::int32_t schedule, const std::string& name) {
  return {fmt::format("rename schedule {} as shown", schedule), [schedule, name](Seat& seat) {
            const auto run = [&seat, schedule, name, seen = SeenSchedule(seat, schedule)] {
              return Telling(RenameSchedule(seat.session(), seat.unit, std::to_string(schedule),
                                            name, Trial::kNo, seen));
            };
            return PreparedDesk{run, nullptr};
          }};
}

SeatOperation DeleteShownSchedule(std::int32_t schedule) {
  return {fmt::format("delete schedule {} as shown", schedule), [schedule](Seat& seat) {
            const auto run = [&seat, schedule, seen = SeenSchedule(seat, schedule)] {
              return Telling(DeleteSchedule(seat.session(), seat.unit, std::to_string(schedule),
                                            Trial::kNo, seen));
            };
            return PreparedDesk{run, nullptr};
          }};
}

SeatOperation NameShownUnit(const std::string& name) {
  UnitEntry entry;
  entry.name = name;
  return EditShownUnit("rename the unit as shown", entry);
}

SeatOperation SetDigitsOfShownUnit(const std::string& codeDigits) {
  UnitEntry entry;
  entry.codeDigits = codeDigits;
  return EditShownUnit("set the digits of the unit as shown", entry);
}

SeatOperation DeleteShownUnit() {
  return {"delete the unit as shown", [](Seat& seat) {
            auto units = WithContents(seat.session(), {{seat.unit, ""}});
            units.front().seen = SeenUnit(seat);
            const auto run = [&seat, units] {
              return Telling(DeleteUnits(seat.session(), units, Trial::kNo));
            };
            return PreparedDesk{run, nullptr};
          }};
}

SeatOperation WriteByHand(const std::string& statement) {
  return {"by hand", [statement](Seat& seat) {
            const auto run = [&seat, statement] {
              (void)StoreStatements(statement).Run(seat.session());
              return Told();
            };
            return PreparedDesk{run, nullptr};
          }};
}

namespace {

Told Undo(Seat& seat, std::int64_t entry) {
  const Undoing undone = qorhost::UndoEntry(seat.session(), std::to_string(entry), Trial::kNo);
  if (!undone.done()) {
    throw RefusedError(undone.reason);
  }
  return Told();
}

}  // namespace

SeatOperation UndoEntry(std::int64_t entry) {
  return {fmt::format("undo entry {}", entry), [entry](Seat& seat) {
            return PreparedDesk{[&seat, entry] { return Undo(seat, entry); }, nullptr};
          }};
}

SeatOperation UndoLatest() {
  return {"undo the latest entry", [](Seat& seat) {
            const auto run = [&seat] {
              for (const ChainHead& head : seat.session().sql().audit().Heads()) {
                if (head.unitKey == seat.unit) {
                  return Undo(seat, head.entry);
                }
              }
              throw RefusedError("nothing was done yet");
            };
            return PreparedDesk{run, nullptr};
          }};
}

std::vector<NamedOperation> OperationsOfEveryKind() {
  return {
      {"IssuingARange", IssueCards("201", "203")},
      {"IssuingWithTenants", IssueCardsWithTenants("201", "202")},
      {"IssuingManyWithTenants", IssueCardsWithTenants("201", "212")},
      {"AssigningAHeldCard", AssignCard("101", "Berg Bea")},
      {"DeletingAHeldCard", DeleteCard("101")},
      {"RenumberingACard", RenumberCard("103", 300)},
      {"DeletingInAReport", DeleteInReport("3,4")},
      {"ImportingCards", ImportCards("card26,301,7,\ncard26,302,7,Adam Ann\n")},
      {"AddingACode", AddCode("301")},
      {"EditingACode", EditPhone("102", "555-8888")},
      {"RenumberingACode", RenumberCode("102", "300")},
      {"DeletingAHeldCode", DeleteCode("101")},
      {"ImportingCodes", ImportCodes("301,555-1\n302,555-2\n")},
      {"Merging", MergeUnit()},
      {"WritingByHand", WriteByHand("UPDATE DIRECTORYCODE SET PHONENUMBER='1'")},
      {"TakingAnEntryBack", UndoEntry(1)},
      {"AddingATenant", AddTenant("Dahl")},
      {"GivingATenantACard", GiveTenant("Adam", "103")},
      {"EndingALease", EndTenant("Adam")},
      {"DeletingATenant", DeleteTenant("Adam")},
      {"ImportingPeople", ImportPeople("Dahl,301,5,301\n")},
      {"ReplacingACard", ReplaceCard("101", "301")},
      {"MarkingStepsAsSent", MarkStepsSent()},
      {"NamingASchedule", NameSchedule("Weekdays", "Workdays")},
  };
}

SeatOperation FirstEntry() {
  return EditPhone("103", "555-0");
}

}  // namespace qorhost::test
