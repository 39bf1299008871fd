// Runs the program with a format module that fails in each way.
#include <gmock/gmock.h>

#include "BrivetFixture.h"

using testing::HasSubstr;

namespace {

class BrivetFaultModuleTest : public BrivetFixture {
 protected:
  ChildResult Run(std::vector<std::string> words) const {
    words.insert(words.begin(), BRIVET_PROGRAM);
    ProgramOptions options;
    options.directory = folder.Path();
    options.environment = {"LC_ALL=C.UTF-8", "BRIVET_MODULE_PATH=" BRIVET_FAULT_MODULE_FOLDER};
    return RunProgram(words, options);
  }

  // Translates a file of this name to text.
  ChildResult Read(std::string const& name) const {
    Write(name, "");
    return Run({name, "q.txt"});
  }
};

}  // namespace

TEST_F(BrivetFaultModuleTest, ReportsUnreportedFailureOfWriting) {
  struct Row {
    char const* input;
    int status;
    char const* reason;
  };
  Row const rows[] = {
      {"save.stp", 15, "File Save Error"}, {"fail.stp", 1, "Failure"}, {"unset.stp", 5, "Method is not implemented"}};
  for (Row const& row : rows) {
    Write(row.input, kWasher);
    ExpectRefused(
        Run({row.input, "q.fault"}), row.status,
        std::string("q.fault: cannot be written as fault list: the module 'BrivetFault' failed: ") + row.reason);
    EXPECT_FALSE(folder.Has("q.fault"));
  }
  // The reason of the system is reported instead of the fallback.
  ExpectRefused(Run({"save.stp", "/dev/full", "-write", "text"}), 15,
                "cannot write '/dev/full': No space left on device");
}

TEST_F(BrivetFaultModuleTest, ReportsUnreportedFailureOfReading) {
  std::string const failure = ": cannot be read as fault list: the module 'BrivetFault' failed: ";
  ExpectRefused(Read("open.fault"), 14, "open.fault" + failure + "File Open Error");
  ExpectRefused(Read("resolve.fault"), 1, "resolve.fault" + failure + "Failure");
  Write("header.fault", "");
  ExpectRefused(Run({"-list", "header.fault"}), 1, "header.fault" + failure + "Failure");
}

TEST_F(BrivetFaultModuleTest, ExceptionIsFailure) {
  ExpectRefused(Read("throw.fault"), 1, "the module 'BrivetFault' has failed: thrown by the module");
  ExpectRefused(Read("null.fault"), 1, "the module 'BrivetFault' has reported success without a document");
  ChildResult const number = Read("number.fault");
  EXPECT_EQ(number.exitStatus, 1);
  EXPECT_THAT(number.errors, HasSubstr("brivet: number.fault: internal error: unknown exception\n"));
  ExpectRefused(Read("memory.fault"), 7, "out of memory");
}

TEST_F(BrivetFaultModuleTest, ErrorWithLineHasFormOfCompilers) {
  ChildResult const line = Read("line.fault");
  EXPECT_EQ(line.exitStatus, 21);
  EXPECT_EQ(line.errors, "line.fault:7: error: bad thing\n");
  EXPECT_EQ(Read("column.fault").errors, "column.fault:7:3: error: bad thing\n");
}

TEST_F(BrivetFaultModuleTest, FormatTableIsAligned) {
  std::string const table = Run({"-formats"}).output;
  EXPECT_THAT(table, HasSubstr("html     HTML       write       BrivetHtml   "));
  EXPECT_THAT(table, HasSubstr("fault    fault list read,write  BrivetFault  1.0     "));
}
