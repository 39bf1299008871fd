#include "StepInstanceText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "InputError.h"
#include "StepFixture.h"
#include "StepParser.h"
#include "StepText.h"

namespace {

// Writes what it receives, with the number of line ends before each string.
struct TextSink {
  void BeginRecord(std::string_view type) { text += "[" + std::string(type); }
  void EndRecord() { text += "]"; }
  void Number(std::string_view number, bool isReal) { text += (isReal ? " real " : " int ") + std::string(number); }
  void String(std::string_view string, bool isDoubled, long lines) {
    text += " '" + std::string(string) + "'" + (isDoubled ? " doubled" : "") + " " + std::to_string(lines);
  }
  void Enumeration(std::string_view name) { text += " ." + std::string(name) + "."; }
  void Reference(StepInstanceText::Number const& target) {
    text += " #" + std::string(target.digits) + "/" + std::to_string(target.value);
  }
  void Unset() { text += " $"; }
  void Derived() { text += " *"; }
  void BeginList() { text += " ("; }
  void EndList() { text += " )"; }
  void BeginTyped(std::string_view type) { text += " " + std::string(type) + "("; }
  void EndTyped() { text += " )"; }
  std::string text;
};

// Returns what was read, or "refused".
std::string Read(std::string const& bytes) {
  std::string const padded = bytes + std::string(1 + kBlockPadding, '\0');
  StepInstanceText text(padded.c_str());
  TextSink sink;
  return text.ReadName() && text.ReadRecords(sink) ? sink.text : "refused";
}

// Returns the records that the parser reads after "=", and how many bytes it took; "refused" for an error.
std::string Parse(std::string const& bytes, bool isUsual) {
  BytesInFile file(bytes);
  StepScanner scanner(file.Buffer());
  StepText decoder;
  StepParser parser(scanner, decoder);
  DocumentRecorder recorder;
  scanner.Seek({0, 1});
  if (isUsual && parser.FindUsualInstance(bytes.size()) == 0) return "refused";
  try {
    if (isUsual) {
      parser.ReadUsualInstance(recorder);
    } else {
      scanner.Next();
      parser.ReadInstance(recorder);
    }
  } catch (InputError const&) {
    return "refused";
  }
  return recorder.text + std::to_string(scanner.Offset()) + " " + std::to_string(scanner.Line());
}

constexpr char kRecords[] =
    "A_B('x',\r\n ('it''s',-1.5E+2,3),.T.,$,*,#7,LENGTH_MEASURE(.5),()) ;(C(1)D((2.),'a')) ;E ( ) ;";

}  // namespace

TEST(StepInstanceTextTest, ReadsUsualForm) {
  EXPECT_EQ(Read("#12=PAIR('a',$,(1,#7));"), "[PAIR 'a' 0 $ ( int 1 #7/7 )]");
  EXPECT_EQ(Read(" #0012 = A_B-2(+1.5E-3,.5,-2.,1e5,.T_1.,*,TYPED(1),()) ;"),
            "[A_B-2 real +1.5E-3 real .5 real -2. real 1e5 .T_1. * TYPED( int 1 ) ( )]");
  EXPECT_EQ(Read("#1=(A()B('it''s',#00));"), "[A][B 'it''s' doubled 0 #0/0]");
  EXPECT_EQ(Read("#1=A('x',\n\r\n\r'y');"), "[A 'x' 0 'y' 3]");
}

// Words and numbers that are longer than a block of bytes, or end with one.
TEST(StepInstanceTextTest, ReadsLongTokens) {
  for (std::size_t size : {1U, 7U, 8U, 9U, 15U, 16U, 17U, 18U, 31U, 32U, 33U, 60U}) {
    std::string const word(size, 'W');
    std::string const digits =
        std::string("123456789012345678901234567890123456789012345678901234567890").substr(0, size);
    EXPECT_EQ(Read("#1=" + word + "(." + word + ".);"), "[" + word + " ." + word + ".]");
    EXPECT_EQ(Read("#1=A(" + digits + ",-" + digits + "." + digits + "E-" + digits + ");"),
              "[A int " + digits + " real -" + digits + "." + digits + "E-" + digits + "]");
    EXPECT_EQ(Read("#1=A(#" + digits + ");"), size <= 18 ? "[A #" + digits + "/" + digits + "]" : "refused");
  }
}

