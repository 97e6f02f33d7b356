#include "host/desks/field_names.h"

#include <algorithm>
#include <array>

#include "frame/text.h"
#include "host/desks/report_captions.h"
#include "host/desks/tenant_rows.h"

namespace qorhost {

namespace {

namespace code_caption = dir_code_caption;
namespace card_caption = credential_caption;

constexpr std::array kCredentialFields{
    FieldNames{"rid", "RID", card_caption::kRid, "RID"},
    FieldNames{"type", "Type", card_caption::kType, "CredentialType"},
    FieldNames{"number", "Number", card_caption::kNumber, "PINNo"},
    FieldNames{"facility", "Facility", card_caption::kFacility, "FacilityCode"},
    FieldNames{"id_code", "ID code", card_caption::kIdCode, "IDCode"},
    FieldNames{"sequence", "Sequence", card_caption::kSequence, "SequenceNumber"},
    FieldNames{"button", "Button", card_caption::kButton, "ButtonNumber"},
    FieldNames{"door", "Door", "", "DOORCODE"},
    FieldNames{"tenant_id", "Tenant id", "", ""},
    FieldNames{"tenant", "Tenant", card_caption::kAssignedTo, ""}};

constexpr std::array kDirCodeFields{
    FieldNames{"rid", "RID", "", "RID"},
    FieldNames{"code", "Code", code_caption::kCode, "DIRECTORYCODE"},
    FieldNames{"phone", "Phone", code_caption::kPhone, "PHONENUMBER"},
    FieldNames{"extension", "Extension", code_caption::kExtension, "EXTENSION"},
    FieldNames{"delay", "Delay", code_caption::kDelay, "TIMEDELAY"},
    FieldNames{"dnd", "DND", code_caption::kDnd, "ISDNDCHECKED"},
    FieldNames{"dnd_schedule", "DND schedule", code_caption::kDndSchedule, "DNDSCHEDULEID"},
    FieldNames{"forwarding", "Forwarding", code_caption::kForwarding, "ISCFCHECKED"},
    FieldNames{"forward_phone", "Forward phone", code_caption::kCfPhone, "CFPHONENUMBER"},
    FieldNames{"forward_extension", "Forward extension", code_caption::kCfExtension, "CFEXTENSION"},
    FieldNames{"forward_delay", "Forward delay", code_caption::kCfDelay, "CFTIMEDELAY"},
    FieldNames{"forward_schedule", "Forward schedule", code_caption::kCfSchedule, "CFSCHEDULEID"},
    FieldNames{"active", "Active", code_caption::kStatus, "ACTIVE"},
    FieldNames{"start", "Start", code_caption::kStart, "STARTDATE"},
    FieldNames{"end", "End", code_caption::kEnd, "ENDDATE"},
    FieldNames{"display_name", "Display name", code_caption::kDisplayName, "DISPLAYNAME"},
    FieldNames{"show_name", "Show name", code_caption::kShowName, "SHOWDISPLAYNAME"},
    FieldNames{"show_code", "Show code", code_caption::kShowCode, "SHOWDIRECTORYCODE"},
    FieldNames{"tenants", "Tenants", "", ""},
    FieldNames{"state", "State", "", "MODIFIED"}};

/// A tenant's fields are those of the table's columns, with what the list makes of them.
std::vector<FieldNames> TenantFieldNames() {
  std::vector<FieldNames> fields{{"rid", "RID", "", "RID"}, {"name", "Name", "", ""}};
  for (const TenantColumn& column : TenantColumns()) {
    const bool isCode = column.key == "code";
    fields.push_back({column.key, column.title, isCode ? code_caption::kCode : "", column.column});
  }
  fields.push_back({"tenant_id", "Tenant id", "", "TenantID"});
  fields.push_back({"card", "Card", "", ""});
  return fields;
}

bool IsSame(std::string_view one, std::string_view other) {
  return !one.empty() && qorcred::CompareIgnoringCase(one, other) == 0;
}

const FieldNames* FindNames(const NamedThing& thing, std::string_view name) {
  for (const FieldNames& field : thing.fields) {
    if (IsSame(field.key, name) || IsSame(field.title, name) || IsSame(field.heading, name)) {
      return &field;
    }
  }
  return nullptr;
}

}  // namespace

const NamedThing& CredentialNames() {
  static const NamedThing kThing{"credential", "CredentialBank", kCredentialFields};
  return kThing;
}

const NamedThing& DirCodeNames() {
  static const NamedThing kThing{"directory code", "DirectoryCode", kDirCodeFields};
  return kThing;
}

const NamedThing& TenantNames() {
  static const std::vector<FieldNames> kFields = TenantFieldNames();
  static const NamedThing kThing{"tenant", "Tenants", kFields};
  return kThing;
}

ListField NamedField(const NamedThing& thing, std::string_view key, FieldKind kind) {
  ListField field{std::string(key), std::string(key), kind};
  if (const FieldNames* names = FindNames(thing, key)) {
    field.title = names->title;
    field.otherNames = OtherNames(thing, key);
    if (names->heading == code_caption::kStatus) {
      field.yesWord = code_caption::kActiveWord;
      field.noWord = code_caption::kInactiveWord;
    }
  }
  return field;
}

std::vector<std::string> OtherNames(const NamedThing& thing, std::string_view name) {
  std::vector<std::string> others;
  if (const FieldNames* names = FindNames(thing, name)) {
    for (const std::string_view one : {names->key, names->title, names->heading}) {
      const bool isKnown = IsSame(one, name) ||
                           std::any_of(others.begin(), others.end(), [one](std::string_view other) {
                             return IsSame(one, other);
                           });
      if (!one.empty() && !isKnown) {
        others.emplace_back(one);
      }
    }
  }
  return others;
}

std::string_view NameOfColumn(std::string_view table, std::string_view column, NamedFor reader) {
  for (const NamedThing* thing : {&CredentialNames(), &DirCodeNames(), &TenantNames()}) {
    if (!IsSame(thing->table, table)) {
      continue;
    }
    for (const FieldNames& field : thing->fields) {
      if (IsSame(field.column, column)) {
        return reader == NamedFor::kPeople ? field.title : field.key;
      }
    }
  }
  return column;
}

}  // namespace qorhost
