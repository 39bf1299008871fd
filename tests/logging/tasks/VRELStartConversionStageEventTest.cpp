#include "VRELStartConversionStageEvent.h"

#include <gtest/gtest.h>

#include <memory>

#include "TaskEventFacts.h"

namespace {

TEST(VRELStartConversionStageEventTest, ReturnsStage) {
  char type[] = "Face";
  VRELStartConversionStageEvent event(type, 12, 37.5, true);
  type[0] = 'X';
  ExpectTaskEvent(event, 0, "VRELStartConversionStageEvent", "(none)");
  EXPECT_STREQ(event.GetEntityType(), "Face");
  EXPECT_EQ(event.GetEntityCount(), 12);
  EXPECT_EQ(event.GetStagePercent(), 37.5);
  EXPECT_TRUE(event.GetLeaf());
  EXPECT_FALSE(event.GetFinished());
  event.SetFinished();
  EXPECT_TRUE(event.GetFinished());
  EXPECT_EQ(DescriptionOf(event), "");
  EXPECT_FALSE(VRELStartConversionStageEvent(type, 12, 37.5, false).GetLeaf());
}

TEST(VRELStartConversionStageEventTest, EmptyTypeIsNull) {
  EXPECT_EQ(VRELStartConversionStageEvent(nullptr, 0, 0, false).GetEntityType(), nullptr);
  EXPECT_EQ(VRELStartConversionStageEvent("", 0, 0, false).GetEntityType(), nullptr);
}

TEST(VRELStartConversionStageEventTest, CopyIsDeep) {
  auto source = std::make_unique<VRELStartConversionStageEvent>("Face", 12, 37.5, true);
  source->SetFinished();
  VRELStartConversionStageEvent copy(*source);
  source.reset();
  EXPECT_STREQ(copy.GetEntityType(), "Face");
  EXPECT_EQ(copy.GetEntityCount(), 12);
  EXPECT_EQ(copy.GetStagePercent(), 37.5);
  EXPECT_TRUE(copy.GetFinished());
  EXPECT_TRUE(copy.GetLeaf());
  EXPECT_EQ(IdentifierOf(copy), "(none)");
}

TEST(VRELStartConversionStageEventTest, AddsFiveFields) {
  EXPECT_EQ(sizeof(VRELStartConversionStageEvent), sizeof(VRELTaskEvent) + sizeof(double) + sizeof(char*) + 8);
}

}  // namespace
