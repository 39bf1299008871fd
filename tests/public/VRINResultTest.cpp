#include "VRINResult.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr long kUnknownSuccess = 0x1234;
constexpr long kOtherDomainFailure = 0x1050007;

struct CodeRow {
  long code;
  long value;
  char const* message;
};

class VRINResultCodeTest : public testing::TestWithParam<CodeRow> {};

TEST_P(VRINResultCodeTest, HasValueAndMessage) {
  CodeRow const& row = GetParam();
  EXPECT_EQ(row.code, row.value);
  EXPECT_STREQ(VRINResult(row.value).GetMessage(), row.message);
}

INSTANTIATE_TEST_SUITE_P(
    AllCodes, VRINResultCodeTest,
    testing::Values(CodeRow{VREL_S_OK, 0, "Success"}, CodeRow{VREL_S_PARTIAL, 1, "Partial Success"},
                    CodeRow{VREL_S_NO_ENTITY, 2, "No Entity to Translate"},
                    CodeRow{VREL_S_NO_GEOMETRY, 3, "No translatable geometry"},
                    CodeRow{VREL_E_FAIL, 0x1000001, "Failure"}, CodeRow{VREL_E_ERROR, 0x1000002, "Error Encountered"},
                    CodeRow{VREL_E_NOT_SUPPORTED, 0x1000004, "Not supported"},
                    CodeRow{VREL_E_NOT_IMPLEMENTED, 0x1000005, "Method is not implemented"},
                    CodeRow{VREL_E_UNEXPECTED, 0x1000007, "Unexpected Error"},
                    CodeRow{VREL_E_OPTION_UNSET, 0x1000008, "Unknown Result"},
                    CodeRow{VREL_E_INVALID_COMPONENT, 0x1000009, "Invalid Component"},
                    CodeRow{VREL_E_INVALID_OBJECT, 0x100000A, "Invalid Object"},
                    CodeRow{VREL_E_INVALID_ARGUMENT, 0x100000B, "Invalid Argument"},
                    CodeRow{VREL_E_FILE_NOT_FOUND, 0x100000D, "File Not Found"},
                    CodeRow{VREL_E_FILE_OPEN, 0x100000E, "File Open Error"},
                    CodeRow{VREL_E_FILE_SAVE, 0x100000F, "File Save Error"},
                    CodeRow{VREL_E_FILE_ENCRYPTED, 0x1000010, "File is encrypted"},
                    CodeRow{VREL_E_MODEL_TOO_LARGE, 0x1000011, "Model size exceeds valid box"},
                    CodeRow{VREL_E_MODEL_TOO_SMALL, 0x1000012, "Model size is smaller than the valid box"},
                    CodeRow{VREL_E_WRITE_UNIT, 0x1000013, "File write unit is invalid"},
                    CodeRow{VREL_E_FILE_VERSION, 0x1000014, "File version is not supported"},
                    CodeRow{VREL_E_INVALID_FILE, 0x1000015, "Invalid file"},
                    CodeRow{VREL_E_ABORTED, 0x2000003, "Aborted"},
                    CodeRow{VREL_UNDETERMINED, 0x3000006, "Undetermined"}));

TEST(VRINResultTest, OtherValuesAreUnknownResult) {
  // Numbers next to the named codes, the same numbers with other criticities and domains, and the unused top bits.
  for (long value : {4L, 0x1234L, 0x1000000L, 0x1000003L, 0x1000006L, 0x100000CL, 0x1000016L, 0x1050007L, 0x1010001L,
                     0x2000001L, 0x2000006L, 0x3000003L, 0x11000001L, -1L}) {
    EXPECT_STREQ(VRINResult(value).GetMessage(), "Unknown Result") << std::hex << value;
  }
}

TEST(VRINResultTest, ReadsPackedFields) {
  VRINResult const result(kOtherDomainFailure);
  EXPECT_EQ(result.GetCriticity(), 1);
  EXPECT_EQ(result.GetDomain(), 5);
  EXPECT_EQ(result.GetNumber(), 7);
  VRINResult const full(0x7FABCDEFL);
  EXPECT_EQ(full.GetCriticity(), 0xF);
  EXPECT_EQ(full.GetDomain(), 0xAB);
  EXPECT_EQ(full.GetNumber(), 0xCDEF);
  // Bits 28 to 31 are unused.
  VRINResult const topBits(static_cast<long>(0xF1000001));
  EXPECT_EQ(topBits.GetCriticity(), 1);
  EXPECT_EQ(topBits.GetDomain(), 0);
  EXPECT_EQ(topBits.GetNumber(), 1);
}

