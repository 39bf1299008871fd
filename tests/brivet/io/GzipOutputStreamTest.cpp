#include "GzipOutputStream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <string>

#include "ChildProcess.h"
#include "ScratchDirectory.h"

namespace {

// Stores up to `room` bytes.
class LimitedStream final : public VRELOutputStream {
 public:
  explicit LimitedStream(std::size_t limit) : room(limit) {}
  int write(char const* buffer, int count) override {
    std::size_t const stored = std::min(static_cast<std::size_t>(count), room - bytes.size());
    bytes.append(buffer, stored);
    return static_cast<int>(stored);
  }
  void flush() override {}
  void close() override {}

  std::string bytes;

 private:
  std::size_t room;
};

}  // namespace

TEST(GzipOutputStreamTest, WritesWhatGzipReads) {
  std::string plain;
  LimitedStream target(1 << 20U);
  GzipOutputStream stream(target);
  for (int i = 0; i < 30000; ++i) {
    std::string const line = std::to_string(i * i) + "\n";
    EXPECT_EQ(stream.write(line.data(), static_cast<int>(line.size())), static_cast<int>(line.size()));
    plain += line;
  }
  EXPECT_EQ(stream.write("", 0), 0);
  EXPECT_TRUE(stream.Finish());
  EXPECT_LT(target.bytes.size(), plain.size() / 2);
  ScratchDirectory const folder;
  ChildResult const result = RunProgram({"gzip", "-dc", folder.Write("a.gz", target.bytes)});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(result.output == plain);
}

TEST(GzipOutputStreamTest, RefusesNegativeCount) {
  LimitedStream target(100);
  GzipOutputStream stream(target);
  EXPECT_EQ(stream.write("a", 1), 1);
  EXPECT_EQ(stream.write("b", -1), -1);
  EXPECT_EQ(stream.write("b", INT_MIN), -1);
  EXPECT_EQ(stream.write("c", 1), 1);
  EXPECT_TRUE(stream.Finish());
  ScratchDirectory const folder;
  EXPECT_EQ(RunProgram({"gzip", "-dc", folder.Write("a.gz", target.bytes)}).output, "ac");
}

TEST(GzipOutputStreamTest, ReportsFailureOfTarget) {
  LimitedStream target(100);
  GzipOutputStream stream(target);
  int result = 0;
  unsigned int state = 1;
  for (int i = 0; i < 200000 && result != -1; ++i) {
    state = state * 1664525U + 1013904223U;
    char const byte = static_cast<char>(state >> 24U);
    result = stream.write(&byte, 1);
  }
  EXPECT_EQ(result, -1);
  EXPECT_FALSE(stream.Finish());
  LimitedStream small(15);
  GzipOutputStream other(small);
  EXPECT_EQ(other.write("x", 1), 1);
  EXPECT_FALSE(other.Finish());
}
