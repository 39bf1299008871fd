// References are found without parsing: the instances were checked when the file was read, so that all that matters is
// where strings, comments and the instance end. Blocks of 16 bytes are searched for the bytes that do. Instances with
// comments or with references to nothing, and those that cross the window, are left to the scanner, which also has the
// lines and columns for messages.
#include "StepReferences.h"

#include <algorithm>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "Gk_ErrMgr.h"
#include "InputError.h"
#include "StepBytes.h"
#include "StepEntityReader.h"
#include "StepParser.h"

namespace {

constexpr std::size_t kNameDigits = 20;  // of an id in a message

// How many referrers are kept in memory at once, as a share of the file's bytes: a reference has at least three.
constexpr std::uint64_t kBytesForEachKept = 12;

constexpr int kSafeDigits = 18;  // of an id that fits into 63 bits

// Returns the first byte that is # ' / ; or NUL. Up to 15 bytes after it are read.
char const* FindMark(char const* at) {
#ifdef __SSE2__
  __m128i const sign = _mm_set1_epi8('#');
  __m128i const apostrophe = _mm_set1_epi8('\'');
  __m128i const slash = _mm_set1_epi8('/');
  __m128i const semicolon = _mm_set1_epi8(';');
  for (;; at += 16) {
    __m128i const block = _mm_loadu_si128(reinterpret_cast<__m128i const*>(at));
    __m128i const first = _mm_or_si128(_mm_cmpeq_epi8(block, sign), _mm_cmpeq_epi8(block, apostrophe));
    __m128i const second = _mm_or_si128(_mm_cmpeq_epi8(block, slash), _mm_cmpeq_epi8(block, semicolon));
    __m128i const end = _mm_cmpeq_epi8(block, _mm_setzero_si128());
    int const found = _mm_movemask_epi8(_mm_or_si128(_mm_or_si128(first, second), end));
    if (found != 0) return at + __builtin_ctz(static_cast<unsigned>(found));
  }
#else
  while (*at != '#' && *at != '\'' && *at != '/' && *at != ';' && *at != '\0') ++at;
  return at;
#endif
}

}  // namespace

StepReferences::StepReferences(StepContents const& instances, StepBuffer& bytes, StepScanner& tokens,
                               StepLines& instanceLines)
    : contents(instances),
      buffer(bytes),
      scanner(tokens),
      lines(instanceLines),
      ids(
          [this](std::uint32_t instance) {
            StepEntityReader const& entity = contents.At(instance);
            return entity.IsRead() ? contents.NumberOf(entity) : StepIds::kLeftOut;
          },
          [this](std::uint64_t offset, std::size_t limit) { return DigitsAt(offset, limit); }) {}

void StepReferences::AddExternal(DocumentVisitor::Id const& id) {
  externals.emplace_back(id.digits);
}

void StepReferences::IndexIds() {
  if (isIndexed) return;
  std::sort(externals.begin(), externals.end());
  ids.Index(readCount, [](std::uint32_t, std::uint32_t) {});
  isIndexed = true;
}

void StepReferences::Build(OnDuplicate const& onDuplicate, OnDangling const& onDangling) {
  std::sort(externals.begin(), externals.end());
  ids.Index(readCount, onDuplicate);
  isIndexed = true;
  // The first pass over the references counts them. Only that one reports those to nothing.
  auto const traverse = [this, onDangling, isFirst = true](StepReferrers::Note const& note) mutable {
    ReadReferences([&](std::uint32_t source, std::uint32_t target) {
      if (target != StepIds::kNone) {
        note(source, target);
      } else if (isFirst && !IsExternal(StepParser::IdOf(scanner.Current()))) {
        onDangling(source);
      }
    });
    isFirst = false;
  };
  referrers = std::make_unique<StepReferrers>(contents.Count(), traverse, buffer.Size() / kBytesForEachKept);
}

