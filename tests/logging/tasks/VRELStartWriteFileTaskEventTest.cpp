#include "VRELStartWriteFileTaskEvent.h"

#include <gtest/gtest.h>

#include "TaskEventFacts.h"

namespace {

TEST(VRELStartWriteFileTaskEventTest, CopiesPath) {
  VRELFilePath path("parts/wheel.html");
  VRELStartWriteFileTaskEvent event(path);
  path = VRELFilePath("other");
  ExpectTaskEvent(event, 0, "Writing File", "File Write");
  EXPECT_EQ(event.GetFilePath().GetPath().toUtf8(), "parts/wheel.html");
  EXPECT_EQ(DescriptionOf(event), "");
  EXPECT_EQ(sizeof(VRELStartWriteFileTaskEvent), sizeof(VRELTaskEvent) + sizeof(VRELFilePath));
}

}  // namespace
