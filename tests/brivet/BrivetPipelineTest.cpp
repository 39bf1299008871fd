// What pipelines rely on: statuses, reports, refusals, lists and the places of logs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "BrivetFixture.h"
#include "ModuleRegistry.h"

namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;
using Names = std::vector<std::string>;

class BrivetPipelineTest : public BrivetFixture {
 protected:
  // Returns the command of the manual that begins so, without the prompt.
  static std::string CommandOfManual(std::string const& begin) {
    std::string const manual = FileText(VREL_SOURCE_DIR "/docs/brivet.md");
    std::size_t const at = manual.find("\n    $ " + begin);
    if (at == manual.npos) return "false # the manual has no such command";
    return manual.substr(at + 7, manual.find('\n', at + 1) - at - 7);
  }

  BrivetPipelineTest() {
    Write("washer.stp", kWasher);
    Write("half.stp", DocumentText("#1=A(;\n#2=B();\n"));
  }
};

}  // namespace

TEST_F(BrivetPipelineTest, StatusOfPartialResultIsEight) {
  for (Names const& words :
       {Names{"half.stp"}, Names{"-quiet", "half.stp"}, Names{"half.stp", "half.txt"}, Names{"-list", "half.stp"}}) {
    SCOPED_TRACE(testing::PrintToString(words));
    EXPECT_EQ(Brivet(words).exitStatus, 8);
  }
  EXPECT_TRUE(folder.Has("half.html"));
  EXPECT_TRUE(folder.Has("half.txt"));
}

TEST_F(BrivetPipelineTest, DanglingReferenceIsSuccess) {
  Write("a.stp", DocumentText("#1=A(#2);\n#3=B(#1,#44);\n"));
  ChildResult const result = Brivet({"a.stp", "-strict", "-report", "r.json"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(folder.Read("r.json"),
              HasSubstr("\"status\":\"success\",\"exit\":0,\"instances\":2,\"lost\":[],\"dangling\":2,"));
}

TEST_F(BrivetPipelineTest, StrictWritesNoPartialOutput) {
  Write("half.html", "old");
  ChildResult const result = Brivet({"-strict", "half.stp", "-report", "r.json"});
  EXPECT_EQ(result.exitStatus, 8);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors,
              HasSubstr("brivet: half.stp: the file is damaged, and option -strict accepts no partial result\n"));
  EXPECT_EQ(folder.Read("half.html"), "old");
  EXPECT_THAT(folder.Read("r.json"),
              StartsWith("{\"input\":\"half.stp\",\"output\":null,\"status\":\"partial\",\"exit\":8,"));
  unlink(folder.Path("half.html").c_str());
  EXPECT_EQ(Brivet({"-strict", "-quiet", "half.stp"}).exitStatus, 8);
  EXPECT_FALSE(folder.Has("half.html"));
  EXPECT_EQ(Brivet({"-strict", "-list", "half.stp"}).exitStatus, 8);
  EXPECT_EQ(Brivet({"-strict", "washer.stp"}).exitStatus, 0);
}

TEST_F(BrivetPipelineTest, FileWithoutInstancesIsSuccess) {
  Write("empty.stp", DocumentText(""));
  for (Names const& words : {Names{"empty.stp"}, Names{"empty.stp", "e.txt"}, Names{"empty.stp", "e.stp"},
                             Names{"-list", "empty.stp"}, Names{"-strict", "empty.stp"}}) {
    SCOPED_TRACE(testing::PrintToString(words));
    ChildResult const result = Brivet(words);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors, "brivet: warning: empty.stp: the file contains no instances\n");
  }
}

TEST_F(BrivetPipelineTest, ReportsToFileOrStandardOutput) {
  std::string const bytes = std::to_string(std::string(kWasher).size());
  std::string const begin =
      "{\"input\":\"washer.stp\",\"output\":\"washer.html\",\"status\":\"success\",\"exit\":0,\"instances\":3,"
      "\"lost\":[],\"dangling\":0,\"seconds\":";
  std::string const end = ",\"bytes\":" + bytes + "}\n";
  ChildResult const file = Brivet({"washer.stp", "-report", "r.json"});
  EXPECT_EQ(file.output, "washer.html: 3 instances of 3 types from washer.stp\n");
  EXPECT_THAT(folder.Read("r.json"), testing::AllOf(StartsWith(begin), testing::EndsWith(end)));
  ChildResult const output = Brivet({"washer.stp", "-report", "-"});
  EXPECT_THAT(output.output, testing::AllOf(StartsWith(begin), testing::EndsWith(end)));
  EXPECT_EQ(Brivet({"-quiet", "missing.stp", "-report", "r.json"}).exitStatus, 13);
  EXPECT_THAT(
      folder.Read("r.json"),
      StartsWith("{\"input\":\"missing.stp\",\"output\":null,\"status\":\"failure\",\"exit\":13,\"instances\":0,"));
  // A report that cannot be opened is an error before anything is written.
  unlink(folder.Path("washer.html").c_str());
  EXPECT_EQ(Brivet({"washer.stp", "-report", "missing/r.json"}).exitStatus, 15);
  EXPECT_FALSE(folder.Has("washer.html"));
  // One that cannot be completed is a warning: the output is there.
  ChildResult const full = Brivet({"washer.stp", "-report", "/dev/full"});
  EXPECT_EQ(full.exitStatus, 0);
  EXPECT_EQ(full.errors,
            "brivet: warning: the report is incomplete: cannot write '/dev/full': No space left on device\n");
}

