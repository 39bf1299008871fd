#include "CatchAsResult.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <stdexcept>

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

// With a tracker of errors, as the program has one.
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

TEST_F(CatchAsResultTest, DoesTheWork) {
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

TEST_F(CatchAsResultTest, ReportsWhatStopsTheWork) {
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
       VREL_E_INVALID_FILE, 21, "part.stp:12: expected ;, found ,"},
      {[]() -> VRINResult {
         throw InputError{VREL_E_FILE_OPEN, 0, "expected a"};
       },
       VREL_E_FILE_OPEN, 14, "part.stp: expected a"},
      {[]() -> VRINResult { throw VRELAbortException(); }, VREL_E_ABORTED, 3,
       "part.stp: expected the end of the work, found a request to stop"},
      {[]() -> VRINResult { throw std::bad_alloc(); }, VREL_E_UNEXPECTED, 7,
       "part.stp: expected more memory, found no more; close other programs or split the file"},
      {[]() -> VRINResult { throw std::length_error("a length"); }, VREL_E_UNEXPECTED, 7,
       "part.stp: expected to get on, found a length; report this with the file"},
      {[]() -> VRINResult { throw 12; }, VREL_E_UNEXPECTED, 7,
       "part.stp: expected to get on, found an exception of an unknown kind; report this with the file"},
      {[]() -> VRINResult { throw VRELAllocException(); }, VREL_E_UNEXPECTED, 7,
       "part.stp: expected more memory, found no more; close other programs or split the file"},
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
    EXPECT_EQ(listener.Texts(), Texts{row.text});
    EXPECT_EQ(VRELError::GetErrorCount(), ++errors);
  }
}

TEST_F(CatchAsResultTest, TakesAWarningForNoFailure) {
  EXPECT_EQ(CatchAsResult("part.stp",
                       []() -> VRINResult {
                         VRELWarning::Printf("odd");
                         return VREL_S_PARTIAL;
                       }),
            VREL_S_PARTIAL);
}

// An error told on the way does not hide what the work itself says.
TEST_F(CatchAsResultTest, KeepsTheFailureOfTheWork) {
  EXPECT_EQ(CatchAsResult("part.stp",
                       []() -> VRINResult {
                         VRELError::Printf("it broke");
                         return VREL_E_INVALID_FILE;
                       }),
            VREL_E_INVALID_FILE);
}

TEST_F(CatchAsResultTest, ADocumentThatCannotBeReadOnCannotBeOpened) {
  EXPECT_EQ(CatchAsResult("part.stp", []() -> VRINResult { throw ReadFailure{"expected a, found b"}; }), VREL_E_FILE_OPEN);
  EXPECT_EQ(listener.Texts(), Texts{"part.stp: expected a, found b"});
}
