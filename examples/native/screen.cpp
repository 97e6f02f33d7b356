// A whole screen: it is filled, a credential is selected and loaded, gets a door and a tenant, and
// is deleted; then the screen is closed. Every statement and message is printed.
#include <credentials/cls_credential.h>
#include <frame/convert.h>
#include <frame/date.h>
#include <frame/result_table.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "objects.h"

/// A list as a window has it. Putting ListIndex runs what a click would run.
class List final : public qorcred::Object {
 public:
  std::function<void()> onSelect;

  Value Invoke(std::string_view member, InvokeKind kind, Arguments arguments) override {
    const bool put = kind == InvokeKind::kPut;
    if (SameMember(member, "Clear")) {
      items_.clear();
      selected_ = -1;
      return {};
    }
    if (SameMember(member, "AddItem")) {
      const bool hasPlace = arguments.size() > 1;
      newIndex_ = hasPlace ? qorcred::ToLong(arguments[1]) : Count();
      if (newIndex_ < 0 || newIndex_ > Count()) Raise(qorcred::ErrorNumber::kIndexOutOfRange);
      items_.insert(items_.begin() + newIndex_, {qorcred::ToText(arguments[0]), 0});
      return {};
    }
    if (SameMember(member, "RemoveItem")) {
      items_.erase(items_.begin() + (&ItemAt(arguments[0]) - items_.data()));
      selected_ = -1;
      return {};
    }
    if (SameMember(member, "NewIndex")) return newIndex_;
    if (SameMember(member, "ListCount")) return Count();
    if (SameMember(member, "List")) return Value(ItemAt(arguments[0]).text);
    if (SameMember(member, "Text")) {
      return Value(selected_ < 0 ? std::string() : ItemAt(selected_).text);
    }
    if (SameMember(member, "ListIndex")) {
      if (put) Select(qorcred::ToLong(arguments[0]));
      return selected_;
    }
    if (SameMember(member, "ItemData")) {
      Item& item = ItemAt(arguments[0]);
      if (put) item.data = qorcred::ToLong(arguments[1]);
      return item.data;
    }
    if (SameMember(member, "Visible") || SameMember(member, "Enabled")) return {};
    Raise(qorcred::ErrorNumber::kUnknownMember);
  }

 private:
  struct Item {
    std::string text;
    std::int32_t data;
  };

  std::int32_t Count() const { return static_cast<std::int32_t>(items_.size()); }
  Item& ItemAt(const Value& index) {
    const std::int32_t place = qorcred::ToLong(index);
    if (place < 0 || place >= Count()) Raise(qorcred::ErrorNumber::kIndexOutOfRange);
    return items_[static_cast<std::size_t>(place)];
  }
  void Select(std::int32_t index) {
    if (index != -1) ItemAt(index);
    selected_ = index;
    if (onSelect) onSelect();
  }

  std::vector<Item> items_;
  std::int32_t selected_ = -1;
  std::int32_t newIndex_ = -1;
};

using Row = std::vector<Value>;

/// The answer to a query: a table of the rows that were found, or the one that holds "".
ObjectRef TableOf(const std::vector<Row>& rows) {
  if (rows.empty()) return std::make_shared<qorcred::ResultTable>();
  const auto table = std::make_shared<qorcred::ResultTable>(rows.size(), rows[0].size());
  std::int32_t at = 0;
  for (const Row& row : rows) {
    std::int32_t column = 0;
    for (const Value& cell : row) table->At(at, column++) = cell;
    ++at;
  }
  return table;
}

/// What is stored: the credentials by their rows, and which of them the one tenant holds.
struct Store {
  struct Credential {
    std::int32_t number;
    Value door;
  };
  std::map<std::int32_t, Credential> credentials{{499, {17, qorcred::Null{}}},
                                                 {500, {18, qorcred::Null{}}}};
  std::int32_t held = 0;
};

/// The number behind `words` in a statement; 0 without one.
std::int32_t NumberBehind(const std::string& sql, const std::string& words) {
  const std::size_t found = sql.find(words);
  return found == std::string::npos ? 0 : std::atoi(sql.c_str() + found + words.size());
}

/// Answers each statement by how it begins; a host with a database runs them instead.
class Manager final : public qorcred::Object {
 public:
  explicit Manager(Store& store) : store_(store) {}

