#include "Gk_ObsWraper.h"

#include <gtest/gtest.h>

#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Gk_Observable.h"
#include "Gk_ObservableDoc.h"
#include "RecordingObservers.h"
#include "StreamText.h"
#include "VRELStringOutputStream.h"

namespace {

using Calls = std::vector<std::string>;

TEST(Gk_ObsWraperTest, SendReachesObserversOfType) {
  Gk_Observable observable;
  Gk_ObsWraper wrapper(Gk_String("name"), &observable);
  RecordingInt integers;
  RecordingDouble doubles;
  RecordingString strings;
  RecordingProgress progress;
  RecordingEntity entities;
  for (Gk_Observer* observer :
       {static_cast<Gk_Observer*>(&integers), static_cast<Gk_Observer*>(&doubles), static_cast<Gk_Observer*>(&strings),
        static_cast<Gk_Observer*>(&progress), static_cast<Gk_Observer*>(&entities)}) {
    observable.getObservers().Add(observer);
  }
  int entity = 0;
  struct {
    std::function<void()> send;
    Recorded* served;
    char const* call;
  } const rows[] = {
      {[&] { wrapper.setInt(-7); }, &integers, "int -7"},
      {[&] { wrapper.setDouble(2.5); }, &doubles, "double 2.500000"},
      {[&] { wrapper.setString(Gk_String("text")); }, &strings, "string text"},
      {[&] { wrapper.setMax(100); }, &progress, "max 100"},
      {[&] { wrapper.setDone(50); }, &progress, "done 50"},
      {[&] { wrapper.setOver(); }, &progress, "over"},
      {[&] { wrapper.setIntInfo(3); }, &progress, "int info 3"},
      {[&] { wrapper.setDoubleInfo(0.5); }, &progress, "double info 0.500000"},
      {[&] { wrapper.setStringInfo(Gk_String("info")); }, &progress, "string info info"},
      {[&] { wrapper.setEntityCallback(&entity, &wrapper); }, &entities, "entity"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.call);
    Recorded* const all[] = {&integers, &doubles, &strings, &progress, &entities};
    for (Recorded* recorded : all) recorded->calls.clear();
    row.send();
    for (Recorded* recorded : all) {
      EXPECT_EQ(recorded->calls, recorded == row.served ? Calls{row.call} : Calls{"wrong"});
    }
  }
  EXPECT_EQ(entities.first, &entity);
  EXPECT_EQ(entities.second, &wrapper);
}

TEST(Gk_ObsWraperTest, SendIgnoresNullObservable) {
  Gk_ObsWraper wrapper(Gk_String("name"), nullptr);
  EXPECT_EQ(TextOf([&](VRELStringOutputStream* stream) {
              Gk_ObservableDoc::installDebugStream(stream);
              wrapper.setInt(1);
              wrapper.setEntityCallback(nullptr, nullptr);
              Gk_ObservableDoc::installDebugStream(nullptr);
            }),
            "name : 1\n");
}

// Replaces the seconds of a phase, which vary, by S.
std::string WithoutSeconds(std::string text) {
  std::string const mark = "( over) : ";
  for (std::size_t at = 0; (at = text.find(mark, at)) != std::string::npos;) {
    at += mark.size();
    std::size_t const end = text.find('\n', at);
    EXPECT_EQ(text.find_first_not_of("0123456789.", at), end);
    text.replace(at, end - at, "S");
  }
  return text;
}

TEST(Gk_ObsWraperTest, SendWritesDebugLine) {
  Gk_Observable observable;
  Gk_ObsWraper outer(Gk_String("outer"), &observable);
  Gk_ObsWraper inner(Gk_String("inner"), nullptr);
  VRELStringOutputStream stream;
  Gk_ObservableDoc::installDebugStream(&stream);
  outer.setInt(1);
  outer.setMax(2);
  inner.setMax(3);
  inner.setDone(4);
  inner.setDouble(2.5);
  inner.setString(Gk_String("text"));
  inner.setEntityCallback(&stream, &stream);
  inner.setOver();
  outer.setIntInfo(5);
  outer.setDoubleInfo(-0.25);
  outer.setStringInfo(Gk_String("more"));
  outer.setOver();
  outer.setInt(6);
  Gk_ObservableDoc::installDebugStream(nullptr);
  outer.setInt(7);
  EXPECT_EQ(WithoutSeconds(TakeText(stream)),
            "outer : 1\n"
            "outer( start) : 2\n"
            "    inner( start) : 3\n"
            "        inner : 4\n"
            "        inner : 2.500000\n"
            "        inner : text\n"
            "    inner( over) : S\n"
            "    outer : 5\n"
            "    outer : -0.250000\n"
            "    outer : more\n"
            "outer( over) : S\n"
            "outer : 6\n");
}

TEST(Gk_ObsWraperTest, DebugLinePrecedesDelivery) {
  Gk_Observable observable;
  RecordingProgress observer;
  observable.getObservers().Add(&observer);
  Gk_ObsWraper wrapper(Gk_String("w"), &observable);
  Gk_ObsWraper inner(Gk_String("inner"), nullptr);
  int calls = 0;
  observer.then = [&] { inner.setInt(++calls); };
  VRELStringOutputStream stream;
  Gk_ObservableDoc::installDebugStream(&stream);
  wrapper.setInt(10);
  wrapper.setDouble(0.5);
  wrapper.setString(Gk_String("text"));
  // Observers are called during the phase.
  wrapper.setMax(20);
  wrapper.setDone(30);
  wrapper.setIntInfo(40);
  wrapper.setDoubleInfo(1.5);
  wrapper.setStringInfo(Gk_String("info"));
  wrapper.setOver();
  Gk_ObservableDoc::installDebugStream(nullptr);
  EXPECT_EQ(WithoutSeconds(TakeText(stream)),
            "w : 10\n"
            "inner : 1\n"
            "w : 0.500000\n"
            "inner : 2\n"
            "w : text\n"
            "inner : 3\n"
            "w( start) : 20\n"
            "    inner : 4\n"
            "    w : 30\n"
            "    inner : 5\n"
            "    w : 40\n"
            "    inner : 6\n"
            "    w : 1.500000\n"
            "    inner : 7\n"
            "    w : info\n"
            "    inner : 8\n"
            "w( over) : S\n"
            "inner : 9\n");
}

TEST(Gk_ObsWraperTest, PhaseIsTimedWithoutStream) {
  Gk_ObsWraper wrapper(Gk_String("w"), nullptr);
  wrapper.setMax(1);
  EXPECT_EQ(TextOf([&](VRELStringOutputStream* stream) {
              Gk_ObservableDoc::installDebugStream(stream);
              wrapper.setInt(1);
              Gk_ObservableDoc::installDebugStream(nullptr);
            }),
            "    w : 1\n");
  wrapper.setOver();
}

TEST(Gk_ObsWraperTest, SetOverSendsTimeSinceSetMax) {
  Gk_Observable observable;
  RecordingProgress progress;
  observable.getObservers().Add(&progress);
  Gk_ObsWraper wrapper(Gk_String("w"), &observable);
  wrapper.setMax(1);
  std::clock_t const start = std::clock();
  while (std::clock() - start < 20000) {
  }
  wrapper.setOver();
  EXPECT_GE(progress.over, 0.02);
  EXPECT_LT(progress.over, 5.0);
}

TEST(Gk_ObsWraperTest, SetMaxStartsPhaseBeforeDelivery) {
  Gk_Observable observable;
  RecordingProgress progress;
  progress.then = [] {
    std::clock_t const start = std::clock();
    while (std::clock() - start < 20000) {
    }
  };
  observable.getObservers().Add(&progress);
  Gk_ObsWraper wrapper(Gk_String("w"), &observable);
  wrapper.setMax(1);
  wrapper.setOver();
  EXPECT_GE(progress.over, 0.02);
}

TEST(Gk_ObsWraperTest, SetOverWithoutSetMaxStartsAtZero) {
  Gk_Observable observable;
  RecordingProgress progress;
  observable.getObservers().Add(&progress);
  Gk_ObsWraper wrapper(Gk_String("w"), &observable);
  double const before = static_cast<double>(std::clock()) / 1000000;
  wrapper.setOver();
  double const after = static_cast<double>(std::clock()) / 1000000;
  // The margin is decremented nevertheless.
  Gk_ObsWraper(Gk_String("w"), nullptr).setMax(0);
  EXPECT_GE(progress.over, before);
  EXPECT_LE(progress.over, after);
}

TEST(Gk_ObsWraperTest, IsCopyable) {
  Gk_Observable observable;
  RecordingInt observer;
  observable.getObservers().Add(&observer);
  Gk_String name("name");
  auto first = std::make_unique<Gk_ObsWraper>(name, &observable);
  name[0] = 'x';
  Gk_ObsWraper copy(*first);
  Gk_ObsWraper assigned(Gk_String("other"), nullptr);
  assigned = copy;
  first.reset();
  std::string const text = TextOf([&](VRELStringOutputStream* stream) {
    Gk_ObservableDoc::installDebugStream(stream);
    copy.setInt(1);
    assigned.setInt(2);
    Gk_ObservableDoc::installDebugStream(nullptr);
  });
  EXPECT_EQ(text, "name : 1\nname : 2\n");
  EXPECT_EQ(observer.calls, (Calls{"int 1", "int 2"}));
}

TEST(Gk_ObsWraperTest, DeliversInListOrder) {
  Gk_Observable observable;
  Gk_ObsWraper wrapper(Gk_String("w"), &observable);
  std::vector<RecordingInt> observers(40);
  std::vector<Gk_Observer*> called;
  for (RecordingInt& observer : observers) {
    observer.then = [&called, &observer] { called.push_back(&observer); };
    observable.getObservers().Add(&observer);
  }
  std::vector<Gk_Observer*> expected;
  Gk_Observer* next = nullptr;
  observable.getObservers().InitEnumeration();
  while (observable.getObservers().GetNext(next)) expected.push_back(next);
  ASSERT_EQ(expected.size(), 40U);
  wrapper.setInt(1);
  EXPECT_EQ(called, expected);
}

TEST(Gk_ObsWraperTest, NullObserverIsSkipped) {
  Gk_Observable observable;
  RecordingInt observer;
  observable.getObservers().Add(nullptr);
  observable.getObservers().Add(&observer);
  Gk_ObsWraper(Gk_String("w"), &observable).setInt(1);
  EXPECT_EQ(observer.calls, Calls{"int 1"});
}

// Many observers, each of which changes the list when it is called.
class Gk_ObsWraperChangesTest : public testing::Test {
 protected:
  static constexpr int count = 60;

