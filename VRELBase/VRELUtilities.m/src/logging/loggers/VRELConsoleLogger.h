// Logger on the standard streams.
#pragma once

#include "VRELLogger.h"

// Logger on the standard streams: events below level WARNING go to standard output, all others to standard error.
// Writes to the descriptors directly, without the buffers of the C library.
//
//   VRELConsoleLogger::SetUp(VREL_LEVEL_VERBOSE);  // unless VRELConsoleTracesLevel is set
//
// Compatibility: after Finalize() the console still counts as initialized, so that it cannot be started again.
class VREL_EXPORT VRELConsoleLogger : public VRELLogger {
 public:
  VRELConsoleLogger();
  // Writes the event if the console is initialized and the level of the event is at or above the threshold.
  void HandleEvent(VRELEvent& event) override;
  // Removes the logger from the bus.
  ~VRELConsoleLogger() override;

  using VRELLogger::Initialize;
  // Starts the logger, unless it is initialized.
  //
  // The environment variable VRELConsoleTracesLevel overrides `level`; a value that is not a keyword turns the console
  // off. Without the variable VREL_LEVEL_DEFAULT means VREL_LEVEL_INFO.
  virtual void Initialize(VRELEventLevel level);

  // Initializes the console of the process.
  static void SetUp(VRELEventLevel level);

  bool IsInitialized() const noexcept { return standardOutput != nullptr || standardError != nullptr; }

  // Console of the process. Exists from load to exit.
  static VRELConsoleLogger _console;

 private:
  VRELOutputStream* standardOutput;
  VRELOutputStream* standardError;
};
