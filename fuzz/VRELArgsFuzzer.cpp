// Feeds VRELArgs a table of names (the first line, separated by blanks), operations (the bytes of the second line) and
// a command line (the rest, separated by blanks). Compares the results with a model.
#include "VRELArgs.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "FuzzInput.h"
#include "Require.h"

namespace {

using Texts = std::vector<std::string>;

Texts Split(std::string const& text) {
  FuzzInput input(reinterpret_cast<std::uint8_t const*>(text.data()), text.size());
  Texts texts;
  while (!input.IsAtEnd()) texts.push_back(input.Piece(' ').c_str());
  return texts;
}

std::vector<char*> Pointers(Texts& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  return pointers;
}

bool IsOption(std::string const& argument) {
  return argument.compare(0, 1, "-") == 0;
}

// Value of the caller's index that shows that a call did not write it: neither a position nor -1.
constexpr int kUnchanged = -99;

// Model of VRELArgs on strings instead of pointers. -1 is no argument and no name.
struct Model {
  int Next() { return current < Last() ? ++current : -1; }

  bool MoreOptions() const {
    int last = Last();
    while (last > 0 && !IsOption(arguments[static_cast<std::size_t>(last)])) --last;
    return current < last;
  }

  int OptionArgument() {
    if (current >= Last() || IsOption(At(current + 1))) return -1;
    return ++current;
  }

  bool Shift() {
    bool const more = current < Last();
    if (current <= Last()) ++current;
    return more;
  }

  int Letter(char letter) const {
    for (std::size_t i = 0; i < table.size(); ++i) {
      std::string const& name = table[i];
      std::size_t const length = name.size() - (!name.empty() && name.back() == ':' ? 1 : 0);
      if (length == 1 && name[0] == letter) return static_cast<int>(i);
    }
    return -1;
  }

  int Option(std::string const& argument) {
    if (!IsOption(argument)) return -1;
    std::string const text = argument.substr(1);
    for (std::size_t i = 0; i < table.size(); ++i) {
      if (table[i].compare(0, text.size(), text) == 0) return static_cast<int>(i);
    }
    int const hit = text.empty() ? -1 : Letter(text[0]);
    if (hit >= 0) {
      inGroup = true;
      position = 1;
    }
    return hit;
  }

  int NextOption() {
    if (inGroup) {
      ++position;
      std::string const argument = current <= Last() ? At(current) : "";
      if (position < argument.size()) return Letter(argument[position]);
      inGroup = false;
    }
    int outcome = kUnchanged;
    for (int i = current + 1; i <= Last(); ++i) {
      outcome = Option(At(i));
      if (outcome < 0) continue;
      current = i;
      break;
    }
    return outcome;
  }

  int Last() const { return static_cast<int>(arguments.size()) - 1; }
  std::string At(int index) const { return arguments[static_cast<std::size_t>(index)]; }

  Texts const& table;
  Texts const& arguments;
  int current = 0;
  bool inGroup = false;
  std::size_t position = 0;
};

void RequireHit(bool hit, int index, int expected) {
  Require(hit == (expected >= 0), "the result says whether an option was found");
  Require(index == expected, "the index is the position of the option");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  FuzzInput input(bytes, size);
  Texts table = Split(input.Line());
  std::string const operations = input.Line();
  Texts arguments = Split(input.Rest());
  arguments.insert(arguments.begin(), "program");
  std::vector<char*> names = Pointers(table);
  std::vector<char*> vector = Pointers(arguments);

  int const count = static_cast<int>(names.size());
  VRELArgs args(static_cast<int>(vector.size()), vector.data());
  Model model{table, arguments};
  auto const pointerAt = [&](int place) { return place < 0 ? nullptr : vector[static_cast<std::size_t>(place)]; };
  for (std::size_t i = 0; i < operations.size(); ++i) {
    int index = kUnchanged;
    char* argument = nullptr;
    Require(args.AreThereOneMoreOptions() == model.MoreOptions(), "AreThereOneMoreOptions agrees");
    switch (static_cast<unsigned char>(operations[i]) % 6) {
      case 0:
        Require(args.GetNextArg() == pointerAt(model.Next()), "GetNextArg returns the arguments in order");
        break;
      case 1: {
        int const expected = model.OptionArgument();
        Require(args.GetOptionArgument(&argument) == (expected >= 0), "GetOptionArgument agrees");
        Require(argument == pointerAt(expected), "GetOptionArgument stores the argument");
        break;
      }
      case 2:
        Require(args.Shift() == model.Shift(), "Shift returns whether there was an argument");
        break;
      case 3: {
        char const letter = operations[(i + 1) % operations.size()];
        bool const hit = args.IsLetterAnOption(count, names.data(), letter, &index);
        RequireHit(hit, index, letter == '\0' ? index : model.Letter(letter));
        break;
      }
      case 4: {
        std::size_t const place = (i * 7) % arguments.size();
        bool const hit = args.IsAnOption(count, names.data(), vector[place], &index);
        RequireHit(hit, index, model.Option(arguments[place]));
        break;
      }
      default: {
        bool const hit = args.GetNextOption(count, names.data(), &index);
        RequireHit(hit, index, model.NextOption());
        break;
      }
    }
  }
  return 0;
}
