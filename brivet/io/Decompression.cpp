#include "Decompression.h"

#include <fcntl.h>
#include <minizip/unzip.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

#include "Gk_ErrMgr.h"
#include "PathNames.h"

namespace {

constexpr std::size_t kBlockSize = std::size_t{1} << 18U;
constexpr int kGzip = 16;                // added to the window size for the format gzip
constexpr int kEntryLimit = 100000;      // of a zip archive
constexpr unsigned long kEncrypted = 1;  // flag of an entry

// Inflates one gzip member after the other.
class GzipInflater {
 public:
  explicit GzipInflater(ByteSink const& byteSink) : sink(byteSink), block(kBlockSize) {
    if (inflateInit2(&stream, MAX_WBITS + kGzip) != Z_OK) throw std::bad_alloc();
  }
  ~GzipInflater() { inflateEnd(&stream); }
  GzipInflater(GzipInflater const&) = delete;
  GzipInflater& operator=(GzipInflater const&) = delete;

  // Returns false at the first error.
  bool Inflate(std::string_view bytes) {
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    while (stream.avail_in != 0) {
      if (isBetweenMembers && !BeginMember()) return damage.empty();
      if (!InflateBlock()) return false;
    }
    return true;
  }

  // Returns what is wrong after the last byte; empty if nothing is.
  std::string End() const {
    if (!damage.empty()) return damage;
    return isBetweenMembers ? "" : "the compressed data is truncated";
  }

 private:
  bool BeginMember() {
    if (*stream.next_in == 0) {
      isPadding = true;
      stream.next_in += 1;
      stream.avail_in -= 1;
      return true;
    }
    if (isPadding || *stream.next_in != 0x1F) {
      damage = "unexpected data after the end of the compressed data";
      stream.avail_in = 0;
      return false;
    }
    inflateReset(&stream);
    isBetweenMembers = false;
    return true;
  }

  bool InflateBlock() {
    if (isBetweenMembers) return true;
    int result = Z_OK;
    do {
      stream.next_out = reinterpret_cast<Bytef*>(block.data());
      stream.avail_out = static_cast<uInt>(block.size());
      result = inflate(&stream, Z_NO_FLUSH);
      if (result == Z_MEM_ERROR) throw std::bad_alloc();
      sink({block.data(), block.size() - stream.avail_out});
    } while (result == Z_OK && (stream.avail_in != 0 || stream.avail_out == 0));
    if (result == Z_STREAM_END) {
      isBetweenMembers = true;
    } else if (result != Z_OK && result != Z_BUF_ERROR) {
      damage = std::string("the compressed data is damaged: ") + (stream.msg != nullptr ? stream.msg : "invalid data");
      return false;
    }
    return true;
  }

