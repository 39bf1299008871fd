// The program's voice.
#pragma once

#include "VRELEventListener.h"

class ProgressBar;

// Writes each error and each warning that is sent on the bus to standard error, from construction to destruction:
//
//   brivet: part.stp:12: expected ; behind #4, found #5
//   brivet: warning: TEXT
//
// One event is one line: a control character in its text is shown as a question mark, and a line end that closes the
// text is left out. An error event without a text shows the description of its error or, where that is empty too, the
// message of its code. Other events are passed over.
class StandardErrorListener : public VRELEventListener {
 public:
  // The bar, if there is one, makes way for each line.
  explicit StandardErrorListener(ProgressBar* progressBar = nullptr);
  ~StandardErrorListener() override;
  StandardErrorListener(StandardErrorListener const&) = delete;
  StandardErrorListener& operator=(StandardErrorListener const&) = delete;

  void HandleEvent(VRELEvent& event) override;

 private:
  ProgressBar* bar;
};
