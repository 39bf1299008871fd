// Runs the program in a folder of its own.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "ChildProcess.h"
#include "ScratchDirectory.h"
#include "TestDocument.h"
#include "UnprivilegedProcess.h"

class BrivetFixture : public testing::Test {
 protected:
  void Write(std::string const& name, std::string const& bytes) const { folder.Write(name, bytes); }

  // Runs the program in the folder of the test.
  ChildResult Brivet(std::vector<std::string> words, std::string const& locale = "C.UTF-8",
                     std::string const& input = "") const {
    words.insert(words.begin(), BRIVET_PROGRAM);
    ProgramOptions options;
    options.directory = folder.Path();
    options.environment = {"LC_ALL=" + locale};
    options.input = input;
    return RunProgram(words, options);
  }

  ChildResult Shell(std::string const& command) const {
    ProgramOptions options;
    options.directory = folder.Path();
    options.environment = {"LC_ALL=C.UTF-8"};
    return RunProgram({"sh", "-c", std::string("b='") + BRIVET_PROGRAM + "'; " + command}, options);
  }

  // Returns why another user cannot run the program; empty if they can.
  static std::string WhyNotUnprivileged() {
#ifdef VREL_COVERAGE
    return "another user may not write the coverage data";
#else
    return CanExecuteUnprivileged(BRIVET_PROGRAM) ? "" : "another user may not enter the folder of the build";
#endif
  }

  // Returns a log with the version and the time masked.
  std::string Log(std::string const& name = "brivet_read.log") const {
    std::string log = folder.Read(name);
    Mask(log, "\nApplication          : brivet ", sizeof BRIVET_VERSION - 1, "VERSION");
    Mask(log, "\nFinish Time : ", sizeof "Thu Jan  1 00:00:00 1970" - 1, "TIME");
    return log;
  }

  // Replaces the rest of the line that begins with `begin`, which must have `length` bytes, by `mark`.
  static void Mask(std::string& log, std::string const& begin, std::size_t length, char const* mark) {
    std::size_t const at = log.find(begin);
    if (at == log.npos) return;
    std::size_t const rest = at + begin.size();
    EXPECT_EQ(log.find('\n', rest), rest + length);
    log.replace(rest, length, mark);
  }

  void ExpectRefused(ChildResult const& result, int status, std::string const& error) const {
    EXPECT_EQ(result.signal, 0);
    EXPECT_EQ(result.exitStatus, status);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "brivet: " + error + "\n");
  }

  void ExpectTranslated(ChildResult const& result, std::string const& line) const {
    EXPECT_EQ(result.signal, 0);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, line + "\n");
    EXPECT_EQ(result.errors, "");
  }

  // Returns the sorted names of the files in the folder.
  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator(folder.Path())) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  ScratchDirectory folder;
};

// Uses most of the syntax of ISO 10303-21.
inline constexpr char kWasher[] = R"(ISO-10303-21;
HEADER;
/* it's a washer */
FILE_DESCRIPTION(('Scheibe f\S\|r M8','washer'),'2;1');
FILE_NAME('C:\\parts\\washer.stp','2026-11-20T09:30:00',('J\S\vrg'),(),
  $,'drawn by ''hand''','');
FILE_SCHEMA(('AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }'));
ENDSEC;
DATA;
#10=PRODUCT('w','\X2\30D630EC
30F330C9\X0\ R1','/* no comment */',(#20));
#20=(A()B('\S\A'));
#1204=C(''); /* '\S\A' */
ENDSEC;
END-ISO-10303-21;
)";
