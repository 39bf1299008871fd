#include "ByteSource.h"

#include <utility>

ByteSource::ByteSource(Fill fillBlock) : fill(std::move(fillBlock)) {}

bool ByteSource::Refill() {
  if (ended) return false;
  position = 0;
  count = fill(block.data(), block.size());
  ended = count == 0;
  return !ended;
}
