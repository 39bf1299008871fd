// Runs a test in a process with another locale, for what the C library or ICU determines once in a process.
#pragma once

#include <functional>

// Runs the current test again in a new process, which calls setlocale(LC_ALL, locale) and then `body`, before any
// string conversion. Failures of `body` are failures of this test.
// Requires: one call in a test; code before it runs in both processes.
//
//   TEST(NameTest, Umlaut) {
//     RunTestInLocale("C.UTF-8", [] { EXPECT_EQ(Size(L"\u00F6"), 2); });
//   }
void RunTestInLocale(char const* locale, std::function<void()> const& body);
