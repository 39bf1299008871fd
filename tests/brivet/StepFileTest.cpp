#include "StepFile.h"

#include <gtest/gtest.h>

#include "ScratchDirectory.h"
#include "StepError.h"
#include "TextSource.h"

TEST(StepFileTest, IsReadStepByStep) {
  ScratchDirectory const folder;
  StepFile file(folder.Write("a.stp", Document("#1=A('\\S\\A');\n#2=A();\n")));
  StepReader& reader = file.Reader();
  reader.ReadHeader();
  EXPECT_EQ(reader.Summary().header[2].line, 5U);
  EXPECT_EQ(reader.Summary().dataSections, 0U);
  reader.CheckHeader();
  reader.ReadSections();
  EXPECT_EQ(reader.Summary().dataSections, 1U);
  EXPECT_EQ(reader.Summary().simpleInstances, 2U);
  EXPECT_EQ(reader.Summary().escapedStrings.size(), 1U);
}

TEST(StepFileTest, TellsOfAnIncompleteHeaderOnlyWhenAsked) {
  ScratchDirectory const folder;
  StepFile file(folder.Write("a.stp", "ISO-10303-21;\nHEADER;\nFILE_SCHEMA(('S'));\nENDSEC;\n"));
  file.Reader().ReadHeader();
  try {
    file.Reader().CheckHeader();
    FAIL();
  } catch (StepError const& error) {
    EXPECT_EQ(error.line, 4U);
    EXPECT_EQ(error.text, "expected FILE_DESCRIPTION in the header, found ENDSEC");
  }
}

TEST(StepFileTest, RefusesAFileThatCannotBeRead) {
  ScratchDirectory const folder;
  EXPECT_THROW(StepFile(folder.Path("missing")), StepError);
}
