#include "frame/value.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

#include "frame/result_table.h"
#include "outcome.h"

namespace qorcred {
namespace {

using qortest::ForEachRow;

TEST(ValueTest, KnowsItsType) {
  const struct {
    const char* name;
    Value value;
    ValueType type;
  } rows[] = {
      {"Empty", Value(), ValueType::kEmpty},
      {"Null", Null(), ValueType::kNull},
      {"Boolean", true, ValueType::kBoolean},
      {"Integer", std::int16_t{1}, ValueType::kInteger},
      {"Long", 1, ValueType::kLong},
      {"Double", 1.0, ValueType::kDouble},
      {"Date", Date{1.0}, ValueType::kDate},
      {"String", std::string("1"), ValueType::kString},
      {"StringView", std::string_view("1"), ValueType::kString},
      {"Literal", "1", ValueType::kString},
      {"Object", ObjectRef(), ValueType::kObject},
      {"StringArray", StringArray{"1"}, ValueType::kStringArray},
      {"Missing", Missing(), ValueType::kMissing},
  };
  ForEachRow(rows, [&](const auto& row) {
    EXPECT_EQ(row.value.type(), row.type);
    EXPECT_TRUE(row.value.Is(row.type));
    for (const auto& other : rows) {
      const bool same =
          &other == &row || (row.type == ValueType::kString && other.type == row.type);
      EXPECT_EQ(row.value == other.value, same) << other.name;
    }
  });
}

TEST(ValueTest, GivesItsContentForExactlyItsType) {
  Value value(7);
  ASSERT_NE(value.As<std::int32_t>(), nullptr);
  EXPECT_EQ(*value.As<std::int32_t>(), 7);
  EXPECT_EQ(value.As<std::int16_t>(), nullptr);
  EXPECT_EQ(value.As<bool>(), nullptr);
  *value.As<std::int32_t>() = 8;
  EXPECT_EQ(value, Value(8));
}

TEST(ValueTest, SharesObjectsAndCopiesArrays) {
  const ObjectRef object = std::make_shared<ResultTable>();
  const Value value(object);
  const Value copy = value;  // NOLINT(performance-unnecessary-copy-initialization)
  EXPECT_EQ(copy, value);
  EXPECT_EQ(*copy.As<ObjectRef>(), object);
  EXPECT_NE(value, Value(ObjectRef(std::make_shared<ResultTable>())));

  const Value array(StringArray{"a"});
  Value changed = array;
  changed.As<StringArray>()->front() = "b";
  EXPECT_EQ(*array.As<StringArray>(), StringArray{"a"});
}

TEST(ValueTest, IsNotMadeFromAPointerByAccident) {
  static_assert(!std::is_constructible_v<Value, int*>);
  static_assert(!std::is_constructible_v<Value, const Object*>);
  static_assert(std::is_nothrow_move_constructible_v<Value>);
  static_assert(std::is_nothrow_move_assignable_v<Value>);
}

}  // namespace
}  // namespace qorcred
