// What programs read: the shape of every command's JSON, and of the error object. docs/json.md says
// the same to people.
#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using nlohmann::json;
using testing::IsEmpty;

/// The types by one word each: number, integer, text, bool, date, moment, texts, numbers, things,
/// rows; with a ? behind it also null.
bool IsOfType(const json& value, std::string type) {
  if (type.ends_with('?')) {
    type.pop_back();
    if (value.is_null()) {
      return true;
    }
  }
  const auto matches = [&value](const char* pattern) {
    return value.is_string() && std::regex_match(value.get<std::string>(), std::regex(pattern));
  };
  const auto isArrayOf = [&value](bool (json::*is)() const) {
    return value.is_array() &&
           std::all_of(value.begin(), value.end(), [is](const json& one) { return (one.*is)(); });
  };
  if (type == "number") {
    return value.is_number();
  }
  if (type == "text") {
    return value.is_string();
  }
  if (type == "bool") {
    return value.is_boolean();
  }
  if (type == "date") {
    return matches(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d)");
  }
  if (type == "moment") {
    return matches(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d[+-]\d\d:\d\d)");
  }
  if (type == "any") {
    return true;
  }
  if (type == "texts") {
    return isArrayOf(&json::is_string);
  }
  if (type == "numbers") {
    return isArrayOf(&json::is_number);
  }
  return isArrayOf(&json::is_object);  // rows
}

/// "unit:number name:text?", with the keys in their order. A blank in a key is written as _.
std::vector<std::pair<std::string, std::string>> MembersOf(const std::string& shape) {
  std::vector<std::pair<std::string, std::string>> members;
  std::istringstream words(shape);
  for (std::string word; words >> word;) {
    const std::size_t colon = word.rfind(':');
    members.emplace_back(word.substr(0, colon), word.substr(colon + 1));
  }
  return members;
}

std::string Differences(const json& object, const std::string& shape) {
  const auto members = MembersOf(shape);
  std::string differences;
  std::set<std::string> known;
  for (const auto& [key, type] : members) {
    known.insert(key);
    if (!object.contains(key)) {
      differences += key + " is missing; ";
    } else if (!IsOfType(object[key], type)) {
      differences += key + " is no " + type + ": " + object[key].dump() + "; ";
    }
  }
  for (const auto& [key, value] : object.items()) {
    differences += known.contains(key) ? "" : key + " is not told; ";
  }
  return differences;
}

constexpr const char* kThing = "type:text id:number? name:text?";
const std::string kChange =
    "unit:number? stored:bool dry_run:bool added:rows changed:rows deleted:rows ";

const std::string kTried = "changes:rows?";  ///< what a dry run would have changed, row by row

/// A command, what it is run with, and what it prints with --json.
struct Case {
  const char* command;  ///< its words, as the manual has them
  std::string words;    ///< with ' around one that has blanks
  enum Form : std::uint8_t { kRows, kObject, kChangeObject } form;
  std::string shape;  ///< of a row, of the object, or of what a change has behind the common part
};

