#include "VRELEndProductEvent.h"

#include <gtest/gtest.h>

#include <memory>

#include "TaskEventFacts.h"

namespace {

TEST(VRELEndProductEventTest, HasProductTask) {
  VRINResult result = VREL_E_FAIL;
  VRELEndProductEvent event(result);
  ExpectTaskEvent(event, 1, "Product End", "Product");
  EXPECT_EQ(event.getTaskResult(), VREL_E_FAIL);
}

TEST(VRELEndProductEventTest, WritesResult) {
  struct {
    long result;
    char const* text;
  } const cases[] = {
      {VREL_S_OK, "Product Completed Successfully\n"},
      {VREL_E_ABORTED, "Product Aborted\n"},
      {VREL_S_PARTIAL, "Product Failed with code 1 (Partial Success)\n"},
      {VREL_S_NO_ENTITY, "Product Failed with code 2 (No Entity to Translate)\n"},
      {VREL_S_NO_GEOMETRY, "Product Failed with code 3 (No translatable geometry)\n"},
      {VREL_E_FAIL, "Product Failed with code 16777217 (Failure)\n"},
      {VREL_E_INVALID_FILE, "Product Failed with code 16777237 (Invalid file)\n"},
      // Has the criticity of an abort, but is not VREL_E_ABORTED.
      {0x2000004, "Product Failed with code 33554436 (Unknown Result)\n"},
      {VREL_UNDETERMINED, "Product Failed with code 50331654 (Undetermined)\n"},
      {-1, "Product Failed with code -1 (Unknown Result)\n"},
  };
  for (auto const& each : cases) EXPECT_EQ(DescriptionOf(VRELEndProductEvent(each.result)), each.text);
}

TEST(VRELEndProductEventTest, WritesToSeveralStreams) {
  VRELEndProductEvent event(VREL_S_OK);
  for (int i = 0; i < 2; ++i) {
    auto const stream = std::make_unique<VRELStringOutputStream>();
    event.GetFormattedDescription(stream.get());
    EXPECT_EQ(TakeText(*stream), "Product Completed Successfully\n");
  }
  event.GetFormattedDescription(nullptr);
}

TEST(VRELEndProductEventTest, CopyIsIndependent) {
  auto source = std::make_unique<VRELEndProductEvent>(VREL_E_ABORTED);
  VRELEndProductEvent copy(*source);
  source->setTaskResult(VREL_S_OK);
  EXPECT_EQ(DescriptionOf(*source), "Product Completed Successfully\n");
  source.reset();
  ExpectTaskEvent(copy, 1, "Product End", "Product");
  EXPECT_EQ(DescriptionOf(copy), "Product Aborted\n");
}

}  // namespace
