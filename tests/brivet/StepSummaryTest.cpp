#include "StepSummary.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "StepScanner.h"
#include "TextSource.h"

namespace {

std::vector<std::string> Texts(StepSummary::Parameter const& parameter) {
  std::vector<std::string> texts;
  for (VRELString const& text : parameter.texts) texts.push_back(text.toUtf8());
  return texts;
}

struct Counts {
  std::size_t sections;
  std::size_t simple;
  std::size_t complex;
};

void ExpectCounts(std::string const& document, Counts const& expected) {
  SCOPED_TRACE(document);
  StepSummary summary;
  try {
    summary = ReadSummary(document);
  } catch (StepError const& error) {
    FAIL() << error.line << ": " << error.text;
  }
  EXPECT_EQ(summary.dataSections, expected.sections);
  EXPECT_EQ(summary.simpleInstances, expected.simple);
  EXPECT_EQ(summary.complexInstances, expected.complex);
}

// The position behind the semicolon that ends the exchange structure.
std::size_t EndOf(std::string const& document) {
  return document.rfind("END-ISO-10303-21;") + std::string("END-ISO-10303-21;").size();
}

std::string const HEADER =
    "ISO-10303-21;HEADER;FILE_DESCRIPTION((''),'');FILE_NAME('','',(''),(''),'','','');FILE_SCHEMA(('S'));";

}  // namespace

TEST(StepSummaryTest, ReadsTheHeader) {
  StepSummary const summary = ReadSummary(
      "ISO-10303-21;\nHEADER;\n/* it's */FILE_DESCRIPTION(('first','it''s'),'2;1');\n"
      "FILE_NAME('n\\S\\d','t',('a','b'),(),$,'/* o */','');\n"
      "FILE_SCHEMA(('S1','S2'));\nENDSEC;\nEND-ISO-10303-21;");
  ASSERT_EQ(summary.header.size(), 3U);
  struct Row {
    int entity;
    char const* name;
    bool isSet;
    std::vector<std::string> texts;
  };
  Row const rows[] = {{0, "description", true, {"first", "it's"}},
                      {0, "implementation_level", true, {"2;1"}},
                      {1, "name", true, {"n\xC3\xA4"}},
                      {1, "time_stamp", true, {"t"}},
                      {1, "author", true, {"a", "b"}},
                      {1, "organization", true, {}},
                      {1, "preprocessor_version", false, {}},
                      {1, "originating_system", true, {"/* o */"}},
                      {1, "authorization", true, {""}},
                      {2, "schema_identifiers", true, {"S1", "S2"}}};
  char const* const names[] = {"FILE_DESCRIPTION", "FILE_NAME", "FILE_SCHEMA"};
  std::size_t const lines[] = {3, 4, 5};
  std::size_t next[3] = {0, 0, 0};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.name);
    StepSummary::HeaderEntity const& entity = summary.header[row.entity];
    EXPECT_STREQ(entity.name, names[row.entity]);
    EXPECT_EQ(entity.line, lines[row.entity]);
    ASSERT_LT(next[row.entity], entity.parameters.size());
    StepSummary::Parameter const& parameter = entity.parameters[next[row.entity]++];
    EXPECT_STREQ(parameter.name, row.name);
    EXPECT_EQ(parameter.isSet, row.isSet);
    EXPECT_EQ(Texts(parameter), row.texts);
  }
  for (int i = 0; i < 3; ++i) EXPECT_EQ(next[i], summary.header[i].parameters.size());
  EXPECT_EQ(summary.dataSections, 0U);
}

TEST(StepSummaryTest, TakesHeadersThatAreNotByTheBook) {
  // A string where a list belongs, $ in a list, parameters that are left out, another order, other entities.
  StepSummary const summary = ReadSummary(
      "ISO-10303-21;HEADER;FILE_SCHEMA('S');!MINE(1,(2,3),T('x'));FILE_NAME('n',$,($,'a',$),*);SECTION_LANGUAGE($,'en')"
      ";"
      "FILE_DESCRIPTION();ENDSEC;END-ISO-10303-21;");
  EXPECT_EQ(Texts(summary.header[2].parameters[0]), std::vector<std::string>{"S"});
  EXPECT_EQ(Texts(summary.header[1].parameters[0]), std::vector<std::string>{"n"});
  EXPECT_FALSE(summary.header[1].parameters[1].isSet);
  EXPECT_EQ(Texts(summary.header[1].parameters[2]), std::vector<std::string>{"a"});
  EXPECT_FALSE(summary.header[1].parameters[3].isSet);
  EXPECT_FALSE(summary.header[0].parameters[0].isSet);
}

