#include "LocaleProcess.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>

#include "ChildProcess.h"

namespace {

constexpr char const* marker = "VREL_TEST_LOCALE_PROCESS";

}  // namespace

void RunTestInLocale(char const* locale, std::function<void()> const& body) {
  if (std::getenv(marker) != nullptr) {
    ASSERT_NE(std::setlocale(LC_ALL, locale), nullptr);
    body();
    return;
  }
  ::testing::TestInfo const& test = *::testing::UnitTest::GetInstance()->current_test_info();
  std::string const filter = std::string("--gtest_filter=") + test.test_suite_name() + "." + test.name();
  ProgramOptions options;
  options.environment = {std::string(marker) + "=1", "GTEST_OUTPUT=", std::string("LC_ALL=") + locale};
  ChildResult const result = RunProgram({"/proc/self/exe", filter}, options);
  EXPECT_EQ(result.exitStatus, 0) << result.output << result.errors;
  EXPECT_EQ(result.signal, 0);
}
