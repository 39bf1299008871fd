#include "VRELEvent.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "VRELString.h"
#include "VRELWarningEvent.h"
#include "VirtualSlot.h"

namespace {

TEST(VRELEventTest, StoresNameAndLevel) {
  VRELEvent const event("MyEvent", VREL_LEVEL_INFO);
  EXPECT_STREQ(event.GetEventName(), "MyEvent");
  EXPECT_EQ(event.GetLevel(), 50);
}

TEST(VRELEventTest, CopiesName) {
  char name[] = "MyEvent";
  VRELEvent event(name, VREL_LEVEL_INFO);
  name[0] = 'X';
  EXPECT_STREQ(event.GetEventName(), "MyEvent");
  event.SetEventName(name);
  name[0] = 'Y';
  EXPECT_STREQ(event.GetEventName(), "XyEvent");
}

TEST(VRELEventTest, IsAIsFalseWithoutName) {
  for (char const* none : {static_cast<char const*>(nullptr), ""}) {
    VRELEvent const event(none, VREL_LEVEL_INFO);
    EXPECT_EQ(event.GetEventName(), nullptr);
    EXPECT_FALSE(event.IsA("VRELEvent"));
    EXPECT_FALSE(event.IsA(""));
    EXPECT_FALSE(event.IsA(nullptr));
  }
}

TEST(VRELEventTest, SetEventNameIgnoresEmptyName) {
  VRELEvent event("MyEvent", VREL_LEVEL_INFO);
  event.SetEventName(nullptr);
  EXPECT_STREQ(event.GetEventName(), "MyEvent");
  event.SetEventName("");
  EXPECT_STREQ(event.GetEventName(), "MyEvent");
  event.SetEventName("Other");
  EXPECT_STREQ(event.GetEventName(), "Other");
}

TEST(VRELEventTest, SetEventNameAcceptsOwnName) {
  VRELEvent event("MyEvent", VREL_LEVEL_INFO);
  event.SetEventName(event.GetEventName());
  EXPECT_STREQ(event.GetEventName(), "MyEvent");
  event.SetEventName(event.GetEventName() + 2);
  EXPECT_STREQ(event.GetEventName(), "Event");
}

TEST(VRELEventTest, IsAComparesBytes) {
  VRELEvent const event("MyEvent", VREL_LEVEL_INFO);
  EXPECT_TRUE(event.IsA("MyEvent"));
  EXPECT_FALSE(event.IsA("myEvent"));
  EXPECT_FALSE(event.IsA("MyEven"));
  EXPECT_FALSE(event.IsA("MyEventX"));
  EXPECT_FALSE(event.IsA(nullptr));
}

TEST(VRELEventTest, IsKindOfVRELEventOnly) {
  VRELEvent plain("MyEvent", VREL_LEVEL_INFO);
  VRELWarningEvent warning("text");
  for (VRELEvent* event : {&plain, static_cast<VRELEvent*>(&warning)}) {
    EXPECT_TRUE(event->IsKindOf("VRELEvent"));
    EXPECT_FALSE(event->IsKindOf("VRELObject"));
    EXPECT_FALSE(event->IsKindOf("MyEvent"));
    EXPECT_FALSE(event->IsKindOf("VRELWarningEvent"));
    EXPECT_EQ(event->GetName(), nullptr);
  }
}

TEST(VRELEventTest, EitherSetterStamps) {
  long value = -1;
  VRELEvent event("MyEvent", VREL_LEVEL_INFO);
  EXPECT_EQ(event.GetClock(value), VREL_E_FAIL);
  EXPECT_EQ(value, 0);
  value = -1;
  EXPECT_EQ(event.GetTime(value), VREL_E_FAIL);
  EXPECT_EQ(value, 0);

  long ticks = 1234567890123L;
  EXPECT_EQ(event.SetClock(ticks), VREL_S_OK);
  EXPECT_EQ(event.GetClock(value), VREL_S_OK);
  EXPECT_EQ(value, 1234567890123L);
  EXPECT_EQ(event.GetTime(value), VREL_S_OK);
  EXPECT_EQ(value, 0);

  VRELEvent other("MyEvent", VREL_LEVEL_INFO);
  long seconds = 987654321098L;
  EXPECT_EQ(other.SetTime(seconds), VREL_S_OK);
  EXPECT_EQ(other.GetTime(value), VREL_S_OK);
  EXPECT_EQ(value, 987654321098L);
  EXPECT_EQ(other.GetClock(value), VREL_S_OK);
  EXPECT_EQ(value, 0);
}

TEST(VRELEventTest, BaseIsUntimedAndWritesNothing) {
  VRELEvent event("MyEvent", VREL_LEVEL_INFO);
  EXPECT_FALSE(event.IsTimed());
  event.GetFormattedDescription(nullptr);
}

TEST(VRELEventTest, CopyIsDeep) {
  long const ticks = 7;
  long const seconds = 8;
  VRELEvent source("MyEvent", VREL_LEVEL_ERROR);
  source.RaiseReference();
  source.SetClock(ticks);
  source.SetTime(seconds);
  VRELEvent copy(source);
  source.SetEventName("Other");
  EXPECT_STREQ(copy.GetEventName(), "MyEvent");
  EXPECT_EQ(copy.GetLevel(), 80);
  long value = 0;
  EXPECT_EQ(copy.GetClock(value), VREL_S_OK);
  EXPECT_EQ(value, 7);
  EXPECT_EQ(copy.GetTime(value), VREL_S_OK);
  EXPECT_EQ(value, 8);
  EXPECT_EQ(copy.GetReferenceCount(), 0u);
  EXPECT_TRUE(copy.IsKindOf("VRELEvent"));

  VRELEvent const unstamped(VRELEvent(nullptr, VREL_LEVEL_INFO));
  EXPECT_EQ(unstamped.GetEventName(), nullptr);
  EXPECT_EQ(unstamped.GetClock(value), VREL_E_FAIL);
}

TEST(VRELEventTest, GetLevelReadsKeywords) {
  struct {
    wchar_t const* keyword;
    int level;
  } const rows[] = {
      {L"ALL", 0},
      {L"DEBUG", 10},
      {L"TEST", 20},
      {L"VERBOSE", 30},
      {L"INFO", 50},
      {L"ERROR", 80},
      {L"ABORT", 90},
      {L"NONE", 999},
      // Any other string returns the fallback.
      {L"WARNING", 12},
      {L"", 12},
      {L"info", 12},
      {L"All", 12},
      {L"A", 12},
      {L"AL", 12},
      {L"ALLX", 12},
      {L"ABORTED", 12},
      {L" ALL", 12},
      {L"ALL ", 12},
      {L"DEFAULT", 12},
      {L"TRACE", 12},
      {L"VERBOS", 12},
      {L"E", 12},
      {L"W", 12},
      {L"0", 12},
      {L"@", 12},
      {L"Z", 12},
      {L"70", 12},
      {L"\u0391LL", 12},
      {L"ERRORS", 12},
      {L"NONe", 12},
  };
  for (auto const& row : rows) {
    VRELString keyword(row.keyword);
    SCOPED_TRACE(keyword.toUtf8());
    EXPECT_EQ(VRELEvent::GetLevel(keyword, static_cast<VRELEventLevel>(12)), row.level);
  }
}

TEST(VRELEventTest, LevelsHaveValues) {
  EXPECT_EQ(VREL_LEVEL_DEFAULT, -1);
  EXPECT_EQ(VREL_LEVEL_ALL, 0);
  EXPECT_EQ(VREL_LEVEL_DEBUG, 10);
  EXPECT_EQ(VREL_LEVEL_TEST, 20);
  EXPECT_EQ(VREL_LEVEL_VERBOSE, 30);
  EXPECT_EQ(VREL_LEVEL_INFO, 50);
  EXPECT_EQ(VREL_LEVEL_WARNING, 70);
  EXPECT_EQ(VREL_LEVEL_ERROR, 80);
  EXPECT_EQ(VREL_LEVEL_ABORT, 90);
  EXPECT_EQ(VREL_LEVEL_NONE, 999);
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<VRELEventLevel>, int>));
}

TEST(VRELEventTest, VirtualFunctionsHaveSlots) {
  EXPECT_EQ(SlotOf(&VRELEvent::RaiseReference), 2u);
  EXPECT_EQ(SlotOf(&VRELEvent::LowerReference), 3u);
  EXPECT_EQ(SlotOf(&VRELEvent::GetName), 4u);
  EXPECT_EQ(SlotOf(&VRELEvent::IsKindOf), 5u);
  EXPECT_EQ(SlotOf(&VRELEvent::GetFormattedDescription), 6u);
  EXPECT_EQ(SlotOf(&VRELEvent::IsTimed), 7u);
}

TEST(VRELEventTest, HasOnlyListedFields) {
  struct Fields : VRELObject {
    using VRELObject::VRELObject;
    char* name;
    VRELEventLevel level;
    bool stamped;
    long time;
    long clock;
  };
  EXPECT_EQ(sizeof(VRELEvent), sizeof(Fields));
}

}  // namespace
