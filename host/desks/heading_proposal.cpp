#include "host/desks/heading_proposal.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "frame/text.h"
#include "host/desks/name_words.h"
#include "host/desks/near_words.h"
#include "host/desks/typed_input.h"

namespace qorhost {

namespace {

/// What people write at the head of a column, in plain words, and what the columns say instead.
struct OtherWords {
  std::string_view written;
  std::string_view own;
};

/// Whole headings that have no word of their column, or one that several have.
constexpr std::array kHeadings{OtherWords{"surname", "last name"},
                               OtherWords{"family name", "last name"},
                               OtherWords{"nachname", "last name"},
                               OtherWords{"familienname", "last name"},
                               OtherWords{"forename", "first name"},
                               OtherWords{"given name", "first name"},
                               OtherWords{"vorname", "first name"},
                               OtherWords{"name", "display name"},
                               OtherWords{"tenant", "name"},
                               OtherWords{"occupant", "name"},
                               OtherWords{"mieter", "name"},
                               OtherWords{"bewohner", "name"},
                               OtherWords{"card", "card number"},
                               OtherWords{"card 1", "card number"},
                               OtherWords{"card id", "card number"},
                               OtherWords{"2 card", "card 2 number"},
                               OtherWords{"site code", "facility code"},
                               OtherWords{"ext", "phone number extension"},
                               OtherWords{"move in", "start"},
                               OtherWords{"move out", "end"},
                               OtherWords{"from", "start"},
                               OtherWords{"valid from", "start"},
                               OtherWords{"since", "start"},
                               OtherWords{"einzug", "start"},
                               OtherWords{"to", "end"},
                               OtherWords{"until", "end"},
                               OtherWords{"valid to", "end"},
                               OtherWords{"valid until", "end"},
                               OtherWords{"expires", "end"},
                               OtherWords{"auszug", "end"}};

/// Single words, in whatever heading.
constexpr std::array kWords{OtherWords{"no", "number"},
                            OtherWords{"nr", "number"},
                            OtherWords{"num", "number"},
                            OtherWords{"nummer", "number"},
                            OtherWords{"2nd", "2"},
                            OtherWords{"second", "2"},
                            OtherWords{"flat", "apartment"},
                            OtherWords{"apt", "apartment"},
                            OtherWords{"wohnung", "apartment"},
                            OtherWords{"telephone", "phone"},
                            OtherWords{"tel", "phone"},
                            OtherWords{"telefon", "phone"},
                            OtherWords{"mobile", "phone"},
                            OtherWords{"badge", "card"},
                            OtherWords{"fob", "card"},
                            OtherWords{"karte", "card"},
                            OtherWords{"kartennummer", "card number"},
                            OtherWords{"kartennr", "card number"},
                            OtherWords{"anlagencode", "facility code"}};

template <std::size_t kCount>
std::string_view InOwnWords(const std::array<OtherWords, kCount>& known, std::string_view written) {
  const auto* found = std::find_if(known.begin(), known.end(), [written](const OtherWords& one) {
    return one.written == written;
  });
  return found == known.end() ? written : found->own;
}

/// The words of a heading in those of the columns.
Words OwnWordsOf(std::string_view heading) {
  Words own;
  for (const std::string& word : WordsOf(heading)) {
    for (std::string& one : WordsOf(InOwnWords(kWords, word))) {
      own.push_back(std::move(one));
    }
  }
  return own;
}

bool AreOneWord(std::string_view one, std::string_view other) {
  constexpr std::size_t kLong = 4;  // letters, from which on a slip leaves the word recognisable
  return one == other || (std::min(one.size(), other.size()) >= kLong && IsNearly(one, other));
}

bool Has(const Words& words, const std::string& wanted) {
  return std::any_of(words.begin(), words.end(),
                     [&wanted](const std::string& word) { return AreOneWord(word, wanted); });
}

/// How much of the longer one both have, at least a half: a heading may say more than the column's
/// name, or begin as it does ("Facility"). A later word alone tells nothing: "Phone" is not
/// "Forward phone", "No." is not "Card Number".
double Likeness(const Words& heading, const Words& column) {
  constexpr double kLeast = 0.5;
  if (heading.empty() || column.empty()) {
    return 0;
  }
  const bool isLike =
      heading.size() < column.size()
          ? std::equal(heading.begin(), heading.end(), column.begin(), AreOneWord)
          : std::all_of(column.begin(), column.end(),
                        [&heading](const std::string& word) { return Has(heading, word); });
  const double share = static_cast<double>(std::min(heading.size(), column.size())) /
                       static_cast<double>(std::max(heading.size(), column.size()));
  return isLike && share >= kLeast ? share : 0;
}

/// Whether a heading can be written as it stands, between commas and in the quotes of a shell.
bool CanBeNamed(std::string_view heading, const std::vector<std::string>& all) {
  const auto isSame = [heading](const std::string& other) {
    return qorcred::CompareIgnoringCase(qorcred::Trim(heading), qorcred::Trim(other)) == 0;
  };
  return IsTypable(heading) && heading.find_first_of(",\"$`\\!") == std::string_view::npos &&
         !heading.starts_with('#') && std::count_if(all.begin(), all.end(), isSame) == 1;
}

}  // namespace

std::optional<std::size_t> ColumnLike(std::string_view heading,
                                      std::span<const ImportColumn> columns,
                                      const std::vector<std::size_t>& taken) {
  const Words wanted = OwnWordsOf(heading);
  const Words instead = WordsOf(InOwnWords(kHeadings, fmt::format("{}", fmt::join(wanted, " "))));
  const auto likeness = [&](std::string_view column) {
    const Words words = OwnWordsOf(column);
    return std::max(Likeness(wanted, words), Likeness(instead, words));
  };
  std::optional<std::size_t> best;
  double most = 0;
  for (std::size_t at = 0; at < columns.size(); ++at) {
    if (columns[at].passedOver || std::find(taken.begin(), taken.end(), at) != taken.end()) {
      continue;
    }
    const double like = std::max(likeness(columns[at].heading), likeness(columns[at].alias));
    if (like > most) {
      most = like;
      best = at;
    }
  }
  return best;
}

std::vector<HeadingMeant> ProposedMeanings(const UnknownHeadings& headings,
                                           std::span<const ImportColumn> columns) {
  std::vector<std::size_t> taken = headings.taken();
  std::vector<HeadingMeant> proposed;
  for (const UnknownHeading& unknown : headings.unknown()) {
    const std::optional<std::size_t> column = ColumnLike(unknown.called, columns, taken);
    const std::string& heading = headings.headings().at(unknown.place);
    HeadingMeant& one = proposed.emplace_back();
    one.heading =
        CanBeNamed(heading, headings.headings()) ? heading : fmt::format("#{}", unknown.place + 1);
    if (column) {
      one.column = columns[*column].heading;
      taken.push_back(*column);
    }
  }
  return proposed;
}

std::vector<SheetProposal> ProposalsFor(const ImportSheet& sheet,
                                        std::span<const ImportColumn> columns) {
  std::vector<std::size_t> taken;
  for (std::size_t place = 0; place < sheet.headings().size(); ++place) {
    const std::string meaning = sheet.MeaningOf(place, columns);
    for (std::size_t at = 0; at < columns.size(); ++at) {
      if (!meaning.empty() && columns[at].heading == meaning) {
        taken.push_back(at);
      }
    }
  }
  std::vector<SheetProposal> proposed;
  for (std::size_t place = 0; place < sheet.headings().size(); ++place) {
    if (sheet.IsMeaningKnown(place, columns)) {
      continue;
    }
    SheetProposal& one = proposed.emplace_back(SheetProposal{place, {}});
    if (const auto column = ColumnLike(sheet.headings()[place], columns, taken)) {
      one.column = columns[*column].heading;
      taken.push_back(*column);
    }
  }
  return taken.empty() ? std::vector<SheetProposal>() : proposed;
}

}  // namespace qorhost
