#include "host/desks/tenant_list.h"

#include <fmt/format.h>

#include <array>

#include "frame/number_text.h"
#include "host/desks/field_names.h"

namespace qorhost {

namespace {

using qorcred::Value;

/// The numbers that are printed on a tenant's cards.
Value CardNumbers(const TenantRow& tenant, const TenantLinks& links) {
  qorcred::StringArray numbers;
  for (const std::int32_t rid : tenant.cards) {
    const auto card = links.cards.find(rid);
    if (card != links.cards.end()) {
      numbers.push_back(qorcred::NumberText(card->second.number));
    }
  }
  return numbers;
}

/// What the list has beside the columns of the table.
struct OwnField {
  std::string_view title;
  std::string_view key;
  FieldKind kind;
  Value (*shown)(const TenantRow&, const TenantLinks&);
};

constexpr std::array kInFront{
    OwnField{"RID", "rid", FieldKind::kNumber,
             [](const TenantRow& row, const TenantLinks&) { return Value(row.rid); }},
    OwnField{"Name", "name", FieldKind::kText,
             [](const TenantRow& row, const TenantLinks&) { return Value(row.Name()); }}};
constexpr std::array kBehind{
    OwnField{"Tenant id", "tenant_id", FieldKind::kNumber,
             [](const TenantRow& row, const TenantLinks&) { return Value(row.tenantId); }},
    OwnField{"Card", "card", FieldKind::kNumber, CardNumbers}};

/// The first columns of the table are the parts of the name, which has a field of its own.
constexpr std::size_t kNameParts = 3;

TableColumn CalledAs(const TenantColumn& column) {
  return {std::string(column.title), std::string(column.key)};
}

ListField FieldOf(const OwnField& own, bool isExtra) {
  ListField field{std::string(own.title), std::string(own.key), own.kind};
  field.isExtra = isExtra;
  return field;
}

}  // namespace

std::vector<ListField> TenantFields(const TenantLinks& links) {
  std::vector<ListField> fields;
  for (const OwnField& own : kInFront) {
    fields.push_back(FieldOf(own, false));
  }
  const auto columns = TenantColumns();
  for (std::size_t at = 0; at < columns.size(); ++at) {
    ListField& field =
        fields.emplace_back(NamedField(TenantNames(), columns[at].key, columns[at].kind));
    field.isExtra = at < kNameParts;
    if (field.kind == FieldKind::kSchedule) {
      for (const auto& [id, name] : links.schedules) {
        field.names.push_back(name);
      }
    }
  }
  for (const OwnField& own : kBehind) {
    fields.push_back(FieldOf(own, true));
  }
  return fields;
}

std::string TenantFieldNames() {
  std::vector<std::string_view> names;
  for (const OwnField& own : kInFront) {
    names.push_back(own.key);
  }
  for (const TenantColumn& column : TenantColumns()) {
    names.push_back(column.key);
  }
  for (const OwnField& own : kBehind) {
    names.push_back(own.key);
  }
  return fmt::format("{}", fmt::join(names, ", "));
}

Value TenantCell(const TenantRow& tenant, const TenantLinks& links, std::size_t field) {
  const auto columns = TenantColumns();
  if (field < kInFront.size()) {
    return kInFront.at(field).shown(tenant, links);
  }
  const std::size_t column = field - kInFront.size();
  return column < columns.size() ? columns[column].shown(tenant, links)
                                 : kBehind.at(column - columns.size()).shown(tenant, links);
}

List TenantList(const std::vector<TenantRow>& tenants, const TenantLinks& links) {
  List list;
  list.title = "Tenants";
  list.csvHasExtras = true;
  list.fields = TenantFields(links);
  list.rows.reserve(tenants.size());
  for (const TenantRow& tenant : tenants) {
    std::vector<Value>& row = list.rows.emplace_back();
    row.reserve(list.fields.size());
    for (std::size_t field = 0; field < list.fields.size(); ++field) {
      row.push_back(TenantCell(tenant, links, field));
    }
  }
  return list;
}

std::vector<TenantDetail> DetailsOf(const TenantRow& tenant, const TenantLinks& links) {
  std::vector<TenantDetail> details{{{"RID", "rid"}, tenant.rid},
                                    {{"Tenant id", "tenant_id"}, tenant.tenantId}};
  for (const TenantColumn& column : TenantColumns()) {
    details.push_back({CalledAs(column), column.shown(tenant, links)});
  }
  return details;
}

}  // namespace qorhost
