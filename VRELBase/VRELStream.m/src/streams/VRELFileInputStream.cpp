#include "VRELFileInputStream.h"

#include <unistd.h>

#include "VRELFilePath.h"

namespace {

// Adds and subtracts with wrap-around: offsets come from callers, and an overflow must not be undefined.
long Sum(long a, long b) {
  return static_cast<long>(static_cast<unsigned long>(a) + static_cast<unsigned long>(b));
}

long Difference(long a, long b) {
  return static_cast<long>(static_cast<unsigned long>(a) - static_cast<unsigned long>(b));
}

}  // namespace

VRELFileInputStream::VRELFileInputStream()
    : descriptor(new VRELFileDescriptor(STDIN_FILENO, VRELFileDescriptor::ModeRead)) {}

VRELFileInputStream::VRELFileInputStream(VRELFileDescriptor* file) : size(file->fileSize()), descriptor(file) {}

VRELFileInputStream::VRELFileInputStream(std::FILE* stream)
    : VRELFileInputStream(new VRELFileDescriptor(stream, VRELFileDescriptor::ModeRead)) {}

VRELFileInputStream::VRELFileInputStream(VRELFilePath const& path)
    : VRELFileInputStream(new VRELFileDescriptor(path, VRELFileDescriptor::ModeRead)) {}

VRELInputStream* VRELFileInputStream::duplicate() {
  position = descriptor->offset(0);
  return new VRELFileInputStream(*this);
}

int VRELFileInputStream::read(char* buffer, int count) {
  if (count < 0) return -1;
  auto const taken = static_cast<int>(descriptor->readBytes(buffer, static_cast<unsigned>(count), position));
  if (taken > 0 && position != kShared) advance(taken);
  return taken;
}

long VRELFileInputStream::skip(long count) {
  if (position == kShared) return descriptor->offset(count);
  advance(count);
  return position;
}

long VRELFileInputStream::available() const {
  return Difference(size, VRELFileInputStream::getCurrentOffset());
}

bool VRELFileInputStream::add(Gk_String const& text) {
  VRELFileInputStream::skip(-static_cast<long>(text.len()));
  return true;
}

long VRELFileInputStream::getCurrentOffset() const {
  return position == kShared ? descriptor->offset(0) : position;
}

long VRELFileInputStream::setOffset(long offset) {
  if (position == kShared) return descriptor->seek(offset);
  position = offset;
  return offset;
}

void VRELFileInputStream::advance(long distance) {
  position = Sum(position, distance);
}
