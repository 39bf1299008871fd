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

// What is told of a document, one line each, without the name of the file.
std::vector<std::string> Told(std::string const& bytes) {
  std::vector<std::string> told;
  for (std::string const& message : ReadDocument(bytes).Messages()) {
    std::string const place = "part.stp:";
    std::size_t const at = message.find(place);
    EXPECT_NE(at, std::string::npos) << message;
    told.push_back(message.substr(0, message[0] == 'W' ? 1 : 2) + " " + message.substr(at + place.size()));
  }
  return told;
}

std::string const HEADER =
    "ISO-10303-21;HEADER;FILE_DESCRIPTION((''),'');FILE_NAME('','',(''),(''),'','','');FILE_SCHEMA(('S'));";
std::string const ALL_KINDS =
    "#1=A('it''s','\\X2\\30D6\\X0\\',.T.,-1.5E-3,\"0F\",$,*,(#2,T(1)));/* c */\n#2=(B()C('\\S\\A'));\n"
    "#3=&SCOPE #4=D(#3);ENDSCOPE/#4/E();\n";

// The position behind the semicolon that ends the exchange structure.
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

TEST(StepFormatReaderTest, DescribesInstancesInTheirOrder) {
  ReadDocument document(DocumentText(ALL_KINDS));
  EXPECT_THAT(document.Messages(), IsEmpty());
  EXPECT_EQ(document.Record(),
            "DATA #1 A< 'it's' '\\X2\\30D6\\X0\\=\xE3\x83\x96@7' .T r:-1.5E-3 b:0F $ * ( #2 T[ i:1 ] ) >; "
            "#2c B< > C< '\\S\\A=\xC3\x81@8' >; #4 D< #3 >; #3 E< >; ENDSEC");
  // Again, with those that refer to each.
  EXPECT_EQ(document.Record(true),
            "DATA #1 A< 'it's' '\\X2\\30D6\\X0\\=\xE3\x83\x96@7' .T r:-1.5E-3 b:0F $ * ( #2 T[ i:1 ] ) >; "
            "#2c B< > C< '\\S\\A=\xC3\x81@8' > <-1; #4 D< #3 >; #3 E< > <-4; ENDSEC");
}

TEST(StepFormatReaderTest, DescribesSectionsWithTheirParameters) {
  ReadDocument document(DocumentText("#1=A(#2);ENDSEC;DATA('two',('S'));#2=B(#1,#1);#3=C(#2,#2,#1);"));
  EXPECT_EQ(document.Record(true),
            "DATA #1 A< #2 > <-2 <-3; ENDSEC DATA < 'two' ( 'S' ) > #2 B< #1 #1 > <-1 <-3; #3 C< #2 #2 #1 >; ENDSEC");
}

TEST(StepFormatReaderTest, DescribesTheHeader) {
  ReadDocument document(HEADER + "OTHER(1,#2);ENDSEC;DATA;ENDSEC;END-ISO-10303-21;");
  DocumentRecorder recorder;
  EXPECT_EQ(document->DescribeHeader(recorder), VREL_S_OK);
  EXPECT_EQ(recorder.text,
            "FILE_DESCRIPTION< ( '' ) '' > FILE_NAME< '' '' ( '' ) ( '' ) '' '' '' > FILE_SCHEMA< ( 'S' ) > "
            "OTHER< i:1 #2? >");
}

TEST(StepFormatReaderTest, WalksAsTheFrameDoes) {
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
  // The walk is over; reading an instance once more counts nothing twice.
  EXPECT_EQ(entities.getArray()[0]->ReadEntity(), VREL_S_OK);
  EXPECT_EQ(document->GetInstanceCount(), 2);
  EXPECT_EQ(document->GetNextDataSection(), nullptr);
}

TEST(StepFormatReaderTest, IsTheSameWithAllLineEnds) {
  std::string const bytes = DocumentText("#1=A('a\nb\\S\\A',\n#2);\n#2=B();\n");
  for (char const* end : {"\n", "\r\n", "\r"}) {
    std::string other;
    for (char const byte : bytes) other += byte == '\n' ? end : std::string(1, byte);
    ReadDocument document(other);
    EXPECT_THAT(document.Messages(), IsEmpty());
    EXPECT_EQ(document.Record(), "DATA #1 A< 'ab\\S\\A=ab\xC3\x81@7' #2 >; #2 B< >; ENDSEC");
  }
}

