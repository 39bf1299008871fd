#include "OptionDescriptions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

VRELString Name(char const* text) {
  return VRELString(std::string(text));
}

}  // namespace

TEST(OptionDescriptionsTest, KnowsModuleOptions) {
  for (char const* name : {"Encoding", "encoding", "Step.*.Reader.Encoding", "FileLineLength"}) {
    EXPECT_TRUE(IsModuleOption(Name(name))) << name;
  }
  for (char const* name : {"", "Healing", "Encoding.x", "Step"}) EXPECT_FALSE(IsModuleOption(Name(name))) << name;
}

TEST(OptionDescriptionsTest, KnowsWhatHasEffect) {
  struct Row {
    char const* name;
    char const* target;
    bool hasEffect;
  };
  Row const rows[] = {{"AuthorName", "step", true},
                      {"AuthorName", "html", false},
                      {"Step.*.Writer.authorname", "step", true},
                      {"Step.*.Reader.AuthorName", "step", false},
                      {"Encoding", "html", true},
                      {"Step.*.Writer.Encoding", "html", false},
                      {"Step.*.Reader.Encoding", "", true},
                      {"Healing", "step", false},
                      {"*", "html", true}};
  for (Row const& row : rows) {
    EXPECT_EQ(HasEffect(Name(row.name), "step", row.target), row.hasEffect) << row.name << " " << row.target;
  }
}

TEST(OptionDescriptionsTest, ListsMatchingNames) {
  EXPECT_EQ(ListOptions("writer.filelinelength"),
            "Step.*.Writer.FileLineLength         int from 0 to 2147483647 default: 0    maximum length of a line; 0 "
            "for no limit\n");
  EXPECT_EQ(ListOptions("Sew?olerance"), "SewTolerance\n");
  EXPECT_EQ(ListOptions("Sew?"), "");
  EXPECT_EQ(ListOptions("[").find('\n'), std::string::npos);
  std::string const all = ListOptions("");
  EXPECT_GT(std::count(all.begin(), all.end(), '\n'), 500);
}
