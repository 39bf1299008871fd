// Operations that docs/architecture.md lists as not safe: each test shares an object between threads in a child process
// and expects a report of ThreadSanitizer. If one of these becomes safe, change the page and the test.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "Gk_ErrMgr.h"
#include "OnThreads.h"
#include "VRELErrorEvent.h"
#include "VRELErrorTracker.h"
#include "VRELEventBus.h"
#include "VRELFileHeader.h"
#include "VRELInfo.h"
#include "VRELInputStream.h"
#include "VRELOption.h"
#include "VRELOptions.h"
#include "VRELReferenceHandle.h"
#include "VRELStreamFormatter.h"
#include "VRELUnit.h"
#include "VRELValue.h"
#include "VRINValue.h"

#if defined(__SANITIZE_THREAD__)
#define VREL_HAS_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define VREL_HAS_THREAD_SANITIZER 1
#endif
#endif

namespace {

#ifdef VREL_HAS_THREAD_SANITIZER

class SharedStateTest : public testing::Test {
 protected:
  void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

// Runs `work` on several threads and exits. ThreadSanitizer changes the exit status to 66 if it reported a race.
template <class Work>
void Share(Work const& work) {
  OnThreads([&](int thread) {
    for (int i = 0; i < 100; ++i) work(thread);
  });
  std::exit(0);
}

#define EXPECT_RACE(statement) EXPECT_EXIT(statement, testing::ExitedWithCode(66), "data race")

TEST_F(SharedStateTest, HandlesOfOneObject) {
  EXPECT_RACE({
    VRELReferenceHandle const keeper(new VRELReferenceCount);
    Share([&](int) { VRELReferenceHandle const copy(keeper); });
  });
}

TEST_F(SharedStateTest, OneStore) {
  EXPECT_RACE({
    VRELOptions store;
    store.AddOption(VRELString(L"Step.Tolerance"), 0.5);
    Share([&](int thread) { store.AddOption(VRELString(std::to_string(thread)), thread); });
  });
}

TEST_F(SharedStateTest, OneValueReadAsString) {
  EXPECT_RACE({
    VRELValue const value(0.5);
    Share([&](int) { static_cast<void>(static_cast<char const*>(value)); });
  });
}

class IgnoringListener : public VRELEventListener {
 public:
  void HandleEvent(VRELEvent& /*event*/) override {}
};

TEST_F(SharedStateTest, RegistrationOnBus) {
  EXPECT_RACE({
    IgnoringListener listeners[kThreadCount];
    Share([&](int thread) { VRELEventBus::GetEventBus()->AddListener(&listeners[thread]); });
  });
}

TEST_F(SharedStateTest, ErrorTracker) {
  EXPECT_RACE({
    VRELErrorTracker::Initialize();
    Share([](int) { VRELError::Printf("failed"); });
  });
}

TEST_F(SharedStateTest, AbortFlag) {
  EXPECT_RACE({
    Share([](int thread) {
      if (thread == 0) {
        Gk_ErrMgr::setAbort();
      } else {
        static_cast<void>(Gk_ErrMgr::shouldAbort());
      }
    });
  });
}

TEST_F(SharedStateTest, Indentation) {
  EXPECT_RACE(Share([](int) { VRELInfo::Tab(); }));
}

TEST_F(SharedStateTest, PublicObjects) {
  EXPECT_RACE(Share([](int thread) { VRINValue const value(thread); }));
}

TEST_F(SharedStateTest, FormatBuffer) {
  EXPECT_RACE(Share([](int thread) {
    VRELStreamFormatter formatter(nullptr);
    formatter.format("%d", thread);
  }));
}

// Returns the requested number of bytes.
class EndlessStream : public VRELInputStream {
 public:
  VRELInputStream* duplicate() override { return nullptr; }
  int read(char* buffer, int count) override {
    std::memset(buffer, 'x', static_cast<std::size_t>(count));
    return count;
  }
};

TEST_F(SharedStateTest, SkipBuffer) {
  EXPECT_RACE(Share([](int) {
    EndlessStream stream;
    stream.skip(100);
  }));
}

TEST_F(SharedStateTest, SystemUnits) {
  EXPECT_RACE(Share([](int thread) { set_sending_system_unit(thread % 2 == 0 ? VRELUnitMillimeter : VRELUnitInch); }));
}

#else

TEST(SharedStateTest, NeedsThreadSanitizer) {
  GTEST_SKIP() << "built without ThreadSanitizer; use the preset tsan";
}

#endif

}  // namespace
