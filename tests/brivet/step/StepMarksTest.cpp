#include "StepMarks.h"

#include <gtest/gtest.h>

TEST(StepMarksTest, InsertReportsNewInstances) {
  StepMarks marks;
  EXPECT_TRUE(marks.Insert(7));
  EXPECT_FALSE(marks.Insert(7));
  EXPECT_TRUE(marks.Insert(0));
  EXPECT_TRUE(marks.Insert(100000));
  EXPECT_FALSE(marks.Insert(0));
}

TEST(StepMarksTest, ClearRemovesAllInstances) {
  StepMarks marks;
  marks.Insert(3);
  marks.Clear();
  EXPECT_TRUE(marks.Insert(3));
  EXPECT_FALSE(marks.Insert(3));
  EXPECT_TRUE(marks.Insert(4));
}