TEST(StepFormatReaderTest, RefusesWhatIsNoStepFile) {
  struct Row {
    std::string bytes;
    std::string error;
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
      {"'", "1: expected ' at the end of the string that begins here, found the end of the file"},
  };
  for (Row const& row : rows) {
    ReadDocument document(row.bytes);
    EXPECT_EQ(document.opened, VREL_E_INVALID_FILE);
    EXPECT_EQ(document->GetState(), VREL_E_INVALID_FILE);
    EXPECT_THAT(document.Messages(),
                ElementsAre("ERROR: part.stp:" + row.error + "; translate an ISO 10303-21 (STEP) file"));
    EXPECT_EQ(document->GetSectionCount(), 0);
  }
}

TEST(StepFormatReaderTest, LeavesOutWhatBreaksTheFormatAndGoesOnBehindIt) {
  std::string const left = "the instance that begins in line ";
  std::string const mend = " is left out, mend the file and translate it again";
  struct Row {
    std::string data;
    std::string told;  // the first message
    long instances;    // that are read all the same
  };
  Row const rows[] = {
      {"1=A();#9=B();", "W 7: expected an instance or ENDSEC;, found 1; this instance" + mend, 1},
      {"#1\nA();#9=B();", "W 8: expected = behind #1, found A; this instance" + mend, 1},
      {"#1=\n#2;#9=B();", "W 8: expected an entity name, found #2; " + left + "8" + mend, 1},
      {"#1=A(1\n2);#9=B();", "W 8: expected , or ) behind a parameter, found 2; " + left + "7" + mend, 1},
      // A semicolon is missing: the next instance is read.
      {"#4=A()\n#5=B();#9=B();", "W 8: expected ; behind an instance, found #5; " + left + "7" + mend, 2},
      {"#4=A(1\n#5=B();#9=B();", "W 8: expected , or ) behind a parameter, found #5; " + left + "7" + mend, 2},
      {"#4=A(\n(#5,#6=B();", "W 8: expected , or ) behind a parameter, found =; " + left + "7" + mend, 0},
      {"#4=A(", "W 7: expected ( behind a type name, found ;; " + left + "7" + mend, 0},
      {"#9=B();#1=&SCOPE #2=A();",
       "W 7: expected ENDSCOPE, found ENDSEC; the instances around it are left out, mend the file and translate it "
       "again",
       2},
      {"ENDSCOPE;#9=B();", "W 7: expected an instance or ENDSEC;, found ENDSCOPE; this instance" + mend, 1},
      {"#1=&SCOPE ENDSCOPE /\n/ A();#9=B();",
       "W 8: expected an instance that the scope lets out, found /; this instance" + mend, 1},
      {"#1=&SCOPE ENDSCOPE /#2 #3/ A();#9=B();",
       "W 7: expected / behind the instances that the scope lets out, found #3; this instance" + mend, 1},
      {"#3=A({);#9=B();", "W 7: expected a parameter, found {; " + left + "7" + mend, 1},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.data);
    std::vector<std::string> const told = Told(DocumentText(row.data));
    ASSERT_FALSE(told.empty());
    EXPECT_EQ(told[0], row.told);
    ReadDocument document(DocumentText(row.data));
    EXPECT_EQ(document->GetInstanceCount(), row.instances);
    EXPECT_GE(document->GetFailedCount(), 1);
    EXPECT_EQ(document->GetState(), row.instances == 0 ? VREL_E_INVALID_FILE : VREL_S_PARTIAL);
  }
}

