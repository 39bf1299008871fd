#include "VRELTaskEvent.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

#include "TaskEventFacts.h"
#include "VRELStartTaskEvent.h"
#include "VirtualSlot.h"

namespace {

class Task : public VRELTaskEvent {
 public:
  using VRELTaskEvent::VRELTaskEvent;
  int GetKind() override { return 2; }
  static void Write(VRELOutputStream* stream, std::string const& text) { WriteText(stream, text); }
};

TEST(VRELTaskEventTest, IsAbstractAndTimed) {
  EXPECT_TRUE(std::is_abstract_v<VRELTaskEvent>);
  Task task("Meshing", "Mesh", VREL_LEVEL_VERBOSE);
  ExpectTaskEvent(task, 2, "Meshing", "Mesh", 30);
  EXPECT_EQ(DescriptionOf(task), "");
}

TEST(VRELTaskEventTest, CopiesStrings) {
  std::string name = "Meshing";
  std::string identifier = "Mesh";
  Task const task(name.c_str(), identifier.c_str(), VREL_LEVEL_INFO);
  name[0] = 'X';
  identifier[0] = 'X';
  EXPECT_STREQ(task.GetTaskName(), "Meshing");
  EXPECT_STREQ(task.GetEventName(), "Meshing");
  EXPECT_NE(task.GetTaskName(), task.GetEventName());
  EXPECT_EQ(IdentifierOf(const_cast<Task&>(task)), "Mesh");
}

TEST(VRELTaskEventTest, EmptyStringsAreNull) {
  for (char const* const text : {static_cast<char const*>(nullptr), ""}) {
    Task task(text, text, VREL_LEVEL_INFO);
    EXPECT_EQ(task.GetEventName(), nullptr);
    EXPECT_EQ(task.GetTaskName(), nullptr);
    EXPECT_EQ(IdentifierOf(task), "(none)");
  }
}

TEST(VRELTaskEventTest, SettersIgnoreNullAndEmpty) {
  Task task("Meshing", "Mesh", VREL_LEVEL_INFO);
  task.SetTaskName(nullptr);
  task.SetTaskName("");
  task.SetTaskIdentifier(nullptr);
  task.SetTaskIdentifier("");
  EXPECT_STREQ(task.GetTaskName(), "Meshing");
  EXPECT_EQ(IdentifierOf(task), "Mesh");
  task.SetTaskName("Fine Meshing");
  task.SetTaskIdentifier("Fine 100%");
  EXPECT_STREQ(task.GetTaskName(), "Fine Meshing");
  EXPECT_STREQ(task.GetEventName(), "Meshing");
  EXPECT_EQ(IdentifierOf(task), "Fine 100%");
  // The event's own string, which is released by the call.
  task.SetTaskName(task.GetTaskName() + 5);
  EXPECT_STREQ(task.GetTaskName(), "Meshing");

  Task bare(nullptr, nullptr, VREL_LEVEL_INFO);
  bare.SetTaskName("Late");
  bare.SetTaskIdentifier("Late");
  EXPECT_STREQ(bare.GetTaskName(), "Late");
  EXPECT_EQ(bare.GetEventName(), nullptr);
  EXPECT_EQ(IdentifierOf(bare), "Late");
}

TEST(VRELTaskEventTest, CopyIsDeep) {
  auto source = std::make_unique<Task>("Meshing", "Mesh", VREL_LEVEL_VERBOSE);
  source->SetTaskName("Fine");
  source->SetClock(5);
  Task copy(*source);
  EXPECT_NE(copy.GetTaskName(), source->GetTaskName());
  source.reset();
  EXPECT_STREQ(copy.GetTaskName(), "Fine");
  EXPECT_STREQ(copy.GetEventName(), "Meshing");
  EXPECT_EQ(IdentifierOf(copy), "Mesh");
  EXPECT_EQ(copy.GetLevel(), VREL_LEVEL_VERBOSE);
  long ticks = 0;
  EXPECT_EQ(copy.GetClock(ticks), VREL_S_OK);
  EXPECT_EQ(ticks, 5);
  Task const empty(nullptr, nullptr, VREL_LEVEL_INFO);
  Task copyOfEmpty(empty);
  EXPECT_EQ(IdentifierOf(copyOfEmpty), "(none)");
  EXPECT_FALSE(std::is_copy_assignable_v<VRELTaskEvent>);
}

// A logger writes each text with one system call.
TEST(VRELTaskEventTest, WriteTextWritesOnce) {
  class Stream : public VRELOutputStream {
   public:
    int write(char const* buffer, int count) override {
      calls += "write " + std::string(buffer, static_cast<std::size_t>(count)) + ";";
      return count;
    }
    void flush() override { calls += "flush;"; }
    void close() override { calls += "close;"; }
    std::string calls;
  };
  Stream stream;
  Task::Write(&stream, "100%s\n");
  Task::Write(&stream, "");
  Task::Write(nullptr, "lost");
  EXPECT_EQ(stream.calls, "write 100%s\n;flush;flush;");
}

TEST(VRELTaskEventTest, KeepsSlotsAndSize) {
  EXPECT_EQ(SlotOf(&VRELTaskEvent::IsTimed), SlotOf(&VRELEvent::IsTimed));
  EXPECT_EQ(SlotOf(&VRELTaskEvent::GetTaskIdentifier), SlotOf(&VRELEvent::IsTimed) + 1);
  EXPECT_EQ(SlotOf(&VRELTaskEvent::GetKind), SlotOf(&VRELEvent::IsTimed) + 2);
  EXPECT_EQ(sizeof(VRELTaskEvent), sizeof(VRELEvent) + 2 * sizeof(char*));
}

}  // namespace
