#include "VRELIndentedChannel.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>
#include <vector>

#include "RecordingListener.h"
#include "VRELInfo.h"
#include "VRELTest.h"
#include "VRELVerbose.h"
#include "VRELWarning.h"

namespace {

using Texts = std::vector<std::string>;

struct ChannelRow {
  char const* name;
  int* counter;
  char const* eventName;
  int level;
  void (*print)(char const* format, ...);
  void (*noTabPrint)(char const* format, ...);
  void (*tab)() noexcept;
  void (*untab)() noexcept;
  void (*print4x4)(float const*);
  void (*print3x4)(double const*);
  void (*printPoints)(float const*, int);
};

template <class Channel>
constexpr ChannelRow Row(char const* name, int& counter, char const* eventName, int level) {
  return {name,
          &counter,
          eventName,
          level,
          Channel::Printf,
          Channel::NoTabPrintf,
          Channel::Tab,
          Channel::Untab,
          Channel::Print4x4Matrix,
          Channel::Print3x4Matrix,
          Channel::PrintPointArray};
}

ChannelRow const kChannels[] = {
    Row<VRELWarning>("VRELWarning", _VRELWarningTab, "VRELWarningEvent", 70),
    Row<VRELInfo>("VRELInfo", _VRELInfoTab, "VRELMessageEvent", 50),
    Row<VRELVerbose>("VRELVerbose", _VRELVerboseTab, "VRELMessageEvent", 50),
    Row<VRELTest>("VRELTest", _VRELTestTab, "VRELTestEvent", 20),
};

class VRELIndentedChannelTest : public testing::Test {
 protected:
  ~VRELIndentedChannelTest() override {
    for (ChannelRow const& channel : kChannels) *channel.counter = 0;
  }

