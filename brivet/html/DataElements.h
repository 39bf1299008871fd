// Compressed data in an HTML page.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "CheckedOutputStream.h"

struct libdeflate_compressor;

// Writes data elements, which the scripts of the page read by their names:
//
//   <script type="application/gzip" id="data-NAME" ATTRIBUTES>BASE64 OF GZIP</script>
//
// Browsers keep the content of such an element as a string and do not execute it.
// Errors: std::bad_alloc; CheckedOutputStream::Failure.
class DataElements {
 public:
  explicit DataElements(CheckedOutputStream& target);
  DataElements(DataElements const&) = delete;
  DataElements& operator=(DataElements const&) = delete;
  ~DataElements();

  // Compresses and writes one element. `attributes` is markup, empty or with a blank at its beginning.
  void Write(std::string_view name, std::string_view attributes, std::string_view bytes);
  // Writes an element whose content is compressed and encoded already.
  void WriteEncoded(std::string_view name, std::string_view attributes, std::string_view base64);
  // Writes markup to the same stream, in pieces of bounded size.
  void WriteMarkup(std::string_view markup);

 private:
  CheckedOutputStream& stream;
  libdeflate_compressor* const compressor;
  std::vector<char> packed;  // members so that their memory is reused
  std::string encoded;
};
