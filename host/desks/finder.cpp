#include "host/desks/finder.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

#include "frame/convert.h"
#include "frame/row_state.h"
#include "frame/text.h"
#include "host/desks/credential_slots.h"
#include "host/desks/credential_types.h"
#include "host/desks/input_fault.h"
#include "host/desks/name_words.h"
#include "host/desks/tenant_name.h"

namespace qorhost {

namespace {

using qorcred::TextOrEmpty;
using qorcred::Value;

enum class Kind : std::uint8_t { kTenant, kCard, kCode };

struct Hit {
  NameMatch match = NameMatch::kNone;
  Kind kind = Kind::kTenant;
  std::int32_t unitKey = 0;
  std::int32_t rid = 0;
  std::string name;
  bool resident = false;
  std::string about;  ///< the phone number of a code
};

bool IsBetter(const Hit& one, const Hit& other) {
  return std::tie(other.match, one.kind, one.unitKey, one.name, one.rid) <
         std::tie(one.match, other.kind, other.unitKey, other.name, other.rid);
}

std::string DigitsOf(std::string_view text) {
  std::string digits;
  std::copy_if(text.begin(), text.end(), std::back_inserter(digits), qorcred::IsDigit);
  return digits;
}

NameMatch MatchOfDigits(std::string_view wanted, std::string_view number) {
  if (wanted.empty() || number.empty()) {
    return NameMatch::kNone;
  }
  if (number == wanted) {
    return NameMatch::kWhole;
  }
  return number.starts_with(wanted) ? NameMatch::kParts : NameMatch::kNone;
}

/// Whether two words differ by one letter that is wrong, missing, too many, or by two that are
/// swapped.
bool IsNearly(std::string_view one, std::string_view other) {
  if (one.size() > other.size()) {
    std::swap(one, other);
  }
  if (other.size() - one.size() > 1) {
    return false;
  }
  const auto [first, second] = std::mismatch(one.begin(), one.end(), other.begin());
  const auto at = static_cast<std::size_t>(first - one.begin());
  if (one.size() < other.size()) {
    return one.substr(at) == other.substr(at + 1);
  }
  if (at + 1 >= one.size() || one.substr(at + 1) == other.substr(at + 1)) {
    return true;
  }
  return one[at] == other[at + 1] && one[at + 1] == other[at] &&
         one.substr(at + 2) == other.substr(at + 2);
}

/// "Transmitter-301"
std::string EntryOf(const Value& type, const Value& number) {
  const std::string_view label = ScreenLabelOf(qorcred::NumericValue(type));
  return fmt::format("{}-{}", label.empty() ? "Credential" : label, TextOrEmpty(number));
}

/// One search.
class Search {
 public:
  Search(DeskSession& session, const std::vector<UnitName>& units, std::string_view text)
      : session_(session), words_(WordsOf(text)), digits_(NumberIn(text)) {
    // Screens show codes with zeros in front: "0101".
    number_ = digits_.substr(std::min(digits_.find_first_not_of('0'), digits_.size()));
    for (const UnitName& unit : units) {
      units_.insert(unit.key);
    }
    if (words_.empty()) {
      throw InputFault(find_input::kText, text,
                       "{field} '{value}' has no letter and no digit to look for");
    }
  }

  Found Run(std::size_t most) {
    LookAtTenants();
    LookAtCards();
    LookAtCodes();
    Found found;
    found.total = hits_.size();
    std::sort(hits_.begin(), hits_.end(), IsBetter);
    hits_.resize(std::min(hits_.size(), most));
    found.rows.fields = {{"Unit", "unit", FieldKind::kNumber},
                         {"Kind", "kind"},
                         {"RID", "rid", FieldKind::kNumber},
                         {"Name", "name"},
                         {"With", "with"}};
    for (const Hit& hit : hits_) {
      found.rows.rows.push_back({hit.unitKey, KindWord(hit), hit.rid, hit.name, With(hit)});
    }
    if (hits_.empty()) {
      found.suggestions.assign(near_.begin(), near_.end());
    }
    return found;
  }

