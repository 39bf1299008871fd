#include "StepWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "BrivetModule.h"
#include "PageFixture.h"
#include "StreamText.h"
#include "VRELOptions.h"

using testing::HasSubstr;

namespace {

std::string Rewritten(ReadDocument& document, VRELOptions* options = nullptr) {
  Progress progress;
  return TextOf([&](VRELOutputStream* stream) {
    BrivetWriteRequest request;
    request.document = &*document;
    request.stream = stream;
    request.options = options;
    request.progress = &progress;
    EXPECT_EQ(WriteStep(request), VREL_S_OK);
  });
}

std::string Rewritten(std::string const& bytes, VRELOptions* options = nullptr) {
  ReadDocument document(bytes);
  return Rewritten(document, options);
}

// What a description hands on, without the lines, which are written behind an @ and in front of an apostrophe.
std::string Parameters(ReadDocument& document) {
  std::string const record = document.Record();
  std::string parameters;
  for (std::size_t i = 0; i < record.size(); ++i) {
    std::size_t const end = record[i] == '@' ? record.find_first_not_of("0123456789", i + 1) : std::string::npos;
    parameters += record[i];
    if (end != std::string::npos && record[end] == '\'') i = end - 1;
  }
  return parameters;
}

// Read, written and read again: the same parameters, and the same bytes when written again.
void ExpectRoundTrip(std::string const& bytes, VRELOptions* options = nullptr) {
  ReadDocument first(bytes);
  std::string const written = Rewritten(first, options);
  ReadDocument second(written);
  EXPECT_TRUE(second.Messages().empty());
  EXPECT_EQ(second->GetState(), VREL_S_OK);
  EXPECT_EQ(Parameters(second), Parameters(first));
  EXPECT_EQ(Rewritten(second, options), written);
}

}  // namespace

TEST(StepWriterTest, WritesOneInstanceALine) {
  EXPECT_EQ(Rewritten("ISO-10303-21;HEADER;/* c */FILE_DESCRIPTION(('d'),'2;1');FILE_NAME('n','t',('a','b'),('o'),\n"
                      "'p','s','');FILE_SCHEMA(('S'));ENDSEC;DATA;\n"
                      "#1 = A ( 'it''s' , '\\X2\\30D6\\X0\\' , .T. , -1.5E-3 , \"0F\" , $ , * , ( #2 , T ( 1 ) ) ) ;\n"
                      "#002=(B()\nC('\\S\\''',()));ENDSEC;DATA('two',('S'));#3=D(#1,#99);ENDSEC;END-ISO-10303-21;"),
            "ISO-10303-21;\n"
            "HEADER;\n"
            "FILE_DESCRIPTION(('d'),'2;1');\n"
            "FILE_NAME('n','t',('a','b'),('o'),'p','s','');\n"
            "FILE_SCHEMA(('S'));\n"
            "ENDSEC;\n"
            "DATA;\n"
            "#1=A('it''s','\\X2\\30D6\\X0\\',.T.,-1.5E-3,\"0F\",$,*,(#2,T(1)));\n"
            "#2=(B()C('\\S\\''',()));\n"
            "ENDSEC;\n"
            "DATA('two',('S'));\n"
            "#3=D(#1,#99);\n"
            "ENDSEC;\n"
            "END-ISO-10303-21;\n");
}

TEST(StepWriterTest, FoldsLinesBetweenValues) {
  VRELOptions options;
  options.AddOption(L"FileLineLength", 16);
  EXPECT_THAT(
      Rewritten(DocumentText("#1=AB(1,22,333,'a long string here',(4,(5)),T(6));#2=(A(1)B(2)C(3)D(4));"), &options),
      HasSubstr("#1=AB(1,22,333,\n"
                "'a long string here',\n"
                "(4,(5)),T(6));\n"
                "#2=(A(1)B(2)C(3)\n"
                "D(4));\n"));
  VRELOptions none;
  none.AddOption(L"FileLineLength", 0);
  EXPECT_THAT(Rewritten(DocumentText("#1=AB(1,22,333);"), &none), HasSubstr("\n#1=AB(1,22,333);\n"));
}

TEST(StepWriterTest, SetsFieldsOfTheHeaderFromOptions) {
  VRELOptions options;
  options.AddOption(L"AuthorName", VRELString("J\xC3\xB6rg O'Neill"));
  options.AddOption(L"Step.Assembly.Writer.OrganizationName", VRELString("a\\b"));
  options.AddOption(L"PreProcessorVersion", VRELString("p\n1"));
  options.AddOption(L"SendingSystemName", VRELString("brivet"));
  options.AddOption(L"FileDescription", VRELString("d"));
  // Options of other directions don't count.
  options.AddOption(L"Step.Assembly.Reader.SendingSystemName", VRELString("no"));
  std::string const bytes =
      "ISO-10303-21;HEADER;FILE_DESCRIPTION(('x','y'),'2;1');FILE_NAME('n','t',('a','b'),('o'),'p','s','z');"
      "FILE_SCHEMA(('S'));OTHER(('a'),'b');ENDSEC;DATA;ENDSEC;END-ISO-10303-21;";
  EXPECT_THAT(Rewritten(bytes, &options),
              HasSubstr("FILE_DESCRIPTION(('d'),'2;1');\n"
                        "FILE_NAME('n','t',('J\\X2\\00F6\\X0\\rg O''Neill'),('a\\\\b'),'p 1','brivet','z');\n"
                        "FILE_SCHEMA(('S'));\n"
                        "OTHER(('a'),'b');\n"));
  ExpectRoundTrip(bytes, &options);
}

