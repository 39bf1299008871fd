#include "UnprivilegedProcess.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "ChildProcess.h"

namespace {

constexpr uid_t nobody = 65534;

}  // namespace

void RunUnprivileged(std::function<void()> const& body) {
  ChildResult const result = RunInChildWithoutTeardown([&] {
    if (geteuid() == 0 && setuid(nobody) != 0) return 2;
    body();
    return ::testing::Test::HasFailure() ? 1 : 0;
  });
  EXPECT_EQ(result.exitStatus, 0) << result.output << result.errors;
  EXPECT_EQ(result.signal, 0);
}

bool CanExecuteUnprivileged(std::string const& program) {
  ChildResult const result = RunInChildWithoutTeardown([&] {
    if (geteuid() == 0 && setuid(nobody) != 0) return 2;
    return access(program.c_str(), X_OK) == 0 ? 0 : 1;
  });
  return result.exitStatus == 0;
}
