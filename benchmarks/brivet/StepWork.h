// Operations on STEP files whose time and memory are measured.
#pragma once

#include <cstddef>

// Each returns a number that is 0 only if it failed.

// Reads the file as -list does. Returns the number of instances.
std::size_t ReadStepFile(char const* path);

// Writes an HTML page of the file and discards it. Returns its size in bytes.
std::size_t WritePageOfStepFile(char const* path);

#ifdef VREL_BENCHMARK_OCCT_STEP
// Reads the file with Open CASCADE, which creates an object for each instance. Returns their number.
std::size_t ReadStepFileByOpenCascade(char const* path);
#endif
