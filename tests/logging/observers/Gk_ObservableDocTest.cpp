#include "Gk_ObservableDoc.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ChildProcess.h"
#include "Gk_ErrMgr.h"
#include "Gk_Observable.h"
#include "Gk_ROString.h"
#include "RecordingObservers.h"
#include "StreamText.h"
#include "VRELAbortException.h"
#include "VRELFileOutputStream.h"
#include "VRELString.h"

namespace {

using Calls = std::vector<std::string>;

// Returns the debug line of a wrapper, which contains its name.
std::string Line(Gk_ObsWraper wrapper) {
  return TextOf([&](VRELStringOutputStream* stream) {
    Gk_ObservableDoc::installDebugStream(stream);
    wrapper.setInt(1);
    Gk_ObservableDoc::installDebugStream(nullptr);
  });
}

TEST(Gk_ObservableDocTest, AddObservableCreatesAndSetsType) {
  EXPECT_EQ(Gk_Observable::fetch("ObsDoc.add/a/n", false), nullptr);
  Gk_ObsWraper const wrapper = Gk_ObservableDoc::addObservable(Gk_ROString("ObsDoc.add/a/n"), Gk_Observer::DoubleType);
  EXPECT_EQ(Line(wrapper), "ObsDoc.add/a/n : 1\n");
  Gk_Observable* const observable = Gk_Observable::fetch("ObsDoc.add/a/n", false);
  ASSERT_NE(observable, nullptr);
  EXPECT_EQ(observable->getType(), 1);
  EXPECT_EQ(Line(Gk_ObservableDoc::addObservable(VRELString(L"ObsDoc.add/a/n"), Gk_Observer::EntityType)),
            "ObsDoc.add/a/n : 1\n");
  EXPECT_EQ(observable->getType(), 4);
  EXPECT_EQ(Line(Gk_ObservableDoc::addObservable("ObsDoc.add/a/n", Gk_Observer::IntType)), "ObsDoc.add/a/n : 1\n");
  EXPECT_EQ(observable->getType(), 0);
  EXPECT_EQ(Gk_Observable::fetch("ObsDoc.add/a/n", false), observable);
}

TEST(Gk_ObservableDocTest, FetchObservableJoinsNameAndChild) {
  RecordingInt observer;
  Gk_ObservableDoc::addObservable("ObsDoc.fetch/n", Gk_Observer::IntType);
  EXPECT_TRUE(Gk_ObservableDoc::attachObserver("ObsDoc.fetch/n", &observer));
  EXPECT_EQ(Line(Gk_ObservableDoc::fetchObservable("ObsDoc.fetch/n")), "ObsDoc.fetch/n : 1\n");
  EXPECT_EQ(Line(Gk_ObservableDoc::fetchObservable("ObsDoc.fetch", "n")), "ObsDoc.fetch/n : 1\n");
  EXPECT_EQ(Line(Gk_ObservableDoc::fetchObservable("ObsDoc.fetch/n", nullptr)), "ObsDoc.fetch/n : 1\n");
  EXPECT_EQ(observer.calls.size(), 3U);
  // Views without a terminator, and one with an offset.
  EXPECT_EQ(Line(Gk_ObservableDoc::fetchObservable(Gk_ROString("ObsDoc.fetch", 12), "n")), "ObsDoc.fetch/n : 1\n");
  Gk_ROString later("xx/ObsDoc.fetch");
  later.offset(3);
  EXPECT_EQ(Line(Gk_ObservableDoc::fetchObservable(later, "n")), "ObsDoc.fetch/n : 1\n");
  EXPECT_EQ(observer.calls.size(), 5U);
}

TEST(Gk_ObservableDocTest, UnknownNameReturnsEmptyWrapper) {
  EXPECT_EQ(Line(Gk_ObservableDoc::fetchObservable("ObsDoc.unknown/n")), "ObsDoc.unknown/n : 1\n");
  EXPECT_EQ(Gk_Observable::fetch("ObsDoc.unknown/n", false), nullptr);
}

TEST(Gk_ObservableDocTest, AttachObserverTestsType) {
  RecordingInt observer;
  RecordingProgress other;
  EXPECT_FALSE(Gk_ObservableDoc::attachObserver("ObsDoc.attach/n", &observer));
  Gk_ObsWraper wrapper = Gk_ObservableDoc::addObservable("ObsDoc.attach/n", Gk_Observer::IntType);
  EXPECT_FALSE(Gk_ObservableDoc::attachObserver("ObsDoc.attach/n", nullptr));
  EXPECT_FALSE(Gk_ObservableDoc::attachObserver("ObsDoc.attach/n", &other));
  EXPECT_TRUE(Gk_ObservableDoc::attachObserver("ObsDoc.attach/n", &observer));
  // It is in the list once.
  EXPECT_FALSE(Gk_ObservableDoc::attachObserver("ObsDoc.attach/n", &observer));
  wrapper.setInt(3);
  EXPECT_EQ(observer.calls, Calls{"int 3"});
  wrapper.setDouble(2.5);
  EXPECT_EQ(observer.calls, (Calls{"int 3", "wrong"}));
  EXPECT_EQ(other.calls, Calls{});
}

TEST(Gk_ObservableDocTest, SecondAddKeepsObservers) {
  RecordingInt integers;
  RecordingDouble doubles;
  Gk_ObservableDoc::addObservable("ObsDoc.again/n", Gk_Observer::IntType);
  EXPECT_TRUE(Gk_ObservableDoc::attachObserver("ObsDoc.again/n", &integers));
  Gk_ObsWraper wrapper = Gk_ObservableDoc::addObservable("ObsDoc.again/n", Gk_Observer::DoubleType);
  EXPECT_TRUE(Gk_ObservableDoc::attachObserver("ObsDoc.again/n", &doubles));
  // Delivery depends on the type of the observer, not of the observable.
  wrapper.setInt(1);
  wrapper.setDouble(2.5);
  EXPECT_EQ(integers.calls, (Calls{"int 1", "wrong"}));
  EXPECT_EQ(doubles.calls, (Calls{"wrong", "double 2.500000"}));
  Gk_ObservableDoc::removeAllObserver("ObsDoc.again/n");
}

TEST(Gk_ObservableDocTest, RemoveObserverTestsType) {
  RecordingInt first;
  RecordingInt second;
  EXPECT_FALSE(Gk_ObservableDoc::removeObserver("ObsDoc.remove/n", &first));
  Gk_ObsWraper wrapper = Gk_ObservableDoc::addObservable("ObsDoc.remove/n", Gk_Observer::IntType);
  EXPECT_FALSE(Gk_ObservableDoc::removeObserver("ObsDoc.remove/n", &first));
  Gk_ObservableDoc::attachObserver("ObsDoc.remove/n", &first);
  Gk_ObservableDoc::attachObserver("ObsDoc.remove/n", &second);
  EXPECT_FALSE(Gk_ObservableDoc::removeObserver("ObsDoc.remove/n", nullptr));
  EXPECT_TRUE(Gk_ObservableDoc::removeObserver("ObsDoc.remove/n", &first));
  EXPECT_FALSE(Gk_ObservableDoc::removeObserver("ObsDoc.remove/n", &first));
  wrapper.setInt(1);
  EXPECT_EQ(first.calls, Calls{});
  EXPECT_EQ(second.calls, Calls{"int 1"});
  // The type of the observable changed meanwhile.
  Gk_ObservableDoc::addObservable("ObsDoc.remove/n", Gk_Observer::DoubleType);
  EXPECT_FALSE(Gk_ObservableDoc::removeObserver("ObsDoc.remove/n", &second));
  Gk_ObservableDoc::removeAllObserver("ObsDoc.remove/n");
  wrapper.setInt(2);
  EXPECT_EQ(second.calls, Calls{"int 1"});
  Gk_ObservableDoc::removeAllObserver("ObsDoc.missing/n");
  EXPECT_EQ(Gk_Observable::fetch("ObsDoc.missing/n", false), nullptr);
}

TEST(Gk_ObservableDocTest, ObserverCanRequestAbort) {
  RecordingInt observer;
  observer.then = [] { Gk_ErrMgr::setAbort(); };
  Gk_ObsWraper wrapper = Gk_ObservableDoc::addObservable("ObsDoc.abort/n", Gk_Observer::IntType);
  Gk_ObservableDoc::attachObserver("ObsDoc.abort/n", &observer);
  wrapper.setInt(1);
  EXPECT_THROW(Gk_ErrMgr::checkAbort(), VRELAbortException);
  Gk_ObservableDoc::removeAllObserver("ObsDoc.abort/n");
}

TEST(Gk_ObservableDocTest, DebugStreamCanBeConsoleUntilExit) {
  ChildResult const result = RunInChild([] {
    Gk_ObservableDoc::installDebugStream(&VRELFileOutputStream::console);
    Gk_ObservableDoc::addObservable("console", Gk_Observer::IntType).setInt(5);
    return 0;
  });
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_EQ(result.signal, 0);
  EXPECT_NE((result.output + result.errors).find("console : 5\n"), std::string::npos);
}

}  // namespace