  Gk_ObsWraperChangesTest() {
    for (int i = 0; i < count; ++i) {
      observers.push_back(std::make_unique<RecordingInt>());
      observable.getObservers().Add(observers.back().get());
    }
  }

  void ExpectEachNotifiedOnce(std::size_t times = 1) const {
    for (auto const& observer : observers) EXPECT_EQ(observer->calls.size(), times);
  }

  Gk_Observable observable;
  Gk_ObsWraper wrapper = Gk_ObsWraper(Gk_String("w"), &observable);
  std::vector<std::unique_ptr<RecordingInt>> observers;
};

TEST_F(Gk_ObsWraperChangesTest, ObserversCanRemoveThemselves) {
  for (auto const& observer : observers) {
    observer->then = [this, self = observer.get()] { observable.getObservers().Remove(self); };
  }
  wrapper.setInt(1);
  ExpectEachNotifiedOnce();
  EXPECT_EQ(observable.getObservers().Size(), 0);
}

TEST_F(Gk_ObsWraperChangesTest, RemovedObserverIsNotCalled) {
  // The first observer that is called removes and deletes all others.
  for (auto const& observer : observers) {
    observer->then = [this, self = observer.get()] {
      for (auto& other : observers) {
        if (other.get() == self) continue;
        observable.getObservers().Remove(other.get());
        other.reset();
      }
    };
  }
  wrapper.setInt(1);
  int alive = 0;
  for (auto const& observer : observers) {
    if (observer == nullptr) continue;
    ++alive;
    EXPECT_EQ(observer->calls, Calls{"int 1"});
  }
  EXPECT_EQ(alive, 1);
}

TEST_F(Gk_ObsWraperChangesTest, ObserversCanRemoveAll) {
  std::size_t called = 0;
  for (auto const& observer : observers) {
    observer->then = [&] {
      ++called;
      observable.getObservers().Clear();
    };
  }
  wrapper.setInt(1);
  EXPECT_EQ(called, 1U);
}

TEST_F(Gk_ObsWraperChangesTest, AddedObserversGetNextValue) {
  std::vector<std::unique_ptr<RecordingInt>> added;
  for (auto const& observer : observers) {
    observer->then = [&] {
      added.push_back(std::make_unique<RecordingInt>());
      observable.getObservers().Add(added.back().get());
    };
  }
  wrapper.setInt(1);
  ExpectEachNotifiedOnce();
  ASSERT_EQ(added.size(), static_cast<std::size_t>(count));
  for (auto const& observer : added) EXPECT_EQ(observer->calls, Calls{});
  for (auto const& observer : observers) observer->then = nullptr;
  wrapper.setInt(2);
  for (auto const& observer : added) EXPECT_EQ(observer->calls, Calls{"int 2"});
}

TEST_F(Gk_ObsWraperChangesTest, ObserversCanSendToSameName) {
  int depth = 0;
  observers[7]->then = [&] {
    if (++depth == 1) wrapper.setInt(2);
  };
  wrapper.setInt(1);
  ExpectEachNotifiedOnce(2);
}

TEST(Gk_ObsWraperTest, ExceptionOfObserverReachesSender) {
  Gk_Observable observable;
  RecordingInt observer;
  observer.then = [] { throw 7; };
  observable.getObservers().Add(&observer);
  Gk_ObsWraper wrapper(Gk_String("w"), &observable);
  EXPECT_THROW(wrapper.setInt(1), int);
  observer.then = nullptr;
  wrapper.setInt(2);
  EXPECT_EQ(observer.calls, (Calls{"int 1", "int 2"}));
}

}  // namespace
