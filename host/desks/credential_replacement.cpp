#include "host/desks/credential_replacement.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "credentials/credential_type.h"
#include "frame/convert.h"
#include "host/desks/credential_choice.h"
#include "host/desks/credential_desk.h"
#include "host/desks/credential_entry.h"
#include "host/desks/credential_fields.h"
#include "host/desks/credential_slots.h"
#include "host/desks/credential_types.h"
#include "host/desks/desk_error.h"
#include "host/desks/input_fault.h"
#include "host/desks/message_rules.h"
#include "host/desks/own_work.h"
#include "host/desks/row_names.h"
#include "host/desks/tenant_name.h"
#include "host/desks/unit_settings.h"
#include "host/desks/whole_number.h"
#include "host/desks/words.h"
#include "host/store/step_queue.h"

namespace qorhost {

namespace {

/// What is stored of a credential, but its number.
struct Kind {
  std::int32_t type = 0;
  std::int32_t facility = 0;
  std::int32_t idCode = 0;
  std::int32_t sequence = 0;
  std::int32_t button = 0;

  [[nodiscard]] bool isTransmitter() const { return type == qorcred::kTransmitter; }
};

struct HoldingTenant {
  std::int32_t rid = 0;
  std::string name;
  bool inFirst = false;
};

/// One replacement inside a unit of work that has taken the right to write.
class Replacing {
 public:
  Replacing(DeskSession& session, std::int32_t unitKey, const CredentialExchange& replacement)
      : session_(session),
        unitKey_(unitKey),
        replacement_(replacement),
        desk_(session, unitKey, DeskScreen::kCredentials) {}

  ReplacedCredential Run() {
    replaced_.lost = Named(replacement_.lost);
    const Kind kind = KindOf(replaced_.lost.rid);
    FindSuccessor(kind);
    const std::optional<HoldingTenant> holder = HolderOf(replaced_.lost);
    const qorcred::Value door = DoorOf(replaced_.lost.rid);
    Release();
    // The old one first: a full unit has room for the new one then.
    if (!replacement_.keepLost && !Take(DeleteLost())) {
      return replaced_;
    }
    if (replaced_.successor.rid == 0 && !Take(Issue(kind))) {
      return replaced_;
    }
    GiveDoor(door);
    if (holder) {
      GiveTo(*holder);
    }
    return replaced_;
  }

 private:
  [[nodiscard]] NamedCredential Named(std::string_view given) {
    const std::int32_t index = FindCredential(session_, unitKey_, desk_.credentials(), given);
    return {desk_.credentials().Text(index), desk_.credentials().ItemData(index)};
  }

  [[nodiscard]] Kind KindOf(std::int32_t rid) {
    const QueryResult found = session_.sql().Select(fmt::format(
        "SELECT CredentialType, FacilityCode, IDCode, SequenceNumber, ButtonNumber FROM "
        "CREDENTIALBANK WHERE UnitKey={} AND RID={}",
        unitKey_, rid));
    const auto number = [&found](std::int32_t column) {
      return qorcred::RoundToLong(qorcred::NumericValue(found.table->At(0, column)));
    };
    return {number(0), number(1), number(2), number(3), number(4)};
  }

  void FindSuccessor(const Kind& kind) {
    const std::string& given = replacement_.successor;
    const auto number = WholeNumber(given);
    replaced_.issued = number && !FindOfKind(kind, CredentialNumber(given));
    if (replaced_.issued) {
      return;
    }
    if (!number) {
      replaced_.successor = Named(given);
    }
    if (replaced_.successor.rid == replaced_.lost.rid) {
      throw InputFault(credential_field::kNewNumber, given,
                       "'{value}' is the credential that is to be replaced: name another one");
    }
    if (const auto holder = HolderOf(replaced_.successor)) {
      throw RefusedError(fmt::format(
          "{} is held by {}, so nothing was changed: name a credential that nobody holds",
          WithRid(replaced_.successor.entry, replaced_.successor.rid), holder->name));
    }
  }

  /// The stored credential of that kind and number. Raises InputFault when there are several.
  bool FindOfKind(const Kind& kind, CredentialNumber number) {
    std::string condition = fmt::format("UnitKey={} AND CredentialType={} AND PINNo={}", unitKey_,
                                        kind.type, number.value());
    if (desk_.takesFacilityCode()) {
      condition += fmt::format(" AND FacilityCode={}", kind.facility);
    }
    if (kind.isTransmitter()) {
      condition += fmt::format(" AND IDCode={} AND SequenceNumber={} AND ButtonNumber={}",
                               kind.idCode, kind.sequence, kind.button);
    }
    const QueryResult found = session_.sql().Select(
        fmt::format("SELECT RID FROM CREDENTIALBANK WHERE {} ORDER BY RID", condition));
    if (found.rowCount > 1) {
      throw InputFault(
          credential_field::kNewNumber, replacement_.successor,
          fmt::format("{} credentials of that kind have the number {{value}}: name "
                      "one by its row, as in {}",
                      found.rowCount, RowName(qorcred::ToLong(found.table->At(0, 0)))));
    }
    if (found.rowCount == 1) {
      replaced_.successor = Named(RowName(qorcred::ToLong(found.table->At(0, 0))));
    }
    return found.rowCount == 1;
  }