TEST(VRINResultTest, HasSizeOf32Bits) {
  EXPECT_EQ(sizeof(VRINResult), 4u);
  EXPECT_TRUE(VRINResult(0x100000000L) == 0);
  EXPECT_TRUE(VRINResult(0L) == 0x100000000L);
  EXPECT_EQ(static_cast<long>(VRINResult(-1L)), -1L);
  EXPECT_EQ(static_cast<long>(VRINResult(0xFFFFFFFFL)), -1L);
}

TEST(VRINResultTest, ComparesAllBits) {
  VRINResult result(VREL_E_FAIL);
  EXPECT_TRUE(result == VREL_E_FAIL);
  EXPECT_TRUE(result == 0x1000001);
  EXPECT_TRUE(result == 0x1000001L);
  EXPECT_TRUE(result == VRINResult::E_FAIL_RESULT);
  EXPECT_TRUE(VREL_E_FAIL == result);
  EXPECT_FALSE(result == 0);
  EXPECT_FALSE(result == 0L);
  EXPECT_TRUE(result != 0);
  EXPECT_TRUE(result != 0L);
  EXPECT_TRUE(result != VRINResult(VREL_S_OK));
  EXPECT_FALSE(result != VREL_E_FAIL);
  EXPECT_FALSE(result == VRINResult(static_cast<long>(0xF1000001))) << "bits 28 to 31 are compared";
  long const word = result;
  EXPECT_EQ(word, 0x1000001L);
  result = 5;
  EXPECT_TRUE(result == 5);
  result = VREL_E_ABORTED;
  EXPECT_TRUE(result == VREL_E_ABORTED);
}

TEST(VRINResultTest, FailResultHasCode) {
  EXPECT_EQ(VRINResult::E_FAIL_RESULT, VREL_E_FAIL);
}

struct ClassRow {
  long code;
  bool success, partial, complete, undetermined, determinedFailure;
};

class VRINResultClassTest : public testing::TestWithParam<ClassRow> {};

TEST_P(VRINResultClassTest, IsClassified) {
  ClassRow const& row = GetParam();
  VRINResult const result(row.code);
  EXPECT_EQ(result.IsSuccess(), row.success);
  EXPECT_EQ(result.IsFailure(), !row.success);
  EXPECT_EQ(result.IsPartialSuccess(), row.partial);
  EXPECT_EQ(result.IsCompleteSuccess(), row.complete);
  EXPECT_EQ(result.IsUndetermined(), row.undetermined);
  EXPECT_EQ(result.IsDeterminedFailure(), row.determinedFailure);
}

INSTANTIATE_TEST_SUITE_P(
    Classes, VRINResultClassTest,
    testing::Values(
        ClassRow{0, true, false, true, false, false}, ClassRow{1, true, true, false, false, false},
        ClassRow{2, true, false, true, false, false}, ClassRow{3, true, false, true, false, false},
        ClassRow{kUnknownSuccess, true, false, true, false, false},
        ClassRow{0x0010001, true, false, true, false, false}, ClassRow{0x1000001, false, false, false, false, true},
        ClassRow{0x1000005, false, false, false, false, true}, ClassRow{0x2000003, false, false, false, false, true},
        ClassRow{0x3000006, false, false, false, true, false}, ClassRow{0x3000007, false, false, false, false, true},
        ClassRow{0x4000001, false, false, false, false, true}, ClassRow{0x8000006, false, false, false, false, true},
        // Another value of the same criticity.
        ClassRow{0x10000001, true, false, true, false, false}, ClassRow{0x13000006, false, false, false, false, true},
        ClassRow{kOtherDomainFailure, false, false, false, false, true}));

TEST(VRINResultTest, GetReturnCodeReturnsExitStatus) {
  EXPECT_EQ(VRINResult(VREL_S_OK).GetReturnCode(), 0);
  EXPECT_EQ(VRINResult(VREL_S_PARTIAL).GetReturnCode(), 0);
  EXPECT_EQ(VRINResult(kUnknownSuccess).GetReturnCode(), 0);
  EXPECT_EQ(VRINResult(0x0050007).GetReturnCode(), 0) << "success of another domain";
  EXPECT_EQ(VRINResult(VREL_E_INVALID_ARGUMENT).GetReturnCode(), 11);
  EXPECT_EQ(VRINResult(VREL_E_ABORTED).GetReturnCode(), 3);
  EXPECT_EQ(VRINResult(VREL_UNDETERMINED).GetReturnCode(), 6);
  EXPECT_EQ(VRINResult(kOtherDomainFailure).GetReturnCode(), 1);
  EXPECT_EQ(VRINResult(0x1FF0000).GetReturnCode(), 1);
  EXPECT_EQ(VRINResult(0x100FFFF).GetReturnCode(), 0xFFFF);
  EXPECT_EQ(VRINResult(0x11000007).GetReturnCode(), 7) << "bits 28 to 31 are ignored";
}

