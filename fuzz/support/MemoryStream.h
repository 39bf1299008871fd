// Input stream in memory with all operations of a stream.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>

#include "VRELInputStream.h"

// Reads a string, at most `most` bytes per call, as from a pipe.
// Requires: `most` >= 1.
class MemoryStream : public VRELInputStream {
 public:
  MemoryStream(std::string bytes, int mostAtOnce) : text(std::move(bytes)), most(mostAtOnce) {}

  VRELInputStream* duplicate() override { return nullptr; }
  int read(char* buffer, int count) override {
    long const taken = std::min({static_cast<long>(count), static_cast<long>(most), available()});
    if (taken < 1) return 0;
    std::memcpy(buffer, text.data() + position, static_cast<std::size_t>(taken));
    position += taken;
    return static_cast<int>(taken);
  }
  long available() const override { return static_cast<long>(text.size()) - position; }
  bool add(Gk_String const& pushed) override {
    position = std::max(position - pushed.len(), 0L);
    return true;
  }
  long getCurrentOffset() const override { return position; }
  long setOffset(long offset) override {
    position = std::clamp(offset, 0L, static_cast<long>(text.size()));
    return position;
  }

 private:
  std::string text;
  int most;
  long position = 0;
};
