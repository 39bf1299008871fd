#include "GuardedRun.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>

#include "Gk_ErrMgr.h"
#include "RecordingListener.h"
#include "TextSource.h"
#include "VRELAbortException.h"
#include "VRELAllocException.h"
#include "VRELErrorTracker.h"
#include "VRELInfo.h"
#include "VRELWarning.h"

namespace {

using Texts = std::vector<std::string>;

// With a tracker of errors, as the program has one.
class GuardedRunTest : public testing::Test {
 protected:
  GuardedRunTest() {
    VRELErrorTracker::Initialize();
    tracker.reset(VRELErrorTracker::GetInstance());
  }

  std::unique_ptr<VRELErrorTracker> tracker;
  RecordingListener listener;
};

// Asks for an abort as soon as something is told.
class AbortingListener : public VRELEventListener {
 public:
  AbortingListener() { VRELEventBus::GetEventBus()->AddListener(this); }
  ~AbortingListener() override { VRELEventBus::GetEventBus()->RemoveListener(this); }
  AbortingListener(AbortingListener const&) = delete;
  AbortingListener& operator=(AbortingListener const&) = delete;
  void HandleEvent(VRELEvent& event) override {
    if (event.IsA("VRELMessageEvent")) Gk_ErrMgr::setAbort();
  }
};

}  // namespace

TEST_F(GuardedRunTest, DoesTheWork) {
  int runs = 0;
  EXPECT_EQ(RunGuarded("part.stp", [&runs] { ++runs; }), VREL_S_OK);
  EXPECT_EQ(runs, 1);
  EXPECT_TRUE(listener.events.empty());
}

TEST_F(GuardedRunTest, ReportsWhatStopsTheWork) {
  struct Row {
    std::function<void()> work;
    long code;
    long status;
    char const* text;
  };
  Row const rows[] = {
      {[] {
         throw StepError{VREL_E_INVALID_FILE, 12, "expected ;, found ,"};
       },
       VREL_E_INVALID_FILE, 21, "part.stp:12: expected ;, found ,"},
      {[] {
         throw StepError{VREL_E_FILE_OPEN, 0, "expected a"};
       },
       VREL_E_FILE_OPEN, 14, "part.stp: expected a"},
      {[] { throw VRELAbortException(); }, VREL_E_ABORTED, 3,
       "part.stp: expected the end of the file, found a request to stop"},
      {[] { throw std::bad_alloc(); }, VREL_E_UNEXPECTED, 7, "part.stp: expected more memory, found no more"},
      {[] { throw VRELAllocException(); }, VREL_E_UNEXPECTED, 7, "part.stp: expected more memory, found no more"},
      {[] { Gk_ErrMgr::raise(Gk_Exception("CANNOT_OPEN_FILE", nullptr)); }, VREL_E_FAIL, 1, "CANNOT_OPEN_FILE"},
      {[] { VRELError::Printf("it broke"); }, VREL_E_FAIL, 1, "it broke"},
  };
  int errors = 0;
  for (Row const& row : rows) {
    SCOPED_TRACE(row.text);
    listener.events.clear();
    VRINResult const result = RunGuarded("part.stp", row.work);
    EXPECT_EQ(result, row.code);
    EXPECT_EQ(result.GetReturnCode(), row.status);
    EXPECT_EQ(listener.Texts(), Texts{row.text});
    EXPECT_EQ(VRELError::GetErrorCount(), ++errors);
  }
}

TEST_F(GuardedRunTest, TakesAWarningForNoFailure) {
  EXPECT_EQ(RunGuarded("part.stp", [] { VRELWarning::Printf("odd"); }), VREL_S_OK);
}

TEST_F(GuardedRunTest, StopsReadingWhenAListenerAsksForIt) {
  AbortingListener const aborting;
  std::string const document = Document("#1=A();\n");
  auto const read = [&document] {
    ByteSource source([rest = std::string_view(document)](char* block, std::size_t) mutable {
      VRELInfo::Printf("%zu bytes to go", rest.size());
      std::size_t const count = rest.copy(block, rest.size());
      rest.remove_prefix(count);
      return count;
    });
    StepSummary::Read(source);
  };
  EXPECT_EQ(RunGuarded("part.stp", read), VREL_E_ABORTED);
  EXPECT_EQ(listener.Texts(), (Texts{std::to_string(document.size()) + " bytes to go",
                                     "part.stp: expected the end of the file, found a request to stop"}));
  // The request is served.
  EXPECT_FALSE(Gk_ErrMgr::shouldAbort());
}

// Each instance polls: nothing is read behind the first one that begins after the request.
TEST_F(GuardedRunTest, PollsAtEachInstance) {
  std::string const document = Document("#1=A();\n#2=A();\n#3=A();\n");
  std::size_t at = 0;
  EXPECT_EQ(RunGuarded("part.stp",
                       [&document, &at] {
                         ByteSource source([&document, &at](char* block, std::size_t) {
                           if (document.compare(at, 2, "#2") == 0) Gk_ErrMgr::setAbort();
                           *block = document[at++];
                           return std::size_t{1};
                         });
                         StepSummary::Read(source);
                       }),
            VREL_E_ABORTED);
  // The token #2 ends at the byte behind it.
  EXPECT_EQ(document.substr(0, at), document.substr(0, document.find("#2") + 3));
}
