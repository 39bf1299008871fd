#include "VRELStartProductEvent.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "ChildProcess.h"
#include "TaskEventFacts.h"
#include "VRELEnvironment.h"

namespace {

class VRELStartProductEventTest : public testing::Test {
 protected:
  VRELStartProductEventTest() { unsetenv("VRELTrace"); }
  ~VRELStartProductEventTest() override { unsetenv("VRELTrace"); }
};

TEST_F(VRELStartProductEventTest, HasProductTask) {
  VRELStartProductEvent event("p", "a");
  ExpectTaskEvent(event, 0, "Start Product", "Product");
}

TEST_F(VRELStartProductEventTest, WritesProductAndApplication) {
  struct {
    char const* product;
    char const* application;
    char const* text;
  } const cases[] = {
      {"Brivet 1.0", "brivet", "Product              : Brivet 1.0\nApplication          : brivet\n"},
      {"Brivet 1.0", "", "Product              : Brivet 1.0\n"},
      {"", "brivet", "Application          : brivet\n"},
      {nullptr, "brivet", "Application          : brivet\n"},
      {"Brivet 1.0", nullptr, "Product              : Brivet 1.0\n"},
      {"100%s %n", "%d", "Product              : 100%s %n\nApplication          : %d\n"},
      {"", "", ""},
      {nullptr, nullptr, ""},
  };
  for (auto const& each : cases) {
    EXPECT_EQ(DescriptionOf(VRELStartProductEvent(each.product, each.application)), each.text);
  }
}

TEST_F(VRELStartProductEventTest, WritesOptionsInStoreOrder) {
  VRELStartProductEvent event("Brivet", "brivet");
  // Of two names with the same last token, the one with the wildcard is last.
  EXPECT_EQ(event.AddOption("*.AVeryLongNameOfAnOption", "high 100%d"), VREL_S_OK);
  EXPECT_EQ(event.AddOption("Step.AVeryLongNameOfAnOption", "12"), VREL_S_OK);
  EXPECT_EQ(DescriptionOf(event),
            "Product              : Brivet\n"
            "Application          : brivet\n"
            "Step.AVeryLongNameOfAnOption : 12\n"
            "*.AVeryLongNameOfAnOption : high 100%d\n");
}

TEST_F(VRELStartProductEventTest, WritesOptionWithoutProduct) {
  VRELStartProductEvent event("", "");
  EXPECT_EQ(event.AddOption("Units", "mm"), VREL_S_OK);
  EXPECT_EQ(event.AddOption("Units", "inch"), VREL_S_OK);
  EXPECT_EQ(DescriptionOf(event), "Units                : inch\n");
  // A second call writes the same.
  EXPECT_EQ(DescriptionOf(event), "Units                : inch\n");
}

TEST_F(VRELStartProductEventTest, AddOptionSucceedsForRefusedName) {
  VRELStartProductEvent event("", "");
  EXPECT_EQ(event.AddOption("", "x"), VREL_S_OK);
  EXPECT_EQ(event.AddOption(nullptr, "x"), VREL_S_OK);
  EXPECT_EQ(event.AddOption("a..b", "x"), VREL_S_OK);
  EXPECT_EQ(DescriptionOf(event), "");
  EXPECT_EQ(event.AddOption("Empty", nullptr), VREL_S_OK);
  EXPECT_EQ(DescriptionOf(event), "Empty                : \n");
}

// The buffer of the formatter holds 511 bytes.
TEST_F(VRELStartProductEventTest, OverlongOptionNameIsTruncated) {
  VRELStartProductEvent event("", "");
  event.AddOption(std::string(10000, 'n').c_str(), "v");
  EXPECT_EQ(DescriptionOf(event), std::string(511, 'n') + "v\n");
}

TEST_F(VRELStartProductEventTest, WritesEnvironmentOnRequest) {
  ChildResult const child = RunInChild([] {
    setenv("VRELTrace", "topology,UserEnv,units", 1);
    EXPECT_EQ(DescriptionOf(VRELStartProductEvent("", "")),
              "=== Environment Variables ===\n"
              "\n"
              "=============================\n");
    VRELEnvironment::GetEnv()->Set(L"b=2");
    VRELEnvironment::GetEnv()->Set(L"a", VRELValue(true));
    VRELStartProductEvent event("Brivet", "");
    event.AddOption("Units", "mm");
    EXPECT_EQ(DescriptionOf(event),
              "Product              : Brivet\n"
              "Units                : mm\n"
              "=== Environment Variables ===\n"
              "a=1\n"
              "b=2\n"
              "\n"
              "=============================\n");
    for (char const* const other : {"", "userenv", "User Env", "UserEn"}) {
      setenv("VRELTrace", other, 1);
      EXPECT_EQ(DescriptionOf(VRELStartProductEvent("", "")), "") << other;
    }
    return HasFailure() ? 1 : 0;
  });
  EXPECT_EQ(child.exitStatus, 0) << child.output;
}

TEST_F(VRELStartProductEventTest, CopyIsIndependent) {
  auto source = std::make_unique<VRELStartProductEvent>("Brivet", "brivet");
  source->AddOption("Units", "mm");
  VRELStartProductEvent copy(*source);
  source->AddOption("Units", "inch");
  source.reset();
  copy.AddOption("Scale", "2");
  VRELStartProductEvent second(copy);
  ExpectTaskEvent(copy, 0, "Start Product", "Product");
  EXPECT_EQ(DescriptionOf(second), DescriptionOf(copy));
  EXPECT_NE(DescriptionOf(copy).find("Units                : mm\n"), std::string::npos);
  EXPECT_NE(DescriptionOf(copy).find("Scale                : 2\n"), std::string::npos);
}

// The order of an enumeration depends on the order of the additions, and a refused name can leave nodes without option.
TEST_F(VRELStartProductEventTest, CopyKeepsOptionOrder) {
  VRELStartProductEvent source("", "");
  for (int i = 0; i < 300; ++i) {
    std::string const number = std::to_string(i * 7919 % 300);
    source.AddOption(("Key" + number).c_str(), number.c_str());
    source.AddOption(("*.Key" + number).c_str(), "any");
    source.AddOption(("Refused" + number + "..X").c_str(), "refused");
  }
  std::string const expected = DescriptionOf(source);
  VRELStartProductEvent copy(source);
  EXPECT_EQ(DescriptionOf(copy), expected);
  EXPECT_EQ(DescriptionOf(source), expected);
}

}  // namespace
