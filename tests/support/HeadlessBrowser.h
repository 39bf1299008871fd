// Opens a page in a headless browser.
#pragma once

#include <string>

// Returns true if Debian's chromium is installed.
bool HasHeadlessBrowser();

// Returns the DOM of a page as HTML after its scripts, including timers of up to five seconds. If the browser fails,
// adds a test failure and returns the empty string.
std::string OpenPage(std::string const& path);
