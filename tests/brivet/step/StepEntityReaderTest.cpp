#include "StepEntityReader.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "VRELBufferHandle.h"

TEST(StepEntityReaderTest, GetEntityIdNeedsInt) {
  struct Row {
    StepEntityReader::Id stored;
    VRINResult result;
    int id;
  };
  Row const rows[] = {{{0, false}, VREL_S_OK, 0},
                      {{2147483647, false}, VREL_S_OK, 2147483647},
                      {{2147483648, false}, VREL_E_FAIL, -5},
                      {{4294967295, false}, VREL_E_FAIL, -5},
                      {{3, true}, VREL_E_FAIL, -5}};
  VRELBufferHandle buffer;
  for (Row const& row : rows) {
    StepEntityReader const entity(buffer, row.stored, 0);
    int id = -5;
    EXPECT_EQ(entity.GetEntityId(id), row.result) << row.stored.number;
    EXPECT_EQ(id, row.id) << row.stored.number;
    EXPECT_EQ(entity.StoredId().number, row.stored.number);
    EXPECT_EQ(entity.StoredId().isLarge, row.stored.isLarge);
  }
}

TEST(StepEntityReaderTest, StoresPositionAndType) {
  VRELBufferHandle buffer;
  StepEntityReader entity(buffer, {1, false}, 100'000'000'000'000);
  EXPECT_EQ(entity.Offset(), 100'000'000'000'000U);
  EXPECT_FALSE(entity.IsRead());
  EXPECT_FALSE(entity.HasEscapes());
  EXPECT_EQ(entity.Type(), StepEntityReader::kNoType);
  entity.SetType(7, false);
  EXPECT_TRUE(entity.IsRead());
  EXPECT_EQ(entity.Type(), 7U);
  EXPECT_FALSE(entity.HasEscapes());
  entity.SetType(7, true);
  EXPECT_EQ(entity.Type(), 7U);
  EXPECT_TRUE(entity.HasEscapes());
}

// A document has one of them for each instance.
TEST(StepEntityReaderTest, IsSmall) {
  EXPECT_LE(sizeof(StepEntityReader), 48U);
}
