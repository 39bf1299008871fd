// Runs a test in a process of a locale, for what the C library or ICU settles once in a process.
#pragma once

#include <functional>

// Starts the test that is running once more, in a process of its own, and there runs `body` after
// setlocale(LC_ALL, locale) and before anything else could convert a text. The failures of `body` are this test's. At
// most one call in a test; what stands before it is run in both processes.
//
//   TEST(NameTest, Umlaut) {
//     RunTestInLocale("C.UTF-8", [] { EXPECT_EQ(Size(L"\u00F6"), 2); });
//   }
void RunTestInLocale(char const* locale, std::function<void()> const& body);
