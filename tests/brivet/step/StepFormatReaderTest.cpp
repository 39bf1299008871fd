#include "StepFormatReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "Gk_ErrMgr.h"
#include "StepEntityReader.h"
#include "StepFixture.h"
#include "VRELAbortException.h"
#include "VRELOptions.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

struct Counts {
  long sections;
  long simple;
  long complex;
};

void ExpectCounts(std::string const& bytes, Counts const& expected) {
  SCOPED_TRACE(bytes.substr(0, 500));
  ReadDocument document(bytes);
  EXPECT_THAT(document.Messages(), IsEmpty());
  EXPECT_EQ(document->GetState(), VREL_S_OK);
  EXPECT_EQ(document->GetSectionCount(), expected.sections);
  EXPECT_EQ(document->GetInstanceCount(), expected.simple + expected.complex);
  EXPECT_EQ(document->GetComplexCount(), expected.complex);
  EXPECT_EQ(document->GetFailedCount(), 0);
}

// Returns the warnings and errors for a document without the name of the file.
std::vector<std::string> Messages(std::string const& bytes) {
  std::vector<std::string> messages;
  for (std::string const& message : ReadDocument(bytes).Messages()) {
    std::string const place = "part.stp:";
    std::size_t const at = message.find(place);
    EXPECT_NE(at, std::string::npos) << message;
    messages.push_back(message.substr(0, message[0] == 'W' ? 1 : 2) + " " + message.substr(at + place.size()));
  }
  return messages;
}

std::string const kHeader =
    "ISO-10303-21;HEADER;FILE_DESCRIPTION((''),'');FILE_NAME('','',(''),(''),'','','');FILE_SCHEMA(('S'));";
std::string const kAllKinds =
    "#1=A('it''s','\\X2\\30D6\\X0\\',.T.,-1.5E-3,\"0F\",$,*,(#2,T(1)));/* c */\n#2=(B()C('\\S\\A'));\n"
    "#3=&SCOPE #4=D(#3);ENDSCOPE/#4/E();\n";

// Returns the position after the semicolon that ends the exchange structure.
std::size_t EndOf(std::string const& document) {
  return document.rfind("END-ISO-10303-21;") + std::string("END-ISO-10303-21;").size();
}

}  // namespace

TEST(StepFormatReaderTest, CountsInstances) {
  ExpectCounts(DocumentText(""), {1, 0, 0});
  ExpectCounts(DocumentText("#1=A();\n#2 = B ( 1 , #1 ) ;#3=(A()B(1));\n"), {1, 2, 1});
  ExpectCounts(DocumentText("/**/#1/**/=/* ; */A/* ( */(/* ) */)/**/;"), {1, 1, 0});
  ExpectCounts(DocumentText("#637540710=A();#18446744073709551615=B();#0=C();"), {1, 3, 0});
  ExpectCounts(DocumentText("#1=A($,*,.T.,\"0F\",'s;',(),((1),(2,())),T(1),T(T(#1)),!U((1.5)));#2=!MINE();"),
               {1, 2, 0});
  ExpectCounts(DocumentText("#1=A('#7=X();');ENDSEC;DATA('two',('S'));#2=B();#4294967297=C();"), {2, 3, 0});
  // Instances inside a scope count as any other.
  ExpectCounts(DocumentText("#1=&SCOPE #2=A(); #3=&SCOPE #4=B(); ENDSCOPE C(); ENDSCOPE /#2,#3/ D();"), {1, 4, 0});
  ExpectCounts(DocumentText("#1=&SCOPE ENDSCOPE (A()B());"), {1, 0, 1});
  ExpectCounts("\xEF\xBB\xBF\r\n " + DocumentText("#1=A();") + "what follows is no part of it '", {1, 1, 0});
  ExpectCounts(DocumentText("#1=A();\r\n#2=B();\r").substr(0, DocumentText("#1=A();\r\n#2=B();\r").size() - 1),
               {1, 2, 0});
}

TEST(StepFormatReaderTest, CountsTypes) {
  ReadDocument document(DocumentText("#1=LINE();#2=(B()A());#3=LINE();#4=(B()A());#5=PLANE(T(1));#6=(A());"));
  std::map<std::string, long> counts;
  for (std::size_t i = 0; i < document->GetTypeCount(); ++i) {
    counts[document->GetTypeName(i)] = document->GetTypeInstanceCount(i);
  }
  EXPECT_EQ(counts, (std::map<std::string, long>{{"LINE", 2}, {"(B A)", 2}, {"PLANE", 1}, {"(A)", 1}}));
}

TEST(StepFormatReaderTest, DescribesInstances) {
  ReadDocument document(DocumentText(kAllKinds));
  EXPECT_THAT(document.Messages(), IsEmpty());
  EXPECT_EQ(document.Record(),
            "DATA #1 A< 'it's' '\\X2\\30D6\\X0\\=\xE3\x83\x96@7' .T r:-1.5E-3 b:0F $ * ( #2 T[ i:1 ] ) >; "
            "#2c B< > C< '\\S\\A=\xC3\x81@8' >; #4 D< #3 >; #3 E< >; ENDSEC");
  // With referrers.
  EXPECT_EQ(document.Record(true),
            "DATA #1 A< 'it's' '\\X2\\30D6\\X0\\=\xE3\x83\x96@7' .T r:-1.5E-3 b:0F $ * ( #2 T[ i:1 ] ) >; "
            "#2c B< > C< '\\S\\A=\xC3\x81@8' > <-1; #4 D< #3 >; #3 E< > <-4; ENDSEC");
}