 private:
  /// The digits of a text that is a number, or a phone number with its punctuation.
  static std::string NumberIn(std::string_view text) {
    const bool isNumber = std::all_of(text.begin(), text.end(), [](char letter) {
      return qorcred::IsDigit(letter) ||
             std::string_view(" +-/().").find(letter) != std::string_view::npos;
    });
    return isNumber ? DigitsOf(text) : std::string();
  }

  [[nodiscard]] bool IsLookedAt(const Value& unitKey) const {
    return units_.contains(qorcred::RoundToLong(qorcred::NumericValue(unitKey)));
  }

  void Add(Hit hit) {
    if (hit.match != NameMatch::kNone) {
      hits_.push_back(std::move(hit));
    }
  }

  [[nodiscard]] NameMatch MatchOfName(const std::string& name) {
    const Words words = WordsOf(name);
    const NameMatch match = MatchOf(words_, words);
    constexpr std::size_t kShortest = 3;
    constexpr std::size_t kMost = 5;
    if (match == NameMatch::kNone && near_.size() < kMost) {
      for (const std::string& word : words) {
        const bool isNear = std::any_of(words_.begin(), words_.end(), [&](const auto& wanted) {
          return wanted.size() >= kShortest && word != wanted && IsNearly(word, wanted);
        });
        if (isNear && near_.size() < kMost) {
          near_.insert(name);
        }
      }
    }
    return match;
  }

  void LookAtTenants() {
    const QueryResult rows = session_.sql().Select(fmt::format(
        "SELECT RID, UnitKey, Resident, NameAtUnit, {} FROM Tenants", kFullNameColumns));
    for (const ResultRow row : rows.rows()) {
      if (!IsLookedAt(row[1])) {
        continue;
      }
      Hit hit;
      hit.kind = Kind::kTenant;
      hit.name = FullNameIn(row, 4);
      hit.match = MatchOfName(hit.name);
      const std::string shown = TextOrEmpty(row[3]);
      if (hit.match == NameMatch::kNone && !shown.empty()) {
        hit.match = MatchOf(words_, WordsOf(shown));
      }
      hit.rid = qorcred::ToLong(row[0]);
      hit.unitKey = qorcred::ToLong(row[1]);
      hit.resident = qorcred::NumericValue(row[2]) != 0;
      Add(std::move(hit));
    }
  }

  void LookAtCards() {
    const QueryResult rows =
        session_.sql().Select("SELECT RID, UnitKey, CredentialType, PINNo FROM CREDENTIALBANK");
    for (const ResultRow row : rows.rows()) {
      if (!IsLookedAt(row[1])) {
        continue;
      }
      const std::string number = TextOrEmpty(row[3]);
      Hit hit;
      hit.kind = Kind::kCard;
      hit.match = MatchOfDigits(number_, number);
      const bool isNumberAmongWords =
          digits_.empty() && std::find(words_.begin(), words_.end(), number) != words_.end();
      if (isNumberAmongWords || hit.match != NameMatch::kNone) {
        hit.name = EntryOf(row[2], row[3]);
      }
      if (isNumberAmongWords) {
        hit.match = MatchOf(words_, WordsOf(hit.name));
      }
      hit.rid = qorcred::ToLong(row[0]);
      hit.unitKey = qorcred::ToLong(row[1]);
      Add(std::move(hit));
    }
  }

