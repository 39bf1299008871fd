#include "Manifest.h"

#include <gtest/gtest.h>

namespace {

constexpr char kManifest[] = R"(sdk = 1
module = BrivetStl
version = 1.0
formats = stl

[stl]
title = STL, triangles
extensions = .stl,.stlb
signatures = 0:736f6c,84:00ff
reads = TRUE
writes = FALSE
reader options = Unit

[stl Reader Unit]
type = choice
default = mm
choices = mm,inch
help = unit of the file, by default mm
)";

std::string Replaced(std::string text, std::string const& from, std::string const& to) {
  return text.replace(text.find(from), from.size(), to);
}

}  // namespace

TEST(ManifestTest, ParsesDescription) {
  Manifest const manifest = Manifest::Parse(kManifest, "BrivetStl");
  EXPECT_EQ(manifest.problem, "");
  FormatDescription const* const format = manifest.module.Find("stl");
  ASSERT_NE(format, nullptr);
  EXPECT_EQ(format->title, "STL, triangles");
  EXPECT_EQ(format->extensions, (std::vector<std::string>{".stl", ".stlb"}));
  EXPECT_TRUE(format->reads);
  EXPECT_FALSE(format->writes);
  EXPECT_FALSE(format->evaluates);
  EXPECT_FALSE(format->usesShapes);
  ASSERT_EQ(format->signatures.size(), 2U);
  EXPECT_EQ(format->signatures[1].offset, 84);
  EXPECT_EQ(format->signatures[1].bytes, std::string("\0\xFF", 2));
  ASSERT_EQ(format->readerOptions.size(), 1U);
  EXPECT_EQ(format->readerOptions[0].choices.size(), 2U);
  EXPECT_EQ(format->readerOptions[0].help, "unit of the file, by default mm");
}

TEST(ManifestTest, ParsesEvaluation) {
  Manifest const manifest =
      Manifest::Parse(Replaced(kManifest, "reads = TRUE", "reads = FALSE\nevaluates = TRUE"), "BrivetStl");
  EXPECT_EQ(manifest.problem, "");
  ASSERT_NE(manifest.module.Find("stl"), nullptr);
  EXPECT_TRUE(manifest.module.Find("stl")->evaluates);
}

TEST(ManifestTest, ParsesUseOfShapes) {
  Manifest const manifest =
      Manifest::Parse(Replaced(kManifest, "writes = FALSE", "writes = TRUE\nuses shapes = TRUE"), "BrivetStl");
  EXPECT_EQ(manifest.problem, "");
  ASSERT_NE(manifest.module.Find("stl"), nullptr);
  EXPECT_TRUE(manifest.module.Find("stl")->usesShapes);
}

TEST(ManifestTest, SaysWhatIsDamaged) {
  auto const problem = [](std::string const& text) { return Manifest::Parse(text, "BrivetStl").problem; };
  EXPECT_EQ(problem(""), "damaged manifest: empty");
  EXPECT_EQ(problem("sdk = 1\n"), "damaged manifest: no 'module'");
  EXPECT_EQ(problem(Replaced(kManifest, "sdk = 1", "sdk = one")), "damaged manifest: 'one' is not a number");
  EXPECT_EQ(problem(Replaced(kManifest, "BrivetStl", "Other")), "the manifest is of module 'Other'");
  EXPECT_EQ(problem(Replaced(kManifest, "TRUE", "yes")), "damaged manifest: 'reads' in [stl] is not TRUE or FALSE");
  EXPECT_EQ(problem(Replaced(kManifest, "736f6c", "7")), "damaged manifest: signature 0:7");
  EXPECT_EQ(problem(Replaced(kManifest, "choice\n", "list\n")), "damaged manifest: unknown type in [stl Reader Unit]");
  EXPECT_EQ(problem(Replaced(kManifest, ".stlb", "stlb")), "format 'stl': invalid extension 'stlb'");
  EXPECT_EQ(problem("nonsense\n").rfind("damaged manifest: Incorrect syntax: line 1:", 0), 0U);
}
