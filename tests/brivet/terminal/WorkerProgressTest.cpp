#include "WorkerProgress.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "VRELOutputStream.h"

namespace {

class MarkStream final : public VRELOutputStream {
 public:
  int write(char const* bytes, int count) override {
    text.append(bytes, static_cast<std::size_t>(count));
    return count;
  }
  void flush() override { flushed = text.size(); }
  void close() override {}

  std::string text;
  std::size_t flushed = 0;
};

class CallRecorder final : public Progress {
 public:
  void Begin(char const* stage, long total) override { calls += std::string(stage) + std::to_string(total) + " "; }
  void Done(long units) override { calls += std::to_string(units) + " "; }
  void End() override { calls += "end "; }

  std::string calls;
};

}  // namespace

TEST(WorkerProgressTest, MarksStepsOfBothStages) {
  CallRecorder next;
  MarkStream stream;
  WorkerProgress progress(next, stream);
  progress.Begin("reading", 1000);
  EXPECT_EQ(stream.text, "");
  progress.Done(19);
  EXPECT_EQ(stream.text, "");
  progress.Done(20);
  EXPECT_EQ(stream.text, "\x01");
  EXPECT_EQ(stream.flushed, 1U);
  progress.Done(500);
  progress.Done(100);
  EXPECT_EQ(stream.text, std::string(25, '\x01'));
  progress.End();
  progress.Begin("writing", 4);
  EXPECT_EQ(stream.text.size(), 50U);
  progress.Done(1);
  EXPECT_EQ(stream.text.size(), 62U);
  progress.Done(LONG_MAX);
  EXPECT_EQ(stream.text, std::string(100, '\x01'));
  EXPECT_EQ(next.calls, "reading1000 19 20 500 100 end writing4 1 9223372036854775807 ");
}

TEST(WorkerProgressTest, BoundsMarks) {
  CallRecorder next;
  MarkStream stream;
  WorkerProgress progress(next, stream);
  for (long const total : {LONG_MIN, 0L, 1L}) {
    progress.Begin("x", total);
    progress.Done(LONG_MIN);
    progress.Done(LONG_MAX);
    progress.End();
  }
  EXPECT_EQ(stream.text.size(), 100U);
}