TEST(VRINResultTest, GetReturnCodeOfFlagIsInverted) {
  EXPECT_EQ(VRINResult::GetReturnCode(true), 1);
  EXPECT_EQ(VRINResult::GetReturnCode(false), 0);
  EXPECT_STREQ(VRINResult::GetOKKOString(true), "OK");
  EXPECT_STREQ(VRINResult::GetOKKOString(false), "KO");
  EXPECT_EQ(VRINResult::GetOKKOString(true), VRINResult::GetOKKOString(true));
}

// Left sides are rows and right sides are columns, in the order of kSides.
constexpr long kOk = 0;
constexpr long kPartial = 1;
constexpr long kNoEntity = 2;
constexpr long kNoGeometry = 3;
constexpr long kFail = 0x1000001;
constexpr long kNotImplemented = 0x1000005;
constexpr long kAborted = 0x2000003;
constexpr long kUndetermined = 0x3000006;
std::vector<long> const kSides = {kOk,      kPartial,      kNoEntity, kNoGeometry, kFail, kNotImplemented,
                                  kAborted, kUndetermined, 0x1234};

TEST(VRINResultTest, ConjunctionKeepsWorse) {
  std::vector<std::vector<long>> const expected = {
      /* success     */ {kOk, kPartial, kNoEntity, kNoGeometry, kFail, kNotImplemented, kAborted, kUndetermined, kOk},
      /* partial     */ {1, 1, 1, 1, kFail, kNotImplemented, kAborted, kUndetermined, 1},
      /* no entity   */ {2, kPartial, 2, 3, kFail, kNotImplemented, kAborted, kUndetermined, 2},
      /* no geometry */ {3, kPartial, 3, 3, kFail, kNotImplemented, kAborted, kUndetermined, 3},
      /* failure     */ {kFail, kFail, kFail, kFail, kFail, kFail, kFail, kFail, kFail},
      /* missing     */
      {kOk, kPartial, kNoEntity, kNoGeometry, kFail, kNotImplemented, kAborted, kUndetermined, 0x1234},
      /* aborted     */
      {kAborted, kAborted, kAborted, kAborted, kAborted, kAborted, kAborted, kAborted, kAborted},
      /* open        */
      {kUndetermined, kUndetermined, kUndetermined, kUndetermined, kFail, kNotImplemented, kAborted, kUndetermined,
       kUndetermined},
      /* 0x1234      */ {0x1234, kPartial, 2, 3, kFail, kNotImplemented, kAborted, kUndetermined, 0x1234},
  };
  for (std::size_t left = 0; left < kSides.size(); ++left) {
    for (std::size_t right = 0; right < kSides.size(); ++right) {
      VRINResult result(kSides[left]);
      VRINResult const returned = (result &= VRINResult(kSides[right]));
      EXPECT_EQ(result, expected[left][right]) << std::hex << kSides[left] << " &= " << kSides[right];
      EXPECT_EQ(returned, result);
    }
  }
}

TEST(VRINResultTest, DisjunctionBecomesPartial) {
  std::vector<std::vector<long>> const expected = {
      /* success     */ {0, 1, 0, 0, 1, 1, 1, 1, 0},
      /* partial     */ {1, 1, 1, 1, 1, 1, 1, 1, 1},
      /* no entity   */ {2, 1, 2, 2, 1, 1, 1, 1, 2},
      /* no geometry */ {3, 1, 3, 3, 1, 1, 1, 1, 3},
      /* failure     */ {1, 1, 1, 1, kFail, kFail, kFail, kFail, 1},
      /* missing     */ {1, 1, 1, 1, kNotImplemented, kNotImplemented, kNotImplemented, kNotImplemented, 1},
      /* aborted     */ {1, 1, 1, 1, kAborted, kAborted, kAborted, kAborted, 1},
      /* open        */ {1, kUndetermined, 1, 1, kFail, kNotImplemented, kAborted, kUndetermined, 1},
      /* 0x1234      */ {0x1234, 1, 0x1234, 0x1234, 1, 1, 1, 1, 0x1234},
  };
  for (std::size_t left = 0; left < kSides.size(); ++left) {
    for (std::size_t right = 0; right < kSides.size(); ++right) {
      VRINResult result(kSides[left]);
      VRINResult const returned = (result |= VRINResult(kSides[right]));
      EXPECT_EQ(result, expected[left][right]) << std::hex << kSides[left] << " |= " << kSides[right];
      EXPECT_EQ(returned, result);
    }
  }
}

TEST(VRINResultTest, CombinationReturnsCopy) {
  VRINResult left(VREL_S_OK);
  VRINResult copy = (left &= VREL_E_FAIL);
  copy = VREL_S_OK;
  EXPECT_EQ(left, VREL_E_FAIL);
  static_assert(!std::is_reference_v<decltype(left &= copy)>);
  static_assert(!std::is_reference_v<decltype(left |= copy)>);
}

}  // namespace