TEST(StepFormatReaderTest, TellsOfFilesThatAreNotWhole) {
  std::string const kept = "; what was read up to here is kept";
  struct Row {
    std::string bytes;
    std::vector<std::string> told;
  };
  std::string const oneInstance = HEADER + "ENDSEC;DATA;#1=A();";
  Row const rows[] = {
      {oneInstance + "\n", {"W 2: expected an instance or ENDSEC;, found the end of the file" + kept}},
      {oneInstance + "ENDSEC;\n",
       {"W 2: expected END-ISO-10303-21;, found the end of the file; what was read is kept, but the file may be cut "
        "off"}},
      {oneInstance + "ENDSEC;\nEND-ISO-10303-21\n",
       {"W 3: expected END-ISO-10303-21;, found the end of the file; what was read is kept, but the file may be cut "
        "off"}},
      {oneInstance + "\nEND-ISO-10303-21;", {"W 2: expected an instance or ENDSEC;, found END-ISO-10303-21" + kept}},
      {oneInstance + "\nDATA;#2=B();ENDSEC;END-ISO-10303-21;",
       {"W 2: expected an instance or ENDSEC;, found DATA" + kept}},
      {oneInstance + "ENDSEC\nEND-ISO-10303-21;",
       {"W 2: expected ; behind ENDSEC, found END-ISO-10303-21; read as if it was there"}},
      {oneInstance + "ENDSEC;\nANCHOR;<a>=#1;<b>='\\S\\A';ENDSEC;END-ISO-10303-21;",
       {"W 2: expected DATA, found ANCHOR; this section is left out"}},
      {oneInstance + "ENDSEC;\nREFERENCE;#1=<http://x/it's#1>;ENDSEC;END-ISO-10303-21;",
       {"W 2: expected DATA, found REFERENCE; this section is left out"}},
      {oneInstance + "ENDSEC;\nEND-ISO-10303-21 'a",
       {"W 2: expected END-ISO-10303-21;, found a string; what was read is kept, but the file may be cut off"}},
      {oneInstance + "ENDSEC;\n#2=B();END-ISO-10303-21;",
       {"W 2: expected DATA or END-ISO-10303-21;, found #2; this part of the file is left out, mend the file and "
        "translate it again"}},
  };
  for (Row const& row : rows) EXPECT_EQ(Told(row.bytes), row.told) << row.bytes;
}

TEST(StepFormatReaderTest, TellsWhatTheHeaderLacks) {
  std::string const without = " in the header, found none; the header is shown without it";
  EXPECT_THAT(Told("ISO-10303-21;HEADER;\nFILE_NAME();ENDSEC;DATA;ENDSEC;END-ISO-10303-21;"),
              ElementsAre("W 2: expected FILE_DESCRIPTION" + without, "W 2: expected FILE_SCHEMA" + without));
  EXPECT_THAT(
      Told(HEADER + "\nFILE_POPULATION(,);1;ENDSEC;DATA;ENDSEC;END-ISO-10303-21;"),
      ElementsAre("W 2: expected a parameter, found ,; this entity of the header is left out, mend the file and "
                  "translate it again",
                  "W 2: expected an entity of the header or ENDSEC;, found 1; this part of the header is left "
                  "out, mend the file and translate it again"));
  EXPECT_THAT(Told(HEADER + "\nDATA;#1=A();ENDSEC;END-ISO-10303-21;"),
              ElementsAre("W 2: expected an entity of the header or ENDSEC;, found DATA; what was read up to here is "
                          "kept"));
}

TEST(StepFormatReaderTest, WarnsOfReferencesToNothing) {
  ReadDocument document(DocumentText("#1=LINE(#2,\n#5);\n#3=(A(#99999999999999999999)B());#4=A(1;#2=P(#4);"));
  EXPECT_EQ(document.resolved, VREL_S_OK);
  std::vector<std::string> const messages = document.Messages();
  ASSERT_EQ(messages.size(), 4U);
  EXPECT_EQ(messages[1],
            "WARNING: part.stp:8: expected an instance #5, to which #1, a LINE, refers, found none; it is written "
            "without a link");
  EXPECT_EQ(
      messages[2],
      "WARNING: part.stp:9: expected an instance #99999999999999999999, to which #3, a (A B), refers, found none; "
      "it is written without a link");
  // An instance that could not be read is none.
  EXPECT_THAT(messages[3], HasSubstr("#4, to which #2, a P, refers, found none"));
  EXPECT_EQ(document->GetState(), VREL_S_PARTIAL);
  EXPECT_THAT(document.Record(), HasSubstr("#1 LINE< #2 #5? >;"));
}

