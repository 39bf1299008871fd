#include "ModuleOptions.h"

#include <gtest/gtest.h>

#include "VRELOptions.h"
#include "VRELString.h"

TEST(ModuleOptionsTest, FindsValues) {
  VRELOptions store;
  store.AddOptionParseValue(VRELString("Unit"), VRELString("inch"));
  store.AddOptionParseValue(VRELString("Stl.*.Writer.Binary"), VRELString("On"));
  store.AddOptionParseValue(VRELString("Stl.*.Reader.Count"), VRELString("7"));
  store.AddOptionParseValue(VRELString("Step.*.Reader.Size"), VRELString("2.5"));
  ModuleOptions const reader(&store, "Stl", ModuleOptions::Reader);
  EXPECT_EQ(reader.GetString("Unit", "mm"), "inch");
  EXPECT_FALSE(reader.GetBool("Binary", false));
  EXPECT_TRUE(ModuleOptions(&store, "Stl", ModuleOptions::Writer).GetBool("Binary", false));
  EXPECT_EQ(reader.GetInt("Count", 1), 7);
  EXPECT_EQ(reader.GetDouble("Size", 1.5), 1.5);
  EXPECT_EQ(ModuleOptions(&store, "Step", ModuleOptions::Reader).GetDouble("Size", 1.5), 2.5);
}

TEST(ModuleOptionsTest, ReturnsDefaultsWithoutStore) {
  ModuleOptions const options(nullptr, "Stl", ModuleOptions::Reader);
  EXPECT_EQ(options.GetString("Unit", "mm"), "mm");
  EXPECT_EQ(options.GetInt("Count", 3), 3);
}
