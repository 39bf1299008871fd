#include "VRELOutputStream.h"

VRELOutputStream::~VRELOutputStream() {
  target = nullptr;
}

int VRELOutputStream::writeChar(char c) {
  return write(&c, 1);
}
