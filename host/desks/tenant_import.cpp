#include "host/desks/tenant_import.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/desk_error.h"
#include "host/desks/input_fault.h"
#include "host/desks/list_entries.h"
#include "host/desks/sheet_dates.h"
#include "host/desks/tenant_adding.h"
#include "host/desks/tenant_entry.h"
#include "host/desks/tenant_file.h"
#include "host/desks/tenant_import_cards.h"
#include "host/desks/tenant_import_codes.h"
#include "host/desks/tenant_import_people.h"
#include "host/desks/tenant_rows.h"
#include "host/desks/typed_input.h"

namespace qorhost {

namespace {

namespace file_column = tenant_file_column;

Outcome TakenIn() {
  Outcome outcome;
  outcome.returned = true;
  return outcome;
}

/// What is dialled; below 0 for none.
double NumberOfCode(const ImportLine& line) {
  const std::string_view code = TenantImportCodes::CodeIn(line);
  return IsWholeNumber(code) ? qorcred::Val(code) : -1;
}

class TenantImport {
 public:
  TenantImport(DeskSession& session, std::int32_t unitKey, const ImportFile& file,
               const TenantImportRules& rules)
      : session_(session),
        unitKey_(unitKey),
        file_(file),
        rules_(rules),
        links_(session, unitKey),
        tenants_(ReadTenants(session, unitKey)),
        people_(tenants_, links_, file.lineCount()),
        adding_(session, unitKey),
        cards_(session, unitKey, file, tenants_, rules.cards),
        codes_(session, unitKey, file, rules) {}

  Outcome Enter(const ImportLine& line, ImportNotes& notes) {
    cards_.Drop();
    codes_.Begin(line);
    const std::optional<LineName> name = NameIn(line, file_);
    Outcome entered = name ? EnterTenant(line, *name, notes) : EnterNobodys(line, notes);
    cards_.Keep();
    codes_.Keep();
    return entered;
  }

  void Finish() { adding_.Finish(); }

 private:
  Outcome EnterNobodys(const ImportLine& line, ImportNotes& notes) {
    const std::int64_t before = session_.sql().work().written();
    const StoredAlready stored = rules_.stored == StoredTenants::kRefused ? StoredAlready::kRefused
                                 : rules_.stored == StoredTenants::kSkipped
                                     ? StoredAlready::kTaken
                                     : StoredAlready::kChanged;
    bool any = false;
    for (std::size_t slot = 0; slot < kTenantCards; ++slot) {
      // Somebody may hold it by now: nothing is taken from anybody.
      any = cards_.Take(line, slot, kAnyHolder, stored) != 0 || any;
    }
    any = codes_.Take(line, "", stored, notes) != 0 || any;
    if (!any) {
      throw RefusedError("the line has neither a name nor a card nor a directory code");
    }
    return session_.sql().work().written() == before ? Outcome::Unchanged() : TakenIn();
  }

  /// A program that could not write a letter has written a question mark.
  static void TellLostLetters(const LineName& name, ImportNotes& notes) {
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD, which looks like one
    const auto hasLost = [&](std::string_view part) {
      return part.find('?') != std::string_view::npos ||
             part.find(kReplacement) != std::string_view::npos;
    };
    if (hasLost(name.last) || hasLost(name.first)) {
      notes.push_back(
          fmt::format("'{}' has a question mark: a letter may have been lost when the file was "
                      "written",
                      qorcred::Trim(fmt::format("{} {}", name.last, name.first))));
    }
  }

  Outcome EnterTenant(const ImportLine& line, const LineName& name, ImportNotes& notes) {
    TellLostLetters(name, notes);
    codes_.RequireNumber(line);  // without one the line would mean somebody else
    const std::string_view tenantId = line.Trimmed(file_column::kTenantId);
    const TenantImportPeople::Match match = people_.Find(name, NumberOfCode(line), tenantId);
    if (match.same != nullptr) {
      return EnterKnown(line, name, match, notes);
    }
    if (match.other != nullptr) {
      TellOther(*match.other, notes);
    }
    return Add(line, name, notes);
  }

