#include "host/desks/tenant_choice.h"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/input_fault.h"
#include "host/desks/name_words.h"
#include "host/desks/row_names.h"
#include "host/desks/tenant_fields.h"
#include "host/desks/whole_number.h"

namespace qorhost {

namespace {

/// The tenants of a unit by everything that names them.
class Directory {
 public:
  Directory(const std::vector<TenantRow>& tenants, const TenantLinks& links, std::int32_t unitKey)
      : tenants_(tenants), links_(links), unitKey_(unitKey) {
    for (std::size_t at = 0; at < tenants.size(); ++at) {
      byRid_.emplace(tenants[at].rid, at);
      byId_.emplace(tenants[at].tenantId, at);
    }
  }

  /// Their places.
  [[nodiscard]] std::vector<std::size_t> Named(const std::string& given) {
    const std::string_view text = qorcred::Trim(given);
    if (const auto rows = BehindRowPrefix(text)) {
      return InRows(*rows);
    }
    if (const auto id = WholeNumber(text)) {
      const auto found = byId_.find(*id);
      if (found == byId_.end()) {
        RefuseUnknown(given);
      }
      return {found->second};
    }
    return {ByWords(given)};
  }

 private:
  /// The rows with commas between them.
  [[nodiscard]] std::vector<std::size_t> InRows(std::string_view rest) const {
    std::vector<std::size_t> places;
    for (bool more = true; more;) {
      const std::size_t comma = rest.find(',');
      more = comma != std::string_view::npos;
      const std::string row = std::string(kRowPrefix).append(rest.substr(0, comma));
      const auto found = byRid_.find(RowNamed(tenant_field::kTenant, row).value_or(0));
      if (found == byRid_.end()) {
        RefuseUnknown(row);
      }
      places.push_back(found->second);
      rest.remove_prefix(more ? comma + 1 : rest.size());
    }
    return places;
  }

  [[nodiscard]] std::size_t ByWords(const std::string& given) {
    if (names_.empty()) {
      for (const TenantRow& tenant : tenants_) {
        names_.push_back(WordsOf(tenant.Name()));
      }
    }
    const std::vector<std::size_t> places = BestMatches(WordsOf(given), names_);
    if (places.empty()) {
      RefuseUnknown(given);
    }
    if (places.size() > 1) {
      RefuseSeveral(given, places);
    }
    return places.front();
  }

  [[noreturn]] void RefuseUnknown(std::string_view given) const {
    throw InputFault(tenant_field::kTenant, given,
                     fmt::format("unit {} has no tenant '{{value}}'", unitKey_),
                     InputFault::Kind::kSeeList);
  }

  [[noreturn]] void RefuseSeveral(std::string_view given,
                                  const std::vector<std::size_t>& places) const {
    constexpr std::size_t kMost = 10;
    std::string described;
    for (std::size_t at = 0; at < std::min(places.size(), kMost); ++at) {
      described += (at == 0 ? "" : "; ") + Described(tenants_[places[at]]);
    }
    throw InputFault(
        tenant_field::kTenant, given,
        fmt::format("{} tenants are called '{{value}}', say more of the name, or rid:N: {}{}",
                    places.size(), InReason(described), places.size() > kMost ? "; ..." : ""));
  }

  /// By which one of several is known: "Tanaka Xenia M (rid:62, code 102)".
  [[nodiscard]] std::string Described(const TenantRow& tenant) const {
    const std::string code = qorcred::TextOrEmpty(links_.Code(tenant.code));
    return fmt::format("{} ({}{}{})", tenant.Name(), RowName(tenant.rid),
                       code.empty() ? "" : ", code ", code);
  }

  const std::vector<TenantRow>& tenants_;
  const TenantLinks& links_;
  std::int32_t unitKey_;
  std::unordered_map<std::int32_t, std::size_t> byRid_;
  std::unordered_map<std::int32_t, std::size_t> byId_;
  std::vector<Words> names_;  // of the tenants, once they are asked for
};

}  // namespace

std::vector<TenantRow> TenantsNamed(const std::vector<std::string>& texts,
                                    const std::vector<TenantRow>& tenants, const TenantLinks& links,
                                    std::int32_t unitKey) {
  Directory directory(tenants, links, unitKey);
  std::vector<TenantRow> named;
  std::unordered_set<std::size_t> taken;
  for (const std::string& text : texts) {
    for (const std::size_t place : directory.Named(text)) {
      if (taken.insert(place).second) {
        named.push_back(tenants[place]);
      }
    }
  }
  return named;
}

}  // namespace qorhost
