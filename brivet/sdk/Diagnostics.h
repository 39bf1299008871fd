// Errors, warnings and messages of the program and its modules.
//
// Each function sends one event on a channel of the library. Control characters of the text are escaped as by
// AppendEscapingControls, so that no file name or string of a document can forge a line of a log or move the cursor of
// a terminal. A hint is the only thing after a line feed: "TEXT\nhint: HINT". A channel takes 1023 bytes and cuts the
// rest; of a long subject or file name only the end is sent, after "...".
#pragma once

#include <string>

// A position in a file: "part.stp:12:34". Line and column are counted from 1; 0 means unknown.
struct SourceLocation {
  std::string file;
  long line = 0;
  long column = 0;  // in bytes
};

// Sends `text` on the channel VRELError.
void ReportProblem(std::string const& text);

// Sends "SUBJECT: TEXT" on the channel VRELError.
void ReportProblem(std::string const& subject, std::string const& text);

// Sends "SUBJECT: TEXT" on the channel VRELWarning.
void ReportWarning(std::string const& subject, std::string const& text);

// Sends `text` on the channel VRELInfo, which only a log shows.
void ReportMessage(std::string const& text);

// Sends "FILE:LINE:COLUMN: error: TEXT" on the channel VRELError, followed by the hint if there is one.
void ReportErrorAt(SourceLocation const& location, std::string const& text, std::string const& hint = "");

// Sends "FILE:LINE:COLUMN: warning: TEXT" on the channel VRELWarning, followed by the hint if there is one.
void ReportWarningAt(SourceLocation const& location, std::string const& text, std::string const& hint = "");

// Returns "FILE:LINE:COLUMN", without the parts that are unknown. Only the end of a long file name is kept.
std::string FormatLocation(SourceLocation const& location);

// Returns whether a message has the form of ReportErrorAt or ReportWarningAt: it names a file and a severity and needs
// no name of the program in front.
bool HasLocation(std::string const& message);