TEST(StepSummaryTest, CountsInstances) {
  ExpectCounts(Document(""), {1, 0, 0});
  ExpectCounts(Document("#1=A();\n#2 = B ( 1 , #1 ) ;#3=(A()B(1));\n"), {1, 2, 1});
  ExpectCounts(Document("/**/#1/**/=/* ; */A/* ( */(/* ) */)/**/;"), {1, 1, 0});
  ExpectCounts(Document("#637540710=A();#18446744073709551615=B();#0=C();"), {1, 3, 0});
  ExpectCounts(Document("#1=A($,*,.T.,\"0F\",'s;',(),((1),(2,())),T(1),T(T(#1)),!U((1.5)));#2=!MINE();"), {1, 2, 0});
  ExpectCounts(Document("#1=A('#7=X();');ENDSEC;DATA('two',('S'));#2=B();#4294967297=C();"), {2, 3, 0});
  // Instances inside a scope count as any other.
  ExpectCounts(Document("#1=&SCOPE #2=A(); #3=&SCOPE #4=B(); ENDSCOPE C(); ENDSCOPE /#2,#3/ D();"), {1, 4, 0});
  ExpectCounts(Document("#1=&SCOPE ENDSCOPE (A()B());"), {1, 0, 1});
  ExpectCounts("\xEF\xBB\xBF\r\n " + Document("#1=A();") + "what follows is no part of it '", {1, 1, 0});
  ExpectCounts(HEADER +
                   "ENDSEC;ANCHOR;<a>=#1;<b>='\\S\\A';ENDSEC;REFERENCE;#1=<http://x/it's#1>;ENDSEC;"
                   "DATA;#2=A(#1);ENDSEC;END-ISO-10303-21;",
               {1, 1, 0});
}

TEST(StepSummaryTest, IsTheSameWithAllLineEnds) {
  std::string document = Document("#1=A('a\nb\\S\\A',\n#2);\n#2=B();\n");
  for (char const* end : {"\r\n", "\r"}) {
    std::string other;
    for (char const byte : document) other += byte == '\n' ? end : std::string(1, byte);
    StepSummary const summary = ReadSummary(other);
    EXPECT_EQ(summary.simpleInstances, 2U);
    ASSERT_EQ(summary.escapedStrings.size(), 1U);
    EXPECT_EQ(summary.escapedStrings[0].line, 7U);
    EXPECT_EQ(summary.escapedStrings[0].text.toUtf8(), "ab\xC3\x81");
  }
}

TEST(StepSummaryTest, ListsStringsWithEscapes) {
  StepSummary const summary = ReadSummary(
      "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION(('\\S\\d'),'2;1');\nFILE_NAME('\\\\','',(),(),'','','');\n"
      "FILE_SCHEMA(('S'));\nNOTE((T('\\S\\v')));ENDSEC;\nDATA('\\S\\|',('S'));\n#1=A('plain','a\\b',\n'two\n"
      "\\X2\\30\nD6\\X0\\ lines');\n#1204=(B('\\X\\E9')C(('x',L('\\S\\A'))));\n"
      "#5=&SCOPE #6=A('\\S\\B');ENDSCOPE A('it''s \\S\\C');\nENDSEC;\nANCHOR;<a>='\\S\\D';ENDSEC;\n"
      "REFERENCE;#9=('\\S\\E');ENDSEC;DATA('\\S\\F',('S'));ENDSEC;\nEND-ISO-10303-21;\n");
  struct Row {
    std::size_t line;
    char const* place;
    char const* text;
  };
  Row const rows[] = {{3, "header", "\xC3\xA4"},          {4, "header", "\\"},
                      {6, "header", "\xC3\xB6"},          {7, "data", "\xC3\xBC"},
                      {9, "#1", "two\xE3\x83\x96 lines"}, {12, "#1204", "\\X\\E9"},
                      {12, "#1204", "\xC3\x81"},          {13, "#6", "\xC3\x82"},
                      {13, "#5", "it's \xC3\x83"},        {15, "anchor", "\xC3\x84"},
                      {16, "reference", "\xC3\x85"},      {16, "data", "\xC3\x86"}};
  ASSERT_EQ(summary.escapedStrings.size(), std::size(rows));
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    EXPECT_EQ(summary.escapedStrings[i].line, rows[i].line) << i;
    EXPECT_EQ(summary.escapedStrings[i].place, rows[i].place) << i;
    EXPECT_EQ(summary.escapedStrings[i].text.toUtf8(), rows[i].text) << i;
  }
}