/// In the order in which they are run, on the demo building.
std::vector<Case> Cases() {
  const std::string credential =
      "rid:number type:text? number:number facility:number? id_code:number? sequence:number? "
      "button:number? door:text? tenant_id:number? tenant:text?";
  const std::string tenant =
      "rid:number name:text name_at_unit:text? group:number active:bool start:date? end:date? "
      "schedule1:text schedule2:text schedule3:text schedule4:text card1:text? card2:text? "
      "code:number? resident:bool";
  const std::string column = "column:text needed:bool cells:text";
  const std::string imported = "unit:number dry_run:bool done:number refused:number lines:rows";
  const std::string issued = "type:text first:number last:number new_tenant_ids:numbers " + kTried;
  const std::string assigned = "door:text? tenant:text? taken_from:texts replaced:texts " + kTried;
  const std::string sql =
      "unit:number? stored:bool dry_run:bool rows:number new_rid:number? " + kTried;
  return {
      {"credentials list", "credentials list --unit 2", Case::kRows, credential},
      {"credentials list", "credentials list --all-units --limit 3", Case::kRows,
       "unit:number " + credential},
      {"credentials add",
       "credentials add --unit 2 --type card26 --start 9001 --end 9003 --facility 7",
       Case::kChangeObject, issued},
      {"history undo", "history undo 2 -n", Case::kChangeObject, "entry:number rows:number"},
      {"credentials add",
       "credentials add --unit 2 --type card26 --start 9011 --end 9012 --facility 7 --with-tenants",
       Case::kChangeObject, issued},
      {"credentials edit", "credentials edit 9001 --unit 2 --door 1", Case::kChangeObject,
       assigned},
      {"credentials assign", "credentials assign 9001 62 --unit 2 --yes", Case::kChangeObject,
       assigned},
      {"credentials assign", "credentials assign 9001 --release --unit 2", Case::kChangeObject,
       assigned},
      {"credentials assign", "credentials assign 9001 9002 62 --unit 2 --yes -n",
       Case::kChangeObject, assigned},
      {"credentials renumber", "credentials renumber 9001 9009 --unit 2", Case::kChangeObject,
       "before:text " + kTried},
      {"credentials replace", "credentials replace 1001 1900 --unit 2", Case::kChangeObject,
       "lost:text successor:text holder:text?"},
      {"credentials replace", "credentials replace 9002 9020 --unit 2 -n", Case::kChangeObject,
       "lost:text successor:text holder:text?"},
      {"credentials delete", "credentials delete 9009 --unit 2", Case::kChangeObject, kTried},
      {"credentials delete", "credentials delete 9011 9012 --unit 2 --yes", Case::kChangeObject,
       kTried},
      {"credentials import", "credentials import --columns", Case::kRows, column},
      {"credentials import", "credentials import FOLDER/credentials.csv --unit 2 -n", Case::kObject,
       imported},
      {"credentials import", "credentials import FOLDER/credentials.csv --unit 2", Case::kObject,
       imported},
      {"dircodes list", "dircodes list --unit 2", Case::kRows,
       "rid:number code:number phone:text? extension:text? delay:number? dnd_schedule:text? "
       "forward_phone:text? forward_schedule:text? active:bool start:date? end:date? "
       "display_name:text? tenants:texts state:text"},
      {"dircodes show", "dircodes show 101 --unit 2", Case::kObject,
       "code:number rid:number phone:text? extension:text? delay:number dnd:bool "
       "dnd_schedule:text? forwarding:bool forward_schedule:text? forward_phone:text? "
       "forward_extension:text? forward_delay:number active:bool start:date? end:date? "
       "display_name:text? show_name:bool show_code:bool tenants:texts"},
      {"dircodes add", "dircodes add 250 --unit 2 --phone 555-0199", Case::kChangeObject,
       "code:number start:date? end:date? " + kTried},
      {"dircodes add", "dircodes add 252 --unit 2 --phone 555-0199", Case::kChangeObject,
       "code:number start:date? end:date? " + kTried},
      {"dircodes edit", "dircodes edit 250 --unit 2 --phone 555-0198", Case::kChangeObject,
       "cleared:texts " + kTried},
      {"dircodes edit", "dircodes edit 250 252 --unit 2 --phone 555-0197 -n", Case::kChangeObject,
       "cleared:texts " + kTried},
      {"dircodes renumber", "dircodes renumber 250 251 --unit 2", Case::kChangeObject,
       "before:text " + kTried},
      {"dircodes delete", "dircodes delete 251 252 --unit 2 --yes -n", Case::kChangeObject,
       "tenants:texts " + kTried},
      {"dircodes delete", "dircodes delete 251 --unit 2 --yes", Case::kChangeObject,
       "tenants:texts " + kTried},
      {"dircodes import", "dircodes import --columns", Case::kRows, column},
      {"dircodes import", "dircodes import FOLDER/codes.csv --unit 2", Case::kObject, imported},
      {"dircodes export", "dircodes export --unit 2 --to FOLDER/unit.txt", Case::kObject,
       "unit:number file:text dry_run:bool directory_codes:number"},
      {"dircodes sync", "dircodes sync --unit 2 --from FOLDER/unit.txt --dry-run",
       Case::kChangeObject,
       "unchanged:number not_deleted:number plan:rows tenants_released:number? "
       "steps_withdrawn:number?"},
      {"dircodes sync", "dircodes sync --unit 2 --from FOLDER/unit.txt", Case::kChangeObject,
       "unchanged:number not_deleted:number plan:rows tenants_released:number? "
       "steps_withdrawn:number?"},
      {"tenants list", "tenants list --unit 2", Case::kRows, tenant},
      {"tenants list", "tenants list --unit 2 --columns card,first_name,tenant_id", Case::kRows,
       "card:texts first_name:text? tenant_id:number"},
      {"tenants show", "tenants show rid:62 --unit 2", Case::kObject,
       "rid:number tenant_id:number last_name:text? first_name:text? initial:text? "
       "name_at_unit:text? group:number active:bool start:date? end:date? schedule1:text "
       "schedule2:text schedule3:text schedule4:text card1:text? card2:text? code:number? "
       "resident:bool"},
      {"tenants add", "tenants add --last Byrne --to 2027-06-30 --unit 2", Case::kChangeObject, ""},
      {"tenants add", "tenants add --last Cole --unit 2 -n", Case::kChangeObject, ""},
      {"tenants export", "tenants export --unit 2 --to FOLDER/tenants.csv", Case::kObject,
       "unit:number lines:number file:text dry_run:bool"},
      {"tenants import", "tenants import --columns", Case::kRows, column},
      {"tenants import", "tenants import FOLDER/tenants.csv --unit 2 --skip-existing",
       Case::kObject, imported + " unchanged:number"},
      {"tenants edit", "tenants edit Byrne --first Ann --unit 2", Case::kChangeObject,
       "fields:rows freed_cards:texts"},
      {"tenants edit", "tenants edit Byrne --first Ann --unit 2", Case::kChangeObject,
       "fields:rows freed_cards:texts"},
      {"tenants end", "tenants end Byrne --on 2026-12-31 --unit 2", Case::kChangeObject,
       "fields:rows freed_cards:texts"},
      {"tenants delete", "tenants delete Byrne --unit 2 --yes", Case::kChangeObject,
       "fields:rows freed_cards:texts"},
      {"find", "find 1004", Case::kRows, "unit:number kind:text rid:number name:text with:text?"},
      {"access list", "access list --unit 2", Case::kRows,
       "rid:number tenant:text active:bool start:date? end:date? cards:texts code:number? "
       "door:text schedule:text access:bool"},
      {"attention list", "attention list --unit 2", Case::kRows,
       "reason:text rid:number name:text end:date? days:number? cards:texts code:number?"},
      {"attention end", "attention end --unit 2", Case::kChangeObject,
       "fields:rows freed_cards:texts"},
      {"tenants end", "tenants end rid:70 --on 2026-02-05 --unit 2", Case::kChangeObject,
       "fields:rows freed_cards:texts"},
      {"attention end", "attention end --unit 2 --yes", Case::kChangeObject,
       "fields:rows freed_cards:texts"},
      {"tenants end", "tenants end rid:71 --on 2026-01-05 --unit 2", Case::kChangeObject,
       "fields:rows freed_cards:texts"},
      {"attention deactivate", "attention deactivate --unit 2 --yes", Case::kChangeObject,
       "fields:rows freed_cards:texts"},
      {"attention delete", "attention delete --unit 2 --where 'rid = 1'", Case::kChangeObject,
       kTried},
      {"attention delete", "attention delete --unit 2 --where 'name = Transmitter-320' -n",
       Case::kChangeObject, kTried},
      {"attention delete", "attention delete --unit 2 --where 'name = Transmitter-320' --yes",
       Case::kChangeObject, kTried},
      {"overview", "overview", Case::kRows,
       "unit:number name:text tenants:number codes_in_use:number capacity:number? "
       "waiting_steps:number waiting_since:moment? expired:number expiring:number "
       "free_cards:number"},
      {"report dircodes", "report dircodes --unit 2", Case::kRows,
       "Directory_Code:number Phone_No.:text? Phone_No._Extension:text? Phone_No._Delay:number? "
       "Display_Name:text? Directory_Status:text Directory_Start_Date:date? "
       "Directory_End_Date:date? Do_Not_Disturb:bool DND_Schedule:text Call_Forwarding:bool "
       "CF_Schedule:text CF_Phone_No.:text? CF_Extension:text? CF_Time_Delay:number? "
       "Show_Display_Name:bool Show_Directory_Code:bool"},
      {"report credentials", "report credentials --unit 2", Case::kRows,
       "Credential_Type:text Card_Number:number Facility_Code:number? ID_Code:number? "
       "Sequence_Number:number? Button_Number:number? Assigned_To:text RID:number "
       "Tenant_RID:number"},
      {"report credentials", "report credentials --unit 2 --delete rid:600 -n", Case::kObject,
       "unit:number stored:bool dry_run:bool rows:number " + kTried},
      {"report credentials", "report credentials --unit 2 --delete rid:600", Case::kObject,
       "unit:number stored:bool dry_run:bool rows:number " + kTried},
      {"units", "units", Case::kRows,
       "unit:number name:text type:text? credentials:number entry_codes:number "
       "directory_codes:number capacity:number? pending_steps:number"},
      {"units list", "units list --settings", Case::kRows,
       "unit:number name:text type:text? capacity:number? code_digits:number? "
       "entry_digits:number? default_end:text ignores_facility:bool card_facility:number? "
       "transmitter_facility:number?"},
      {"units add", "units add Annex --type 'Entry Panel 500'", Case::kChangeObject, ""},
      {"units edit", "units edit 4 --code-digits 5", Case::kChangeObject, ""},
      {"units delete", "units delete 4 --yes", Case::kChangeObject,
       "tenants:number credentials:number directory_codes:number pending_steps:number"},
      {"doors", "doors", Case::kRows, "unit:number door:number name:text caption:text?"},
      {"doors list", "doors list", Case::kRows, "unit:number door:number name:text caption:text?"},
      {"doors edit", "doors edit 4 --name Yard --unit 2", Case::kChangeObject, "before:text"},
      {"schedules", "schedules", Case::kRows,
       "unit:number schedule:number name:text tenants:number directory_codes:number"},
      {"schedules list", "schedules list", Case::kRows,
       "unit:number schedule:number name:text tenants:number directory_codes:number"},
      {"schedules add", "schedules add Cleaners --unit 2", Case::kChangeObject, ""},
      {"schedules edit", "schedules edit Cleaners --name Gardeners --unit 2", Case::kChangeObject,
       "before:text"},
      {"schedules delete", "schedules delete Gardeners --unit 2", Case::kChangeObject, ""},
      {"steps", "steps", Case::kRows,
       "step:number unit:number kind:text row:number name:text? code:number? queued:moment "
       "sent:bool"},
      {"steps list", "steps list", Case::kRows,
       "step:number unit:number queued:moment kind:text row:number subject:text"},
      {"steps export", "steps export FOLDER/steps.txt --unit 2", Case::kObject,
       "unit:number file:text dry_run:bool steps:number last_step:number?"},
      {"steps done", "steps done --unit 2", Case::kChangeObject, "directory_codes:number"},
      {"history list", "history list", Case::kRows,
       "entry:number time:moment who:text unit:number? what:text rows:text"},
      {"history show", "history show 1", Case::kRows,
       "table:text rid:number last_rid:number? change:text field:text before:any after:any"},
      {"history check", "history check", Case::kRows, "unit:number entry:number head:text"},
      {"sql", "sql 'SELECT Top 2 RID, LastName FROM Tenants'", Case::kRows,
       "RID:number LastName:text"},
      {"sql", "sql --write 'UPDATE DOORS SET DOORNAME=DOORNAME WHERE UNITKEY=1'", Case::kObject,
       sql},
      {"sql", "sql 'UPDATE DOORS SET DOORNAME=DOORNAME WHERE UNITKEY=1' -n", Case::kObject, sql},
      {"check", "check", Case::kRows, "unit:number? fault:text advice:text"},
      {"backup", "backup FOLDER/copy.db -n", Case::kObject,
       "file:text bytes:number dry_run:bool heads:texts"},
      {"backup", "backup FOLDER/copy.db", Case::kObject,
       "file:text bytes:number dry_run:bool heads:texts"},
      {"export", "export --desktop-csv FOLDER/csv -n", Case::kObject,
       "folder:text dry_run:bool tables:rows"},
      {"export", "export --desktop-csv FOLDER/csv", Case::kObject,
       "folder:text dry_run:bool tables:rows"},
      {"copy", "copy --to FOLDER/whole.db -n", Case::kChangeObject,
       "from:text whole:bool tables:rows lost_links:rows"},
      {"copy", "copy --to FOLDER/whole.db", Case::kChangeObject,
       "from:text whole:bool tables:rows lost_links:rows"},
      {"restore", "restore FOLDER/copy.db -n", Case::kChangeObject, "from:text kept:text?"},
      {"restore", "restore FOLDER/copy.db", Case::kChangeObject, "from:text kept:text?"},
      {"init", "init --demo --force -n", Case::kChangeObject, "demo:bool"},
      {"init", "init --demo --force", Case::kChangeObject, "demo:bool"},
  };
}

