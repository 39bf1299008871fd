#include "InputDocument.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "ChildProcess.h"
#include "FileError.h"
#include "Gk_ErrMgr.h"
#include "OpenWatch.h"
#include "ScratchDirectory.h"
#include "TestDocument.h"
#include "UnprivilegedProcess.h"
#include "VRELAbortException.h"

namespace {

// Calls `body` with a pipe as standard input that provides the bytes.
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

FileError ErrorOf(std::string const& path) {
  try {
    InputDocument const document(path);
  } catch (FileError const& error) {
    return error;
  }
  return {VREL_S_OK, "", ""};
}

}  // namespace

TEST(InputDocumentTest, RegularFileIsUsedDirectly) {
  ScratchDirectory const folder;
  // Not a valid string in the encoding of the locale.
  std::string const path = folder.Write("m\xFC.stp", "a document");
  InputDocument const document(path);
  EXPECT_EQ(document.Size(), 10);
  EXPECT_TRUE(std::filesystem::equivalent(document.Path(), path));
  EXPECT_EQ(document.Path().find('\xFC'), std::string::npos);
  EXPECT_EQ(FileText(document.Path()), "a document");
  EXPECT_EQ(FileText(document.Path()), "a document");
}

TEST(InputDocumentTest, PipeIsCopied) {
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

TEST(InputDocumentTest, CopyIsRemoved) {
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

TEST(InputDocumentTest, CopyFailsWithoutFolder) {
  ChildResult const result = RunInChild([] {
    setenv("TMPDIR", "/nowhere", 1);
    FileError error{VREL_S_OK, "", ""};
    WithStandardInput("bytes", [&error] { error = ErrorOf("-"); });
    EXPECT_EQ(error.result, VREL_E_FILE_SAVE);
    EXPECT_EQ(error.message, "cannot copy the input to a temporary file in '/nowhere': No such file or directory");
    EXPECT_EQ(error.hint, "set TMPDIR to a folder with enough space");
    return testing::Test::HasFailure() ? 1 : 0;
  });
  EXPECT_EQ(result.exitStatus, 0) << result.output;
}

// A shell may have read the beginning of a file already.
TEST(InputDocumentTest, StandardInputStartsAtCurrentOffset) {
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

TEST(InputDocumentTest, ReportsUnreadableFiles) {
  ScratchDirectory const folder;
  EXPECT_EQ(ErrorOf(folder.Path("missing")).result, VREL_E_FILE_NOT_FOUND);
  FileError const error = ErrorOf(folder.Path());
  EXPECT_EQ(error.result, VREL_E_FILE_OPEN);
  EXPECT_EQ(error.message, "cannot read '" + folder.Path() + "': Is a directory");
}

TEST(InputDocumentTest, WaitIsInterruptedByAbort) {
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

namespace {

// Returns the message of CheckUnchanged after `change`, or an empty string.
template <class Change>
std::string MessageAfter(std::string const& path, Change const& change) {
  InputDocument const document(path);
  document.CheckUnchanged();
  change();
  try {
    document.CheckUnchanged();
  } catch (FileError const& error) {
    EXPECT_EQ(error.result, VREL_E_FILE_OPEN);
    return error.message;
  }
  return "";
}

}  // namespace

TEST(InputDocumentTest, CheckUnchangedReportsChanges) {
  ScratchDirectory const folder;
  std::string const path = folder.Write("a.stp", "content");
  std::string const message = "cannot read '" + path + "': file changed while it was read";
  EXPECT_EQ(MessageAfter(path, [] {}), "");
  EXPECT_EQ(MessageAfter(path, [&] { folder.Write("a.stp", "more content"); }), message);
  // In place, of the same size.
  EXPECT_EQ(MessageAfter(path,
                         [&] {
                           timespec const times[2] = {{1000, 0}, {1000, 1}};
                           ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
                         }),
            message);
  EXPECT_EQ(MessageAfter(path,
                         [&] {
                           timespec const times[2] = {{1000, 0}, {1000, 1}};
                           std::string const other = folder.Write("b.stp", "more content");
                           ASSERT_EQ(utimensat(AT_FDCWD, other.c_str(), times, 0), 0);
                           ASSERT_EQ(rename(other.c_str(), path.c_str()), 0);
                         }),
            message);
  // A removed file is still read to its end.
  EXPECT_EQ(MessageAfter(path, [&] { unlink(path.c_str()); }), "");
}

// The descriptor can be read, the file cannot be opened again.
TEST(InputDocumentTest, ReadsStandardInputWithoutPermission) {
  ScratchDirectory const folder;
  std::string const path = folder.Write("a.txt", "content");
  ASSERT_EQ(chmod(path.c_str(), 0), 0);
  int const descriptor = open(path.c_str(), O_RDONLY);
  if (descriptor < 0) GTEST_SKIP() << "only root may open such a file";
  RunUnprivileged([descriptor] {
    dup2(descriptor, STDIN_FILENO);
    // The file descriptors in /proc belong to root again after setuid without exec.
    prctl(PR_SET_DUMPABLE, 1);
    InputDocument const document("-");
    EXPECT_EQ(FileText(document.Path()), "content");
    EXPECT_EQ(document.Size(), 7);
  });
  close(descriptor);
}

TEST(InputDocumentTest, OnlyRegularFileIsStepDocument) {
  ScratchDirectory const folder;
  std::string const pipe = folder.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  OpenWatch const watch(pipe);
  EXPECT_FALSE(IsStepDocument(pipe));
  EXPECT_FALSE(IsStepDocument(folder.Path()));
  EXPECT_FALSE(IsStepDocument("/dev/null"));
  EXPECT_FALSE(watch.WasOpened());
  EXPECT_TRUE(IsStepDocument(folder.Write("a", "ISO-10303-21;")));
}
