// Lists: conditions, order, columns, limits, and what people and programs read of them.
#include "host/desks/list.h"

#include <gmock/gmock.h>

#include "frame/convert.h"
#include "frame/date.h"
#include "host/desks/credential_list.h"
#include "host/desks/dir_code_list.h"
#include "host/desks/finder.h"
#include "host/desks/history.h"
#include "host/desks/input_fault.h"
#include "host/desks/list_condition.h"
#include "host/desks/schedule_desk.h"
#include "host/desks/step_desk.h"
#include "host/desks/store_overview.h"
#include "host/desks/tenant_desk.h"
#include "host/desks/tenant_list.h"
#include "host/desks/unit_desk.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::Null;
using qorcred::Value;
using testing::ElementsAre;
using testing::HasSubstr;

Value On(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return qorcred::FromCivil({year, month, day, hour, minute, second});
}

/// Five rows with a value of every kind, and one with none.
List Sample() {
  List list;
  list.fields = {{"No.", "number", FieldKind::kNumber},
                 {"Name", "name"},
                 {"Day", "day", FieldKind::kDate},
                 {"Active", "active", FieldKind::kYesNo},
                 {"Names", "names"}};
  list.fields.push_back({"Key", "key", FieldKind::kNumber});
  list.fields.back().isExtra = true;
  using Names = qorcred::StringArray;
  list.rows = {{9, "Öztürk", On(2026, 2, 1, 8), true, Names{"Abel", "Berg"}, 1},
               {10, "abel", On(2025, 12, 31, 23, 59, 59), false, Names{"Cole"}, 2},
               {100, "Berg", On(2026, 2, 1), true, Names{}, 3},
               {2, "Ärger", On(2026, 1, 31), false, Names{"Abel"}, 4},
               {Null{}, Null{}, Null{}, Null{}, Names{}, 5}};
  return list;
}

/// The keys of the rows that are left, in their order.
std::vector<int> KeysOf(ListQuery query) {
  query.columns = "key";
  std::vector<int> keys;
  for (const auto& row : Answer(Sample(), query).rows) {
    keys.push_back(static_cast<int>(qorcred::NumericValue(row.at(0))));
  }
  return keys;
}

std::vector<int> Where(std::vector<std::string> conditions) {
  return KeysOf({std::move(conditions), "", "", {}});
}

std::vector<int> By(const std::string& sort) {
  return KeysOf({{}, sort, "", {}});
}

TEST(Lists, AreNarrowedByConditionsOnFieldsOfEveryKind) {
  EXPECT_THAT(Where({"number >= 10"}), ElementsAre(2, 3));
  EXPECT_THAT(Where({"No. between 9 AND 10"}), ElementsAre(1, 2));
  EXPECT_THAT(Where({"number ="}), ElementsAre(5));
  EXPECT_THAT(Where({"number <> 9"}), ElementsAre(2, 3, 4, 5));
  EXPECT_THAT(Where({"name = ÖZTÜRK"}), ElementsAre(1));
  EXPECT_THAT(Where({"name contains er"}), ElementsAre(3, 4));
  EXPECT_THAT(Where({"name ="}), ElementsAre(5));
  EXPECT_THAT(Where({"active = yes"}), ElementsAre(1, 3));
  EXPECT_THAT(Where({"active <> true"}), ElementsAre(2, 4, 5));
  EXPECT_THAT(Where({"number < 100", "active = no"}), ElementsAre(2, 4));
}

TEST(Lists, CompareTextsHoweverAnAccentIsEncoded) {
  EXPECT_THAT(Where({"name = O\u0308ZTU\u0308RK"}), ElementsAre(1));
  EXPECT_THAT(Where({"name begins with A\u0308"}), ElementsAre(4));
  EXPECT_THAT(Where({"name begins with A"}), ElementsAre(2)) << "an accent counts";
  const ListCondition condition("name = Öztürk", {{"name", FieldKind::kText}});
  EXPECT_TRUE(condition.IsMetBy(Value("O\u0308ztu\u0308rk")));
  EXPECT_FALSE(condition.IsMetBy(Value("Ozturk")));
}

TEST(Lists, CompareDatesByDaysUnlessATimeIsGiven) {
  EXPECT_THAT(Where({"day = 2026-02-01"}), ElementsAre(1, 3));
  EXPECT_THAT(Where({"day = 2026-02-01 08:00"}), ElementsAre(1));
  EXPECT_THAT(Where({"day <= 2025-12-31"}), ElementsAre(2));
  EXPECT_THAT(Where({"day between 2026-01-31 AND 2026-02-01"}), ElementsAre(1, 3, 4));
  EXPECT_THAT(Where({"day ="}), ElementsAre(5));
  EXPECT_THAT(Where({"day <>"}), ElementsAre(1, 2, 3, 4));
}

