#include "Gk_Observer.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "Gk_DoubleObserver.h"
#include "Gk_IntObserver.h"
#include "Gk_ProgressObserver.h"
#include "Gk_String.h"
#include "Gk_StringObserver.h"
#include "VRELEntityCallback.h"
#include "VirtualSlot.h"

namespace {

TEST(Gk_ObserverTest, TypesKeepValues) {
  EXPECT_EQ(Gk_Observer::IntType, 0);
  EXPECT_EQ(Gk_Observer::DoubleType, 1);
  EXPECT_EQ(Gk_Observer::StringType, 2);
  EXPECT_EQ(Gk_Observer::ProgressType, 3);
  EXPECT_EQ(Gk_Observer::EntityType, 4);
}

TEST(Gk_ObserverTest, OperationsFollowWrongType) {
  static_assert(!std::has_virtual_destructor_v<Gk_Observer>);
  static_assert(std::is_abstract_v<Gk_Observer>);
  EXPECT_EQ(SlotOf(&Gk_Observer::getType), 0U);
  EXPECT_EQ(SlotOf(&Gk_Observer::wrongType), 1U);
  EXPECT_EQ(SlotOf(&Gk_IntObserver::setInt), 2U);
  EXPECT_EQ(SlotOf(&Gk_DoubleObserver::setDouble), 2U);
  EXPECT_EQ(SlotOf(&Gk_StringObserver::setString), 2U);
  EXPECT_EQ(SlotOf(&Gk_ProgressObserver::setMax), 2U);
  EXPECT_EQ(SlotOf(&Gk_ProgressObserver::setDone), 3U);
  EXPECT_EQ(SlotOf(&Gk_ProgressObserver::setOver), 4U);
  EXPECT_EQ(SlotOf(&Gk_ProgressObserver::setIntInfo), 5U);
  EXPECT_EQ(SlotOf(&Gk_ProgressObserver::setDoubleInfo), 6U);
  EXPECT_EQ(SlotOf(&Gk_ProgressObserver::setStringInfo), 7U);
  EXPECT_EQ(SlotOf(&VRELEntityCallback::setEntityCallback), 2U);
}

TEST(Gk_ObserverTest, TypeClassesAreAbstract) {
  static_assert(std::is_abstract_v<Gk_IntObserver> && std::is_base_of_v<Gk_Observer, Gk_IntObserver>);
  static_assert(std::is_abstract_v<Gk_DoubleObserver> && std::is_base_of_v<Gk_Observer, Gk_DoubleObserver>);
  static_assert(std::is_abstract_v<Gk_StringObserver> && std::is_base_of_v<Gk_Observer, Gk_StringObserver>);
  static_assert(std::is_abstract_v<Gk_ProgressObserver> && std::is_base_of_v<Gk_Observer, Gk_ProgressObserver>);
  static_assert(std::is_abstract_v<VRELEntityCallback> && std::is_base_of_v<Gk_Observer, VRELEntityCallback>);
  struct Callback final : VRELEntityCallback {
    void setEntityCallback(void* /*first*/, void* /*second*/) override {}
  } const callback;
  EXPECT_EQ(callback.getType(), Gk_Observer::EntityType);
  callback.wrongType();
}

}  // namespace
