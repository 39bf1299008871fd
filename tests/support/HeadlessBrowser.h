// Opens a page in a browser that shows no window.
#pragma once

#include <string>

// Whether there is one: Debian's chromium.
bool HasHeadlessBrowser();

// The page in that file as the browser understood it, once its scripts have run, timers of up to
// five seconds included: its document written out as HTML. A
// browser that fails is a failure of this test, and gives the empty text.
std::string OpenPage(std::string const& path);
