#include "Batch.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "ScratchDirectory.h"

TEST(BatchTest, NamesOutputsAndLogs) {
  std::vector<BatchItem> const items = MakeBatch({"x/a.stp", "c.stp.gz"}, *Format::Named("text"), "out", "logs/");
  ASSERT_EQ(items.size(), 2U);
  EXPECT_EQ(items[0].input, "x/a.stp");
  EXPECT_EQ(items[0].output, "out/a.txt");
  EXPECT_EQ(items[0].readLog, "logs/a.read.log");
  EXPECT_EQ(items[0].writeLog, "logs/a.write.log");
  EXPECT_EQ(items[1].output, "out/c.txt");
  std::vector<BatchItem> const silent = MakeBatch({"a.stp"}, *Format::Named("html"), "/", "");
  EXPECT_EQ(silent[0].output, "/a.html");
  EXPECT_EQ(silent[0].readLog + silent[0].writeLog, "");
}

TEST(BatchTest, FindsConflicts) {
  ScratchDirectory const folder;
  std::string const a = folder.Write("a.stp", "");
  std::string const b = folder.Write("b.stp", "");
  Format const& step = *Format::Named("step");
  EXPECT_EQ(FindConflict(MakeBatch({a, b}, step, folder.Path("out"), ""), {}), "");
  EXPECT_EQ(FindConflict(MakeBatch({a, "x/a.step"}, step, "out", ""), {}),
            "inputs '" + a + "' and 'x/a.step' have the same output 'out/a.stp'");
  // By another name of the input.
  ASSERT_EQ(symlink(b.c_str(), folder.Path("c.stp").c_str()), 0);
  EXPECT_EQ(FindConflict(MakeBatch({b, "x/c.stp"}, step, folder.Path(), ""), {}),
            "the output of '" + b + "' would overwrite the input '" + b + "'");
  EXPECT_EQ(FindConflict(MakeBatch({"x/c.stp", b}, *Format::Named("html"), folder.Path(), ""), {}), "");
  // An options file and an input as outputs and logs.
  std::string const page = folder.Write("a.html", "");
  EXPECT_EQ(FindConflict(MakeBatch({a}, *Format::Named("html"), folder.Path(), ""), {page}),
            "the output of '" + a + "' would overwrite the options file '" + page + "'");
  std::string const log = folder.Write("a.read.log", "");
  EXPECT_EQ(FindConflict(MakeBatch({a, log}, step, folder.Path("out"), folder.Path()), {}),
            "a log of '" + a + "' would overwrite the input '" + log + "'");
}
