// Data elements of interactive pages, for tests.
#pragma once

#include <gtest/gtest.h>
#include <libdeflate.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "CheckedOutputStream.h"
#include "DataElements.h"

inline std::string DecodeBase64(std::string_view text) {
  static constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string bytes;
  unsigned long bits = 0;
  int count = 0;
  for (char const digit : text) {
    if (digit == '=') break;
    bits = (bits << 6U | kDigits.find(digit)) & 0xFFFFFFU;
    count += 6;
    if (count >= 8) bytes += static_cast<char>(bits >> static_cast<unsigned>(count -= 8) & 0xFFU);
  }
  return bytes;
}

inline std::string Decompress(std::string const& gzip) {
  libdeflate_decompressor* const decompressor = libdeflate_alloc_decompressor();
  std::string bytes(64U << 20U, '\0');
  std::size_t size = 0;
  EXPECT_EQ(libdeflate_gzip_decompress(decompressor, gzip.data(), gzip.size(), bytes.data(), bytes.size(), &size),
            LIBDEFLATE_SUCCESS);
  libdeflate_free_decompressor(decompressor);
  bytes.resize(size);
  return bytes;
}

// Returns the part of a page between two strings, or "(absent)".
inline std::string Between(std::string const& page, std::string const& begin, std::string const& end) {
  std::size_t const at = page.find(begin);
  if (at == page.npos) return "(absent)";
  return page.substr(at + begin.size(), page.find(end, at + begin.size()) - at - begin.size());
}

// Returns the attributes of a data element after its name.
inline std::string AttributesOf(std::string const& page, std::string const& name) {
  return Between(page, "id=\"data-" + name + "\"", ">");
}

// Returns the content of a data element, or "(absent)".
inline std::string DataOf(std::string const& page, std::string const& name) {
  std::string const element = Between(page, "id=\"data-" + name + "\"", "</script>");
  if (element == "(absent)") return element;
  return Decompress(DecodeBase64(std::string_view(element).substr(element.find('>') + 1)));
}

// Returns what a function writes to data elements.
template <class Function>
std::string ElementsOf(Function const& write) {
  return TextOf([&](VRELOutputStream* target) {
    CheckedOutputStream stream(target);
    DataElements elements(stream);
    write(elements);
  });
}