  Value Invoke(std::string_view member, InvokeKind, Arguments arguments) override {
    if (SameMember(member, "pbGetRowIDStringConstant")) return "_ROWID_";
    if (SameMember(member, "pbGetLastModifiedDateStringConstant")) return "_LMDATE_";
    if (SameMember(member, "ExecuteDelete")) {
      std::cout << "delete row " << qorcred::ToText(arguments[2]) << " of "
                << qorcred::ToText(arguments[1]) << '\n';
      Succeed(arguments, 3);
      return static_cast<std::int32_t>(store_.credentials.erase(qorcred::ToLong(arguments[2])));
    }
    const std::string sql = qorcred::ToText(arguments[1]);
    std::cout << sql << '\n';
    if (SameMember(member, "ExecuteSelect")) {
      Succeed(arguments, 2);
      return TableOf(Found(sql));
    }
    if (SameMember(member, "ExecuteScalar")) {
      Succeed(arguments, 2);
      const bool isHeld = store_.held == NumberBehind(sql, "CredentialID1 = ");
      return isHeld ? Value(31) : Value(qorcred::Null{});
    }
    if (SameMember(member, "ExecuteUpdate")) {
      Succeed(arguments, 3);
      if (const std::int32_t rid = NumberBehind(sql, " RID="); rid != 0) {
        store_.credentials.at(rid).door = NumberBehind(sql, "DOORCODE = ");
      } else {
        store_.held = NumberBehind(sql, "SET CREDENTIALID1 = ");  // 0 for Null
      }
      return 1;
    }
    Raise(qorcred::ErrorNumber::kUnknownMember);
  }

 private:
  // Flag and text of the last error, which every statement has to write.
  static void Succeed(Arguments arguments, std::size_t flag) {
    arguments[flag] = false;
    arguments[flag + 1] = Value("");
  }

  std::vector<Row> Found(const std::string& sql) const {
    const Row tenant{31, Value("Abel"), Value("Karin"), Value("")};
    if (sql.starts_with("SELECT TOTAL")) return {{Value("NTAw")}};
    if (sql.starts_with("Select ScheduleID")) return {{5, Value("Day Shift")}};
    if (sql.starts_with("Select UNITKEY, DOORNAME")) {
      return {{3, Value("Front")}, {3, Value("Garage")}, {3, Value("Roof")}, {3, Value("Cellar")}};
    }
    if (sql.starts_with("SELECT TenantID,")) return {tenant};
    std::vector<Row> rows;
    if (sql.starts_with("SELECT TENANTID")) {
      if (store_.held == NumberBehind(sql, "CREDENTIALID1=")) rows.push_back(tenant);
      return rows;
    }
    if (!sql.starts_with("SELECT UnitKey,RID")) return rows;
    const std::int32_t asked = NumberBehind(sql, " RID=");
    for (const auto& [rid, credential] : store_.credentials) {
      if (asked != 0 && asked != rid) continue;
      rows.push_back({3, rid, 0, credential.number, 7, 0, 0, 1,
                      qorcred::FromCivil({2026, 1, 31, 9, 30, 0}), credential.door});
    }
    return rows;
  }

  Store& store_;
};

/// The tenants: what they are told to do is printed.
class Tenants final : public qorcred::Object {
 public:
  Value Invoke(std::string_view member, InvokeKind, Arguments arguments) override {
    if (!SameMember(member, "pvCreateProgramSteps")) Raise(qorcred::ErrorNumber::kUnknownMember);
    std::cout << "steps of tenant " << qorcred::ToText(arguments[2]) << '\n';
    return {};
  }
};

class Application final : public qorcred::Object {
 public:
  Value Invoke(std::string_view member, InvokeKind, Arguments arguments) override {
    if (!SameMember(member, "pbGetUnitStatus")) Raise(qorcred::ErrorNumber::kUnknownMember);
    arguments[5] = Value("120");
    arguments[6] = Value("30");
    arguments[7] = Value("6");
    return {};
  }
};

class ScreenHost final : public qorcred::Host {
 public:
  ObjectRef CreateComponent(std::string_view id) override {
    if (SameMember(id, "qorDBI.clsDBManager")) return std::make_shared<Manager>(store_);
    if (SameMember(id, "qorTent.clsTenant")) return std::make_shared<Tenants>();
    if (SameMember(id, "qorAppln.clsApplication")) return std::make_shared<Application>();
    if (SameMember(id, "qorSPS.clsSendProgSteps")) {
      return std::make_shared<Properties>(Properties::Pairs{});
    }
    Raise(qorcred::ErrorNumber::kCannotCreateComponent);
  }
  qorcred::MessageButton ShowMessage(std::string_view text, qorcred::MessageStyle style,
                                     std::string_view title) override {
    std::cout << title << ": " << text << '\n';
    return style == qorcred::MessageStyle::kQuestion ? qorcred::MessageButton::kYes
                                                     : qorcred::MessageButton::kOk;
  }
  qorcred::Date Now() override { return qorcred::FromCivil({2026, 1, 31, 14, 5, 9}); }
  void LetEventsRun() override {}
  void ReportFailure(std::string_view operation,
                     const qorcred::RuntimeError& failure) noexcept override {
    std::cout << "(" << operation << ": " << failure.what() << ")\n";
  }

 private:
  Store store_;
};

