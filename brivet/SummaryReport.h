// The page that brivet prints.
#pragma once

#include <string>

struct StepSummary;

// The summary as lines of UTF-8: the header's strings as a VRELFileHeader is printed, the counts, the strings with
// escapes. One text is one line: a control character is shown as <U+000A>. Nothing but the summary decides a byte of
// it.
std::string FormatSummary(StepSummary const& summary);