TEST(StepFormatReaderTest, DescribesSectionParameters) {
  ReadDocument document(DocumentText("#1=A(#2);ENDSEC;DATA('two',('S'));#2=B(#1,#1);#3=C(#2,#2,#1);"));
  EXPECT_EQ(document.Record(true),
            "DATA #1 A< #2 > <-2 <-3; ENDSEC DATA < 'two' ( 'S' ) > #2 B< #1 #1 > <-1 <-3; #3 C< #2 #2 #1 >; ENDSEC");
}

TEST(StepFormatReaderTest, DescribesHeader) {
  ReadDocument document(kHeader + "OTHER(1,#2);ENDSEC;DATA;ENDSEC;END-ISO-10303-21;");
  DocumentRecorder recorder;
  EXPECT_EQ(document->DescribeHeader(recorder), VREL_S_OK);
  EXPECT_EQ(recorder.text,
            "FILE_DESCRIPTION< ( '' ) '' > FILE_NAME< '' '' ( '' ) ( '' ) '' '' '' > FILE_SCHEMA< ( 'S' ) > "
            "OTHER< i:1 #2? >");
}

// The same error again, at its own place, although other instances were read since.
TEST(StepFormatReaderTest, ReadsLostEntityAgain) {
  ReadDocument document(DocumentText("#1=A(1);\n#2=B(1;\n#3=C(1);\n#4=D(2);\n"));
  ASSERT_EQ(document->GetInstanceCount(), 3);
  std::vector<std::string> const first = document.Messages();
  ASSERT_EQ(first.size(), 1U);
  VRELDynamicArray<VRELEntityReader*> const entities = document->GetDataEntityList();
  ASSERT_EQ(entities.size(), 4);
  EXPECT_TRUE(entities.getArray()[1]->ReadEntity().IsFailure());
  std::vector<std::string> const both = document.Messages();
  ASSERT_EQ(both.size(), 2U);
  EXPECT_EQ(both[1], first[0]);
  EXPECT_EQ(entities.getArray()[1]->GetEntityType().toUtf8(), "");
  EXPECT_EQ(document->GetInstanceCount(), 3);
  EXPECT_EQ(entities.getArray()[3]->GetEntityType().toUtf8(), "D");
}

TEST(StepFormatReaderTest, FillsReaderLists) {
  ReadDocument document(DocumentText("#7=A(1);#99999999999=B();"));
  VRELDynamicArray<VRELEntityReader*> const entities = document->GetDataEntityList();
  ASSERT_EQ(entities.size(), 2);
  int id = -5;
  EXPECT_EQ(entities.getArray()[0]->GetEntityId(id), VREL_S_OK);
  EXPECT_EQ(id, 7);
  EXPECT_EQ(entities.getArray()[0]->GetEntityType().toUtf8(), "A");
  EXPECT_EQ(entities.getArray()[1]->GetEntityId(id), VREL_E_FAIL);
  EXPECT_EQ(id, 7);
  EXPECT_EQ(entities.getArray()[1]->GetEntityType().toUtf8(), "B");
  EXPECT_EQ(document->GetHeaderEntityList().size(), 3);
  // Reading an instance again does not count it twice.
  EXPECT_EQ(entities.getArray()[0]->ReadEntity(), VREL_S_OK);
  EXPECT_EQ(document->GetInstanceCount(), 2);
  EXPECT_EQ(document->GetNextDataSection(), nullptr);
}

TEST(StepFormatReaderTest, AcceptsAllLineEnds) {
  std::string const bytes = DocumentText("#1=A('a\nb\\S\\A',\n#2);\n#2=B();\n");
  for (char const* end : {"\n", "\r\n", "\r"}) {
    std::string other;
    for (char const byte : bytes) other += byte == '\n' ? end : std::string(1, byte);
    ReadDocument document(other);
    EXPECT_THAT(document.Messages(), IsEmpty());
    EXPECT_EQ(document.Record(), "DATA #1 A< 'ab\\S\\A=ab\xC3\x81@7' #2 >; #2 B< >; ENDSEC");
  }
}

TEST(StepFormatReaderTest, RefusesOtherFormats) {
  struct Row {
    std::string bytes;
    std::string error;
  };
  Row const rows[] = {
      {"", " error: the file is empty"},
      {"\n\n", " error: the file contains nothing but white space"},
      {std::string(10000, ' ') + "\t\r\n\v\f", " error: the file contains nothing but white space"},
      {"\xEF\xBB\xBF\n", " error: the file contains nothing but white space"},
      {"/* */", "1:6: error: expected ISO-10303-21, found end of file"},
      {std::string(10000, ' ') + "/* */", "1:10006: error: expected ISO-10303-21, found end of file"},
      {"Dear all,\n", "1:1: error: expected ISO-10303-21, found 'Dear'"},
      {"\n {\"a\":1}", "2:2: error: expected ISO-10303-21, found '{'"},
      {std::string("\x7F"
                   "ELF\0\1",
                   6),
       "1:1: error: expected ISO-10303-21, found byte 0x7F"},
      {"ISO-10303-21\nEADER;", "2:1: error: expected ';' after ISO-10303-21, found 'EADER'"},
      {"ISO-10303-21;\nDATA;", "2:1: error: expected HEADER, found 'DATA'"},
      {"'", "1:1: error: expected \"'\" at the end of the string, found end of file"},
      {"HEADER" + std::string(4096, ' ') + ";", "1:1: error: expected ISO-10303-21, found 'HEADER'"},
  };
  for (Row const& row : rows) {
    ReadDocument document(row.bytes);
    EXPECT_EQ(document.opened, VREL_E_INVALID_FILE);
    EXPECT_EQ(document->GetState(), VREL_E_INVALID_FILE);
    EXPECT_THAT(document.Messages(), ElementsAre("ERROR: part.stp:" + row.error +
                                                 "\nhint: the input must be an ISO 10303-21 (STEP) clear text file"));
    EXPECT_EQ(document->GetSectionCount(), 0);
  }
}

