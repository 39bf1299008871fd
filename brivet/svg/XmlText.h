// Strings in XML.
#pragma once

#include <string>
#include <string_view>

// Returns at most `limit` bytes of a string, as character data and for attribute values in quotes. Control characters
// are escaped as by AppendEscapingControls, and what XML cannot contain becomes U+FFFD. A string that was cut ends with
// an ellipsis.
std::string EscapeXml(std::string_view utf8, std::size_t limit);
