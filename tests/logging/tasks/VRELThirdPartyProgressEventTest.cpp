#include "VRELThirdPartyProgressEvent.h"

#include <gtest/gtest.h>

#include <vector>

#include "StreamText.h"
#include "VRELEventBus.h"
#include "VRELLogger.h"

namespace {

class ProgressListener : public VRELEventListener {
 public:
  ProgressListener() { VRELEventBus::GetEventBus()->AddListener(this); }
  ~ProgressListener() override { VRELEventBus::GetEventBus()->RemoveListener(this); }
  void HandleEvent(VRELEvent& event) override {
    EXPECT_TRUE(event.IsA("VRELThirdPartyProgressEvent"));
    EXPECT_EQ(event.GetLevel(), 50);
    long time = 0;
    EXPECT_EQ(event.GetTime(time), VREL_E_FAIL);
    double value = 0.0;
    EXPECT_EQ(dynamic_cast<VRELThirdPartyProgressEvent&>(event).GetProgress(value), VREL_S_OK);
    values.push_back(value);
  }
  std::vector<double> values;
};

TEST(VRELThirdPartyProgressEventTest, FireReachesListeners) {
  ProgressListener const listener;
  VRELThirdPartyProgressEvent::Fire(0.5);
  VRELThirdPartyProgressEvent::Fire(-1.0);
  EXPECT_EQ(listener.values, (std::vector<double>{0.5, -1.0}));
}

TEST(VRELThirdPartyProgressEventTest, WritesNothingAndIsNotTimed) {
  VRELThirdPartyProgressEvent event(0.25);
  EXPECT_FALSE(event.IsTimed());
  EXPECT_EQ(TextOf([&](VRELStringOutputStream* stream) { event.GetFormattedDescription(stream); }), "");
  VRELThirdPartyProgressEvent const copy(event);
  double value = 0.0;
  copy.GetProgress(value);
  EXPECT_EQ(value, 0.25);
}

TEST(VRELThirdPartyProgressEventTest, LoggerWritesNothing) {
  VRELLogger logger;
  auto* const stream = new VRELStringOutputStream;
  logger.Initialize(stream, VREL_LEVEL_ALL);
  VRELThirdPartyProgressEvent::Fire(0.5);
  EXPECT_EQ(TakeText(*stream), "");
}

}  // namespace
