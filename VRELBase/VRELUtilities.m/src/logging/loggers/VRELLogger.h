// Logger on an output stream.
#pragma once

#include <cstdio>

#include "VRELEvent.h"
#include "VRELEventListener.h"
#include "VRELExport.h"

class VRELFilePath;
class VRELOutputStream;

// Listener that writes the text of events at or above a threshold to a stream. It adds no time, level or number.
//
//   VRELLogger logger;
//   logger.Initialize(new VRELFileOutputStream(stdout), VREL_LEVEL_VERBOSE);
//
// A logger is idle until it is initialized. Finalize() makes it idle again, and it can then be initialized again.
//
// Every text is written at once; nothing is buffered. Write errors are ignored.
// Thread safety: none.
class VREL_EXPORT VRELLogger : public VRELEventListener {
 public:
  // Creates an idle logger.
  VRELLogger();
  VRELLogger(VRELLogger const&) = delete;
  VRELLogger& operator=(VRELLogger const&) = delete;

  // Writes the event to the stream if its level is at or above the threshold. Does nothing if the logger is idle.
  void HandleEvent(VRELEvent& event) override;
  // Calls Finalize().
  ~VRELLogger() override;

  // Initialize sets the threshold and the stream and adds the logger to the bus. It does nothing if the path is
  // invalid, if the file or stream is null, or if the logger is active. VREL_LEVEL_DEFAULT reads the threshold from the
  // environment variable VRELLogLevel, with VREL_LEVEL_INFO if it is unset or not a keyword. Any other level overrides
  // the variable.

  // Creates or truncates the file.
  //
  // Errors: if the file cannot be opened, the error event "CANNOT_OPEN_FILE" is sent and the logger stays idle. Throws
  // a new VRELAbortException if a VRELAbortException is thrown meanwhile; all other exceptions are dropped.
  // Compatibility: an active logger truncates the file too, and keeps it open until the process exits.
  virtual void Initialize(VRELFilePath& path, VRELEventLevel level);
  // Writes to the descriptor of the file. Bytes in the buffer of `file` are not flushed before.
  //
  // Ownership: the caller keeps the file, which must stay open while the logger is active.
  virtual void Initialize(std::FILE* file, VRELEventLevel level);
  // Writes to the stream.
  //
  // Ownership: takes the stream, unless the call does nothing. If an allocation fails, the stream is deleted and the
  // logger stays idle.
  virtual void Initialize(VRELOutputStream* newStream, VRELEventLevel level);

  // Removes the logger from the bus and deletes the stream.
  virtual void Finalize();

  // Returns the stream; null if the logger is idle.
  VRELOutputStream* GetOutputStream() const noexcept { return stream; }

 protected:
  bool IsPassing(VRELEvent const& event) const noexcept { return event.GetLevel() >= threshold; }

  // Sets the threshold and adds the logger to the bus.
  void Listen(VRELEventLevel level);

 private:
  VRELEventLevel threshold;
  VRELOutputStream* stream;
};
