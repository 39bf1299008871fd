#include "Gk_ErrMgr.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "ChildProcess.h"
#include "RecordingListener.h"
#include "VRELAbortException.h"
#include "VRELErrorTracker.h"
#include "VRELInfo.h"

namespace {

class Gk_ErrMgrTest : public testing::Test {
 protected:
  // Clears the request for the next test.
  ~Gk_ErrMgrTest() override {
    try {
      Gk_ErrMgr::checkAbort();
    } catch (VRELAbortException const&) {
    }
  }
};

TEST_F(Gk_ErrMgrTest, StartsWithoutRequest) {
  EXPECT_FALSE(Gk_ErrMgr::shouldAbort());
  EXPECT_NO_THROW(Gk_ErrMgr::checkAbort());
  EXPECT_FALSE(Gk_ErrMgr::shouldAbort());
}

TEST_F(Gk_ErrMgrTest, ShouldAbortKeepsRequest) {
  Gk_ErrMgr::setAbort();
  EXPECT_TRUE(Gk_ErrMgr::shouldAbort());
  EXPECT_TRUE(Gk_ErrMgr::shouldAbort());
}

TEST_F(Gk_ErrMgrTest, CheckAbortClearsRequestAndThrows) {
  Gk_ErrMgr::setAbort();
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(Gk_ErrMgr::checkAbort(), VRELAbortException);
  EXPECT_FALSE(Gk_ErrMgr::shouldAbort());
  EXPECT_NO_THROW(Gk_ErrMgr::checkAbort());
}

TEST_F(Gk_ErrMgrTest, CheckAbortClearsBeforeThrow) {
  // Polls during stack unwinding, as the destructor of a guarded class does.
  struct Poller {
    ~Poller() noexcept(false) { Gk_ErrMgr::checkAbort(); }
  };
  Gk_ErrMgr::setAbort();
  EXPECT_THROW(
      {
        Poller const poller;
        Gk_ErrMgr::checkAbort();
      },
      VRELAbortException);
}

TEST_F(Gk_ErrMgrTest, DoAssertReturns) {
  RecordingListener const listener;
  EXPECT_NO_THROW(Gk_ErrMgr::doAssert("some/file.cpp", 25));
  EXPECT_NO_THROW(Gk_ErrMgr::doAssert(nullptr, -1));
  EXPECT_NO_THROW(Gk_ErrMgr::trap());
  EXPECT_TRUE(listener.events.empty());
}

TEST_F(Gk_ErrMgrTest, DoAssertKeepsRequest) {
  Gk_ErrMgr::setAbort();
  Gk_ErrMgr::doAssert("some/file.cpp", 25);
  EXPECT_TRUE(Gk_ErrMgr::shouldAbort());
}

TEST_F(Gk_ErrMgrTest, RaiseSendsEventBeforeThrow) {
  RecordingListener const listener;
  Gk_Exception const exception("CANNOT_OPEN_FILE", nullptr);
  try {
    Gk_ErrMgr::raise(exception);
    FAIL();
  } catch (Gk_Exception const& caught) {
    EXPECT_EQ(caught.token(), exception.token());
    EXPECT_NE(&caught, &exception);
  }
  ASSERT_EQ(listener.events.size(), 1u);
  EXPECT_EQ(listener.events[0].name, "VRELErrorEvent");
  EXPECT_EQ(listener.events[0].level, 80);
  EXPECT_EQ(listener.events[0].text, "CANNOT_OPEN_FILE");
}

TEST_F(Gk_ErrMgrTest, RaiseThrowsBaseException) {
  struct Special : Gk_Exception {
    Special() : Gk_Exception("special", nullptr) {}
  };
  try {
    Gk_ErrMgr::raise(Special());
  } catch (Special const&) {
    FAIL() << "the copy is a Gk_Exception";
  } catch (Gk_Exception const& caught) {
    EXPECT_STREQ(caught.token(), "special");
  }
}

TEST_F(Gk_ErrMgrTest, RaiseReachesTracker) {
  VRELErrorTracker::Initialize();
  EXPECT_THROW(Gk_ErrMgr::raise(Gk_Exception("Gk_IOException")), Gk_Exception);
  EXPECT_EQ(VRELError::GetErrorCount(), 1);
  EXPECT_EQ(VRELError::GetLastError()->GetErrorType(), VREL_E_FAIL);
  delete VRELErrorTracker::GetInstance();
}

TEST_F(Gk_ErrMgrTest, RaiseReadsNoArgumentForToken) {
  RecordingListener const listener;
  EXPECT_THROW(Gk_ErrMgr::raise(Gk_Exception("%s%n %d")), Gk_Exception);
  EXPECT_THROW(Gk_ErrMgr::raise(Gk_Exception(nullptr)), Gk_Exception);
  EXPECT_EQ(listener.Texts(), std::vector<std::string>{"%s%n %d"});
}

// An application that requests an abort in its listener, a guarded operation, and a driver.
class StoppingListener : public VRELEventListener {
 public:
  void HandleEvent(VRELEvent& /*event*/) override { Gk_ErrMgr::setAbort(); }
};

int GuardedSteps(int& done) {
  for (int step = 0; step < 10; ++step) {
    Gk_ErrMgr::checkAbort();
    if (step == 3) VRELInfo::Printf("step %d", step);
    ++done;
  }
  return done;
}

VRINResult Drive(int& done) {
  try {
    GuardedSteps(done);
    return VREL_S_OK;
  } catch (VRELAbortException const&) {
    return VREL_E_ABORTED;
  }
}

TEST_F(Gk_ErrMgrTest, ListenerAbortsGuardedOperation) {
  StoppingListener listener;
  VRELEventBus::GetEventBus()->AddListener(&listener);
  int done = 0;
  EXPECT_EQ(Drive(done), VREL_E_ABORTED);
  EXPECT_EQ(done, 4);
  VRELEventBus::GetEventBus()->RemoveListener(&listener);
  EXPECT_FALSE(Gk_ErrMgr::shouldAbort());
  done = 0;
  EXPECT_EQ(Drive(done), VREL_S_OK);
  EXPECT_EQ(done, 10);
}

TEST_F(Gk_ErrMgrTest, AssertionsNameFileAndLine) {
  ChildResult const child = RunProgram({ASSERTION_RECORDER});
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
  EXPECT_EQ(child.output,
            "VRELBase/VRELStream.m/src/VRELStringInputStream 25\n"
            "VRELBase/VRELStream.m/src/VRELStringInputStream 32\n"
            "VRELBase/VRELUtilities.m/src/VRELStringParser 80\n"
            "VRELPoint.cpp line\n");
}

}  // namespace
