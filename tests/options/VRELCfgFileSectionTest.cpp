#include "VRELCfgFileSection.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(VRELCfgFileSectionTest, StartsWithoutKeys) {
  VRELCfgFileSection const section("Import");
  EXPECT_TRUE(section.GetSectionName() == "Import");
  EXPECT_EQ(section.GetNumKeys(), 0);
  EXPECT_EQ(section.GetKey(0), nullptr);
  EXPECT_EQ(section.findKey("unit"), nullptr);
  EXPECT_TRUE(VRELCfgFileSection("").GetSectionName() == "");
  EXPECT_TRUE(VRELCfgFileSection(nullptr).GetSectionName() == "");
}

TEST(VRELCfgFileSectionTest, KeepsNameAsBytes) {
  EXPECT_TRUE(VRELCfgFileSection("\xFF\xC3").GetSectionName() == "\xFF\xC3");
}

TEST(VRELCfgFileSectionTest, KeepsKeysInOrder) {
  VRELCfgFileSection section("Import");
  VRELCfgFileKey* const unit = section.createKey("unit");
  VRELCfgFileKey* const layer = section.createKey("layer");
  VRELCfgFileKey* const unitAgain = section.createKey("unit");
  EXPECT_EQ(section.GetNumKeys(), 3);
  EXPECT_EQ(section.GetKey(0), unit);
  EXPECT_EQ(section.GetKey(1), layer);
  EXPECT_EQ(section.GetKey(2), unitAgain);
  EXPECT_NE(unit, unitAgain);
  for (int index : {-2147483647 - 1, -1, 3, 2147483647}) EXPECT_EQ(section.GetKey(index), nullptr);
  EXPECT_EQ(section.findKey("unit"), unit);
  EXPECT_EQ(section.findKey("layer"), layer);
}

TEST(VRELCfgFileSectionTest, CreateKeyWithExpectedValues) {
  VRELCfgFileSection section("Import");
  VRELCfgFileKey* const first = section.createKey("unit", 2);
  VRELCfgFileKey* const second = section.createKey("unit", 1);
  EXPECT_NE(first, second);
  EXPECT_EQ(section.GetKey(0), first);
  EXPECT_EQ(section.GetKey(1), second);
  EXPECT_EQ(section.findKey("unit"), first);
  EXPECT_EQ(first->GetNumValues(), 0);
}

TEST(VRELCfgFileSectionTest, NamesAreCaseSensitive) {
  VRELCfgFileSection section("Import");
  section.createKey("unit");
  EXPECT_EQ(section.findKey("Unit"), nullptr);
  EXPECT_EQ(section.findKey("unit "), nullptr);
  EXPECT_EQ(section.findKey("uni"), nullptr);
  EXPECT_EQ(section.findKey(""), nullptr);
  EXPECT_EQ(section.findKey(nullptr), nullptr);
}

TEST(VRELCfgFileSectionTest, FindKeyWhileGrowing) {
  VRELCfgFileSection section("Import");
  for (int i = 0; i < 100; ++i) {
    std::string const name = "key" + std::to_string(i);
    EXPECT_EQ(section.findKey(name.c_str()), nullptr);
    section.createKey(name.c_str());
    section.createKey("again");
    EXPECT_EQ(section.findKey(name.c_str()), section.GetKey(2 * i));
    EXPECT_EQ(section.findKey("again"), section.GetKey(1));
    EXPECT_EQ(section.findKey("key0"), section.GetKey(0));
  }
}

}  // namespace
