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

// Appends its letter to a shared log, then runs its action.
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

  // Returns the letters of the listeners that receive an event.
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

TEST_F(VRELEventBusTest, GetEventBusReturnsSingleton) {
  EXPECT_EQ(VRELEventBus::GetEventBus(), &VRELEventBus::_eventBus);
  EXPECT_EQ(sizeof(VRELEventBus), sizeof(void*));
}

TEST(VRELEventBusStartTest, StartsWithoutListener) {
  ChildResult const result = RunInChild([] { return VRELEventBus::GetEventBus()->GetListenerCount(); });
  EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(VRELEventBusTest, SendPassesEventSynchronously) {
  bus.AddListener(&a);
  EXPECT_EQ(Send(), "a");
  EXPECT_EQ(a.last, &event);
  a.last = nullptr;
  VRELEventBus::Fire(event);
  EXPECT_EQ(calls, "aa");
  EXPECT_EQ(a.last, &event);
}

TEST_F(VRELEventBusTest, AddListenerTwiceKeepsOneEntry) {
  bus.AddListener(&a);
  bus.AddListener(&b);
  bus.AddListener(&a);
  EXPECT_EQ(Added(), 2);
  EXPECT_EQ(Send(), "ab");
}

TEST_F(VRELEventBusTest, IgnoresNullListener) {
  bus.AddListener(nullptr);
  EXPECT_EQ(Added(), 0);
  bus.AddListener(&a);
  bus.RemoveListener(nullptr);
  EXPECT_EQ(Added(), 1);
  EXPECT_EQ(Send(), "a");
}

TEST_F(VRELEventBusTest, RemovesOnlyRegisteredListener) {
  bus.AddListener(&a);
  bus.RemoveListener(&b);
  EXPECT_EQ(Added(), 1);
  EXPECT_EQ(Send(), "a");
}

TEST_F(VRELEventBusTest, CallsInRegistrationOrder) {
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

TEST_F(VRELEventBusTest, GrowsBeyondInitialCapacity) {
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

TEST_F(VRELEventBusTest, NewListenerMissesCurrentEvent) {
  bus.AddListener(&a);
  bus.AddListener(&b);
  a.action = [this] { bus.AddListener(&c); };
  EXPECT_EQ(Send(), "ab");
  EXPECT_EQ(Send(), "abc");
}

TEST_F(VRELEventBusTest, ListenerRemovesItself) {
  bus.AddListener(&a);
  bus.AddListener(&b);
  bus.AddListener(&c);
  a.action = [this] { bus.RemoveListener(&a); };
  // b moves to the index of a and does not receive the event.
  EXPECT_EQ(Send(), "ac");
  EXPECT_EQ(Send(), "bc");
}

TEST_F(VRELEventBusTest, ListenerRemovesAnother) {
  bus.AddListener(&a);
  bus.AddListener(&b);
  bus.AddListener(&c);
  a.action = [this] { bus.RemoveListener(&b); };
  EXPECT_EQ(Send(), "ac");
}

TEST_F(VRELEventBusTest, ListenerRemovesAll) {
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

TEST_F(VRELEventBusTest, ListenerSendsEvent) {
  bus.AddListener(&a);
  bus.AddListener(&b);
  a.action = [this] {
    a.action = nullptr;
    bus.Send(event);
  };
  EXPECT_EQ(Send(), "aabb");
}

TEST_F(VRELEventBusTest, ExceptionEndsDispatch) {
  bus.AddListener(&a);
  bus.AddListener(&b);
  a.action = [] { throw std::runtime_error("stop"); };
  EXPECT_THROW(Send(), std::runtime_error);
  EXPECT_EQ(calls, "a");
}

TEST_F(VRELEventBusTest, UntimedEventIsNotStamped) {
  bus.AddListener(&a);
  Send();
  long value = 0;
  EXPECT_EQ(event.GetClock(value), VREL_E_FAIL);
  EXPECT_EQ(event.GetTime(value), VREL_E_FAIL);
}

TEST_F(VRELEventBusTest, TimedEventIsStampedWithoutListener) {
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

TEST_F(VRELEventBusTest, TimedEventIsStampedBeforeDispatch) {
  TimedEvent timed;
  long seconds = 0;
  VRINResult stamped = VREL_E_FAIL;
  a.action = [&] { stamped = timed.GetTime(seconds); };
  bus.AddListener(&a);
  bus.Send(timed);
  EXPECT_EQ(stamped, VREL_S_OK);
  EXPECT_GT(seconds, 0);
}

TEST_F(VRELEventBusTest, EachSendSetsStamps) {
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

TEST(VRELEventListenerTest, HandleEventHasSlotZero) {
  EXPECT_EQ(SlotOf(&VRELEventListener::HandleEvent), 0u);
}

TEST(VRELEventBusStopTest, DestructorKeepsListeners) {
  // The listener is destroyed before the bus; a bus that calls it in its destructor crashes.
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
