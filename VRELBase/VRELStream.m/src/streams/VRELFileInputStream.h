// Input stream on a file.
#pragma once

#include <cstdio>

#include "VRELExport.h"
#include "VRELFileDescriptorHandle.h"
#include "VRELInputStream.h"

class VRELFilePath;

// Reads a file that is already open, or that it opens, with one system call per read and no buffering.
//
// A stream starts in shared mode: it reads at the position of the file description, and moves it for all users of the
// file. duplicate() switches the stream to a private position, so that the two streams read one open file
// independently. A stream that is set or moved to -1 returns to shared mode.
//
//   VRELFileInputStream header(path);
//   VRELInputStream* body = header.duplicate();
//   body->setOffset(512);  // header is still at 0
//   delete body;
//
// Ownership: a file that a stream opened is closed when the last stream on it is destroyed.
// Errors: failed reads return the -1 of the system call.
class VREL_EXPORT VRELFileInputStream : public VRELInputStream {
 public:
  // Reads standard input. Its size counts as -1.
  VRELFileInputStream();
  // Reads the file of a C stream.
  // Ownership: the caller keeps and closes `stream`.
  explicit VRELFileInputStream(std::FILE* stream);
  // Opens a file.
  // Errors: raises "CANNOT_OPEN_FILE" through Gk_ErrMgr if the file cannot be opened.
  explicit VRELFileInputStream(VRELFilePath const& path);
  // Shares the file, and copies a private position.
  VRELFileInputStream(VRELFileInputStream const&) = default;
  VRELFileInputStream& operator=(VRELFileInputStream const&) = default;

  // Sets the private position to the position of the file, and returns a copy, which the caller deletes.
  // Compatibility: also a stream that has a private position takes that of the file, so that moves since its last read
  // are lost. A pipe has no position: its streams stay in shared mode.
  VRELInputStream* duplicate() override;

  // Returns 0 at the end of the file, and -1 on failure or for a count below 0.
  int read(char* buffer, int count) override;

  // Moves by `count` bytes, backward if negative.
  // Compatibility: returns the new position, not the distance.
  long skip(long count) override;

  // Returns the size of the file at construction less the position.
  long available() const override;

  // Moves back by text.len() and returns true.
  bool add(Gk_String const& text) override;

  long getCurrentOffset() const override;
  long setOffset(long offset) override;

  // Standard input.
  static VRELFileInputStream console;

 private:
  // Value of `position` in shared mode.
  static constexpr long kShared = -1;

  explicit VRELFileInputStream(VRELFileDescriptor* file);
  void advance(long distance);

  long size = -1;
  long position = kShared;
  VRELFileDescriptorHandle descriptor;
};
