#include "StepRecovery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "StepFixture.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using Part = StepRecovery::Part;

// Returns what begins at the position that is found from the begin of the text, and its line.
std::string Found(std::string const& text, Part part = Part::Data) {
  BytesInFile file(text);
  StepRecovery recovery(file.Buffer());
  StepScanner::Position const position = recovery.Find({0, 1}, part);
  return std::to_string(position.line) + ":" + text.substr(position.offset);
}

// Each kind of parameter, strings that span lines or contain semicolons, comments, and lines without an instance.
constexpr char kSample[] = R"(ISO-10303-21;
HEADER;
FILE_DESCRIPTION(('it''s'),'2;1');
FILE_NAME('part','2026-11-20T09:30:00',('me'),('us'),'','','');
FILE_SCHEMA(('S'));
ENDSEC;
DATA;
#1=A('one',(#2,#3),$,*,.T.,-1.5E3);
#2=B('','','it''s');
/* a comment; #99=Z(); */
#3=(C('x')D(#1,(1,(2,3)))E());
#4=F('a string; of
two lines',T(U('y')));
#5=G("0F",
  'the value',
  ((),()));

#6=H(#5,#4);
#7=H('','a''b''''c',#6);
#8=A('last',(#7),$,*,.F.,1);
ENDSEC;
END-ISO-10303-21;
)";

struct Contents {
  explicit Contents(std::string const& text) : document(text) {
    if (!document.opened.IsSuccess() || !document.resolved.IsSuccess()) return;
    std::string const record = document.Record();
    for (std::size_t at = record.find(" #"); at != record.npos; at = record.find(" #", at + 1)) {
      std::size_t const end = record.find_first_not_of("0123456789", at + 2);
      bool const isComplex = record[end] == 'c';
      bool const isInstance = record.compare(end + (isComplex ? 1 : 0), 1, " ") == 0 &&
                              record.find('<', end) < record.find(' ', end + (isComplex ? 2 : 1));
      bool const isFirst = record.compare(at - 1, 1, ";") == 0 || record.compare(at - 4, 4, "DATA") == 0;
      if (isInstance && isFirst) ids.push_back(record.substr(at + 1, end - at - 1));
    }
  }

  bool Has(std::string const& id) const { return std::find(ids.begin(), ids.end(), id) != ids.end(); }
  // Returns whether a loss names the id or includes the line.
  bool Reports(std::string const& id, long line) {
    for (Loss const& loss : document->GetLosses()) {
      if (std::find(loss.instances.begin(), loss.instances.end(), id) != loss.instances.end()) return true;
      if (loss.firstLine <= line && line <= loss.lastLine) return true;
    }
    return false;
  }

  ReadDocument document;
  std::vector<std::string> ids;
};

// Returns the line of each instance.
std::map<std::string, long> LinesOf(std::string const& text) {
  std::map<std::string, long> lines;
  long line = 1;
  for (std::size_t begin = 0; begin < text.size(); ++line) {
    std::size_t const end = text.find('\n', begin);
    std::size_t const digits = text.find_first_not_of("0123456789", begin + 1);
    if (text[begin] == '#' && text[digits] == '=') lines[text.substr(begin, digits - begin)] = line;
    begin = end + 1;
  }
  return lines;
}

// Expects that at most `limit` instances are lost and that each of them is reported.
void ExpectFewLost(std::string const& whole, std::string const& damaged, long limit, bool reports = true) {
  Contents contents(damaged);
  long lost = 0;
  for (auto const& [id, line] : LinesOf(whole)) {
    if (contents.Has(id)) continue;
    ++lost;
    if (reports) {
      EXPECT_TRUE(contents.Reports(id, line)) << id << "\n" << damaged;
    }
  }
  EXPECT_LE(lost, limit) << damaged;
}

std::string OneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

}  // namespace

TEST(StepRecoveryTest, FindsLineOfInstance) {
  EXPECT_EQ(Found("#1=A(';\n#2=B();\n"), "2:#2=B();\n");
  EXPECT_EQ(Found("x\r\n\r\n \t#2 = B"), "3:#2 = B");
  EXPECT_EQ(Found("x\n#2,\n#3;\n#=\n2=\n#4\n#5=A"), "7:#5=A");
  EXPECT_EQ(Found("#1=A"), "1:");
  EXPECT_EQ(Found("x\n#" + std::string(100, '1') + "=A"), "2:#" + std::string(100, '1') + "=A");
}

