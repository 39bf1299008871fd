// UTF-8 that other programs accept.
#pragma once

#include <string>
#include <string_view>

// Returns whether the bytes are valid UTF-8.
bool IsValidUtf8(std::string_view utf8);

// Appends the text with U+FFFD instead of each byte that is not part of a valid UTF-8 sequence, as browsers do.
void AppendValidUtf8(std::string& target, std::string_view utf8);

// Returns such a text.
std::string ValidUtf8(std::string_view utf8);
