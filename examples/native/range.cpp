// A host with a screen, a connection and components of its own: the operator enters a range that is
// refused, then one that is saved. Every statement and message is printed.
#include <credentials/cls_credential.h>
#include <frame/convert.h>
#include <frame/date.h>
#include <frame/result_table.h>

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "objects.h"

/// A list of items, each with a number.
class List final : public qorcred::Object {
 public:
  Value Invoke(std::string_view member, InvokeKind kind, Arguments arguments) override {
    const bool put = kind == InvokeKind::kPut;
    if (SameMember(member, "AddItem")) {
      items_.push_back({qorcred::ToText(arguments[0]), 0});
      return {};
    }
    if (SameMember(member, "NewIndex")) return Count() - 1;
    if (SameMember(member, "ListCount")) return Count();
    if (SameMember(member, "ListIndex")) {
      if (put) selected_ = qorcred::ToLong(arguments[0]);
      return selected_;
    }
    if (SameMember(member, "ItemData")) {
      const std::int32_t place = qorcred::ToLong(arguments[0]);
      if (place < 0 || place >= Count()) Raise(qorcred::ErrorNumber::kIndexOutOfRange);
      Item& item = items_[static_cast<std::size_t>(place)];
      if (put) item.data = qorcred::ToLong(arguments[1]);
      return item.data;
    }
    Raise(qorcred::ErrorNumber::kUnknownMember);
  }

 private:
  struct Item {
    std::string text;
    std::int32_t data;
  };

  std::int32_t Count() const { return static_cast<std::int32_t>(items_.size()); }

  std::vector<Item> items_;
  std::int32_t selected_ = -1;
};

class PrintedConnection final : public qorcred::Object {
 public:
  Value Invoke(std::string_view member, InvokeKind, Arguments) override {
    std::cout << member << '\n';
    return {};
  }
};

class Manager final : public qorcred::Object {
 public:
  Value Invoke(std::string_view member, InvokeKind, Arguments arguments) override {
    if (SameMember(member, "pbGetRowIDStringConstant")) return "_ROWID_";
    if (SameMember(member, "pbGetLastModifiedDateStringConstant")) return "_LMDATE_";
    if (SameMember(member, "ExecuteSelect")) {
      const std::string sql = Printed(arguments[1]);
      arguments[2] = false;
      arguments[3] = Value("");
      const auto table = std::make_shared<qorcred::ResultTable>();
      if (sql.starts_with("SELECT TOTAL")) table->At(0, 0) = Value("NTAw");
      return ObjectRef(table);
    }
    if (SameMember(member, "ExecuteInsert")) {
      Printed(arguments[1]);
      arguments[4] = false;
      arguments[5] = Value("");
      return ++lastRid_;
    }
    Raise(qorcred::ErrorNumber::kUnknownMember);
  }

 private:
  static std::string Printed(const Value& statement) {
    std::string sql = qorcred::ToText(statement);
    std::cout << sql << '\n';
    return sql;
  }

  std::int32_t lastRid_ = 500;
};

class Application final : public qorcred::Object {
 public:
  Value Invoke(std::string_view member, InvokeKind, Arguments arguments) override {
    if (!SameMember(member, "pbGetUnitStatus")) Raise(qorcred::ErrorNumber::kUnknownMember);
    arguments[5] = Value("120");  // credentials
    arguments[6] = Value("30");   // entry codes
    arguments[7] = Value("6");    // directory codes
    return {};
  }
};

class RangeHost final : public qorcred::Host {
 public:
  ObjectRef CreateComponent(std::string_view id) override {
    if (SameMember(id, "qorDBI.clsDBManager")) return std::make_shared<Manager>();
    if (SameMember(id, "qorAppln.clsApplication")) return std::make_shared<Application>();
    if (SameMember(id, "qorSPS.clsSendProgSteps") || SameMember(id, "qorTent.clsTenant")) {
      return std::make_shared<Properties>(Properties::Pairs{});
    }
    Raise(qorcred::ErrorNumber::kCannotCreateComponent);
  }
  qorcred::MessageButton ShowMessage(std::string_view text, qorcred::MessageStyle style,
                                     std::string_view title) override {
    std::cout << title << ": " << text << '\n';
    return style == qorcred::MessageStyle::kQuestion ? qorcred::MessageButton::kNo
                                                     : qorcred::MessageButton::kOk;
  }
  qorcred::Date Now() override { return qorcred::FromCivil({2026, 1, 31, 14, 5, 9}); }
  void LetEventsRun() override {}
  void ReportFailure(std::string_view operation,
                     const qorcred::RuntimeError& failure) noexcept override {
    std::cout << "(" << operation << ": " << failure.what() << ")\n";
  }
};

int main() {
  RangeHost host;
  const ObjectRef screen = std::make_shared<Properties>(Properties::Pairs{
      {"Name", Value("frmCredential")},
      {"gstrTag", Value("Range")},
      {"cboCredentialType", Value(ObjectRef(std::make_shared<List>()))},
      {"txtPINStart", Value(Box("20"))},
      {"txtPINEND", Value(Box("10"))},
      {"txtFacilityCode", Value(Box("7"))},
      {"txtIDCode", Value(Box(""))},
      {"txtSequenceCode", Value(Box(""))},
      {"optButton4", Value(Option(false))},
  });
  const ObjectRef connection = std::make_shared<PrintedConnection>();
  const std::int32_t unit = 3;

  qorcred::clsCredential controller(host);
  controller.set_gmobjCredentialScreen(screen);
  controller.pbRetrieveSettingsFromUnit(connection, unit);
  const auto save = [&] {
    std::int32_t rid = 0;
    const bool saved = controller.pbSave(connection, unit, false, false, &rid);
    std::cout << (saved ? "saved" : "not saved") << ", last RID " << rid << '\n';
  };
  save();
  qorcred::Put(*qorcred::RequireObject(qorcred::Get(*screen, "txtPINEND")), "Text", "22");
  save();
  controller.set_gmobjCredentialScreen(nullptr);
}
