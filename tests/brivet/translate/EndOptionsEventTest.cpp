#include "EndOptionsEvent.h"

#include <gtest/gtest.h>

#include "StreamText.h"

TEST(EndOptionsEventTest, DescribesCounts) {
  EndOptionsEvent event(VREL_S_OK, 12, 3);
  EXPECT_TRUE(event.IsA("Options logging"));
  EXPECT_EQ(event.GetLevel(), VREL_LEVEL_INFO);
  EXPECT_EQ(event.getTaskResult(), VREL_S_OK);
  EXPECT_EQ(event.GetKind(), 1);
  EXPECT_EQ(TextOf([&event](VRELOutputStream* stream) { event.GetFormattedDescription(stream); }),
            "Options : 12 set, 3 unknown\n"
            "------------------------------------------------------------\n");
}