ObjectRef Label() {
  return std::make_shared<Properties>(Properties::Pairs{{"Caption", Value("")},
                                                        {"Enabled", Value(true)},
                                                        {"Visible", Value(true)},
                                                        {"BackColor", Value(0)}});
}

/// The screen: its variables, and a control for each name.
ObjectRef MakeScreen() {
  Properties::Pairs members{
      {"Name", Value("frmCredential")},        {"gstrTag", Value("")},
      {"gstrLastModifiedDate", Value("")},     {"glngrid", Value(0)},
      {"gblnModifiedFromClass", Value(false)}, {"gblnDisplayFacilityCode", Value(true)}};
  for (const char* name : {"cboCredentials", "cboCredentialType", "cboAssignedTo", "cboActivate",
                           "cboSchedules1", "cboSchedules2", "cboSchedules3", "cboSchedules4"}) {
    members.emplace_back(name, Value(ObjectRef(std::make_shared<List>())));
  }
  for (const char* name :
       {"txtPINStart", "txtPINEND", "txtFacilityCode", "txtIDCode", "txtSequenceCode"}) {
    members.emplace_back(name, Value(Box("")));
  }
  for (const char* name : {"optButton4", "optButtonDefault"}) {
    members.emplace_back(name, Value(Option(false)));
  }
  for (const char* name : {"lblFacilityCode", "lblIDCode", "lblSequencecode", "lblActivate",
                           "lblDoor1", "lblDoor2", "lblDoor3", "lblDoor4"}) {
    members.emplace_back(name, Value(Label()));
  }
  return std::make_shared<Properties>(std::move(members));
}

ObjectRef Control(const ObjectRef& screen, const char* name) {
  return qorcred::RequireObject(qorcred::Get(*screen, name));
}

void Show(const char* title, const ObjectRef& list) {
  std::cout << title << ':';
  const std::int32_t count = qorcred::ToLong(qorcred::Get(*list, "ListCount"));
  for (std::int32_t at = 0; at < count; ++at) {
    std::cout << " [" << qorcred::ToText(qorcred::Get(*list, "List", at)) << ']';
  }
  std::cout << '\n';
}

int main() {
  ScreenHost host;
  const ObjectRef screen = MakeScreen();
  const ObjectRef connection = std::make_shared<Properties>(Properties::Pairs{});
  const std::int32_t unit = 3;
  qorcred::clsCredential controller(host);
  controller.set_gmobjCredentialScreen(screen);

  std::cout << "--- opening\n";
  const ObjectRef doors = Control(screen, "cboActivate");
  qorcred::Call(*doors, "AddItem", "<None>");
  qorcred::Call(*doors, "AddItem", "Front");
  controller.pbRetrieveSchedules(connection, unit);
  controller.pbRetrieveTenants(connection, unit);
  controller.pbRetrieveSettingsFromUnit(connection, unit);
  controller.pbRetrieveDoorDetails(connection, unit);
  controller.pbRetrieveCredentials(connection, unit);
  const ObjectRef credentials = Control(screen, "cboCredentials");
  Show("credentials", credentials);
  std::cout << "second door: "
            << qorcred::ToText(qorcred::Get(*Control(screen, "lblDoor2"), "Caption")) << '\n';

  // A click loads the row; so does the controller's own selection, unless it says that it is
  // filling.
  const auto selected = [&] {
    return qorcred::ToLong(
        qorcred::Get(*credentials, "ItemData", qorcred::Get(*credentials, "ListIndex")));
  };
  static_cast<List&>(*credentials).onSelect = [&] {
    if (qorcred::ToBoolean(qorcred::Get(*screen, "gblnModifiedFromClass"))) return;
    // Entry 0 is "<Add New>", which has no row to load.
    if (qorcred::ToLong(qorcred::Get(*credentials, "ListIndex")) < 1) return;
    controller.pbRetrieveCredentials(connection, unit, selected());
  };

  std::cout << "--- the second credential is selected\n";
  qorcred::Put(*credentials, "ListIndex", 2);
  std::cout << "door " << qorcred::ToLong(qorcred::Get(*doors, "ListIndex")) << ", changed "
            << qorcred::ToText(qorcred::Get(*screen, "gstrLastModifiedDate")) << '\n';

  std::cout << "--- it gets a door and a tenant\n";
  qorcred::Put(*doors, "ListIndex", 1);
  qorcred::Put(*Control(screen, "cboAssignedTo"), "ListIndex", 1);
  const bool stored = controller.pbSave(connection, unit, false, true);
  std::cout << (stored ? "stored\n" : "not stored\n");
  qorcred::Put(*credentials, "ListIndex", 2);  // its last change is newer

  std::cout << "--- and is deleted\n";
  if (controller.pbDelete(connection, unit, selected())) {
    controller.pbRetrieveCredentials(connection, unit);
  }
  Show("credentials", credentials);

  std::cout << "--- closing\n";
  controller.set_gmobjCredentialScreen(nullptr);
}
