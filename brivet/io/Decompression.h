// Decompression of gzip data and zip archives.
//
// gzip is decompressed with zlib as a stream. A zip archive is read with minizip, which needs a file with random
// access: its directory is at its end. Damaged data is decompressed up to the damage.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

enum class Compression { None, Gzip, Zip };

// Number of bytes that DetectCompression needs.
constexpr std::size_t kSignatureSize = 4;

// Returns the compression of a file by its first bytes.
Compression DetectCompression(std::string_view firstBytes);

// Reads up to `size` bytes into `block`. Returns their number, 0 at the end.
using ByteSource = std::function<std::size_t(char* block, std::size_t size)>;
// Takes decompressed bytes.
using ByteSink = std::function<void(std::string_view bytes)>;

// Decompresses gzip data, which may consist of several members. Zero bytes after the last one are ignored. Memory does
// not depend on the size of the data.
//
// Returns what is wrong with the data, in one line; empty if nothing is. Exceptions of the source and the sink pass.
std::string DecompressGzip(ByteSource const& source, ByteSink const& sink);

// Decompresses the STEP file of a zip archive: its only file, or the only one with the extension .stp, .step or .p21.
//
// Requires: the descriptor is that of a regular file.
// Returns as DecompressGzip.
std::string DecompressZip(int descriptor, ByteSink const& sink);
