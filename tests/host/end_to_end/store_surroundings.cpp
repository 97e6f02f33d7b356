#include "tests/host/end_to_end/store_surroundings.h"

#include <utility>

#include "frame/date.h"
#include "tests/host/store/engine.h"

namespace qortest {

namespace {

using qorcred::Arguments;
using qorcred::InvokeKind;
using qorcred::ObjectRef;
using qorcred::Value;

// A unit of type "Panel" (capacity 500) with four doors, two tenants and one that is a resident.
constexpr std::string_view kUnitRows =
    "INSERT INTO Units (UnitKey, UnitName) VALUES (1, 'Court');"
    "INSERT INTO UNITTYPES (DESCRIPTION, TOTAL) VALUES ('Panel', 'NTAw');"
    "INSERT INTO UnitSettings (UnitKey, UNITTYPE, RECORDDEACTIVATION) VALUES (1, 'panel', 0);"
    "INSERT INTO TenantGroup (UnitKey, IsGroupZero) VALUES (1, 0), (1, -1);"
    "INSERT INTO DOORS (UNITKEY, DOORID, DOORNAME) VALUES (1, 1, 'Front Entrance Door'),"
    " (1, 2, 'Back'), (1, 3, 'Garage'), (1, 4, 'Side Gate Door Two');"
    "INSERT INTO Schedules (UnitKey, ScheduleID, ScheduleName, Modified) VALUES"
    " (1, 0, 'No Access', 0), (1, 1, 'Full Access', 0), (1, 7, 'night', 0), (1, 5, 'Day', 0),"
    " (1, 9, 'Gone', 3);"
    "INSERT INTO Tenants (UnitKey, LastName, FirstName, MiddleInitial, Resident) VALUES"
    " (1, 'Roe', 'Rita', NULL, 0), (1, 'Doe', 'Jane', 'M', 0), (1, 'Poe', 'Paul', 'X', 1);";

}  // namespace

// The store's connection behind the gate.
class StoreSurroundings::Connection final : public qorcred::Object {
 public:
  Connection(std::shared_ptr<qorhost::StoreConnection> store, FaultGate& gate)
      : store_(std::move(store)), gate_(gate) {}

  Value Invoke(std::string_view member, InvokeKind kind, Arguments arguments) override {
    gate_.Pass(member);
    return store_->Invoke(member, kind, arguments);
  }
  [[nodiscard]] const std::shared_ptr<qorhost::StoreConnection>& store() const { return store_; }

 private:
  std::shared_ptr<qorhost::StoreConnection> store_;
  FaultGate& gate_;
};

// The store's host behind the gate, its components as well: they are handed the store's own
// connection in the place of the gated one.
class StoreSurroundings::GatedHost final : public qorcred::Host {
 public:
  GatedHost(qorcred::Host& inner, FaultGate& gate) : inner_(inner), gate_(gate) {}

  ObjectRef CreateComponent(std::string_view id) override {
    gate_.Pass("CreateObject");
    return std::make_shared<Component>(inner_.CreateComponent(id), gate_);
  }
  qorcred::MessageButton ShowMessage(std::string_view text, qorcred::MessageStyle style,
                                     std::string_view title) override {
    gate_.Pass("MsgBox");
    return inner_.ShowMessage(text, style, title);
  }
  qorcred::Date Now() override {
    gate_.Pass("Now");
    return inner_.Now();
  }
  void LetEventsRun() override { inner_.LetEventsRun(); }
  void ReportFailure(std::string_view operation,
                     const qorcred::RuntimeError& failure) noexcept override {
    inner_.ReportFailure(operation, failure);
  }

 private:
  class Component final : public qorcred::Object {
   public:
    Component(ObjectRef inner, FaultGate& gate) : inner_(std::move(inner)), gate_(gate) {}

    Value Invoke(std::string_view member, InvokeKind kind, Arguments arguments) override {
      gate_.Pass(member);
      for (Value& argument : arguments) {
        const ObjectRef* object = argument.As<ObjectRef>();
        const auto* gated =
            object == nullptr ? nullptr : dynamic_cast<const Connection*>(object->get());
        if (gated != nullptr) argument = ObjectRef(gated->store());
      }
      return inner_->Invoke(member, kind, arguments);
    }

   private:
    ObjectRef inner_;
    FaultGate& gate_;
  };

  qorcred::Host& inner_;
  FaultGate& gate_;
};

qorcred::Date StoreSurroundings::Now() {
  return qorcred::FromCivil({2026, 1, 31, 14, 5, 9});
}

StoreSurroundings::StoreSurroundings() {
  store_ = std::make_shared<qorhost::StoreConnection>(qorhost::test::FreshStore(), Now);
  Run(std::string(kUnitRows));
  gatedConnection_ = std::make_shared<Connection>(store_, gate_);

  qorhost::StoreHost::Services services;
  services.clock = Now;
  services.messageBox = [this](std::string_view text, qorcred::MessageStyle style,
                               std::string_view) {
    messages.emplace_back(text);
    return style == qorcred::MessageStyle::kQuestion ? answer : qorcred::MessageButton::kOk;
  };
  services.failureLog = [this](std::string_view operation, const qorcred::RuntimeError& failure) {
    trapped.push_back(std::string(operation) + ": " + failure.description());
  };
  storeHost_ = std::make_unique<qorhost::StoreHost>(std::move(services));
  host_ = std::make_unique<GatedHost>(*storeHost_, gate_);
}

StoreSurroundings::~StoreSurroundings() = default;

std::string StoreSurroundings::Rows(const std::string& sql) {
  std::string rows;
  for (const std::string& row : qorhost::test::RowsOfRaw(store_->store(), sql)) rows += row + ";";
  return rows;
}

}  // namespace qortest
