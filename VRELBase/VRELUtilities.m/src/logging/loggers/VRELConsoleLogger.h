// Shows events on the standard streams.
#pragma once

#include "VRELLogger.h"

// Writes events below WARNING to standard output and the others to standard error, past what the C library buffers
// there. The one of the process is set up on request:
//
//   VRELConsoleLogger::SetUp(VREL_LEVEL_VERBOSE);  // unless VRELConsoleTracesLevel says otherwise
//
// It then stays active to the end of the process, or is silent for good: it is promised that after Finalize it counts
// as initialized still, and so cannot be set up anew.
class VREL_EXPORT VRELConsoleLogger : public VRELLogger {
 public:
  VRELConsoleLogger();
  // Writes an event at or above the threshold, once initialized.
  void HandleEvent(VRELEvent& event) override;
  // Leaves the bus.
  ~VRELConsoleLogger() override;

  using VRELLogger::Initialize;
  // Starts the logger; does nothing when it is initialized. The environment variable VRELConsoleTracesLevel wins over
  // the argument, and turns the console off if it is no keyword. Without it VREL_LEVEL_DEFAULT asks for INFO.
  virtual void Initialize(VRELEventLevel level);

  // Starts the console of the process.
  static void SetUp(VRELEventLevel level);

  bool IsInitialized() const noexcept { return standardOutput != nullptr || standardError != nullptr; }

  // The console of the process, alive from load to exit.
  static VRELConsoleLogger _console;

 private:
  VRELOutputStream* standardOutput;
  VRELOutputStream* standardError;
};
