// Errors and warnings on standard error.
#pragma once

#include "VRELEventListener.h"

class ProgressBar;

// Writes each error and each warning that is sent on the event bus to standard error while the object exists. A message
// that begins with a location and its severity is written as it is; the name of the program precedes any other. A hint
// follows on a line of its own:
//
//   part.stp:12: error: expected ')', found ';'
//   brivet: cannot open 'part.stp': No such file or directory
//   brivet: warning: TEXT
//   hint: TEXT
//
// Control characters are escaped as by AppendEscapingControls, so that each message is one line. An error event without
// a text is shown by the description of its error, or by the message of its code if that is empty. Other events are
// ignored.
class StandardErrorListener : public VRELEventListener {
 public:
  // A progress bar is hidden before each line. It may be null and must exist as long as the listener. With
  // `showsNotes`, messages that begin with "note: " are written as well.
  explicit StandardErrorListener(ProgressBar* progressBar = nullptr, bool showsNotes = false);
  ~StandardErrorListener() override;
  StandardErrorListener(StandardErrorListener const&) = delete;
  StandardErrorListener& operator=(StandardErrorListener const&) = delete;

  void HandleEvent(VRELEvent& event) override;

 private:
  ProgressBar* bar;
  bool notes;
};
