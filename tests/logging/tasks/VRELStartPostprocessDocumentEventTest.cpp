#include "VRELStartPostprocessDocumentEvent.h"

#include <gtest/gtest.h>

#include "TaskEventFacts.h"

namespace {

TEST(VRELStartPostprocessDocumentEventTest, NameContainsDocument) {
  VRELStartPostprocessDocumentEvent event;
  ExpectTaskEvent(event, 0, "Start Target Document Postprocessing", "Target Document Postprocessing");
  EXPECT_EQ(DescriptionOf(event), "");
}

}  // namespace
