#include "VRELEndReadFileTaskEvent.h"

#include <gtest/gtest.h>

#include <string>

#include "TaskEventFacts.h"
#include "VRELFileHeader.h"

namespace {

constexpr char kHeading[] = "-------------------------Source File Header Information-------------------------\n";
std::string const kRule = std::string(80, '-') + "\n";

// Records the selected models and the number of GetCount calls.
class RecordingHeader : public VRELFileHeader {
 public:
  VRINResult SelectModel(int index) override {
    calls += std::to_string(index) + " ";
    return VRELFileHeader::SelectModel(index);
  }
  std::string TakeCalls() { return std::exchange(calls, ""); }

 private:
  std::string calls;
};

TEST(VRELEndReadFileTaskEventTest, HasReadFileTask) {
  VRINResult result = VREL_E_FILE_OPEN;
  VRELEndReadFileTaskEvent event(result, nullptr);
  ExpectTaskEvent(event, 1, "File Reading", "Read File");
  EXPECT_EQ(event.getTaskResult(), VREL_E_FILE_OPEN);
  EXPECT_EQ(DescriptionOf(event), "");
}

TEST(VRELEndReadFileTaskEventTest, WritesHeaderOfOneModel) {
  RecordingHeader header;
  header.Set(VRELFileHeader::AUTHOR, L"Kim 100%s");
  header.AddSection(L"Size");
  header.Set(L"Configurations Count", VRELValue(2));
  EXPECT_EQ(DescriptionOf(VRELEndReadFileTaskEvent(VREL_E_FAIL, &header)),
            kHeading +
                std::string("Author                   : Kim 100%s\n"
                            "Size\n"
                            "Configurations Count     : 2\n") +
                kRule);
  // Once to count the rows, and once at the end.
  EXPECT_EQ(header.TakeCalls(), "0 0 ");
}

TEST(VRELEndReadFileTaskEventTest, WritesModelNumbers) {
  RecordingHeader header;
  header.Set(VRELFileHeader::AUTHOR, L"Kim");
  header.SelectModel(1);
  header.Set(VRELFileHeader::UNITS, L"mm");
  header.TakeCalls();
  EXPECT_EQ(DescriptionOf(VRELEndReadFileTaskEvent(VREL_S_OK, &header)),
            kHeading +
                std::string("Model 1\n"
                            "Author                   : Kim\n"
                            "Model 2\n"
                            "Units                    : mm\n") +
                kRule);
  EXPECT_EQ(header.TakeCalls(), "0 1 0 1 0 ");
  VRELValue author;
  EXPECT_EQ(header.Get(VRELFileHeader::AUTHOR, author), VREL_S_OK);
}

TEST(VRELEndReadFileTaskEventTest, WritesIfAnyModelHasRows) {
  VRELFileHeader header;
  header.Set(VRELFileHeader::AUTHOR, L"Kim");
  header.SelectModel(1);
  EXPECT_EQ(DescriptionOf(VRELEndReadFileTaskEvent(VREL_S_OK, &header)),
            kHeading +
                std::string("Model 1\n"
                            "Author                   : Kim\n"
                            "Model 2\n") +
                kRule);
}

TEST(VRELEndReadFileTaskEventTest, WritesNumberOfEmptyModel) {
  VRELFileHeader header;
  header.SelectModel(2);
  header.Set(VRELFileHeader::UNITS, L"mm");
  EXPECT_EQ(DescriptionOf(VRELEndReadFileTaskEvent(VREL_S_OK, &header)),
            kHeading +
                std::string("Model 1\n"
                            "Model 2\n"
                            "Model 3\n"
                            "Units                    : mm\n") +
                kRule);
}

TEST(VRELEndReadFileTaskEventTest, EmptyHeaderWritesNothing) {
  RecordingHeader header;
  EXPECT_EQ(DescriptionOf(VRELEndReadFileTaskEvent(VREL_S_OK, &header)), "");
  EXPECT_EQ(header.TakeCalls(), "0 0 ");
  header.ResizeModels(2);
  EXPECT_EQ(DescriptionOf(VRELEndReadFileTaskEvent(VREL_S_OK, &header)), "");
  EXPECT_EQ(header.TakeCalls(), "0 1 0 ");
  header.ResizeModels(0);
  EXPECT_EQ(DescriptionOf(VRELEndReadFileTaskEvent(VREL_S_OK, &header)), "");
  EXPECT_EQ(header.TakeCalls(), "0 ");
}

}  // namespace
