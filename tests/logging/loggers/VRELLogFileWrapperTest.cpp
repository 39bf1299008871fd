#include "VRELLogFileWrapper.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <type_traits>

#include "ChildProcess.h"
#include "OpenDescriptors.h"
#include "RecordingListener.h"
#include "ScratchDirectory.h"
#include "UnprivilegedProcess.h"
#include "VRELAssert.h"
#include "VRELDebugEvent.h"
#include "VRELError.h"
#include "VRELErrorEvent.h"
#include "VRELFilePath.h"
#include "VRELInfo.h"
#include "VRELVerbose.h"
#include "VRELWarning.h"

namespace {

int ListenerCount() {
  return VRELEventBus::GetEventBus()->GetListenerCount();
}

class VRELLogFileWrapperTest : public testing::Test {
 protected:
  VRELLogFileWrapperTest() { unsetenv("VRELLogLevel"); }
  ~VRELLogFileWrapperTest() override {
    unsetenv("VRELLogLevel");
    EXPECT_EQ(ListenerCount(), 0);
  }

  VRELFilePath PathOf(char const* name) const { return directory.Path(name).c_str(); }

  // Runs `body` in the directory.
  void RunInDirectory(std::function<void()> const& body) const {
    ChildResult const child = RunInChild([&] {
      if (chdir(directory.Path().c_str()) != 0) return 2;
      body();
      return HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(child.exitStatus, 0) << child.output << child.errors;
    EXPECT_EQ(child.signal, 0);
  }

  ScratchDirectory directory;
};

TEST_F(VRELLogFileWrapperTest, BorrowedFileStaysOpen) {
  std::string const name = directory.Path("log");
  std::FILE* const file = std::fopen(name.c_str(), "w");
  ASSERT_NE(file, nullptr);
  {
    VRELLogFileWrapper const log(file);
    EXPECT_EQ(ListenerCount(), 1);
    VRELInfo::Printf("inside");
    EXPECT_EQ(directory.Read("log"), "Message : inside\n");
  }
  EXPECT_EQ(ListenerCount(), 0);
  VRELInfo::Printf("outside");
  EXPECT_EQ(CountOpenDescriptors(name), 1);
  EXPECT_GE(std::fputs("more", file), 0);
  EXPECT_EQ(std::fclose(file), 0);
  EXPECT_EQ(directory.Read("log"), "Message : inside\nmore");
}

TEST_F(VRELLogFileWrapperTest, NullFileIsIdle) {
  std::FILE* const none = nullptr;
  VRELLogFileWrapper const log(none);
  VRELLogFileWrapper const same(nullptr);
  EXPECT_EQ(ListenerCount(), 0);
}

TEST_F(VRELLogFileWrapperTest, PathIsOpenDuringLifetime) {
  directory.Write("log", "the run before");
  {
    VRELLogFileWrapper const log(PathOf("log"));
    EXPECT_EQ(ListenerCount(), 1);
    EXPECT_EQ(directory.Read("log"), "");
    VRELInfo::Printf("text");
    EXPECT_EQ(directory.Read("log"), "Message : text\n");
    EXPECT_EQ(CountOpenDescriptors(directory.Path("log")), 1);
  }
  EXPECT_EQ(CountOpenDescriptors(directory.Path("log")), 0);
  EXPECT_EQ(ListenerCount(), 0);
  VRELInfo::Printf("outside");
  EXPECT_EQ(directory.Read("log"), "Message : text\n");
}

// Path that overrides OpenFile.
TEST_F(VRELLogFileWrapperTest, CallsOpenFileOfPath) {
  class OverridingPath : public VRELFilePath {
   public:
    OverridingPath(std::FILE* given, bool validity) : file(given), isValid(validity) {}
    bool IsValid() const override { return isValid; }
    std::FILE* OpenFile(char const* mode) const override {
      modes += mode;
      return file;
    }
    mutable std::string modes;

   private:
    std::FILE* file;
    bool isValid;
  };
  OverridingPath const valid(std::fopen(directory.Path("log").c_str(), "w"), true);
  {
    VRELLogFileWrapper const log(valid);
    VRELInfo::Printf("text");
  }
  EXPECT_EQ(valid.modes, "w");
  EXPECT_EQ(directory.Read("log"), "Message : text\n");
  EXPECT_EQ(CountOpenDescriptors(directory.Path("log")), 0);

  OverridingPath const invalid(nullptr, false);
  VRELLogFileWrapper const none(invalid);
  EXPECT_EQ(invalid.modes, "");
  OverridingPath const refusing(nullptr, true);
  VRELLogFileWrapper const idle(refusing);
  EXPECT_EQ(refusing.modes, "w");
  EXPECT_EQ(ListenerCount(), 0);
}

TEST_F(VRELLogFileWrapperTest, FailedOpenIsSilent) {
  RecordingListener const listener;
  for (VRELFilePath const& path : {VRELFilePath(), PathOf("no/such/log"), VRELFilePath(directory.Path().c_str()),
                                   VRELFilePath(std::string(5000, 'x').c_str())}) {
    VRELLogFileWrapper const log(path);
    EXPECT_EQ(ListenerCount(), 1);
  }
  EXPECT_TRUE(listener.events.empty());
}

TEST_F(VRELLogFileWrapperTest, ReadAndWriteLogsAreInCurrentDirectory) {
  directory.Write("brivet_read.log", "the run before");
  directory.Write("brivet_write.log", "the run before");
  RunInDirectory([] {
    {
      VRELLogFileWrapper const log(true);
      VRELInfo::Printf("reading");
    }
    VRELLogFileWrapper const log(false);
    VRELInfo::Printf("writing");
  });
  EXPECT_EQ(directory.Read("brivet_read.log"), "Message : reading\n");
  EXPECT_EQ(directory.Read("brivet_write.log"), "Message : writing\n");
}

TEST_F(VRELLogFileWrapperTest, CreatesOnlyOneLog) {
  RunInDirectory([] { VRELLogFileWrapper const log(false); });
  EXPECT_TRUE(directory.Has("brivet_write.log"));
  EXPECT_FALSE(directory.Has("brivet_read.log"));
}

TEST_F(VRELLogFileWrapperTest, ReadOnlyDirectoryIsIdle) {
  ASSERT_EQ(chmod(directory.Path().c_str(), 0555), 0);
  RunUnprivileged([&] {
    ASSERT_EQ(chdir(directory.Path().c_str()), 0);
    RecordingListener const listener;
    VRELLogFileWrapper const read(true);
    VRELLogFileWrapper const write(false);
    VRELLogFileWrapper const path(VRELFilePath("log"));
    EXPECT_EQ(ListenerCount(), 1);
    EXPECT_TRUE(listener.events.empty());
  });
  ASSERT_EQ(chmod(directory.Path().c_str(), 0700), 0);
  EXPECT_FALSE(directory.Has("brivet_read.log"));
}

TEST_F(VRELLogFileWrapperTest, ThresholdIsReadFromEnvironment) {
  struct {
    char const* keyword;
    char const* text;
  } const cases[] = {
      {nullptr, "Message : message\nError : error\n"},
      {"ALL", "debug\nMessage : message\nError : error\n"},
      {"DEBUG", "debug\nMessage : message\nError : error\n"},
      {"VERBOSE", "Message : message\nError : error\n"},
      {"ERROR", "Error : error\n"},
      {"ABORT", ""},
      {"NONE", ""},
      {"WARNING", "Message : message\nError : error\n"},
      {"", "Message : message\nError : error\n"},
  };
  for (auto const& each : cases) {
    SCOPED_TRACE(each.keyword == nullptr ? "(unset)" : each.keyword);
    if (each.keyword != nullptr) setenv("VRELLogLevel", each.keyword, 1);
    directory.Write("log", "the run before");
    VRELLogFileWrapper const log(PathOf("log"));
    VRELDebugEvent::Fire("debug");
    VRELInfo::Printf("message");
    VRELError::Printf("error");
    EXPECT_EQ(directory.Read("log"), each.text);
  }
}

TEST_F(VRELLogFileWrapperTest, ThresholdAppliesToAllConstructors) {
  setenv("VRELLogLevel", "ERROR", 1);
  RunInDirectory([&] {
    std::FILE* const file = std::fopen("borrowed", "w");
    {
      VRELLogFileWrapper const borrowing(file);
      VRELLogFileWrapper const reading(true);
      VRELLogFileWrapper const writing(false);
      VRELInfo::Printf("message");
      VRELError::Printf("error");
    }
    std::fclose(file);
  });
  for (char const* name : {"borrowed", "brivet_read.log", "brivet_write.log"}) {
    EXPECT_EQ(directory.Read(name), "Error : error\n") << name;
  }
}

TEST_F(VRELLogFileWrapperTest, WritesTextsVerbatim) {
  VRELError unnamed(7);
  VRELError described(7, L"no such face");
  VRELError fine(0, L"unseen");
  {
    VRELLogFileWrapper const log(PathOf("log"));
    VRELInfo::Printf("reading %s", "bracket.step");
    VRELInfo::PrintfAsItIs("as it is");
    VRELWarning::Printf("50%%%% left\n");
    VRELVerbose::Printf("a message of its level");
    VRELError::Printf("caf\xC3\xA9 \xFF\ttab");
    VRELErrorEvent::Fire(unnamed, "file", 1);
    VRELErrorEvent::Fire(described, "file", 2);
    VRELErrorEvent::Fire(fine, "file", 3);
    VRELAssert::Printf("assert");
    VRELInfo::Printf("%s", std::string(2000, 'x').c_str());
  }
  EXPECT_EQ(directory.Read("log"),
            "Message : reading bracket.step\n"
            "as it is\n"
            "Warning : 50% left\n\n"
            "Message : a message of its level\n"
            "Error : caf\xC3\xA9 \xFF\ttab\n"
            "Error 7\n"
            "Error Description : no such face\n"
            "Assert : assert\n"
            "Message : " +
                std::string(1023, 'x') + "\n");
}

TEST_F(VRELLogFileWrapperTest, LogsCanBeNested) {
  {
    VRELLogFileWrapper const outer(PathOf("outer"));
    VRELInfo::Printf("1");
    {
      VRELLogFileWrapper const inner(PathOf("inner"));
      VRELInfo::Printf("2");
    }
    VRELInfo::Printf("3");
  }
  EXPECT_EQ(directory.Read("outer"), "Message : 1\nMessage : 2\nMessage : 3\n");
  EXPECT_EQ(directory.Read("inner"), "Message : 2\n");
}

TEST_F(VRELLogFileWrapperTest, FullDiskIsIgnored) {
  RecordingListener const listener;
  {
    VRELLogFileWrapper const log(VRELFilePath("/dev/full"));
    EXPECT_EQ(ListenerCount(), 2);
    for (int i = 0; i < 3; ++i) VRELInfo::Printf("%d", i);
  }
  EXPECT_EQ(listener.Texts(), (std::vector<std::string>{"0", "1", "2"}));
}

TEST_F(VRELLogFileWrapperTest, RemovedLogIsNotRecreated) {
  {
    VRELLogFileWrapper const log(PathOf("log"));
    VRELInfo::Printf("1");
    ASSERT_EQ(unlink(directory.Path("log").c_str()), 0);
    VRELInfo::Printf("2");
    EXPECT_FALSE(directory.Has("log"));
    VRELLogFileWrapper const next(PathOf("log"));
    VRELInfo::Printf("3");
  }
  EXPECT_EQ(directory.Read("log"), "Message : 3\n");
}

TEST_F(VRELLogFileWrapperTest, KilledProcessKeepsLog) {
  ChildResult const child = RunInChildWithoutTeardown([&]() -> int {
    VRELLogFileWrapper const log(PathOf("log"));
    VRELInfo::Printf("last words");
    _exit(3);
  });
  EXPECT_EQ(child.exitStatus, 3);
  EXPECT_EQ(directory.Read("log"), "Message : last words\n");
}

// A static wrapper of the application is destroyed before the library.
TEST_F(VRELLogFileWrapperTest, StaticWrapperWritesUntilExit) {
  RunInDirectory([] {
    static VRELLogFileWrapper const log(true);
    std::atexit([] { VRELInfo::Printf("at exit"); });
  });
  EXPECT_EQ(directory.Read("brivet_read.log"), "Message : at exit\n");
}

TEST_F(VRELLogFileWrapperTest, RefusesStringLiterals) {
  EXPECT_TRUE((std::is_constructible_v<VRELLogFileWrapper, std::FILE*>));
  EXPECT_TRUE((std::is_constructible_v<VRELLogFileWrapper, VRELFilePath const&>));
  EXPECT_TRUE((std::is_constructible_v<VRELLogFileWrapper, VRELFilePath>));
  EXPECT_TRUE((std::is_constructible_v<VRELLogFileWrapper, bool>));
  EXPECT_FALSE((std::is_constructible_v<VRELLogFileWrapper, char const*>));
  EXPECT_FALSE((std::is_constructible_v<VRELLogFileWrapper, VRELFilePath*>));
  EXPECT_FALSE(std::is_copy_constructible_v<VRELLogFileWrapper>);
  EXPECT_FALSE(std::is_polymorphic_v<VRELLogFileWrapper>);
  struct Fields {
    std::FILE* file;
    VRELLogger logger;
    bool borrowed;
  };
  EXPECT_EQ(sizeof(VRELLogFileWrapper), sizeof(Fields));
}

}  // namespace
