#include "VRELEnvironment.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "ChildProcess.h"
#include "RecordingListener.h"
#include "VRELReferenceHandle.h"

namespace {

// Runs `body` in a child process and reports its failures.
void RunInSeparateProcess(std::function<void()> const& body) {
  ChildResult const result = RunInChildWithoutTeardown([&] {
    body();
    return ::testing::Test::HasFailure() ? 1 : 0;
  });
  EXPECT_EQ(result.exitStatus, 0) << result.output << result.errors;
  EXPECT_EQ(result.signal, 0);
}

std::string TextOf(wchar_t const* name) {
  VRELString text(L"untouched");
  VRINResult const result = VRELEnvironment::GetVariable(VRELString(name), text);
  EXPECT_EQ(result == VREL_S_OK, text.toUtf8() != "untouched");
  EXPECT_TRUE(result == VREL_S_OK || result == VREL_E_FAIL);
  return text.toUtf8();
}

VRINResult Put(VRELString const& name, VRELString value) {
  return VRELEnvironment::PutVariable(name, value);
}

// Returns the result of getenv.
std::string ValueOfVariable(char const* name) {
  char const* const text = std::getenv(name);
  return text == nullptr ? "(none)" : text;
}

TEST(VRELEnvironmentTest, ReadsString) {
  RunInSeparateProcess([] {
    setenv("VRELProbe", "some text = x", 1);
    setenv("VRELEmpty", "", 1);
    unsetenv("VRELMissing");
    EXPECT_EQ(TextOf(L"VRELProbe"), "some text = x");
    EXPECT_EQ(TextOf(L"VRELEmpty"), "");
    EXPECT_EQ(TextOf(L"VRELMissing"), "untouched");
    // Names are case-sensitive.
    EXPECT_EQ(TextOf(L"VRELPROBE"), "untouched");
    EXPECT_EQ(TextOf(L""), "untouched");
  });
}

TEST(VRELEnvironmentTest, NamesAreAscii) {
  RunInSeparateProcess([] {
    setenv("VREL_\x1A", "by the substitute", 1);
    setenv("VREL__", "by an underscore", 1);
    EXPECT_EQ(TextOf(L"VREL_\u00D6"), "by the substitute");
  });
}

TEST(VRELEnvironmentTest, ValuesAreInDefaultCodepage) {
  RunInSeparateProcess([] {
    for (char const* bytes : {"Schraube \xC3\x96", "broken \xC3", "\xFF\xFE"}) {
      setenv("VRELProbe", bytes, 1);
      VRELString text;
      EXPECT_EQ(VRELEnvironment::GetVariable(L"VRELProbe", text), VREL_S_OK);
      EXPECT_TRUE(text.equals(VRELString(bytes)));
    }
  });
}

TEST(VRELEnvironmentTest, UninitializedNameFails) {
  VRELString name(L"PATH");
  VRELString const taken(std::move(name));
  VRELString text(L"untouched");
  // NOLINTNEXTLINE(bugprone-use-after-move): the moved-from object is tested.
  EXPECT_EQ(VRELEnvironment::GetVariable(name, text), VREL_E_FAIL);
  EXPECT_EQ(text.toUtf8(), "untouched");
}

TEST(VRELEnvironmentTest, SystemNames) {
  RunInSeparateProcess([] {
    for (char const* name : {"USERNAME", "OS", "COMPUTERNAME"}) setenv(name, "from the environment", 1);
    utsname names{};
    ASSERT_EQ(uname(&names), 0);
    passwd const* const user = getpwuid(getuid());
    ASSERT_NE(user, nullptr);
    EXPECT_EQ(TextOf(L"USERNAME"), user->pw_name);
    EXPECT_EQ(TextOf(L"OS"), "Linux");
    EXPECT_EQ(TextOf(L"COMPUTERNAME"), names.nodename);
    for (char const* name : {"USERNAME", "OS", "COMPUTERNAME"}) unsetenv(name);
    EXPECT_EQ(TextOf(L"OS"), "Linux");
    EXPECT_EQ(TextOf(L"USERNAME"), user->pw_name);
  });
}

TEST(VRELEnvironmentTest, SystemNamesAreCaseSensitive) {
  RunInSeparateProcess([] {
    setenv("os", "a variable", 1);
    setenv("UserName", "another", 1);
    setenv("COMPUTERNAME_", "a third", 1);
    EXPECT_EQ(TextOf(L"os"), "a variable");
    EXPECT_EQ(TextOf(L"UserName"), "another");
    EXPECT_EQ(TextOf(L"COMPUTERNAME_"), "a third");
  });
}

TEST(VRELEnvironmentTest, UserWithoutEntryFails) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can become a user who is not there";
  RunInSeparateProcess([] {
    constexpr uid_t kUnusedUser = 987654;
    ASSERT_EQ(getpwuid(kUnusedUser), nullptr);
    ASSERT_EQ(setuid(kUnusedUser), 0);
    setenv("USERNAME", "from the environment", 1);
    EXPECT_EQ(TextOf(L"USERNAME"), "untouched");
    int number = 77;
    EXPECT_EQ(VRELEnvironment::GetVariable(L"USERNAME", number), VREL_E_FAIL);
    EXPECT_EQ(number, 77);
  });
}

