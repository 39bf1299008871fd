// Reads a file.
#pragma once

#include <cstdio>

#include "VRELExport.h"
#include "VRELFileDescriptorHandle.h"
#include "VRELInputStream.h"

class VRELFilePath;

// Reads from a file that is open, or that it opens, with one call of the system for each read; nothing is buffered.
//
// At first a stream stands where its file stands, and moves it for all who share the file. duplicate() gives the stream
// a position of its own, for good: two streams then read one open file without disturbing each other. Only -1 is no
// position: a stream that is set or moved there stands again where its file stands.
//
//   VRELFileInputStream header(path);
//   VRELInputStream* body = header.duplicate();
//   body->setOffset(512);  // the header still stands at 0
//   delete body;
//
// The file closes when the last stream on it is gone, if a stream opened it. Failures are the -1 of the system's call.
class VREL_EXPORT VRELFileInputStream : public VRELInputStream {
 public:
  // Standard input, whose size is taken for -1.
  VRELFileInputStream();
  // The file of a stream that stays the caller's.
  explicit VRELFileInputStream(std::FILE* stream);
  // Opens the file; one that cannot be opened raises "CANNOT_OPEN_FILE" through Gk_ErrMgr.
  explicit VRELFileInputStream(VRELFilePath const& path);
  // Shares the file, and copies the position if the other has one of its own.
  VRELFileInputStream(VRELFileInputStream const&) = default;
  VRELFileInputStream& operator=(VRELFileInputStream const&) = default;

  // Gives this stream a position of its own, which is where the file stands now, and returns a copy that the caller
  // owns. That the file's place is taken also by a stream that has a position already is promised: one that moved and
  // did not read since goes back. A pipe has no place, and its streams go on sharing.
  VRELInputStream* duplicate() override;

  // 0 at the end of the file, -1 on failure and for a count below 0.
  int read(char* buffer, int count) override;

  // Moves by `count`, back where it is negative, and returns the new position, not the distance.
  long skip(long count) override;

  // The size that the file had at construction less the position.
  long available() const override;

  // Moves back by text.len(). Always true.
  bool add(Gk_String const& text) override;

  long getCurrentOffset() const override;
  long setOffset(long offset) override;

  // Standard input.
  static VRELFileInputStream console;

 private:
  // What `position` holds while the file's own position rules.
  static constexpr long shared = -1;

  explicit VRELFileInputStream(VRELFileDescriptor* file);
  void advance(long distance);

  long size = -1;
  long position = shared;
  VRELFileDescriptorHandle descriptor;
};