TEST(StepWriterTest, WritesTheEntitiesThatEveryHeaderHas) {
  VRELOptions options;
  options.AddOption(L"AuthorName", VRELString("me"));
  EXPECT_EQ(Rewritten("ISO-10303-21;HEADER;ENDSEC;DATA;ENDSEC;END-ISO-10303-21;", &options),
            "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_NAME('','',('me'),(''),'','','');\n"
            "FILE_SCHEMA((''));\nENDSEC;\nDATA;\nENDSEC;\nEND-ISO-10303-21;\n");
}

TEST(StepWriterTest, KeepsEveryParameter) {
  std::string const kinds =
      "#1=A('it''s''','\\X2\\30D6\\X0\\ \\\\ \\X\\E9 \\X4\\0001F529\\X0\\ \\PA\\',.T.,-1.5E-3,5,.5,\"0F\",\"\",$,*,(),"
      "((1),(2,())),T(1),T(T(#1)),!U((1.5)),#18446744073709551617);#18446744073709551617=(B()C('\xC3\xA4'));\n"
      "#3=&SCOPE #4=D();ENDSCOPE/#4/E();\n";
  ExpectRoundTrip(DocumentText(kinds));
  ExpectRoundTrip(FileText(BracketPath()));
  for (int width : {1, 10, 80}) {
    VRELOptions options;
    options.AddOption(L"FileLineLength", width);
    ExpectRoundTrip(DocumentText(kinds), &options);
    ExpectRoundTrip(FileText(BracketPath()), &options);
  }
}

TEST(StepWriterTest, KeepsTheCorpus) {
  char const* const folder = std::getenv("VREL_CORPUS");
  if (folder == nullptr) GTEST_SKIP() << "set VREL_CORPUS to a folder of STEP files to run this test";
  for (char const* name : {"as1-oc-214.stp", "dm1-id-214.stp", "io1-cm-214.stp", "ATS10-out.stp"}) {
    SCOPED_TRACE(name);
    ExpectRoundTrip(FileText(std::string(folder) + "/" + name));
  }
}

TEST(StepWriterTest, EndsWhereTheStreamIsFull) {
  Progress progress;
  for (int room : {0, 5, 100, 172}) {
    ReadDocument document(DocumentText("#1=A();#2=B();#3=C();"));
    FullStream stream(room);
    BrivetWriteRequest request;
    request.document = &*document;
    request.stream = &stream;
    request.progress = &progress;
    EXPECT_EQ(WriteStep(request), VREL_E_FILE_SAVE) << room;
  }
}

// So that memory does not grow with the length of an instance.
TEST(StepWriterTest, WritesALongLineInPieces) {
  std::string const bytes = LongDocument();
  ReadDocument document(bytes);
  Progress progress;
  for (int width : {0, 1'000'000, 2'147'483'647}) {
    VRELOptions options;
    options.AddOption(L"FileLineLength", width);
    BrivetWriteRequest request = PageRequest(document, progress, "");
    PieceStream target;
    request.stream = &target;
    request.options = &options;
    EXPECT_EQ(WriteStep(request), VREL_S_OK);
    EXPECT_GT(target.total, 1'200'000);
    EXPECT_LT(target.largest, 70'000);
    EXPECT_EQ(Rewritten(document, &options).find("12345,\n12345") != std::string::npos, width == 1'000'000);
  }
  ExpectRoundTrip(bytes);
}

// Negative, or no number: as if it was not set.
TEST(StepWriterTest, FoldsNothingAtALengthThatIsNone) {
  std::string const bytes = DocumentText("#1=AB(1,22,333,'a long string here');");
  for (char const* length : {"-5", "text", "", "99999999999999999999", "-99999999999999999999"}) {
    VRELOptions options;
    options.AddOption(L"FileLineLength", VRELString(length));
    EXPECT_THAT(Rewritten(bytes, &options), HasSubstr("\n#1=AB(1,22,333,'a long string here');\n")) << length;
  }
  VRELOptions text;
  text.AddOption(L"FileLineLength", VRELString("10"));
  EXPECT_THAT(Rewritten(bytes, &text), HasSubstr("\n#1=AB(1,\n22,333,\n'a long string here');\n"));
}
