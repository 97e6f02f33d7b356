#include "host/desks/finder.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/credential_slots.h"
#include "host/desks/credential_types.h"
#include "host/desks/input_fault.h"
#include "host/desks/listed_rows.h"
#include "host/desks/name_words.h"
#include "host/desks/near_words.h"
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
  TextOrder order{};  ///< of the name
};

bool IsBetter(const Hit& one, const Hit& other) {
  return std::tie(other.match, one.kind, one.unitKey, one.order, one.rid) <
         std::tie(one.match, other.kind, other.unitKey, other.order, other.rid);
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

/// One search.
class Search {
 public:
  Search(DeskSession& session, const std::vector<UnitName>& units, std::string_view text)
      : session_(session), wanted_(WordsOf(text)), digits_(NumberIn(text)) {
    // Screens show codes with zeros in front: "0101".
    number_ = digits_.substr(std::min(digits_.find_first_not_of('0'), digits_.size()));
    for (const UnitName& unit : units) {
      units_.insert(unit.key);
    }
    if (wanted_.words().empty()) {
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
    for (Hit& hit : hits_) {
      hit.order = TextOrder(hit.name);
    }
    std::sort(hits_.begin(), hits_.end(), IsBetter);
    hits_.resize(std::min(hits_.size(), most));
    found.rows.title = "Found";
    found.rows.fields = {{"Unit", "unit", FieldKind::kNumber},
                         {"Kind", "kind"},
                         {"RID", "rid", FieldKind::kNumber},
                         {"Name", "name"},
                         {"With", "with"}};
    for (const Hit& hit : hits_) {
      found.rows.rows.push_back({hit.unitKey, KindWord(hit), hit.rid, hit.name, With(hit)});
    }
    if (hits_.empty()) {
      found.suggestions = Suggestions();
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

  [[nodiscard]] NameMatch MatchOfName(std::string_view name) {
    return wanted_.MatchOf(reader_.Read({name}));
  }

  void LookAtTenants() {
    session_.sql().tenants().EachName([this](const StoredNames& names) {
      if (!units_.contains(names.unitKey)) {
        return Reading::kGoesOn;
      }
      NameMatch match =
          wanted_.MatchOf(reader_.Read({names.lastName, names.firstName, names.initial}));
      if (match == NameMatch::kNone) {
        match = MatchOfName(names.nameAtUnit);
      }
      if (match != NameMatch::kNone) {
        hits_.push_back({match,
                         Kind::kTenant,
                         names.unitKey,
                         names.rid,
                         FullName(names.lastName, names.firstName, names.initial),
                         names.resident,
                         {}});
      }
      return Reading::kGoesOn;
    });
  }

  /// A name with a word that is nearly one of those that are looked for.
  [[nodiscard]] bool IsNear(std::initializer_list<std::string_view> texts) {
    constexpr std::size_t kShortest = 3;
    const std::vector<std::string_view>& words = reader_.Read(texts);
    return std::any_of(words.begin(), words.end(), [this](std::string_view word) {
      return std::any_of(
          wanted_.words().begin(), wanted_.words().end(), [word](const std::string& wanted) {
            return wanted.size() >= kShortest && word != wanted && IsNearly(word, wanted);
          });
    });
  }

  /// Names for which a person may have been looking who has found nothing.
  [[nodiscard]] std::vector<std::string> Suggestions() {
    constexpr std::size_t kMost = 5;
    std::set<std::string> near;
    session_.sql().tenants().EachName([&](const StoredNames& names) {
      if (units_.contains(names.unitKey) &&
          IsNear({names.lastName, names.firstName, names.initial})) {
        near.insert(FullName(names.lastName, names.firstName, names.initial));
      }
      return near.size() < kMost ? Reading::kGoesOn : Reading::kHasEnough;
    });
    for (const std::string& name : codeNames_) {
      if (near.size() < kMost && IsNear({name})) {
        near.insert(name);
      }
    }
    return {near.begin(), near.end()};
  }

  /// A number among other words: "Transmitter 301".
  [[nodiscard]] bool IsAmongWords(std::string_view number) const {
    const Words& words = wanted_.words();
    return digits_.empty() && std::find(words.begin(), words.end(), number) != words.end();
  }

  /// Cards have numbers alone: words without one find none.
  [[nodiscard]] bool MayFindCards() const {
    const Words& words = wanted_.words();
    return !number_.empty() || std::any_of(words.begin(), words.end(), [](const std::string& word) {
      return qorcred::IsDigits(word);
    });
  }

  void LookAtCards() {
    if (!MayFindCards()) {
      return;
    }
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
      const bool isAmongWords = IsAmongWords(number);
      if (isAmongWords || hit.match != NameMatch::kNone) {
        hit.name = CardEntry(qorcred::NumericValue(row[2]), number);
      }
      if (isAmongWords) {
        hit.match = MatchOfName(hit.name);
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
      if (!IsLookedAt(row[1]) || !IsListedCode(row[3], row[2])) {
        continue;
      }
      Hit hit;
      hit.kind = Kind::kCode;
      hit.name = TextOrEmpty(row[3]);
      std::string shown = TextOrEmpty(row[4]);
      hit.match = std::max(MatchOfDigits(number_, hit.name), MatchOfName(shown));
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
      codeNames_.push_back(std::move(shown));
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
      add(CardEntry(qorcred::NumericValue(row[0]), TextOrEmpty(row[1])));
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
  WantedWords wanted_;
  NameReader reader_;
  std::string digits_;  // when the text is a number
  std::string number_;  // the same without zeros in front
  std::set<std::int32_t> units_;
  std::vector<Hit> hits_;
  std::vector<std::string> codeNames_;  // of codes, for suggestions
};

}  // namespace

Found FindText(DeskSession& session, const std::vector<UnitName>& units, std::string_view text,
               std::size_t most) {
  return Search(session, units, text).Run(most);
}

}  // namespace qorhost
