// Texts inside a page.
#pragma once

#include <string>
#include <string_view>

// Appends the text so that a browser shows it as it is: characters with a meaning in HTML by name, those beyond ASCII
// as numeric character references. Bytes that are no UTF-8 become U+FFFD each.
void AppendHtml(std::string& target, std::string_view utf8);

std::string EscapeHtml(std::string_view utf8);
