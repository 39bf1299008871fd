// Allocations of a run fail, one at a time or all from one on.
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <limits>
#include <new>

#include "FaultPlan.h"
#include "FaultyRun.h"

namespace {

// Plan in a file that is shared with the program.
class SharedPlan {
 public:
  SharedPlan() {
    std::string const path = folder.Write("plan", std::string(sizeof(FaultPlan), '\0'));
    int const file = open(path.c_str(), O_RDWR);
    void* const map = mmap(nullptr, sizeof(FaultPlan), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    close(file);
    if (map == MAP_FAILED) throw std::bad_alloc();
    plan = static_cast<FaultPlan*>(map);
    environment = {std::string("LD_PRELOAD=") + FAULTS_LIBRARY, std::string(kFaultPlanVariable) + "=" + path};
  }
  ~SharedPlan() { munmap(plan, sizeof(FaultPlan)); }
  SharedPlan(SharedPlan const&) = delete;
  SharedPlan& operator=(SharedPlan const&) = delete;

  Names const& Environment() const { return environment; }

  // The allocations from `first` to `last` fail.
  void Set(long first, long last) {
    plan->first = first;
    plan->last = last;
    plan->count = 0;
    plan->beforeMain = 0;
  }
  long Count() const { return plan->count; }
  long BeforeMain() const { return plan->beforeMain; }

 private:
  ScratchDirectory folder;
  FaultPlan* plan = nullptr;
  Names environment;
};

// Runs the program once for each number of a sample, and prints the exit statuses. Only allocations after the beginning
// of main fail: if one fails before, the C++ runtime ends the program.
void TryAllocations(FaultyRun const& run, long dense, long more, bool isPermanent) {
  ASSERT_EQ(run.Undisturbed().exitStatus, 0) << run.Undisturbed().errors;
  SharedPlan plan;
  plan.Set(0, 0);
  ASSERT_EQ(run.Run(plan.Environment()).exitStatus, 0);
  long const all = plan.Count();
  long const before = plan.BeforeMain();
  ASSERT_GT(before, 0);
  ASSERT_GT(all, before);
  std::map<int, int> ends;
  std::vector<long> numbers = FaultNumbers(all - before, dense, more);
  for (long& number : numbers) number += before;
  for (long const number : numbers) {
    run.Reset();
    plan.Set(number, isPermanent ? std::numeric_limits<long>::max() : number);
    ChildResult const result = run.Run(plan.Environment());
    EXPECT_TRUE(run.IsSound(result, true))
        << "allocation " << number << " of " << all << ", " << before << " before main";
    ++ends[result.exitStatus];
    if (testing::Test::HasFailure()) break;
  }
  std::printf("%zu of %ld allocations failed; status:", numbers.size(), all);
  for (auto const& [status, count] : ends) std::printf(" %d (%d times)", status, count);
  std::printf("\n");
  EXPECT_GT(ends[7], 0);
}

void TryAllocations(std::size_t index, long dense, long more, bool isPermanent) {
  auto const& [name, words] = FaultyRuns()[index];
  SCOPED_TRACE(name);
  TryAllocations(FaultyRun(words), dense, more, isPermanent);
}

}  // namespace

TEST(AllocationFaultsTest, OneFailsWritingPage) {
  TryAllocations(0, 180, 180, false);
}

TEST(AllocationFaultsTest, OneFailsWritingText) {
  TryAllocations(1, 40, 100, false);
}

TEST(AllocationFaultsTest, OneFailsWritingStep) {
  TryAllocations(2, 40, 100, false);
}

TEST(AllocationFaultsTest, OneFailsListing) {
  TryAllocations(3, 40, 100, false);
}

TEST(AllocationFaultsTest, AllFailWritingPage) {
  TryAllocations(0, 60, 140, true);
}

TEST(AllocationFaultsTest, AllFailListing) {
  TryAllocations(3, 20, 60, true);
}

TEST(AllocationFaultsTest, QuietRunPrintsNothing) {
  FaultyRun const run({"-quiet", "washer.stp", "new.html"});
  SharedPlan plan;
  plan.Set(0, 0);
  ASSERT_EQ(run.Run(plan.Environment()).exitStatus, 0);
  for (long const number : {plan.BeforeMain() + 1, plan.BeforeMain() + 30, plan.Count() - 100}) {
    run.Reset();
    plan.Set(number, std::numeric_limits<long>::max());
    ChildResult const result = run.Run(plan.Environment());
    EXPECT_EQ(result.exitStatus, 7);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "");
  }
}