// "brivet *.stp" in a folder of two files.
TEST_F(BrivetPipelineTest, RefusesOutputThatIsDocument) {
  Write("other.stp", kWasher);
  Write("bom.step", std::string("\xEF\xBB\xBF/* c */\n") + kWasher);
  Shell("gzip -c washer.stp >z.stp.gz");
  for (char const* output : {"other.stp", "bom.step", "z.stp.gz"}) {
    SCOPED_TRACE(output);
    std::string const before = folder.Read(output);
    ChildResult const result = Brivet({"washer.stp", output});
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.errors,
              std::string("brivet: OUTPUT '") + output +
                  "' is an existing STEP file\nhint: to overwrite it, use -force or -write; to translate "
                  "several files, use -outdir DIR\n");
    EXPECT_EQ(folder.Read(output), before);
  }
  EXPECT_EQ(Brivet({"washer.stp", "other.stp", "half.stp"}).exitStatus, 2);
  EXPECT_EQ(Brivet({"-force", "washer.stp", "other.stp"}).exitStatus, 0);
  EXPECT_EQ(Brivet({"-write", "step", "washer.stp", "other.stp"}).exitStatus, 0);
  // Not a STEP file.
  Write("note.stp", "see ISO 9001; and ISO-10303-21");
  EXPECT_EQ(Brivet({"washer.stp", "note.stp"}).exitStatus, 0);
  EXPECT_EQ(Brivet({"washer.stp", "new.stp"}).exitStatus, 0);
}

