// Runs code in a locale whose numbers and letter case differ from "C".
#pragma once

#include <functional>

#include "ChildProcess.h"

// Exit status of RunInTurkishLocale if the locale cannot be created.
constexpr int noTurkishLocale = 77;

// Runs `body` in a child process with the locale tr_TR.UTF-8 in all categories, created by localedef. Its decimal mark
// is a comma, and "I" and "i" are not the capital and small form of one letter.
ChildResult RunInTurkishLocale(std::function<int()> const& body);
