// Base64 encoding.
#pragma once

#include <string>
#include <string_view>

// Appends the Base64 encoding of RFC 4648, section 4, with padding and without line breaks.
void AppendBase64(std::string& target, std::string_view bytes);
