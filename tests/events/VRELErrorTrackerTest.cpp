#include "VRELErrorTracker.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "ChildProcess.h"
#include "VRELErrorEvent.h"
#include "VRELEventBus.h"
#include "VRELWarning.h"
#include "VirtualSlot.h"

namespace {

class VRELErrorTrackerTest : public testing::Test {
 protected:
  ~VRELErrorTrackerTest() override { delete VRELErrorTracker::GetInstance(); }

  static int ListenerCount() { return VRELEventBus::GetEventBus()->GetListenerCount(); }

  static void SendError(long type, wchar_t const* text) {
    VRELError error(type, VRELString(text));
    VRELErrorEvent::Fire(error, "reader.cpp", 17);
  }
};

TEST_F(VRELErrorTrackerTest, IsNullAtStart) {
  EXPECT_EQ(VRELErrorTracker::GetInstance(), nullptr);
  EXPECT_EQ(VRELErrorTracker::_pTracker, nullptr);
  EXPECT_EQ(VRELErrorTracker::Reset(), VREL_S_OK);
  EXPECT_EQ(VRELErrorTracker::GetInstance(), nullptr);
}

TEST_F(VRELErrorTrackerTest, StoresNoErrorWithoutTracker) {
  VRELError::Printf("lost");
  SendError(5, L"lost");
  EXPECT_EQ(VRELError::GetErrorCount(), 0);
  EXPECT_EQ(VRELError::GetLastError(), nullptr);
  EXPECT_EQ(GetError(0), nullptr);
  EXPECT_EQ(GetError(-1), nullptr);
}

TEST_F(VRELErrorTrackerTest, SecondInitializeKeepsTracker) {
  int const before = ListenerCount();
  EXPECT_EQ(VRELErrorTracker::Initialize(), VREL_S_OK);
  VRELErrorTracker* const tracker = VRELErrorTracker::GetInstance();
  ASSERT_NE(tracker, nullptr);
  EXPECT_EQ(VRELErrorTracker::_pTracker, tracker);
  EXPECT_EQ(ListenerCount(), before + 1);
  VRELError::Printf("kept");
  EXPECT_EQ(VRELErrorTracker::Initialize(), VREL_S_OK);
  EXPECT_EQ(VRELErrorTracker::GetInstance(), tracker);
  EXPECT_EQ(ListenerCount(), before + 1);
  EXPECT_EQ(VRELError::GetErrorCount(), 1);
}

TEST_F(VRELErrorTrackerTest, StoresPrintedErrorWithoutMessage) {
  VRELErrorTracker::Initialize();
  EXPECT_EQ(VRELError::GetLastError(), nullptr);
  VRELError::Printf("text %d", 5);
  ASSERT_EQ(VRELError::GetErrorCount(), 1);
  VRELError* const error = VRELError::GetLastError();
  ASSERT_NE(error, nullptr);
  EXPECT_NE(error, &VRELError::FAIL_ERROR);
  EXPECT_EQ(error->GetErrorType(), VREL_E_FAIL);
  VRELString description(L"before");
  error->GetDescription(description);
  EXPECT_EQ(description.toUtf8(), "");
  EXPECT_EQ(error->GetSourceFile().toUtf8(), "");
  EXPECT_EQ(error->GetSourceLine(), 0);
}

TEST_F(VRELErrorTrackerTest, StoresFiredError) {
  VRELErrorTracker::Initialize();
  SendError(5, L"no such face");
  VRELError* const error = VRELError::GetLastError();
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->GetErrorType(), 5);
  VRELString description;
  error->GetDescription(description);
  EXPECT_EQ(description.toUtf8(), "no such face");
  EXPECT_EQ(error->GetSourceFile().toUtf8(), "reader.cpp");
  EXPECT_EQ(error->GetSourceLine(), 17);
}

TEST_F(VRELErrorTrackerTest, StoresErrorsInOrder) {
  VRELErrorTracker::Initialize();
  // More than the initial capacity.
  for (int type = 1; type <= 25; ++type) SendError(type, L"text");
  VRELErrorTracker* const tracker = VRELErrorTracker::GetInstance();
  EXPECT_EQ(tracker->GetErrorCount(), 25);
  EXPECT_EQ(VRELError::GetErrorCount(), 25);
  for (int index = 0; index < 25; ++index) {
    ASSERT_NE(tracker->GetError(index), nullptr);
    EXPECT_EQ(tracker->GetError(index)->GetErrorType(), index + 1);
    EXPECT_EQ(GetError(index), tracker->GetError(index));
  }
  EXPECT_EQ(tracker->GetLastError(), tracker->GetError(24));
  EXPECT_EQ(VRELError::GetLastError(), tracker->GetError(24));
}

TEST_F(VRELErrorTrackerTest, IndexOutOfRangeReturnsNull) {
  VRELErrorTracker::Initialize();
  VRELErrorTracker* const tracker = VRELErrorTracker::GetInstance();
  EXPECT_EQ(tracker->GetLastError(), nullptr);
  EXPECT_EQ(tracker->GetError(0), nullptr);
  VRELError::Printf("one");
  EXPECT_NE(tracker->GetError(0), nullptr);
  EXPECT_EQ(tracker->GetError(-1), nullptr);
  EXPECT_EQ(tracker->GetError(1), nullptr);
  EXPECT_EQ(GetError(-1), nullptr);
  EXPECT_EQ(GetError(1), nullptr);
}

