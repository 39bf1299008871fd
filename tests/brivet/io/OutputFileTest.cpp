#include "OutputFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "ChildProcess.h"
#include "Gk_ErrMgr.h"
#include "InputError.h"
#include "ScratchDirectory.h"
#include "UnprivilegedProcess.h"
#include "VRELAbortException.h"

namespace {

class OutputFileTest : public testing::Test {
 protected:
  struct stat NoInput() const {
    struct stat status;
    EXPECT_EQ(stat("/", &status), 0);
    return status;
  }

  std::unique_ptr<OutputFile> Open(std::string const& place) const {
    return std::make_unique<OutputFile>(place, NoInput());
  }

  // What the place is refused with; empty where it is taken.
  std::string Refusal(std::string const& place) const {
    try {
      Open(place);
    } catch (InputError const& error) {
      EXPECT_EQ(error.result, VREL_E_FILE_SAVE);
      EXPECT_EQ(error.line, 0);
      return error.text;
    }
    return "";
  }

  static std::string RefusalText(std::string const& found) {
    return "expected a place to write to, found: " + found + "; name another OUTPUT";
  }

  static void Put(OutputFile& file, std::string const& bytes) {
    EXPECT_EQ(file.write(bytes.data(), static_cast<int>(bytes.size())), static_cast<int>(bytes.size()));
  }

  std::size_t FilesInFolder() const {
    std::filesystem::directory_iterator const all(folder.Path());
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
  }

  ScratchDirectory folder;
};

}  // namespace

