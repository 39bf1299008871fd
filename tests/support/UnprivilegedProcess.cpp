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
