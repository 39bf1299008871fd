// Declarations of the classes in logging/: types of all public operations, offsets of fields and slots of virtual
// operations.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <ctime>
#include <string>
#include <type_traits>

#include "Declaration.h"
#include "Gk_CPUTime.h"
#include "Gk_DoubleObserver.h"
#include "Gk_IntObserver.h"
#include "Gk_ObsWraper.h"
#include "Gk_Observable.h"
#include "Gk_ObservableDoc.h"
#include "Gk_ProgressObserver.h"
#include "Gk_StringObserver.h"
#include "VRELBasePerformanceMonitor.h"
#include "VRELCallbackShared.h"
#include "VRELConsoleLogger.h"
#include "VRELEndOptionsTaskEvent.h"
#include "VRELEndPostprocessDocumentEvent.h"
#include "VRELEndPreprocessDocumentEvent.h"
#include "VRELEndProductEvent.h"
#include "VRELEndReadEntitiesTaskEvent.h"
#include "VRELEndReadFileTaskEvent.h"
#include "VRELEndTranslationTaskEvent.h"
#include "VRELEndWriteFileTaskEvent.h"
#include "VRELEntityCallback.h"
#include "VRELFileHeader.h"
#include "VRELLogFileWrapper.h"
#include "VRELPerfTrackerStatus.h"
#include "VRELStartConversionStageEvent.h"
#include "VRELStartConversionTaskEvent.h"
#include "VRELStartOptionsTaskEvent.h"
#include "VRELStartPostprocessDocumentEvent.h"
#include "VRELStartPreprocessDocumentEvent.h"
#include "VRELStartProductEvent.h"
#include "VRELStartReadEntitiesTaskEvent.h"
#include "VRELStartReadFileTaskEvent.h"
#include "VRELStartTranslateRepairEvent.h"
#include "VRELStartWriteFileTaskEvent.h"
#include "VRELStringOutputStream.h"
#include "VRELThirdPartyProgressEvent.h"
#include "VRELTimingLogger.h"
#include "VRELTrace.h"
#include "VirtualSlot.h"

