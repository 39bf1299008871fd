// Reading from and writing to descriptors that may wait.
#pragma once

#include <string_view>

// Waits until the descriptor has something to read, or takes something to write, and asks Gk_ErrMgr::checkAbort a few
// times a second meanwhile: an abort ends the wait with VRELAbortException. Regular files are ready at once.
void WaitToRead(int descriptor);
void WaitToWrite(int descriptor);

// Writes all of it, waiting as above. False, with errno, for what cannot be written.
bool WriteAll(int descriptor, std::string_view bytes);
