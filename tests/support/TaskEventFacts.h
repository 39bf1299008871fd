// Properties of task events.
#pragma once

#include <gtest/gtest.h>

#include <ctime>
#include <string>

#include "StreamText.h"
#include "VRELEventBus.h"
#include "VRELString.h"
#include "VRELTaskEvent.h"

// Returns the task identifier as UTF-8, or "(none)".
inline std::string IdentifierOf(VRELTaskEvent& event) {
  VRELString identifier(L"untouched");
  VRINResult const result = event.GetTaskIdentifier(identifier);
  if (result == VREL_S_OK) return identifier.toUtf8();
  EXPECT_EQ(result, VREL_E_FAIL);
  EXPECT_EQ(identifier.toUtf8(), "untouched");
  return "(none)";
}

// Returns the formatted description of the event.
inline std::string DescriptionOf(VRELEvent& event) {
  return TextOf([&](VRELOutputStream* stream) { event.GetFormattedDescription(stream); });
}
inline std::string DescriptionOf(VRELEvent&& event) {
  return DescriptionOf(event);
}

// Also sends the event, so that the bus sets its time stamps.
inline void ExpectTaskEvent(VRELTaskEvent& event, int kind, char const* name, char const* identifier, int level = 50) {
  EXPECT_STREQ(event.GetEventName(), name);
  EXPECT_STREQ(event.GetTaskName(), name);
  EXPECT_TRUE(event.IsA(name));
  EXPECT_TRUE(event.IsKindOf("VRELEvent"));
  EXPECT_FALSE(event.IsKindOf(name));
  EXPECT_EQ(IdentifierOf(event), identifier);
  EXPECT_EQ(event.GetKind(), kind);
  EXPECT_EQ(event.GetLevel(), level);
  EXPECT_TRUE(event.IsTimed());
  long ticks = 0;
  long seconds = 0;
  EXPECT_EQ(event.GetClock(ticks), VREL_E_FAIL);
  EXPECT_EQ(event.GetTime(seconds), VREL_E_FAIL);
  long const ticksBefore = std::clock();
  long const secondsBefore = std::time(nullptr);
  VRELEventBus::Fire(event);
  EXPECT_EQ(event.GetClock(ticks), VREL_S_OK);
  EXPECT_EQ(event.GetTime(seconds), VREL_S_OK);
  EXPECT_GE(ticks, ticksBefore);
  EXPECT_LE(ticks, std::clock());
  EXPECT_GE(seconds, secondsBefore);
  EXPECT_LE(seconds, std::time(nullptr));
}
