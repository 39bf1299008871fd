#include "VRELFilterInputStream.h"

int VRELFilterInputStream::readChar() {
  return source->readChar();
}

int VRELFilterInputStream::read(char* buffer, int count) {
  return source->read(buffer, count);
}

long VRELFilterInputStream::skip(long count) {
  return source->skip(count);
}

long VRELFilterInputStream::available() const {
  return source->available();
}

bool VRELFilterInputStream::add(Gk_String const& text) {
  return source->add(text);
}

long VRELFilterInputStream::getCurrentOffset() const {
  return source->getCurrentOffset();
}

long VRELFilterInputStream::setOffset(long offset) {
  return source->setOffset(offset);
}