/// Commands that print no rows and change nothing, or what is no JSON by its nature.
const std::set<std::string> kWithoutJson{"tour", "completion", "manual"};
class JsonContract : public RunFixture {
 protected:
  void SetUp() override { InitDemo(); }

  [[nodiscard]] std::vector<std::string> WordsOf(const std::string& line) const {
    std::vector<std::string> words;
    const std::regex word("'([^']*)'|(\\S+)");
    for (auto at = std::sregex_iterator(line.begin(), line.end(), word);
         at != std::sregex_iterator(); ++at) {
      std::string one = (*at)[1].matched ? (*at)[1].str() : (*at)[2].str();
      const std::string folder = "FOLDER/";
      words.push_back(one.starts_with(folder) ? File(one.substr(folder.size())) : one);
    }
    words.emplace_back("--json");
    return words;
  }
};

/// The object with the blanks of its keys written as _.
json WithoutBlanks(const json& object) {
  json bare = json::object();
  for (const auto& [key, value] : object.items()) {
    std::string name = key;
    std::replace(name.begin(), name.end(), ' ', '_');
    bare[name] = value;
  }
  return bare;
}

TEST_F(JsonContract, EveryCommandKeepsItsShape) {
  std::ofstream(File("credentials.csv")) << "Credential Type,Card Number\ncard26,9031\n";
  std::ofstream(File("codes.csv")) << "Directory Code,Phone No.\n260,555-0160\n";
  for (const Case& one : Cases()) {
    SCOPED_TRACE(one.words);
    const Outcome outcome = Run(WordsOf(one.words));
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const json printed = json::parse(outcome.out);
    if (one.form == Case::kRows) {
      ASSERT_TRUE(printed.is_array());
      EXPECT_TRUE(!printed.empty() || std::string(one.command) == "check");
      for (const json& row : printed) {
        ASSERT_EQ(Differences(WithoutBlanks(row), one.shape), "") << row;
      }
      continue;
    }
    ASSERT_TRUE(printed.is_object());
    const bool isChange = one.form == Case::kChangeObject;
    EXPECT_EQ(Differences(printed, (isChange ? kChange : "") + one.shape), "") << printed;
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 1);
    for (const char* touched : {"added", "changed", "deleted"}) {
      for (const json& thing : isChange ? printed[touched] : json::array()) {
        EXPECT_EQ(Differences(thing, kThing), "") << printed;
      }
    }
  }
}

