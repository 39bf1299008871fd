#include "VRELFileOutputStream.h"

#include <unistd.h>

#include "VRELFilePath.h"

VRELFileOutputStream::VRELFileOutputStream()
    : VRELFileOutputStream(new VRELFileDescriptor(STDOUT_FILENO, VRELFileDescriptor::ModeWrite)) {}

VRELFileOutputStream::VRELFileOutputStream(std::FILE* stream)
    : VRELFileOutputStream(new VRELFileDescriptor(stream, VRELFileDescriptor::ModeWrite)) {}

VRELFileOutputStream::VRELFileOutputStream(VRELFilePath const& path)
    : VRELFileOutputStream(new VRELFileDescriptor(path, VRELFileDescriptor::ModeWrite)) {}

VRELFileOutputStream::VRELFileOutputStream(VRELFileDescriptor* file) : descriptor(file) {}

VRELFileOutputStream::~VRELFileOutputStream() {
  commit();
}

int VRELFileOutputStream::write(char const* buffer, int count) {
  if (count < 0 || !descriptor.IsValid()) return -1;
  return static_cast<int>(descriptor->writeBytes(buffer, static_cast<unsigned>(count), -1));
}

void VRELFileOutputStream::flush() {
  commit();
}

void VRELFileOutputStream::close() {}

void VRELFileOutputStream::commit() {
  if (descriptor.IsValid()) descriptor->commit();
}
