// Lets the compiler check the arguments of the printf family against their format.
#pragma once

// The places of the format and of the first argument are counted from 1, the object of a member function included.
#define VREL_PRINTF_FORMAT(formatIndex, firstArgument) __attribute__((format(printf, formatIndex, firstArgument)))
