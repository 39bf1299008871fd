#include "VRELReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "RecordingReaders.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Document, its reader, and the recorded calls.
struct Document {
  explicit Document(bool hasBuffer = true) : format(new recording::Format(journal, hasBuffer)), reader(handle) {}

  recording::Journal journal;
  recording::Format* format;
  VRELFormatReaderHandle handle{format};
  VRELReader reader;
};

TEST(VRELReaderTest, ResultsHaveExactValues) {
  EXPECT_EQ(VREL_E_READER_NO_FORMAT, 0x1000091);
  EXPECT_EQ(VREL_E_READER_NO_HEADER, 0x1000092);
  EXPECT_EQ(VREL_E_READER_NO_DATA, 0x1000093);
  EXPECT_EQ(VREL_E_READER_NO_ENTITY, 0x1000094);
  for (long const code :
       {VREL_E_READER_NO_FORMAT, VREL_E_READER_NO_HEADER, VREL_E_READER_NO_DATA, VREL_E_READER_NO_ENTITY}) {
    EXPECT_EQ(VRINResult(code).GetCriticity(), 1);
    EXPECT_STREQ(VRINResult(code).GetMessage(), "Unknown Result");
  }
}

TEST(VRELReaderTest, HoldsFormatReader) {
  static_assert(std::is_base_of_v<VRELReferenceCount, VRELReader>);
  recording::Journal journal;
  VRELFormatReaderHandle const format(new recording::Format(journal));
  {
    VRELReader const reader(format);
    EXPECT_EQ(reader.GetReferenceCount(), 0U);
    EXPECT_EQ(format->GetReferenceCount(), 2U);
  }
  EXPECT_EQ(format->GetReferenceCount(), 1U);
}

TEST(VRELReaderTest, FailsWithoutFormatReader) {
  VRELReader reader{VRELFormatReaderHandle()};
  EXPECT_EQ(reader.ReadHeaderSection(), 0x1000091);
  EXPECT_EQ(reader.ReadDataSection(), 0x1000091);
  EXPECT_EQ(reader.Resolve(), 0x1000091);
  EXPECT_EQ(reader.GetHeaderEntityList().size(), 0);
  EXPECT_EQ(reader.GetDataEntityList().size(), 0);
}

TEST(VRELReaderTest, FailsWithoutSections) {
  Document document;
  EXPECT_EQ(document.reader.ReadHeaderSection(), 0x1000092);
  EXPECT_THAT(document.journal, IsEmpty());
  EXPECT_EQ(document.reader.ReadDataSection(), 0x1000093);
  EXPECT_THAT(document.journal, ElementsAre("prepare data"));
}

TEST(VRELReaderTest, FailsWithoutBuffer) {
  Document document(false);
  document.format->AddHeader(1, {0});
  document.format->AddData(2, {0});
  EXPECT_EQ(document.reader.ReadHeaderSection(), 0x1000092);
  EXPECT_EQ(document.reader.ReadDataSection(), 0x1000093);
  EXPECT_THAT(document.journal, ElementsAre("prepare data"));
}

TEST(VRELReaderTest, ReadDataSectionPreparesAndReads) {
  Document document;
  document.format->AddHeader(1, {0});
  recording::Section& first = document.format->AddData(10, {0, 0});
  document.format->AddData(20, {0});
  EXPECT_EQ(document.reader.ReadDataSection(), VREL_S_OK);
  EXPECT_THAT(document.journal, ElementsAre("prepare data", "prepare section of 2", "read 10", "read 11",
                                            "prepare section of 1", "read 20"));
  EXPECT_EQ(first.preparedBy, document.format);
}

TEST(VRELReaderTest, ReadHeaderSectionOnlyReads) {
  Document document;
  document.format->AddHeader(1, {0, 0});
  document.format->AddHeader(3, {0});
  document.format->AddData(10, {0});
  document.reader.ReadHeaderSection();
  EXPECT_THAT(document.journal, ElementsAre("read 1", "read 2", "read 3"));
}

TEST(VRELReaderTest, ReadDataSectionReturnsLastResult) {
  struct Case {
    std::vector<std::vector<long>> sections;
    long expected;
  };
  Case const cases[] = {
      {{{VREL_E_FAIL, VREL_S_OK, VREL_S_OK}}, VREL_S_OK},
      {{{VREL_S_OK, VREL_S_OK, VREL_E_ERROR}}, VREL_E_ERROR},
      {{{VREL_E_ERROR, VREL_S_PARTIAL}}, VREL_S_PARTIAL},
      {{{VREL_E_ERROR}, {VREL_S_NO_ENTITY}}, VREL_S_NO_ENTITY},
      {{{VREL_S_OK}, {}}, 0x1000094},
      {{{}, {VREL_S_OK}}, VREL_S_OK},
      {{{VREL_S_OK}, {VREL_UNDETERMINED}}, VREL_UNDETERMINED},
  };
  for (Case const& each : cases) {
    SCOPED_TRACE(&each - cases);
    Document document;
    for (std::vector<long> const& section : each.sections) document.format->AddData(1, section);
    EXPECT_EQ(document.reader.ReadDataSection(), each.expected);
  }
}