namespace {

namespace loggers {
using Logger = VRELLogger;
static_assert(IsDeclared<void (Logger::*)(VRELEvent&)>(&Logger::HandleEvent));
static_assert(IsDeclared<void (Logger::*)(VRELFilePath&, VRELEventLevel)>(&Logger::Initialize));
static_assert(IsDeclared<void (Logger::*)(std::FILE*, VRELEventLevel)>(&Logger::Initialize));
static_assert(IsDeclared<void (Logger::*)(VRELOutputStream*, VRELEventLevel)>(&Logger::Initialize));
static_assert(IsDeclared<void (Logger::*)()>(&Logger::Finalize));
static_assert(IsDeclared<VRELOutputStream* (Logger::*)() const>(&Logger::GetOutputStream));
static_assert(std::is_base_of_v<VRELEventListener, Logger> && std::is_default_constructible_v<Logger>);

using Console = VRELConsoleLogger;
static_assert(IsDeclared<void (Console::*)(VRELEvent&)>(&Console::HandleEvent));
static_assert(IsDeclared<void (Console::*)(VRELEventLevel)>(&Console::Initialize));
static_assert(IsDeclared<void (*)(VRELEventLevel)>(&Console::SetUp));
static_assert(IsDeclared<bool (Console::*)() const>(&Console::IsInitialized));
static_assert(std::is_same_v<decltype(Console::_console), Console> && std::is_base_of_v<Logger, Console>);

using Wrapper = VRELLogFileWrapper;
static_assert(std::is_constructible_v<Wrapper, std::FILE*> && std::is_constructible_v<Wrapper, bool>);
static_assert(std::is_constructible_v<Wrapper, VRELFilePath const&> && !std::is_polymorphic_v<Wrapper>);
static_assert(!std::is_constructible_v<Wrapper, char const*> && !std::is_constructible_v<Wrapper, wchar_t const*>);

static_assert(std::is_constructible_v<VRELTrace, char const*> && std::has_virtual_destructor_v<VRELTrace>);
static_assert(IsDeclared<void (VRELTrace::*)(VRELTraceLevel, char const*, ...) const>(&VRELTrace::Printf));
static_assert(std::is_same_v<std::underlying_type_t<VRELTraceLevel>, int>);
}  // namespace loggers

namespace tasks {
using Task = VRELTaskEvent;
static_assert(IsDeclared<bool (Task::*)()>(&Task::IsTimed));
static_assert(IsDeclared<VRINResult (Task::*)(VRELString&)>(&Task::GetTaskIdentifier));
static_assert(IsDeclared<int (Task::*)()>(&Task::GetKind));
static_assert(IsDeclared<void (Task::*)(char const*)>(&Task::SetTaskIdentifier));
static_assert(IsDeclared<void (Task::*)(char const*)>(&Task::SetTaskName));
static_assert(std::is_abstract_v<Task> && std::is_base_of_v<VRELEvent, Task>);

using Start = VRELStartTaskEvent;
using End = VRELEndTaskEvent;
static_assert(IsDeclared<void (*)(char const*, char const*, VRELEventLevel)>(&Start::Fire));
static_assert(IsDeclared<void (*)(VRINResult const&, char const*, char const*, VRELEventLevel, bool)>(&End::Fire));
static_assert(IsDeclared<void (End::*)(VRINResult const&)>(&End::setTaskResult));
static_assert(IsDeclared<VRINResult (End::*)() const>(&End::getTaskResult));
static_assert(std::is_constructible_v<End, VRINResult&, char const*, char const*, VRELEventLevel, bool>);
static_assert(sizeof(Start) == sizeof(Task));

// Whether the event derives singly from `Base`, can be created from the arguments and can be copied.
template <class Event, class Base, class... Arguments>
constexpr bool IsTaskEvent() {
  static_assert(std::is_base_of_v<Base, Event> && std::is_convertible_v<Event*, Base*>);
  static_assert(std::is_constructible_v<Event, Arguments...>);
  static_assert(std::is_copy_constructible_v<Event>);
  return true;
}
static_assert(IsTaskEvent<Start, Task, char const*, char const*, VRELEventLevel>());
static_assert(IsTaskEvent<End, Task, VRINResult&, char const*, char const*, VRELEventLevel, bool>());
static_assert(IsTaskEvent<VRELStartProductEvent, Start, char const*, char const*>());
static_assert(IsTaskEvent<VRELStartOptionsTaskEvent, Start>());
static_assert(IsTaskEvent<VRELStartReadFileTaskEvent, Start, VRELString&>());
static_assert(IsTaskEvent<VRELStartReadFileTaskEvent, Start, char const*>());
static_assert(IsTaskEvent<VRELStartPreprocessDocumentEvent, Start, bool>());
static_assert(IsTaskEvent<VRELStartReadEntitiesTaskEvent, Start>());
static_assert(IsTaskEvent<VRELStartConversionTaskEvent, Start>());
static_assert(IsTaskEvent<VRELStartConversionStageEvent, Start, char*, int, double, bool>());
static_assert(IsTaskEvent<VRELStartTranslateRepairEvent, Start, char const*, char const*, int, VRELEventLevel>());
static_assert(IsTaskEvent<VRELStartPostprocessDocumentEvent, Start>());
static_assert(IsTaskEvent<VRELStartWriteFileTaskEvent, Start, VRELFilePath&>());
static_assert(IsTaskEvent<VRELEndReadFileTaskEvent, End, VRINResult&, VRELFileHeader*>());
static_assert(IsTaskEvent<VRELEndPreprocessDocumentEvent, End, VRINResult&, bool>());
static_assert(IsTaskEvent<VRELEndReadEntitiesTaskEvent, End, VRINResult&>());
static_assert(IsTaskEvent<VRELEndPostprocessDocumentEvent, End, VRINResult&>());
static_assert(IsTaskEvent<VRELEndWriteFileTaskEvent, End, VRELString const&, VRINResult&>());
static_assert(IsTaskEvent<VRELEndTranslationTaskEvent, End, VRINResult&, bool, int>());
static_assert(IsTaskEvent<VRELEndProductEvent, End, VRINResult&>());
static_assert(std::is_abstract_v<VRELEndOptionsTaskEvent> && std::is_base_of_v<End, VRELEndOptionsTaskEvent>);
static_assert(std::is_copy_constructible_v<VRELThirdPartyProgressEvent>);
static_assert(std::is_base_of_v<VRELEvent, VRELThirdPartyProgressEvent>);

using Product = VRELStartProductEvent;
using Stage = VRELStartConversionStageEvent;
using Repair = VRELStartTranslateRepairEvent;
using Progress = VRELThirdPartyProgressEvent;
static_assert(IsDeclared<VRINResult (Product::*)(char const*, char const*)>(&Product::AddOption));
static_assert(IsDeclared<void (Stage::*)()>(&Stage::SetFinished));
static_assert(IsDeclared<bool (Stage::*)() const>(&Stage::GetFinished));
static_assert(IsDeclared<char const* (Stage::*)() const>(&Stage::GetEntityType));
static_assert(IsDeclared<int (Stage::*)() const>(&Stage::GetEntityCount));
static_assert(IsDeclared<double (Stage::*)() const>(&Stage::GetStagePercent));
static_assert(IsDeclared<bool (Stage::*)() const>(&Stage::GetLeaf));
static_assert(IsDeclared<char const* (Repair::*)() const>(&Repair::GetEntityType));
static_assert(IsDeclared<int (Repair::*)() const>(&Repair::GetEntityNumber));
static_assert(IsDeclared<char const* (Repair::*)() const>(&Repair::GetRepresentation));
static_assert(IsDeclared<void (*)(char const*, char const*, int)>(&Repair::Fire));
static_assert(IsDeclared<void (*)()>(&VRELStartOptionsTaskEvent::Fire));
static_assert(IsDeclared<void (*)()>(&VRELStartConversionTaskEvent::Fire));
static_assert(IsDeclared<void (*)(VRELString const&)>(&VRELStartReadFileTaskEvent::Fire));
static_assert(IsDeclared<void (*)(char const*)>(&VRELStartReadFileTaskEvent::Fire));
static_assert(IsDeclared<void (*)(VRINResult const&, bool)>(&VRELEndTranslationTaskEvent::Fire));
static_assert(IsDeclared<void (*)(long, bool)>(&VRELEndTranslationTaskEvent::Fire));
static_assert(IsDeclared<VRINResult (Progress::*)(double&) const>(&Progress::GetProgress));
static_assert(IsDeclared<void (*)(double)>(&Progress::Fire));
}  // namespace tasks

namespace timing {
using Timer = VRELTimingLogger;
static_assert(IsDeclared<void (Timer::*)(VRELEvent&)>(&Timer::HandleEvent));
static_assert(IsDeclared<void (*)()>(&Timer::SetUp));
static_assert(IsDeclared<void (*)()>(&Timer::Stop));
static_assert(IsDeclared<void (Timer::*)()>(&Timer::Initialize));
static_assert(IsDeclared<void (Timer::*)()>(&Timer::Finalize));
static_assert(std::is_same_v<decltype(Timer::_timer), Timer> && std::is_same_v<decltype(Timer::_isTimerOn), bool>);
static_assert(std::is_same_v<decltype(Timer::_pMonitor), VRELBasePerformanceMonitor*>);
static_assert(std::is_same_v<decltype(Timer::_detailedTaskInfo), bool>);

using Monitor = VRELBasePerformanceMonitor;
static_assert(IsDeclared<VRINResult (Monitor::*)()>(&Monitor::PrintStatistics));
static_assert(IsDeclared<VRINResult (Monitor::*)(double&, double&)>(&Monitor::QueryProcessTimes));
static_assert(IsDeclared<Monitor* (*)()>(&Monitor::Instance));
static_assert(IsDeclared<void (*)()>(&Monitor::Clear));
static_assert(sizeof(Monitor) == sizeof(void*));

using Status = VRELPerfTrackerStatus;
static_assert(IsDeclared<bool (Status::*)() const>(&Status::IsPerfTracking));
static_assert(IsDeclared<void (Status::*)(bool)>(&Status::SetPerfTracking));
static_assert(std::is_same_v<decltype(Status::instance), Status> && std::has_virtual_destructor_v<Status>);

static_assert(IsDeclared<Gk_CPUTime& (Gk_CPUTime::*)(Gk_CPUTime const&)>(&Gk_CPUTime::operator-=));
static_assert(IsDeclared<Gk_CPUTime& (Gk_CPUTime::*)(Gk_CPUTime const&)>(&Gk_CPUTime::operator+=));
static_assert(IsDeclared<double (Gk_CPUTime::*)() const>(&Gk_CPUTime::seconds));
static_assert(IsDeclared<Gk_CPUTime (*)()>(&Gk_CPUTime::now));
static_assert(std::is_convertible_v<long, Gk_CPUTime> && sizeof(Gk_CPUTime) == sizeof(long));

static_assert(sizeof(VRELTaskTimingInfo) == sizeof(VRELString) + 32);
static_assert(offsetof(VRELTaskOccurenceInfo, count) == 0 && offsetof(VRELTaskOccurenceInfo, elapsed) == 8);
static_assert(offsetof(VRELTaskOccurenceInfo, kernel) == 16 && offsetof(VRELTaskOccurenceInfo, user) == 24);
static_assert(sizeof(VRELTaskOccurenceInfo) == 32);
}  // namespace timing

namespace observers {
using Wraper = Gk_ObsWraper;
static_assert(IsDeclared<void (Wraper::*)(int)>(&Wraper::setInt));
static_assert(IsDeclared<void (Wraper::*)(double)>(&Wraper::setDouble));
static_assert(IsDeclared<void (Wraper::*)(Gk_String)>(&Wraper::setString));
static_assert(IsDeclared<void (Wraper::*)(int)>(&Wraper::setMax));
static_assert(IsDeclared<void (Wraper::*)(int)>(&Wraper::setDone));
static_assert(IsDeclared<void (Wraper::*)()>(&Wraper::setOver));
static_assert(IsDeclared<void (Wraper::*)(int)>(&Wraper::setIntInfo));
static_assert(IsDeclared<void (Wraper::*)(double)>(&Wraper::setDoubleInfo));
static_assert(IsDeclared<void (Wraper::*)(Gk_String)>(&Wraper::setStringInfo));
static_assert(IsDeclared<void (Wraper::*)(void*, void*)>(&Wraper::setEntityCallback));
static_assert(std::is_copy_constructible_v<Wraper> && !std::is_polymorphic_v<Wraper>);

using Doc = Gk_ObservableDoc;
using Name = Gk_ROString const&;
static_assert(IsDeclared<Wraper (*)(Name, Gk_Observer::Type)>(&Doc::addObservable));
static_assert(IsDeclared<Wraper (*)(VRELString const&, Gk_Observer::Type)>(&Doc::addObservable));
static_assert(IsDeclared<Wraper (*)(Name, char const*)>(&Doc::fetchObservable));
static_assert(IsDeclared<bool (*)(Name, Gk_Observer*)>(&Doc::attachObserver));
static_assert(IsDeclared<bool (*)(Name, Gk_Observer*)>(&Doc::removeObserver));
static_assert(IsDeclared<void (*)(Name)>(&Doc::removeAllObserver));
static_assert(IsDeclared<void (*)(VRELOutputStream*)>(&Doc::installDebugStream));

using Observable = Gk_Observable;
static_assert(IsDeclared<Gk_String const& (Observable::*)() const>(&Observable::getValue));
static_assert(IsDeclared<void (Observable::*)(Gk_String const&)>(&Observable::setValue));
static_assert(IsDeclared<Observable* (*)(Name, bool)>(&Observable::fetch));
static_assert(std::has_virtual_destructor_v<Observable>);

static_assert(IsDeclared<Gk_Observer::Type (Gk_Observer::*)() const>(&Gk_Observer::getType));
static_assert(IsDeclared<void (Gk_Observer::*)() const>(&Gk_Observer::wrongType));
static_assert(IsDeclared<void (Gk_IntObserver::*)(int)>(&Gk_IntObserver::setInt));
static_assert(IsDeclared<void (Gk_DoubleObserver::*)(double)>(&Gk_DoubleObserver::setDouble));
static_assert(IsDeclared<void (Gk_StringObserver::*)(Gk_String const&)>(&Gk_StringObserver::setString));
static_assert(IsDeclared<void (Gk_ProgressObserver::*)(int)>(&Gk_ProgressObserver::setMax));
static_assert(IsDeclared<void (Gk_ProgressObserver::*)(double)>(&Gk_ProgressObserver::setOver));
static_assert(IsDeclared<void (VRELEntityCallback::*)(void*, void*)>(&VRELEntityCallback::setEntityCallback));
static_assert(sizeof(Gk_Observer) == sizeof(void*) && sizeof(VRELEntityCallback) == sizeof(void*));

static_assert(IsDeclared<bool (*)()>(&VRELCallbackShared::IsAborted));
static_assert(std::is_same_v<decltype(VRELCallbackShared::m_AbortCallback), bool (*)()>);
}  // namespace observers

// Size of VRELEvent, after which the fields of task events start.
constexpr std::size_t kTask = 56;
// End of the fields of VRELTaskEvent, after which the fields of start events start.
constexpr std::size_t kStart = kTask + 16;
// End of the fields of VRELEndTaskEvent.
constexpr std::size_t kEnd = kStart + 8;

template <class Field>
Field const& FieldOf(void const* object, std::size_t offset) {
  return *reinterpret_cast<Field const*>(static_cast<char const*>(object) + offset);
}

TEST(LoggingDeclarationsTest, TaskEventsKeepSlots) {
  EXPECT_EQ(SlotOf(&VRELTaskEvent::IsTimed), SlotOf(&VRELEvent::GetFormattedDescription) + 1);
  EXPECT_EQ(SlotOf(&VRELTaskEvent::GetTaskIdentifier), SlotOf(&VRELEvent::GetFormattedDescription) + 2);
  EXPECT_EQ(SlotOf(&VRELTaskEvent::GetKind), SlotOf(&VRELEvent::GetFormattedDescription) + 3);
  EXPECT_EQ(SlotOf(&VRELEndTaskEvent::GetFormattedDescription), SlotOf(&VRELEvent::GetFormattedDescription));
  EXPECT_EQ(SlotOf(&VRELThirdPartyProgressEvent::IsTimed), SlotOf(&VRELEvent::IsTimed));
}

TEST(LoggingDeclarationsTest, LoggersKeepSlots) {
  using Initialize = void (VRELConsoleLogger::*)(VRELEventLevel);
  EXPECT_EQ(SlotOf(&VRELLogger::HandleEvent), 0U);
  EXPECT_EQ(SlotOf(&VRELLogger::Finalize), 6U);
  EXPECT_EQ(SlotOf(static_cast<Initialize>(&VRELConsoleLogger::Initialize)), 7U);
  EXPECT_EQ(SlotOf(&VRELTimingLogger::HandleEvent), 0U);
  EXPECT_EQ(SlotOf(&VRELBasePerformanceMonitor::PrintStatistics), 2U);
  EXPECT_EQ(SlotOf(&VRELBasePerformanceMonitor::QueryProcessTimes), 3U);
}

TEST(LoggingDeclarationsTest, StartEventsKeepFieldOffsets) {
  VRELStartProductEvent const product("p", "a");
  EXPECT_EQ(FieldOf<VRELString>(&product, kStart).toUtf8(), "p");
  EXPECT_EQ(FieldOf<VRELString>(&product, kStart + sizeof(VRELString)).toUtf8(), "a");
  EXPECT_EQ(FieldOf<VRELOptions>(&product, kStart + 2 * sizeof(VRELString)).Size(), 0);

  VRELStartReadFileTaskEvent const readFile("wheel.step");
  EXPECT_STREQ(FieldAt<char const*>(readFile, kTask), "Read File");
  EXPECT_STREQ(FieldAt<char const*>(readFile, kTask + 8), "VRELStartReadFileTaskEvent");
  EXPECT_STREQ(FieldAt<char const*>(readFile, kStart), "wheel.step");

  VRELStartConversionStageEvent stage("Face", 7, 12.5, true);
  EXPECT_EQ(FieldAt<double>(stage, kStart), 12.5);
  EXPECT_STREQ(FieldAt<char const*>(stage, kStart + 8), "Face");
  EXPECT_EQ(FieldAt<int>(stage, kStart + 16), 7);
  EXPECT_FALSE(FieldAt<bool>(stage, kStart + 20));
  EXPECT_TRUE(FieldAt<bool>(stage, kStart + 21));
  stage.SetFinished();
  EXPECT_TRUE(FieldAt<bool>(stage, kStart + 20));

  char const type[] = "Edge";
  char const representation[] = "curve";
  VRELStartTranslateRepairEvent const repair(type, representation, 9, VREL_LEVEL_VERBOSE);
  EXPECT_EQ(FieldAt<char const*>(repair, kStart), type);
  EXPECT_EQ(FieldAt<char const*>(repair, kStart + 8), representation);
  EXPECT_EQ(FieldAt<int>(repair, kStart + 16), 9);

  VRELStartWriteFileTaskEvent const writeFile(VRELFilePath("out.html"));
  EXPECT_EQ(FieldOf<VRELFilePath>(&writeFile, kStart).GetPath().toUtf8(), "out.html");
}

TEST(LoggingDeclarationsTest, EndEventsKeepFieldOffsets) {
  VRELEndTaskEvent const end(VREL_E_FAIL, "Name", "Id", VREL_LEVEL_INFO, true);
  EXPECT_EQ(FieldAt<int>(end, kStart), 0x1000001);
  EXPECT_TRUE(FieldAt<bool>(end, kStart + 4));

  VRELFileHeader header;
  VRELEndReadFileTaskEvent const readFile(VREL_S_OK, &header);
  EXPECT_EQ(FieldAt<VRELFileHeader*>(readFile, kEnd), &header);

  VRELEndWriteFileTaskEvent const writeFile(L"out.html", VREL_S_OK);
  EXPECT_EQ(FieldOf<VRELString>(&writeFile, kEnd + sizeof(VRELStreamFormatter)).toUtf8(), "out.html");
  EXPECT_EQ(sizeof(VRELEndWriteFileTaskEvent), kEnd + sizeof(VRELStreamFormatter) + sizeof(VRELString));
  EXPECT_EQ(sizeof(VRELEndProductEvent), kEnd + sizeof(VRELStreamFormatter));

  VRELEndTranslationTaskEvent const translation(VREL_S_OK, true, 5);
  std::time_t const now = std::time(nullptr);
  EXPECT_EQ(FieldAt<std::tm>(translation, kEnd).tm_year, std::localtime(&now)->tm_year);
  EXPECT_EQ(FieldAt<int>(translation, kEnd + sizeof(std::tm)), 5);
  EXPECT_TRUE(FieldAt<bool>(translation, kEnd + sizeof(std::tm) + 4));

  VRELThirdPartyProgressEvent const progress(0.25);
  EXPECT_EQ(FieldAt<double>(progress, kTask), 0.25);
}

TEST(LoggingDeclarationsTest, LoggersKeepFieldOffsets) {
  VRELLogger logger;
  auto* const stream = new VRELStringOutputStream;
  logger.Initialize(stream, VREL_LEVEL_VERBOSE);
  EXPECT_EQ(FieldAt<int>(logger, 8), 30);
  EXPECT_EQ(FieldAt<void*>(logger, 16), stream);
  logger.Finalize();
  EXPECT_EQ(FieldAt<int>(logger, 8), 999);
  EXPECT_EQ(FieldAt<void*>(logger, 16), nullptr);
  EXPECT_EQ(sizeof(VRELLogger), 24U);

  VRELConsoleLogger const console;
  EXPECT_EQ(FieldAt<void*>(console, 24), nullptr);
  EXPECT_EQ(FieldAt<void*>(console, 32), nullptr);
  EXPECT_EQ(sizeof(VRELConsoleLogger), 40U);

  std::FILE* const file = std::tmpfile();
  {
    VRELLogFileWrapper const wrapper(file);
    EXPECT_EQ(FieldAt<std::FILE*>(wrapper, 0), file);
    EXPECT_NE(FieldOf<VRELLogger>(&wrapper, 8).GetOutputStream(), nullptr);
    EXPECT_TRUE(FieldAt<bool>(wrapper, 32));
  }
  std::fclose(file);
  EXPECT_EQ(sizeof(VRELLogFileWrapper), 40U);
  EXPECT_EQ(sizeof(VRELTrace), 16U);
}

TEST(LoggingDeclarationsTest, TimingClassesKeepFieldOffsets) {
  VRELTaskTimingInfo info;
  info.taskName = L"Read File";
  info.time = 1;
  info.clock = 2;
  info.kernelTime = 3;
  info.userTime = 4;
  EXPECT_EQ(FieldOf<VRELString>(&info, 0).toUtf8(), "Read File");
  EXPECT_EQ(FieldAt<long>(info, sizeof(VRELString)), 1);
  EXPECT_EQ(FieldAt<long>(info, sizeof(VRELString) + 8), 2);
  EXPECT_EQ(FieldAt<double>(info, sizeof(VRELString) + 16), 3);
  EXPECT_EQ(FieldAt<double>(info, sizeof(VRELString) + 24), 4);
  VRELPerfTrackerStatus status;
  EXPECT_FALSE(FieldAt<bool>(status, 8));
  status.SetPerfTracking(true);
  EXPECT_TRUE(FieldAt<bool>(status, 8));
  EXPECT_EQ(FieldAt<bool>(VRELTimingLogger::_timer, 8), false);
  EXPECT_TRUE(FieldOf<VRELStack>(&VRELTimingLogger::_timer, 16).IsEmpty());
  Gk_CPUTime const time(5);
  EXPECT_EQ(FieldAt<long>(time, 0), 5);
}

TEST(LoggingDeclarationsTest, ObserverClassesKeepFieldOffsets) {
  Gk_Observable observable;
  observable.setType(Gk_Observer::ProgressType);
  EXPECT_EQ(FieldAt<int>(observable, 8), 3);
  auto const* const bytes = reinterpret_cast<char const*>(&observable);
  EXPECT_EQ(static_cast<void const*>(bytes + 16), &observable.getObservers());
  EXPECT_EQ(static_cast<void const*>(bytes + 16 + sizeof(VRELHashList<Gk_Observer*>)), &observable.getValue());
  Gk_ObsWraper const wrapper(Gk_String("faces"), &observable);
  EXPECT_EQ(FieldOf<Gk_String>(&wrapper, 0).text(), "faces");
  EXPECT_EQ(FieldAt<long>(wrapper, sizeof(Gk_String)), 0);
  EXPECT_EQ(FieldAt<Gk_Observable*>(wrapper, sizeof(Gk_String) + 8), &observable);
}

}  // namespace