TEST(StepFormatReaderTest, ResumesAfterSyntaxErrors) {
  struct Row {
    std::string data;
    std::string warning;  // the first one
    long instances;       // that are read nevertheless
  };
  std::string const lost = "; the instance is lost";
  std::string const part = "; this part of the section is lost";
  Row const rows[] = {
      {"1=A();#9=B();", "7:1: warning: expected instance or ENDSEC, found '1'" + part, 1},
      {"#1\nA();#9=B();", "8:1: warning: expected '=' after the name of an instance, found 'A'" + part, 1},
      {"#1=\n#2;#9=B();", "8:1: warning: expected entity name, found '#2' in #1" + lost, 1},
      {"#1=A(1\n2);#9=B();", "8:1: warning: expected ',' or ')' after a parameter, found '2' in #1" + lost, 1},
      // A semicolon is missing: the next instance is read.
      {"#4=A()\n#5=B();#9=B();", "8:1: warning: expected ';' after an instance, found '#5' in #4" + lost, 2},
      {"#4=A(1\n#5=B();#9=B();", "8:1: warning: expected ',' or ')' after a parameter, found '#5' in #4" + lost, 2},
      {"#4=A(\n(#5,#6=B();", "8:7: warning: expected ',' or ')' after a parameter, found '=' in #4" + lost, 0},
      {"#4=A(", "7:12: warning: expected '(' after a type name, found ';' in #4" + lost, 0},
      {"#9=B();#1=&SCOPE #2=A();",
       "7:25: warning: expected ENDSCOPE, found 'ENDSEC'; the instances of the open scopes are lost", 2},
      {"ENDSCOPE;#9=B();", "7:1: warning: expected instance or ENDSEC, found 'ENDSCOPE'" + part, 1},
      {"#1=&SCOPE ENDSCOPE /\n/ A();#9=B();", "8:1: warning: expected exported instance, found '/'" + part, 1},
      {"#1=&SCOPE ENDSCOPE /#2 #3/ A();#9=B();",
       "7:24: warning: expected '/' after the exported instances, found '#3'" + part, 1},
      {"#1=&SCOPE #2=A(;\nENDSCOPE B();#9=B();", "7:16: warning: expected parameter, found ';' in #2" + lost, 2},
      {"#3=A(:);#9=B();", "7:6: warning: expected parameter, found ':' in #3" + lost, 1},
      {"#1=/* c\n#9=B();", "7:4: warning: expected '*/' at the end of the comment, found end of file in #1" + lost, 1},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.data);
    ReadDocument document(DocumentText(row.data));
    ASSERT_FALSE(document.Messages().empty());
    EXPECT_EQ(document.Messages()[0], "WARNING: part.stp:" + row.warning);
    EXPECT_EQ(document->GetInstanceCount(), row.instances);
    EXPECT_GE(document->GetFailedCount(), 1);
    EXPECT_FALSE(document->GetLosses().empty());
    EXPECT_EQ(document->GetState(), row.instances == 0 ? VREL_E_INVALID_FILE : VREL_S_PARTIAL);
  }
}

TEST(StepFormatReaderTest, ReportsIncompleteFiles) {
  struct Row {
    std::string rest;  // after "#1=A();"
    std::vector<std::string> messages;
    bool isPartial;
  };
  std::string const end = "end of file; the file may be cut off";
  Row const rows[] = {
      {"\n", {"W 2:1: warning: expected instance or ENDSEC, found end of file; the file is cut off"}, true},
      {"ENDSEC;\n", {"W 2:1: warning: expected END-ISO-10303-21;, found " + end}, true},
      {"ENDSEC;\nEND-ISO-10303-21\n", {"W 3:1: warning: expected END-ISO-10303-21;, found " + end}, true},
      {"\nEND-ISO-10303-21;", {"W 2:1: warning: expected instance or ENDSEC, found 'END-ISO-10303-21'"}, false},
      {"\nDATA;#2=B();ENDSEC;END-ISO-10303-21;", {"W 2:1: warning: expected instance or ENDSEC, found 'DATA'"}, false},
      {"ENDSEC\nEND-ISO-10303-21;", {"W 2:1: warning: expected ';' after ENDSEC, found 'END-ISO-10303-21'"}, false},
      {"ENDSEC;\nEND-ISO-10303-21 'a",
       {"W 2:18: warning: expected END-ISO-10303-21;, found string; the file may be cut off"},
       true},
      {"ENDSEC;\n#2=B();ENDSEC;END-ISO-10303-21;", {"W 2:1: warning: expected DATA, found '#2'"}, true},
      {"ENDSEC;\nX;Y;ENDSEC;END-ISO-10303-21;",
       {"W 2:1: warning: expected DATA or END-ISO-10303-21, found 'X'; this part of the file is lost"},
       true},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.rest);
    std::string const bytes = kHeader + "ENDSEC;DATA;#1=A();" + row.rest;
    EXPECT_EQ(Messages(bytes), row.messages);
    ReadDocument document(bytes);
    EXPECT_EQ(document->GetState(), row.isPartial ? VREL_S_PARTIAL : VREL_S_OK);
    EXPECT_EQ(document->GetLosses().empty(), !row.isPartial);
  }
}

