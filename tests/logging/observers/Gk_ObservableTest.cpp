#include "Gk_Observable.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

#include "Gk_Nest.h"
#include "Gk_ROString.h"

namespace {

TEST(Gk_ObservableTest, StartsEmpty) {
  static_assert(std::has_virtual_destructor_v<Gk_Observable>);
  Gk_Observable observable;
  EXPECT_EQ(observable.getType(), 0);
  EXPECT_EQ(observable.getValue().dataLen(), 0);
  EXPECT_EQ(observable.getObservers().Size(), 0);
}

TEST(Gk_ObservableTest, ObserverListHasSize17) {
  // Only the addresses of the observers are used.
  int places[40];
  VRELHashList<Gk_Observer*> expected(17);
  Gk_Observable observable;
  for (int& place : places) {
    auto* const observer = reinterpret_cast<Gk_Observer*>(&place);
    expected.Add(observer);
    observable.getObservers().Add(observer);
  }
  auto const listed = [](VRELHashList<Gk_Observer*> const& list) {
    std::vector<Gk_Observer*> observers;
    Gk_Observer* next = nullptr;
    list.InitEnumeration();
    while (list.GetNext(next)) observers.push_back(next);
    return observers;
  };
  EXPECT_EQ(listed(observable.getObservers()), listed(expected));
}

TEST(Gk_ObservableTest, SetValueCopiesName) {
  Gk_Observable observable;
  Gk_String name("faces");
  observable.setValue(name);
  name[0] = 'l';
  EXPECT_STREQ(observable.getValue(), "faces");
  observable.setType(Gk_Observer::ProgressType);
  EXPECT_EQ(observable.getType(), 3);
}

TEST(Gk_ObservableTest, FetchSearchesFolders) {
  EXPECT_EQ(Gk_Observable::fetch("Gk_ObservableTest/a/faces", false), nullptr);
  Gk_Observable* const observable = Gk_Observable::fetch("Gk_ObservableTest/a/faces", true);
  ASSERT_NE(observable, nullptr);
  EXPECT_STREQ(observable->getValue(), "faces");
  EXPECT_EQ(Gk_Observable::fetch("Gk_ObservableTest/a/faces", false), observable);
  EXPECT_EQ(Gk_Nest::fetchObservable("/Gk_ObservableTest/a/faces", false), observable);
}

}  // namespace
