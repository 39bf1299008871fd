#include "StepLines.h"

#include <algorithm>

#include "StepBytes.h"
#include "StepEntityReader.h"

long StepLines::At(std::uint32_t instance) {
  std::uint32_t const head = instance - instance % kStep;
  bool const isNear = last <= instance && last >= head;
  std::uint32_t const from = isNear ? last : head;
  long line = isNear ? lastLine : lines[head / kStep];
  unsigned long offset = contents.At(from).Offset();
  unsigned long const end = contents.At(instance).Offset();
  bool isAfterReturn = false;
  char block[4096];
  while (offset < end) {
    std::size_t const size = buffer.ReadAt(offset, block, std::min<unsigned long>(end - offset, sizeof block));
    if (size == 0) break;  // a file that was truncated
    line += CountLineEnds(block, size, isAfterReturn);
    isAfterReturn = block[size - 1] == '\r';
    offset += size;
  }
  last = instance;
  lastLine = line;
  return line;
}