  void TellOther(const KnownTenant& other, ImportNotes& notes) const {
    const std::string described = fmt::format("{} has the directory code {}", other.Described(),
                                              qorcred::NumberText(other.code));
    if (rules_.stored == StoredTenants::kUpdated && other.line == 0) {
      throw RefusedError(fmt::format(
          "{}: whether the line means somebody else of that name cannot be told; with the "
          "tenant's id in the column \"{}\" it can",
          described, file_.HeadingOf(file_column::kTenantId)));
    }
    if (other.code >= 0) {
      notes.push_back(fmt::format("{}, and is somebody else of the same name", described));
    }
  }

  Outcome EnterKnown(const ImportLine& line, const LineName& name,
                     const TenantImportPeople::Match& match, ImportNotes& notes) {
    if (match.isDoubtful && rules_.stored == StoredTenants::kUpdated) {
      throw RefusedError(
          fmt::format("several tenants are called {}: which one is meant can be "
                      "told by the tenant's id in the column \"{}\"",
                      match.same->row.Name(), file_.HeadingOf(file_column::kTenantId)));
    }
    if (rules_.stored == StoredTenants::kUpdated) {
      return Update(line, name, *match.same, notes);
    }
    if (match.same->line != 0) {
      throw RefusedError(
          fmt::format("{} is in line {} already: one line holds all that a tenant "
                      "has, a second card in columns of its own",
                      match.same->row.Name(), match.same->line));
    }
    if (rules_.stored == StoredTenants::kSkipped) {
      return Outcome::Unchanged();
    }
    throw RefusedError(fmt::format("{} is stored already", match.same->Described()));
  }

  Outcome Add(const ImportLine& line, const LineName& name, ImportNotes& notes) {
    TenantEntry entry = EntryOf(line, name);
    const auto orNone = [&line](std::size_t day, std::optional<std::string>& given) {
      if (!given && line.Cell(day)) {
        given = kNoneWord;
      }
    };
    orNone(file_column::kStart, entry.from);
    orNone(file_column::kEnd, entry.to);
    TenantRow row = Applied(entry, adding_.fresh());
    if (IsNoNameAtUnit(line)) {
      row.nameAtUnit.clear();
    }
    for (std::size_t slot = 0; slot < kTenantCards; ++slot) {
      row.cards.at(slot) = cards_.Take(line, slot, 0, StoredAlready::kTaken);
    }
    RequireTwo(row);
    row.code = codes_.Take(line, row.nameAtUnit, StoredAlready::kTaken, notes);
    adding_.Store(row);
    KnownTenant added{row, NumberOfCode(line), line.number(),
                      std::string(line.Trimmed(file_column::kTenantId))};
    cards_.Hold(row, added.Described());
    people_.Add(std::move(added));
    return TakenIn();
  }

  Outcome Update(const ImportLine& line, const LineName& name, KnownTenant& known,
                 ImportNotes& notes) {
    const std::int64_t before = session_.sql().work().written();
    TenantRow row = Applied(EntryOf(line, name), known.row);
    if (IsNoNameAtUnit(line)) {
      row.nameAtUnit.clear();
    }
    for (std::size_t slot = 0; slot < kTenantCards; ++slot) {
      const std::int32_t card = cards_.Take(line, slot, known.row.rid, StoredAlready::kChanged);
      PutInto(row, card);
    }
    if (const std::string_view code = TenantImportCodes::CodeIn(line); !code.empty()) {
      row.code = codes_.Take(line, row.nameAtUnit, StoredAlready::kChanged, notes);
    }
    Write(known.row, row);
    if (session_.sql().work().written() == before) {
      return Outcome::Unchanged();
    }
    known.row = row;
    cards_.Hold(row, known.Described());
    return TakenIn();
  }

