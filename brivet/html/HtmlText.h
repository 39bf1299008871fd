// Strings in HTML.
#pragma once

#include <string>
#include <string_view>

// Appends the string so that a browser shows it as it is: the characters & < > " by name, those beyond ASCII as numeric
// character references. Each byte that is not valid UTF-8 becomes U+FFFD.
void AppendHtml(std::string& target, std::string_view utf8);

// Returns the same as a new string.
std::string EscapeHtml(std::string_view utf8);

// Appends markup with the characters beyond ASCII as numeric character references. Each byte that is not valid UTF-8
// becomes U+FFFD. Such characters must be in content or in values of attributes.
void AppendAsciiMarkup(std::string& target, std::string_view markup);
