// Tells what code prints on standard output.
#pragma once

#include <functional>
#include <string>

// What `body` writes to standard output, past or through the C library's buffer. Throws a std::runtime_error when there
// is nowhere to keep it.
std::string PrintedBy(std::function<void()> const& body);