TEST(StepFormatReaderTest, ReportsIncompleteHeader) {
  std::string const none = " in the header, found none";
  EXPECT_THAT(
      Messages("ISO-10303-21;HEADER;\nFILE_NAME();ENDSEC;DATA;ENDSEC;END-ISO-10303-21;"),
      ElementsAre("W 2: warning: expected FILE_DESCRIPTION" + none, "W 2: warning: expected FILE_SCHEMA" + none));
  EXPECT_THAT(Messages(kHeader + "\nFILE_POPULATION(,);1;ENDSEC;DATA;ENDSEC;END-ISO-10303-21;"),
              ElementsAre("W 2:17: warning: expected parameter, found ','; the header entity is lost"));
  EXPECT_THAT(
      Messages(kHeader + "\nA();1;ENDSEC;DATA;ENDSEC;END-ISO-10303-21;"),
      ElementsAre("W 2:5: warning: expected header entity or ENDSEC, found '1'; this part of the header is lost"));
  EXPECT_THAT(Messages(kHeader + "\nDATA;#1=A();ENDSEC;END-ISO-10303-21;"),
              ElementsAre("W 2:1: warning: expected header entity or ENDSEC, found 'DATA'"));
}

TEST(StepFormatReaderTest, ReportsDanglingReferences) {
  ReadDocument document(DocumentText("#1=LINE(#2,\n#5);\n#3=(A(#99999999999999999999)B());#4=A(1;#2=P(#4);"));
  EXPECT_EQ(document.resolved, VREL_S_OK);
  std::vector<std::string> const messages = document.Messages();
  ASSERT_EQ(messages.size(), 4U);
  EXPECT_EQ(messages[1],
            "WARNING: part.stp:8:1: warning: no instance '#5' in the file, referred to in #1 of type LINE");
  EXPECT_EQ(messages[2],
            "WARNING: part.stp:9:7: warning: no instance '#99999999999999999999' in the file, referred to in #3 of "
            "type (A B)");
  // An instance that could not be read is not defined.
  EXPECT_THAT(messages[3], HasSubstr("no instance '#4' in the file, referred to in #2 of type P"));
  EXPECT_EQ(document->GetDanglingCount(), 3);
  EXPECT_EQ(document->GetState(), VREL_S_PARTIAL);
  EXPECT_THAT(document.Record(), HasSubstr("#1 LINE< #2 #5? >;"));
}

TEST(StepFormatReaderTest, LongTypeNameIsCutWithEllipsis) {
  ReadDocument document(DocumentText("#1=" + std::string(100, 'T') + "(#5);"));
  EXPECT_THAT(document.Messages(),
              ElementsAre(testing::EndsWith("referred to in #1 of type " + std::string(60, 'T') + "...")));
}

TEST(StepFormatReaderTest, RefusesDuplicateIds) {
  ReadDocument document(DocumentText("#1=A();#5=A();\n#01=B();ENDSEC;DATA;\n#5=C();\n#1=D();"));
  EXPECT_EQ(document.resolved, VREL_E_INVALID_FILE);
  EXPECT_EQ(document->GetState(), VREL_E_INVALID_FILE);
  std::string const hint = "\nhint: give one of them another id";
  EXPECT_THAT(document.Messages(),
              ElementsAre("ERROR: part.stp:8: error: duplicate instance #1, first defined in line 7" + hint,
                          "ERROR: part.stp:9: error: duplicate instance #5, first defined in line 7" + hint,
                          "ERROR: part.stp:10: error: duplicate instance #1, first defined in line 7" + hint));
}

// The duplicate may be the result of the damage.
TEST(StepFormatReaderTest, DuplicateInDamagedFileIsLost) {
  ReadDocument document(DocumentText("#1=A(;\n#2=B();\n#2=(C('\\\\')D());\n#3=E(#2);\n"));
  EXPECT_EQ(document.resolved, VREL_S_OK);
  EXPECT_EQ(document->GetState(), VREL_S_PARTIAL);
  EXPECT_EQ(document->GetInstanceCount(), 2);
  EXPECT_EQ(document->GetComplexCount(), 0);
  EXPECT_EQ(document->GetEscapedCount(), 0);
  ASSERT_EQ(document->GetLosses().size(), 2U);
  EXPECT_THAT(document->GetLosses()[1].instances, ElementsAre("#2"));
  EXPECT_EQ(document.Record(), "DATA #2 B< >; #3 E< #2 >; ENDSEC");
}

TEST(StepFormatReaderTest, ReportsHundredWarnings) {
  std::string data;
  for (int i = 0; i < 150; ++i) data += "#" + std::to_string(i) + "=A(#1000);";
  std::vector<std::string> const messages = ReadDocument(DocumentText(data)).Messages();
  ASSERT_EQ(messages.size(), 101U);
  EXPECT_EQ(messages[100], "WARNING: part.stp: warning: 50 more warnings were not shown");
}

TEST(StepFormatReaderTest, TakesDeepListsAndScopes) {
  constexpr long kDepth = 100'000;
  ExpectCounts(DocumentText("#1=A(" + std::string(kDepth, '(') + "1" + std::string(kDepth, ')') + ");"), {1, 1, 0});
  std::string scopes;
  std::string ends;
  for (long i = 0; i < kDepth; ++i) {
    scopes += "#" + std::to_string(i) + "=&SCOPE ";
    ends += "ENDSCOPE A();";
  }
  ExpectCounts(DocumentText(scopes + ends), {1, kDepth, 0});
}

// Ids that agree in their lower half share no slot for it.
TEST(StepFormatReaderTest, TakesSparseIds) {
  constexpr long kCount = 100'000;
  std::string data;
  for (long i = 0; i < kCount; ++i) data += "#" + std::to_string(std::uint64_t(i) << 32U) + "=A();";
  std::clock_t const start = std::clock();
  ExpectCounts(DocumentText(data), {1, kCount, 0});
  EXPECT_LT(std::clock() - start, 5 * CLOCKS_PER_SEC);
}