TEST(StepSummaryTest, TellsWhatWasExpectedWhere) {
  struct Row {
    std::string document;
    char const* error;
  };
  Row const rows[] = {
      {"", "1: expected ISO-10303-21, found the end of the file"},
      {"\n\n", "3: expected ISO-10303-21, found the end of the file"},
      {"Dear all,\n", "1: expected ISO-10303-21, found Dear"},
      {"\n{\"a\":1}", "2: expected ISO-10303-21, found {"},
      {std::string("\x7F"
                   "ELF\0\1",
                   6),
       "1: expected ISO-10303-21, found byte 0x7F"},
      {"ISO-10303-21\nHEADER;", "2: expected ; behind ISO-10303-21, found HEADER"},
      {"ISO-10303-21;\nDATA;", "2: expected HEADER, found DATA"},
      {"ISO-10303-21;\nHEADER;\n", "3: expected an entity of the header or ENDSEC, found the end of the file"},
      {"ISO-10303-21;HEADER;\nFILE_SCHEMA\n;", "3: expected ( behind FILE_SCHEMA, found ;"},
      {"ISO-10303-21;HEADER;FILE_SCHEMA((\n1));", "2: expected a string for schema_identifiers, found 1"},
      {"ISO-10303-21;HEADER;FILE_SCHEMA(('a''b'\n'c'));", "2: expected , behind a string, found a string"},
      {"ISO-10303-21;HEADER;FILE_SCHEMA(('a'),\n1);", "1: expected ) behind the parameters of FILE_SCHEMA, found ,"},
      {"ISO-10303-21;HEADER;FILE_NAME('a'\n'b');", "2: expected , behind a parameter, found a string"},
      {"ISO-10303-21;HEADER;FILE_SCHEMA(('a'))\nENDSEC;", "2: expected ; behind an entity of the header, found ENDSEC"},
      {"ISO-10303-21;HEADER;FILE_SCHEMA(());\nENDSEC;", "2: expected FILE_DESCRIPTION in the header, found ENDSEC"},
      {HEADER + "\nFILE_NAME();", "2: expected one FILE_NAME in the header, found FILE_NAME"},
      {HEADER + "ENDSEC;\n#1=A();", "2: expected DATA or END-ISO-10303-21, found #1"},
      {HEADER + "ENDSEC;\n", "2: expected DATA or END-ISO-10303-21, found the end of the file"},
      {HEADER + "ENDSEC;DATA;ENDSEC;\nEND-ISO-10303-21\n",
       "3: expected ; behind END-ISO-10303-21, found the end of the file"},
      {HEADER + "ENDSEC;ANCHOR;\n<a>=#1;\n", "3: expected ENDSEC, found the end of the file"},
      {Document("1=A();"), "7: expected an instance or ENDSEC, found 1"},
      {Document("#1\nA();"), "8: expected = behind #1, found A"},
      {Document("#1=\n#2;"), "8: expected an entity name, found #2"},
      {Document("#1=()\n;"), "7: expected an entity name, found )"},
      {Document("#1=(A()\n#2);"), "8: expected an entity name, found #2"},
      {Document("#4=A()\n#5=B();"), "8: expected ; behind #4, found #5"},
      {Document("#1=A\n;"), "8: expected ( behind an entity name, found ;"},
      {Document("#1=A(1\n2);"), "8: expected , or ) behind a parameter, found 2"},
      {Document("#1=A(1,\n);"), "8: expected a parameter, found )"},
      {Document("#1=A(\n,1);"), "8: expected a parameter, found ,"},
      {Document("#1=A(T\n);"), "8: expected ( behind a type name, found )"},
      {Document("#1=A((1);\n"), "7: expected , or ) behind a parameter, found ;"},
      {Document("#1=A(\n'b);\n"), "8: expected ' at the end of the string that begins here, found the end of the file"},
      {Document("#1=A();/*\n"), "7: expected */ at the end of the comment that begins here, found the end of the file"},
      {Document("#1=A();\n#01=B();"), "8: expected an id that no other instance has, found #01"},
      {Document("#1=A();ENDSEC;DATA;\n#1=B();"), "8: expected an id that no other instance has, found #1"},
      {Document("\n#18446744073709551616=A();"), "8: expected an instance id below 2^64, found #18446744073709551616"},
      {Document("#1=&SCOPE\n"), "8: expected an instance or ENDSEC, found ENDSEC"},
      {Document("ENDSCOPE;"), "7: expected an instance or ENDSEC, found ENDSCOPE"},
      {Document("#1=&SCOPE ENDSCOPE /\n/ A();"), "8: expected an instance that the scope lets out, found /"},
      {Document("#1=&SCOPE ENDSCOPE /#2 #3/ A();"),
       "7: expected / behind the instances that the scope lets out, found #3"},
  };
  for (Row const& row : rows) EXPECT_EQ(ErrorOf(row.document), row.error) << row.document;
}

