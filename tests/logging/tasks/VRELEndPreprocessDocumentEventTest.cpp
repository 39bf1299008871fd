#include "VRELEndPreprocessDocumentEvent.h"

#include <gtest/gtest.h>

#include <string>

#include "TaskEventFacts.h"

namespace {

TEST(VRELEndPreprocessDocumentEventTest, WritesDocumentAndResult) {
  std::string const rule = std::string(80, '-') + "\n";
  VRELEndPreprocessDocumentEvent source(VREL_S_OK, true);
  ExpectTaskEvent(source, 1, "Source Document Preprocessing", "Source Document Preprocessing");
  EXPECT_EQ(DescriptionOf(source), rule + "Source Document Preprocessing Result : Success\n" + rule);
  VRELEndPreprocessDocumentEvent target(VREL_E_NOT_SUPPORTED, false);
  ExpectTaskEvent(target, 1, "Target Document Preprocessing", "Target Document Preprocessing");
  EXPECT_EQ(DescriptionOf(target), rule + "Target Document Preprocessing Result : Not supported\n" + rule);
}

}  // namespace