TEST_F(OutputFileTest, ComesIntoItsPlaceWhenItIsWhole) {
  std::string const place = folder.Write("page.html", "of yesterday");
  {
    auto const file = Open(place);
    Put(*file, "of today");
    file->flush();
    EXPECT_EQ(folder.Read("page.html"), "of yesterday");
    EXPECT_FALSE(file->IsStandardOutput());
    file->Commit();
    EXPECT_EQ(folder.Read("page.html"), "of today");
  }
  EXPECT_EQ(folder.Read("page.html"), "of today");
  EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(OutputFileTest, LeavesNothingWithoutACommit) {
  std::string const place = folder.Write("page.html", "of yesterday");
  for (std::string const& each : {place, folder.Path("new.html")}) {
    auto const file = Open(each);
    Put(*file, std::string(1 << 20, 'x'));
  }
  EXPECT_EQ(folder.Read("page.html"), "of yesterday");
  EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(OutputFileTest, TakesBlocksOfAnySize) {
  std::string all;
  auto const file = Open(folder.Path("page.html"));
  for (std::size_t const size : {std::size_t{0}, std::size_t{1}, std::size_t{262143}, std::size_t{1},
                                 std::size_t{262144}, std::size_t{700000}, std::size_t{3}}) {
    std::string const block(size, static_cast<char>('a' + all.size() % 26));
    Put(*file, block);
    all += block;
  }
  file->Commit();
  EXPECT_TRUE(folder.Read("page.html") == all);
}

TEST_F(OutputFileTest, HasTheModeOfANewFile) {
  mode_t const before = umask(027);
  auto const file = Open(folder.Path("page.html"));
  umask(before);
  file->Commit();
  struct stat status;
  ASSERT_EQ(stat(folder.Path("page.html").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST_F(OutputFileTest, FollowsLinks) {
  folder.Write("there/page.html", "of yesterday");
  ASSERT_EQ(symlink("there/page.html", folder.Path("link.html").c_str()), 0);
  ASSERT_EQ(symlink("link.html", folder.Path("twice.html").c_str()), 0);
  ASSERT_EQ(symlink("there/new.html", folder.Path("dangling.html").c_str()), 0);
  for (char const* name : {"twice.html", "dangling.html"}) {
    auto const file = Open(folder.Path(name));
    Put(*file, name);
    file->Commit();
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path(name)));
  }
  EXPECT_EQ(folder.Read("there/page.html"), "twice.html");
  EXPECT_EQ(folder.Read("there/new.html"), "dangling.html");
  ASSERT_EQ(symlink("loop.html", folder.Path("loop.html").c_str()), 0);
  EXPECT_EQ(Refusal(folder.Path("loop.html")), RefusalText("Too many levels of symbolic links"));
}

TEST_F(OutputFileTest, RefusesAPlaceThatCannotBeWritten) {
  folder.Write("there/file", "");
  EXPECT_EQ(Refusal(folder.Path()), RefusalText("Is a directory"));
  EXPECT_EQ(Refusal(folder.Path("new/")), RefusalText("Is a directory"));
  EXPECT_EQ(Refusal(folder.Path("missing/page.html")), RefusalText("No such file or directory"));
  EXPECT_EQ(Refusal(folder.Path("there/file/page.html")), RefusalText("Not a directory"));
  EXPECT_EQ(Refusal(folder.Path(std::string(300, 'a'))), RefusalText("File name too long"));
  EXPECT_EQ(Refusal(""), RefusalText("No such file or directory"));
  folder.Write("closed/page.html", "");
  ASSERT_EQ(chmod(folder.Path("closed").c_str(), 0555), 0);
  folder.Write("there/page.html", "of yesterday");
  ASSERT_EQ(chmod(folder.Path("there").c_str(), 0777), 0);
  ASSERT_EQ(chmod(folder.Path("there/page.html").c_str(), 0444), 0);
  RunUnprivileged([this] {
    EXPECT_EQ(Refusal(folder.Path("closed/new.html")), RefusalText("Permission denied"));
    EXPECT_EQ(Refusal(folder.Path("there/page.html")), RefusalText("Permission denied"));
  });
}

TEST_F(OutputFileTest, RefusesTheInput) {
  folder.Write("a.stp", "the input");
  ASSERT_EQ(link(folder.Path("a.stp").c_str(), folder.Path("hard.stp").c_str()), 0);
  ASSERT_EQ(symlink("a.stp", folder.Path("soft.stp").c_str()), 0);
  struct stat input;
  ASSERT_EQ(stat(folder.Path("a.stp").c_str(), &input), 0);
  for (char const* name : {"a.stp", "hard.stp", "soft.stp"}) {
    try {
      OutputFile const file(folder.Path(name), input);
      ADD_FAILURE() << name;
    } catch (InputError const& error) {
      EXPECT_EQ(error.text, RefusalText("the input itself"));
    }
  }
  EXPECT_EQ(folder.Read("a.stp"), "the input");
}

TEST_F(OutputFileTest, WritesToADeviceDirectly) {
  auto const nothing = Open("/dev/null");
  Put(*nothing, "bytes");
  nothing->Commit();
  auto const full = Open("/dev/full");
  Put(*full, "bytes");
  try {
    full->Commit();
    FAIL();
  } catch (InputError const& error) {
    EXPECT_EQ(error.result, VREL_E_FILE_SAVE);
    EXPECT_EQ(error.text,
              "expected a place that takes all of the output, found: No space left on device; make room, or name "
              "another OUTPUT");
  }
}

// The first failure stays what it was.
TEST_F(OutputFileTest, TakesNothingBehindAFailure) {
  auto const full = Open("/dev/full");
  EXPECT_NO_THROW(full->Check());
  std::string const much(300000, 'x');
  EXPECT_EQ(full->write(much.data(), static_cast<int>(much.size())), -1);
  EXPECT_EQ(full->write("x", 1), -1);
  EXPECT_THROW(full->Check(), InputError);
  EXPECT_THROW(full->Commit(), InputError);
}

TEST_F(OutputFileTest, WritesIntoAPipe) {
  std::string const place = folder.Path("pipe");
  ASSERT_EQ(mkfifo(place.c_str(), 0600), 0);
  std::string received;
  std::thread reader([&] {
    int const descriptor = open(place.c_str(), O_RDONLY);
    char block[65536];
    for (ssize_t count = 0; (count = read(descriptor, block, sizeof block)) > 0;) {
      received.append(block, static_cast<std::size_t>(count));
    }
    close(descriptor);
  });
  std::string const sent(500000, 'p');
  {
    auto const file = Open(place);
    Put(*file, sent);
    file->Commit();
  }
  reader.join();
  EXPECT_TRUE(received == sent);
  EXPECT_TRUE(std::filesystem::is_fifo(place));
}

// A reader that does not read holds up nobody who wants to leave.
TEST_F(OutputFileTest, IsStoppedWhileItWaits) {
  std::string const place = folder.Path("pipe");
  ASSERT_EQ(mkfifo(place.c_str(), 0600), 0);
  int const idle = open(place.c_str(), O_RDWR);
  ASSERT_GE(idle, 0);
  auto const file = Open(place);
  Gk_ErrMgr::setAbort();
  std::string const much(1 << 20, 'x');
  EXPECT_THROW(file->write(much.data(), static_cast<int>(much.size())), VRELAbortException);
  close(idle);
}

// What goes to standard output goes behind what stands there.
TEST_F(OutputFileTest, KnowsStandardOutput) {
  for (char const* place : {"-", "/dev/stdout"}) {
    SCOPED_TRACE(place);
    ChildResult const result = RunInChild([this, place] {
      auto const file = Open(place);
      file->write("to standard output", 18);
      file->Commit();
      return file->IsStandardOutput() ? 0 : 1;
    });
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "to standard output");
  }
  folder.Write("page.html", "first, ");
  ChildResult const result = RunInChild([this] {
    int const descriptor = open(folder.Path("page.html").c_str(), O_WRONLY | O_APPEND);
    dup2(descriptor, STDOUT_FILENO);
    auto const file = Open(folder.Path("page.html"));
    file->write("second", 6);
    file->Commit();
    return 0;
  });
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(folder.Read("page.html"), "first, second");
}
