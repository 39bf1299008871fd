// Output stream that compresses.
#pragma once

#include <memory>

#include "VRELOutputStream.h"

// Compresses to gzip (RFC 1952), without a time so that equal bytes give equal files.
//
// Errors: std::bad_alloc if zlib cannot allocate memory.
class GzipOutputStream final : public VRELOutputStream {
 public:
  // The target must outlive the stream.
  explicit GzipOutputStream(VRELOutputStream& compressedTarget);
  ~GzipOutputStream() override;
  GzipOutputStream(GzipOutputStream const&) = delete;
  GzipOutputStream& operator=(GzipOutputStream const&) = delete;

  // Returns `count`, or -1 after a failure of the target and for a negative count.
  int write(char const* bytes, int count) override;
  // Do nothing: the stream is completed by Finish.
  void flush() override {}
  void close() override {}

  // Writes the end of the compressed data. Call it once, after the last byte. Returns false after a failure of the
  // target.
  bool Finish();

 private:
  struct State;

  bool Compress(char const* bytes, int count, int flush);

  VRELOutputStream& compressed;
  std::unique_ptr<State> state;
  bool hasFailed = false;
};