TEST_F(JsonContract, HasACaseForEveryCommand) {
  std::set<std::string> covered = kWithoutJson;
  for (const Case& one : Cases()) {
    covered.insert(one.command);
  }
  // The script for the shell has a line for every command, with the words that may follow.
  const std::string script = Run({"completion", "bash"}).out;
  const std::regex line(R"(\n    '([a-z ]+)'\) next='([^']*)')");
  std::vector<std::string> missing;
  std::size_t commands = 0;
  for (auto at = std::sregex_iterator(script.begin(), script.end(), line);
       at != std::sregex_iterator(); ++at) {
    const std::string command = (*at)[1];
    const std::string next = (*at)[2];
    const bool isGroup = !next.starts_with("-") && !covered.contains(command);
    ++commands;
    if (!isGroup && !covered.contains(command)) {
      missing.push_back(command);
    }
  }
  EXPECT_GT(commands, 40U);
  EXPECT_THAT(missing, IsEmpty());
}

TEST_F(JsonContract, AChangeTellsWhatItTouched) {
  const auto change = [this](const std::string& words) {
    return json::parse(Run(WordsOf(words)).out);
  };
  const json added =
      change("credentials add --unit 2 --type card26 --start 9001 --end 9003 --facility 7");
  EXPECT_EQ(added["unit"], 2);
  EXPECT_EQ(added["stored"], true);
  ASSERT_EQ(added["added"].size(), 3U);
  EXPECT_EQ(added["added"][0]["name"], "Standard 26-Bit Card-9001");
  const json listed = change("credentials list --unit 2 --where 'number between 9001 AND 9003'");
  for (std::size_t at = 0; at < 3; ++at) {
    EXPECT_EQ(added["added"][at]["id"], listed[at]["rid"]);
  }
  const json same = change("doors edit 4 --name 'Service Corridor Level Two' --unit 2");
  EXPECT_EQ(same["stored"], false);
  EXPECT_EQ(same["dry_run"], false);
  EXPECT_THAT(same["changed"], IsEmpty());
  const json trial = change("tenants edit rid:62 --last Berg --unit 2 -n");
  EXPECT_EQ(trial["stored"], false);
  EXPECT_EQ(trial["dry_run"], true);
  EXPECT_EQ(trial["changed"].size(), 1U);
  EXPECT_EQ(trial["changed"][0]["id"], 62);
  EXPECT_EQ(trial["fields"][0]["field"], "last_name");
  EXPECT_EQ(trial["fields"][0]["after"], "Berg");
  const json deleted = change("tenants delete rid:62 --unit 2 --yes");
  EXPECT_EQ(deleted["deleted"].size(), 1U);
  EXPECT_THAT(deleted["changed"], IsEmpty());
  const json undone = change("history undo 3");
  EXPECT_EQ(undone["added"].size(), 1U);
  EXPECT_EQ(undone["added"][0]["name"], "Tenants");
}

