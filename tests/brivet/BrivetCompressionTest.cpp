// Compressed input and output.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "BrivetFixture.h"

namespace {

using testing::HasSubstr;

class BrivetCompressionTest : public BrivetFixture {
 protected:
  BrivetCompressionTest() {
    Write("washer.stp", kWasher);
    std::string data;
    for (int i = 1; i <= 3000; ++i)
      data += "#" + std::to_string(i * 7 % 3001) + "=EDGE('e" + std::to_string(i * i) + "',$);\n";
    Write("large.stp", DocumentText(data));
  }

  void Zip(std::string const& archive, std::string const& statements) const {
    ChildResult const result = Shell("python3 -c \"import zipfile; z = zipfile.ZipFile('" + archive +
                                     "', 'w', zipfile.ZIP_DEFLATED); " + statements + "; z.close()\"");
    ASSERT_EQ(result.exitStatus, 0) << result.errors;
  }

  void ExpectInstances(std::string const& command, int count) const {
    SCOPED_TRACE(command);
    ChildResult const result = Shell("rm -f out.txt; " + command);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(folder.Read("out.txt"), HasSubstr("\ninstances                : " + std::to_string(count) + "\n"));
  }
};

}  // namespace

TEST_F(BrivetCompressionTest, ReadsGzip) {
  Shell("gzip -c washer.stp >washer.stp.gz; cp washer.stp.gz washer.stpZ; cp washer.stp.gz washer");
  for (char const* name : {"washer.stp.gz", "washer.stpZ", "washer"}) {
    ExpectInstances(std::string("\"$b\" ") + name + " out.txt", 3);
  }
  ExpectInstances("cat washer.stp.gz | \"$b\" - out.txt", 3);
  ExpectInstances("\"$b\" - out.txt <washer.stp.gz", 3);
  // A slow pipe, two members, padding.
  ExpectInstances("(head -c 1 washer.stp.gz; sleep 0.2; tail -c +2 washer.stp.gz) | \"$b\" - out.txt", 3);
  ExpectInstances(
      "(head -c 300 washer.stp | gzip; tail -c +301 washer.stp | gzip; printf '\\0\\0\\0') >two; \"$b\" two out.txt",
      3);
  ChildResult const name = Brivet({"washer.stp.gz"});
  EXPECT_EQ(name.output, "washer.html: 3 instances of 3 types from washer.stp.gz\n");
}

TEST_F(BrivetCompressionTest, ReadsZip) {
  Zip("one.zip", "z.write('washer.stp')");
  Zip("step.stpZ", "z.writestr('d/', ''); z.writestr('readme.txt', 'x'); z.write('washer.stp', 'd/w.STP')");
  Zip("name.zip", "z.write('washer.stp', 'any name')");
  Zip("stored.zip", "z.write('washer.stp', 'a.stp', zipfile.ZIP_STORED)");
  for (char const* name : {"one.zip", "step.stpZ", "name.zip", "stored.zip"}) {
    ExpectInstances(std::string("\"$b\" ") + name + " out.txt", 3);
  }
  ExpectInstances("cat one.zip | \"$b\" - out.txt", 3);
}

TEST_F(BrivetCompressionTest, RefusesUnusableArchives) {
  Zip("two.zip", "z.write('washer.stp'); z.write('large.stp')");
  Zip("none.zip", "z.writestr('a.txt', 'x'); z.writestr('b.txt', 'x')");
  Zip("empty.zip", "pass");
  Zip("lzma.zip", "z.write('washer.stp', 'a.stp', zipfile.ZIP_LZMA)");
  Zip("cut.zip", "z.write('large.stp')");
  Shell("head -c 2000 cut.zip >cut2.zip; printf '\\037\\213\\010' >short.gz");
  struct Row {
    char const* name;
    char const* reason;
  };
  Row const rows[] = {{"two.zip", "the zip archive contains several STEP files"},
                      {"none.zip", "the zip archive contains no STEP file"},
                      {"empty.zip", "the zip archive is truncated or damaged"},
                      {"lzma.zip", "the zip archive uses an unsupported compression method: 14"},
                      {"cut2.zip", "the zip archive is truncated or damaged"},
                      {"short.gz", "the compressed data is truncated"}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.name);
    ExpectRefused(Brivet({row.name, "out.txt"}), 21,
                  std::string("cannot decompress '") + row.name + "': " + row.reason);
  }
}

