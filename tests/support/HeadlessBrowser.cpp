#include "HeadlessBrowser.h"

#include <gtest/gtest.h>

#include "ChildProcess.h"
#include "ScratchDirectory.h"

bool HasHeadlessBrowser() {
  return RunProgram({"chromium", "--version"}).exitStatus == 0;
}

std::string OpenPage(std::string const& path) {
  ScratchDirectory const profile;
  ChildResult const result =
      RunProgram({"timeout", "120", "chromium", "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic",
                  "--no-first-run", "--disable-background-networking", "--disable-component-update", "--disable-sync",
                  "--user-data-dir=" + profile.Path(), "--virtual-time-budget=5000", "--dump-dom", "file://" + path});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  return result.exitStatus == 0 ? result.output : "";
}
