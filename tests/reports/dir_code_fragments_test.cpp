// What each filter row of the directory-code report adds to the statement, against a file that
// spells every text out: tests/golden/dir_code_fragments.txt.
#include <array>
#include <charconv>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "frame/date.h"
#include "host/screens/simple_models.h"
#include "tests/reports/report_fixture.h"

namespace qortest {
namespace {

using qorcred::FromCivil;

constexpr std::string_view kOthers = "others";
constexpr int kOperators = 8;

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string_view::npos
             ? std::string_view()
             : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// The first word of `text`, which is cut behind it.
std::string_view NextWord(std::string_view& text) {
  text = Trimmed(text);
  const std::size_t end = std::min(text.find(' '), text.size());
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(end);
  return word;
}

/// One piece of a text: a literal or the name of a term.
struct Piece {
  bool literal;
  std::string text;
};

struct Line {
  int number;  ///< in the file
  int place;
  std::string when;
  std::vector<Piece> pieces;
};

/// The lines of the file by field; the lines of all other fields under kOthers.
using Golden = std::map<std::string, std::vector<Line>, std::less<>>;

std::vector<Piece> PiecesOf(std::string_view text, int number) {
  std::vector<Piece> pieces;
  for (text = Trimmed(text); !text.empty(); text = Trimmed(text)) {
    if (text.front() == '"') {
      const std::size_t end = text.find('"', 1);
      if (end == std::string_view::npos) {
        ADD_FAILURE() << "line " << number << ": a literal does not end";
        break;
      }
      pieces.push_back({true, std::string(text.substr(1, end - 1))});
      text.remove_prefix(end + 1);
    } else {
      pieces.push_back({false, std::string(NextWord(text))});
    }
  }
  return pieces;
}

Golden ReadGolden() {
  std::ifstream file(QORCRED_GOLDEN_DIR "/dir_code_fragments.txt");
  EXPECT_TRUE(file.is_open());
  Golden golden;
  std::vector<std::string> fields;
  int number = 0;
  for (std::string line; std::getline(file, line);) {
    ++number;
    std::string_view rest = Trimmed(line);
    if (rest.empty() || rest.front() == '#') continue;
    if (rest.front() == '[') {
      fields.clear();
      rest = rest.substr(1, rest.size() - 2);
      while (!Trimmed(rest).empty()) fields.emplace_back(NextWord(rest));
      continue;
    }
    const std::string_view place = NextWord(rest);
    int at = -1;
    std::from_chars(place.data(), place.data() + place.size(), at);
    const std::string when(NextWord(rest));
    for (const std::string& field : fields) {
      golden[field].push_back({number, at, when, PiecesOf(rest, number)});
    }
  }
  return golden;
}

/// What stands for the terms of a row.
using Terms = std::map<std::string, std::string, std::less<>>;

std::string TextOf(const Line& line, const Terms& terms) {
  std::string text;
  for (const Piece& piece : line.pieces) {
    if (piece.literal) {
      text += piece.text;
    } else if (piece.text != "none") {
      const auto term = terms.find(piece.text);
      EXPECT_NE(term, terms.end()) << "line " << line.number << ": " << piece.text;
      if (term != terms.end()) text += term->second;
    }
  }
  return text;
}

std::string_view CaseOf(std::string_view value) {
  if (value.empty()) return "empty";
  return value == "NULL" ? "NULL" : "given";
}

bool IsNumberField(int field) {
  return field == 51 || field == 54 || field == 61;
}

class DirCodeFragments : public DirCodeReportTest {
 protected:
  void SetUp() override {
    Database().Select("AND RID = ", {{"DirectoryCode.Column"}});
    ChooseDates(Host(), 0, FromCivil({2024, 3, 5, 14, 30, 15}), FromCivil({2024, 3, 7, 8, 0, 0}));
  }

  /// What the first filter row adds to the statement.
  std::string Added(int field, int place, std::string_view value) {
    static constexpr std::string_view kBefore = "AND DirectoryCode.DirectoryCode >= 0";
    static constexpr std::string_view kAfter = " Order By UCase(DirectoryCode.DisplayName)";
    ChooseField(Host(), 0, field);
    ChooseOperator(Host(), 0, place);
    EnterValues(Host(), 0, value, "ignored");
    std::string statement = Controller().pbGenSql(Connection(), kUnit);
    const std::size_t start = statement.find(kBefore);
    EXPECT_NE(start, std::string::npos) << statement;
    EXPECT_TRUE(statement.ends_with(kAfter)) << statement;
    statement.erase(statement.size() - kAfter.size());
    return statement.substr(start + kBefore.size());
  }