TEST(StepFormatReaderTest, AcceptsIdsOfAnyLength) {
  std::string const far = "1" + std::string(300, '0');
  ReadDocument document(DocumentText("#" + far + "1=A(#00" + far + "2,#" + far + "3);#000" + far + "2=B(#1);#1=C(#" +
                                     far + "1);\n#0" + far + "1=D();"));
  EXPECT_THAT(
      document.Messages(),
      ElementsAre("ERROR: part.stp:8: error: duplicate instance #" + far.substr(0, 20) +
                      "..., first defined in line 7\nhint: give one of them another id",
                  "WARNING: part.stp:7:" + std::to_string(2 * 304 + 5) + ": warning: no instance '#" +
                      far.substr(0, 59) + "...' in the file, referred to in #" + far.substr(0, 20) + "... of type A"));
  // Of referrers the first 64 digits are passed on.
  std::string const cut = far.substr(0, 64);
  EXPECT_EQ(document.Record(true), "DATA ##" + far + "1 A< ##" + far + "2 ##" + far + "3? > <-1; ##" + far +
                                       "2 B< #1 > <-" + cut + "; #1 C< ##" + far + "1 > <-" + cut + "; ##" + far +
                                       "1 D< >; ENDSEC");
}

// For ids of any length.
TEST(StepFormatReaderTest, UsesHundredBytesPerInstance) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "AddressSanitizer does not report its blocks";
#else
  // Blocks that are mapped count with the unused addresses around them, so that none shall be.
  mallopt(M_MMAP_THRESHOLD, 32 << 20);
  auto const allocated = [] { return static_cast<long>(mallinfo2().uordblks + mallinfo2().hblkhd); };
  auto const taken = [&allocated](std::string const& zeros, long count) {
    std::string data;
    for (long i = 0; i < count; ++i) data += "#1" + std::to_string(count + i) + zeros + "=A();";
    long const before = allocated();
    ReadDocument document(DocumentText(data));
    EXPECT_FALSE(document.Record(true).empty());
    return allocated() - before;
  };
  for (char const* zeros : {"", "000", "0000000000", "00000000000000000000"}) {
    SCOPED_TRACE(zeros);
    long const few = taken(zeros, 100'000);
    long const each = (taken(zeros, 400'000) - few) / 300'000;
    EXPECT_GT(each, 40);
    EXPECT_LT(each, 100);
  }
#endif
}

TEST(StepFormatReaderTest, ReadsSectionWithDamagedHeading) {
  struct Row {
    char const* heading;
    char const* error;
  };
  Row const rows[] = {{"DATA", "6: warning: expected ';' after DATA, found '#1'"},
                      {"DATA('x'", "10: warning: expected ',' or ')' after a parameter, found '#1'"},
                      {"DATA('x',);", "10: warning: expected parameter, found ')'"},
                      {"DATA('x'):", "10: warning: expected ';' after DATA, found ':'"},
                      {"DATA 5;", "6: warning: expected ';' after DATA, found '5'"}};
  for (Row const& row : rows) {
    std::string const bytes = kHeader + "ENDSEC;\n" + row.heading + " #1=A();#2=B();ENDSEC;END-ISO-10303-21;";
    EXPECT_THAT(Messages(bytes), ElementsAre(std::string("W 2:") + row.error + "; the heading of the section is lost"));
    ReadDocument document(bytes);
    // Without a semicolon nothing separates the instance from the heading.
    bool const losesFirst = row.error[0] == '1' && std::string(row.heading).back() == ':';
    EXPECT_EQ(document->GetInstanceCount(), losesFirst ? 1 : 2) << row.heading;
    EXPECT_EQ(document->GetSectionCount(), 1) << row.heading;
    EXPECT_EQ(document->GetState(), VREL_S_PARTIAL);
    EXPECT_THAT(document.Record(), testing::EndsWith("#2 B< >; ENDSEC"));
  }
}

TEST(StepFormatReaderTest, ResolveIsIdempotent) {
  for (char const* far : {"2", "2000000", "20000000000000000000000"}) {
    ReadDocument document(DocumentText("#1=A(#9);#" + std::string(far) + "=B(#1);"));
    std::string const record = document.Record(true);
    EXPECT_EQ(document.Messages().size(), 1U);
    EXPECT_EQ(document->Resolve(), VREL_S_OK);
    EXPECT_EQ(document.Messages().size(), 1U);
    EXPECT_EQ(document->GetState(), VREL_S_OK);
    EXPECT_EQ(document.Record(true), record);
  }
  ReadDocument repeated(DocumentText("#1=A();#1=A();"));
  EXPECT_EQ(repeated->Resolve(), VREL_E_INVALID_FILE);
  EXPECT_EQ(repeated.Messages().size(), 1U);
}

// Nothing is reported or counted twice.
TEST(StepFormatReaderTest, ResolvesAfterAbort) {
  ReadDocument document(DocumentText("#1=A();#2000000=B(#1);"), "part.stp", false);
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(document->Resolve(), VRELAbortException);
  DocumentRecorder recorder;
  Progress progress;
  EXPECT_EQ(document->Describe(recorder, progress, true), VREL_E_FAIL);
  EXPECT_EQ(document->Resolve(), VREL_S_OK);
  EXPECT_THAT(document.Messages(), IsEmpty());
  EXPECT_EQ(document.Record(true), "DATA #1 A< > <-2000000; #2000000 B< #1 >; ENDSEC");
}

TEST(StepFormatReaderTest, StopsOnAbort) {
  ScratchDirectory directory;
  std::string const path = directory.Write("part.stp", DocumentText("#1=A();#2=B();"));
  VRELFormatReaderHandle handle(new StepFormatReader(VRELFileHandle(new VRELFile(path.c_str())), "part.stp"));
  auto* const document = static_cast<StepFormatReader*>(static_cast<VRELFormatReader*>(handle));
  ASSERT_EQ(document->Open(), VREL_S_OK);
  VRELReader reader(handle);
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(reader.ReadHeaderSection(), VRELAbortException);
  reader.ReadHeaderSection();
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(reader.ReadDataSection(), VRELAbortException);
}

TEST(StepFormatReaderTest, DescribeNeedsResolve) {
  ScratchDirectory directory;
  std::string const path = directory.Write("part.stp", DocumentText("#1=A();#2=B();"));
  VRELFormatReaderHandle handle(new StepFormatReader(VRELFileHandle(new VRELFile(path.c_str())), "part.stp"));
  auto* const document = static_cast<StepFormatReader*>(static_cast<VRELFormatReader*>(handle));
  DocumentRecorder recorder;
  Progress progress;
  EXPECT_EQ(document->Describe(recorder, progress, false), VREL_E_FAIL);
  EXPECT_EQ(document->Resolve(), VREL_E_FAIL);
}

// The window is 4 MiB: bytes outside it are read from the file again.
TEST(StepFormatReaderTest, ReportsChangedFile) {
  std::string const filling = "/*" + std::string(5U << 20U, ' ') + "*/";
  std::string const bytes = DocumentText("#1=A();#2=B(#1);" + filling + "#3=C(#1);#4=D(#2);");
  std::string const changed =
      "; the file has changed since it was read\nhint: translate it again when nothing writes to it";
  struct Row {
    char const* from;  // empty: the file is cut after the filling
    char const* to;
    std::string error;
  };
  Row const rows[] = {
      {"C(#1)", "C(#2)", "part.stp: error: the references are not those that were counted" + changed},
      {"D(#2)", "D(#9)", "part.stp: error: the references are not those that were counted" + changed},
      {"C(#1)", "C(#1=", "part.stp:7: error: expected ',' or ')' after a parameter, found '='" + changed},
      {"", "", "part.stp: error: the references are not those that were counted" + changed},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.to);
    ReadDocument document(bytes);
    ASSERT_EQ(document.resolved, VREL_S_OK);
    if (*row.from == '\0') {
      ASSERT_EQ(truncate(document.Path().c_str(), static_cast<off_t>(bytes.find("#3="))), 0);
    } else {
      std::fstream(document.Path(), std::ios::in | std::ios::out | std::ios::binary)
          .seekp(static_cast<std::streamoff>(bytes.find(row.from)))
          .write(row.to, 5);
    }
    DocumentRecorder recorder;
    Progress progress;
    EXPECT_EQ(document->Describe(recorder, progress, true), VREL_E_INVALID_FILE);
    EXPECT_THAT(document.Messages(), ElementsAre("ERROR: " + row.error));
  }
}

// Without referrers; not even the ids are there.
TEST(StepFormatReaderTest, ReportsTruncatedFile) {
  std::string const filling = "/*" + std::string(5U << 20U, ' ') + "*/";
  std::string const bytes = DocumentText("#1=A();" + filling + "#10000000000000000000=C();#2=D();");
  ReadDocument document(bytes);
  ASSERT_EQ(truncate(document.Path().c_str(), 1000), 0);
  DocumentRecorder recorder;
  Progress progress;
  EXPECT_EQ(document->Describe(recorder, progress, false), VREL_E_INVALID_FILE);
  EXPECT_THAT(
      document.Messages(),
      ElementsAre("ERROR: part.stp:7: error: expected entity name, found end of file; the file has changed since "
                  "it was read\nhint: translate it again when nothing writes to it"));
}

// A folder, a pipe and a missing file.
TEST(StepFormatReaderTest, RefusesUnreadableFile) {
  ScratchDirectory directory;
  std::string const pipe = directory.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (std::string const& path : {directory.Path(), pipe, directory.Path("none")}) {
    RecordingListener listener;
    VRELFormatReaderHandle handle(new StepFormatReader(VRELFileHandle(new VRELFile(path.c_str())), "shown"));
    auto* const document = static_cast<StepFormatReader*>(static_cast<VRELFormatReader*>(handle));
    EXPECT_EQ(document->Open(), VREL_E_FILE_OPEN);
    ASSERT_EQ(listener.events.size(), 1U);
    EXPECT_THAT(listener.events[0].text, HasSubstr("shown: error: cannot read: "));
    EXPECT_EQ(document->GetState(), VREL_E_INVALID_FILE);
    EXPECT_EQ(document->GetNextDataSection(), nullptr);
  }
}

TEST(StepFormatReaderTest, EveryPrefixIsIncomplete) {
  std::string const whole = DocumentText(kAllKinds);
  ASSERT_THAT(Messages(whole), IsEmpty());
  for (std::size_t length = 0; length < EndOf(whole); ++length) {
    ReadDocument document(whole.substr(0, length));
    ASSERT_NE(document->GetState(), VREL_S_OK) << length;
    ASSERT_FALSE(document.Messages().empty()) << length;
  }
}

TEST(StepFormatReaderTest, SurvivesRandomBytes) {
  std::mt19937 random(20261120);
  for (int run = 0; run < 600; ++run) {
    std::string bytes = run % 2 == 0 ? "" : kHeader + "ENDSEC;DATA;";
    std::size_t const length = random() % 300;
    for (std::size_t i = 0; i < length; ++i) bytes += static_cast<char>(random() % 256);
    ReadDocument document(bytes);
    EXPECT_NE(document->GetState(), VREL_S_OK) << run;
  }
}

// A document can be described after random changes.
TEST(StepFormatReaderTest, SurvivesRandomChanges) {
  std::string const whole = DocumentText(kAllKinds);
  std::string const alphabet = "'\"()/*;=#,\\&$.!<>XS02A\n\r\xE9";
  std::mt19937 random(1994);
  int changedMeaning = 0;
  for (int run = 0; run < 1500; ++run) {
    std::string changed = whole;
    for (unsigned int change = random() % 4 + 1; change != 0; --change) {
      std::size_t const at = random() % changed.size();
      char const byte = alphabet[random() % alphabet.size()];
      if (random() % 2 == 0) {
        changed[at] = byte;
      } else {
        changed.insert(at, 1, byte);
      }
    }
    ReadDocument document(changed);
    if (!document.opened.IsSuccess()) continue;
    document.Record(true);
    if (document->GetState() != VREL_S_OK) ++changedMeaning;
  }
  EXPECT_GT(changedMeaning, 250);
}

TEST(StepFormatReaderTest, ReadsExample) {
  ReadDocument document(FileText(BracketPath()));
  EXPECT_THAT(document.Messages(), IsEmpty());
  EXPECT_EQ(document->GetInstanceCount(), 232);
  EXPECT_EQ(document->GetComplexCount(), 5);
}

TEST(StepFormatReaderTest, EveryCutOfExampleIsIncomplete) {
  std::string const whole = FileText(BracketPath());
  std::size_t const end = EndOf(whole);
  ASSERT_GT(end, 10000U);
  for (std::size_t length = 0; length < end; length += 23) {
    ReadDocument document(whole.substr(0, length));
    ASSERT_NE(document->GetState(), VREL_S_OK) << length;
    if (document.opened.IsSuccess()) document.Record();
  }
}

TEST(StepFormatReaderTest, ReadsCorpus) {
  char const* const folder = std::getenv("VREL_CORPUS");
  if (folder == nullptr) GTEST_SKIP() << "set VREL_CORPUS to a folder of STEP files to run this test";
  struct Row {
    char const* name;
    long instances;
  };
  Row const rows[] = {
      {"as1-oc-214.stp", 6425}, {"dm1-id-214.stp", 1189}, {"io1-cm-214.stp", 917}, {"ATS10-out.stp", 1102}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.name);
    ReadDocument document(FileText(std::string(folder) + "/" + row.name));
    EXPECT_THAT(document.Messages(), IsEmpty());
    EXPECT_EQ(document->GetSectionCount(), 1);
    EXPECT_EQ(document->GetInstanceCount(), row.instances);
    bool const hasBlend =
        document.Record().find("=\xE3\x83\x96\xE3\x83\xAC\xE3\x83\xB3\xE3\x83\x89 R1@") != std::string::npos;
    EXPECT_EQ(hasBlend, std::string(row.name) == "io1-cm-214.stp");
  }
}