  /// Who holds a credential; nobody is nothing. Raises RefusedError when several do.
  [[nodiscard]] std::optional<HoldingTenant> HolderOf(const NamedCredential& credential) {
    const QueryResult rows = session_.sql().Select(
        fmt::format("SELECT RID, CREDENTIALID1, {} FROM TENANTS WHERE UnitKey={} AND {} ORDER BY "
                    "RID",
                    kFullNameColumns, unitKey_, Holds(credential.rid)));
    std::vector<HoldingTenant> holders;
    for (const ResultRow row : rows.rows()) {
      holders.push_back({qorcred::ToLong(row[0]), FullNameIn(row, 2),
                         qorcred::NumericValue(row[1]) == credential.rid});
    }
    if (holders.size() > 1) {
      throw RefusedError(fmt::format(
          "{} is held by {} and by {}, so nothing was changed: give it to the right one first",
          WithRid(credential.entry, credential.rid), holders[0].name, holders[1].name));
    }
    return holders.empty() ? std::nullopt : std::optional(std::move(holders.front()));
  }

  [[nodiscard]] qorcred::Value DoorOf(std::int32_t rid) {
    return session_.sql().Scalar(fmt::format(
        "SELECT DOORCODE FROM CREDENTIALBANK WHERE UnitKey={} AND RID={}", unitKey_, rid));
  }

  /// Nobody holds it then: the controller deletes it without a question.
  void Release() {
    for (const std::string_view slot : {"CREDENTIALID1", "CREDENTIALID2"}) {
      Change(fmt::format("UPDATE TENANTS SET {0}=NULL WHERE UnitKey={1} AND {0}={2}", slot,
                         unitKey_, replaced_.lost.rid));
    }
  }

  [[nodiscard]] Outcome DeleteLost() {
    desk_.SelectCredential(desk_.credentials().FindData(replaced_.lost.rid));
    return desk_.Delete();
  }

  /// Like the lost one, but for the number.
  [[nodiscard]] Outcome Issue(const Kind& kind) {
    desk_.screen().List("cboCredentials").Select(0);
    NewCredentials entry;
    entry.type = EnteredWord(kind.type);
    entry.first = replacement_.successor;
    if (desk_.takesFacilityCode()) {
      entry.facility = std::to_string(kind.facility);
    }
    if (kind.isTransmitter()) {
      entry.idCode = std::to_string(kind.idCode);
      entry.sequence = std::to_string(kind.sequence);
      entry.button = std::to_string(kind.button);
    }
    EnterCredentials(desk_, entry);
    IssuedCredentials issued = desk_.SaveNew();
    replaced_.successor = {issued.EntryOf(issued.first), issued.lastRid};
    return WithoutFacts(issued);
  }

  [[nodiscard]] std::string EnteredWord(std::int32_t type) const {
    const auto types = EnteredTypes();
    const auto known =
        std::find_if(types.begin(), types.end(),
                     [type](const CredentialTypeWords& words) { return words.type == type; });
    if (known == types.end()) {
      throw RefusedError(fmt::format(
          "{} is of a type that is not issued here, so nothing was changed: name a stored "
          "credential as its successor",
          WithRid(replaced_.lost.entry, replaced_.lost.rid)));
    }
    return std::string(known->word);
  }

  /// Notes how a part of it ended; whether it was done.
  bool Take(Outcome part) {
    Outcome& whole = replaced_;
    std::vector<ShownMessage> messages = std::move(whole.messages);
    messages.insert(messages.end(), part.messages.begin(), part.messages.end());
    whole = std::move(part);
    whole.messages = std::move(messages);
    return whole.done();
  }

  void GiveDoor(const qorcred::Value& door) {
    const std::string text = qorcred::TextOrEmpty(door);
    Change(fmt::format(
        "UPDATE CREDENTIALBANK SET DOORCODE={}, LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey={} AND "
        "RID={}",
        text.empty() ? "NULL" : text, unitKey_, replaced_.successor.rid));
  }

  /// Into the very slot that the lost one had, whether or not the unit is full, which the
  /// controller's assignment would not do. Like that, it leaves the date of the tenant alone.
  void GiveTo(const HoldingTenant& holder) {
    Change(fmt::format("UPDATE TENANTS SET {}={} WHERE UnitKey={} AND RID={}",
                       holder.inFirst ? "CREDENTIALID1" : "CREDENTIALID2", replaced_.successor.rid,
                       unitKey_, holder.rid));
    replaced_.holder = holder.name;
    session_.sql().steps().QueueOnce(unitKey_, step::kProgramTenant, holder.rid);
  }

  void Change(const std::string& statement) {
    (void)session_.sql().Change(statement, dialect::StatementKind::kUpdate);
  }

  DeskSession& session_;
  std::int32_t unitKey_;
  const CredentialExchange& replacement_;
  CredentialDesk desk_;
  ReplacedCredential replaced_;
};

}  // namespace

ReplacedCredential ReplaceCredential(DeskSession& session, std::int32_t unitKey,
                                     const CredentialExchange& replacement, Trial trial) {
  RequireSettings(session, unitKey);
  NoticesAtTheEnd notices(session);
  ReplacedCredential replaced;
  {
    OwnWork work(
        session, {unitKey},
        fmt::format("replace credential {} by {}", replacement.lost, replacement.successor));
    replaced = Replacing(session, unitKey, replacement).Run();
    if (replaced.done()) {
      work.End(trial);
    }
  }
  if (trial == Trial::kNo || !replaced.done()) {
    notices.Show();
  }
  return replaced;
}

}  // namespace qorhost
