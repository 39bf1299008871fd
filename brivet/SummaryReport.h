// The page that brivet prints.
#pragma once

#include <string>

#include "VRELFileHeader.h"

struct StepSummary;

// The header's strings as the logs of the family print them: a heading for each entity, with an empty line in front of
// all but the first, and a row for each text. One text is one line: a control character is shown as <U+000A>.
VRELFileHeader FileHeaderOf(StepSummary const& summary);

// The summary as lines of UTF-8: the header's strings as a VRELFileHeader is printed, the counts, the strings with
// escapes. One text is one line: a control character is shown as <U+000A>. Nothing but the summary decides a byte of
// it.
std::string FormatSummary(StepSummary const& summary);