TEST_F(JsonContract, ADryRunTellsWhatItWouldTouch) {
  const auto change = [this](const std::string& words) {
    return json::parse(Run(WordsOf(words)).out);
  };
  const json tried =
      change("credentials add --unit 2 --type card26 --start 9001 --end 9002 --facility 7 -n");
  EXPECT_EQ(tried["stored"], false);
  EXPECT_EQ(tried["dry_run"], true);
  ASSERT_EQ(tried["added"].size(), 2U);
  EXPECT_TRUE(tried["added"][0]["id"].is_null()) << "its row gets another identity later";
  EXPECT_EQ(tried["added"][0]["name"], "Standard 26-Bit Card-9001");
  ASSERT_FALSE(tried["changes"].empty());
  EXPECT_EQ(tried["changes"][0]["table"], "CredentialBank");
  const json done =
      change("credentials add --unit 2 --type card26 --start 9001 --end 9002 --facility 7");
  EXPECT_TRUE(done["changes"].is_null());

  const json edited = change("credentials edit 9001 9002 --unit 2 --door 1 -n");
  EXPECT_EQ(edited["changed"].size(), 2U);
  EXPECT_EQ(edited["changes"][0]["change"], "changed");
  const json same = change("dircodes renumber 101 101 --unit 2 -n");
  EXPECT_THAT(same["changed"], IsEmpty());
  EXPECT_THAT(same["changes"], IsEmpty());

  const json statement = change("sql 'DELETE FROM DOORS WHERE UNITKEY=2 AND DOORID=4' -n");
  EXPECT_EQ(statement["stored"], false);
  EXPECT_EQ(statement["rows"], 1);
  EXPECT_EQ(statement["changes"][0]["change"], "deleted");
}