  // Returns the messages that one call sends.
  template <class... Arguments>
  static std::string TextOf(void (*print)(char const*, ...), char const* format, Arguments... arguments) {
    RecordingListener const listener;
    print(format, arguments...);
    Texts const texts = listener.Texts();
    return texts.size() == 1 ? texts[0] : "(" + std::to_string(texts.size()) + " events)";
  }
};

TEST_F(VRELIndentedChannelTest, ChannelsSendTheirEvents) {
  for (ChannelRow const& channel : kChannels) {
    SCOPED_TRACE(channel.name);
    for (auto* print : {channel.print, channel.noTabPrint}) {
      RecordingListener const listener;
      print("%s %d %.1f", "text", 5, 0.5);
      ASSERT_EQ(listener.events.size(), 1u);
      EXPECT_EQ(listener.events[0].name, channel.eventName);
      EXPECT_EQ(listener.events[0].level, channel.level);
      EXPECT_EQ(listener.events[0].text, "text 5 0.5");
    }
  }
}

TEST_F(VRELIndentedChannelTest, NullFormatSendsNothing) {
  for (ChannelRow const& channel : kChannels) {
    SCOPED_TRACE(channel.name);
    RecordingListener const listener;
    *channel.counter = 1;
    channel.print(nullptr);
    channel.noTabPrint(nullptr);
    EXPECT_TRUE(listener.events.empty());
  }
}

TEST_F(VRELIndentedChannelTest, EmptyMessageIsNull) {
  for (ChannelRow const& channel : kChannels) {
    SCOPED_TRACE(channel.name);
    EXPECT_EQ(TextOf(channel.print, ""), "(none)");
    EXPECT_EQ(TextOf(channel.print, "%s", ""), "(none)");
    EXPECT_EQ(TextOf(channel.noTabPrint, ""), "(none)");
    *channel.counter = 1;
    EXPECT_EQ(TextOf(channel.print, ""), "   ");
    EXPECT_EQ(TextOf(channel.noTabPrint, ""), "(none)");
  }
}

TEST_F(VRELIndentedChannelTest, IndentsThreeSpacesPerUnit) {
  for (ChannelRow const& channel : kChannels) {
    SCOPED_TRACE(channel.name);
    EXPECT_EQ(*channel.counter, 0);
    EXPECT_EQ(TextOf(channel.print, "x\n"), "x\n");
    channel.tab();
    EXPECT_EQ(*channel.counter, 1);
    EXPECT_EQ(TextOf(channel.print, "x\n"), "   x\n");
    channel.tab();
    EXPECT_EQ(*channel.counter, 2);
    EXPECT_EQ(TextOf(channel.print, "x\n"), "      x\n");
    EXPECT_EQ(TextOf(channel.noTabPrint, "x\n"), "x\n");
    channel.untab();
    EXPECT_EQ(TextOf(channel.print, "x\n"), "   x\n");
    channel.untab();
    channel.untab();
    EXPECT_EQ(*channel.counter, -1);
    EXPECT_EQ(TextOf(channel.print, "x\n"), "x\n");
  }
}

TEST_F(VRELIndentedChannelTest, CountersAreIndependent) {
  for (ChannelRow const& tabbed : kChannels) {
    tabbed.tab();
    for (ChannelRow const& channel : kChannels) {
      SCOPED_TRACE(std::string(tabbed.name) + " " + channel.name);
      EXPECT_EQ(TextOf(channel.print, "x"), &channel == &tabbed ? "   x" : "x");
    }
    tabbed.untab();
  }
}

TEST_F(VRELIndentedChannelTest, ExtremeCountersAreBounded) {
  for (ChannelRow const& channel : kChannels) {
    SCOPED_TRACE(channel.name);
    struct {
      int counter;
      std::string expected;
    } const rows[] = {
        {-1, "xyz"},
        {INT_MIN, "xyz"},
        {340, std::string(1020, ' ') + "xyz"},
        {341, std::string(1023, ' ')},
        {342, std::string(1023, ' ')},
        {1000000, std::string(1023, ' ')},
        {INT_MAX, std::string(1023, ' ')},
    };
    for (auto const& row : rows) {
      *channel.counter = row.counter;
      EXPECT_EQ(TextOf(channel.print, "xyz"), row.expected) << row.counter;
      EXPECT_EQ(TextOf(channel.noTabPrint, "xyz"), "xyz") << row.counter;
    }
    *channel.counter = INT_MAX;
    channel.tab();
    EXPECT_EQ(*channel.counter, INT_MIN);
    channel.untab();
    EXPECT_EQ(*channel.counter, INT_MAX);
  }
}

TEST_F(VRELIndentedChannelTest, CutsAfter1023Bytes) {
  std::string const fits(1023, 'x');
  for (ChannelRow const& channel : kChannels) {
    SCOPED_TRACE(channel.name);
    EXPECT_EQ(TextOf(channel.print, "%s", fits.c_str()), fits);
    EXPECT_EQ(TextOf(channel.print, "%sy", fits.c_str()), fits);
    EXPECT_EQ(TextOf(channel.noTabPrint, "%sy", fits.c_str()), fits);
    EXPECT_EQ(TextOf(channel.print, (fits + fits).c_str()), fits);
    *channel.counter = 2;
    EXPECT_EQ(TextOf(channel.print, "%s", fits.c_str()), "      " + std::string(1017, 'x'));
    EXPECT_EQ(TextOf(channel.print, "%s", std::string(1017, 'y').c_str()), "      " + std::string(1017, 'y'));
    *channel.counter = 0;
    // The cut is between two percent signs, before the second pass.
    EXPECT_EQ(TextOf(channel.print, "%s", (std::string(1022, 'x') + "%%").c_str()), std::string(1022, 'x') + "%");
    EXPECT_EQ(TextOf(channel.print, "%s", (std::string(1021, 'x') + "%%y").c_str()), std::string(1021, 'x') + "%");
  }
}

TEST_F(VRELIndentedChannelTest, FormatsTwice) {
  for (ChannelRow const& channel : kChannels) {
    SCOPED_TRACE(channel.name);
    for (auto* print : {channel.print, channel.noTabPrint}) {
      EXPECT_EQ(TextOf(print, "100%%%%"), "100%");
      EXPECT_EQ(TextOf(print, "%%%%%%%%"), "%%");
      EXPECT_EQ(TextOf(print, "%d%%%%", 50), "50%");
      EXPECT_EQ(TextOf(print, "%s", "50%% off"), "50% off");
      EXPECT_EQ(TextOf(print, "%s", "%%%%"), "%%");
      EXPECT_EQ(TextOf(print, "%s", "%%%"), "%%");
      EXPECT_EQ(TextOf(print, "50%%"), "50%");
    }
  }
}

TEST_F(VRELIndentedChannelTest, SecondPassReadsNoArgument) {
  char const* const texts[] = {"%s %n %d %5$s %*d",
                               "%s%s%s%s%s%s%s%s%s%s%s%s",
                               "%n%n%n%n%n%n",
                               "%hhn %ln %lln",
                               "%*.*s",
                               "%1$n",
                               "%ls %lc",
                               "%m",
                               "%",
                               "50% off",
                               "%5%",
                               "%Lf %a",
                               "%99999999d"};
  for (ChannelRow const& channel : kChannels) {
    SCOPED_TRACE(channel.name);
    for (char const* text : texts) {
      EXPECT_EQ(TextOf(channel.print, "%s", text), text);
      EXPECT_EQ(TextOf(channel.noTabPrint, "%s", text), text);
    }
    EXPECT_EQ(TextOf(channel.print, "%%s"), "%s");
    EXPECT_EQ(TextOf(channel.print, "%%n %%%%d %%5$s"), "%n %d %5$s");
  }
}

TEST_F(VRELIndentedChannelTest, SecondPassHalvesPercentSigns) {
  std::mt19937 random(20240607);
  char const letters[] = {'%', '%', '%', 's', 'n', 'd', '*', '$', '5', ' ', '\n', '\xE9'};
  for (int round = 0; round < 2000; ++round) {
    std::string text;
    for (std::size_t length = random() % 40; length > 0; --length) text += letters[random() % sizeof letters];
    std::string expected;
    for (std::size_t i = 0; i < text.size();) {
      std::size_t run = 0;
      while (i + run < text.size() && text[i + run] == '%') ++run;
      if (run == 0) {
        expected += text[i++];
      } else {
        expected.append((run + 1) / 2, '%');
        i += run;
      }
    }
    EXPECT_EQ(TextOf(VRELInfo::Printf, "%s", text.c_str()), expected.empty() ? "(none)" : expected);
  }
}

TEST_F(VRELIndentedChannelTest, FormatsWithoutListener) {
  for (ChannelRow const& channel : kChannels) {
    SCOPED_TRACE(channel.name);
    int written = 0;
    channel.print("abc%n", &written);
    EXPECT_EQ(written, 3);
  }
}

TEST_F(VRELIndentedChannelTest, PrintsMatricesByRows) {
  float const by4[16] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12.5F, -13.25F, 1234.5F, -0.0F};
  Texts const rowsBy4 = {
      "[ 0.000,  4.000,  8.000, 12.500]\n",
      "[ 1.000,  5.000,  9.000, -13.250]\n",
      "[ 2.000,  6.000, 10.000, 1234.500]\n",
      "[ 3.000,  7.000, 11.000, -0.000]\n",
  };
  double const by3[12] = {0, 1, 2, 3, -4.5, 5, 6, 7, 8, 9, 1000.0625, 0.0004};
  Texts const rowsBy3 = {
      "[0.000, 3.000, 6.000, 9.000]\n",
      "[1.000, -4.500, 7.000, 1000.062]\n",
      "[2.000, 5.000, 8.000, 0.000]\n",
  };
  for (ChannelRow const& channel : kChannels) {
    SCOPED_TRACE(channel.name);
    {
      RecordingListener const listener;
      channel.print4x4(by4);
      EXPECT_EQ(listener.Texts(), rowsBy4);
      for (RecordedEvent const& event : listener.events) EXPECT_EQ(event.name, channel.eventName);
    }
    {
      RecordingListener const listener;
      channel.print3x4(by3);
      EXPECT_EQ(listener.Texts(), rowsBy3);
    }
    channel.tab();
    {
      RecordingListener const listener;
      channel.print3x4(by3);
      EXPECT_EQ(listener.Texts()[2], "   [2.000, 5.000, 8.000, 0.000]\n");
      channel.print4x4(by4);
      EXPECT_EQ(listener.Texts()[3], "   [ 0.000,  4.000,  8.000, 12.500]\n");
    }
    channel.untab();
  }
}

