// The bar on standard error.
#pragma once

#include <string>

#include "Gk_ProgressObserver.h"

// Draws what ProgressReporter tells, from construction to destruction, on the line where the cursor stands, and takes it
// away when the stage is over:
//
//   reading [##########                              ]  25%
class ProgressBar final : public Gk_ProgressObserver {
 public:
  ProgressBar();
  ~ProgressBar();
  ProgressBar(ProgressBar const&) = delete;
  ProgressBar& operator=(ProgressBar const&) = delete;

  Type getType() const override { return ProgressType; }
  // Clears the line for somebody else's words; the next step draws it again.
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
  std::size_t shown = 0;  // letters on the line
};
