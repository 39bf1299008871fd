// Documents of other systems, from the folder that VREL_CORPUS names.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <string>

#include "BrivetFixture.h"
#include "HeadlessBrowser.h"

namespace {

struct Model {
  char const* name;
  int instances;  // as listed in the README of the folder
};

constexpr Model kModels[] = {{"as1-oc-214", 6425}, {"dm1-id-214", 1189}, {"io1-cm-214", 917}, {"ATS10-out", 1102}};

class BrivetCorpusTest : public BrivetFixture {
 protected:
  void SetUp() override {
    char const* const named = std::getenv("VREL_CORPUS");
    if (named == nullptr) GTEST_SKIP() << "VREL_CORPUS names no folder of documents";
    corpus = named;
  }

  std::string PathOf(Model const& model) const { return corpus + "/" + model.name + ".stp"; }

  // Translates and returns the output.
  std::string Translated(std::string const& input, Model const& model, std::string const& output) const {
    ChildResult const result = Brivet({"-force", "-set", "Html.*.Writer.Plain=On", input, output});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.output, testing::StartsWith(output + ": " + std::to_string(model.instances) + " instances of "));
    return folder.Read(output);
  }

  // Returns the numbers between two strings.
  static std::set<std::string> Between(std::string const& text, std::string const& begin, std::string const& end) {
    std::set<std::string> found;
    for (std::size_t at = text.find(begin); at != text.npos; at = text.find(begin, at)) {
      at += begin.size();
      std::size_t const length = text.find_first_not_of("0123456789", at) - at;
      if (length != 0 && text.compare(at + length, end.size(), end) == 0) found.insert(text.substr(at, length));
    }
    return found;
  }

  std::string corpus;
};

}  // namespace

TEST_F(BrivetCorpusTest, ListsCorpus) {
  for (Model const& model : kModels) {
    std::string const count = std::to_string(model.instances);
    ChildResult const result = Brivet({"-list", PathOf(model)});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.output,
                testing::HasSubstr("\nentity instances  " + std::string(10 - count.size(), ' ') + count + "\n"));
  }
}

// Every instance is an anchor, and every link leads to one.
TEST_F(BrivetCorpusTest, WritesPlainPages) {
  for (Model const& model : kModels) {
    SCOPED_TRACE(model.name);
    std::string const page = Translated(PathOf(model), model, "page.html");
    std::set<std::string> const anchors = Between(page, "<a name= \"", "\">");
    EXPECT_EQ(anchors.size(), static_cast<std::size_t>(model.instances));
    for (std::string const& link : Between(page, "<a href=\"#", "\">")) EXPECT_EQ(anchors.count(link), 1U) << link;
  }
}

TEST_F(BrivetCorpusTest, RoundTripIsStable) {
  for (Model const& model : kModels) {
    SCOPED_TRACE(model.name);
    std::string const once = Translated(PathOf(model), model, "once.stp");
    std::string const twice = Translated("once.stp", model, "twice.stp");
    EXPECT_TRUE(once == twice);
    // The same title makes the texts equal from their first byte to their last.
    Write("a/part.stp", FileText(PathOf(model)));
    Write("b/part.stp", once);
    EXPECT_TRUE(Translated("a/part.stp", model, "a.txt") == Translated("b/part.stp", model, "b.txt"));
  }
}

TEST_F(BrivetCorpusTest, TranslatesFolder) {
  ChildResult const result = Shell("\"$b\" -outdir out -report r.json \"$VREL_CORPUS\"/*.stp");
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  for (Model const& model : kModels) {
    std::string const name = std::string("out/") + model.name;
    EXPECT_TRUE(folder.Has(name + ".html"));
    for (char const* log : {".read.log", ".write.log"}) {
      EXPECT_THAT(folder.Read(name + log), testing::EndsWith("\nProduct Completed Successfully\n"));
    }
    EXPECT_THAT(folder.Read("r.json"), testing::HasSubstr("\"instances\":" + std::to_string(model.instances) + ","));
  }
}

TEST_F(BrivetCorpusTest, PlainPageOpensInBrowser) {
  if (!HasHeadlessBrowser()) GTEST_SKIP() << "chromium is missing";
  Model const& model = kModels[2];
  Translated(PathOf(model), model, "page.html");
  std::string const document = OpenPage(folder.Path("page.html"));
  EXPECT_EQ(Between(document, "<a name=\"", "\">").size(), static_cast<std::size_t>(model.instances));
  // A string that is encoded in the file.
  EXPECT_THAT(document, testing::HasSubstr("\xE3\x83\x96\xE3\x83\xAC\xE3\x83\xB3\xE3\x83\x89"));
}

// The tree follows from the usages in the file: rod assembly, two bracket assemblies of three bolts with nuts, plate.
TEST_F(BrivetCorpusTest, SummarizesAssembly) {
  ChildResult const result = Brivet({"-summary", PathOf(kModels[0])});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_THAT(result.output,
              testing::HasSubstr("\ncontents          9 products, 13 occurrences, 5 solids, 53 faces\n"));
  EXPECT_THAT(result.output, testing::HasSubstr("\nunit              millimetre and radian\n"));
  EXPECT_THAT(result.output, testing::EndsWith("\nas1\n"
                                               "  rod-assembly_1\n"
                                               "    nut \xC3\x97"
                                               "2\n"
                                               "    rod_1\n"
                                               "  l-bracket-assembly \xC3\x97"
                                               "2\n"
                                               "    nut-bolt-assembly \xC3\x97"
                                               "3\n"
                                               "      bolt_1\n"
                                               "      nut_3\n"
                                               "    l-bracket_1\n"
                                               "  plate_1\n"));
}

TEST_F(BrivetCorpusTest, WritesValidSummaries) {
  for (Model const& model : kModels) {
    SCOPED_TRACE(model.name);
    std::string const json = Translated(PathOf(model), model, "summary.json");
    EXPECT_THAT(json, testing::StartsWith("{\n  \"format\": \"brivet-summary\",\n"));
    if (RunProgram({"/usr/bin/python3", "-c", "import jsonschema"}).exitStatus != 0) continue;
    ChildResult const result =
        RunProgram({"/usr/bin/python3", "-c",
                    "import json, sys, jsonschema\n"
                    "jsonschema.Draft7Validator(json.load(open(sys.argv[1]))).validate(json.load(open(sys.argv[2])))\n",
                    VREL_SOURCE_DIR "/docs/summary.schema.json", folder.Path("summary.json")});
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
  }
}
