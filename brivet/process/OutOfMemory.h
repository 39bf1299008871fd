// Message for a process that has no memory left.
#pragma once

// Writes "brivet: out of memory" to standard error, unless the command line contains -quiet, and returns the exit
// status of such a run. Allocates nothing.
int ReportOutOfMemory(int count, char const* const* arguments) noexcept;
