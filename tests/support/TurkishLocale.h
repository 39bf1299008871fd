// A process in a locale that differs from "C" in numbers and letters alike.
#pragma once

#include <functional>

#include "ChildProcess.h"

// What RunInTurkishLocale gives as the exit status where the system cannot make the locale.
constexpr int noTurkishLocale = 77;

// Runs `body` in a child process whose locale, in all categories, is tr_TR.UTF-8, made for it by localedef. There the
// decimal mark is a comma, "I" is no capital of "i", and the other way round.
ChildResult RunInTurkishLocale(std::function<int()> const& body);
