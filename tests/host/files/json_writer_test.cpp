// Rows as JSON.
#include "host/files/json_writer.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "frame/date.h"

namespace qorhost::test {
namespace {

using qorcred::FromCivil;
using qorcred::Null;
using qorcred::Value;

nlohmann::json Json(const Table& table) {
  std::ostringstream out;
  PrintJson(out, table);
  return nlohmann::json::parse(out.str());
}

Table OneRow(std::vector<Value> row) {
  Table table;
  for (std::size_t at = 0; at < row.size(); ++at) {
    table.columns.push_back({"C", "c" + std::to_string(at)});
  }
  table.rows.push_back(std::move(row));
  return table;
}

TEST(PrintJson, KeepsTypes) {
  const nlohmann::json row = Json(OneRow({17, std::int16_t{-1}, 2.5, 3.0, true, Null{}, Value(),
                                          "a\"\n", FromCivil({2026, 1, 31, 14, 5, 9})}))[0];
  EXPECT_TRUE(row["c0"].is_number_integer());
  EXPECT_EQ(row["c1"], -1);
  EXPECT_EQ(row["c2"], 2.5);
  EXPECT_TRUE(row["c3"].is_number_integer()) << "a whole number has no point";
  EXPECT_EQ(row["c4"], true);
  EXPECT_TRUE(row["c5"].is_null());
  EXPECT_TRUE(row["c6"].is_null());
  EXPECT_EQ(row["c7"], "a\"\n");
  EXPECT_EQ(row["c8"], "2026-01-31T14:05:09");
}

TEST(PrintJson, StaysJsonWithBytesThatAreNotUtf8) {
  EXPECT_EQ(Json(OneRow({"a\xFF"}))[0]["c0"], "a\xEF\xBF\xBD");
}

TEST(PrintJson, EscapesWhatCouldSteerATerminal) {
  const std::string text =
      "\x1B[2J\x7F \xC2\x9B \xE2\x80\xAE \xD8\x9C \xE2\x81\xA9 \xE2\x80\xA8 Zo\xC3\xAB";
  std::ostringstream out;
  PrintJson(out, OneRow({text}));
  EXPECT_EQ(out.str(),
            "[\n  {\"c0\":\"\\u001b[2J\\u007f \\u009b \\u202e \\u061c \\u2069 \\u2028 "
            "Zo\xC3\xAB\"}\n]\n");
  EXPECT_EQ(Json(OneRow({text}))[0]["c0"], text);
}

TEST(PrintJson, NumbersKeysThatComeTwice) {
  Table table;
  table.columns = {{"RID", "RID"}, {"RID", "RID"}, {"RID_2", "RID_2"}};
  table.rows = {{1, 2, 3}};
  const nlohmann::json row = Json(table)[0];
  EXPECT_EQ(row.size(), 3U);
  EXPECT_EQ(row["RID"], 1);
  EXPECT_EQ(row["RID_2"], 2);
  EXPECT_EQ(row["RID_2_2"], 3);
}

TEST(PrintJson, GivesAnEmptyArrayWithoutRows) {
  Table table;
  table.columns = {{"Name", "name"}};
  EXPECT_EQ(Json(table), nlohmann::json::array());
}

TEST(JsonObjects, ArePutTogetherMemberByMemberOnOneLine) {
  Table rows;
  rows.columns = {{"A", "a"}, {"A", "a"}};
  rows.rows = {{1, "x\x1B"}, {true, Null{}}};
  JsonObject inner;
  inner.Add("numbers", std::vector<double>{1, 2.5}).Add("none", std::vector<double>{});
  JsonObject object;
  object.Add("rows", rows)
      .Add("no rows", Table{})
      .Add("inner", inner)
      .Add("key \"", "text")
      .Add(inner);
  std::ostringstream out;
  object.Print(out);
  JsonObject().Print(out);
  EXPECT_EQ(out.str(),
            "{\"rows\":[{\"a\":1,\"a_2\":\"x\\u001b\"},{\"a\":true,\"a_2\":null}],\"no rows\":[],"
            "\"inner\":{\"numbers\":[1,2.5],\"none\":[]},\"key \\\"\":\"text\","
            "\"numbers\":[1,2.5],\"none\":[]}\n{}\n");
}

}  // namespace
}  // namespace qorhost::test