TEST_F(VRELErrorTrackerTest, IgnoresOtherEvents) {
  VRELErrorTracker::Initialize();
  VRELWarning::Printf("warning");
  VRELEvent severe("MyEvent", VREL_LEVEL_ERROR);
  VRELEventBus::Fire(severe);
  // An event of another class with the name.
  VRELEvent impostor("VRELErrorEvent", VREL_LEVEL_ERROR);
  VRELEventBus::Fire(impostor);
  // An event of the class with another name.
  VRELErrorEvent renamed("text");
  renamed.SetEventName("MyErrorEvent");
  VRELEventBus::Fire(renamed);
  EXPECT_EQ(VRELError::GetErrorCount(), 0);
}

// Returns another error than it was created with.
class SubstitutingEvent : public VRELErrorEvent {
 public:
  explicit SubstitutingEvent(VRELError* error) : VRELErrorEvent("text"), substitute(error) {}
  VRELError* GetError() override { return substitute; }

 private:
  VRELError* substitute;
};

TEST_F(VRELErrorTrackerTest, CallsGetErrorOfEvent) {
  VRELErrorTracker::Initialize();
  VRELError error(77);
  SubstitutingEvent event(&error);
  VRELEventBus::Fire(event);
  SubstitutingEvent none(nullptr);
  VRELEventBus::Fire(none);
  ASSERT_EQ(VRELError::GetErrorCount(), 1);
  EXPECT_EQ(GetError(0)->GetErrorType(), 77);
}

TEST_F(VRELErrorTrackerTest, StoresErrorOfOwnList) {
  VRELErrorTracker::Initialize();
  SendError(5, L"again and again");
  for (int i = 0; i < 40; ++i) VRELErrorEvent::Fire(*GetError(0), "reader.cpp", i);
  ASSERT_EQ(VRELError::GetErrorCount(), 41);
  VRELString description;
  VRELError::GetLastError()->GetDescription(description);
  EXPECT_EQ(description.toUtf8(), "again and again");
  EXPECT_EQ(VRELError::GetLastError()->GetSourceLine(), 39);
}

TEST_F(VRELErrorTrackerTest, ResetClearsListAndKeepsListening) {
  VRELErrorTracker::Initialize();
  int const listeners = ListenerCount();
  SendError(5, L"old");
  EXPECT_EQ(VRELErrorTracker::Reset(), VREL_S_OK);
  EXPECT_EQ(VRELError::GetErrorCount(), 0);
  EXPECT_EQ(VRELError::GetLastError(), nullptr);
  EXPECT_EQ(ListenerCount(), listeners);
  SendError(6, L"new");
  EXPECT_EQ(VRELError::GetErrorCount(), 1);
  VRELErrorTracker::GetInstance()->ClearErrorList();
  EXPECT_EQ(VRELError::GetErrorCount(), 0);
}

TEST_F(VRELErrorTrackerTest, DestructorRemovesListener) {
  int const before = ListenerCount();
  VRELErrorTracker::Initialize();
  delete VRELErrorTracker::GetInstance();
  EXPECT_EQ(VRELErrorTracker::GetInstance(), nullptr);
  EXPECT_EQ(ListenerCount(), before);
  VRELError::Printf("lost");
  EXPECT_EQ(VRELError::GetErrorCount(), 0);
  VRELErrorTracker::Initialize();
  VRELError::Printf("kept");
  EXPECT_EQ(VRELError::GetErrorCount(), 1);
}

TEST_F(VRELErrorTrackerTest, AnyDestructorRemovesProcessTracker) {
  int const before = ListenerCount();
  VRELErrorTracker::Initialize();
  std::unique_ptr<VRELErrorTracker> const tracker(VRELErrorTracker::GetInstance());
  { VRELErrorTracker const other; }
  EXPECT_EQ(VRELErrorTracker::GetInstance(), nullptr);
  EXPECT_EQ(ListenerCount(), before);
  VRELError::Printf("lost");
  EXPECT_EQ(tracker->GetErrorCount(), 0);
}

TEST_F(VRELErrorTrackerTest, ExistsUntilProcessExit) {
  ChildResult const child = RunInChild([] {
    // Registered before the tracker is created, thus called after its destruction, if there is one.
    std::atexit([] {
      VRELError::Printf("late");
      std::printf("%d errors", VRELError::GetErrorCount());
    });
    VRELErrorTracker::Initialize();
    VRELError::Printf("early");
    return 0;
  });
  EXPECT_EQ(child.output, "2 errors");
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
}

TEST_F(VRELErrorTrackerTest, VirtualFunctionsHaveSlots) {
  EXPECT_EQ(SlotOf(&VRELErrorTracker::HandleEvent), 0u);
  // Slots 1 and 2 are the destructors.
  EXPECT_EQ(SlotOf(&VRELErrorTracker::GetLastError), 3u);
}

// Overrides GetLastError.
class DerivedTracker : public VRELErrorTracker {
 public:
  VRELError* GetLastError() override { return &newest; }

 private:
  VRELError newest{99};
};

TEST_F(VRELErrorTrackerTest, GetLastErrorIsVirtual) {
  VRELErrorTracker::_pTracker = new DerivedTracker;
  EXPECT_EQ(VRELError::GetLastError()->GetErrorType(), 99);
}

TEST_F(VRELErrorTrackerTest, HasOnlyListedFields) {
  EXPECT_EQ(sizeof(VRELErrorTracker), 2 * sizeof(void*));
}

}  // namespace
