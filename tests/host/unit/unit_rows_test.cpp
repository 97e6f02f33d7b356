#include "host/unit/unit_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>

#include "frame/date.h"
#include "frame/result_table.h"
#include "tests/host/unit/sample_code.h"

namespace {

using qorcred::Null;
using qorcred::Value;
using qorhost::RowReading;
using qortest::SampleCode;
using ::testing::HasSubstr;
using namespace qorcred::unit_place;  // the places

constexpr std::int32_t kFirst = 2;

// A row with everything, behind two other columns.
qorcred::TableView SampleRow() {
  const qorcred::TableView table(std::make_shared<qorcred::ResultTable>());
  const std::initializer_list<Value> cells{3,
                                           17,
                                           101.0,
                                           "5550101",
                                           "12",
                                           30,
                                           5,
                                           true,
                                           7,
                                           true,
                                           "5550202",
                                           "34",
                                           40,
                                           true,
                                           qorcred::FromCivil({2024, 3, 15, 9, 30, 0}),
                                           qorcred::FromCivil({2030, 12, 31, 23, 59, 59}),
                                           "Adler, K.",
                                           true,
                                           false};
  table.ReDim(0, 0, 0, static_cast<std::int32_t>(cells.size()) - 1);
  std::int32_t column = 0;
  for (const Value& cell : cells) table.SetCell(0, column++, cell);
  return table;
}

RowReading ReadWith(std::int32_t column, const Value& cell) {
  const qorcred::TableView table = SampleRow();
  table.SetCell(0, kFirst + column, cell);
  return qorhost::CodeFromRow(table, 0, kFirst);
}

TEST(UnitRowsTest, ARowBecomesACode) {
  const RowReading reading = qorhost::CodeFromRow(SampleRow(), 0, kFirst);
  EXPECT_EQ(reading.obstacle, "");
  EXPECT_EQ(reading.code, SampleCode());
}

TEST(UnitRowsTest, MissingValuesHaveTheirOwnForm) {
  const struct {
    std::int32_t column;
    Place place;
    const char* text;
  } rows[] = {{1, kPhone, ""},           {3, kTimeDelay, "2"},    {4, kDndSchedule, ""},
              {5, kIsDndChecked, "0"},   {10, kCfTimeDelay, "2"}, {11, kActive, "0"},
              {12, kStartDateUsed, "0"}, {12, kStartDate, ""},    {12, kStartTime, ""},
              {13, kEndDateUsed, "0"},   {14, kDisplayName, ""}};
  for (const auto& row : rows) {
    const RowReading reading = ReadWith(row.column, Null{});
    EXPECT_EQ(reading.obstacle, "") << row.column;
    EXPECT_EQ(reading.code[row.place], row.text) << row.column;
  }
}

TEST(UnitRowsTest, TheTwoDisplayFlagsAreTheMode) {
  const struct {
    Value name;
    Value code;
    const char* mode;
  } rows[] = {{true, true, "0"},     {true, false, "1"},  {false, true, "2"}, {false, false, "3"},
              {Null{}, Null{}, "0"}, {Null{}, true, "2"}, {true, Null{}, "1"}};
  for (const auto& row : rows) {
    const qorcred::TableView table = SampleRow();
    table.SetCell(0, kFirst + 15, row.name);
    table.SetCell(0, kFirst + 16, row.code);
    EXPECT_EQ(qorhost::CodeFromRow(table, 0, kFirst).code[kDisplayMode], row.mode);
  }
}

TEST(UnitRowsTest, WhatTheNotationCannotHoldIsTold) {
  const struct {
    std::int32_t column;
    Value cell;
    const char* obstacle;
  } rows[] = {
      {0, 1.5, "whole number"},
      {0, -1.0, "whole number"},
      {0, 1e15, "whole number"},
      {12, qorcred::FromCivil({1999, 12, 31, 0, 0, 0}), "start date lies in the year 1999"},
      {13, qorcred::FromCivil({2100, 1, 1, 0, 0, 0}), "end date lies in the year 2100"},
      {14, "O'Neil", "apostrophe"},
      {3, -5, "number of digits"},
  };
  for (const auto& row : rows) {
    EXPECT_THAT(ReadWith(row.column, row.cell).obstacle, HasSubstr(row.obstacle));
  }
}

}  // namespace