TEST_F(BrivetCompressionTest, DamagedDataIsPartial) {
  Shell(
      "gzip -c large.stp >large.gz; size=$(stat -c %s large.gz); head -c $((size / 2)) large.gz >cut.gz; "
      "head -c $((size - 8)) large.gz >crc.gz; printf 'abcdefgh' >>crc.gz; (cat large.gz; echo garbage) >tail.gz");
  Zip("large.zip", "z.write('large.stp')");
  // The checksum in the directory and in the header of the entry.
  Shell(
      "python3 -c \"import zlib; b = open('large.zip', 'rb').read(); "
      "c = zlib.crc32(open('large.stp', 'rb').read()).to_bytes(4, 'little'); "
      "open('crc.zip', 'wb').write(b.replace(c, b'abcd'))\"");
  struct Row {
    char const* name;
    char const* reason;
  };
  Row const rows[] = {{"cut.gz", "the compressed data is truncated"},
                      {"crc.gz", "the compressed data is damaged: incorrect data check"},
                      {"tail.gz", "unexpected data after the end of the compressed data"},
                      {"crc.zip", "the checksum of the decompressed data is wrong"}};
  for (Row const& row : rows) {
    SCOPED_TRACE(row.name);
    ChildResult const result = Brivet({row.name, "out.txt", "-report", "r.json"});
    EXPECT_EQ(result.exitStatus, 8);
    EXPECT_THAT(result.errors, HasSubstr(std::string("brivet: warning: ") + row.name + ": " + row.reason + "\n"));
    EXPECT_THAT(folder.Read("r.json"), HasSubstr(std::string("\"reason\":\"") + row.reason + "\""));
    EXPECT_THAT(folder.Read("out.txt"), HasSubstr("EDGE("));
    EXPECT_THAT(folder.Read("out.txt"), HasSubstr(std::string("input                    : ") + row.reason + "\n"));
    EXPECT_EQ(Brivet({row.name, "out.stp", "-force"}).exitStatus, 8);
    EXPECT_THAT(folder.Read("out.stp"), HasSubstr("/* INCOMPLETE: "));
    EXPECT_EQ(Brivet({row.name, "strict.txt", "-strict"}).exitStatus, 8);
    EXPECT_FALSE(folder.Has("strict.txt"));
  }
}

// 1 GB of zero bytes in 1 MB.
TEST_F(BrivetCompressionTest, LimitsTemporarySpace) {
  Shell("head -c 1000000000 /dev/zero | gzip -1 >bomb.gz");
  ChildResult const result = Brivet({"-tempspace", "10M", "bomb.gz", "out.txt"});
  EXPECT_EQ(result.exitStatus, 15);
  EXPECT_THAT(result.errors,
              testing::MatchesRegex("brivet: cannot copy the input to a temporary file in '[^\n]*': it has "
                                    "more than 10485760 bytes\nhint: -tempspace SIZE sets another "
                                    "limit\n"));
  ExpectRefused(
      Shell("head -c 100000 /dev/zero | TMPDIR=/tmp \"$b\" -tempspace 1K - out.txt"), 15,
      "cannot copy the input to a temporary file in '/tmp': it has more than 1024 bytes\nhint: -tempspace SIZE "
      "sets another limit");
}

TEST_F(BrivetCompressionTest, WritesGzip) {
  EXPECT_EQ(Brivet({"washer.stp", "plain.html"}).exitStatus, 0);
  EXPECT_EQ(Brivet({"washer.stp", "a.html.gz"}).exitStatus, 0);
  EXPECT_EQ(Brivet({"large.stp", "b.stp.gz"}).exitStatus, 0);
  EXPECT_EQ(Brivet({"large.stp", "b.stp"}).exitStatus, 0);
  EXPECT_EQ(Shell("gzip -dc a.html.gz").output, folder.Read("plain.html"));
  EXPECT_EQ(Shell("gzip -dc b.stp.gz").output, folder.Read("b.stp"));
  // Equal input gives equal bytes.
  std::string const first = folder.Read("a.html.gz");
  EXPECT_EQ(Brivet({"washer.stp", "a.html.gz"}).exitStatus, 0);
  EXPECT_EQ(folder.Read("a.html.gz"), first);
  EXPECT_EQ(Shell("ulimit -f 1; VRELLogLevel=NONE \"$b\" large.stp c.stp.gz").exitStatus, 15);
  EXPECT_FALSE(folder.Has("c.stp.gz"));
}
