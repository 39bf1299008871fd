#include "VRELEndReadEntitiesTaskEvent.h"

#include <gtest/gtest.h>

#include <string>

#include "TaskEventFacts.h"

namespace {

TEST(VRELEndReadEntitiesTaskEventTest, WritesResult) {
  std::string const rule = std::string(80, '-') + "\n";
  VRELEndReadEntitiesTaskEvent event(VREL_S_NO_ENTITY);
  ExpectTaskEvent(event, 1, "Entity Reading", "Read Entities");
  EXPECT_EQ(DescriptionOf(event), rule + "Entity Reading Result : No Entity to Translate\n" + rule);
}

}  // namespace