  void ExpectGolden(const std::vector<Line>& lines, int field, int place, std::string_view value) {
    // A number field's empty value goes into the text as NULL.
    const std::string_view used = IsNumberField(field) && value.empty() ? "NULL" : value;
    const Terms terms{
        {"C", "DirectoryCode.Column"},  {"V1", std::string(used)}, {"B", "No"}, {"DF", "3/5/2024"},
        {"DT", "3/7/2024 11:59:59 PM"}, {"Dd", "05 03 2024"},      {"u", "7"}};
    const std::string added = Added(field, place, value);
    int found = 0;
    for (const Line& line : lines) {
      if (line.place == place && (line.when == "any" || line.when == CaseOf(used))) {
        ++found;
        EXPECT_EQ(added, TextOf(line, terms)) << "line " << line.number;
      }
    }
    EXPECT_EQ(found, 1) << "lines for this case";
  }
};

TEST_F(DirCodeFragments, AreThoseOfTheFile) {
  const Golden golden = ReadGolden();
  const std::array others{-32768, -1, 0, 1, 50, 70, 116, 151, 32767};
  std::vector<int> fields(others.begin(), others.end());
  for (int field = 51; field <= 69; ++field) fields.push_back(field);

  std::set<std::string> seen;
  for (const int field : fields) {
    const bool named = golden.contains(std::to_string(field));
    EXPECT_EQ(named, field >= 51 && field <= 69) << field;
    const std::string section = named ? std::to_string(field) : std::string(kOthers);
    seen.insert(section);
    ASSERT_TRUE(golden.contains(section));
    for (int place = 0; place < kOperators; ++place) {
      for (const std::string_view value : {"", "12"}) {
        SCOPED_TRACE(testing::Message()
                     << "field " << field << " operator " << place << " value '" << value << "'");
        ExpectGolden(golden.at(section), field, place, value);
      }
    }
  }
  EXPECT_EQ(seen.size(), golden.size()) << "a section of the file was not used";
}

// Terms are pasted as they stand, whatever they look like.
TEST_F(DirCodeFragments, TakeTheValueAsItIs) {
  const Golden golden = ReadGolden();
  for (const int field : {52, 53, 56, 58, 59, 60, 63, 65, 66, 70}) {
    const std::string name = std::to_string(field);
    const auto& lines = golden.at(golden.contains(name) ? name : std::string(kOthers));
    for (const std::string_view value :
         {"O'Brien", "'; DROP TABLE DirectoryCode; --", "{C}", "{V}", "{", "}{", "^", "^1", "^2",
          "%_[a-z]*?", "\"", "null", "NUL", "1.50", "a  b", "\xC3\xA9", "\xFF\xFE", "\n\t"}) {
      for (int place = 0; place < kOperators; ++place) {
        SCOPED_TRACE(testing::Message()
                     << "field " << field << " operator " << place << " value '" << value << "'");
        ExpectGolden(lines, field, place, value);
      }
    }
  }
}

TEST_F(DirCodeFragments, TakeTheColumnAsItIs) {
  Database().Replace("AND RID = ", {.rows = {{"DirectoryCode.{V} {U}"}}});
  EXPECT_EQ(Added(52, 0, "x"), " AND DirectoryCode.{V} {U} IN ('x')");
  Database().Replace("AND RID = ", {.rows = {{""}}});
  EXPECT_EQ(Added(52, 0, "x"), " AND  IN ('x')");
  Database().Replace("AND RID = ", {.rows = {{qorcred::Null{}}}});
  EXPECT_EQ(Added(52, 0, "x"), " AND  IN ('x')");
  Database().Replace("AND RID = ", {.rows = {{"First"}, {"Second"}}});
  EXPECT_EQ(Added(52, 0, "x"), " AND First IN ('x')");
}

// A text that says NULL is a text like any other.
TEST_F(DirCodeFragments, OfTextsKnowNoNull) {
  EXPECT_EQ(Added(52, 0, "NULL"), " AND DirectoryCode.Column IN ('NULL')");
  EXPECT_EQ(Added(52, 2, "NULL"), " AND DirectoryCode.Column LIKE 'NULL%' ");
  EXPECT_EQ(Added(70, 0, "NULL"), " AND DirectoryCode.Column IN ('NULL')");
}

TEST_F(DirCodeFragments, TrimBlanksAlone) {
  EXPECT_EQ(Added(52, 0, "  a b "), " AND DirectoryCode.Column IN ('a b')");
  EXPECT_EQ(Added(52, 0, " \t "), " AND DirectoryCode.Column IN ('\t')");
  EXPECT_EQ(Added(52, 0, "   "),
            " AND (DirectoryCode.Column IN ('') OR DirectoryCode.Column IS NULL )");
  EXPECT_EQ(Added(51, 0, "   "), " AND DirectoryCode.Column IS NULL ");
}

TEST_F(DirCodeFragments, OfNumbersTakeTheLeadingNumber) {
  const struct {
    std::string_view value;
    std::string_view number;
  } rows[] = {{"12", "12"},     {" 12 ", "12"},   {"1.50", "1.5"}, {"007", "7"}, {"-3", "-3"},
              {"12abc", "12"},  {"abc", "0"},     {"NULL", "0"},   {"0", "0"},   {"1e2", "100"},
              {"1; DROP", "1"}, {"1 2 3", "123"}, {".5", "0.5"},   {"--1", "0"}, {"'", "0"},
              {"2,5", "2"},     {"&H10", "16"},   {"+4", "4"},     {"1.0", "1"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.value);
    const std::string number(row.number);
    for (const int field : {51, 54, 61}) {
      EXPECT_EQ(Added(field, 0, row.value), " AND DirectoryCode.Column IN (" + number + ") ");
      EXPECT_EQ(Added(field, 1, row.value), " AND DirectoryCode.Column NOT IN (" + number + ") ");
    }
    EXPECT_EQ(Added(54, 5, row.value), " AND DirectoryCode.Column <= (" + number + ") ");
    EXPECT_EQ(Added(61, 2, row.value), " AND DirectoryCode.Column LIKE '" + number + "%' ");
  }
}

TEST_F(DirCodeFragments, OfTheForwardingDelayCompareWithTheTextNull) {
  EXPECT_EQ(Added(61, 2, ""), " AND DirectoryCode.Column LIKE 'NULL%' ");
  EXPECT_EQ(Added(61, 4, ""), " AND DirectoryCode.Column LIKE '%NULL' ");
  EXPECT_EQ(Added(61, 6, ""), " AND DirectoryCode.Column LIKE '%NULL%' ");
  EXPECT_EQ(Added(61, 7, ""), " AND DirectoryCode.Column NOT LIKE '%NULL%' ");
}

TEST_F(DirCodeFragments, OfRangesOfNumbersAreNone) {
  EXPECT_EQ(Added(51, 6, "1"), "");
  EXPECT_EQ(Added(54, 7, "1"), "");
}

TEST_F(DirCodeFragments, OfAnOperatorBeyondTheLastAreNone) {
  for (int field = 50; field <= 70; ++field) {
    for (const int place : {8, 9, 100}) {
      EXPECT_EQ(Added(field, place, "1"), "") << field << ' ' << place;
    }
  }
}

TEST_F(DirCodeFragments, OfYesNoFieldsFollowTheBox) {
  auto& box = RowControl<qorhost::CheckModel>(Host(), "chkBoolean", 0);
  const struct {
    std::int16_t state;
    std::string_view answer;
  } rows[] = {{0, "No"}, {1, "Yes"}, {2, "Yes"}};
  for (const auto& row : rows) {
    box.SetState(row.state);
    for (const int field : {55, 57, 62}) {
      EXPECT_EQ(Added(field, 0, "ignored"),
                " AND DirectoryCode.Column = " + std::string(row.answer) + " ");
      EXPECT_EQ(Added(field, 1, ""),
                " AND DirectoryCode.Column <> " + std::string(row.answer) + " ");
    }
  }
}

// The pickers' times are set before they are read: from midnight, whose time is not written, to
// the last second.
TEST_F(DirCodeFragments, OfDatesSpanWholeDays) {
  EXPECT_EQ(Added(63, 3, ""), " AND DirectoryCode.Column >= #3/5/2024# ");
  EXPECT_EQ(Added(63, 2, ""), " AND DirectoryCode.Column > #3/5/2024 23:59:59# ");
  EXPECT_EQ(Added(64, 6, ""),
            " AND ( (DirectoryCode.Column >= #3/5/2024#) AND ( DirectoryCode.Column <= #3/7/2024 "
            "11:59:59 PM# ))");
  ChooseDates(Host(), 0, FromCivil({2026, 12, 31, 23, 59, 59}), FromCivil({2027, 1, 1, 0, 0, 0}));
  EXPECT_EQ(Added(63, 0, ""), " AND Format(DirectoryCode.Column, 'DD MM YYYY')  = '31 12 2026' ");
  EXPECT_EQ(Added(64, 7, ""),
            " AND DirectoryCode NOT IN ( SELECT DirectoryCode FROM DirectoryCode Where UnitKey = 7 "
            "AND ((DirectoryCode.Column >= #12/31/2026#) AND ( DirectoryCode.Column <= #1/1/2027 "
            "11:59:59 PM# )))");
}

// The host decides how a date is written; the day that Format compares with is always the same.
TEST_F(DirCodeFragments, OfDatesAreWrittenAsTheHostWritesThem) {
  Host().script().dateText = "5. March";
  EXPECT_EQ(Added(63, 2, ""), " AND DirectoryCode.Column > #5. March 23:59:59# ");
  EXPECT_EQ(Added(63, 0, ""), " AND Format(DirectoryCode.Column, 'DD MM YYYY')  = '05 03 2024' ");
  // Its hyphens stay, also where one stands before a 1.
  Host().script().dateText = "2024-10-05";
  EXPECT_EQ(Added(63, 2, ""), " AND DirectoryCode.Column > #2024-10-05 23:59:59# ");
}

}  // namespace
}  // namespace qortest
