#include "InstanceBlocks.h"

#include <gtest/gtest.h>

#include "PageData.h"
#include "PageFixture.h"

namespace {

std::string BlocksOf(std::string const& bytes, long* blocks = nullptr) {
  ReadDocument document(bytes);
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  return ElementsOf([&](DataElements& elements) {
    InstanceBlocks writer(elements);
    EXPECT_EQ(writer.Write(request), VREL_S_OK);
    if (blocks != nullptr) *blocks = writer.Blocks();
  });
}

}  // namespace

// Octal escapes, because a hexadecimal one would take the digits that follow.
TEST(InstanceBlocksTest, WritesItems) {
  std::string const page = BlocksOf(PageDocument());
  EXPECT_EQ(DataOf(page, "instances-0"),
            "\003Data section 1"
            "\001#\0041 = A('it's \xE3\x83\x96<U+000A> & <co>', .T., -1.5E-3, \"0F\", $, *, (#\005-1, T(1), ()))"
            "\010#\005-1"
            "\001#\0041 = (B() C(#\0051, #\0051))"
            "\010#\0051 #\0074:99999999999999999999;"
            "\003Data section 2"
            "\002('two')"
            "\001#\0064:99999999999999999999; = A(#\005-2, #7, #\0074:99999999999999999999;)"
            "\010#\0074:99999999999999999999;");
  EXPECT_EQ(AttributesOf(page, "instances-0"),
            " data-items=\"6\" data-first=\"1\" data-low=\"1\" data-high=\"2\" data-far=\"1\"");
  EXPECT_EQ(DataOf(page, "instances-1"), "(absent)");
}

TEST(InstanceBlocksTest, WritesEntriesAsLines) {
  std::string const page = BlocksOf(
      "ISO-10303-21;HEADER;FILE_DESCRIPTION((''),'4;1');FILE_NAME('','',(''),(''),'','','');FILE_SCHEMA(('S'));ENDSEC;"
      "ANCHOR;<top>=#1{label:'x'};ENDSEC;REFERENCE;#0010=<a&b>;ENDSEC;DATA;#1=A(#10);ENDSEC;"
      "END-ISO-10303-21;SIGNATURE;\nMII\nB=\nENDSEC;");
  EXPECT_EQ(DataOf(page, "instances-0"),
            "\003ANCHOR section\002<top> = #\005-1 {label: 'x'}"
            "\003REFERENCE section\002#\00410 = <a&b>"
            "\003Data section 1\001#\004-9 = A(#\005-9)"
            "\003SIGNATURE section\002MII\002B=");
  EXPECT_EQ(AttributesOf(page, "instances-0"), " data-items=\"9\" data-first=\"1\" data-low=\"1\" data-high=\"10\"");
}

// Scripts represent integers up to 2^53 - 1.
TEST(InstanceBlocksTest, NumbersBeyondScriptsAreFar) {
  std::string const page = BlocksOf(DocumentText("#9007199254740991=A();\n#9007199254740992=A(#9007199254740991);\n"));
  EXPECT_EQ(DataOf(page, "instances-0"),
            "\003Data section 1\001#\0049007199254740991 = A()\010#\0072:9007199254740992;"
            "\001#\0062:9007199254740992; = A(#\005-9007199254740991)");
}

TEST(InstanceBlocksTest, StartsBlocksAtItems) {
  std::string text;
  for (int i = 1; i <= 6000; ++i) text += "#" + std::to_string(i) + "=A('" + std::string(100, 'x') + "');\n";
  long blocks = 0;
  std::string const page = BlocksOf(DocumentText(text), &blocks);
  // The heading takes 15 bytes and each item 112: 2341 items exceed 262144 bytes. The first item of the second block
  // takes three more for its id.
  EXPECT_EQ(blocks, 3);
  EXPECT_EQ(AttributesOf(page, "instances-0"),
            " data-items=\"2342\" data-first=\"1\" data-low=\"1\" data-high=\"2341\"");
  EXPECT_EQ(AttributesOf(page, "instances-1"),
            " data-items=\"2341\" data-first=\"2342\" data-low=\"2342\" data-high=\"4682\"");
  // The difference begins again in each block.
  EXPECT_EQ(DataOf(page, "instances-1").substr(0, 20), "\001#\0042342 = A('xxxxxxx");
}

TEST(InstanceBlocksTest, SplitsLongItem) {
  long blocks = 0;
  std::string const page = BlocksOf(LongDocument(), &blocks);
  EXPECT_EQ(blocks, 2);
  EXPECT_EQ(AttributesOf(page, "instances-0"), " data-items=\"2\" data-first=\"1\" data-low=\"1\" data-high=\"1\"");
  EXPECT_EQ(AttributesOf(page, "instances-1"), " data-items=\"0\" data-part=\"1\"");
  std::string const rest = DataOf(page, "instances-1");
  EXPECT_EQ(rest.substr(0, 1), "\001");
  EXPECT_EQ(rest.substr(rest.size() - 10), "12345, 1))");
}
