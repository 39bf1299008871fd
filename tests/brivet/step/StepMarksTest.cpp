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

TEST(StepMarksTest, ContainsInsertedInstances) {
  StepMarks marks;
  EXPECT_FALSE(marks.Contains(0));
  marks.Insert(63);
  marks.Insert(64);
  EXPECT_TRUE(marks.Contains(63));
  EXPECT_TRUE(marks.Contains(64));
  EXPECT_FALSE(marks.Contains(62));
  EXPECT_FALSE(marks.Contains(4000000000U));
  marks.Clear();
  EXPECT_FALSE(marks.Contains(63));
}
