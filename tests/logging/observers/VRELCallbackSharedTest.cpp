#include "VRELCallbackShared.h"

#include <gtest/gtest.h>

#include "Gk_ErrMgr.h"
#include "VRELAbortException.h"

namespace {

int callCount = 0;

class VRELCallbackSharedTest : public testing::Test {
 protected:
  VRELCallbackSharedTest() { callCount = 0; }
  ~VRELCallbackSharedTest() override {
    VRELCallbackShared::m_AbortCallback = nullptr;
    ClearRequest();
  }

  static void ClearRequest() {
    try {
      Gk_ErrMgr::checkAbort();
    } catch (VRELAbortException const&) {
    }
  }

  static bool ReturnFalse() {
    ++callCount;
    return false;
  }
  static bool ReturnTrue() {
    ++callCount;
    return true;
  }
};

TEST_F(VRELCallbackSharedTest, IsNotAbortedInitially) {
  EXPECT_EQ(VRELCallbackShared::m_AbortCallback, nullptr);
  EXPECT_FALSE(VRELCallbackShared::IsAborted());
}

TEST_F(VRELCallbackSharedTest, CallbackDecides) {
  VRELCallbackShared::m_AbortCallback = ReturnFalse;
  EXPECT_FALSE(VRELCallbackShared::IsAborted());
  EXPECT_EQ(callCount, 1);
  VRELCallbackShared::m_AbortCallback = ReturnTrue;
  EXPECT_THROW(VRELCallbackShared::IsAborted(), VRELAbortException);
  EXPECT_EQ(callCount, 2);
  EXPECT_FALSE(Gk_ErrMgr::shouldAbort());
}

TEST_F(VRELCallbackSharedTest, RequestThrowsRepeatedly) {
  VRELCallbackShared::m_AbortCallback = ReturnFalse;
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(VRELCallbackShared::IsAborted(), VRELAbortException);
  // The callback is called nevertheless.
  EXPECT_EQ(callCount, 1);
  EXPECT_TRUE(Gk_ErrMgr::shouldAbort());
  EXPECT_THROW(VRELCallbackShared::IsAborted(), VRELAbortException);
  ClearRequest();
  EXPECT_FALSE(VRELCallbackShared::IsAborted());
}

TEST_F(VRELCallbackSharedTest, RequestThrowsWithoutCallback) {
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(VRELCallbackShared::IsAborted(), VRELAbortException);
  EXPECT_TRUE(Gk_ErrMgr::shouldAbort());
}

// The flag is read before the callback is called, so a request of the callback takes effect in the next call.
TEST_F(VRELCallbackSharedTest, RequestOfCallbackThrowsNextTime) {
  VRELCallbackShared::m_AbortCallback = [] {
    Gk_ErrMgr::setAbort();
    return false;
  };
  EXPECT_FALSE(VRELCallbackShared::IsAborted());
  EXPECT_THROW(VRELCallbackShared::IsAborted(), VRELAbortException);
}

TEST_F(VRELCallbackSharedTest, IsConstructible) {
  VRELCallbackShared const shared;
  VRELCallbackShared const copy(shared);
  EXPECT_FALSE(copy.IsAborted());
}

}  // namespace