  ByteSink const& sink;
  std::vector<char> block;
  z_stream stream = {};
  bool isBetweenMembers = false;
  bool isPadding = false;
  std::string damage;
};

// File of minizip that reads a descriptor by position.
struct ZipFile {
  int descriptor;
  ZPOS64_T offset = 0;
  int error = 0;
};

voidpf OpenZip(voidpf opaque, void const* /*name*/, int mode) {
  return (mode & ZLIB_FILEFUNC_MODE_WRITE) == 0 ? opaque : nullptr;
}

uLong ReadZip(voidpf opaque, voidpf /*stream*/, void* buffer, uLong size) {
  auto& file = *static_cast<ZipFile*>(opaque);
  ssize_t count = -1;
  do {
    count = pread(file.descriptor, buffer, size, static_cast<off_t>(file.offset));
  } while (count < 0 && errno == EINTR);
  if (count < 0) file.error = errno;
  if (count <= 0) return 0;
  file.offset += static_cast<ZPOS64_T>(count);
  return static_cast<uLong>(count);
}

uLong WriteZip(voidpf, voidpf, void const*, uLong) {
  return 0;
}

ZPOS64_T TellZip(voidpf opaque, voidpf /*stream*/) {
  return static_cast<ZipFile*>(opaque)->offset;
}

long SeekZip(voidpf opaque, voidpf /*stream*/, ZPOS64_T offset, int origin) {
  auto& file = *static_cast<ZipFile*>(opaque);
  struct stat status;
  if (fstat(file.descriptor, &status) != 0) return -1;
  ZPOS64_T const base = origin == ZLIB_FILEFUNC_SEEK_END   ? static_cast<ZPOS64_T>(status.st_size)
                        : origin == ZLIB_FILEFUNC_SEEK_CUR ? file.offset
                                                           : 0;
  file.offset = base + offset;
  return 0;
}

int CloseZip(voidpf, voidpf) {
  return 0;
}

int ZipError(voidpf opaque, voidpf /*stream*/) {
  return static_cast<ZipFile*>(opaque)->error;
}

struct ZipCloser {
  void operator()(void* archive) const { unzClose(archive); }
};
using ZipArchive = std::unique_ptr<void, ZipCloser>;

ZipArchive Open(ZipFile& file) {
  zlib_filefunc64_def functions = {OpenZip, ReadZip, WriteZip, TellZip, SeekZip, CloseZip, ZipError, &file};
  return ZipArchive(unzOpen2_64("", &functions));
}

bool IsStepName(std::string_view path) {
  std::string extension(ExtensionOf(path));
  for (char& byte : extension) {
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
  }
  return extension == ".stp" || extension == ".step" || extension == ".p21";
}

// Selects the entry to read. Returns what is wrong with the archive; empty if nothing is.
std::string SelectEntry(unzFile archive) {
  unz64_file_pos only = {};
  unz64_file_pos step = {};
  int files = 0;
  int stepFiles = 0;
  int entries = 0;
  for (int result = unzGoToFirstFile(archive); result == UNZ_OK; result = unzGoToNextFile(archive)) {
    char name[4096] = "";
    if (++entries > kEntryLimit) return "the zip archive has too many entries";
    if (unzGetCurrentFileInfo64(archive, nullptr, name, sizeof name - 1, nullptr, 0, nullptr, 0) != UNZ_OK) break;
    std::string_view const path(name);
    if (path.empty() || path.back() == '/') continue;
    ++files;
    unzGetFilePos64(archive, &only);
    if (!IsStepName(path)) continue;
    ++stepFiles;
    step = only;
  }
  if (stepFiles > 1) return "the zip archive contains several STEP files";
  if (files == 0 || (stepFiles == 0 && files > 1)) return "the zip archive contains no STEP file";
  return unzGoToFilePos64(archive, stepFiles == 1 ? &step : &only) == UNZ_OK ? "" : "the zip archive is damaged";
}

}  // namespace

Compression DetectCompression(std::string_view firstBytes) {
  auto const begins = [firstBytes](std::string_view signature) {
    return firstBytes.substr(0, signature.size()) == signature;
  };
  if (begins("\x1F\x8B\x08")) return Compression::Gzip;
  // The second is that of an archive without entries.
  return begins("PK\x03\x04") || begins("PK\x05\x06") ? Compression::Zip : Compression::None;
}

std::string DecompressGzip(ByteSource const& source, ByteSink const& sink) {
  GzipInflater inflater(sink);
  std::vector<char> block(kBlockSize);
  while (std::size_t const count = source(block.data(), block.size())) {
    if (!inflater.Inflate({block.data(), count})) break;
  }
  return inflater.End();
}

std::string DecompressZip(int descriptor, ByteSink const& sink) {
  ZipFile file{descriptor};
  ZipArchive const archive = Open(file);
  if (archive == nullptr) return "the zip archive is truncated or damaged";
  if (std::string problem = SelectEntry(archive.get()); !problem.empty()) return problem;
  unz_file_info64 info = {};
  if (unzGetCurrentFileInfo64(archive.get(), &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK) {
    return "the zip archive is damaged";
  }
  if ((info.flag & kEncrypted) != 0) return "the zip archive is encrypted";
  if (info.compression_method != 0 && info.compression_method != Z_DEFLATED) {
    return "the zip archive uses an unsupported compression method: " + std::to_string(info.compression_method);
  }
  if (unzOpenCurrentFile(archive.get()) != UNZ_OK) return "the zip archive is damaged";
  std::vector<char> block(kBlockSize);
  int count = 0;
  while ((count = unzReadCurrentFile(archive.get(), block.data(), static_cast<unsigned>(block.size()))) > 0) {
    Gk_ErrMgr::checkAbort();
    sink({block.data(), static_cast<std::size_t>(count)});
  }
  int const closed = unzCloseCurrentFile(archive.get());
  if (file.error != 0) return std::string("the zip archive cannot be read: ") + std::strerror(file.error);
  if (count < 0) return "the compressed data is damaged";
  return closed == UNZ_CRCERROR ? "the checksum of the decompressed data is wrong" : "";
}