TEST(StepSummaryTest, TakesDeepListsAndScopes) {
  constexpr std::size_t DEPTH = 100000;
  std::string const open(DEPTH, '(');
  std::string const close(DEPTH, ')');
  ExpectCounts(Document("#1=A(" + open + "1" + close + ");"), {1, 1, 0});
  EXPECT_EQ(ErrorOf(Document("#1=A(" + open + "1" + close + ";")), "7: expected , or ) behind a parameter, found ;");
  std::string scopes;
  std::string ends;
  for (std::size_t i = 0; i < DEPTH; ++i) {
    scopes += "#" + std::to_string(i) + "=&SCOPE ";
    ends += "ENDSCOPE A();";
  }
  EXPECT_EQ(ReadSummary(Document(scopes + ends)).simpleInstances, DEPTH);
}

// Ids that agree in their lower half share no slot for it.
TEST(StepSummaryTest, TakesIdsFarApart) {
  constexpr std::size_t COUNT = 100000;
  std::string data;
  for (std::size_t i = 0; i < COUNT; ++i) data += "#" + std::to_string(std::uint64_t{i} << 32U) + "=A();";
  std::string const document = Document(data);
  std::clock_t const start = std::clock();
  EXPECT_EQ(ReadSummary(document).simpleInstances, COUNT);
  EXPECT_LT(std::clock() - start, 5 * CLOCKS_PER_SEC);
}

// A terminal or a pipe may keep back what stands behind the end.
TEST(StepSummaryTest, AsksForNothingBehindTheEnd) {
  std::string const document = Document("#1=A();");
  std::string const structure = document.substr(0, EndOf(document));
  int calls = 0;
  ByteSource source([&structure, &calls](char* block, std::size_t) {
    return ++calls == 1 ? structure.copy(block, structure.size()) : 0;
  });
  EXPECT_EQ(StepSummary::Read(source).simpleInstances, 1U);
  EXPECT_EQ(calls, 1);
}

TEST(StepSummaryTest, RefusesEveryPrefixOfADocument) {
  std::string const document = Document(
      "#1=A('it''s','\\X2\\30D6\\X0\\',.T.,-1.5E-3,\"0F\",$,*,(#2,T(1)));/* c */\n#2=(B()C('\\S\\A'));\n"
      "#3=&SCOPE #4=D();ENDSCOPE/#4/E();\n");
  ASSERT_EQ(ErrorOf(document), "");
  for (std::size_t length = 0; length < EndOf(document); ++length) {
    EXPECT_NE(ErrorOf(document.substr(0, length)), "") << length;
  }
}

