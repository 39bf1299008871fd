// Open file descriptors of this process.
#pragma once

#include <string>

// Returns the number of descriptors that refer to the file with an absolute path.
int CountOpenDescriptors(std::string const& path);

// Returns true if a descriptor is open.
bool IsOpenDescriptor(int descriptor);
