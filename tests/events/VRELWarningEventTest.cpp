#include "VRELWarningEvent.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "RecordingListener.h"

namespace {

TEST(VRELWarningEventTest, FireSendsLongMessage) {
  RecordingListener const listener;
  std::string const text(5000, 'x');
  VRELWarningEvent::Fire(5010, "<%s> %d", text.c_str(), 7);
  ASSERT_EQ(listener.events.size(), 1u);
  EXPECT_EQ(listener.events[0].name, "VRELWarningEvent");
  EXPECT_EQ(listener.events[0].level, 50);
  EXPECT_EQ(listener.events[0].text, "<" + text + "> 7");
}

TEST(VRELWarningEventTest, FireCutsAtSize) {
  std::string const text = std::string(2000, 'x') + "end";
  struct {
    int size;
    std::string expected;
  } const rows[] = {
      {2004, text},
      {2003, text},
      {2002, std::string(2000, 'x') + "en"},
      {1025, std::string(1025, 'x')},
      {1024, std::string(1024, 'x')},
      {1023, std::string(1023, 'x')},
      {5, "xxxxx"},
      {1, "x"},
      {INT_MAX, text},
      {0, "(none)"},
      {-1, "(none)"},
      {INT_MIN, "(none)"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.size);
    RecordingListener const listener;
    VRELWarningEvent::Fire(row.size, "%s", text.c_str());
    EXPECT_EQ(listener.Texts(), std::vector<std::string>{row.expected});
  }
}

TEST(VRELWarningEventTest, FireFormatsLongMessageOnce) {
  RecordingListener const listener;
  VRELWarningEvent::Fire(100, "5%% %s", "%%d");
  EXPECT_EQ(listener.Texts(), std::vector<std::string>{"5% %%d"});
}

TEST(VRELWarningEventTest, FireOfNullSendsNothing) {
  RecordingListener const listener;
  char const* const null = nullptr;
  VRELWarningEvent::Fire(100, null);
  VRELWarningEvent::Fire(null);
  EXPECT_TRUE(listener.events.empty());
  VRELWarningEvent::Fire(100, "");
  EXPECT_EQ(listener.Texts(), std::vector<std::string>{"(none)"});
}

}  // namespace
