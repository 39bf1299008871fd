#include "HeaderRecords.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "StepFixture.h"

namespace {

std::string HeaderText(std::string const& schemas) {
  return "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION(('a','b'),'2;1');\nFILE_NAME('part','t',$,('o'),'p','',$);\n"
         "FILE_SCHEMA((" +
         schemas + "));\nENDSEC;\nDATA;\n#1=A();\nENDSEC;\nEND-ISO-10303-21;\n";
}

}  // namespace

TEST(HeaderRecordsTest, StoresStringsByPosition) {
  ReadDocument document(HeaderText("'S'"));
  HeaderRecords header;
  ASSERT_EQ(document->DescribeHeader(header), VREL_S_OK);
  EXPECT_EQ(header.Text("FILE_NAME", 0), "part");
  EXPECT_EQ(header.Text("FILE_NAME", 2), std::nullopt);
  EXPECT_EQ(header.Text("FILE_NAME", 3), "o");
  EXPECT_EQ(header.Text("FILE_NAME", 5), "");
  EXPECT_EQ(header.Text("FILE_NAME", 9), std::nullopt);
  EXPECT_EQ(header.Text("NO_RECORD", 0), std::nullopt);
  EXPECT_EQ(header.List("FILE_DESCRIPTION", 0), (std::vector<std::string>{"a", "b"}));
}

TEST(HeaderRecordsTest, FindsApplicationProtocol) {
  struct Row {
    char const* schemas;
    char const* expected;
  };
  Row const rows[] = {{"'CONFIG_CONTROL_DESIGN'", "AP203"},
                      {"'AP203_CONFIGURATION_CONTROLLED_3D_DESIGN_OF_MECHANICAL_PARTS_AND_ASSEMBLIES_MIM_LF'", "AP203"},
                      {"'AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }'", "AP214"},
                      {"'AUTOMOTIVE_DESIGN_CC2'", "AP214"},
                      {"'AP242_MANAGED_MODEL_BASED_3D_ENGINEERING_MIM_LF { 1 0 10303 442 1 1 4 }'", "AP242"},
                      {"'UNKNOWN','CONFIG_CONTROL_DESIGN'", "AP203"},
                      {"'UNKNOWN'", "other"}};
  for (Row const& row : rows) {
    ReadDocument document(HeaderText(row.schemas));
    HeaderRecords header;
    ASSERT_EQ(document->DescribeHeader(header), VREL_S_OK);
    EXPECT_STREQ(header.ApplicationProtocol(), row.expected);
  }
  EXPECT_EQ(HeaderRecords().ApplicationProtocol(), nullptr);
}
