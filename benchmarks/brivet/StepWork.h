// Operations on STEP files whose time and memory are measured.
#pragma once

#include <cstddef>

// Reads the file as brivet -list does. Returns the number of instances.
std::size_t ReadStepFile(char const* path);

// Writes a page of the file and discards it. Returns its size in bytes.
std::size_t WritePageOfStepFile(char const* path);

#ifdef VREL_BENCHMARK_OCCT_STEP
// Reads the file by the peer, which creates an object for each instance. Returns their number.
std::size_t ReadStepFileByOpenCascade(char const* path);
#endif
