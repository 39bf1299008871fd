// Feeds the option store generated names: adds, looks up, enumerates, merges and removes. Each line is an operation,
// selected by its first byte, and a name. Compares the results with a model, a map of whole paths, as long as names are
// ASCII; other names are only checked to be found again.
#include "VRELOptions.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "FuzzInput.h"
#include "Require.h"
#include "VRELOption.h"

namespace {

constexpr std::size_t depth = 7;
using Tokens = std::vector<std::string>;

Tokens Split(std::string const& name) {
  Tokens tokens;
  if (name.empty()) return tokens;
  std::string token;
  for (char const c : name) {
    if (c == '.') {
      tokens.push_back(token);
      token.clear();
    } else {
      token += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
  }
  tokens.push_back(token);
  return tokens;
}

// Returns the path of a name: its last token, the other tokens, wildcards.
Tokens PathOf(Tokens const& tokens) {
  Tokens path{tokens.back()};
  path.insert(path.end(), tokens.begin(), tokens.end() - 1);
  while (path.size() < depth) path.push_back("*");
  return path;
}

// A store with its model.
struct Store {
  void Add(std::string const& name, std::string const& value) {
    VRINResult const result = options.AddOption(VRELString(name.c_str()), VRELString(value.c_str()));
    Tokens const tokens = Split(name);
    if (tokens.empty()) {
      Require(result == VREL_E_INVALID_ARGUMENT, "an empty name is refused");
    } else if (std::find(tokens.begin(), tokens.end(), "") != tokens.end()) {
      Require(result == VREL_E_FAIL, "an empty token is refused");
      irregular = true;
    } else {
      Require(result == VREL_S_OK, "a valid name is added");
      irregular = irregular || tokens.size() > depth;
      values[PathOf(tokens)] = value;
      ++size;
    }
    Require(options.Size() == size, "the size counts additions");
  }

  void LookUp(std::string const& name) const {
    VRELOption* option = nullptr;
    VRINResult const result = options.GetOption(VRELString(name.c_str()), option);
    Tokens const tokens = Split(name);
    std::string const* const expected = Find(tokens);
    Require((result == VREL_S_OK) == (expected != nullptr), "a look-up finds the option that applies");
    if (tokens.empty()) Require(result == VREL_E_INVALID_ARGUMENT, "an empty name finds nothing");
    if (expected == nullptr) {
      Require(option == nullptr, "a failed look-up has no option");
    } else {
      Require(ValueOf(*option) == *expected, "the most specific option is found");
    }
    VRELOption asked{VRELString(name.c_str())};
    bool const isUnset = options.HasOption(asked);
    Require(!isUnset, "an unset option has no path");
    asked.SetValue(1);
    bool const isThere = !tokens.empty() && tokens.size() <= depth && values.count(PathOf(tokens)) != 0;
    Require(options.HasOption(asked) == isThere, "HasOption is exact");
  }

  // Nodes without an option end an enumeration early, so that it is compared only if there are none.
  void Enumerate() const {
    std::multiset<std::string> seen;
    options.InitEnumeration();
    VRELOption* option = nullptr;
    while (options.GetNext(option) == VREL_S_OK) {
      Require(option != nullptr, "an enumeration returns options");
      seen.insert(ValueOf(*option));
      Require(seen.size() <= values.size(), "an enumeration ends");
    }
    Require(option == nullptr, "an enumeration ends with null");
    if (irregular) return;
    std::multiset<std::string> expected;
    for (auto const& entry : values) expected.insert(entry.second);
    Require(seen == expected, "an enumeration returns each option once");
  }

  void Merge(Store& other, bool overwrite) {
    if (irregular || other.irregular) return;
    Require(options.AddOptions(other.options, overwrite) == VREL_S_OK, "stores are merged");
    for (auto const& entry : other.values) {
      if (!overwrite && values.count(entry.first) != 0) continue;
      values[entry.first] = entry.second;
      ++size;
    }
    Require(options.Size() == size, "a merge adds options");
  }

  void RemoveAll() {
    Require(options.RemoveAll() == VREL_S_OK && options.Size() == 0, "RemoveAll removes everything");
    values.clear();
    size = 0;
    irregular = false;
  }

  static std::string ValueOf(VRELOption const& option) {
    VRELString text;
    Require(option.GetValue(text) == VREL_S_OK, "a stored option has a value");
    return text.toUtf8();
  }

  std::string const* Find(Tokens const& tokens) const {
    if (tokens.empty()) return nullptr;
    Tokens path{tokens.back()};
    if (tokens.size() >= depth) {
      path[0].clear();
      for (std::size_t i = depth - 1; i < tokens.size(); ++i) path[0] += tokens[i];
    }
    return path[0].empty() ? nullptr : Find(path, tokens);
  }

  // The exact child is tried before the wildcard.
  std::string const* Find(Tokens& path, Tokens const& tokens) const {
    if (path.size() == depth) {
      auto const found = values.find(path);
      return found == values.end() ? nullptr : &found->second;
    }
    std::size_t const index = path.size() - 1;
    Tokens candidates{"*"};
    if (index + 1 < tokens.size() && tokens[index] != "*") candidates.insert(candidates.begin(), tokens[index]);
    for (std::string const& candidate : candidates) {
      path.push_back(candidate);
      std::string const* const found = Find(path, tokens);
      path.pop_back();
      if (found != nullptr) return found;
    }
    return nullptr;
  }

  VRELOptions options;
  std::map<Tokens, std::string> values;
  int size = 0;
  bool irregular = false;  // there are nodes without an option, or below one
};

// Names of any characters are only checked to be found.
void AddForeign(VRELOptions& options, std::string const& name, std::string const& value) {
  VRELString const text(name.c_str());
  if (options.AddOption(text, VRELString(value.c_str())) != VREL_S_OK) return;
  if (std::count(name.begin(), name.end(), '.') >= static_cast<std::ptrdiff_t>(depth)) return;
  VRELOption* option = nullptr;
  Require(options.GetOption(text, option) == VREL_S_OK, "a name finds itself");
  Require(Store::ValueOf(*option) == value, "a name finds its value");
  Require(options.HasOption(*option), "HasOption finds a stored option");
}

void Walk(VRELOptions const& options) {
  VRELOption* option = nullptr;
  int steps = 0;
  for (options.InitEnumeration(); options.GetNext(option) == VREL_S_OK; ++steps) {
    Require(steps < options.Size(), "an enumeration ends");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  FuzzInput input(bytes, size);
  Store stores[2];
  VRELOptions foreign;
  constexpr int most = 100;  // limits the time for long inputs
  for (int added = 0; added < most && !input.IsAtEnd();) {
    unsigned char const operation = input.Byte();
    std::string name = input.Line();
    Store& store = stores[operation % 2];
    Store& other = stores[1 - operation % 2];
    std::string const value = "v" + std::to_string(added++);
    if (operation >= 128) {
      AddForeign(foreign, name.c_str(), value);
      continue;
    }
    for (char& c : name) c = static_cast<char>(std::max(c & 0x7f, 1));
    switch (operation / 2 % 8) {
      case 0:
        store.LookUp(name);
        break;
      case 1:
        store.Enumerate();
        break;
      case 2:
        store.Merge(other, name.empty());
        break;
      case 3:
        if (name.empty()) store.RemoveAll();
        break;
      default:
        store.Add(name, value);
        store.LookUp(name);
        break;
    }
  }
  for (Store const& store : stores) store.Enumerate();
  Walk(foreign);
  return 0;
}
