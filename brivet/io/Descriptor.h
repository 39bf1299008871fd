// Reading from and writing to descriptors that may block.
#pragma once

#include <string_view>

// Waits until the descriptor can be read or written, and calls Gk_ErrMgr::checkAbort a few times a second meanwhile.
// Regular files are always ready.
//
// Errors: VRELAbortException if an abort is requested.
void WaitToRead(int descriptor);
void WaitToWrite(int descriptor);

// Writes all bytes, waiting as above. Returns false and sets errno if they cannot be written.
bool WriteAll(int descriptor, std::string_view bytes);
