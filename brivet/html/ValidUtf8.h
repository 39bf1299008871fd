// Validation of UTF-8.
#pragma once

#include <string>
#include <string_view>

// Returns whether the bytes are valid UTF-8.
bool IsValidUtf8(std::string_view utf8);

// Appends the string with each byte that is not valid UTF-8 replaced by U+FFFD.
void AppendValidUtf8(std::string& target, std::string_view utf8);
