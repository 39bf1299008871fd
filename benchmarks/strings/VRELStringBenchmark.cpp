#include "VRELString.h"

#include <benchmark/benchmark.h>
#include <unicode/stringoptions.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

#include <cwchar>
#include <memory>
#include <string>
#include <vector>

// Compares each operation with the same operation on an icu::UnicodeString on the heap, for strings of 10, 40 and 400
// units.

namespace {

using HeapText = std::unique_ptr<icu::UnicodeString>;

void Lengths(benchmark::internal::Benchmark* run) {
  run->Arg(10)->Arg(40)->Arg(400);
}

std::wstring Letters(benchmark::State const& state) {
  std::wstring text;
  for (int i = 0; i < state.range(0); ++i) text += static_cast<wchar_t>(L'a' + i % 26);
  return text;
}

HeapText FromWide(wchar_t const* text) {
  static_assert(sizeof(wchar_t) == sizeof(UChar32));
  return std::make_unique<icu::UnicodeString>(
      icu::UnicodeString::fromUTF32(reinterpret_cast<UChar32 const*>(text), static_cast<int>(std::wcslen(text))));
}

void construct(benchmark::State& state) {
  std::wstring const text = Letters(state);
  for (auto _ : state) {
    VRELString const made(text.c_str());
    benchmark::DoNotOptimize(&made);
  }
}
BENCHMARK(construct)->Apply(Lengths);

void peerConstruct(benchmark::State& state) {
  std::wstring const text = Letters(state);
  for (auto _ : state) {
    HeapText const made = FromWide(text.c_str());
    benchmark::DoNotOptimize(made.get());
  }
}
BENCHMARK(peerConstruct)->Apply(Lengths);

void copy(benchmark::State& state) {
  VRELString const text(Letters(state).c_str());
  for (auto _ : state) {
    VRELString const made(text);
    benchmark::DoNotOptimize(&made);
  }
}
BENCHMARK(copy)->Apply(Lengths);

void peerCopy(benchmark::State& state) {
  HeapText const text = FromWide(Letters(state).c_str());
  for (auto _ : state) {
    auto const made = std::make_unique<icu::UnicodeString>(*text);
    benchmark::DoNotOptimize(made.get());
  }
}
BENCHMARK(peerCopy)->Apply(Lengths);

// Strings that differ in the last unit.
void compare(benchmark::State& state) {
  std::wstring const letters = Letters(state);
  VRELString const a((letters + L'a').c_str());
  VRELString const b((letters + L'b').c_str());
  for (auto _ : state) benchmark::DoNotOptimize(a.compareTo(b));
}
BENCHMARK(compare)->Apply(Lengths);

void peerCompare(benchmark::State& state) {
  std::wstring const letters = Letters(state);
  HeapText const a = FromWide((letters + L'a').c_str());
  HeapText const b = FromWide((letters + L'b').c_str());
  for (auto _ : state) benchmark::DoNotOptimize(a->compareCodePointOrder(*b));
}
BENCHMARK(peerCompare)->Apply(Lengths);

void compareIgnoreCase(benchmark::State& state) {
  std::wstring const letters = Letters(state);
  VRELString const a((letters + L'a').c_str());
  VRELString const b((letters + L'B').c_str());
  for (auto _ : state) benchmark::DoNotOptimize(a.compareToIgnoreCase(b));
}
BENCHMARK(compareIgnoreCase)->Apply(Lengths);

void peerCompareIgnoreCase(benchmark::State& state) {
  std::wstring const letters = Letters(state);
  HeapText const a = FromWide((letters + L'a').c_str());
  HeapText const b = FromWide((letters + L'B').c_str());
  for (auto _ : state) benchmark::DoNotOptimize(a->caseCompare(*b, U_COMPARE_CODE_POINT_ORDER));
}
BENCHMARK(peerCompareIgnoreCase)->Apply(Lengths);

void substring(benchmark::State& state) {
  VRELString const text(Letters(state).c_str());
  int const end = text.length() - 1;
  for (auto _ : state) {
    VRELString const made = text.substring(1, end);
    benchmark::DoNotOptimize(&made);
  }
}
BENCHMARK(substring)->Apply(Lengths);

void peerSubstring(benchmark::State& state) {
  HeapText const text = FromWide(Letters(state).c_str());
  int const length = text->length() - 2;
  for (auto _ : state) {
    auto const made = std::make_unique<icu::UnicodeString>(*text, 1, length);
    benchmark::DoNotOptimize(made.get());
  }
}
BENCHMARK(peerSubstring)->Apply(Lengths);

void convertToUtf8(benchmark::State& state) {
  VRELString const text(Letters(state).c_str());
  std::vector<char> buffer(2000);
  for (auto _ : state) {
    int const size = text.getConvertToUTF8Size();
    text.convertToUTF8(buffer.data(), size);
    benchmark::DoNotOptimize(buffer.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(convertToUtf8)->Apply(Lengths);

void peerConvertToUtf8(benchmark::State& state) {
  HeapText const text = FromWide(Letters(state).c_str());
  std::vector<char> buffer(2000);
  for (auto _ : state) {
    int size = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8(nullptr, 0, &size, text->getBuffer(), text->length(), &status);
    status = U_ZERO_ERROR;
    u_strToUTF8(buffer.data(), size + 1, nullptr, text->getBuffer(), text->length(), &status);
    benchmark::DoNotOptimize(buffer.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(peerConvertToUtf8)->Apply(Lengths);

}  // namespace
