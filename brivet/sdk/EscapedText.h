// How texts of a document are shown to people.
#pragma once

#include <string>
#include <string_view>

// Appends the text with each control character, and each line or paragraph separator, as its code: <U+000A>. Both are
// UTF-8; what is none stands as it is.
void AppendEscapingControls(std::string& target, std::string_view utf8);