TEST(StepSummaryTest, SurvivesRandomBytes) {
  std::mt19937 random(20261120);
  for (int run = 0; run < 3000; ++run) {
    std::string bytes = run % 2 == 0 ? "" : HEADER + "ENDSEC;DATA;";
    std::size_t const length = random() % 300;
    for (std::size_t i = 0; i < length; ++i) bytes += static_cast<char>(random() % 256);
    EXPECT_NE(ErrorOf(bytes), "") << run;
  }
}

// Whatever a document becomes by random changes: an error that names a line of it, or a summary.
TEST(StepSummaryTest, SurvivesRandomChanges) {
  std::string const document = Document(
      "#1=A('it''s','\\X2\\30D6\\X0\\',.T.,-1.5E-3,\"0F\",(#2,T(1)));/* c */\n#2=(B()C('\\S\\A'));\n"
      "#3=&SCOPE #4=D();ENDSCOPE/#4/E();\n");
  std::string const alphabet = "'\"()/*;=#,\\&$.!<>XS02A\n\r\xE9";
  std::mt19937 random(1994);
  int errors = 0;
  for (int run = 0; run < 5000; ++run) {
    std::string changed = document;
    for (unsigned int change = random() % 4 + 1; change != 0; --change) {
      std::size_t const at = random() % changed.size();
      char const byte = alphabet[random() % alphabet.size()];
      if (random() % 2 == 0) {
        changed[at] = byte;
      } else {
        changed.insert(at, 1, byte);
      }
    }
    std::string const error = ErrorOf(changed);
    if (error.empty()) continue;
    ++errors;
    std::size_t const line = std::stoul(error);
    EXPECT_GE(line, 1U);
    EXPECT_LE(line, 40U);
  }
  EXPECT_GT(errors, 1000);
}

TEST(BracketTest, DefinesWhatItRefersToOnce) {
  std::string const document = FileText(BracketPath());
  ByteSource source = TextSource(document);
  StepScanner scanner(source);
  std::set<std::uint64_t> defined;
  std::set<std::uint64_t> named;
  while (scanner.Next().kind != StepScanner::End) {
    if (scanner.Current().kind != StepScanner::Instance) continue;
    std::uint64_t const id = scanner.Current().id;
    if (scanner.Next().Is('=')) {
      EXPECT_TRUE(defined.insert(id).second) << id;
    } else {
      named.insert(id);
    }
  }
  EXPECT_EQ(defined.size(), 232U);
  for (std::uint64_t const id : named) EXPECT_EQ(defined.count(id), 1U) << id;
}

TEST(BracketTest, IsRefusedWhenCutAnywhere) {
  std::string const document = FileText(BracketPath());
  ASSERT_EQ(ErrorOf(document), "");
  std::size_t const end = EndOf(document);
  ASSERT_GT(end, 10000U);
  for (std::size_t length = 0; length < end; ++length) {
    ASSERT_NE(ErrorOf(std::string_view(document).substr(0, length)), "") << length;
  }
}

TEST(CorpusTest, CountsTheInstancesOfRealFiles) {
  char const* const folder = std::getenv("VREL_CORPUS");
  if (folder == nullptr) GTEST_SKIP() << "set VREL_CORPUS to a folder of STEP files to run this test";
  struct Row {
    char const* name;
    std::size_t instances;
  };
  Row const rows[] = {
      {"as1-oc-214.stp", 6425}, {"dm1-id-214.stp", 1189}, {"io1-cm-214.stp", 917}, {"ATS10-out.stp", 1102}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.name);
    StepSummary const summary = ReadSummary(FileText(std::string(folder) + "/" + row.name));
    EXPECT_EQ(summary.dataSections, 1U);
    EXPECT_EQ(summary.simpleInstances + summary.complexInstances, row.instances);
    bool blend = false;
    for (StepSummary::EscapedString const& each : summary.escapedStrings) {
      blend = blend || each.text.toUtf8() == "\xE3\x83\x96\xE3\x83\xAC\xE3\x83\xB3\xE3\x83\x89 R1";
    }
    EXPECT_EQ(blend, std::string(row.name) == "io1-cm-214.stp");
  }
}
