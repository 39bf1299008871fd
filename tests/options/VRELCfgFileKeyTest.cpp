#include "VRELCfgFileKey.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(VRELCfgFileKeyTest, StartsWithoutValues) {
  VRELCfgFileKey const key("layers");
  EXPECT_EQ(key.GetName().toUtf8(), "layers");
  EXPECT_EQ(key.GetNumValues(), 0);
  EXPECT_EQ(key.GetValue(0).toUtf8(), "");
  EXPECT_EQ(key.GetAllValues().toUtf8(), "");
}

TEST(VRELCfgFileKeyTest, AppendsValues) {
  VRELCfgFileKey key("layers");
  key.AppendValue("1");
  EXPECT_EQ(key.GetAllValues().toUtf8(), "1");
  key.AppendValue(" two ");
  key.AppendValue("");
  key.AppendValue("a,b");
  EXPECT_EQ(key.GetNumValues(), 4);
  EXPECT_EQ(key.GetValue(0).toUtf8(), "1");
  EXPECT_EQ(key.GetValue(1).toUtf8(), " two ");
  EXPECT_EQ(key.GetValue(2).toUtf8(), "");
  EXPECT_EQ(key.GetValue(3).toUtf8(), "a,b");
  EXPECT_EQ(key.GetAllValues().toUtf8(), "1, two ,,a,b");
}

TEST(VRELCfgFileKeyTest, ValueOutOfRangeIsEmpty) {
  VRELCfgFileKey key("layers");
  key.AppendValue("1");
  for (int index : {-2147483647 - 1, -1, 1, 2, 2147483647}) EXPECT_EQ(key.GetValue(index).toUtf8(), "");
}

TEST(VRELCfgFileKeyTest, ManyValuesKeepTheirOrder) {
  VRELCfgFileKey key("layers");
  for (int i = 0; i < 1000; ++i) key.AppendValue(std::to_string(i).c_str());
  ASSERT_EQ(key.GetNumValues(), 1000);
  for (int i = 0; i < 1000; ++i) EXPECT_EQ(key.GetValue(i).toUtf8(), std::to_string(i));
}

TEST(VRELCfgFileKeyTest, ExpectedValuesAreNotLimit) {
  for (int expected : {-1, 0, 1, 3, 20}) {
    VRELCfgFileKey key("layers", expected);
    EXPECT_EQ(key.GetName().toUtf8(), "layers");
    EXPECT_EQ(key.GetNumValues(), 0);
    EXPECT_EQ(key.GetValue(0).toUtf8(), "");
    for (char const* value : {"1", "2", "3", "4"}) key.AppendValue(value);
    EXPECT_EQ(key.GetNumValues(), 4);
    EXPECT_EQ(key.GetAllValues().toUtf8(), "1,2,3,4");
  }
}

TEST(VRELCfgFileKeyTest, NullIsEmptyString) {
  VRELCfgFileKey key(nullptr);
  EXPECT_EQ(key.GetName().toUtf8(), "");
  key.AppendValue(nullptr);
  EXPECT_EQ(key.GetNumValues(), 1);
  EXPECT_EQ(key.GetValue(0).toUtf8(), "");
}

}  // namespace
