#include "StepHeader.h"

#include <gtest/gtest.h>

#include "StepFixture.h"
#include "StreamText.h"
#include "Utf8StreamFormatter.h"
#include "VRELFileHeader.h"
#include "VRELStringOutputStream.h"

namespace {

// The header of a document with these lines between HEADER and ENDSEC, as a log prints it but in UTF-8.
std::string Printed(std::string const& header) {
  ReadDocument document("ISO-10303-21;HEADER;\n" + header + "ENDSEC;DATA;ENDSEC;END-ISO-10303-21;");
  VRELStringOutputStream stream;
  {
    Utf8StreamFormatter out(&stream);
    out << document->GetFileHeader();
  }
  stream.writeChar('\0');
  return stream.contents();
}

}  // namespace

TEST(StepHeaderTest, SetsRowForEachString) {
  EXPECT_EQ(Printed("FILE_DESCRIPTION(('\\X2\\30D6\\X0\\','b','c'),$);\n"
                    "FILE_NAME('part','t',('J\\S\\vrg',''),(),$,*,'100%d');\n"
                    "FILE_SCHEMA(('S1','S2'));\n"),
            "FILE_DESCRIPTION\n"
            "description              : \xE3\x83\x96\n"
            "description 2            : b\n"
            "description 3            : c\n"
            "implementation_level     : (unset)\n"
            "\n"
            "FILE_NAME\n"
            "File Name                : part\n"
            "time_stamp               : t\n"
            "Author                   : J\xC3\xB6rg\n"
            "Author 2                 : (empty)\n"
            "Organization             : (none)\n"
            "preprocessor_version     : (unset)\n"
            "originating_system       : (unset)\n"
            "authorization            : 100%d\n"
            "\n"
            "FILE_SCHEMA\n"
            "schema_identifiers       : S1\n"
            "schema_identifiers 2     : S2\n");
}

TEST(StepHeaderTest, ReadsIrregularHeaders) {
  // A string where a list belongs, $ in a list, numbers, parameters that are left out, another order, other entities.
  EXPECT_EQ(Printed("FILE_SCHEMA('S');!MINE(1,(2,3),T('x'));FILE_NAME(12,.T.,($,'a',(1.5,\"0F\"),#7),T('y'));"
                    "SECTION_LANGUAGE($,'en');FILE_DESCRIPTION();"),
            "FILE_SCHEMA\n"
            "schema_identifiers       : S\n"
            "\n"
            "FILE_NAME\n"
            "File Name                : 12\n"
            "time_stamp               : T\n"
            "Author                   : a\n"
            "Author 2                 : 1.5\n"
            "Author 3                 : 0F\n"
            "Author 4                 : #7\n"
            "Organization             : y\n"
            "preprocessor_version     : (unset)\n"
            "originating_system       : (unset)\n"
            "authorization            : (unset)\n"
            "\n"
            "FILE_DESCRIPTION\n"
            "description              : (unset)\n"
            "implementation_level     : (unset)\n");
}

// A text can neither begin a line of its own nor move the cursor of a terminal.
TEST(StepHeaderTest, EscapesControls) {
  EXPECT_EQ(Printed("FILE_SCHEMA('a\\X2\\000A001B2028\\X0\\z');"),
            "FILE_SCHEMA\nschema_identifiers       : a<U+000A><U+001B><U+2028>z\n");
}

TEST(StepHeaderTest, NamesParameters) {
  EXPECT_STREQ(StepHeader::ParametersOf("FILE_NAME")[6], "authorization");
  EXPECT_EQ(StepHeader::ParametersOf("FILE_NAME")[7], nullptr);
  EXPECT_STREQ(StepHeader::ParametersOf("FILE_DESCRIPTION")[1], "implementation_level");
  EXPECT_STREQ(StepHeader::ParametersOf("FILE_SCHEMA")[0], "schema_identifiers");
  EXPECT_EQ(StepHeader::ParametersOf("FILE_POPULATION"), nullptr);
}
