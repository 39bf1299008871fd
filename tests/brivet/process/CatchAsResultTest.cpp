#include "CatchAsResult.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <stdexcept>

#include "FileError.h"
#include "Gk_ErrMgr.h"
#include "InputError.h"
#include "RecordingListener.h"
#include "VRELAbortException.h"
#include "VRELAllocException.h"
#include "VRELErrorTracker.h"
#include "VRELInfo.h"
#include "VRELWarning.h"

namespace {

using Texts = std::vector<std::string>;

// Has an error tracker, as the program does.
class CatchAsResultTest : public testing::Test {
 protected:
  CatchAsResultTest() {
    VRELErrorTracker::Initialize();
    tracker.reset(VRELErrorTracker::GetInstance());
  }

  std::unique_ptr<VRELErrorTracker> tracker;
  RecordingListener listener;
};

}  // namespace

TEST_F(CatchAsResultTest, ReturnsResultOfWork) {
  int runs = 0;
  EXPECT_EQ(CatchAsResult("part.stp",
                          [&runs]() -> VRINResult {
                            ++runs;
                            return VREL_S_OK;
                          }),
            VREL_S_OK);
  EXPECT_EQ(runs, 1);
  EXPECT_TRUE(listener.events.empty());
}

TEST_F(CatchAsResultTest, ReportsExceptions) {
  struct Row {
    std::function<VRINResult()> work;
    long code;
    long status;
    char const* text;
  };
  Row const rows[] = {
      {[]() -> VRINResult {
         throw InputError{VREL_E_INVALID_FILE, 12, "expected ;, found ,"};
       },
       VREL_E_INVALID_FILE, 21, "part.stp:12: error: expected ;, found ,"},
      {[]() -> VRINResult {
         throw InputError{VREL_E_FILE_OPEN, 0, "expected a"};
       },
       VREL_E_FILE_OPEN, 14, "part.stp: expected a"},
      {[]() -> VRINResult { throw VRELAbortException(); }, VREL_E_ABORTED, 3, "interrupted"},
      {[]() -> VRINResult { throw std::bad_alloc(); }, VREL_E_UNEXPECTED, 7, "out of memory"},
      {[]() -> VRINResult { throw std::length_error("a length"); }, VREL_E_FAIL, 1,
       "part.stp: internal error: a length"},
      {[]() -> VRINResult { throw 12; }, VREL_E_FAIL, 1, "part.stp: internal error: unknown exception"},
      {[]() -> VRINResult { throw VRELAllocException(); }, VREL_E_UNEXPECTED, 7, "out of memory"},
      {[]() -> VRINResult { Gk_ErrMgr::raise(Gk_Exception("CANNOT_OPEN_FILE", nullptr)); }, VREL_E_FAIL, 1,
       "CANNOT_OPEN_FILE"},
      {[]() -> VRINResult {
         VRELError::Printf("it broke");
         return VREL_S_OK;
       },
       VREL_E_FAIL, 1, "it broke"},
  };
  int errors = 0;
  for (Row const& row : rows) {
    SCOPED_TRACE(row.text);
    listener.events.clear();
    VRINResult const result = CatchAsResult("part.stp", row.work);
    EXPECT_EQ(result, row.code);
    EXPECT_EQ(result.GetReturnCode(), row.status);
    ASSERT_FALSE(listener.events.empty());
    EXPECT_EQ(listener.Texts().front(), row.text);
    errors += static_cast<int>(listener.events.size());
    EXPECT_EQ(VRELError::GetErrorCount(), errors);
  }
}

TEST_F(CatchAsResultTest, HintFollowsMessage) {
  EXPECT_EQ(CatchAsResult("part.stp",
                          []() -> VRINResult {
                            throw FileError{VREL_E_FILE_SAVE, "cannot write 'a'", "make room"};
                          }),
            VREL_E_FILE_SAVE);
  EXPECT_EQ(listener.Texts(), (Texts{"cannot write 'a'", "hint: make room"}));
}

TEST_F(CatchAsResultTest, WarningIsNoFailure) {
  EXPECT_EQ(CatchAsResult("part.stp",
                          []() -> VRINResult {
                            VRELWarning::Printf("odd");
                            return VREL_S_PARTIAL;
                          }),
            VREL_S_PARTIAL);
}

TEST_F(CatchAsResultTest, KeepsFailureOfWork) {
  EXPECT_EQ(CatchAsResult("part.stp",
                          []() -> VRINResult {
                            VRELError::Printf("it broke");
                            return VREL_E_INVALID_FILE;
                          }),
            VREL_E_INVALID_FILE);
}

TEST_F(CatchAsResultTest, ReadFailureIsOpenFailure) {
  EXPECT_EQ(CatchAsResult("part.stp", []() -> VRINResult { throw ReadFailure{"expected a, found b"}; }),
            VREL_E_FILE_OPEN);
  EXPECT_EQ(listener.Texts(), Texts{"part.stp: expected a, found b"});
}
