#include "detail/VRELSeededHash.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "ChildProcess.h"

namespace {

constexpr VRELSeededHash::Key kReferenceKey = {0x0706050403020100, 0x0F0E0D0C0B0A0908};

std::uint64_t HashOf(std::u16string_view text) {
  VRELSeededHash hash(kReferenceKey);
  for (char16_t const unit : text) hash.Add(unit);
  return hash.Finish();
}

// The values are SipHash-1-3 of the bytes in little-endian order, by a model of the paper in another language. The
// first one is also the first of the published vectors.
TEST(VRELSeededHashTest, MatchesSipHash) {
  EXPECT_EQ(HashOf(u""), 0xABAC0158050FC4DCu);
  EXPECT_EQ(HashOf(u"a"), 0x2C9FF5D5524E4E9Fu);
  EXPECT_EQ(HashOf(u"abc"), 0x283FD7684CA85010u);
  EXPECT_EQ(HashOf(u"abcd"), 0x67875D8CC70B800Bu);
  EXPECT_EQ(HashOf(u"Schraube \u00D6"), 0x545F5E63B9592C3Fu);
  EXPECT_EQ(HashOf(std::u16string(200, u'x')), 0x8E1BB6D629BE0006u);
}

TEST(VRELSeededHashTest, FourUnitsAreAddedAtOnce) {
  VRELSeededHash hash(kReferenceKey);
  EXPECT_TRUE(hash.CanAddFour());
  hash.AddFour(0x0064006300620061);
  EXPECT_EQ(hash.Finish(), HashOf(u"abcd"));
  VRELSeededHash odd(kReferenceKey);
  odd.Add(u'a');
  EXPECT_FALSE(odd.CanAddFour());
}

TEST(VRELSeededHashTest, IsStableWithinProcess) {
  std::string_view const bytes = "abc\xFF";
  std::u16string_view const units = u"abc\u00FF";
  EXPECT_EQ(VRELSeededHash::Of(bytes), VRELSeededHash::Of(bytes));
  EXPECT_EQ(VRELSeededHash::Of(bytes), VRELSeededHash::Of(units));
  EXPECT_NE(VRELSeededHash::Of(bytes), VRELSeededHash::Of(bytes.substr(1)));
  EXPECT_EQ(&VRELSeededHash::ProcessKey(), &VRELSeededHash::ProcessKey());
}

// Runs the program twice; each run draws its own key.
TEST(VRELSeededHashTest, DiffersBetweenProcesses) {
  char const* const variable = "VREL_TEST_PRINTS_HASH";
  if (std::getenv(variable) != nullptr) {
    std::printf("<%llx>", static_cast<unsigned long long>(VRELSeededHash::Of(std::string_view("abc"))));
    return;
  }
  auto const hashOfChild = [variable] {
    ProgramOptions options;
    options.environment = {std::string(variable) + "=1"};
    std::vector<std::string> const command = {"/proc/self/exe",
                                              "--gtest_filter=VRELSeededHashTest.DiffersBetweenProcesses"};
    std::string const output = RunProgram(command, options).output;
    std::size_t const begin = output.find('<');
    EXPECT_NE(begin, std::string::npos) << output;
    return begin == std::string::npos ? output : output.substr(begin, output.find('>') - begin);
  };
  EXPECT_NE(hashOfChild(), hashOfChild());
}

}  // namespace
