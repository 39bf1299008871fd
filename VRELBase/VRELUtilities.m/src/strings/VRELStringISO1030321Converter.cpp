#include "VRELStringISO1030321Converter.h"

#include <cstring>

VRELStringISO1030321Converter::~VRELStringISO1030321Converter() {
  ReleaseUSAsciiString();
}

void VRELStringISO1030321Converter::ResetUSAsciiString(char const* text) {
  char* copy = nullptr;
  if (text != nullptr) {
    std::size_t const size = std::strlen(text) + 1;
    copy = new char[size];
    std::memcpy(copy, text, size);
  }
  ReleaseUSAsciiString();
  USAsciiString = copy;
}

void VRELStringISO1030321Converter::ReleaseUSAsciiString() {
  delete[] USAsciiString;
  USAsciiString = nullptr;
}
