// What is measured of STEP files, by the time that it takes and by the memory that a process of its own needs for it.
#pragma once

#include <cstddef>

// Each does its work on the file of that path, and gives something that the work must have led to.

// What -list does; the number of instances.
std::size_t ReadStepFile(char const* path);

// A page of the file, which is dropped; its size in bytes.
std::size_t WritePageOfStepFile(char const* path);

#ifdef VREL_BENCHMARK_OCCT_STEP
// The peer's reader, which makes an object of each instance; their number.
std::size_t ReadStepFileByOpenCascade(char const* path);
#endif
