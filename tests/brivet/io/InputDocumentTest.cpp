#include "InputDocument.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "ChildProcess.h"
#include "Gk_ErrMgr.h"
#include "InputError.h"
#include "ScratchDirectory.h"
#include "TestDocument.h"
#include "VRELAbortException.h"

namespace {

// Runs with a pipe as standard input, which holds the bytes and then ends.
template <class Body>
void WithStandardInput(std::string const& bytes, Body const& body) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  int const before = dup(STDIN_FILENO);
  dup2(ends[0], STDIN_FILENO);
  close(ends[0]);
  std::thread writer([&] {
    for (std::size_t at = 0; at < bytes.size();) {
      ssize_t const count = write(ends[1], bytes.data() + at, bytes.size() - at);
      if (count > 0) at += static_cast<std::size_t>(count);
    }
    close(ends[1]);
  });
  body();
  writer.join();
  dup2(before, STDIN_FILENO);
  close(before);
}

InputError ErrorOf(std::string const& path) {
  try {
    InputDocument const document(path);
  } catch (InputError const& error) {
    return error;
  }
  return {VREL_S_OK, 0, ""};
}

}  // namespace

TEST(InputDocumentTest, IsARegularFileItself) {
  ScratchDirectory const folder;
  // A name that is no text in the encoding of the locale.
  std::string const path = folder.Write("m\xFC.stp", "a document");
  InputDocument const document(path);
  EXPECT_EQ(document.Size(), 10);
  EXPECT_TRUE(std::filesystem::equivalent(document.Path(), path));
  EXPECT_EQ(document.Path().find('\xFC'), std::string::npos);
  EXPECT_EQ(FileText(document.Path()), "a document");
  EXPECT_EQ(FileText(document.Path()), "a document");
}

TEST(InputDocumentTest, CopiesAPipe) {
  std::string bytes;
  for (int i = 0; bytes.size() < 1000000; ++i) bytes += std::to_string(i) + "\n";
  for (char const* name : {"-", "/dev/stdin"}) {
    SCOPED_TRACE(name);
    WithStandardInput(bytes, [&] {
      InputDocument const document(name);
      EXPECT_EQ(document.Size(), static_cast<long>(bytes.size()));
      EXPECT_TRUE(FileText(document.Path()) == bytes);
      EXPECT_TRUE(FileText(document.Path()) == bytes);
    });
  }
  WithStandardInput("", [] { EXPECT_EQ(InputDocument("-").Size(), 0); });
}

TEST(InputDocumentTest, LeavesNoCopy) {
  ScratchDirectory const folder;
  ChildResult const result = RunInChild([&folder] {
    setenv("TMPDIR", folder.Path().c_str(), 1);
    WithStandardInput("bytes", [&folder] {
      InputDocument const document("-");
      EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
      EXPECT_EQ(FileText(document.Path()), "bytes");
    });
    return std::filesystem::is_empty(folder.Path()) && !testing::Test::HasFailure() ? 0 : 1;
  });
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(InputDocumentTest, NeedsRoomForACopy) {
  ChildResult const result = RunInChild([] {
    setenv("TMPDIR", "/nowhere", 1);
    InputError error{VREL_S_OK, 0, ""};
    WithStandardInput("bytes", [&error] { error = ErrorOf("-"); });
    EXPECT_EQ(error.result, VREL_E_FILE_SAVE);
    EXPECT_EQ(error.text,
              "expected room in /nowhere for a copy of what has no length, found: No such file or directory; name a "
              "folder with more room in TMPDIR");
    return testing::Test::HasFailure() ? 1 : 0;
  });
  EXPECT_EQ(result.exitStatus, 0) << result.output;
}

// A shell may have read the begin of a file already.
TEST(InputDocumentTest, BeginsWhereStandardInputStands) {
  ScratchDirectory const folder;
  std::string const path = folder.Write("a.txt", "first line\nthe rest");
  int const before = dup(STDIN_FILENO);
  int const descriptor = open(path.c_str(), O_RDONLY);
  lseek(descriptor, 11, SEEK_SET);
  dup2(descriptor, STDIN_FILENO);
  {
    InputDocument const document("-");
    EXPECT_EQ(FileText(document.Path()), "the rest");
    EXPECT_EQ(document.Size(), 8);
  }
  dup2(before, STDIN_FILENO);
  close(before);
  close(descriptor);
}

TEST(InputDocumentTest, RefusesWhatCannotBeRead) {
  ScratchDirectory const folder;
  EXPECT_EQ(ErrorOf(folder.Path("missing")).result, VREL_E_FILE_NOT_FOUND);
  InputError const error = ErrorOf(folder.Path());
  EXPECT_EQ(error.result, VREL_E_FILE_OPEN);
  EXPECT_EQ(error.text,
            "expected a file that can be read, found: Is a directory; check what stands there, and whether you may "
            "read it");
}

TEST(InputDocumentTest, IsStoppedWhileItWaits) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  int const before = dup(STDIN_FILENO);
  dup2(ends[0], STDIN_FILENO);
  ASSERT_EQ(write(ends[1], "some", 4), 4);
  std::signal(SIGALRM, [](int) { Gk_ErrMgr::setAbort(); });
  alarm(1);
  EXPECT_THROW(InputDocument("-"), VRELAbortException);
  std::signal(SIGALRM, SIG_DFL);
  dup2(before, STDIN_FILENO);
  for (int const each : {before, ends[0], ends[1]}) close(each);
}
