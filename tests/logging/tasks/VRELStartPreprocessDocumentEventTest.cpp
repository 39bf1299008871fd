#include "VRELStartPreprocessDocumentEvent.h"

#include <gtest/gtest.h>

#include "TaskEventFacts.h"

namespace {

TEST(VRELStartPreprocessDocumentEventTest, NameContainsDocument) {
  VRELStartPreprocessDocumentEvent source(true);
  ExpectTaskEvent(source, 0, "Start Source Document Preprocessing", "Source Document Preprocessing");
  VRELStartPreprocessDocumentEvent target(false);
  ExpectTaskEvent(target, 0, "Start Target Document Preprocessing", "Target Document Preprocessing");
  EXPECT_EQ(DescriptionOf(source) + DescriptionOf(target), "");
}

}  // namespace