// An instance ends before the next one begins. Without this limit a file that is overwritten while it is read could
// make each instance seem to extend to the end of the file.
void StepReferences::ReadReferences(StepReferrers::Note const& note) {
  for (std::uint32_t source = 0; source < contents.Count(); ++source) {
    Gk_ErrMgr::checkAbort();
    StepEntityReader const& entity = contents.At(source);
    if (!entity.IsRead()) continue;
    scanner.Seek({entity.Offset(), 0});
    unsigned long const end = contents.EndOf(source);
    if (FindTargets(scanner.Ahead(), end - entity.Offset())) {
      for (std::uint32_t const target : targets) note(source, target);
      continue;
    }
    // Only now is the line needed.
    scanner.Seek({entity.Offset(), lines.At(source)});
    StepBuffer::Limit const limit(buffer, end);
    while (scanner.NextReference()) note(source, ids.Find(StepParser::IdOf(scanner.Current())));
  }
}

// Sets the targets of the instance at `at`. Returns false if the scanner has to read it.
bool StepReferences::FindTargets(char const* at, std::size_t limit) {
  targets.clear();
  char const* const begin = at;
  while (true) {
    at = FindMark(at);
    switch (*at++) {
      case ';':
        return static_cast<std::size_t>(at - begin) <= limit;
      case '\'':
        while (*at != '\'' && *at != '\0') ++at;
        if (*at++ == '\0') return false;
        break;
      case '#': {
        char const* const digits = at;
        DocumentVisitor::Id id;
        std::uint64_t number = 0;
        for (; IsDigit(*at); ++at) number = number * 10 + static_cast<std::uint64_t>(*at - '0');
        if (at - digits > kSafeDigits) return false;
        if (at == digits) break;
        id.number = static_cast<std::int64_t>(number);
        std::uint32_t const target = ids.Find(id);
        if (target == StepIds::kNone) return false;
        targets.push_back(target);
        break;
      }
      default:
        return false;
    }
  }
}

bool StepReferences::Resolve(DocumentVisitor::Id& id) const {
  std::uint32_t const instance = ids.Find(id);
  if (instance != StepIds::kNone) {
    id.ordinal = instance + 1;
    return true;
  }
  return IsExternal(id);
}

bool StepReferences::IsExternal(DocumentVisitor::Id const& id) const {
  return !externals.empty() && std::binary_search(externals.begin(), externals.end(), id.digits);
}

DocumentVisitor::Id StepReferences::IdAt(std::uint32_t instance, std::string& digits, std::size_t limit) const {
  DocumentVisitor::Id id = ids.IdOf(contents.NumberOf(contents.At(instance)), digits, limit);
  id.ordinal = instance + 1;
  return id;
}

std::string StepReferences::NameAt(std::uint32_t instance) const {
  return NameOf(contents.NumberOf(contents.At(instance)));
}

std::string StepReferences::NameOf(std::uint64_t number) const {
  std::string digits;
  ids.IdOf(number, digits, kNameDigits + 1);
  return "#" + (digits.size() <= kNameDigits ? digits : digits.substr(0, kNameDigits) + "...");
}

// Does not use the window of the buffer: ids are asked for in any order. The digits end before the instance that they
// name begins, even if the file was overwritten with digits meanwhile.
std::string StepReferences::DigitsAt(std::uint64_t offset, std::size_t limit) const {
  std::string digits;
  char block[256];
  while (digits.size() < limit) {
    std::size_t const wanted = std::min(limit - digits.size(), sizeof block);
    std::size_t const count = buffer.ReadAt(offset + digits.size(), block, wanted);
    char* const end = std::find_if(block, block + count, [](char byte) { return !IsDigit(byte); });
    digits.append(block, end);
    if (end != block + wanted) break;
    if (digits.size() == sizeof block) limit = std::min<std::size_t>(limit, contents.BeginAfter(offset) - offset);
  }
  return digits;
}
