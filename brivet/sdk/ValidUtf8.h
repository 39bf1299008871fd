// UTF-8 that other programs accept.
#pragma once

#include <string>
#include <string_view>

// Returns the text with U+FFFD instead of each byte that is not part of a valid UTF-8 sequence, as browsers do.
std::string ValidUtf8(std::string_view text);
