// How the program tells what went wrong, and what is worth knowing.
#pragma once

#include <string>

// Sends the text on the channel VRELError: one event, with the text's bytes as they stand, percent signs too; a zero
// byte becomes a question mark. A channel takes 1023 bytes, what is longer is cut.
void ReportProblem(std::string const& text);

// Sends "SUBJECT: TEXT". Of a long subject, a file's name, only the end is told, behind "...", so that the text is
// seen.
void ReportProblem(std::string const& subject, std::string const& text);

// The same on the channel VRELWarning.
void ReportWarning(std::string const& subject, std::string const& text);

// The same on the channel VRELInfo, which only a log shows.
void ReportMessage(std::string const& text);