// A section starts with a failure, which stays when other results are combined with it.
TEST(VRELReaderTest, ReadHeaderSectionKeepsInitialFailure) {
  struct Case {
    std::vector<std::vector<long>> sections;
  };
  Case const cases[] = {
      {{{VREL_E_FAIL, VREL_S_OK, VREL_S_OK}}},
      {{{VREL_S_OK}}},
      {{{VREL_S_OK, VREL_E_ERROR}}},
      {{{VREL_E_ABORTED}}},
      {{{VREL_S_OK}, {}}},
      {{{}, {VREL_S_OK}}},
  };
  for (Case const& each : cases) {
    SCOPED_TRACE(&each - cases);
    Document document;
    for (std::vector<long> const& section : each.sections) document.format->AddHeader(1, section);
    EXPECT_EQ(document.reader.ReadHeaderSection(), 0x1000094);
  }
}

TEST(VRELReaderTest, FailedEntityDoesNotStopTraversal) {
  Document document;
  document.format->AddHeader(1, {VREL_E_ERROR, VREL_E_ABORTED, VREL_S_OK});
  document.format->AddData(4, {VREL_E_ERROR, VREL_E_ABORTED, VREL_S_OK});
  document.reader.ReadHeaderSection();
  document.reader.ReadDataSection();
  EXPECT_THAT(document.journal, ElementsAre("read 1", "read 2", "read 3", "prepare data", "prepare section of 3",
                                            "read 4", "read 5", "read 6"));
}

TEST(VRELReaderTest, SecondTraversalFindsNoSection) {
  Document document;
  document.format->AddHeader(1, {0});
  document.format->AddData(2, {0});
  document.reader.ReadHeaderSection();
  EXPECT_EQ(document.reader.ReadDataSection(), VREL_S_OK);
  document.journal.clear();
  EXPECT_EQ(document.reader.ReadHeaderSection(), 0x1000092);
  EXPECT_EQ(document.reader.ReadDataSection(), 0x1000093);
  EXPECT_THAT(document.journal, ElementsAre("prepare data"));
}

TEST(VRELReaderTest, SectionWithoutBufferIsTraversed) {
  class Borrowing : public VRELFormatReader {
   public:
    explicit Borrowing(VRELSectionReader& section) : VRELFormatReader(VRELFileHandle()) {
      buffer = VRELBufferHandle(new VRELBuffer(file));
      dataSections.add(&section);
    }
  };
  recording::Journal journal;
  recording::Section section(VRELBufferHandle(), 1, {0, 0}, journal);
  VRELReader reader{VRELFormatReaderHandle(new Borrowing(section))};
  EXPECT_EQ(reader.ReadDataSection(), VREL_S_OK);
  EXPECT_THAT(journal, ElementsAre("prepare section of 2", "read 1", "read 2"));
}

TEST(VRELReaderTest, ResolveCallsFormatReader) {
  class Resolving : public VRELFormatReader {
   public:
    Resolving() : VRELFormatReader(VRELFileHandle()) {}
    VRINResult Resolve() override { return VREL_S_PARTIAL; }
  };
  EXPECT_EQ(VRELReader(VRELFormatReaderHandle(new Resolving)).Resolve(), VREL_S_PARTIAL);
  Document document;
  EXPECT_EQ(document.reader.Resolve(), VREL_E_NOT_IMPLEMENTED);
}

TEST(VRELReaderTest, ListsAllEntities) {
  Document document;
  document.format->AddHeader(1, {0});
  document.format->AddHeader(2, {0, 0});
  document.format->AddData(10, {0, 0});
  document.format->AddData(12, {0, 0, 0});
  document.reader.ReadDataSection();
  EXPECT_THAT(recording::IdsOf(document.reader.GetHeaderEntityList()), ElementsAre(1, 2, 3));
  EXPECT_THAT(recording::IdsOf(document.reader.GetDataEntityList()), ElementsAre(10, 11, 12, 13, 14));
}

TEST(VRELReaderTest, ExceptionsAreRethrown) {
  class Throwing : public VRELFormatReader {
   public:
    Throwing() : VRELFormatReader(VRELFileHandle()) {}
    VRINResult PreprocessData() override { throw std::runtime_error("no data"); }
  };
  VRELReader reader{VRELFormatReaderHandle(new Throwing)};
  EXPECT_THROW(reader.ReadDataSection(), std::runtime_error);
}

}  // namespace
