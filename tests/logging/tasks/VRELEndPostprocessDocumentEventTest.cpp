#include "VRELEndPostprocessDocumentEvent.h"

#include <gtest/gtest.h>

#include <string>

#include "TaskEventFacts.h"

namespace {

TEST(VRELEndPostprocessDocumentEventTest, WritesResult) {
  std::string const rule = std::string(80, '-') + "\n";
  VRELEndPostprocessDocumentEvent event(VREL_E_UNEXPECTED);
  ExpectTaskEvent(event, 1, "Target Document Postprocessing", "Target Document Postprocessing");
  EXPECT_EQ(DescriptionOf(event), rule + "Target Document Postprocessing Result : Unexpected Error\n" + rule);
}

}  // namespace
