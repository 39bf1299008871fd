// Turns events into text on a stream.
#pragma once

#include <cstdio>

#include "VRELEvent.h"
#include "VRELEventListener.h"
#include "VRELExport.h"

class VRELFilePath;
class VRELOutputStream;

// A listener that writes each event at or above its threshold as the event itself gives it: no time, level or number is
// added. Idle until it gets a stream; then on the bus until Finalize, after which it may get another one.
//
//   VRELLogger logger;
//   logger.Initialize(new VRELStringOutputStream, VREL_LEVEL_VERBOSE);
//
// Nothing is buffered and writes are not tested: with a full disk the run goes on and the log ends. Used on one thread.
class VREL_EXPORT VRELLogger : public VRELEventListener {
 public:
  // Idle, and not on the bus.
  VRELLogger();
  VRELLogger(VRELLogger const&) = delete;
  VRELLogger& operator=(VRELLogger const&) = delete;

  // Writes an event at or above the threshold on the stream; without a stream, nothing.
  void HandleEvent(VRELEvent& event) override;
  // Finalizes.
  ~VRELLogger() override;

  // Each of these starts the logger, and does nothing for an invalid path, a null file or stream, or when it is active.
  // VREL_LEVEL_DEFAULT asks for the threshold that the environment variable VRELLogLevel names by its keyword, INFO if
  // it names none; any other level wins over the variable.
  //
  // Makes or empties a file of its own. A file that cannot be opened leaves the logger idle, and the error event
  // "CANNOT_OPEN_FILE" on the bus. Whatever is thrown meanwhile is kept from the caller, except for a
  // VRELAbortException. It is promised that an active logger empties the file all the same and keeps it open to the end
  // of the process.
  virtual void Initialize(VRELFilePath& path, VRELEventLevel level);
  // Writes to the descriptor of a file that stays the caller's, and open as long as the logger is active. What the
  // caller still buffers there is not waited for.
  virtual void Initialize(std::FILE* file, VRELEventLevel level);
  // Takes the stream, unless it does nothing. Where memory runs out the stream is deleted, and the logger stays idle.
  virtual void Initialize(VRELOutputStream* newStream, VRELEventLevel level);

  // Leaves the bus and deletes the stream.
  virtual void Finalize();

  // Null while idle.
  VRELOutputStream* GetOutputStream() const noexcept { return stream; }

 protected:
  bool IsPassing(VRELEvent const& event) const noexcept { return event.GetLevel() >= threshold; }

  // Sets the threshold and joins the bus.
  void Listen(VRELEventLevel level);

 private:
  VRELEventLevel threshold;
  VRELOutputStream* stream;
};