  /// The tenant holds the card beside what is held already.
  static void PutInto(TenantRow& row, std::int32_t card) {
    if (card == 0 || std::find(row.cards.begin(), row.cards.end(), card) != row.cards.end()) {
      return;
    }
    auto* free = std::find(row.cards.begin(), row.cards.end(), 0);
    if (free == row.cards.end()) {
      throw RefusedError(fmt::format("{} has two credentials already", row.NameWithRid()));
    }
    *free = card;
  }

  static void RequireTwo(const TenantRow& row) {
    if (row.cards[0] != 0 && row.cards[0] == row.cards[1]) {
      throw RefusedError("both cards of the line are the same one");
    }
  }

  /// Writes what differs, and lets the unit be programmed with it.
  void Write(const TenantRow& before, const TenantRow& after) {
    std::string settings;
    for (const TenantColumn& one : TenantColumns()) {
      const std::string literal = one.literal(after);
      if (literal != one.literal(before)) {
        settings += fmt::format("{}={}, ", one.column, literal);
      }
    }
    if (settings.empty()) {
      return;
    }
    (void)session_.sql().Change(
        fmt::format("UPDATE Tenants SET {}LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey={} AND RID={}",
                    settings, unitKey_, before.rid),
        dialect::StatementKind::kUpdate);
    session_.sql().steps().QueueOnce(unitKey_, step::kProgramTenant, before.rid);
  }

  [[nodiscard]] TenantRow Applied(const TenantEntry& entry, const TenantRow& before) const {
    return TenantValues(session_, unitKey_, entry, links_, std::nullopt).AppliedTo(before);
  }

  static bool IsNoNameAtUnit(const ImportLine& line) {
    return qorcred::CompareIgnoringCase(line.Trimmed(file_column::kNameAtUnit), kNoneEntry) == 0;
  }

  /// What stands in the cells, but for cards and code.
  [[nodiscard]] TenantEntry EntryOf(const ImportLine& line, const LineName& name) const {
    const auto cell = [&line](std::size_t at) {
      const std::string_view given = line.Trimmed(at);
      return given.empty() ? std::nullopt : std::optional<std::string>(given);
    };
    const auto date = [&](std::size_t at, std::string_view field) {
      const auto given = cell(at);
      return given ? std::optional(DateInCell(field, *given, rules_.dates)) : std::nullopt;
    };
    TenantEntry entry;
    entry.lastName = name.last;
    entry.firstName = name.first;
    entry.initial = name.initial;
    if (!IsNoNameAtUnit(line)) {
      entry.nameAtUnit = cell(file_column::kNameAtUnit);
    }
    entry.group = cell(file_column::kGroup);
    entry.active = cell(file_column::kActive);
    entry.from = date(file_column::kStart, tenant_field::kStart);
    entry.to = date(file_column::kEnd, tenant_field::kEnd);
    entry.resident = cell(file_column::kResident);
    for (std::size_t door = 0; door < kTenantDoors; ++door) {
      entry.schedules.at(door) = cell(file_column::kSchedule1 + door);
    }
    if (const auto all = cell(file_column::kSchedules)) {
      entry.SetSchedules(*all);
    }
    return entry;
  }

  DeskSession& session_;
  std::int32_t unitKey_;
  const ImportFile& file_;
  const TenantImportRules& rules_;
  TenantLinks links_;
  std::vector<TenantRow> tenants_;
  TenantImportPeople people_;
  TenantAdding adding_;
  TenantImportCards cards_;
  TenantImportCodes codes_;
};

}  // namespace

ImportReport ImportTenants(DeskSession& session, std::int32_t unitKey, ImportFile& file,
                           const TenantImportRules& rules, const Progress& progress) {
  const std::vector<FieldWord> words = WordsOf(file, TenantFields(file));
  ImportRun run(session, {{unitKey}, "import tenants", {}}, rules, words);
  TenantImport entering(session, unitKey, file, rules);
  return run.Run(
      file,
      [&entering](const ImportLine& line, ImportNotes& notes) {
        return entering.Enter(line, notes);
      },
      progress, [&entering] { entering.Finish(); });
}

}  // namespace qorhost