  void LookAtCodes() {
    constexpr std::int32_t kFirstPhone = 5;
    const QueryResult rows = session_.sql().Select(
        "SELECT RID, UNITKEY, MODIFIED, DIRECTORYCODE, DISPLAYNAME, PHONENUMBER, CFPHONENUMBER "
        "FROM DIRECTORYCODE");
    for (const ResultRow row : rows.rows()) {
      const bool isDeleted = qorcred::NumericValue(row[2]) == qorcred::row_state::kDeleted;
      if (!IsLookedAt(row[1]) || isDeleted || qorcred::NumericValue(row[3]) < 0) {
        continue;
      }
      Hit hit;
      hit.kind = Kind::kCode;
      hit.name = TextOrEmpty(row[3]);
      hit.match = std::max(MatchOfDigits(number_, hit.name), MatchOfName(TextOrEmpty(row[4])));
      for (std::int32_t column = kFirstPhone; column < kFirstPhone + 2; ++column) {
        const std::string phone = TextOrEmpty(row[column]);
        const std::string digits = DigitsOf(phone);
        // The last digits are those that people know of a number.
        const bool ends = digits_.size() > 3 && digits.ends_with(digits_);
        hit.match = std::max(hit.match, std::max(MatchOfDigits(digits_, digits),
                                                 ends ? NameMatch::kParts : NameMatch::kNone));
        hit.about += phone.empty() ? "" : (hit.about.empty() ? "" : ", ") + phone;
      }
      hit.rid = qorcred::ToLong(row[0]);
      hit.unitKey = qorcred::ToLong(row[1]);
      Add(std::move(hit));
    }
  }

  static std::string_view KindWord(const Hit& hit) {
    switch (hit.kind) {
      case Kind::kTenant:
        return hit.resident ? "resident" : "tenant";
      case Kind::kCard:
        return "card";
      case Kind::kCode:
        break;
    }
    return "directory code";
  }

  /// The names in the rows of tenants who meet the condition.
  [[nodiscard]] std::string Holders(std::int32_t unitKey, const std::string& condition) {
    const QueryResult rows = session_.sql().Select(
        fmt::format("SELECT {} FROM Tenants WHERE UnitKey={} AND {} ORDER BY RID", kFullNameColumns,
                    unitKey, condition));
    std::vector<std::string> names;
    for (const ResultRow row : rows.rows()) {
      names.push_back(FullNameIn(row, 0));
    }
    return fmt::format("{}", fmt::join(names, ", "));
  }

  [[nodiscard]] std::string HeldBy(const Hit& tenant) {
    std::string held;
    const auto add = [&held](const std::string& text) {
      held += text.empty() ? "" : (held.empty() ? "" : ", ") + text;
    };
    const QueryResult links = session_.sql().Select(
        fmt::format("SELECT CREDENTIALID1, CREDENTIALID2, DIRECTORYCODE FROM Tenants WHERE RID={}",
                    tenant.rid));
    const auto rid = [&links](std::int32_t column) {
      return qorcred::RoundToLong(qorcred::NumericValue(links.table->At(0, column)));
    };
    const QueryResult cards = session_.sql().Select(fmt::format(
        "SELECT CredentialType, PINNo FROM CREDENTIALBANK WHERE RID IN ({}, {}) ORDER BY RID",
        rid(0), rid(1)));
    for (const ResultRow row : cards.rows()) {
      add(EntryOf(row[0], row[1]));
    }
    const Value code = session_.sql().Scalar(
        fmt::format("SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE RID={}", rid(2)));
    add(qorcred::IsEmptyText(code) ? "" : "code " + TextOrEmpty(code));
    return held;
  }

  [[nodiscard]] std::string With(const Hit& hit) {
    if (hit.kind == Kind::kTenant) {
      return HeldBy(hit);
    }
    if (hit.kind == Kind::kCard) {
      return Holders(hit.unitKey, Holds(hit.rid));
    }
    const std::string holders = Holders(hit.unitKey, fmt::format("DIRECTORYCODE={}", hit.rid));
    return hit.about + (hit.about.empty() || holders.empty() ? "" : "; ") + holders;
  }

  DeskSession& session_;
  Words words_;
  std::string digits_;  // when the text is a number
  std::string number_;  // the same without zeros in front
  std::set<std::int32_t> units_;
  std::vector<Hit> hits_;
  std::set<std::string> near_;
};

}  // namespace

Found FindText(DeskSession& session, const std::vector<UnitName>& units, std::string_view text,
               std::size_t most) {
  return Search(session, units, text).Run(most);
}

}  // namespace qorhost