TEST(Lists, ACellOfSeveralNamesMeetsAConditionByOneOfThem) {
  EXPECT_THAT(Where({"names = abel"}), ElementsAre(1, 4));
  EXPECT_THAT(Where({"names does not equal Abel"}), ElementsAre(2, 3, 5));
  EXPECT_THAT(Where({"names ="}), ElementsAre(3, 5));
}

TEST(Lists, SortNumbersAsNumbersAndDatesAsDatesWithWhatIsMissingLast) {
  EXPECT_THAT(By("number"), ElementsAre(4, 1, 2, 3, 5));
  EXPECT_THAT(By("-number"), ElementsAre(3, 2, 1, 4, 5));
  EXPECT_THAT(By("day"), ElementsAre(2, 4, 3, 1, 5));
  EXPECT_THAT(By("name"), ElementsAre(2, 4, 3, 1, 5));
  EXPECT_THAT(By("-active, day"), ElementsAre(3, 1, 2, 4, 5));
  EXPECT_THAT(By("Active,-No."), ElementsAre(2, 4, 3, 1, 5));
}

TEST(Lists, SortNamesAsPeopleDo) {
  List list;
  list.fields = {{"Name", "name"}};
  for (const char* name : {"Zoe", "Öztürk", "Petrov", "oz", "Ångström", "Abel", "muller", "Müller",
                           "Muller", "O\u0308zturk", "Østby", "Obrien"}) {
    list.rows.push_back({name});
  }
  std::vector<std::string> sorted;
  for (const auto& row : Answer(list, {{}, "name", "", {}}).rows) {
    sorted.push_back(qorcred::ToText(row.front()));
  }
  EXPECT_THAT(sorted, ElementsAre("Abel", "Ångström", "Muller", "Müller", "muller", "Obrien",
                                  "Østby", "oz", "O\u0308zturk", "Öztürk", "Petrov", "Zoe"));
}

TEST(Lists, ALimitTakesTheFirstRowsAndOfAHistoryTheLast) {
  EXPECT_THAT(KeysOf({{}, "", "", 2}), ElementsAre(1, 2));
  EXPECT_THAT(KeysOf({{}, "-number", "", 1}), ElementsAre(3));
  EXPECT_THAT(KeysOf({{}, "", "", 9}), ElementsAre(1, 2, 3, 4, 5));
  List latest = Sample();
  latest.latestLast = true;
  EXPECT_EQ(Answer(latest, {{}, "", "key", 2}).rows.front().front(), Value(4));
  EXPECT_EQ(Answer(latest, {{}, "key", "key", 2}).rows.front().front(), Value(1));
}

TEST(Lists, HaveTheColumnsThatAreAskedForInTheirOrder) {
  const List chosen = Answer(Sample(), {{}, "", "key, Name", {}});
  ASSERT_EQ(chosen.fields.size(), 2U);
  EXPECT_EQ(chosen.fields[0].key, "key");
  EXPECT_EQ(chosen.rows[0], (std::vector<Value>{1, "Öztürk"}));
  EXPECT_EQ(Answer(Sample(), {}).fields.size(), 5U);
  EXPECT_EQ(Answer(WithExtras(Sample()), {}).fields.size(), 6U);
}

TEST(Lists, TellAWrongFieldWithThoseThatThereAre) {
  const auto faultOf = [](const ListQuery& query) -> std::string {
    try {
      (void)Answer(Sample(), query);
    } catch (const InputFault& fault) {
      return std::string(fault.field()) + ": " + fault.what();
    }
    return "no fault";
  };
  EXPECT_THAT(faultOf({{}, "floor", "", {}}),
              HasSubstr("sort: sort: 'floor' is no field of this list: number, name, day"));
  EXPECT_THAT(
      faultOf({{}, "nmae", "", {}}),
      HasSubstr("'nmae' is no field of this list, did you mean 'name'?: number, name, day"));
  EXPECT_THAT(faultOf({{}, "", "name,,day", {}}), HasSubstr("columns: columns: '' is no field"));
  EXPECT_THAT(faultOf({{"floor = 5"}, "", "", {}}), HasSubstr("condition: condition 'floor = 5'"));
  EXPECT_THAT(faultOf({{"day = soon"}, "", "", {}}), HasSubstr("is no date"));
  EXPECT_THAT(faultOf({{"active = maybe"}, "", "", {}}), HasSubstr("neither yes nor no"));
}

TEST(Lists, OfSeveralUnitsStandBehindEachOtherWithTheirKeys) {
  List all;
  Append(all, WithUnit(Sample(), {3, "Lofts"}));
  Append(all, WithUnit(Sample(), {4, "Annex"}));
  ASSERT_EQ(all.rows.size(), 10U);
  EXPECT_EQ(all.fields.front().key, "unit");
  EXPECT_EQ(Answer(all, {{"unit = 4", "name = abel"}, "", "unit,name", {}}).rows,
            (std::vector<std::vector<Value>>{{4, "abel"}}));
}

