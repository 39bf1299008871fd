#include "VRELEventBus.h"

#include <gtest/gtest.h>

#include <cstring>
#include <ctime>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "ChildProcess.h"
#include "VRELEvent.h"
#include "VirtualSlot.h"

namespace {

// Writes its letter into a common log, then does what it was told.
class Listener : public VRELEventListener {
 public:
  Listener(std::string& calls, char name) : log(calls), letter(name) {}
  ~Listener() override { VRELEventBus::GetEventBus()->RemoveListener(this); }
  Listener(Listener const&) = delete;
  Listener& operator=(Listener const&) = delete;

  void HandleEvent(VRELEvent& event) override {
    log += letter;
    last = &event;
    if (action) action();
  }

  std::function<void()> action;
  VRELEvent* last = nullptr;

 private:
  std::string& log;
  char letter;
};

class TimedEvent : public VRELEvent {
 public:
  TimedEvent() : VRELEvent("TimedEvent", VREL_LEVEL_INFO) {}
  bool IsTimed() override { return true; }
};

class VRELEventBusTest : public testing::Test {
 protected:
  VRELEventBusTest() : bus(*VRELEventBus::GetEventBus()), before(bus.GetListenerCount()) {}

  int Added() const { return bus.GetListenerCount() - before; }

  // The letters of the listeners that one event reaches.
  std::string Send() {
    calls.clear();
    bus.Send(event);
    return calls;
  }