// Does not need Resolve.
TEST(StepFormatReaderTest, DescribesEscapedInstances) {
  std::string const bytes =
      kHeader +
      "ENDSEC;DATA;\n#1=A('x');\n#2=B('\\S\\A',#1);\n#3=(C('y')D('\\S\\A',\n'\\S\\A'));\n#4=E();\n"
      "ENDSEC;\nDATA('\\S\\A',('S'));\nENDSEC;END-ISO-10303-21;";
  ScratchDirectory const directory;
  StepFormatReader* const document =
      new StepFormatReader(VRELFileHandle(new VRELFile(directory.Write("part.stp", bytes).c_str())), "part.stp");
  VRELFormatReaderHandle const handle(document);
  ASSERT_EQ(document->Open(), VREL_S_OK);
  VRELReader reader(handle);
  reader.ReadHeaderSection();
  reader.ReadDataSection();
  EXPECT_EQ(document->GetEscapedCount(), 4);
  DocumentRecorder recorder;
  EXPECT_EQ(document->DescribeEscaped(recorder), VREL_S_OK);
  EXPECT_EQ(recorder.text,
            "DATA #2 B< '\\S\\A=\xC3\x81@3' #1? >; #3c C< 'y' > D< '\\S\\A=\xC3\x81@4' '\\S\\A=\xC3\x81@5' >; ENDSEC "
            "DATA < '\\S\\A=\xC3\x81@8' ( 'S' ) > ENDSEC");
  EXPECT_EQ(ReadDocument(kHeader + "ENDSEC;DATA;#1=A('x''y');ENDSEC;END-ISO-10303-21;")->GetEscapedCount(), 0);
}