TEST(Lists, PeopleReadYesDatesAndNamesAndProgramsTheirTypes) {
  List list = Sample();
  list.fields[2].clock = TimeOf::kUtc;
  list.fields[0].kind = FieldKind::kNumber;
  list.rows[0][0] = "0009";
  const Table people = ForPeople(Answer(list, {}));
  EXPECT_EQ(people.rows[0], (std::vector<Value>{"0009", "Öztürk", "2026-02-01T08:00:00+00:00",
                                                "yes", "Abel, Berg"}));
  EXPECT_EQ(ForPeople(Sample()).rows[1][2], Value("2025-12-31 23:59:59"));
  EXPECT_EQ(ForPeople(Sample()).rows[2][2], Value("2026-02-01 00:00"));
  const Table programs = ForPrograms(Answer(list, {}));
  EXPECT_EQ(programs.rows[0], (std::vector<Value>{9.0, "Öztürk", "2026-02-01T08:00:00+00:00", true,
                                                  qorcred::StringArray{"Abel", "Berg"}}));
  EXPECT_EQ(programs.columns[0].key, "number");
}

class EveryList : public DeskFixture {
 protected:
  [[nodiscard]] std::vector<List> Lists() {
    DeskSession& desks = session();
    const std::vector<UnitName> units = desks.Units();
    CredentialDesk credentials(desks, 2, DeskScreen::kCredentials);
    DirCodeDesk codes(desks, 2);
    const TenantDesk tenants(desks, 2);
    return {CredentialList(desks, credentials),
            DirCodeList(desks, codes),
            TenantList(tenants.tenants(), tenants.links()),
            UnitList(desks, units),
            UnitSettingsList(desks, units),
            DoorList(desks, units),
            ScheduleList(desks, units),
            StepList(desks, {}),
            WaitingStepList(desks, {}),
            HistoryList(desks, {}),
            FindText(desks, units, "tanaka", 50).rows};
  }
};

/// A name without blanks, underscores and letter case.
std::string Bare(std::string_view name) {
  std::string bare;
  for (const char letter : name) {
    if (letter != ' ' && letter != '_') {
      bare += qorcred::LowerAscii(letter);
    }
  }
  return bare;
}

TEST_F(EveryList, CallsAFieldTheSameForPeopleAndForPrograms) {
  for (const List& list : Lists()) {
    for (const ListField& field : list.fields) {
      EXPECT_EQ(Bare(field.title), Bare(field.key));
    }
  }
}

TEST_F(EveryList, HasCellsOfTheTypesThatItsFieldsPromise) {
  for (const List& list : Lists()) {
    for (const auto& row : list.rows) {
      ASSERT_EQ(row.size(), list.fields.size());
      for (std::size_t at = 0; at < row.size(); ++at) {
        const Value& cell = row[at];
        const bool isText =
            cell.As<std::string>() != nullptr || cell.As<qorcred::StringArray>() != nullptr;
        if (qorcred::IsEmptyText(cell)) {
          continue;
        }
        switch (list.fields[at].kind) {
          case FieldKind::kDate:
            EXPECT_NE(cell.As<qorcred::Date>(), nullptr) << list.fields[at].key;
            break;
          case FieldKind::kYesNo:
            EXPECT_NE(cell.As<bool>(), nullptr) << list.fields[at].key;
            break;
          case FieldKind::kNumber:
            EXPECT_TRUE(!isText || list.fields[at].key == "card") << list.fields[at].key;
            break;
          default:
            EXPECT_TRUE(isText) << list.fields[at].key;
            break;
        }
      }
    }
  }
}

TEST_F(EveryList, IsSortedAndNarrowedByEachOfItsFields) {
  for (const List& list : Lists()) {
    for (const ListField& field : list.fields) {
      EXPECT_EQ(Answer(list, {{}, "-" + field.key, field.key, {}}).rows.size(), list.rows.size());
      if (field.kind != FieldKind::kCredentialType) {
        const std::size_t without = Answer(list, {{field.key + " ="}, "", "", {}}).rows.size();
        const std::size_t with = Answer(list, {{field.title + " <>"}, "", "", {}}).rows.size();
        EXPECT_EQ(without + with, list.rows.size()) << field.key;
      }
    }
  }
}

TEST_F(EveryList, FindsCredentialsByEveryNameOfTheirType) {
  CredentialDesk desk(session(), 2, DeskScreen::kCredentials);
  const List list = CredentialList(session(), desk);
  const std::size_t cards = Answer(list, {{"type = card26"}, "", "", {}}).rows.size();
  EXPECT_GT(cards, 0U);
  for (const char* name : {"Standard 26-Bit Card", "standard 26 bit card"}) {
    EXPECT_EQ(Answer(list, {{std::string("type = ") + name}, "", "", {}}).rows.size(), cards);
  }
}

}  // namespace
}  // namespace qorhost::test
