#include "StepParser.h"

#include <gtest/gtest.h>

#include "InputError.h"
#include "StepFixture.h"

namespace {

// What the records of an instance hand to a visitor; "LINE: ERROR" where they break the format.
std::string Parsed(std::string const& records) {
  BytesInFile file(records);
  StepScanner scanner(file.Buffer());
  StepParser parser(scanner);
  DocumentRecorder recorder;
  scanner.Next();
  try {
    bool const complex = parser.ReadInstance(recorder);
    EXPECT_TRUE(parser.AtSymbol(';'));
    return (complex ? "complex: " : "") + recorder.text;
  } catch (InputError const& error) {
    EXPECT_EQ(error.result, VREL_E_INVALID_FILE);
    return std::to_string(error.line) + ": " + error.text;
  }
}

}  // namespace

TEST(StepParserTest, HandsOnAllKindsOfParameters) {
  struct Row {
    char const* records;
    char const* handed;
  };
  Row const rows[] = {
      {"A();", "A< >"},
      {"!MINE ( 1 , +2 , -3 ) ;", "!MINE< i:1 i:+2 i:-3 >"},
      {"A(1.,-2.5E+3,.5,1e5);", "A< r:1. r:-2.5E+3 r:.5 r:1e5 >"},
      {"A(.T.,.UNSPECIFIED.);", "A< .T .UNSPECIFIED >"},
      {"A(\"0F3\",\"\");", "A< b:0F3 b: >"},
      {"A($,*);", "A< $ * >"},
      {"A(#1,#007);", "A< #1 #7 >"},
      {"A('it''s','');", "A< 'it's' '' >"},
      {"A('\\S\\d',\n'\xC3\xA4');", "A< '\\S\\d=\xC3\xA4@1' '\xC3\xA4' >"},
      {"A('\\\\');", "A< '\\\\=\\@1' >"},
      {"A((),(1),((2),(3,())));", "A< ( ) ( i:1 ) ( ( i:2 ) ( i:3 ( ) ) ) >"},
      {"A(T(1),U(V('x')),(W(#1)));", "A< T[ i:1 ] U[ V[ 'x' ] ] ( W[ #1 ] ) >"},
      {"(A(1)B()C(#2));", "complex: A< i:1 > B< > C< #2 >"},
      {"(A());", "complex: A< >"},
      {"/*a*/A/*b*/(/*c*/1/*d*/,/*e*/'/*f*/'/*g*/)/*h*/;", "A< i:1 '/*f*/' >"},
  };
  for (Row const& row : rows) EXPECT_EQ(Parsed(row.records), row.handed) << row.records;
}

TEST(StepParserTest, TellsWhatWasExpectedWhere) {
  struct Row {
    char const* records;
    char const* error;
  };
  Row const rows[] = {
      {"\n#2;", "2: expected an entity name, found #2"},
      {"()\n;", "1: expected an entity name, found )"},
      {"(A()\n#2);", "2: expected an entity name, found #2"},
      {"A()\n#5=B();", "2: expected ; behind an instance, found #5"},
      {"A\n;", "2: expected ( behind an entity name, found ;"},
      {"A(1\n2);", "2: expected , or ) behind a parameter, found 2"},
      {"A(1,\n);", "2: expected a parameter, found )"},
      {"A(\n,1);", "2: expected a parameter, found ,"},
      {"A(T\n);", "2: expected ( behind a type name, found )"},
      {"A((1);\n", "1: expected , or ) behind a parameter, found ;"},
      {"A(\n<a>);", "2: expected a parameter, found <a>"},
      {"A(1", "1: expected , or ) behind a parameter, found the end of the file"},
      {"A(\n'b);\n", "2: expected ' at the end of the string that begins here, found the end of the file"}};
  for (Row const& row : rows) EXPECT_EQ(Parsed(row.records), row.error) << row.records;
}

TEST(StepParserTest, TellsIdsByDigitsAndByNumber) {
  EXPECT_EQ(Parsed("A(#0,#999999999999999999);"), "A< #0 #999999999999999999 >");
  EXPECT_EQ(Parsed("A(#1000000000000000000,#99999999999999999999999);"),
            "A< ##1000000000000000000 ##99999999999999999999999 >");
}

TEST(StepParserTest, TakesDeepLists) {
  constexpr std::size_t DEPTH = 100'000;
  std::string const open(DEPTH, '(');
  std::string const close(DEPTH, ')');
  std::string const handed = Parsed("A(" + open + "1" + close + ");");
  EXPECT_EQ(handed.size(), std::string("A< i:1 >").size() + 4 * DEPTH);
  EXPECT_EQ(Parsed("A(" + open + "1" + close + ";"), "1: expected , or ) behind a parameter, found ;");
}

TEST(StepParserTest, RefusesListsThatAreTooDeep) {
  std::string const open(StepParser::DEPTH_LIMIT + 1, '(');
  EXPECT_EQ(Parsed("A(" + open + "1"), "1: expected lists at most 10,000,000 deep, found (");
}
