#include "host/dialect/translator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "host/dialect/catalog.h"
#include "test_database.h"

namespace qorhost::dialect::test {

namespace {

using testing::ElementsAre;

std::vector<std::string> ValuesOf(const Translation& translation) {
  std::vector<std::string> values;
  for (const qorcred::Value& value : translation.parameters) {
    values.push_back(Printed(value));
  }
  return values;
}

std::string Insert(int number) {
  return "INSERT INTO CREDENTIALBANK(UnitKey,RID,PINNo,LASTMODIFIEDDATE)VALUES(1,_ROWID_," +
         std::to_string(number) + ",'_LMDATE_')";
}

TEST(TranslatorTest, ParsesARangeOfInsertsOnce) {
  Translator translator;
  const auto first = translator.Translate(Insert(1), kNow).shape;
  for (int number = 2; number <= 1000; ++number) {
    const Translation translation = translator.Translate(Insert(number), kNow);
    ASSERT_EQ(translation.shape, first);
    ASSERT_EQ(translation.parameters[1], qorcred::Value(number));
  }
  EXPECT_EQ(translator.parsed(), 1U);
}

TEST(TranslatorTest, DescribesAnInsert) {
  Translator translator;
  const Translation translation = translator.Translate(Insert(5), kNow);
  EXPECT_EQ(translation.shape->kind, StatementKind::kInsert);
  EXPECT_EQ(translation.shape->table, "CredentialBank");
  EXPECT_TRUE(translation.shape->takesNewRow);
  EXPECT_TRUE(translation.shape->resultTypes.empty());
  EXPECT_THAT(ValuesOf(translation), ElementsAre("1", "5", "'2026-01-31 14:05:09'"));
}

TEST(TranslatorTest, DescribesTheOtherKinds) {
  Translator translator;
  const auto shapeOf = [&](std::string_view sql) { return translator.Translate(sql, kNow).shape; };
  EXPECT_EQ(shapeOf("SELECT RID FROM units")->kind, StatementKind::kSelect);
  EXPECT_EQ(shapeOf("SELECT RID FROM units")->table, "");
  EXPECT_EQ(shapeOf("UPDATE units SET UnitKey=1")->kind, StatementKind::kUpdate);
  EXPECT_EQ(shapeOf("UPDATE units SET UnitKey=1")->table, "Units");
  EXPECT_EQ(shapeOf("DELETE FROM units")->kind, StatementKind::kDelete);
  EXPECT_EQ(shapeOf("DELETE FROM units")->table, "Units");
  EXPECT_FALSE(shapeOf("INSERT INTO units(UnitKey) VALUES(1)")->takesNewRow);
}

TEST(TranslatorTest, AStatementTellsItsKindWithoutAnyEngine) {
  EXPECT_EQ(KindOf("SELECT RID FROM Units WHERE UnitKey=1"), StatementKind::kSelect);
  EXPECT_EQ(KindOf("INSERT INTO Units (UnitKey) VALUES (1)"), StatementKind::kInsert);
  EXPECT_EQ(KindOf("UPDATE Units SET UnitName='a'"), StatementKind::kUpdate);
  EXPECT_EQ(KindOf("DELETE FROM Units"), StatementKind::kDelete);
  for (const char* wrong : {"", "SELECT", "SELECT abc FROM Units", "PRAGMA user_version"}) {
    EXPECT_THROW((void)KindOf(wrong), SqlError) << wrong;
  }
}

TEST(TranslatorTest, BindsTheTimeStampOfEachCall) {
  Translator translator;
  EXPECT_THAT(
      ValuesOf(translator.Translate("SELECT '_LMDATE_', Now(), Date()", kNow)),
      ElementsAre("'2026-01-31 14:05:09'", "'2026-01-31 14:05:09'", "'2026-01-31 00:00:00'"));
  EXPECT_THAT(
      ValuesOf(translator.Translate("SELECT '_LMDATE_', Now(), Date()", "2027-02-28 00:00:01")),
      ElementsAre("'2027-02-28 00:00:01'", "'2027-02-28 00:00:01'", "'2027-02-28 00:00:00'"));
  EXPECT_EQ(translator.parsed(), 1U);
}

TEST(TranslatorTest, TextsThatDifferInAnAliasHaveDifferentShapes) {
  Translator translator;
  const auto one = translator.Translate("SELECT RID AS 'One', 'x' FROM Units", kNow).shape;
  const auto two = translator.Translate("SELECT RID AS 'Two', 'x' FROM Units", kNow).shape;
  const auto again = translator.Translate("SELECT RID AS 'One', 'y' FROM Units", kNow).shape;
  EXPECT_NE(one, two);
  EXPECT_EQ(one, again);
  EXPECT_EQ(translator.parsed(), 2U);
}

TEST(TranslatorTest, AliasesOfTheSameLettersCutElsewhereHaveDifferentShapes) {
  Translator translator;
  const auto shapeOf = [&](std::string_view sql) { return translator.Translate(sql, kNow).shape; };
  EXPECT_NE(shapeOf("SELECT RID 'a', RID 'bc' FROM Units"),
            shapeOf("SELECT RID 'ab', RID 'c' FROM Units"));
}

TEST(TranslatorTest, TextsThatDifferInTheOrderHaveDifferentShapes) {
  Translator translator;
  const auto one = translator.Translate("SELECT RID, UnitKey FROM Units ORDER BY 1", kNow).shape;
  const auto two = translator.Translate("SELECT RID, UnitKey FROM Units ORDER BY 2", kNow).shape;
  EXPECT_NE(one->sql, two->sql);
  EXPECT_EQ(translator.Translate("SELECT RID, UnitKey FROM Units ORDER BY 1", kNow).shape, one);
}

TEST(TranslatorTest, NumbersTextsAndDatesHaveDifferentShapes) {
  Translator translator;
  std::set<std::shared_ptr<const Shape>> shapes;
  for (const char* literal : {"1", "'1'", "#1/1/2026#", "'_LMDATE_'", "-1"}) {
    shapes.insert(
        translator.Translate(std::string("SELECT RID FROM Units WHERE RID = ") + literal, kNow)
            .shape);
  }
  EXPECT_EQ(shapes.size(), 5U);
}

TEST(TranslatorTest, ShapesKeepTheTypesOfTheirParametersApart) {
  Translator translator;
  EXPECT_EQ(translator.Translate("SELECT 1", kNow).parameters[0], qorcred::Value(1));
  EXPECT_EQ(translator.Translate("SELECT 1.5", kNow).parameters[0], qorcred::Value(1.5));
  EXPECT_EQ(translator.Translate("SELECT 3000000000", kNow).parameters[0],
            qorcred::Value(3000000000.0));
  EXPECT_EQ(translator.Translate("SELECT 2147483647", kNow).parameters[0],
            qorcred::Value(2147483647));
  EXPECT_EQ(translator.parsed(), 1U);
}

TEST(TranslatorTest, ALiteralThatDoesNotFitIsRefusedOnEveryCall) {
  Translator translator;
  const std::string good = "UPDATE CredentialBank SET PINNo = '5'";
  const std::string bad = "UPDATE CredentialBank SET PINNo = 'x'";
  EXPECT_THROW(translator.Translate(bad, kNow), SqlError);
  EXPECT_THAT(ValuesOf(translator.Translate(good, kNow)), ElementsAre("5"));
  EXPECT_THROW(translator.Translate(bad, kNow), SqlError);
  EXPECT_EQ(translator.parsed(), 1U);
}

TEST(TranslatorTest, ARefusedStatementLeavesTheTranslatorUsable) {
  Translator translator;
  EXPECT_THROW(translator.Translate("SELECT 'x", kNow), SqlError);
  EXPECT_THROW(translator.Translate("SELECT abc", kNow), SqlError);
  EXPECT_EQ(translator.Translate("SELECT RID FROM Units", kNow).shape->sql,
            "SELECT \"Units\".\"RID\" FROM \"Units\"");
}

// A translator that has met a statement several times reads the next one along it.
class RepeatedStatementTest : public testing::TestWithParam<const char*> {};

TEST_P(RepeatedStatementTest, TellsOthersApart) {
  const auto told = [](Translator& translator, std::string_view sql) {
    try {
      const Translation translation = translator.Translate(sql, kNow);
      std::string text = translation.shape->sql;
      for (const std::string& value : ValuesOf(translation)) {
        text += " | " + value;
      }
      return text;
    } catch (const SqlError& error) {
      return std::string(error.what());
    }
  };
  Translator seasoned;
  for (int round = 0; round < 4; ++round) {
    seasoned.Translate("SELECT RID FROM Units WHERE RID=5 AND UnitName='x'", kNow);
  }
  Translator fresh;
  EXPECT_EQ(told(seasoned, GetParam()), told(fresh, GetParam()));
  EXPECT_EQ(told(seasoned, GetParam()), told(fresh, GetParam()));
}

INSTANTIATE_TEST_SUITE_P(
    Table, RepeatedStatementTest,
    testing::Values("SELECT RID FROM Units WHERE RID=6 AND UnitName='y'",
                    "SELECT RID FROM Units WHERE RID=-6 AND UnitName='y'",
                    "SELECT RID FROM Units WHERE RID=6.5 AND UnitName='y'",
                    "SELECT RID FROM Units WHERE RID=.5 AND UnitName='y'",
                    "SELECT RID FROM Units WHERE RID=6x AND UnitName='y'",
                    "SELECT RID FROM Units WHERE RID=6.5.5 AND UnitName='y'",
                    "SELECT RID FROM Units WHERE RID=6  AND UnitName='y'",
                    "SELECT RID FROM Units WHERE RID='6' AND UnitName='y'",
                    "SELECT RID FROM Units WHERE RID=6 AND UnitName=7",
                    "SELECT RID FROM Units WHERE RID=6 AND UnitName='_LMDATE_'",
                    "SELECT RID FROM Units WHERE RID=6 AND UnitName='O''Brien'",
                    "SELECT RID FROM Units WHERE RID=6 AND UnitName='O'Brien'",
                    "SELECT RID FROM Units WHERE RID=6 AND UnitName='y'''",
                    "SELECT RID FROM Units WHERE RID=6 AND UnitName=\"y'\"",
                    "SELECT RID FROM Units WHERE RID=6 AND UnitName=''",
                    "SELECT RID FROM Units WHERE RID=6 AND UnitName=",
                    "SELECT RID FROM Units WHERE RID=6 AND UnitName='y' ;",
                    "SELECT RID FROM Units WHERE RID=6 AND UnitName='y' OR RID=7",
                    "SELECT RID FROM Units WHERE RID=6", "SELECT RID FROM Units WHERE RID=", ""));

TEST(TranslatorTest, ParsesStatementsThatTakeTurnsOnce) {
  Translator translator;
  for (int number = 1; number <= 300; ++number) {
    const std::string text = std::to_string(number);
    ASSERT_EQ(translator.Translate(Insert(number), kNow).parameters[1], qorcred::Value(number));
    ASSERT_EQ(translator.Translate("UPDATE Units SET UnitName='" + text + "'", kNow).parameters[0],
              qorcred::Value(text));
    ASSERT_EQ(translator.Translate("DELETE FROM Units WHERE RID=" + text, kNow).parameters[0],
              qorcred::Value(number));
  }
  EXPECT_EQ(translator.parsed(), 3U);
}

TEST(TranslatorTest, ShapesOutliveTheirPlaceInTheCache) {
  Translator translator;
  const std::string first = "SELECT RID FROM Units WHERE RID = 1";
  const auto kept = translator.Translate(first, kNow).shape;
  for (int number = 0; number < 600; ++number) {
    translator.Translate("SELECT RID AS a" + std::to_string(number) + " FROM Units", kNow);
  }
  EXPECT_EQ(translator.parsed(), 601U);
  EXPECT_EQ(kept->sql, "SELECT \"Units\".\"RID\" FROM \"Units\" WHERE (\"Units\".\"RID\" = ?)");
  EXPECT_EQ(translator.Translate(first, kNow).shape->sql, kept->sql);
  EXPECT_EQ(translator.parsed(), 602U);
}

// What a statement of its own was translated to, whatever stood before it.
void ExpectOwnTranslation(Translator& translator, const std::string& alias) {
  const auto shape = translator.Translate("SELECT RID AS " + alias + " FROM Units", kNow).shape;
  EXPECT_EQ(shape->sql, "SELECT \"Units\".\"RID\" AS \"" + alias + "\" FROM \"Units\"");
}

TEST(TranslatorTest, TextsThatDifferInAnAliasAreToldApartWhenTheyRepeat) {
  Translator translator;
  for (const char* alias : {"One", "One", "One", "Two", "Two", "One"}) {
    const std::string sql = std::string("SELECT RID AS '") + alias + "' FROM Units";
    EXPECT_EQ(translator.Translate(sql, kNow).shape->sql,
              std::string("SELECT \"Units\".\"RID\" AS \"") + alias + "\" FROM \"Units\"");
  }
  EXPECT_EQ(translator.parsed(), 2U);
}

TEST(TranslatorTest, NumbersThatDifferInTheOrderAreToldApartWhenTheyRepeat) {
  Translator translator;
  for (const char* position : {"1", "1", "1", "2", "2", "1"}) {
    const std::string sql = std::string("SELECT RID, UnitKey FROM Units ORDER BY ") + position;
    EXPECT_EQ(
        translator.Translate(sql, kNow).shape->sql,
        std::string("SELECT \"Units\".\"RID\", \"Units\".\"UnitKey\" FROM \"Units\" ORDER BY ") +
            position);
  }
  EXPECT_EQ(translator.parsed(), 2U);
}

// The translator keeps 512 shapes and remembers which followed which: it forgets those that go.
constexpr int kMostShapes = 512;

TEST(TranslatorTest, AShapeThatGoesWhileItWasTheLastIsNotRemembered) {
  Translator translator;
  for (int number = 0; number < kMostShapes; ++number) {
    ExpectOwnTranslation(translator, "a" + std::to_string(number));
  }
  ExpectOwnTranslation(translator, "a0");
  EXPECT_EQ(translator.parsed(), 512U);
  ExpectOwnTranslation(translator, "b");  // the oldest, a0, goes
  ExpectOwnTranslation(translator, "a1");
  EXPECT_EQ(translator.parsed(), 513U);
  ExpectOwnTranslation(translator, "a0");
  EXPECT_EQ(translator.parsed(), 514U);
}

TEST(TranslatorTest, AShapeThatGoesBehindAStatementOfItsOwnKindIsNotRemembered) {
  Translator translator;
  for (int number = 0; number < kMostShapes; ++number) {
    ExpectOwnTranslation(translator, "a" + std::to_string(number));
  }
  ExpectOwnTranslation(translator, "a0");
  // A statement of which a literal is a part of the shape follows none; the oldest, a0, goes.
  translator.Translate("SELECT RID FROM Units ORDER BY 1", kNow);
  ExpectOwnTranslation(translator, "b");
  ExpectOwnTranslation(translator, "a0");
}

TEST(TranslatorTest, AShapeThatGoesFollowsNoOther) {
  Translator translator;
  ExpectOwnTranslation(translator, "first");
  ExpectOwnTranslation(translator, "second");
  ExpectOwnTranslation(translator, "first");  // follows the second from now on
  for (int number = 0; number < kMostShapes - 1; ++number) {
    ExpectOwnTranslation(translator, "a" + std::to_string(number));  // the first goes with the last
  }
  ExpectOwnTranslation(translator, "second");
  ExpectOwnTranslation(translator, "first");
  EXPECT_EQ(translator.parsed(), 514U);
}

TEST(TranslatorTest, TheShapesThatAreKeptAreTheLatest) {
  Translator translator;
  for (int number = 0; number <= kMostShapes; ++number) {
    ExpectOwnTranslation(translator, "a" + std::to_string(number));
  }
  for (int number = 1; number <= kMostShapes; ++number) {
    ExpectOwnTranslation(translator, "a" + std::to_string(number));
  }
  EXPECT_EQ(translator.parsed(), 513U);
}

TEST(TranslatorTest, ShapesWithAliasesSurviveTheCacheBeingFull) {
  Translator translator;
  for (int round = 0; round < 3; ++round) {
    for (int number = 0; number < 400; ++number) {
      const std::string alias = "a" + std::to_string(number);
      const auto shape =
          translator.Translate("SELECT RID AS '" + alias + "' FROM Units", kNow).shape;
      ASSERT_EQ(shape->sql, "SELECT \"Units\".\"RID\" AS \"" + alias + "\" FROM \"Units\"");
      translator.Translate("SELECT RID AS " + alias + " FROM Units", kNow);
    }
  }
}

TEST(TranslatorTest, LongStatementsAreTranslatedEachTime) {
  Translator translator;
  std::string sql = "SELECT RID FROM Units WHERE RID IN (1";
  for (int number = 0; number < 5000; ++number) {
    sql += ",1";
  }
  sql += ")";
  EXPECT_EQ(translator.Translate(sql, kNow).parameters.size(), 5001U);
  EXPECT_EQ(translator.Translate(sql, kNow).parameters.size(), 5001U);
  EXPECT_EQ(translator.parsed(), 2U);
}

TEST(SqlErrorTest, SaysWhereAndWhat) {
  Translator translator;
  try {
    translator.Translate("SELECT RID\nFROM Nowhere", kNow);
    FAIL() << "translated";
  } catch (const SqlError& error) {
    EXPECT_EQ(error.line(), 2U);
    EXPECT_EQ(error.column(), 6U);
    EXPECT_STREQ(error.what(), "line 2, column 6: unknown table 'Nowhere'");
  }
}

TEST(CatalogTest, FindsNamesInAnyCase) {
  const Table* tenants = FindTable("tENANTS");
  ASSERT_NE(tenants, nullptr);
  EXPECT_EQ(tenants->name, "Tenants");
  ASSERT_NE(FindColumn(*tenants, "lastname"), nullptr);
  EXPECT_EQ(FindColumn(*tenants, "lastname")->type, ColumnType::kText);
  EXPECT_EQ(FindTable("Tenant"), nullptr);
  EXPECT_EQ(FindTable(""), nullptr);
  EXPECT_EQ(FindColumn(*tenants, "PINNo"), nullptr);
}

TEST(CatalogTest, EveryTableHasOneIdentityAndNoNameTwice) {
  std::set<std::string_view> tables;
  for (const Table& table : Tables()) {
    EXPECT_TRUE(tables.insert(table.name).second) << table.name;
    int identities = 0;
    for (const Column& column : table.columns) {
      identities += column.type == ColumnType::kIdentity ? 1 : 0;
      EXPECT_EQ(FindColumn(table, column.name), &column) << table.name << '.' << column.name;
    }
    EXPECT_EQ(identities, 1) << table.name;
  }
}

}  // namespace

}  // namespace qorhost::dialect::test