// Only if the heading is read.
TEST(StepFormatReaderTest, CountsEscapesOfHeading) {
  EXPECT_EQ(ReadDocument(kHeader + "ENDSEC;DATA('\\\\') #1=A();ENDSEC;END-ISO-10303-21;")->GetEscapedCount(), 1);
  EXPECT_EQ(ReadDocument(kHeader + "ENDSEC;DATA('\\\\',) #1=A();ENDSEC;END-ISO-10303-21;")->GetEscapedCount(), 0);
}

// ISO 10303-21:2016.
TEST(StepFormatReaderTest, ReadsEdition3Sections) {
  std::string const bytes =
      kHeader +
      "ENDSEC;ANCHOR;<top>=#1{label:'x'};ENDSEC;REFERENCE;#10=<a.stp#b>;#0011=<c>;@12=<d>;ENDSEC;"
      "DATA;#1=A(#10,#11,#12,@12);ENDSEC;END-ISO-10303-21;\nSIGNATURE;\nMII/B=\nENDSEC;\nSIGNATURE;"
      "\nC=\nENDSEC;\nwhat follows 'is ignored";
  ReadDocument document(bytes);
  EXPECT_THAT(document.Messages(),
              ElementsAre("WARNING: part.stp:1:" + std::to_string(bytes.find("#12") + 1) +
                          ": warning: no instance '#12' in the file, referred to in #1 of type A"));
  EXPECT_EQ(document->GetState(), VREL_S_OK);
  EXPECT_EQ(document->GetSectionCount(), 1);
  EXPECT_EQ(document->GetInstanceCount(), 1);
  EXPECT_EQ(document.Record(),
            "ANCHOR <top>= #1 {label: 'x' } ; ENDSEC REFERENCE #10= <a.stp#b> ; #0011= <c> ; @12= <d> ; ENDSEC "
            "DATA #1 A< #10 #11 #12? @12 >; ENDSEC SIGNATURE [MII/B=\n] ENDSEC SIGNATURE [C=\n] ENDSEC");
}

