#include "StepEntityReader.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "VRELBufferHandle.h"

TEST(StepEntityReaderTest, GetEntityIdNeedsInt) {
  struct Row {
    std::uint64_t number;
    VRINResult result;
    int id;
  };
  Row const rows[] = {{0, VREL_S_OK, 0},
                      {2147483647, VREL_S_OK, 2147483647},
                      {2147483648, VREL_E_FAIL, -5},
                      {4294967296, VREL_E_FAIL, -5},
                      {UINT64_MAX - 1, VREL_E_FAIL, -5}};
  VRELBufferHandle buffer;
  for (Row const& row : rows) {
    StepEntityReader const entity(buffer, row.number, 0, 1);
    int id = -5;
    EXPECT_EQ(entity.GetEntityId(id), row.result) << row.number;
    EXPECT_EQ(id, row.id) << row.number;
    EXPECT_EQ(entity.Number(), row.number);
  }
}

TEST(StepEntityReaderTest, StoresPositionAndType) {
  VRELBufferHandle buffer;
  StepEntityReader entity(buffer, 1, 5'000'000'000, 4'294'967'295);
  EXPECT_EQ(entity.Offset(), 5'000'000'000U);
  EXPECT_EQ(entity.Line(), 4'294'967'295);
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

TEST(StepEntityReaderTest, LimitsLineNumber) {
  VRELBufferHandle buffer;
  EXPECT_EQ(StepEntityReader(buffer, 1, 0, 4'294'967'296).Line(), 4'294'967'295);
}
