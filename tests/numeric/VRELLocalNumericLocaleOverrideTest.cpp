#include "VRELLocalNumericLocaleOverride.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <string>

#include "ChildProcess.h"
#include "TurkishLocale.h"

namespace {

std::string NumericLocale() {
  return std::setlocale(LC_NUMERIC, nullptr);
}

// Runs `body` in a child process, whose locale it may change, and returns its output.
template <class Body>
std::string Printed(Body body) {
  ChildResult const child = RunInChild([&] {
    body();
    return 0;
  });
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
  return child.output;
}

TEST(VRELLocalNumericLocaleOverrideTest, ScopeUsesLocaleC) {
  EXPECT_EQ(Printed([] {
              std::setlocale(LC_ALL, "C.UTF-8");
              {
                VRELLocalNumericLocaleOverride const neutral;
                std::printf("%s,%s,", NumericLocale().c_str(), std::setlocale(LC_CTYPE, nullptr));
              }
              std::printf("%s,%s", NumericLocale().c_str(), std::setlocale(LC_ALL, nullptr));
            }),
            "C,C.UTF-8,C.UTF-8,C.UTF-8");
}

TEST(VRELLocalNumericLocaleOverrideTest, MixedCategoriesKeepLocaleC) {
  EXPECT_EQ(Printed([] {
              std::setlocale(LC_ALL, "C");
              std::setlocale(LC_NUMERIC, "C.UTF-8");
              std::printf("%s,", NumericLocale().c_str());
              { VRELLocalNumericLocaleOverride const neutral; }
              std::printf("%s", NumericLocale().c_str());
            }),
            "C.UTF-8,C");
}

TEST(VRELLocalNumericLocaleOverrideTest, InitializeReturnsNewLocale) {
  EXPECT_EQ(Printed([] {
              std::setlocale(LC_ALL, "C.UTF-8");
              VRELLocalNumericLocaleOverride neutral;
              std::setlocale(LC_ALL, "C.UTF-8");
              VRELString const name = neutral.InitializeNumericLocale();
              std::printf("%s,%s", name.toUtf8().c_str(), NumericLocale().c_str());
            }),
            "C,C");
}

TEST(VRELLocalNumericLocaleOverrideTest, SaveKeepsWhatRestoreSets) {
  EXPECT_EQ(Printed([] {
              VRELLocalNumericLocaleOverride neutral;
              std::setlocale(LC_ALL, "C.UTF-8");
              std::printf("%ld,", static_cast<long>(neutral.SaveCurrentNumericLocale()));
              std::setlocale(LC_NUMERIC, "C");
              std::printf("%ld,", static_cast<long>(neutral.RestoreNumericLocale()));
              std::printf("%s", NumericLocale().c_str());
            }),
            "0,0,C.UTF-8");
}

TEST(VRELLocalNumericLocaleOverrideTest, RestoreFailsForMixedCategories) {
  EXPECT_EQ(Printed([] {
              std::setlocale(LC_ALL, "C");
              std::setlocale(LC_CTYPE, "C.UTF-8");
              VRELLocalNumericLocaleOverride neutral;
              std::setlocale(LC_NUMERIC, "C.UTF-8");
              VRINResult const result = neutral.RestoreNumericLocale();
              std::printf("%d,%s", result == VREL_E_FAIL, NumericLocale().c_str());
            }),
            "1,C.UTF-8");
}

TEST(VRELLocalNumericLocaleOverrideTest, DecimalMarkIsPoint) {
  ChildResult const child = RunInTurkishLocale([] {
    std::printf("%.1f ", 1.5);
    {
      VRELLocalNumericLocaleOverride const neutral;
      std::printf("%.1f ", 1.5);
    }
    std::printf("%.1f", 1.5);
    return 0;
  });
  if (child.exitStatus == noTurkishLocale) GTEST_SKIP() << "no locale";
  EXPECT_EQ(child.output, "1,5 1.5 1,5");
}

}  // namespace