TEST(VRELEnvironmentTest, ReadsIntegers) {
  struct Row {
    char const* text;
    long result;
    int value;
  };
  Row const rows[] = {
      {"42", VREL_S_OK, 42},         {"-7", VREL_S_OK, -7},     {"0", VREL_S_OK, 0},    {"12 and more", VREL_S_OK, 12},
      {"00012", VREL_S_OK, 12},      {"0x1F", VREL_S_OK, 0},    {" 9", VREL_S_OK, 9},   {"4294967297", VREL_S_OK, 1},
      {"", VREL_E_FAIL, 77},         {"text", VREL_E_FAIL, 77}, {"-", VREL_E_FAIL, 77}, {"-0", VREL_E_FAIL, 77},
      {"\xC3\x96", VREL_E_FAIL, 77}, {"true", VREL_E_FAIL, 77},
  };
  RunInSeparateProcess([&] {
    for (Row const& row : rows) {
      SCOPED_TRACE(row.text);
      setenv("VRELProbe", row.text, 1);
      int value = 77;
      EXPECT_EQ(VRELEnvironment::GetVariable(L"VRELProbe", value), row.result);
      EXPECT_EQ(value, row.value);
    }
    unsetenv("VRELProbe");
    int value = 77;
    EXPECT_EQ(VRELEnvironment::GetVariable(L"VRELProbe", value), VREL_E_FAIL);
    EXPECT_EQ(value, 77);
  });
}

TEST(VRELEnvironmentTest, ReadsBooleans) {
  struct Row {
    char const* text;
    bool value;
  };
  Row const rows[] = {
      {"Yes", true}, {"true", true},   {"ON", true},     {"No", false}, {"False", false},    {"off", false},
      {"", false},   {"maybe", false}, {"1", false},     {"0", false},  {" true", false},    {"true ", false},
      {"t", false},  {"y", false},     {"trues", false}, {"yes", true}, {"\xC3\x96", false},
  };
  RunInSeparateProcess([&] {
    for (Row const& row : rows) {
      SCOPED_TRACE(row.text);
      setenv("VRELProbe", row.text, 1);
      for (bool before : {false, true}) {
        bool value = before;
        EXPECT_EQ(VRELEnvironment::GetVariable(L"VRELProbe", value), VREL_S_OK);
        EXPECT_EQ(value, row.value);
      }
    }
    unsetenv("VRELProbe");
    bool value = true;
    EXPECT_EQ(VRELEnvironment::GetVariable(L"VRELProbe", value), VREL_E_FAIL);
    EXPECT_FALSE(value);
  });
}

TEST(VRELEnvironmentTest, PutVariable) {
  RunInSeparateProcess([] {
    RecordingListener const listener;
    EXPECT_EQ(Put(L"VRELProbe", L"some = text"), VREL_S_OK);
    EXPECT_EQ(ValueOfVariable("VRELProbe"), "some = text");
    EXPECT_EQ(TextOf(L"VRELProbe"), "some = text");
    EXPECT_EQ(Put(L"VRELProbe", L""), VREL_S_OK);
    EXPECT_EQ(ValueOfVariable("VRELProbe"), "");
    EXPECT_EQ(listener.Texts(), (std::vector<std::string>{"Environment variable: VRELProbe=some = text\n",
                                                          "Environment variable: VRELProbe=\n"}));
    EXPECT_EQ(listener.events[0].level, 50);
  });
}

