#include "VRELInfo.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "RecordingListener.h"
#include "VRELMessageEvent.h"

namespace {

// Records whether the events have a prefix.
class PrefixListener : public RecordingListener {
 public:
  void HandleEvent(VRELEvent& event) override {
    RecordingListener::HandleEvent(event);
    prefixed += static_cast<VRELMessageEvent&>(event).IsPrefixed() ? 'p' : '-';
  }

  std::string prefixed;
};

class VRELInfoTest : public testing::Test {
 protected:
  ~VRELInfoTest() override { _VRELInfoTab = 0; }
};

TEST_F(VRELInfoTest, PrintfAsItIsSendsWithoutPrefix) {
  PrefixListener const listener;
  VRELInfo::Printf("a");
  VRELInfo::NoTabPrintf("b");
  VRELInfo::PrintfAsItIs("c%d", 1);
  EXPECT_EQ(listener.prefixed, "pp-");
  EXPECT_EQ(listener.events[2].name, "VRELMessageEvent");
  EXPECT_EQ(listener.events[2].level, 50);
  EXPECT_EQ(listener.events[2].text, "c1");
}

TEST_F(VRELInfoTest, PrintfAsItIsFormatsAsPrintf) {
  RecordingListener const listener;
  _VRELInfoTab = 2;
  VRELInfo::PrintfAsItIs("x");
  VRELInfo::PrintfAsItIs("100%%%%");
  VRELInfo::PrintfAsItIs("%s", "%n %s");
  VRELInfo::PrintfAsItIs("%s", std::string(2000, 'x').c_str());
  EXPECT_EQ(listener.Texts(),
            (std::vector<std::string>{"      x", "      100%", "      %n %s", "      " + std::string(1017, 'x')}));
}

TEST_F(VRELInfoTest, PrintfAsItIsOfNullSendsNothing) {
  RecordingListener const listener;
  char const* const null = nullptr;
  VRELInfo::PrintfAsItIs(null);
  EXPECT_TRUE(listener.events.empty());
  VRELInfo::PrintfAsItIs("");
  EXPECT_EQ(listener.Texts(), std::vector<std::string>{"(none)"});
}

TEST_F(VRELInfoTest, Print3x3MatrixPrintsRows) {
  float const elements[9] = {0, 1, 2, 3, -4.5F, 5, 12.125F, 1000, 0.0625F};
  RecordingListener const listener;
  VRELInfo::Print3x3Matrix(elements);
  EXPECT_EQ(listener.Texts(), (std::vector<std::string>{"[0.000, 3.000, 12.125]\n", "[1.000, -4.500, 1000.000]\n",
                                                        "[2.000, 5.000, 0.062]\n"}));
  VRELInfo::Print3x3Matrix(nullptr);
  EXPECT_EQ(listener.events.size(), 3u);
  VRELInfo::Tab();
  VRELInfo::Print3x3Matrix(elements);
  EXPECT_EQ(listener.Texts()[3], "   [0.000, 3.000, 12.125]\n");
}

TEST_F(VRELInfoTest, CFunctionPrints) {
  PrefixListener const listener;
  _VRELInfoTab = 2;
  VRELInfo_NoTabPrintf("%s %d", "text", 5);
  char const* const null = nullptr;
  VRELInfo_NoTabPrintf(null);
  EXPECT_EQ(listener.Texts(), std::vector<std::string>{"text 5"});
  EXPECT_EQ(listener.events[0].name, "VRELMessageEvent");
  EXPECT_EQ(listener.prefixed, "p");
}

}  // namespace