TEST_F(BrivetPipelineTest, ListsFormats) {
  ChildResult const result = Brivet({"-formats"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(
      result.output,
      MatchesRegex("glb      glTF     write       BrivetMesh   [^ ]* +.glb +/.*/libBrivetMesh.so\n"
                   "html     HTML     write       BrivetHtml   [^ ]* +.html .htm +/.*/libBrivetHtml.so\n"
                   "json     JSON     write       BrivetJson   [^ ]* +.json +/.*/libBrivetJson.so\n"
                   "obj      OBJ      write       BrivetMesh   [^ ]* +.obj +/.*/libBrivetMesh.so\n"
                   "(shape    shapes   evaluate    BrivetShape  [^ ]* +.stp .step .p21 +/.*/libBrivetShape.so\n)?"
                   "stl      STL      write       BrivetMesh   [^ ]* +.stl +/.*/libBrivetMesh.so\n"
                   "svg      SVG      write       BrivetSvg    [^ ]* +.svg +/.*/libBrivetSvg.so\n"
                   "text     text     write       BrivetText   [^ ]* +.txt .text +/.*/libBrivetText.so\n"
                   "step     STEP     read,write  BrivetStep   [^ ]* +.stp .step .p21 +/.*/libBrivetStep.so\n"));
  EXPECT_THAT(Brivet({"-help", "step"}).output, HasSubstr("\n  Step.*.Writer.FileLineLength\n"));
  EXPECT_EQ(Brivet({"-help", "nosuch"}).exitStatus, 2);
}

TEST_F(BrivetPipelineTest, DrawsSelectedView) {
  std::string const bracket = BracketPath();
  // 60 x 50 x 40 mm; the margin is 0.04 of the larger side.
  EXPECT_EQ(Brivet({bracket, "front.svg", "-set", "Svg.*.Writer.View=Front"}).exitStatus, 0);
  EXPECT_THAT(folder.Read("front.svg"), HasSubstr(" viewBox=\"-2.4 -2.4 64.8 54.8\" "));
  EXPECT_EQ(Brivet({bracket, "right.svg", "-set", "View=right"}).exitStatus, 0);
  EXPECT_THAT(folder.Read("right.svg"), HasSubstr(" viewBox=\"-2 -2 44 54\" "));
  EXPECT_EQ(Brivet({bracket, "back.svg", "-set", "Svg.*.Writer.View=Back"}).exitStatus, 1);
}

TEST_F(BrivetPipelineTest, ReportsNothingToDraw) {
  ChildResult const result = Brivet({"washer.stp", "washer.svg"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.errors, "brivet: washer.stp: nothing to draw: the document has no edges and no triangles\n");
  EXPECT_FALSE(folder.Has("washer.svg"));
}

TEST_F(BrivetPipelineTest, AcceptsUsualSpellings) {
  EXPECT_EQ(Brivet({"--write=text", "washer.stp"}).exitStatus, 0);
  EXPECT_TRUE(folder.Has("washer.txt"));
  EXPECT_EQ(Brivet({"washer.stp", "-o", "o.html"}).exitStatus, 0);
  EXPECT_TRUE(folder.Has("o.html"));
  ChildResult const unknown = Brivet({"washer.stp", "a.pdf"});
  EXPECT_EQ(unknown.exitStatus, 2);
  EXPECT_THAT(unknown.errors,
              StartsWith("brivet: no format has the extension of OUTPUT 'a.pdf'\nhint: use one of .glb, .html, "));
}

TEST_F(BrivetPipelineTest, PlacesLogs) {
  EXPECT_EQ(Brivet({"-nolog", "washer.stp"}).exitStatus, 0);
  EXPECT_EQ(Files(), (Names{"half.stp", "washer.html", "washer.stp"}));
  EXPECT_EQ(Brivet({"-logdir", "logs", "washer.stp"}).exitStatus, 0);
  EXPECT_EQ(Files(), (Names{"half.stp", "logs", "washer.html", "washer.stp"}));
  EXPECT_THAT(folder.Read("logs/brivet_read.log"), testing::EndsWith("\nProduct Completed Successfully\n"));
  EXPECT_THAT(folder.Read("logs/brivet_write.log"), testing::EndsWith("\nProduct Completed Successfully\n"));
}

TEST_F(BrivetPipelineTest, ListsSettings) {
  ChildResult const one = Brivet({"-settings", "*writer.filelinelength"});
  EXPECT_EQ(one.exitStatus, 0);
  EXPECT_EQ(one.output,
            "Step.*.Writer.FileLineLength         int from 0 to 2147483647 default: 0    maximum length of a line; 0 "
            "for no limit\n");
  EXPECT_EQ(Brivet({"-settings", "sewtolerance"}).output, "SewTolerance\n");
  EXPECT_THAT(Brivet({"-settings"}).output, HasSubstr("\nHealing\n"));
}

TEST_F(BrivetPipelineTest, RefusesPatternWithoutMatch) {
  ExpectRefused(Brivet({"-settings", "zzz"}), 2,
                "no option name matches 'zzz'\nhint: 'brivet -settings' lists all names");
  ExpectRefused(Brivet({"-settings", "Healig"}), 2, "no option name matches 'Healig'\nhint: did you mean 'Healing'?");
  EXPECT_EQ(Brivet({"-settings", ""}).exitStatus, 0);
}

TEST_F(BrivetPipelineTest, HelpListsOptionsOfExactShapes) {
  bool const isInstalled = bool(ModuleRegistry::Get().FindName("shape", ModuleRegistry::Evaluating));
  for (std::string const format : {"glb", "stl", "obj", "html", "json", "text", "svg", "step"}) {
    bool const usesShapes = format != "text" && format != "svg" && format != "step";
    std::string const help = Brivet({"-help", format}).output;
    EXPECT_EQ(help.find("options of exact shapes:\n  Shape.*.Reader.Deflection\n") != help.npos,
              isInstalled && usesShapes)
        << help;
  }
  EXPECT_EQ(Brivet({"-help", "glb"}).output.find("no options") == std::string::npos, isInstalled);
}

TEST_F(BrivetPipelineTest, WarnsOnceOfMissingModuleFolder) {
  auto const errors = [this](std::vector<std::string> words) {
    words.insert(words.begin(), BRIVET_PROGRAM);
    ProgramOptions options;
    options.directory = folder.Path();
    options.environment = {"LC_ALL=C.UTF-8", "BRIVET_MODULE_PATH=/nonexistent/modules:relative"};
    return RunProgram(words, options).errors;
  };
  std::string const missing =
      "brivet: warning: BRIVET_MODULE_PATH: folder '/nonexistent/modules' is skipped: No such file or directory\n";
  std::string const relative =
      "brivet: warning: BRIVET_MODULE_PATH: folder 'relative' is skipped: its path is relative\n";
  folder.Write("other.stp", kWasher);
  EXPECT_EQ(errors({"washer.stp"}), missing + relative);
  EXPECT_EQ(errors({"washer.stp", "o.txt"}), missing + relative);
  EXPECT_EQ(errors({"-write", "text", "washer.stp"}), missing + relative);
  EXPECT_EQ(errors({"-outdir", "all", "-jobs", "2", "washer.stp", "other.stp"}), missing + relative);
  EXPECT_EQ(errors({"-formats"}), missing + relative);
  EXPECT_EQ(errors({"-quiet", "washer.stp", "o.txt"}), "");
  EXPECT_EQ(errors({"-version"}), "");
}

TEST_F(BrivetPipelineTest, VerboseNotesUnusedOptions) {
  ChildResult const result = Brivet({"-verbose", "-set", "Healing=On", "-set", "Step.*.Writer.FileLineLength=80",
                                     "-set", "AuthorName=x", "washer.stp", "new.stp"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "brivet: note: option 'Healing' has no effect on this translation\n");
  // A page has no authors to replace.
  EXPECT_EQ(Brivet({"-verbose", "-set", "AuthorName=x", "washer.stp"}).errors,
            "brivet: note: option 'AuthorName' has no effect on this translation\n");
  EXPECT_EQ(Brivet({"-set", "Healing=On", "washer.stp"}).errors, "");
}

TEST_F(BrivetPipelineTest, RefusesUnusableValue) {
  ChildResult const result = Brivet({"-set", "FileLineLength=abc", "washer.stp", "new.stp"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.errors, HasSubstr("FileLineLength"));
  EXPECT_FALSE(folder.Has("new.stp"));
}

// The recipes of docs/brivet.md.
TEST_F(BrivetPipelineTest, RecipeForParallelRuns) {
  if (RunProgram({"sh", "-c", "command -v parallel"}).exitStatus != 0) GTEST_SKIP() << "GNU parallel is missing";
  Write("parts/x.stp", kWasher);
  Write("parts/x.step", kWasher);
  Write("parts/y.p21", folder.Read("half.stp"));
  Shell("gzip -c washer.stp >parts/z.stpZ; mkdir pages");
  std::string const setup = "PATH=$(dirname \"$b\"):$PATH; HOME=$PWD; export PATH HOME; ";
  ChildResult const first = Shell(setup + CommandOfManual("parallel --joblog"));
  EXPECT_EQ(first.exitStatus, 1) << first.errors;
  for (char const* name : {"x.stp.html", "x.step.html", "y.p21.html", "z.stpZ.html", "x.stp.logs/brivet_read.log"}) {
    EXPECT_TRUE(folder.Has(std::string("pages/") + name)) << name;
  }
  // The partial run is repeated, the others are not.
  Shell("rm pages/x.stp.html");
  Write("parts/y.p21", kWasher);
  ChildResult const second = Shell(setup + CommandOfManual("parallel --retry-failed"));
  EXPECT_EQ(second.exitStatus, 0) << second.errors;
  EXPECT_FALSE(folder.Has("pages/x.stp.html"));
  EXPECT_THAT(folder.Read("pages/y.p21.html"), HasSubstr("1204"));
}

TEST_F(BrivetPipelineTest, RecipeForSlurmArray) {
  Write("parts/x.stp", kWasher);
  Write("parts/x.step", kWasher);
  Write("parts/y.p21", folder.Read("half.stp"));
  Write("parts/other.txt", "");
  Shell("gzip -c washer.stp >parts/z.stpZ");
  std::string const setup = "PATH=$(dirname \"$b\"):$PATH; export PATH; ";
  EXPECT_EQ(Shell(setup + CommandOfManual("find ")).exitStatus, 0);
  std::string const files = folder.Read("files.txt");
  EXPECT_EQ(std::count(files.begin(), files.end(), '\n'), 4);
  std::string const script = "SLURM_ARRAY_TASK_COUNT=2 " VREL_SOURCE_DIR "/examples/brivet-array.sh files.txt pages; ";
  // Sorted: x.step and y.p21, x.stp and z.stpZ.
  EXPECT_EQ(Shell(setup + "SLURM_ARRAY_TASK_ID=1 " + script).exitStatus, 8);
  EXPECT_EQ(Shell(setup + "SLURM_ARRAY_TASK_ID=2 " + script).exitStatus, 0);
  for (char const* name : {"x.stp.html", "x.step.json", "y.p21.html", "z.stpZ.logs/brivet_write.log"}) {
    EXPECT_TRUE(folder.Has(std::string("pages/") + name)) << name;
  }
  if (RunProgram({"sh", "-c", "command -v sbatch && sinfo"}).exitStatus != 0) return;
  Shell("rm -r pages");
  EXPECT_EQ(Shell(setup + "sbatch --wait --array=1-2 " VREL_SOURCE_DIR "/examples/brivet-array.sh files.txt pages")
                .exitStatus,
            8);
}
