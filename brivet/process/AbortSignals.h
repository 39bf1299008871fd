// Signal handling.
#pragma once

// From this call on, the first SIGINT, SIGTERM or SIGHUP requests an abort by Gk_ErrMgr::setAbort, and a second signal
// of the same kind ends the program. Signals that are ignored stay ignored, as under nohup. System calls that wait are
// interrupted.
void AbortOnSignals();

// Ignores SIGXFSZ: writing beyond the limit for file sizes fails with EFBIG instead of ending the program.
void IgnoreFileSizeSignal();
