#include "VRELArchive.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "VRELStringInputStream.h"

namespace {

constexpr int recordCount = 125000;
constexpr int valuesInRecord = 8;

// One object of a model: a million values of all widths in 125000 of them.
struct Record {
  unsigned char kind = 0;
  unsigned short layer = 0;
  int id = 0;
  unsigned int flags = 0;
  float width = 0;
  double x = 0;
  double y = 0;
  short colour = 0;
};

template <class Reader>
void ReadRecord(Reader& reader, Record& record) {
  reader >> record.kind >> record.layer >> record.id >> record.flags >> record.width >> record.x >> record.y >>
      record.colour;
}

std::string Records() {
  std::string bytes;
  auto const add = [&bytes](auto value) { bytes.append(reinterpret_cast<char const*>(&value), sizeof value); };
  for (int i = 0; i < recordCount; ++i) {
    add(static_cast<unsigned char>(i));
    add(static_cast<unsigned short>(i));
    add(i);
    add(0xF0000000U + static_cast<unsigned>(i));
    add(static_cast<float>(i) * 0.25F);
    add(i * 0.5);
    add(i * -0.125);
    add(static_cast<short>(i));
  }
  return bytes;
}

void archiveValues(benchmark::State& state) {
  std::string const bytes = Records();
  Gk_String const text(bytes.c_str(), static_cast<int>(bytes.size()) + 1);
  for (auto _ : state) {
    VRELStringInputStream stream(text);
    VRELArchive archive(&stream);
    for (int i = 0; i < recordCount; ++i) {
      Record record;
      ReadRecord(archive, record);
      benchmark::DoNotOptimize(record);
    }
  }
  state.SetItemsProcessed(state.iterations() * recordCount * valuesInRecord);
}
BENCHMARK(archiveValues)->Unit(benchmark::kMillisecond);

// Reads from memory with memcpy and a bounds check, the minimum for a reader.
class MemoryReader {
 public:
  explicit MemoryReader(std::string const& bytes) : at(bytes.data()), end(bytes.data() + bytes.size()) {}

  template <class T>
  MemoryReader& operator>>(T& value) {
    if (static_cast<std::size_t>(end - at) < sizeof value) throw 1;
    std::memcpy(&value, at, sizeof value);
    at += sizeof value;
    return *this;
  }

 private:
  char const* at;
  char const* end;
};

void peerMemcpy(benchmark::State& state) {
  std::string const bytes = Records();
  for (auto _ : state) {
    MemoryReader reader(bytes);
    for (int i = 0; i < recordCount; ++i) {
      Record record;
      ReadRecord(reader, record);
      benchmark::DoNotOptimize(record);
    }
  }
  state.SetItemsProcessed(state.iterations() * recordCount * valuesInRecord);
}
BENCHMARK(peerMemcpy)->Unit(benchmark::kMillisecond);

// The same with an opaque call per value, like a read of an archive from a stream.
[[gnu::noinline]] bool CopyFrom(char const*& at, char const* end, void* to, std::size_t count) {
  if (static_cast<std::size_t>(end - at) < count) return false;
  std::memcpy(to, at, count);
  at += count;
  return true;
}

class CallingReader {
 public:
  explicit CallingReader(std::string const& bytes) : at(bytes.data()), end(bytes.data() + bytes.size()) {}

  template <class T>
  CallingReader& operator>>(T& value) {
    if (!CopyFrom(at, end, &value, sizeof value)) throw 1;
    return *this;
  }

 private:
  char const* at;
  char const* end;
};

void peerMemcpyByCall(benchmark::State& state) {
  std::string const bytes = Records();
  for (auto _ : state) {
    CallingReader reader(bytes);
    for (int i = 0; i < recordCount; ++i) {
      Record record;
      ReadRecord(reader, record);
      benchmark::DoNotOptimize(record);
    }
  }
  state.SetItemsProcessed(state.iterations() * recordCount * valuesInRecord);
}
BENCHMARK(peerMemcpyByCall)->Unit(benchmark::kMillisecond);

}  // namespace