TEST_F(JsonContract, SeveralAreToldAsOneChange) {
  const auto change = [this](const std::string& words) {
    return json::parse(Run(WordsOf(words)).out);
  };
  (void)change("credentials add --unit 2 --type card26 --start 9001 --end 9003 --facility 7");
  const json doors = change("credentials edit 9001 9002 --unit 2 --door 1");
  EXPECT_EQ(doors["changed"].size(), 2U);
  EXPECT_TRUE(doors["tenant"].is_null());
  EXPECT_FALSE(doors["door"].is_null());
  const json again = change("credentials edit 9001 9002 --unit 2 --door 1");
  EXPECT_EQ(again["stored"], false);
  EXPECT_THAT(again["changed"], IsEmpty());
  const json mixed = change("credentials assign 9001 9003 62 --unit 2 --yes");
  EXPECT_EQ(mixed["changed"].size(), 2U);
  EXPECT_TRUE(mixed["door"].is_null()) << "their doors differ";
  EXPECT_EQ(mixed["replaced"].size(), 1U) << "the tenant had a card";
  const json deleted = change("credentials delete 9001 9002 9003 --unit 2 --yes");
  EXPECT_EQ(deleted["deleted"].size(), 3U);
  const json codes = change("dircodes delete 101 102 --unit 2 --yes");
  EXPECT_EQ(codes["deleted"].size(), 2U);
  EXPECT_FALSE(codes["tenants"].empty());
  for (const char* name : {"Evenings", "Mornings"}) {
    (void)change(std::string("schedules add --unit 2 ") + name);
  }
  const json schedules = change("schedules delete Evenings Mornings --unit 2");
  ASSERT_EQ(schedules["deleted"].size(), 2U);
  EXPECT_EQ(schedules["deleted"][1]["name"], "Mornings");
}

