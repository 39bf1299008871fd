#include "SummaryReport.h"

#include <gtest/gtest.h>

#include "TextSource.h"

TEST(SummaryReportTest, ShowsEachTextOnALineOfItsOwn) {
  StepSummary summary;
  summary.header = {{"FILE_NAME",
                     1,
                     {{"name", true, {VRELString(L"part")}},
                      {"author", true, {VRELString(L"J\u00F6rg"), VRELString(L"")}},
                      {"organization", true, {}},
                      {"preprocessor_version", false, {}}}}};
  summary.dataSections = 2;
  summary.simpleInstances = 1199999;
  summary.complexInstances = 1;
  EXPECT_EQ(FormatSummary(summary),
            "FILE_NAME\n"
            "File Name                : part\n"
            "Author                   : J\xC3\xB6rg\n"
            "Author 2                 : (empty)\n"
            "Organization             : (none)\n"
            "preprocessor_version     : (unset)\n"
            "\n"
            "data sections              2\n"
            "entity instances     1200000\n"
            "  simple             1199999\n"
            "  complex                  1\n"
            "escaped strings            0\n");
}

// A parameter's name is in its row, whether the key is one of the common ones or the name itself.
TEST(SummaryReportTest, ShowsEachParameterOfAFile) {
  VRELString const text(L"\u30D6");
  StepSummary summary;
  summary.header = {
      {"FILE_DESCRIPTION", 1, {{"description", true, {text, text, text}}, {"implementation_level", false, {}}}},
      {"FILE_NAME",
       2,
       {{"name", true, {VRELString(L"a\nb")}},
        {"time_stamp", false, {}},
        {"author", false, {}},
        {"organization", true, {text, text}},
        {"preprocessor_version", false, {}},
        {"originating_system", false, {}},
        {"authorization", false, {}}}},
      {"FILE_SCHEMA", 3, {{"schema_identifiers", true, {VRELString(L"100%d")}}}}};
  std::string const page = FormatSummary(summary);
  EXPECT_EQ(page.substr(0, page.find("data sections")),
            "FILE_DESCRIPTION\n"
            "description              : \xE3\x83\x96\n"
            "description 2            : \xE3\x83\x96\n"
            "description 3            : \xE3\x83\x96\n"
            "implementation_level     : (unset)\n"
            "\n"
            "FILE_NAME\n"
            "File Name                : a<U+000A>b\n"
            "time_stamp               : (unset)\n"
            "Author                   : (unset)\n"
            "Organization             : \xE3\x83\x96\n"
            "Organization 2           : \xE3\x83\x96\n"
            "preprocessor_version     : (unset)\n"
            "originating_system       : (unset)\n"
            "authorization            : (unset)\n"
            "\n"
            "FILE_SCHEMA\n"
            "schema_identifiers       : 100%d\n"
            "\n");
}

TEST(SummaryReportTest, AlignsEscapedStrings) {
  StepSummary summary;
  summary.escapedStrings = {{5, "header", VRELString(L"a")}, {1234567, "#637540710", VRELString(L"\u30D6")}};
  std::string const page = FormatSummary(summary);
  EXPECT_EQ(page.substr(page.find("escaped")),
            "escaped strings            2\n"
            "\n"
            "     line  instance    text\n"
            "        5  header      a\n"
            "  1234567  #637540710  \xE3\x83\x96\n");
}

// A text can neither begin a line of its own nor move the cursor of a terminal.
TEST(SummaryReportTest, ShowsControlCharactersByTheirCodes) {
  StepSummary summary;
  summary.escapedStrings = {{1, "#1", VRELString(L"a\nb\r\x1B[2J\x7F\x9B\x9F\u00A0\u2028\u2029\tz")}};
  std::string const page = FormatSummary(summary);
  EXPECT_EQ(page.substr(page.find("#1")),
            "#1        a<U+000A>b<U+000D><U+001B>[2J<U+007F><U+009B><U+009F>\xC2\xA0<U+2028><U+2029><U+0009>z\n");
}

// Half a surrogate pair is no character.
TEST(SummaryReportTest, WritesValidUtf8) {
  StepSummary summary;
  summary.escapedStrings = {{1, "#1", VRELString(std::u16string_view(u"a\xD83D"))}};
  std::string const page = FormatSummary(summary);
  EXPECT_EQ(page.substr(page.find("#1")), "#1        a\xEF\xBF\xBD\n");
}