TEST(StepFormatReaderTest, SignatureNeedsNoSemicolon) {
  ReadDocument document(DocumentText("#1=A();") +
                        "SIGNATURE\r\nMII/*=\r\nENDSEC;\nSIGNATURE;\nC=\nENDSEC;\nSIGNATURE D=\nENDSEC;");
  EXPECT_EQ(document.Messages(), std::vector<std::string>());
  EXPECT_EQ(document->GetState(), VREL_S_OK);
  EXPECT_THAT(document.Record(),
              testing::EndsWith("SIGNATURE [MII/*=\n] ENDSEC SIGNATURE [C=\n] ENDSEC SIGNATURE [D=\n] ENDSEC"));
}

TEST(StepFormatReaderTest, ReportsLostSignature) {
  ReadDocument document(DocumentText("#1=A();") + "SIGNATURE\n" + std::string(StepScanner::kTextLimit + 1, 'M') +
                        "\nENDSEC;\n");
  EXPECT_THAT(document.Messages(),
              ElementsAre(testing::EndsWith("expected a section of at most 16 MiB, found a longer one; "
                                            "the signature is lost")));
  EXPECT_EQ(document->GetState(), VREL_S_PARTIAL);
}

TEST(StepFormatReaderTest, SignatureBeforeDataIsDescribedLast) {
  ReadDocument document(kHeader + "ENDSEC;SIGNATURE;\nMII\nENDSEC;DATA;#1=A();ENDSEC;END-ISO-10303-21;");
  EXPECT_EQ(document.Record(), "DATA #1 A< >; ENDSEC SIGNATURE [MII\n] ENDSEC");
}

TEST(StepFormatReaderTest, DamagedEntryIsLost) {
  ReadDocument document(kHeader +
                        "ENDSEC;ANCHOR;\n<a>=#1;\n<b=#1;\n<c>=#1;\nENDSEC;\nDATA;#1=A();ENDSEC;END-ISO-10303-21;");
  EXPECT_THAT(
      document.Messages(),
      ElementsAre("WARNING: part.stp:3:1: warning: expected '>' at the end of the resource, found end of line; the "
                  "entry is lost"));
  EXPECT_EQ(document->GetState(), VREL_S_PARTIAL);
  EXPECT_THAT(document.Record(), HasSubstr("ANCHOR <a>= #1 ; <c>= #1 ; ENDSEC DATA #1 A< >; ENDSEC"));
}

TEST(StepFormatReaderTest, SignatureWithoutEndIsIncomplete) {
  ReadDocument document(DocumentText("#1=A();") + "SIGNATURE;\nMII\n");
  EXPECT_THAT(document.Messages(),
              ElementsAre("WARNING: part.stp:11:1: warning: expected ENDSEC, found end of file; the file is cut off"));
  EXPECT_EQ(document->GetState(), VREL_S_PARTIAL);
}

TEST(StepFormatReaderTest, OptionSetsEncoding) {
  ScratchDirectory const directory;
  VRELFileHandle const file(new VRELFile(directory.Write("part.stp", DocumentText("#1=A('5 \x80');")).c_str()));
  VRELOptions options;
  options.AddOption(L"Step.*.Reader.Encoding", VRELString("windows-1252"));
  RecordingListener listener;
  StepFormatReader* const document = new StepFormatReader(file, "part.stp", &options);
  VRELFormatReaderHandle const handle(document);
  ASSERT_EQ(document->Open(), VREL_S_OK);
  VRELReader reader(handle);
  reader.ReadHeaderSection();
  reader.ReadDataSection();
  reader.Resolve();
  DocumentRecorder recorder;
  Progress progress;
  EXPECT_EQ(document->Describe(recorder, progress, false), VREL_S_OK);
  EXPECT_EQ(recorder.text, "DATA #1 A< '5 \x80=5 \xE2\x82\xAC' >; ENDSEC");
  EXPECT_THAT(listener.Texts(), ElementsAre("part.stp: encoding of strings: windows-1252 (1 string)"));
}

TEST(StepFormatReaderTest, RefusesUnknownEncoding) {
  ScratchDirectory const directory;
  VRELFileHandle const file(new VRELFile(directory.Write("part.stp", DocumentText("#1=A();")).c_str()));
  VRELOptions options;
  options.AddOption(L"Step.*.Reader.Encoding", VRELString("klingon"));
  RecordingListener listener;
  StepFormatReader* const document = new StepFormatReader(file, "part.stp", &options);
  VRELFormatReaderHandle const handle(document);
  EXPECT_EQ(document->Open(), VREL_E_INVALID_ARGUMENT);
  EXPECT_THAT(listener.Texts(),
              ElementsAre("part.stp: error: unknown encoding 'klingon' in option Step.*.Reader.Encoding\nhint: name an "
                          "encoding as ICU does, such as UTF-8, ISO-8859-1 or Shift_JIS"));
}

TEST(StepFormatReaderTest, LogsEncodings) {
  ReadDocument document(DocumentText("#1=A('\xC3\xA4','\xE4');#2=A('\xE4');"));
  EXPECT_THAT(document.Messages(), IsEmpty());
  EXPECT_THAT(document.listener.Texts(),
              ElementsAre("part.stp: encoding of strings: UTF-8 (1 string), ISO-8859-1 (2 strings)"));
}
