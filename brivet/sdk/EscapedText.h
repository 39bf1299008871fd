// Display form of strings that come from documents, file names and command lines.
#pragma once

#include <string>
#include <string_view>

// Appends the string with each character that could change the layout of a page, a log or a terminal as its code:
// "<U+000A>". These are the control characters (C0, DEL, C1), the line and paragraph separators and the controls of
// bidirectional text. Both strings are UTF-8. Bytes that are not valid UTF-8 are appended unchanged, except that 0x80
// to 0x9F are escaped as the control characters that they are in ISO 8859-1.
void AppendEscapingControls(std::string& target, std::string_view utf8);
