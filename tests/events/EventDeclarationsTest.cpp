// Declarations, field offsets and virtual tables of events, listeners, channels and errors.
#include <gtest/gtest.h>

#include <type_traits>

#include "Declaration.h"
#include "Gk_ErrMgr.h"
#include "VRELAssert.h"
#include "VRELAssertEvent.h"
#include "VRELDebug.h"
#include "VRELDebugEvent.h"
#include "VRELErrorEvent.h"
#include "VRELErrorTracker.h"
#include "VRELEventBus.h"
#include "VRELInfo.h"
#include "VRELMessageEvent.h"
#include "VRELTest.h"
#include "VRELTestEvent.h"
#include "VRELVerbose.h"
#include "VRELVerboseEvent.h"
#include "VRELWarning.h"
#include "VRELWarningEvent.h"
#include "VirtualSlot.h"

namespace {

// The attribute of printf functions is not part of their type.
#pragma GCC diagnostic ignored "-Wignored-attributes"

#define DECLARED(member, type) static_assert(std::is_same_v<decltype(&member), type>)
#define OVERLOADED(member, type) static_assert(std::is_same_v<decltype(static_cast<type>(&member)), type>)

using Printf = void (*)(char const*, ...);

OVERLOADED(VRELEvent::GetLevel, VRELEventLevel (VRELEvent::*)() const noexcept);
OVERLOADED(VRELEvent::GetLevel, VRELEventLevel (*)(VRELString const&, VRELEventLevel));
DECLARED(VRELEvent::GetEventName, char const* (VRELEvent::*)() const noexcept);
DECLARED(VRELEvent::SetEventName, void (VRELEvent::*)(char const*));
DECLARED(VRELEvent::IsA, bool (VRELEvent::*)(char const*) const noexcept);
DECLARED(VRELEvent::GetFormattedDescription, void (VRELEvent::*)(VRELOutputStream*));
DECLARED(VRELEvent::IsTimed, bool (VRELEvent::*)());
DECLARED(VRELEvent::SetClock, VRINResult (VRELEvent::*)(long const&) noexcept);
DECLARED(VRELEvent::SetTime, VRINResult (VRELEvent::*)(long const&) noexcept);
DECLARED(VRELEvent::GetClock, VRINResult (VRELEvent::*)(long&) const noexcept);
DECLARED(VRELEvent::GetTime, VRINResult (VRELEvent::*)(long&) const noexcept);
static_assert(std::is_base_of_v<VRELObject, VRELEvent>);
static_assert(std::is_constructible_v<VRELEvent, char const*, VRELEventLevel>);

DECLARED(VRELEventListener::HandleEvent, void (VRELEventListener::*)(VRELEvent&));
static_assert(std::is_abstract_v<VRELEventListener> && std::has_virtual_destructor_v<VRELEventListener>);

DECLARED(VRELEventBus::GetEventBus, VRELEventBus* (*)() noexcept);
DECLARED(VRELEventBus::AddListener, void (VRELEventBus::*)(VRELEventListener*));
DECLARED(VRELEventBus::RemoveListener, void (VRELEventBus::*)(VRELEventListener*));
DECLARED(VRELEventBus::Send, void (VRELEventBus::*)(VRELEvent&));
DECLARED(VRELEventBus::Fire, void (*)(VRELEvent&));
DECLARED(VRELEventBus::_eventBus, VRELEventBus*);

template <class Event>
constexpr bool IsMessageEvent() {
  static_assert(std::is_base_of_v<VRELTextEvent, Event> && std::is_base_of_v<VRELEvent, Event>);
  static_assert(std::is_copy_constructible_v<Event> && std::is_constructible_v<Event, va_list, char const*>);
  static_assert(std::is_constructible_v<Event, char const*> &&
                std::is_constructible_v<Event, char const*, int, double>);
  static_assert(std::is_same_v<decltype(static_cast<Printf>(&Event::Fire)), Printf>);
  return true;
}
static_assert(IsMessageEvent<VRELErrorEvent>() && IsMessageEvent<VRELWarningEvent>());
static_assert(IsMessageEvent<VRELMessageEvent>() && IsMessageEvent<VRELVerboseEvent>());
static_assert(IsMessageEvent<VRELTestEvent>() && IsMessageEvent<VRELDebugEvent>() && IsMessageEvent<VRELAssertEvent>());
static_assert(std::is_constructible_v<VRELMessageEvent, char const*, bool, int>);
DECLARED(VRELErrorEvent::GetError, VRELError* (VRELErrorEvent::*)());
OVERLOADED(VRELErrorEvent::Fire, VRINResult (*)(VRELError&, char const*, int));
OVERLOADED(VRELWarningEvent::Fire, void (*)(int, char const*, ...));

template <class Channel>
constexpr bool IsIndentedChannel() {
  static_assert(std::is_default_constructible_v<Channel> && std::has_virtual_destructor_v<Channel>);
  static_assert(std::is_same_v<decltype(&Channel::Printf), Printf>);
  static_assert(std::is_same_v<decltype(&Channel::NoTabPrintf), Printf>);
  static_assert(std::is_same_v<decltype(&Channel::Tab), void (*)() noexcept>);
  static_assert(std::is_same_v<decltype(&Channel::Untab), void (*)() noexcept>);
  static_assert(std::is_invocable_v<decltype(&Channel::Print4x4Matrix), float*>);
  static_assert(std::is_invocable_v<decltype(&Channel::Print3x4Matrix), double*>);
  static_assert(std::is_invocable_v<decltype(&Channel::PrintPointArray), float*, int>);
  return true;
}
static_assert(IsIndentedChannel<VRELWarning>() && IsIndentedChannel<VRELInfo>() && IsIndentedChannel<VRELVerbose>());
static_assert(IsIndentedChannel<VRELTest>());
DECLARED(VRELInfo::PrintfAsItIs, Printf);
DECLARED(VRELInfo::Print3x3Matrix, void (*)(float const*));
DECLARED(VRELDebug::NoTabPrintf, Printf);
DECLARED(VRELDebug::StartTimer, void* (*)());
DECLARED(VRELDebug::StopTimer, float (*)(void*));
static_assert(std::is_same_v<decltype(&VRELDebug::Tab), void (*)() noexcept>);
static_assert(std::is_same_v<decltype(&VRELAssert::Printf), Printf>);
static_assert(std::is_default_constructible_v<class VRELAssert> && std::has_virtual_destructor_v<class VRELAssert>);
static_assert(
    std::is_same_v<decltype(static_cast<void (*)(bool, char const*)>(&::VRELAssert)), void (*)(bool, char const*)>);
static_assert(std::is_same_v<decltype(&VRELError_Printf), Printf>);
static_assert(std::is_same_v<decltype(&VRELInfo_NoTabPrintf), Printf>);
static_assert(std::is_same_v<decltype(&VRELDebug_Tab), void (*)()>);
static_assert(std::is_same_v<decltype(&VRELDebug_Untab), void (*)()>);
static_assert(std::is_same_v<decltype(&VRELTest_Tab), void (*)()>);
static_assert(std::is_same_v<decltype(&VRELTest_Untab), void (*)()>);
static_assert(std::is_same_v<decltype(_VRELInfoTab), int> && std::is_same_v<decltype(_VRELTraceTab), int>);
static_assert(std::is_same_v<decltype(_VRELWarningTab), int> && std::is_same_v<decltype(_VRELVerboseTab), int>);
static_assert(std::is_same_v<decltype(_VRELTestTab), int>);

DECLARED(VRELError::SetDescription, VRINResult (VRELError::*)(VRELString&));
DECLARED(VRELError::GetDescription, VRINResult (VRELError::*)(VRELString&));
DECLARED(VRELError::GetFormattedDescription, void (VRELError::*)(VRELOutputStream*));
DECLARED(VRELError::GetErrorType, long (VRELError::*)() const noexcept);
DECLARED(VRELError::SetSourceFileInfo, void (VRELError::*)(char const*, int));
DECLARED(VRELError::Printf, Printf);
DECLARED(VRELError::GetLastError, VRELError* (*)());
DECLARED(VRELError::GetErrorCount, int (*)());
DECLARED(VRELError::FAIL_ERROR, VRELError*);
static_assert(std::is_same_v<decltype(static_cast<VRELError* (*)(int)>(&GetError)), VRELError* (*)(int)>);

DECLARED(VRELErrorTracker::Initialize, VRINResult (*)());
DECLARED(VRELErrorTracker::GetInstance, VRELErrorTracker* (*)() noexcept);
DECLARED(VRELErrorTracker::Reset, VRINResult (*)());
DECLARED(VRELErrorTracker::GetErrorCount, int (VRELErrorTracker::*)() const);
DECLARED(VRELErrorTracker::GetError, VRELError* (VRELErrorTracker::*)(int));
DECLARED(VRELErrorTracker::GetLastError, VRELError* (VRELErrorTracker::*)());
DECLARED(VRELErrorTracker::ClearErrorList, void (VRELErrorTracker::*)());
DECLARED(VRELErrorTracker::_pTracker, VRELErrorTracker**);

DECLARED(Gk_ErrMgr::setAbort, void (*)() noexcept);
DECLARED(Gk_ErrMgr::shouldAbort, bool (*)() noexcept);
DECLARED(Gk_ErrMgr::checkAbort, void (*)());
DECLARED(Gk_ErrMgr::raise, void (*)(Gk_Exception const&));
DECLARED(Gk_ErrMgr::doAssert, void (*)(char const*, int));
DECLARED(Gk_ErrMgr::trap, void (*)());

TEST(EventDeclarationsTest, EventFieldsHaveOffsets) {
  VRELEvent event("name", VREL_LEVEL_ERROR);
  EXPECT_EQ(sizeof event, 56u);
  EXPECT_EQ(FieldAt<char const*>(event, 24), event.GetEventName());
  EXPECT_EQ(FieldAt<int>(event, 32), 80);
  EXPECT_EQ(FieldAt<bool>(event, 36), false);
  event.SetTime(0x1234);
  event.SetClock(0x5678);
  EXPECT_EQ(FieldAt<bool>(event, 36), true);
  EXPECT_EQ(FieldAt<long>(event, 40), 0x1234);
  EXPECT_EQ(FieldAt<long>(event, 48), 0x5678);
}

TEST(EventDeclarationsTest, MessageEventFieldsHaveOffsets) {
  VRELErrorEvent error("text");
  EXPECT_EQ(sizeof error, 72u);
  EXPECT_EQ(FieldAt<char const*>(error, 56), error.GetMessage());
  EXPECT_EQ(FieldAt<VRELError*>(error, 64), &VRELError::FAIL_ERROR);
  VRELMessageEvent const message("text");
  EXPECT_EQ(sizeof message, 72u);
  EXPECT_EQ(FieldAt<char const*>(message, 56), message.GetMessage());
  EXPECT_EQ(FieldAt<bool>(message, 64), true);
  EXPECT_EQ(FieldAt<bool>(VRELMessageEvent("text", false), 64), false);
  VRELWarningEvent const warning("text");
  EXPECT_EQ(FieldAt<char const*>(warning, 56), warning.GetMessage());
  EXPECT_EQ(sizeof(VRELWarningEvent), 64u);
  EXPECT_EQ(sizeof(VRELVerboseEvent), 64u);
  EXPECT_EQ(sizeof(VRELTestEvent), 64u);
  EXPECT_EQ(sizeof(VRELDebugEvent), 64u);
  EXPECT_EQ(sizeof(VRELAssertEvent), 64u);
}

TEST(EventDeclarationsTest, ErrorFieldsHaveOffsets) {
  VRELError error(VREL_E_FILE_OPEN, L"text");
  error.SetSourceFileInfo("file", 12);
  EXPECT_EQ(FieldAt<long>(error, 8), VREL_E_FILE_OPEN);
  EXPECT_EQ(OffsetOf(error, error.GetSourceFile()), 16 + sizeof(VRELString));
  EXPECT_EQ(FieldAt<int>(error, 16 + 2 * sizeof(VRELString)), 12);
  EXPECT_EQ(sizeof(VRELErrorTracker), 16u);
  EXPECT_EQ(sizeof(VRELEventBus), 8u);
  EXPECT_EQ(sizeof(VRELEventListener), 8u);
}

TEST(EventDeclarationsTest, VirtualFunctionsHaveSlots) {
  EXPECT_EQ(SlotOf(&VRELEvent::GetFormattedDescription), 6u);
  EXPECT_EQ(SlotOf(&VRELEvent::IsTimed), 7u);
  EXPECT_EQ(SlotOf(&VRELErrorEvent::GetFormattedDescription), 6u);
  EXPECT_EQ(SlotOf(&VRELErrorEvent::IsTimed), 7u);
  EXPECT_EQ(SlotOf(&VRELErrorEvent::GetError), 8u);
  EXPECT_EQ(SlotOf(&VRELWarningEvent::GetFormattedDescription), 6u);
  EXPECT_EQ(SlotOf(&VRELMessageEvent::GetFormattedDescription), 6u);
  EXPECT_EQ(SlotOf(&VRELVerboseEvent::GetFormattedDescription), 6u);
  EXPECT_EQ(SlotOf(&VRELTestEvent::GetFormattedDescription), 6u);
  EXPECT_EQ(SlotOf(&VRELDebugEvent::GetFormattedDescription), 6u);
  EXPECT_EQ(SlotOf(&VRELAssertEvent::GetFormattedDescription), 6u);
  EXPECT_EQ(SlotOf(&VRELEventListener::HandleEvent), 0u);
  EXPECT_EQ(SlotOf(&VRELErrorTracker::HandleEvent), 0u);
  EXPECT_EQ(SlotOf(&VRELErrorTracker::GetLastError), 3u);
  EXPECT_EQ(SlotOf(&VRELError::SetDescription), 2u);
  EXPECT_EQ(SlotOf(&VRELError::GetDescription), 3u);
  EXPECT_EQ(SlotOf(&VRELError::GetFormattedDescription), 4u);
}

}  // namespace