TEST(VRELEnvironmentTest, PutVariableRemovesPrevious) {
  RunInSeparateProcess([] {
    setenv("VRELThird", "set by others", 1);
    EXPECT_EQ(Put(L"VRELFirst", L"1"), VREL_S_OK);
    EXPECT_EQ(ValueOfVariable("VRELFirst"), "1");
    EXPECT_EQ(Put(L"VRELSecond", L"2"), VREL_S_OK);
    EXPECT_EQ(ValueOfVariable("VRELFirst"), "(none)");
    EXPECT_EQ(ValueOfVariable("VRELSecond"), "2");
    EXPECT_EQ(Put(L"VRELThird", L"3"), VREL_S_OK);
    EXPECT_EQ(ValueOfVariable("VRELSecond"), "(none)");
    EXPECT_EQ(ValueOfVariable("VRELThird"), "3");
    EXPECT_EQ(Put(L"VRELFirst", L"4"), VREL_S_OK);
    EXPECT_EQ(ValueOfVariable("VRELFirst"), "4");
    EXPECT_EQ(ValueOfVariable("VRELThird"), "(none)");
  });
}

TEST(VRELEnvironmentTest, PutVariableReadsFormat) {
  struct Row {
    wchar_t const* value;
    char const* found;
  };
  Row const rows[] = {
      {L"100%%", "100%"}, {L"100%", "100%"},         {L"%s%d%n", "%s%d%n"}, {L"%%%%", "%%"},
      {L"%%%", "%%"},     {L"%1$s %*d", "%1$s %*d"}, {L"%%s", "%s"},
  };
  RunInSeparateProcess([&] {
    for (Row const& row : rows) {
      SCOPED_TRACE(row.found);
      EXPECT_EQ(Put(L"VRELProbe", row.value), VREL_S_OK);
      EXPECT_EQ(ValueOfVariable("VRELProbe"), row.found);
    }
    EXPECT_EQ(Put(L"VREL%%Probe%d", L"x"), VREL_S_OK);
    EXPECT_EQ(ValueOfVariable("VREL%Probe%d"), "x");
  });
}

TEST(VRELEnvironmentTest, PutVariableRefusesLongString) {
  RunInSeparateProcess([] {
    auto const text = [](std::size_t length) { return VRELString(std::string(length, 'v')); };
    // "N=" and the value, at most 255 bytes.
    EXPECT_EQ(Put(L"N", text(253)), VREL_S_OK);
    EXPECT_EQ(ValueOfVariable("N"), std::string(253, 'v'));
    EXPECT_EQ(Put(L"N", L"short"), VREL_S_OK);
    RecordingListener const listener;
    for (std::size_t length : {254U, 255U, 256U, 2000U, 100000U}) EXPECT_EQ(Put(L"N", text(length)), VREL_E_FAIL);
    EXPECT_EQ(Put(text(300), L"x"), VREL_E_FAIL);
    // The environment is unchanged, and each call was reported.
    EXPECT_EQ(ValueOfVariable("N"), "short");
    EXPECT_EQ(listener.events.size(), 6U);
    // The limit applies to the unescaped string: 252 bytes of 504.
    EXPECT_EQ(Put(L"N", VRELString(std::string(504, '%'))), VREL_S_OK);
    EXPECT_EQ(ValueOfVariable("N"), std::string(252, '%'));
  });
}

TEST(VRELEnvironmentTest, PutVariableWithOddNames) {
  RunInSeparateProcess([] {
    // The system splits the string at the first "=".
    EXPECT_EQ(Put(L"VRELA=B", L"C"), VREL_S_OK);
    EXPECT_EQ(ValueOfVariable("VRELA"), "B=C");
    // A variable without a name is accepted, and cannot be read.
    EXPECT_EQ(Put(L"", L"x"), VREL_S_OK);
    EXPECT_EQ(ValueOfVariable(""), "(none)");
    EXPECT_EQ(ValueOfVariable("VRELA"), "(none)");
    VRELString name(L"VRELProbe");
    VRELString const taken(std::move(name));
    RecordingListener const listener;
    // NOLINTNEXTLINE(bugprone-use-after-move): the moved-from object is tested.
    EXPECT_EQ(Put(name, L"x"), VREL_E_FAIL);
    EXPECT_TRUE(listener.events.empty());
  });
}