TEST(StepRecoveryTest, FindsInstanceAfterSemicolon) {
  EXPECT_EQ(Found("#1=A();#2=B();"), "1:#2=B();");
  EXPECT_EQ(Found("#1=A('x;#2=y',');#3=z');#4=B();\n#5=C"), "1:#4=B();\n#5=C");
  // Within a string, as far as can be known: the next line is certain.
  EXPECT_EQ(Found("#1=A('x);#2=B();\n#3=C"), "2:#3=C");
  // There is no such line.
  EXPECT_EQ(Found("#1=A('x);#2=B();\nENDSEC;"), "1:#2=B();\nENDSEC;");
  EXPECT_EQ(Found("#1=A('x);#2=B();"), "1:#2=B();");
}

TEST(StepRecoveryTest, FindsSections) {
  for (char const* word : {"ENDSEC;", "DATA ;", "DATA('a');", "END-ISO-10303-21;", "ANCHOR;", "REFERENCE;"}) {
    EXPECT_EQ(Found(std::string("x\n") + word), std::string("2:") + word);
    EXPECT_EQ(Found(std::string("x;") + word), std::string("1:") + word);
  }
  for (char const* other : {"ENDSEC", "ENDSECTION;", "DATA=", "END-ISO;", "ENDSCOPE A();", "FILE_NAME();"}) {
    EXPECT_EQ(Found(std::string("x\n") + other), "2:");
  }
  EXPECT_EQ(Found("x\nENDSCOPE A();", Part::Scope), "2:ENDSCOPE A();");
  EXPECT_EQ(Found("x\nFILE_NAME ();", Part::Header), "2:FILE_NAME ();");
  EXPECT_EQ(Found("x\n!MY();", Part::Header), "2:!MY();");
  EXPECT_EQ(Found("x\n<a>=1;", Part::Entries), "2:<a>=1;");
  EXPECT_EQ(Found("x\n@1=<a>;", Part::Entries), "2:@1=<a>;");
}

TEST(StepRecoveryTest, SampleIsWhole) {
  Contents const contents(kSample);
  EXPECT_THAT(contents.ids, ElementsAre("#1", "#2", "#3", "#4", "#5", "#6", "#7", "#8"));
  EXPECT_EQ(LinesOf(kSample).size(), 8U);
  EXPECT_THAT(Contents(kSample).document.Messages(), IsEmpty());
}

TEST(StepRecoveryTest, ApostropheLosesAtMostThree) {
  std::string const whole = kSample;
  for (std::size_t at = 0; at < whole.size(); ++at) {
    SCOPED_TRACE(at);
    std::string changed = whole;
    ExpectFewLost(whole, changed.insert(at, 1, '\''), 3);
    if (whole[at] != '\'') continue;
    changed = whole;
    ExpectFewLost(whole, changed.erase(at, 1), 3);
  }
}

TEST(StepRecoveryTest, ParenthesisLosesAtMostTwo) {
  std::string const whole = kSample;
  for (std::size_t at = 0; at < whole.size(); ++at) {
    SCOPED_TRACE(at);
    for (char const parenthesis : {'(', ')'}) {
      std::string changed = whole;
      ExpectFewLost(whole, changed.insert(at, 1, parenthesis), 2);
    }
    if (whole[at] != '(' && whole[at] != ')') continue;
    std::string changed = whole;
    ExpectFewLost(whole, changed.erase(at, 1), 2);
  }
}

TEST(StepRecoveryTest, OneLineLosesAtMostThree) {
  std::string const whole = kSample;
  std::size_t const data = whole.find("DATA;");
  for (std::size_t at = data + 5; at < whole.find("ENDSEC;", data); ++at) {
    SCOPED_TRACE(at);
    for (char const byte : {'\'', '(', ')'}) {
      std::string changed = whole;
      ExpectFewLost(whole, OneLine(changed.insert(at, 1, byte)), 3, false);
      if (whole[at] != byte) continue;
      changed = whole;
      ExpectFewLost(whole, OneLine(changed.erase(at, 1)), 3, false);
    }
  }
}

// A damaged id may become that of another instance; then the file is refused as one with duplicate ids.
TEST(StepRecoveryTest, DamagedBytesLoseThreeEach) {
  std::string const whole = FileText(BracketPath());
  std::mt19937 random(17);
  for (int run = 0; run < 400; ++run) {
    SCOPED_TRACE(run);
    long const count = 1 + static_cast<long>(random() % 5);
    std::string changed = whole;
    bool changesId = false;
    for (long i = 0; i < count; ++i) {
      std::size_t const at = random() % whole.size();
      changed[at] = static_cast<char>(random() % 256);
      std::size_t const line = whole.rfind('\n', at) + 1;
      changesId = changesId || whole.find('=', line) > at;
    }
    if (!changesId) ExpectFewLost(whole, changed, 3 * count, false);
  }
}

