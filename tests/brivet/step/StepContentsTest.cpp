#include "StepContents.h"

#include <gtest/gtest.h>

#include "VRELBufferHandle.h"

TEST(StepContentsTest, StoresNumbersOfAnySize) {
  StepContents contents;
  VRELBufferHandle buffer;
  for (std::uint64_t const number : {std::uint64_t(0), std::uint64_t(7), std::uint64_t(2147483648U),
                                     std::uint64_t(4294967295U), std::uint64_t(4294967296U), UINT64_MAX - 1}) {
    StepEntityReader const entity(buffer, contents.StoreNumber(number), 0);
    EXPECT_EQ(contents.NumberOf(entity), number);
  }
}
