#include "VRELEvent.h"

#include <cstring>
#include <string_view>

#include "VRELString.h"
#include "VRELTextCopy.h"

namespace {

struct LevelKeyword {
  std::u16string_view keyword;
  VRELEventLevel level;
};

constexpr LevelKeyword kLevelKeywords[] = {
    {u"ALL", VREL_LEVEL_ALL},     {u"ABORT", VREL_LEVEL_ABORT},     {u"DEBUG", VREL_LEVEL_DEBUG},
    {u"ERROR", VREL_LEVEL_ERROR}, {u"INFO", VREL_LEVEL_INFO},       {u"NONE", VREL_LEVEL_NONE},
    {u"TEST", VREL_LEVEL_TEST},   {u"VERBOSE", VREL_LEVEL_VERBOSE},
};

}  // namespace

VRELEvent::VRELEvent(char const* name, VRELEventLevel level)
    : VRELObject("VRELEvent"),
      eventName(VRELTextCopy(name)),
      eventLevel(level),
      stamped(false),
      timeStamp(0),
      clockStamp(0) {}

VRELEvent::VRELEvent(VRELEvent const& other)
    : VRELObject(other),
      eventName(VRELTextCopy(other.eventName)),
      eventLevel(other.eventLevel),
      stamped(other.stamped),
      timeStamp(other.timeStamp),
      clockStamp(other.clockStamp) {}

VRELEvent::~VRELEvent() {
  delete[] eventName;
}

void VRELEvent::GetFormattedDescription(VRELOutputStream* /*stream*/) {}

bool VRELEvent::IsTimed() {
  return false;
}

void VRELEvent::SetEventName(char const* name) {
  VRELTextReplace(eventName, name);
}

bool VRELEvent::IsA(char const* name) const noexcept {
  return eventName != nullptr && name != nullptr && std::strcmp(eventName, name) == 0;
}

VRELEventLevel VRELEvent::GetLevel(VRELString const& keyword, VRELEventLevel fallback) {
  std::u16string_view const word = keyword.view();
  for (LevelKeyword const& candidate : kLevelKeywords) {
    if (word == candidate.keyword) return candidate.level;
  }
  return fallback;
}

VRINResult VRELEvent::SetClock(long const& ticks) noexcept {
  clockStamp = ticks;
  stamped = true;
  return VREL_S_OK;
}

VRINResult VRELEvent::SetTime(long const& seconds) noexcept {
  timeStamp = seconds;
  stamped = true;
  return VREL_S_OK;
}

VRINResult VRELEvent::GetClock(long& ticks) const noexcept {
  ticks = clockStamp;
  return StampResult();
}

VRINResult VRELEvent::GetTime(long& seconds) const noexcept {
  seconds = timeStamp;
  return StampResult();
}

VRINResult VRELEvent::StampResult() const noexcept {
  return stamped ? VREL_S_OK : VREL_E_FAIL;
}
