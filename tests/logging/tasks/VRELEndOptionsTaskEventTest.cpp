#include "VRELEndOptionsTaskEvent.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "TaskEventFacts.h"

namespace {

class EndOptions : public VRELEndOptionsTaskEvent {
 public:
  using VRELEndOptionsTaskEvent::VRELEndOptionsTaskEvent;
  void GetFormattedDescription(VRELOutputStream* stream) override { WriteText(stream, "no more options\n"); }
};

TEST(VRELEndOptionsTaskEventTest, IsAbstract) {
  EXPECT_TRUE(std::is_abstract_v<VRELEndOptionsTaskEvent>);
  VRINResult result = VREL_S_PARTIAL;
  EndOptions event(result);
  ExpectTaskEvent(event, 1, "Options logging", "Options");
  EXPECT_EQ(event.getTaskResult(), VREL_S_PARTIAL);
  EXPECT_EQ(DescriptionOf(event), "no more options\n");
}

}  // namespace
