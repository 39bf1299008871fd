// Applies generated operations to a Gk_String and to views of it, and compares all bytes with a model on std::string.
#include "Gk_String.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "FuzzInput.h"
#include "Require.h"

namespace {

std::string ElementsOf(Gk_String const& string) {
  return std::string(string.begin(), string.end());
}

struct Model {
  std::string held;

  int Length() const { return static_cast<int>(held.size()); }
  void DropLast() {
    if (!held.empty()) held.pop_back();
  }
  void Chop(int n) {
    if (n >= Length()) return;
    held.resize(static_cast<std::size_t>(std::max(n, -1) + 1));
    held += '\0';
  }
  void Ensure(int n) {
    int const length = Length();
    if (n <= length) {
      Chop(n);
      return;
    }
    DropLast();
    held.append(static_cast<std::size_t>(n - length), ' ');
    held += '\0';
  }
};

// Checks a view whose start is moved anywhere, with the same text in the model.
void CheckView(Gk_String const& string, std::string const& held, int offset) {
  Gk_ROString view(string.dataStr());
  view.offset(offset);
  long const size = static_cast<long>(held.size());
  Require(view.len() == size - offset, "the length is the size minus the offset");
  for (long index = -3; index <= size + 3; ++index) {
    long const place = index + offset;
    char const expected = place >= 0 && place < size ? held[static_cast<std::size_t>(place)] : '\0';
    Require(view[static_cast<int>(index)] == expected, "an index outside the bytes reads 0");
  }
  std::string text;
  if (offset >= 0 && offset <= size) text = std::string(held.substr(static_cast<std::size_t>(offset)).c_str());
  Require(view.text() == text, "the text ends at the first zero byte");
  std::size_t const first = static_cast<std::size_t>(std::clamp<long>(offset, 0, size));
  std::size_t const place = held.find('a', first);
  int const expected = place == std::string::npos ? -1 : static_cast<int>(static_cast<long>(place) - offset);
  Require(view.find('a') == expected, "a byte is found in the visible bytes");
  Gk_String const copy(view);
  std::string visible = held.substr(first);
  if (!visible.empty() && visible.back() != '\0') visible += '\0';
  Require(ElementsOf(copy) == visible, "a copy has the visible bytes");
  Gk_RWString writable = string.copy().dataStr();
  writable.offset(offset);
  writable.toLower();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  FuzzInput input(bytes, size);
  Gk_String string;
  Model model;
  while (!input.IsAtEnd()) {
    int const operation = input.Number(9);
    int const n = static_cast<int>(input.Byte()) - 64;
    switch (operation) {
      case 0: {
        std::string const piece = input.Line().c_str();
        string.append(piece.c_str());
        model.DropLast();
        model.held += piece + '\0';
        break;
      }
      case 1:
        string.append(static_cast<char>(n));
        model.held += static_cast<char>(n);
        break;
      case 2:
        string.chop(n);
        model.Chop(n);
        break;
      case 3:
        string.ensure(n);
        model.Ensure(n);
        break;
      case 4:
        string.shrinkEnd(n);
        model.held.resize(model.held.size() - std::min(model.held.size(), static_cast<std::size_t>(std::max(n, 0))));
        break;
      case 5:
        string.shrinkFront(n);
        model.held.erase(0, static_cast<std::size_t>(std::max(n, 0)));
        break;
      case 6: {
        std::string const appended = model.held;
        string.append(string);
        model.DropLast();
        model.held += appended;
        break;
      }
      case 7:
        CheckView(string, model.held, n);
        break;
      default: {
        long const begin = std::max(n, 0);
        long const end = std::min<long>(static_cast<long>(n) + 9, model.Length());
        std::string part;
        if (begin < end)
          part = model.held.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
        if (part.empty() || part.back() != '\0') part += '\0';
        Require(ElementsOf(string.subset(n, 9)) == part, "a subset has the bytes of its range");
        break;
      }
    }
    Require(ElementsOf(string) == model.held, "an operation changes the elements as documented");
    if (model.held.size() > 4096) {
      string.clear();
      model.held.clear();
    }
  }
  return 0;
}
