// Tells what this process has open.
#pragma once

#include <string>

// How many of this process's descriptors stand for the file of that absolute path.
int CountOpenDescriptors(std::string const& path);

// Whether a descriptor is open.
bool IsOpenDescriptor(int descriptor);
