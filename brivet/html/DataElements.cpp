#include "DataElements.h"

#include <libdeflate.h>

#include <algorithm>
#include <cstddef>
#include <new>

#include "Base64.h"

namespace {

constexpr int kLevel = 5;  // of libdeflate: 200 MB/s, and 4 % larger than zlib at its default
constexpr std::size_t kPiece = 65536;

}  // namespace

DataElements::DataElements(CheckedOutputStream& target)
    : stream(target), compressor(libdeflate_alloc_compressor(kLevel)) {
  if (compressor == nullptr) throw std::bad_alloc();
}

DataElements::~DataElements() {
  libdeflate_free_compressor(compressor);
}

void DataElements::Write(std::string_view name, std::string_view attributes, std::string_view bytes) {
  packed.resize(libdeflate_gzip_compress_bound(compressor, bytes.size()));
  std::size_t const size =
      libdeflate_gzip_compress(compressor, bytes.data(), bytes.size(), packed.data(), packed.size());
  encoded.clear();
  AppendBase64(encoded, std::string_view(packed.data(), size));
  WriteEncoded(name, attributes, encoded);
}

void DataElements::WriteEncoded(std::string_view name, std::string_view attributes, std::string_view base64) {
  std::string begin = "<script type=\"application/gzip\" id=\"data-";
  begin.append(name).append("\"").append(attributes).append(">");
  WriteMarkup(begin);
  WriteMarkup(base64);
  WriteMarkup("</script>\n");
}

void DataElements::WriteMarkup(std::string_view markup) {
  while (!markup.empty()) {
    std::size_t const size = std::min(markup.size(), kPiece);
    stream.write(markup.data(), static_cast<int>(size));
    markup.remove_prefix(size);
  }
  stream.Check();
}
