// Ctrl-C.
#pragma once

// From here on the first SIGINT, SIGTERM or SIGHUP asks for an abort by Gk_ErrMgr::setAbort, and the second of its kind
// ends the program as it would have at first. A signal that is ignored stays so: nohup keeps its word. System calls
// that wait are interrupted.
void AbortOnSignals();