struct ErrorCase {
  const char* words;
  int status;
  const char* kind;
  const char* field;    ///< "" for none
  const char* message;  ///< its beginning
};

TEST_F(JsonContract, WhatGoesWrongIsOneObjectOnStandardError) {
  const std::vector<ErrorCase> cases{
      {"tenants list --where 'floor = 5'", 2, "usage", "--where", "--where 'floor = 5' begins"},
      {"tenants list --sort floor", 2, "usage", "--sort", "--sort: 'floor' is no field"},
      {"credentials delete 999999 --unit 2", 2, "usage", "credential", "unit 2 has no credential"},
      {"credentials list --nonsense", 2, "usage", "", "unknown option '--nonsense'"},
      {"credentials", 2, "usage", "", "A command is needed"},
      {"report dircodes --json --format csv", 2, "usage", "", "--json and --format csv exclude"},
      {"credentials add --unit 2 --type card30 --start 20 --facility 64", 1, "refused", "",
       "Please enter a Facility Code between 0 and 63."},
      {"tenants delete rid:62 --unit 2", 1, "refused", "", "nothing was changed"},
      {"units list --db FOLDER/none.db", 3, "failure", "", "there is no"},
  };
  for (const ErrorCase& one : cases) {
    SCOPED_TRACE(one.words);
    const Outcome outcome = Run(WordsOf(one.words));
    EXPECT_EQ(outcome.status, one.status);
    EXPECT_EQ(outcome.out, "");
    ASSERT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    const json error = json::parse(outcome.err)["error"];
    EXPECT_EQ(Differences(error,
                          "kind:text status:number message:text field:text? value:text? "
                          "messages:rows notes:texts"),
              "");
    EXPECT_EQ(error["kind"], one.kind);
    EXPECT_EQ(error["status"], one.status);
    EXPECT_EQ(error["field"].is_null() ? "" : error["field"].get<std::string>(), one.field);
    EXPECT_THAT(error["message"].get<std::string>(), testing::StartsWith(one.message));
  }
}

TEST_F(JsonContract, AMessageIsToldWithItsIconAndItsAnswer) {
  const json refused = json::parse(Run({"dircodes", "delete", "101", "--unit", "2", "--json"}).err);
  const json message = refused["error"]["messages"].back();
  EXPECT_EQ(Differences(message, "title:text icon:text text:text answer:text?"), "");
  EXPECT_EQ(message["answer"], "no");
  const Outcome done = Run({"dircodes", "delete", "101", "--unit", "2", "--yes", "--json"});
  EXPECT_EQ(done.status, 0) << done.err;
  EXPECT_EQ(json::parse(done.err)["told"]["messages"].back()["answer"], "yes");
}

TEST_F(JsonContract, WhatKeptSeveralBackIsAMessage) {
  const Outcome refused =
      Run({"dircodes", "edit", "101", "102", "--phone=", "--unit", "2", "--json"});
  EXPECT_EQ(refused.status, 1) << refused.out;
  const json error = json::parse(refused.err)["error"];
  EXPECT_EQ(error["message"], "Please enter a Phone No. to apply to the Directory Code.");
  ASSERT_EQ(error["messages"].size(), 1U) << error;
  EXPECT_NE(error["messages"][0]["title"], "");
  EXPECT_THAT(error["notes"].back().get<std::string>(),
              testing::HasSubstr("was not done, so nothing was changed."));
}

TEST_F(JsonContract, AskedAPersonAnswersAsWithoutIt) {
  const Outcome done =
      Run({"dircodes", "delete", "101", "--unit", "2", "--json"}, "y\n", /*terminal=*/true);
  EXPECT_EQ(done.status, 0) << done.err;
  EXPECT_THAT(done.err, testing::HasSubstr("Yes or No? [y/n] "));
  EXPECT_EQ(json::parse(done.out)["deleted"].size(), 1U);
}

TEST_F(JsonContract, NothingIsSaidOfWhatWentWell) {
  EXPECT_EQ(Run({"units", "--json"}).err, "");
}

}  // namespace
}  // namespace qorhost::test