TEST(StepFormatReaderTest, RefusesIdsThatTwoInstancesHave) {
  ReadDocument document(DocumentText("#1=A();#5=A();\n#01=B();ENDSEC;DATA;\n#5=C();\n#1=D();"));
  EXPECT_EQ(document.resolved, VREL_E_INVALID_FILE);
  EXPECT_EQ(document->GetState(), VREL_E_INVALID_FILE);
  std::string const two = ", which stands in line 7 too; give one of them another id";
  EXPECT_THAT(document.Messages(),
              ElementsAre("ERROR: part.stp:8: expected an id that no other instance has, found #1" + two,
                          "ERROR: part.stp:9: expected an id that no other instance has, found #5" + two,
                          "ERROR: part.stp:10: expected an id that no other instance has, found #1" + two));
}

TEST(StepFormatReaderTest, TellsAHundredProblemsAndCountsTheRest) {
  std::string data;
  for (int i = 0; i < 150; ++i) data += "#" + std::to_string(i) + "=A(#1000);";
  std::vector<std::string> const messages = ReadDocument(DocumentText(data)).Messages();
  ASSERT_EQ(messages.size(), 101U);
  EXPECT_EQ(messages[100], "WARNING: part.stp: 50 more warnings of this kind");
}

TEST(StepFormatReaderTest, TakesDeepListsAndScopes) {
  constexpr long DEPTH = 100'000;
  ExpectCounts(DocumentText("#1=A(" + std::string(DEPTH, '(') + "1" + std::string(DEPTH, ')') + ");"), {1, 1, 0});
  std::string scopes;
  std::string ends;
  for (long i = 0; i < DEPTH; ++i) {
    scopes += "#" + std::to_string(i) + "=&SCOPE ";
    ends += "ENDSCOPE A();";
  }
  ExpectCounts(DocumentText(scopes + ends), {1, DEPTH, 0});
}

// Ids that agree in their lower half share no slot for it.
TEST(StepFormatReaderTest, TakesIdsFarApart) {
  constexpr long COUNT = 100'000;
  std::string data;
  for (long i = 0; i < COUNT; ++i) data += "#" + std::to_string(std::uint64_t(i) << 32U) + "=A();";
  std::clock_t const start = std::clock();
  ExpectCounts(DocumentText(data), {1, COUNT, 0});
  EXPECT_LT(std::clock() - start, 5 * CLOCKS_PER_SEC);
}

TEST(StepFormatReaderTest, TakesIdsOfAnyLength) {
  std::string const far = "1" + std::string(300, '0');
  ReadDocument document(DocumentText("#" + far + "1=A(#00" + far + "2,#" + far + "3);#000" + far + "2=B(#1);#1=C(#" +
                                     far + "1);\n#0" + far + "1=D();"));
  std::string const shown = "#" + far.substr(0, 59);
  EXPECT_THAT(document.Messages(), ElementsAre("ERROR: part.stp:8: expected an id that no other instance has, found " +
                                                   shown + ", which stands in line 7 too; give one of them another id",
                                               "WARNING: part.stp:7: expected an instance " + shown + ", to which " +
                                                   shown + ", a A, refers, found none; it is written without a link"));
  EXPECT_EQ(document.Record(true), "DATA ##" + far + "1 A< ##" + far + "2 ##" + far + "3? > <-1; ##" + far +
                                       "2 B< #1 > <-" + far + "1; #1 C< ##" + far + "1 > <-" + far + "2; ##" + far +
                                       "1 D< >; ENDSEC");
}

// Whatever their ids are.
TEST(StepFormatReaderTest, TakesAtMostAHundredBytesForAnInstance) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "its blocks are not told";
#else
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
    EXPECT_GT(each, 64);
    EXPECT_LT(each, 100);
  }
#endif
}

