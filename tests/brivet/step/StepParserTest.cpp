#include "StepParser.h"

#include <gtest/gtest.h>

#include "InputError.h"
#include "StepFixture.h"
#include "StepText.h"

namespace {

// Returns what the records of an instance pass to a visitor, or "LINE:COLUMN: ERROR".
std::string Parsed(std::string const& records) {
  BytesInFile file(records);
  StepScanner scanner(file.Buffer());
  StepText strings;
  StepParser parser(scanner, strings);
  DocumentRecorder recorder;
  scanner.Next();
  try {
    bool const complex = parser.ReadInstance(recorder);
    EXPECT_TRUE(parser.AtSymbol(';'));
    return (complex ? "complex: " : "") + recorder.text;
  } catch (InputError const& error) {
    EXPECT_EQ(error.result, VREL_E_INVALID_FILE);
    return std::to_string(error.line) + ":" + std::to_string(error.column) + ": " + error.text;
  }
}

}  // namespace

TEST(StepParserTest, ReadsParameters) {
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

TEST(StepParserTest, ReportsSyntaxErrors) {
  struct Row {
    char const* records;
    char const* error;
  };
  Row const rows[] = {{"\n#2;", "2:1: expected entity name, found '#2'"},
                      {"()\n;", "1:2: expected entity name, found ')'"},
                      {"(A()\n #2);", "2:2: expected entity name, found '#2'"},
                      {"A()\n#5=B();", "2:1: expected ';' after an instance, found '#5'"},
                      {"A\n;", "2:1: expected '(' after an entity name, found ';'"},
                      {"A(1\n2);", "2:1: expected ',' or ')' after a parameter, found '2'"},
                      {"A(1,\n);", "2:1: expected parameter, found ')'"},
                      {"A(\n,1);", "2:1: expected parameter, found ','"},
                      {"A(T\n);", "2:1: expected '(' after a type name, found ')'"},
                      {"A((1);\n", "1:6: expected ',' or ')' after a parameter, found ';'"},
                      {"A({a:1);\n", "1:7: expected ',' or '}' after a parameter, found ')'"},
                      {"A({a\n1});\n", "2:1: expected '(' after a type name, found '1'"},
                      {"A(1", "1:4: expected ',' or ')' after a parameter, found end of file"},
                      {"A(\n'b);\n", "2:1: expected \"'\" at the end of the string, found end of file"}};
  for (Row const& row : rows) EXPECT_EQ(Parsed(row.records), row.error) << row.records;
}

// ISO 10303-21:2016.
TEST(StepParserTest, ReadsEdition3Parameters) {
  struct Row {
    char const* records;
    char const* handed;
  };
  Row const rows[] = {
      {"A(@12,@PI,#PI);", "A< @12 @PI #PI >"},
      {"A(<http://a/b#c>,(<#d>));", "A< <http://a/b#c> ( <#d> ) >"},
      {"A({label:'x'},{1,2},{},{T(1)});", "A< {label: 'x' } { i:1 i:2 } { } { T[ i:1 ] } >"},
      {"_A(_B(1));", "_A< _B[ i:1 ] >"},
      {"!_A(.U_1.);", "!_A< .U_1 >"},
  };
  for (Row const& row : rows) EXPECT_EQ(Parsed(row.records), row.handed) << row.records;
}

TEST(StepParserTest, ReadsEntries) {
  struct Row {
    char const* entry;
    char const* handed;
  };
  Row const rows[] = {
      {"<top>=#1;", "<top>= #1 ;"},
      {"<a> = (#1,$) {label:'x'} {n:1};", "<a>= ( #1 $ ) {label: 'x' } {n: i:1 } ;"},
      {"#10=<http://a/b#c>;", "#10= <http://a/b#c> ;"},
      {"@11=<b>;", "@11= <b> ;"},
      {"A=1;", "1:1: expected name of an entry, found 'A'"},
      {"<a>;", "1:4: expected '=' after the name of an entry, found ';'"},
      {"<a>=1 2;", "1:7: expected ';' after an entry, found '2'"},
  };
  for (Row const& row : rows) {
    BytesInFile file(row.entry);
    StepScanner scanner(file.Buffer());
    StepText strings;
    StepParser parser(scanner, strings);
    DocumentRecorder recorder;
    std::string handed;
    try {
      scanner.Next();
      parser.ReadEntry(recorder);
      handed = recorder.text;
    } catch (InputError const& error) {
      handed = std::to_string(error.line) + ":" + std::to_string(error.column) + ": " + error.text;
    }
    EXPECT_EQ(handed, row.handed);
  }
}

// Zero bytes are not part of the format.
TEST(StepParserTest, OnlyDecodedStringHasNul) {
  EXPECT_EQ(Parsed(std::string("A('x\0y');", 9)), std::string("A< 'xy=x\0y' >", 13));
}

TEST(StepParserTest, IdHasDigitsAndNumber) {
  EXPECT_EQ(Parsed("A(#0,#999999999999999999);"), "A< #0 #999999999999999999 >");
  EXPECT_EQ(Parsed("A(#1000000000000000000,#99999999999999999999999);"),
            "A< ##1000000000000000000 ##99999999999999999999999 >");
}

TEST(StepParserTest, ReadsDeepLists) {
  constexpr std::size_t kDepth = 100'000;
  std::string const open(kDepth, '(');
  std::string const close(kDepth, ')');
  std::string const handed = Parsed("A(" + open + "1" + close + ");");
  EXPECT_EQ(handed.size(), std::string("A< i:1 >").size() + 4 * kDepth);
  EXPECT_EQ(Parsed("A(" + open + "1" + close + ";"), "1:200004: expected ',' or ')' after a parameter, found ';'");
}

TEST(StepParserTest, RefusesListsBeyondDepthLimit) {
  std::string const open(StepParser::kDepthLimit + 1, '(');
  EXPECT_EQ(Parsed("A(" + open + "1"), "1:10000003: expected lists at most 10,000,000 deep, found '('");
}
