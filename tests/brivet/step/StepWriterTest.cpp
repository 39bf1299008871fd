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

// Returns the record of a description without the line numbers, which are between an @ and an apostrophe.
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

TEST(StepWriterTest, WritesInstancesOnLines) {
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

TEST(StepWriterTest, FoldsLines) {
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

TEST(StepWriterTest, OptionsReplaceHeaderFields) {
  VRELOptions options;
  options.AddOption(L"AuthorName", VRELString("J\xC3\xB6rg O'Neill"));
  options.AddOption(L"Step.Assembly.Writer.OrganizationName", VRELString("a\\b"));
  options.AddOption(L"PreProcessorVersion", VRELString("p\n1"));
  options.AddOption(L"SendingSystemName", VRELString("brivet"));
  options.AddOption(L"FileDescription", VRELString("d"));
  // Options of other directions have no effect.
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

TEST(StepWriterTest, WritesRequiredHeaderEntities) {
  VRELOptions options;
  options.AddOption(L"AuthorName", VRELString("me"));
  EXPECT_EQ(Rewritten("ISO-10303-21;HEADER;ENDSEC;DATA;ENDSEC;END-ISO-10303-21;", &options),
            "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_NAME('','',('me'),(''),'','','');\n"
            "FILE_SCHEMA((''));\nENDSEC;\nDATA;\nENDSEC;\nEND-ISO-10303-21;\n");
}

TEST(StepWriterTest, KeepsParameters) {
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

TEST(StepWriterTest, KeepsCorpus) {
  char const* const folder = std::getenv("VREL_CORPUS");
  if (folder == nullptr) GTEST_SKIP() << "set VREL_CORPUS to a folder of STEP files to run this test";
  for (char const* name : {"as1-oc-214.stp", "dm1-id-214.stp", "io1-cm-214.stp", "ATS10-out.stp"}) {
    SCOPED_TRACE(name);
    ExpectRoundTrip(FileText(std::string(folder) + "/" + name));
  }
}

TEST(StepWriterTest, ReportsFullStream) {
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
TEST(StepWriterTest, WritesLongLineInPieces) {
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

TEST(StepWriterTest, RefusesInvalidLineLength) {
  ReadDocument document(DocumentText("#1=AB(1,22,333,'a long string here');"));
  Progress progress;
  for (char const* length : {"-5", "text", "", "1.5", "+3", "99999999999999999999", "-99999999999999999999"}) {
    RecordingListener listener;
    VRELOptions options;
    options.AddOption(L"FileLineLength", VRELString(length));
    BrivetWriteRequest request = PageRequest(document, progress, "");
    PieceStream target;
    request.stream = &target;
    request.options = &options;
    EXPECT_EQ(WriteStep(request), VREL_E_INVALID_ARGUMENT) << length;
    EXPECT_EQ(target.total, 0);
    EXPECT_THAT(
        listener.Texts(),
        testing::ElementsAre("option Step.*.Writer.FileLineLength: expected a whole number from 0 to 2147483647, "
                             "found '" +
                             std::string(length) + "'"));
  }
  VRELOptions text;
  text.AddOption(L"FileLineLength", VRELString("10"));
  EXPECT_THAT(Rewritten(document, &text), HasSubstr("\n#1=AB(1,\n22,333,\n'a long string here');\n"));
}

TEST(StepWriterTest, KeepsBytesWithoutEncoding) {
  EXPECT_THAT(Rewritten(DocumentText("#1=A('\xE4\xC3\xA4\\X\\E4');")), HasSubstr("#1=A('\xE4\xC3\xA4\\X\\E4');"));
  // Zero bytes are not part of the format.
  EXPECT_THAT(Rewritten(DocumentText(std::string("#1=A('x\0y\\X\\00');", 18))), HasSubstr("#1=A('xy\\X\\00');"));
}

TEST(StepWriterTest, WritesInGivenEncoding) {
  struct Row {
    char const* encoding;
    char const* string;
  };
  std::string const bytes =
      DocumentText("#1=A('it''s \\\\ \\S\\d \\X2\\30D630EC\\X0\\ \\X4\\0001F529\\X0\\ \\X\\0A\xC3\xA4');");
  Row const rows[] = {
      {"US-ASCII", "it''s \\\\ \\X2\\00E4\\X0\\ \\X2\\30D630EC\\X0\\ \\X4\\0001F529\\X0\\ \\X\\0A\\X2\\00E4\\X0\\"},
      {"UTF-8", "it''s \\\\ \xC3\xA4 \xE3\x83\x96\xE3\x83\xAC \xF0\x9F\x94\xA9 \\X\\0A\xC3\xA4"},
      {"ISO-8859-1", "it''s \\\\ \xE4 \\X2\\30D630EC\\X0\\ \\X4\\0001F529\\X0\\ \\X\\0A\xE4"},
  };
  for (Row const& row : rows) {
    VRELOptions options;
    options.AddOption(L"Step.*.Writer.Encoding", VRELString(row.encoding));
    EXPECT_THAT(Rewritten(bytes, &options), HasSubstr("#1=A('" + std::string(row.string) + "');")) << row.encoding;
  }
}

TEST(StepWriterTest, RefusesUnknownEncoding) {
  ReadDocument document(DocumentText("#1=A();"));
  Progress progress;
  for (char const* encoding : {"", "no-such-encoding", "UTF-16", "ebcdic-cp-us"}) {
    RecordingListener listener;
    VRELOptions options;
    options.AddOption(L"Step.*.Writer.Encoding", VRELString(encoding));
    BrivetWriteRequest request = PageRequest(document, progress, "");
    PieceStream target;
    request.stream = &target;
    request.options = &options;
    EXPECT_EQ(WriteStep(request), VREL_E_INVALID_ARGUMENT) << encoding;
    EXPECT_EQ(listener.events.size(), 1U);
  }
}

// ISO 10303-21:2016, token for token.
TEST(StepWriterTest, KeepsEdition3Sections) {
  std::string const bytes =
      "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'4;1');\nFILE_NAME('','',(''),(''),'','','');\n"
      "FILE_SCHEMA(('S'));\nENDSEC;\nANCHOR;\n<top>=#1{label:'x'}{n:(1,$)};\n<list>=(#1,@2,<#b>);\nENDSEC;\n"
      "REFERENCE;\n#10=<http://a/b.stp#c>;\n@11=<#v>;\nENDSEC;\nDATA;\n#1=_A(#10,@11,#PI,@PI,<u;v>,{a:1},{1,2});\n"
      "#2=!_B(.U_1.);\nENDSEC;\nEND-ISO-10303-21;\nSIGNATURE;\nMIIB/==\nab+c\nENDSEC;\n";
  ReadDocument document(bytes);
  EXPECT_TRUE(document.Messages().empty());
  EXPECT_EQ(document->GetState(), VREL_S_OK);
  EXPECT_EQ(Rewritten(document), bytes);
}

TEST(StepWriterTest, KeepsDataAfterSignature) {
  EXPECT_THAT(Rewritten("ISO-10303-21;HEADER;FILE_DESCRIPTION((''),'2;1');FILE_NAME('','',(''),(''),'','','');"
                        "FILE_SCHEMA(('S'));ENDSEC;SIGNATURE;\nMII\nENDSEC;DATA;#1=A();ENDSEC;END-ISO-10303-21;"),
              HasSubstr("DATA;\n#1=A();\nENDSEC;\nEND-ISO-10303-21;\nSIGNATURE;\nMII\nENDSEC;\n"));
}

TEST(StepWriterTest, CommentListsIncompleteParts) {
  EXPECT_THAT(
      Rewritten(DocumentText("#1=A(;\n#2=B();\n")),
      HasSubstr("FILE_SCHEMA(('S'));\nENDSEC;\n/* INCOMPLETE: 1 part of the document could not be read and is not "
                "part of this file. */\nDATA;\n#2=B();\n"));
  EXPECT_THAT(Rewritten(DocumentText("#1=A(;\n#2=B();\n#3=C(;\n")),
              HasSubstr("/* INCOMPLETE: 2 parts of the document "));
  EXPECT_THAT(Rewritten(DocumentText("#2=B();\n")), testing::Not(HasSubstr("/*")));
}