TEST(StepFormatReaderTest, ReadsASectionWhateverItsHeadingIs) {
  std::string const mend = "; this heading of a section is left out, mend the file and translate it again";
  struct Row {
    char const* heading;
    char const* found;
  };
  Row const rows[] = {{"DATA", "expected ; behind DATA, found #1"},
                      {"DATA('x'", "expected , or ) behind a parameter, found #1"},
                      {"DATA('x',);", "expected a parameter, found )"},
                      {"DATA('x'):", "expected ; behind DATA, found :"},
                      {"DATA 5;", "expected ; behind DATA, found 5"}};
  for (Row const& row : rows) {
    std::string const bytes = HEADER + "ENDSEC;\n" + row.heading + " #1=A();#2=B();ENDSEC;END-ISO-10303-21;";
    EXPECT_THAT(Told(bytes), ElementsAre(std::string("W 2: ") + row.found + mend)) << row.heading;
    ReadDocument document(bytes);
    EXPECT_EQ(document->GetInstanceCount(), 2) << row.heading;
    EXPECT_EQ(document->GetSectionCount(), 1) << row.heading;
    EXPECT_EQ(document->GetState(), VREL_S_PARTIAL);
    EXPECT_THAT(document.Record(), testing::EndsWith("#1 A< >; #2 B< >; ENDSEC"));
  }
}

TEST(StepFormatReaderTest, PassesOverNothingBehindASectionWithoutAnEnd) {
  ReadDocument document(HEADER + "ENDSEC;\nANCHOR;<a>=#1;\nDATA;#1=A();ENDSEC;\nX;END-ISO-10303-21;");
  EXPECT_THAT(document.Messages(),
              ElementsAre("WARNING: part.stp:2: expected DATA, found ANCHOR; this section is left out",
                          "WARNING: part.stp:4: expected DATA, found X; this section is left out"));
  EXPECT_EQ(document->GetInstanceCount(), 1);
  EXPECT_EQ(document->GetState(), VREL_S_PARTIAL);
}

