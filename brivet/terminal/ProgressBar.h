// Progress bar on standard error.
#pragma once

#include <string>

#include "Gk_ProgressObserver.h"

// Draws the progress that ProgressReporter reports, on the line of the cursor, while the object exists. The line is
// cleared at the end of each stage:
//
//   reading [##########                              ]  25%
class ProgressBar final : public Gk_ProgressObserver {
 public:
  ProgressBar();
  ~ProgressBar();
  ProgressBar(ProgressBar const&) = delete;
  ProgressBar& operator=(ProgressBar const&) = delete;

  Type getType() const override { return ProgressType; }
  // Clears the line for other output. The next step draws it again.
  void Hide();

  void setMax(int maximum) override;
  void setDone(int done) override;
  void setOver(double seconds) override;
  void setIntInfo(int value) override;
  void setDoubleInfo(double value) override;
  void setStringInfo(Gk_String const& value) override;

 private:
  std::string stage;
  int steps = 1;
  std::size_t width = 0;  // of the line as drawn; 0 if it is clear
};