  VRELEventBus& bus;
  int before;
  std::string calls;
  VRELEvent event{"MyEvent", VREL_LEVEL_INFO};
  Listener a{calls, 'a'};
  Listener b{calls, 'b'};
  Listener c{calls, 'c'};
};

TEST_F(VRELEventBusTest, IsOneObject) {
  EXPECT_EQ(VRELEventBus::GetEventBus(), &VRELEventBus::_eventBus);
  EXPECT_EQ(sizeof(VRELEventBus), sizeof(void*));
}

TEST(VRELEventBusStartTest, HasNoListenerAtFirst) {
  ChildResult const result = RunInChild([] { return VRELEventBus::GetEventBus()->GetListenerCount(); });
  EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(VRELEventBusTest, DeliversAtOnceTheEventItself) {
  bus.AddListener(&a);
  EXPECT_EQ(Send(), "a");
  EXPECT_EQ(a.last, &event);
  a.last = nullptr;
  VRELEventBus::Fire(event);
  EXPECT_EQ(calls, "aa");
  EXPECT_EQ(a.last, &event);
}

TEST_F(VRELEventBusTest, AddingTwiceLeavesOneEntry) {
  bus.AddListener(&a);
  bus.AddListener(&b);
  bus.AddListener(&a);
  EXPECT_EQ(Added(), 2);
  EXPECT_EQ(Send(), "ab");
}

TEST_F(VRELEventBusTest, NullIsIgnored) {
  bus.AddListener(nullptr);
  EXPECT_EQ(Added(), 0);
  bus.AddListener(&a);
  bus.RemoveListener(nullptr);
  EXPECT_EQ(Added(), 1);
  EXPECT_EQ(Send(), "a");
}

TEST_F(VRELEventBusTest, RemovingAStrangerChangesNothing) {
  bus.AddListener(&a);
  bus.RemoveListener(&b);
  EXPECT_EQ(Added(), 1);
  EXPECT_EQ(Send(), "a");
}

TEST_F(VRELEventBusTest, CallsInTheOrderOfFirstRegistration) {
  bus.AddListener(&c);
  bus.AddListener(&a);
  bus.AddListener(&b);
  bus.AddListener(&c);
  EXPECT_EQ(Send(), "cab");
  bus.RemoveListener(&a);
  EXPECT_EQ(Send(), "cb");
  bus.AddListener(&a);
  EXPECT_EQ(Send(), "cba");
  bus.RemoveListener(&c);
  EXPECT_EQ(Send(), "ba");
}

TEST_F(VRELEventBusTest, HoldsMoreListenersThanItStartsWith) {
  std::string log;
  std::vector<std::unique_ptr<Listener>> listeners;
  for (char letter = 'a'; letter <= 'z'; ++letter) {
    listeners.push_back(std::make_unique<Listener>(log, letter));
    bus.AddListener(listeners.back().get());
  }
  bus.Send(event);
  EXPECT_EQ(log, "abcdefghijklmnopqrstuvwxyz");
}

TEST_F(VRELEventBusTest, DoesNotFilterByLevel) {
  bus.AddListener(&a);
  for (int level : {-1, 0, 10, 999}) {
    VRELEvent leveled("MyEvent", static_cast<VRELEventLevel>(level));
    bus.Send(leveled);
  }
  EXPECT_EQ(calls, "aaaa");
}

TEST_F(VRELEventBusTest, NewListenerMissesTheEventInProgress) {
  bus.AddListener(&a);
  bus.AddListener(&b);
  a.action = [this] { bus.AddListener(&c); };
  EXPECT_EQ(Send(), "ab");
  EXPECT_EQ(Send(), "abc");
}

TEST_F(VRELEventBusTest, ListenerMayRemoveItself) {
  bus.AddListener(&a);
  bus.AddListener(&b);
  bus.AddListener(&c);
  a.action = [this] { bus.RemoveListener(&a); };
  // b takes the place of a and misses the event.
  EXPECT_EQ(Send(), "ac");
  EXPECT_EQ(Send(), "bc");
}

TEST_F(VRELEventBusTest, ListenerMayRemoveAnother) {
  bus.AddListener(&a);
  bus.AddListener(&b);
  bus.AddListener(&c);
  a.action = [this] { bus.RemoveListener(&b); };
  EXPECT_EQ(Send(), "ac");
}

TEST_F(VRELEventBusTest, ListenerMayRemoveAll) {
  bus.AddListener(&a);
  bus.AddListener(&b);
  bus.AddListener(&c);
  a.action = [this] {
    bus.RemoveListener(&c);
    bus.RemoveListener(&b);
    bus.RemoveListener(&a);
  };
  EXPECT_EQ(Send(), "a");
  EXPECT_EQ(Added(), 0);
}

TEST_F(VRELEventBusTest, ListenerMaySendAgain) {
  bus.AddListener(&a);
  bus.AddListener(&b);
  a.action = [this] {
    a.action = nullptr;
    bus.Send(event);
  };
  EXPECT_EQ(Send(), "aabb");
}

TEST_F(VRELEventBusTest, ExceptionOfAListenerEndsTheWalk) {
  bus.AddListener(&a);
  bus.AddListener(&b);
  a.action = [] { throw std::runtime_error("stop"); };
  EXPECT_THROW(Send(), std::runtime_error);
  EXPECT_EQ(calls, "a");
}

TEST_F(VRELEventBusTest, EventThatIsNotTimedIsNotStamped) {
  bus.AddListener(&a);
  Send();
  long value = 0;
  EXPECT_EQ(event.GetClock(value), VREL_E_FAIL);
  EXPECT_EQ(event.GetTime(value), VREL_E_FAIL);
}

TEST_F(VRELEventBusTest, TimedEventIsStampedWithoutAnyListener) {
  TimedEvent timed;
  long const clockBefore = static_cast<long>(std::clock());
  long const timeBefore = static_cast<long>(std::time(nullptr));
  bus.Send(timed);
  long ticks = -1;
  long seconds = -1;
  EXPECT_EQ(timed.GetClock(ticks), VREL_S_OK);
  EXPECT_EQ(timed.GetTime(seconds), VREL_S_OK);
  EXPECT_GE(ticks, clockBefore);
  EXPECT_LE(ticks, static_cast<long>(std::clock()));
  EXPECT_GE(seconds, timeBefore);
  EXPECT_LE(seconds, static_cast<long>(std::time(nullptr)));
}

TEST_F(VRELEventBusTest, TimedEventIsStampedBeforeItIsDelivered) {
  TimedEvent timed;
  long seconds = 0;
  VRINResult stamped = VREL_E_FAIL;
  a.action = [&] { stamped = timed.GetTime(seconds); };
  bus.AddListener(&a);
  bus.Send(timed);
  EXPECT_EQ(stamped, VREL_S_OK);
  EXPECT_GT(seconds, 0);
}

TEST_F(VRELEventBusTest, EachSendStampsAnew) {
  TimedEvent timed;
  long const longAgo = 1;
  timed.SetTime(longAgo);
  bus.Send(timed);
  long seconds = 0;
  timed.GetTime(seconds);
  EXPECT_GT(seconds, 1);
}

TEST(VRELEventListenerTest, HasNoField) {
  EXPECT_EQ(sizeof(VRELEventListener), sizeof(void*));
}

TEST(VRELEventListenerTest, HandlesEventsByItsFirstVirtualOperation) {
  EXPECT_EQ(SlotOf(&VRELEventListener::HandleEvent), 0u);
}

TEST(VRELEventBusStopTest, LeavesItsListenersAlone) {
  // The listener is gone before the bus is: a bus that touched it would crash at exit.
  ChildResult const result = RunInChild([] {
    alignas(Listener) static unsigned char storage[sizeof(Listener)];
    std::string calls;
    auto* const listener = new (storage) Listener(calls, 'a');
    VRELEventBus::GetEventBus()->AddListener(listener);
    std::memset(static_cast<void*>(listener), 0xEE, sizeof(Listener));
    return 3;
  });
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_EQ(result.signal, 0);
}

}  // namespace