TEST(StepFormatReaderTest, ResolvesTwiceAsOnce) {
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

// An abort ends it at any instance; nothing is told or counted twice then.
TEST(StepFormatReaderTest, ResolvesAfterAnAbort) {
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

TEST(StepFormatReaderTest, StopsOnRequest) {
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

TEST(StepFormatReaderTest, DescribesNothingThatIsNotResolved) {
  ScratchDirectory directory;
  std::string const path = directory.Write("part.stp", DocumentText("#1=A();#2=B();"));
  VRELFormatReaderHandle handle(new StepFormatReader(VRELFileHandle(new VRELFile(path.c_str())), "part.stp"));
  auto* const document = static_cast<StepFormatReader*>(static_cast<VRELFormatReader*>(handle));
  DocumentRecorder recorder;
  Progress progress;
  EXPECT_EQ(document->Describe(recorder, progress, false), VREL_E_FAIL);
  EXPECT_EQ(document->Resolve(), VREL_E_FAIL);
}

// The window is 4 MiB: what it does not hold is read from the file again.
TEST(StepFormatReaderTest, TellsThatTheFileHasChanged) {
  std::string const filling = "/*" + std::string(5U << 20U, ' ') + "*/";
  std::string const bytes = DocumentText("#1=A();#2=B(#1);" + filling + "#3=C(#1);#4=D(#2);");
  std::string const mend = "; the file has changed since it was read, translate it again";
  struct Row {
    char const* from;  // empty: the file is cut behind the filling
    char const* to;
    std::string told;
  };
  Row const rows[] = {
      {"C(#1)", "C(#2)", "part.stp: expected the references that were counted, found others" + mend},
      {"D(#2)", "D(#9)", "part.stp: expected the references that were counted, found others" + mend},
      {"C(#1)", "C(#1=", "part.stp:7: expected , or ) behind a parameter, found =" + mend},
      {"", "", "part.stp: expected the references that were counted, found others" + mend},
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
    EXPECT_THAT(document.Messages(), ElementsAre("ERROR: " + row.told));
  }
}

// Without those who refer, too; not even the ids are there.
TEST(StepFormatReaderTest, EndsWhereTheFileWasCut) {
  std::string const filling = "/*" + std::string(5U << 20U, ' ') + "*/";
  std::string const bytes = DocumentText("#1=A();" + filling + "#10000000000000000000=C();#2=D();");
  ReadDocument document(bytes);
  ASSERT_EQ(truncate(document.Path().c_str(), 1000), 0);
  DocumentRecorder recorder;
  Progress progress;
  EXPECT_EQ(document->Describe(recorder, progress, false), VREL_E_INVALID_FILE);
  EXPECT_THAT(document.Messages(),
              ElementsAre("ERROR: part.stp:7: expected an entity name, found the end of the file; the file has changed "
                          "since it was read, translate it again"));
}

// The folder, the pipe and the missing file are told by what the system says of them.
TEST(StepFormatReaderTest, RefusesWhatCannotBeRead) {
  ScratchDirectory directory;
  std::string const pipe = directory.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (std::string const& path : {directory.Path(), pipe, directory.Path("none")}) {
    RecordingListener listener;
    VRELFormatReaderHandle handle(new StepFormatReader(VRELFileHandle(new VRELFile(path.c_str())), "shown"));
    auto* const document = static_cast<StepFormatReader*>(static_cast<VRELFormatReader*>(handle));
    EXPECT_EQ(document->Open(), VREL_E_FILE_OPEN);
    ASSERT_EQ(listener.events.size(), 1U);
    EXPECT_THAT(listener.events[0].text, HasSubstr("shown: expected a file that can be read, found "));
    EXPECT_EQ(document->GetState(), VREL_E_INVALID_FILE);
    EXPECT_EQ(document->GetNextDataSection(), nullptr);
  }
}

TEST(StepFormatReaderTest, EndsOnEveryPrefixOfADocument) {
  std::string const whole = DocumentText(ALL_KINDS);
  ASSERT_THAT(Told(whole), IsEmpty());
  for (std::size_t length = 0; length < EndOf(whole); ++length) {
    ReadDocument document(whole.substr(0, length));
    ASSERT_NE(document->GetState(), VREL_S_OK) << length;
    ASSERT_FALSE(document.Messages().empty()) << length;
  }
}

TEST(StepFormatReaderTest, SurvivesRandomBytes) {
  std::mt19937 random(20261120);
  for (int run = 0; run < 600; ++run) {
    std::string bytes = run % 2 == 0 ? "" : HEADER + "ENDSEC;DATA;";
    std::size_t const length = random() % 300;
    for (std::size_t i = 0; i < length; ++i) bytes += static_cast<char>(random() % 256);
    ReadDocument document(bytes);
    EXPECT_NE(document->GetState(), VREL_S_OK) << run;
  }
}

// Whatever a document becomes by random changes: what is left of it can be described.
TEST(StepFormatReaderTest, SurvivesRandomChanges) {
  std::string const whole = DocumentText(ALL_KINDS);
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

TEST(StepFormatReaderTest, ReadsTheShippedDocument) {
  ReadDocument document(FileText(BracketPath()));
  EXPECT_THAT(document.Messages(), IsEmpty());
  EXPECT_EQ(document->GetInstanceCount(), 232);
  EXPECT_EQ(document->GetComplexCount(), 5);
}

TEST(StepFormatReaderTest, EndsWhereverTheShippedDocumentIsCut) {
  std::string const whole = FileText(BracketPath());
  std::size_t const end = EndOf(whole);
  ASSERT_GT(end, 10000U);
  for (std::size_t length = 0; length < end; length += 23) {
    ReadDocument document(whole.substr(0, length));
    ASSERT_NE(document->GetState(), VREL_S_OK) << length;
    if (document.opened.IsSuccess()) document.Record();
  }
}

TEST(StepFormatReaderTest, ReadsTheCorpus) {
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

// A listing asks for these alone, and needs no Resolve for them.
TEST(StepFormatReaderTest, DescribesWhatHoldsEscapes) {
  std::string const bytes =
      HEADER +
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
  EXPECT_EQ(ReadDocument(HEADER + "ENDSEC;DATA;#1=A('x''y');ENDSEC;END-ISO-10303-21;")->GetEscapedCount(), 0);
}

// As many as are described.
TEST(StepFormatReaderTest, CountsTheEscapesOfAHeadingThatIsKept) {
  EXPECT_EQ(ReadDocument(HEADER + "ENDSEC;DATA('\\\\') #1=A();ENDSEC;END-ISO-10303-21;")->GetEscapedCount(), 1);
  EXPECT_EQ(ReadDocument(HEADER + "ENDSEC;DATA('\\\\',) #1=A();ENDSEC;END-ISO-10303-21;")->GetEscapedCount(), 0);
}
