#include "VRELTable.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

#include "VRELReferenceHandle.h"
#include "VirtualSlot.h"

namespace {

VRELValue Text(wchar_t const* text) {
  return VRELValue(VRELString(text));
}

// Returns a value as a string, "-" if there is none.
std::string Shown(VRELValue const& value) {
  char const* const text = value;
  return text != nullptr ? text : "-";
}

// Returns the first two columns of a row as "key=value", with "?" for a missing column.
std::string Shown(VRELTable const& table, int row) {
  VRELValue key = Text(L"?");
  VRELValue value = Text(L"?");
  EXPECT_EQ(table.Get(row, &key, &value, nullptr), VREL_S_OK);
  return Shown(key) + "=" + Shown(value);
}

std::vector<std::string> Rows(VRELTable const& table) {
  std::vector<std::string> rows;
  for (int i = 0; i < table.GetRowsCount(); ++i) rows.push_back(Shown(table, i));
  return rows;
}

VRINResult Add(VRELTable& table, VRELValue const& key, VRELValue const& value) {
  return table.Add(&key, &value, nullptr);
}

VRINResult Set(VRELTable& table, VRELValue const& key, VRELValue const& value) {
  return table.Set(&key, &value, nullptr);
}

// Returns the row of a key, "none" if there is none.
std::string Found(VRELTable const& table, VRELValue const& key) {
  VRELValue keyToo(key);
  VRELValue value;
  VRINResult const result = table.Get(&keyToo, &value, nullptr);
  if (result == VREL_S_OK) return Shown(value);
  EXPECT_EQ(result, VREL_E_FAIL);
  EXPECT_FALSE(value.IsValid());
  return "none";
}

using Texts = std::vector<std::string>;

TEST(VRELTableTest, InitiallyEmpty) {
  VRELTable const table;
  VRELValue value(7);
  EXPECT_EQ(table.GetRowsCount(), 0);
  EXPECT_EQ(table.Get(0, &value, nullptr), VREL_E_INVALID_ARGUMENT);
  EXPECT_EQ(table.Get(&value, nullptr), VREL_E_FAIL);
  EXPECT_TRUE(value == VRELValue(7));
}

TEST(VRELTableTest, VirtualSlots) {
  using ByKey = VRINResult (VRELTable::*)(VRELValue*, ...) const;
  using ByRow = VRINResult (VRELTable::*)(int, VRELValue*, ...) const;
  // After both destructors and the three operations of the base class.
  EXPECT_EQ(SlotOf(&VRELTable::Add), 5U);
  EXPECT_EQ(SlotOf(&VRELTable::Set), 6U);
  EXPECT_EQ(SlotOf(static_cast<ByKey>(&VRELTable::Get)), 7U);
  EXPECT_EQ(SlotOf(&VRELTable::GetRowsCount), 8U);
  EXPECT_EQ(SlotOf(static_cast<ByRow>(&VRELTable::Get)), 9U);
}

TEST(VRELTableTest, AddAppendsRow) {
  VRELTable table;
  VRELValue const key = Text(L"pi");
  VRELValue const number(3.5);
  VRELValue const flag(true);
  EXPECT_EQ(table.Add(&key, &number, &flag, nullptr), VREL_S_OK);
  EXPECT_EQ(Add(table, Text(L"two"), VRELValue(2)), VREL_S_OK);
  EXPECT_EQ(table.GetRowsCount(), 2);
  EXPECT_EQ(Rows(table), (Texts{"pi=3.500000", "two=2"}));
  VRELValue third(0);
  VRELValue first;
  VRELValue second;
  EXPECT_EQ(table.Get(0, &first, &second, &third, nullptr), VREL_S_OK);
  EXPECT_TRUE(third == flag);
}

TEST(VRELTableTest, AddMovesKeyToNewRow) {
  VRELTable table;
  Add(table, Text(L"k"), VRELValue(1));
  Add(table, Text(L"k"), VRELValue(2));
  EXPECT_EQ(Rows(table), (Texts{"k=1", "k=2"}));
  EXPECT_EQ(Found(table, Text(L"k")), "2");
  Set(table, Text(L"k"), VRELValue(3));
  EXPECT_EQ(Rows(table), (Texts{"k=1", "k=3"}));
}

TEST(VRELTableTest, SetReplacesOrAppends) {
  VRELTable table;
  EXPECT_EQ(Set(table, Text(L"a"), VRELValue(1)), VREL_S_OK);
  EXPECT_EQ(Set(table, Text(L"b"), VRELValue(2)), VREL_S_OK);
  EXPECT_EQ(Set(table, Text(L"a"), VRELValue(3)), VREL_S_OK);
  EXPECT_EQ(Rows(table), (Texts{"a=3", "b=2"}));
  EXPECT_EQ(Found(table, Text(L"a")), "3");
  EXPECT_EQ(Found(table, Text(L"b")), "2");
  EXPECT_EQ(Found(table, Text(L"c")), "none");
}

TEST(VRELTableTest, SetAppendsRowsWithoutKey) {
  VRELTable table;
  EXPECT_EQ(Set(table, VRELValue(), VRELValue(1)), VREL_S_OK);
  EXPECT_EQ(Set(table, VRELValue(), VRELValue(2)), VREL_S_OK);
  EXPECT_EQ(Rows(table), (Texts{"-=1", "-=2"}));
  EXPECT_EQ(Found(table, VRELValue()), "none");
}

TEST(VRELTableTest, KeyWithoutKindIsNeverFound) {
  VRELTable table;
  Add(table, VRELValue(), VRELValue(1));
  Add(table, VRELValue(), VRELValue(2));
  EXPECT_EQ(table.GetRowsCount(), 2);
  EXPECT_EQ(Found(table, VRELValue()), "none");
}

TEST(VRELTableTest, KeysDifferByKind) {
  VRELTable table;
  Set(table, VRELValue(1), Text(L"int"));
  Set(table, VRELValue(1.0), Text(L"double"));
  Set(table, VRELValue(true), Text(L"bool"));
  Set(table, Text(L"1"), Text(L"text"));
  EXPECT_EQ(table.GetRowsCount(), 4);
  EXPECT_EQ(Found(table, VRELValue(1)), "int");
  EXPECT_EQ(Found(table, VRELValue(1.0)), "double");
  EXPECT_EQ(Found(table, VRELValue(true)), "bool");
  EXPECT_EQ(Found(table, Text(L"1")), "text");
}

TEST(VRELTableTest, GetByRowChecksRange) {
  VRELTable table;
  Add(table, Text(L"k"), VRELValue(1));
  VRELValue value(7);
  for (int row : {-1, 1, 2, -2147483647}) EXPECT_EQ(table.Get(row, &value, nullptr), VREL_E_INVALID_ARGUMENT) << row;
  EXPECT_TRUE(value == VRELValue(7));
  EXPECT_EQ(table.Get(0, static_cast<VRELValue*>(nullptr)), VREL_S_OK);
}

TEST(VRELTableTest, GetCopiesUntilEitherEnds) {
  VRELTable table;
  VRELValue const a = Text(L"a");
  VRELValue const one(1);
  VRELValue const two(2);
  table.Add(&a, &one, &two, nullptr);
  VRELValue columns[4];
  columns[0] = a;
  columns[2].SetValue(20);
  columns[3].SetValue(30);
  EXPECT_EQ(table.Get(&columns[0], &columns[1], nullptr), VREL_S_OK);
  EXPECT_TRUE(columns[1] == one);
  EXPECT_TRUE(columns[2] == VRELValue(20));
  EXPECT_EQ(table.Get(&columns[0], &columns[1], &columns[2], &columns[3], nullptr), VREL_S_OK);
  EXPECT_TRUE(columns[2] == two);
  EXPECT_TRUE(columns[3] == VRELValue(30));
}

TEST(VRELTableTest, GetOverwritesKey) {
  VRELTable table;
  Add(table, Text(L"k"), VRELValue(1));
  VRELValue key = Text(L"k");
  ASSERT_EQ(table.Get(&key, nullptr), VREL_S_OK);
  EXPECT_TRUE(key == Text(L"k"));
  VRELValue rowKey(9);
  VRELValue value;
  ASSERT_EQ(table.Get(0, &rowKey, &value, nullptr), VREL_S_OK);
  EXPECT_TRUE(rowKey == Text(L"k"));
}

TEST(VRELTableTest, MissingKeyKeepsArguments) {
  VRELTable table;
  Add(table, Text(L"k"), VRELValue(1));
  VRELValue key = Text(L"other");
  VRELValue value(7);
  EXPECT_EQ(table.Get(&key, &value, nullptr), VREL_E_FAIL);
  EXPECT_TRUE(key == Text(L"other"));
  EXPECT_TRUE(value == VRELValue(7));
  EXPECT_EQ(table.Get(static_cast<VRELValue*>(nullptr)), VREL_E_FAIL);
}

TEST(VRELTableTest, RowMayBeEmpty) {
  VRELTable table;
  EXPECT_EQ(table.Add(nullptr), VREL_S_OK);
  EXPECT_EQ(table.Set(nullptr), VREL_S_OK);
  EXPECT_EQ(Rows(table), (Texts{"?=?", "?=?"}));
}

TEST(VRELTableTest, RowsAreCopies) {
  VRELTable table;
  VRELValue const key = Text(L"k");
  VRELValue value(1);
  table.Add(&key, &value, nullptr);
  table.Add(&value, &value, nullptr);
  value.SetValue(2);
  EXPECT_EQ(Rows(table), (Texts{"k=1", "1=1"}));
  Set(table, key, VRELValue(5));
  EXPECT_EQ(Rows(table), (Texts{"k=5", "1=1"}));
}

TEST(VRELTableTest, CopySharesRows) {
  VRELTable table;
  Set(table, Text(L"a"), VRELValue(1));
  VRELTable copy(table);
  VRELTable assigned;
  Set(assigned, Text(L"lost"), VRELValue(9));
  assigned = table;
  Set(table, Text(L"b"), VRELValue(2));
  for (VRELTable* each : {&copy, &assigned}) {
    EXPECT_EQ(Rows(*each), (Texts{"a=1", "b=2"}));
    EXPECT_EQ(Found(*each, Text(L"a")), "1");
    EXPECT_EQ(Found(*each, Text(L"b")), "2");
    EXPECT_EQ(Found(*each, Text(L"lost")), "none");
  }
  Set(copy, Text(L"a"), VRELValue(3));
  EXPECT_EQ(Found(table, Text(L"a")), "3");
  // Many more rows than the shared index has slots.
  for (int i = 0; i < 100; ++i) Set(table, VRELValue(i), VRELValue(i));
  EXPECT_EQ(copy.GetRowsCount(), 102);
  EXPECT_EQ(Found(table, VRELValue(99)), "99");
  EXPECT_EQ(Found(copy, VRELValue(99)), "none");
  EXPECT_EQ(Found(copy, Text(L"a")), "3");
}

TEST(VRELTableTest, IsReferenceCounted) {
  auto* const table = new VRELTable();
  VRELReferenceHandle const handle(table);
  Add(*table, Text(L"k"), VRELValue(1));
  VRELTable const copy(*table);
  EXPECT_EQ(table->GetReferenceCount(), 1U);
  EXPECT_EQ(copy.GetReferenceCount(), 0U);
}

TEST(VRELTableTest, EqualsMapOnRandomOperations) {
  std::mt19937 random(9);
  VRELTable table;
  std::map<int, std::size_t> numbers;
  std::vector<std::pair<int, int>> rows;
  for (int round = 0; round < 3000; ++round) {
    int const key = static_cast<int>(random() % 200);
    int const value = static_cast<int>(random() % 1000);
    auto const known = numbers.find(key);
    ASSERT_EQ(Found(table, VRELValue(key)),
              known == numbers.end() ? "none" : std::to_string(rows[known->second].second));
    if (random() % 3 == 0) {
      Add(table, VRELValue(key), VRELValue(value));
      numbers[key] = rows.size();
      rows.emplace_back(key, value);
    } else {
      Set(table, VRELValue(key), VRELValue(value));
      if (known != numbers.end()) {
        rows[known->second] = {key, value};
      } else {
        numbers[key] = rows.size();
        rows.emplace_back(key, value);
      }
    }
  }
  Texts wanted;
  for (auto const& row : rows) wanted.push_back(std::to_string(row.first) + "=" + std::to_string(row.second));
  EXPECT_EQ(Rows(table), wanted);
}

}  // namespace
