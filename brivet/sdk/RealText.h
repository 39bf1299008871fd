// Text of real numbers.
#pragma once

#include <string>

// Returns the shortest text that reads as the same number, in the form that DocumentVisitor::Real requires, in every
// locale: "1.", "0.1", "-2.5E-7". A number that is not finite, which has no such form, becomes "0.".
std::string FormatReal(double number);
std::string FormatReal(float number);
