// Captures standard output.
#pragma once

#include <functional>
#include <string>

// Returns what `body` writes to standard output, buffered by the C library or not.
// Errors: std::runtime_error if no temporary file can be created.
std::string PrintedBy(std::function<void()> const& body);
