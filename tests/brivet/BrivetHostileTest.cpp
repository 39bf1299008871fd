// Damaged and hostile documents.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "BrivetFixture.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class BrivetHostileTest : public BrivetFixture {
 protected:
  // Translates the bytes to text without a warning and returns the text.
  std::string Text(std::string const& bytes) const {
    Write("a.stp", bytes);
    ChildResult const result = Brivet({"a.stp", "a.txt"});
    EXPECT_EQ(result.signal, 0);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors, "");
    return folder.Read("a.txt");
  }
};

}  // namespace

// Ends with an error or with what could be read, never by a signal. The tests of the reader try each length.
TEST_F(BrivetHostileTest, SurvivesTruncation) {
  std::string const whole = FileText(BracketPath());
  // Without the final line feed the file is still complete.
  for (std::size_t length = 0; length + 1 < whole.size(); length += 131) {
    Write("a.stp", whole.substr(0, length));
    ChildResult const result = Brivet({"a.stp"});
    EXPECT_EQ(result.signal, 0) << length;
    bool const isPartial = result.exitStatus == 8;
    EXPECT_TRUE(isPartial || result.exitStatus == 21) << length << ": " << result.exitStatus;
    EXPECT_EQ(folder.Has("a.html"), isPartial) << length;
    EXPECT_NE(result.errors, "") << length;
    if (isPartial) {
      EXPECT_EQ(unlink(folder.Path("a.html").c_str()), 0);
    }
  }
}

TEST_F(BrivetHostileTest, AcceptsDeepNesting) {
  constexpr std::size_t kDepth = 100000;
  std::string const open(kDepth, '(');
  std::string const close(kDepth, ')');
  std::string const text = Text(DocumentText("#1=A(" + open + "1" + close + ");\n"));
  EXPECT_TRUE(text.find("\n#1 = A(" + open + "1" + close + ")\n") != std::string::npos);
  Write("deep.stp", DocumentText("#1=A(" + open + ");\n#2=B();\n"));
  ChildResult const result = Brivet({"-list", "deep.stp"});
  EXPECT_EQ(result.exitStatus, 8);
  EXPECT_THAT(result.output, HasSubstr("\nentity instances           1\n"));
}

TEST_F(BrivetHostileTest, SkipsStringOf100Megabytes) {
  Write("a.stp", DocumentText("#1=A('" + std::string(100000000, 'x') + "');\n#2=B();\n"));
  ChildResult const result = Brivet({"a.stp", "a.txt"});
  EXPECT_EQ(result.exitStatus, 8);
  EXPECT_EQ(result.output, "a.txt: 1 instance of 1 type from a.stp, 1 lost\n");
  EXPECT_THAT(result.errors, HasSubstr("a.stp:7:"));
}

TEST_F(BrivetHostileTest, AcceptsLongIds) {
  std::string const far = "123456789012345678901234567890";
  std::string const text = Text(DocumentText("#" + far + "=A(#18446744073709551616);\n#18446744073709551616=B(#00" +
                                             far + ");\n#2147483648=C();\n"));
  EXPECT_THAT(
      text, EndsWith("#" + far + " = A(#18446744073709551616)\n    referred to by #18446744073709551616\n" +
                     "#18446744073709551616 = B(#" + far + ")\n    referred to by #" + far + "\n#2147483648 = C()\n"));
}

TEST_F(BrivetHostileTest, AcceptsMillionInstances) {
  std::string data;
  for (int i = 1; i <= 1000000; ++i) data.append("#").append(std::to_string(i)).append("=A();");
  Write("a.stp", DocumentText(data));
  ExpectTranslated(Brivet({"a.stp", "/dev/null"}), "/dev/null: 1000000 instances of 1 type from a.stp");
}

TEST_F(BrivetHostileTest, AcceptsUnusualBytes) {
  std::string const whole = DocumentText("#1=A('a');\n#2=B(#1);\n");
  std::string const expected = "#1 = A('a')\n    referred to by #2\n#2 = B(#1)\n";
  EXPECT_THAT(Text(whole), EndsWith(expected));
  // CR LF, CR alone, a byte order mark, no line end at the end.
  std::string crlf;
  std::string cr;
  for (char const byte : whole) {
    crlf += byte == '\n' ? "\r\n" : std::string(1, byte);
    cr += byte == '\n' ? '\r' : byte;
  }
  EXPECT_THAT(Text(crlf), EndsWith(expected));
  EXPECT_THAT(Text(cr), EndsWith(expected));
  EXPECT_THAT(Text("\xEF\xBB\xBF" + whole), EndsWith(expected));
  EXPECT_THAT(Text(whole.substr(0, whole.size() - 1)), EndsWith(expected));
  // UTF-8 and bytes of another encoding.
  EXPECT_THAT(Text(DocumentText("#1=A('\xC3\xA4\xF0\x9F\x94\xA9');\n")),
              EndsWith("#1 = A('\xC3\xA4\xF0\x9F\x94\xA9')\n"));
  EXPECT_THAT(Text(DocumentText("#1=A('x\xFFy');\n")), EndsWith("#1 = A('x\xC3\xBFy')\n"));
  // A zero byte in a string.
  EXPECT_THAT(Text(DocumentText(std::string("#1=A('x\0y');\n", 13))), EndsWith("#1 = A('x<U+0000>y')\n"));
  Write("a.stp", DocumentText(std::string("#1=A(\0);\n#2=B();\n", 17)));
  ChildResult const zero = Brivet({"a.stp", "a.txt"});
  EXPECT_EQ(zero.exitStatus, 8);
  EXPECT_THAT(zero.errors, HasSubstr("a.stp:7:"));
}

TEST_F(BrivetHostileTest, AcceptsTwoDataSections) {
  std::string const text = Text(
      "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_NAME('','',(''),(''),'','','');\n"
      "FILE_SCHEMA(('S'));ENDSEC;\nDATA('first',('S'));\n#1=A(#2);\nENDSEC;\nDATA;\n#2=B();\nENDSEC;\n"
      "END-ISO-10303-21;\n");
  EXPECT_THAT(text, EndsWith("Data section 1\n--------------\n('first', ('S'))\n#1 = A(#2)\n\n"
                             "Data section 2\n--------------\n#2 = B()\n    referred to by #1\n"));
}

TEST_F(BrivetHostileTest, WarnsAboutMissingEnd) {
  std::string const whole = DocumentText("#1=A();\n");
  Write("a.stp", whole.substr(0, whole.find("END-ISO")));
  ChildResult const result = Brivet({"a.stp"});
  EXPECT_EQ(result.exitStatus, 8);
  EXPECT_THAT(result.errors, HasSubstr("a.stp:9:"));
  Write("a.stp", DocumentText("#1=A();\n/* no end"));
  ChildResult const comment = Brivet({"a.stp"});
  EXPECT_EQ(comment.exitStatus, 8);
  EXPECT_THAT(comment.errors, HasSubstr("a.stp:8:"));
}