TEST_F(VRELIndentedChannelTest, PrintsPointsInReverse) {
  float const points[9] = {1, 2, 3, -4.5F, 0, 100.125F, 7, 8, 9};
  for (ChannelRow const& channel : kChannels) {
    SCOPED_TRACE(channel.name);
    RecordingListener const listener;
    channel.printPoints(points, 2);
    EXPECT_EQ(listener.Texts(), (Texts{"{ 3.000,  2.000,  1.000}\n", "{100.125,  0.000, -4.500}\n"}));
    channel.printPoints(points, 0);
    channel.printPoints(points, -1);
    EXPECT_EQ(listener.events.size(), 2u);
    channel.tab();
    channel.printPoints(points + 6, 1);
    EXPECT_EQ(listener.Texts().back(), "   { 9.000,  8.000,  7.000}\n");
    channel.untab();
  }
}

TEST_F(VRELIndentedChannelTest, PrintsNothingForNull) {
  for (ChannelRow const& channel : kChannels) {
    SCOPED_TRACE(channel.name);
    RecordingListener const listener;
    channel.print4x4(nullptr);
    channel.print3x4(nullptr);
    channel.printPoints(nullptr, 3);
    EXPECT_TRUE(listener.events.empty());
  }
}

TEST_F(VRELIndentedChannelTest, CutsLineOfHugeNumbers) {
  double huge[12];
  for (double& each : huge) each = 1e308;
  RecordingListener const listener;
  VRELInfo::Print3x4Matrix(huge);
  ASSERT_EQ(listener.events.size(), 3u);
  EXPECT_EQ(listener.events[0].text.size(), 1023u);
}

TEST_F(VRELIndentedChannelTest, ChannelsHaveNoField) {
  VRELWarning const warning;
  VRELInfo const info;
  VRELVerbose const verbose;
  VRELTest const test;
  EXPECT_EQ(sizeof warning, sizeof(void*));
  EXPECT_EQ(sizeof info, sizeof(void*));
  EXPECT_EQ(sizeof verbose, sizeof(void*));
  EXPECT_EQ(sizeof test, sizeof(void*));
}

}  // namespace