TEST(StepRecoveryTest, ZerosLoseWhatTheyCover) {
  std::string const whole = FileText(BracketPath());
  std::map<std::string, long> const lines = LinesOf(whole);
  std::size_t const data = whole.find("DATA;") + 6;
  for (std::size_t begin = 0; begin + 4096 < whole.size(); begin += 57) {
    SCOPED_TRACE(begin);
    std::string changed = whole;
    changed.replace(begin, 4096, 4096, '\0');
    long covered = 0;
    for (std::size_t at = std::max(begin, data); at < begin + 4096; ++at) {
      covered += whole[at] == ';' && whole[at + 1] == '\n' ? 1 : 0;
    }
    ExpectFewLost(whole, changed, covered + 2, false);
  }
}

TEST(StepRecoveryTest, LossNamesInstanceAndLines) {
  ReadDocument document(DocumentText("#1=A(1;\n#2=B('x);\n\n#3=C();\nx\ny;\n#4=D();#5=E(;\n"));
  std::vector<Loss> const& losses = document->GetLosses();
  ASSERT_EQ(losses.size(), 4U);
  EXPECT_EQ(losses[0].firstLine, 7);
  EXPECT_EQ(losses[0].lastLine, 7);
  EXPECT_THAT(losses[0].instances, ElementsAre("#1"));
  EXPECT_EQ(losses[0].reason, "expected ',' or ')' after a parameter, found ';'");
  EXPECT_EQ(losses[1].firstLine, 8);
  EXPECT_EQ(losses[1].lastLine, 9);
  EXPECT_THAT(losses[1].instances, ElementsAre("#2"));
  EXPECT_EQ(losses[1].reason, "expected \"'\" at the end of the string, found another instance");
  EXPECT_EQ(losses[2].firstLine, 11);
  EXPECT_EQ(losses[2].lastLine, 12);
  EXPECT_THAT(losses[2].instances, IsEmpty());
  EXPECT_EQ(losses[3].firstLine, 13);
  EXPECT_EQ(losses[3].lastLine, 13);
  EXPECT_THAT(losses[3].instances, ElementsAre("#5"));
}

TEST(StepRecoveryTest, ReadsDamagedOpening) {
  for (char const* opening : {"ISO-1'303-21;\nHEADER;", "'ISO-10303-21;\nHEADER;", "ISO-10303-21\nHEADER;", "HEADER ;",
                              "ISO-10303-21;\nHEAD(ER;\n", "\n"}) {
    SCOPED_TRACE(opening);
    std::string bytes = DocumentText("#1=A();");
    bytes.replace(0, bytes.find("HEADER;") + 7, opening);
    ReadDocument document(bytes);
    EXPECT_EQ(document->GetState(), VREL_S_PARTIAL);
    EXPECT_EQ(document->GetInstanceCount(), 1);
    ASSERT_FALSE(document->GetLosses().empty());
    EXPECT_EQ(document->GetLosses()[0].firstLine, 1);
  }
}

TEST(StepRecoveryTest, CorpusKeepsBounds) {
  char const* const folder = std::getenv("VREL_CORPUS");
  if (folder == nullptr) GTEST_SKIP() << "set VREL_CORPUS to a folder of STEP files to run this test";
  std::mt19937 random(18623);
  for (char const* name : {"dm1-id-214.stp", "io1-cm-214.stp", "ATS10-out.stp"}) {
    std::string whole = FileText(std::string(folder) + "/" + name);
    whole.erase(std::remove(whole.begin(), whole.end(), '\r'), whole.end());
    for (int run = 0; run < 60; ++run) {
      SCOPED_TRACE(std::string(name) + " " + std::to_string(run));
      std::size_t const at = random() % whole.size();
      std::size_t const next = whole.find('\'', at);
      std::string changed = whole;
      ExpectFewLost(whole, changed.insert(at, 1, run % 2 == 0 ? '\'' : '('), run % 2 == 0 ? 3 : 2);
      changed = whole;
      if (next != whole.npos) ExpectFewLost(whole, changed.erase(next, 1), 3);
    }
  }
}
