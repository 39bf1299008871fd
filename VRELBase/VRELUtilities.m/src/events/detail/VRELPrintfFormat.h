// Attribute for functions with a printf format.
#pragma once

// Lets the compiler check the arguments against the format. The parameters are counted from 1, including the implicit
// object parameter of a member function.
#define VREL_PRINTF_FORMAT(formatIndex, firstArgument) __attribute__((format(printf, formatIndex, firstArgument)))
