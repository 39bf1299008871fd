#include "ProgressReporter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Gk_ObservableDoc.h"
#include "Gk_ProgressObserver.h"
#include "Gk_String.h"
#include "VRELEventBus.h"
#include "VRELEventListener.h"
#include "VRELThirdPartyProgressEvent.h"

namespace {

using Texts = std::vector<std::string>;

class RecordingObserver final : public Gk_ProgressObserver {
 public:
  RecordingObserver() {
    Gk_ObservableDoc::addObservable(ProgressReporter::kObservable, ProgressType);
    Gk_ObservableDoc::attachObserver(ProgressReporter::kObservable, this);
  }
  ~RecordingObserver() { Gk_ObservableDoc::removeObserver(ProgressReporter::kObservable, this); }
  RecordingObserver(RecordingObserver const&) = delete;
  RecordingObserver& operator=(RecordingObserver const&) = delete;

  Type getType() const override { return ProgressType; }
  void setMax(int steps) override { calls.push_back("max " + std::to_string(steps)); }
  void setDone(int steps) override { calls.push_back("done " + std::to_string(steps)); }
  void setOver(double /*seconds*/) override { calls.emplace_back("over"); }
  void setIntInfo(int /*value*/) override {}
  void setDoubleInfo(double /*value*/) override {}
  void setStringInfo(Gk_String const& value) override {
    char const* const text = value;
    calls.emplace_back(text);
  }

  Texts calls;
};

class ProgressEvents final : public VRELEventListener {
 public:
  ProgressEvents() { VRELEventBus::GetEventBus()->AddListener(this); }
  ~ProgressEvents() override { VRELEventBus::GetEventBus()->RemoveListener(this); }
  ProgressEvents(ProgressEvents const&) = delete;
  ProgressEvents& operator=(ProgressEvents const&) = delete;

  void HandleEvent(VRELEvent& event) override {
    auto const* const progress = dynamic_cast<VRELThirdPartyProgressEvent const*>(&event);
    double value = -1;
    if (progress != nullptr && progress->GetProgress(value).IsSuccess()) values.push_back(value);
  }

  std::vector<double> values;
};

}  // namespace

TEST(ProgressReporterTest, ReportsEachStepOnce) {
  RecordingObserver const observer;
  ProgressEvents const events;
  ProgressReporter progress;
  progress.Begin("reading", 1000);
  for (long const units : {0L, 9L, 10L, 19L, 500L, 499L, 999L, 1000L, 2000L}) progress.Done(units);
  progress.End();
  EXPECT_EQ(observer.calls,
            (Texts{"reading", "max 100", "done 0", "done 1", "done 50", "done 99", "done 100", "over"}));
  EXPECT_EQ(events.values, (std::vector<double>{0.0, 0.01, 0.5, 0.99, 1.0}));
}

TEST(ProgressReporterTest, AcceptsAnyTotal) {
  RecordingObserver const observer;
  ProgressReporter progress;
  progress.Begin("writing", 0);
  progress.Done(0);
  progress.End();
  progress.Begin("reading", 3);
  progress.Done(1);
  progress.Done(-5);
  progress.End();
  EXPECT_EQ(observer.calls,
            (Texts{"writing", "max 100", "done 0", "over", "reading", "max 100", "done 0", "done 33", "over"}));
}