TEST(VRELEnvironmentTest, PutVariableRoundTrip) {
  RunInSeparateProcess([] {
    // Characters of the default codepage are read back.
    VRELString value("Schraube \xC3\x96");
    VRELString back;
    EXPECT_EQ(VRELEnvironment::PutVariable(L"VREL_\u00D6", value), VREL_S_OK);
    EXPECT_EQ(VRELEnvironment::GetVariable(L"VREL_\u00D6", back), VREL_S_OK);
    EXPECT_TRUE(back.equals(value));
  });
}

TEST(VRELEnvironmentTest, GetEnvReturnsOneObject) {
  RunInSeparateProcess([] {
    VRELEnvironment::_pVariables = nullptr;
    VRELEnvironment* const environment = VRELEnvironment::GetEnv();
    ASSERT_NE(environment, nullptr);
    EXPECT_EQ(VRELEnvironment::_pVariables, environment);
    EXPECT_EQ(VRELEnvironment::GetEnv(), environment);
    EXPECT_EQ(environment->GetCount(), 0);
  });
}

TEST(VRELEnvironmentTest, GetEnvOnSeveralThreadsReturnsOneObject) {
  ChildResult const child = RunInChild([] {
    for (int round = 0; round < 200; ++round) {
      VRELEnvironment::_pVariables = nullptr;
      std::atomic<int> notStarted = 4;
      std::array<VRELEnvironment*, 4> found{};
      std::vector<std::thread> threads;
      for (VRELEnvironment*& environment : found) {
        threads.emplace_back([&notStarted, &environment] {
          --notStarted;
          while (notStarted > 0) {
          }
          environment = VRELEnvironment::GetEnv();
        });
      }
      for (std::thread& thread : threads) thread.join();
      for (VRELEnvironment const* const environment : found) {
        if (environment == nullptr || environment != VRELEnvironment::_pVariables) return 1;
      }
    }
    std::_Exit(0);
  });
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
}

TEST(VRELEnvironmentTest, OutlivesHandles) {
  RunInSeparateProcess([] {
    VRELEnvironment::_pVariables = nullptr;
    VRELEnvironment::GetEnv()->Set(L"a=b");
    { VRELReferenceHandle const handle(VRELEnvironment::GetEnv()); }
    EXPECT_EQ(VRELEnvironment::GetEnv()->GetCount(), 1);
  });
}

TEST(VRELEnvironmentTest, ExistsUntilExit) {
  ChildResult const child = RunInChild([] {
    // Registered before the object is made, and therefore called after its exit handlers.
    std::atexit([] {
      VRELValue value;
      if (VRELEnvironment::GetEnv()->Get(L"a", value) == VREL_S_OK) std::fputs("there", stdout);
    });
    VRELEnvironment::GetEnv()->Set(L"a=b");
    return 0;
  });
  EXPECT_EQ(child.output, "there");
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
}

TEST(VRELEnvironmentTest, PropertiesAreNotVariables) {
  RunInSeparateProcess([] {
    VRELEnvironment::_pVariables = nullptr;
    VRELEnvironment* const environment = VRELEnvironment::GetEnv();
    setenv("VRELProbe", "x", 1);
    EXPECT_EQ(Put(L"VRELOther", L"y"), VREL_S_OK);
    EXPECT_EQ(environment->GetCount(), 0);
    EXPECT_EQ(environment->Set(L"VRELProperty=z"), VREL_S_OK);
    EXPECT_EQ(ValueOfVariable("VRELProperty"), "(none)");
    EXPECT_EQ(TextOf(L"VRELProperty"), "untouched");
  });
}

TEST(VRELEnvironmentTest, IsNotReportedAsLeak) {
  ChildResult const result = RunInChild([] {
    VRELEnvironment::GetEnv()->Set(L"a=b");
    return 0;
  });
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
}

TEST(VRELEnvironmentTest, DerivesFromProperties) {
  EXPECT_TRUE((std::is_base_of_v<VRELProperties, VRELEnvironment>));
  EXPECT_EQ(sizeof(VRELEnvironment), sizeof(VRELProperties));
  VRELEnvironment own;
  EXPECT_EQ(own.Set(L"a=b"), VREL_S_OK);
  EXPECT_NE(&own, VRELEnvironment::_pVariables);
}

}  // namespace