TEST(StepInstanceTextTest, ReportsNameAndSize) {
  std::string const bytes = "\r\n#0012\n = (A(\n)) ;rest" + std::string(1 + kBlockPadding, '\0');
  StepInstanceText text(bytes.c_str());
  StepInstanceText::Ignore ignored;
  ASSERT_TRUE(text.ReadName());
  EXPECT_EQ(text.Name().digits, "12");
  EXPECT_EQ(text.Name().value, 12);
  EXPECT_EQ(text.Lines(), 2);
  EXPECT_TRUE(text.AtList());
  ASSERT_TRUE(text.ReadRecords(ignored));
  EXPECT_TRUE(text.IsComplex());
  EXPECT_EQ(text.Size(), bytes.find("rest"));
  EXPECT_EQ(text.Lines(), 3);
  EXPECT_EQ(text.LineBegin(), bytes.find(")) ;"));
}

TEST(StepInstanceTextTest, RefusesOtherForms) {
  for (char const* const bytes : {"",
                                  "#",
                                  "#12",
                                  "#12=",
                                  "#=A();",
                                  "#1A();",
                                  "A();",
                                  "ENDSEC;",
                                  "#1=A()",
                                  "#1=A(",
                                  "#1=A(1",
                                  "#1=A(1;",
                                  "#1=A(1,);",
                                  "#1=A(,1);",
                                  "#1=A(1 2);",
                                  "#1=A(1))",
                                  "#1=();",
                                  "#1=(A()",
                                  "#1=(A();",
                                  "#1=(A(),B());",
                                  "#1=A;",
                                  "#1=&SCOPE A();",
                                  "#1=!A();",
                                  "#1=A(!B(1));",
                                  "#1=A(B);",
                                  "#1=A(/**/1);",
                                  "#1=A(1)/**/;",
                                  "#1=A('a);",
                                  "#1=A('a\n');",
                                  "#1=A('\t');",
                                  "#1=A('\xC3\xB6');",
                                  "#1=A('\\S\\d');",
                                  "#1=A(\"0F\");",
                                  "#1=A(<x>);",
                                  "#1=A(@1);",
                                  "#1=A(#PI);",
                                  "#1=A(#);",
                                  "#1=A({x});",
                                  "#1=A(.);",
                                  "#1=A(.T);",
                                  "#1=A(.1T.);",
                                  "#1=A(+);",
                                  "#1=A(1E);",
                                  "#1=A(1E+);",
                                  "#1=A(-.);",
                                  "#1=A(1.5.2);",
                                  "#1=A(#1234567890123456789);",
                                  "#1234567890123456789=A();",
                                  "#1=A(\x7F);"}) {
    EXPECT_EQ(Read(bytes), "refused") << bytes;
  }
  EXPECT_EQ(Read("#1=A(" + std::string(61, '(') + std::string(61, ')') + ");"), "refused");
  EXPECT_NE(Read("#1=A(" + std::string(60, '(') + std::string(60, ')') + ");"), "refused");
}

// The parser is the reference: what is accepted has the same content there.
TEST(StepInstanceTextTest, AgreesWithParser) {
  long accepted = 0;
  std::string const records = kRecords;
  for (std::size_t first = 0; first < records.size(); first = records.find(';', first) + 1) {
    std::string const record = records.substr(first, records.find(';', first) + 1 - first);
    EXPECT_NE(Parse(record, true), "refused") << record;
    EXPECT_EQ(Parse(record, true), Parse(record, false)) << record;
    for (std::size_t at = 0; at < record.size(); ++at) {
      for (char const byte : std::string("';()#,.$ \n\r/\"A1-E*\\@{!\0\xFF", 25)) {
        std::string changed = record;
        changed[at] = byte;
        std::string const usual = Parse(changed, true);
        if (usual == "refused") continue;
        ++accepted;
        EXPECT_EQ(usual, Parse(changed, false)) << changed;
      }
    }
  }
  EXPECT_GT(accepted, 200);
}

// An instance at the end of the window is left to the scanner.
TEST(StepInstanceTextTest, DocumentCrossesWindows) {
  std::string data;
  for (int i = 1; i <= 40000; ++i) data += "#" + std::to_string(i) + "=LINE('" + std::to_string(i) + "',#1);\r\n";
  ReadDocument document(DocumentText(data));
  EXPECT_EQ(document->GetInstanceCount(), 40000);
  EXPECT_EQ(document->GetState(), VREL_S_OK);
  std::string const record = document.Record();
  for (int const i : {1, 20000, 40000}) {
    EXPECT_NE(record.find("'" + std::to_string(i) + "'"), std::string::npos) << i;
  }
}
