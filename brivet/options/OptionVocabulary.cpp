#include "OptionVocabulary.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <numeric>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>

#include "FileError.h"
#include "VRELOptionName.h"
#include "VRELStringConversions.h"

namespace {

using View = std::u16string_view;

constexpr char16_t kSeparator = '.';
constexpr std::size_t kSuggestions = 3;
constexpr int kNoLimit = 1 << 20;
constexpr std::size_t kLengthLimit = 4096;  // of the strings that are compared; no known name is as long

constexpr View kComponents[] = {
#define VREL_NAME(identifier, text) u##text,
#include "VRINComponentNames.def"
};
constexpr View kRepresentations[] = {
#define VREL_NAME(identifier, text) u##text,
#include "VRINRepresentationNames.def"
};
constexpr View kDirections[] = {
#define VREL_NAME(identifier, text) u##text,
#include "VRINReaderWriterNames.def"
};

// The names for applications; some of them are not in VRELOptionName.
constexpr View kPublicNames[] = {
#define VREL_NAME(identifier, text) u##text,
#include "VRINOptionNames.def"
};

struct Words {
  View const* first;
  std::size_t count;

  View const* begin() const { return first; }
  View const* end() const { return first + count; }
};

// The tokens that may precede the name of a setting, in this order.
constexpr Words kLeadingTokens[] = {
    {kComponents, std::size(kComponents)},
    {kRepresentations, std::size(kRepresentations)},
    {kDirections, std::size(kDirections)},
};

// Folds ASCII letters only: known names have no others.
char16_t Fold(char16_t unit) {
  return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

// Returns the Levenshtein distance of two names, or `limit` + 1 if it exceeds the limit. Computes only the cells of the
// table within `limit` of its diagonal (Ukkonen's cut-off), row by row in `row`, which the caller keeps for reuse.
int Distance(View a, View b, int limit, std::vector<int>& row) {
  int const rows = static_cast<int>(std::min(a.size(), kLengthLimit));
  int const columns = static_cast<int>(std::min(b.size(), kLengthLimit));
  if (std::abs(rows - columns) > limit) return limit + 1;
  row.resize(static_cast<std::size_t>(columns) + 1);
  std::iota(row.begin(), row.end(), 0);
  int* const cells = row.data();
  for (int i = 1; i <= rows; ++i) {
    int const first = std::max(1, i - limit);
    int const last = std::min(columns, i + limit);
    int diagonal = cells[first - 1];
    cells[first - 1] = first == 1 ? i : limit + 1;
    int best = cells[first - 1];
    char16_t const unit = Fold(a[static_cast<std::size_t>(i) - 1]);
    for (int j = first; j <= last; ++j) {
      int const changed = diagonal + (unit == Fold(b[static_cast<std::size_t>(j) - 1]) ? 0 : 1);
      diagonal = cells[j];
      cells[j] = std::min({changed, diagonal + 1, cells[j - 1] + 1});
      best = std::min(best, cells[j]);
    }
    if (best > limit) return limit + 1;
  }
  return std::min(cells[columns], limit + 1);
}

int LimitFor(View text) {
  return std::max(1, static_cast<int>(std::min(text.size(), kLengthLimit) / 3));
}

// The closest names found so far, in order of distance and, for equal distances, of insertion.
class Suggestions {
 public:
  // Returns the largest distance at which a name is still accepted.
  int Limit() const { return all.size() < kSuggestions ? kNoLimit : all.back().distance - 1; }

  void Add(std::u16string text, int distance) {
    for (Suggestion const& each : all) {
      if (VRELStringEqualsIgnoreCase(each.text, text)) return;
    }
    auto const place =
        std::find_if(all.begin(), all.end(), [distance](Suggestion const& each) { return each.distance > distance; });
    all.insert(place, {std::move(text), distance});
    if (all.size() > kSuggestions) all.pop_back();
  }

  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (Suggestion const& each : all) texts.push_back(VRELString(View(each.text)).toUtf8());
    return texts;
  }

 private:
  struct Suggestion {
    std::u16string text;
    int distance;
  };

  std::vector<Suggestion> all;
};

// Searches the settings that are close to `wanted`, for leading tokens that already have a distance of their own.
class SettingSearch {
 public:
  SettingSearch(std::u16string leadingText, int leadingDistance, View wantedSetting, Suggestions& found)
      : leading(std::move(leadingText)), distance(leadingDistance), wanted(wantedSetting), suggestions(found) {}

  void Run() {
    for (VRELOptionName const* const name : VRELOptionName::_optionNames) {
      if (name != nullptr) Offer(VRELString(*name).view());
    }
    for (View const name : kPublicNames) Offer(name);
  }

 private:
  void Offer(View name) {
    int const limit = std::min(suggestions.Limit() - distance, LimitFor(wanted));
    int const each = limit < 0 ? limit + 1 : Distance(wanted, name, limit, row);
    if (each <= limit) suggestions.Add(leading + std::u16string(name), distance + each);
  }

  std::u16string const leading;
  int const distance;
  View const wanted;
  Suggestions& suggestions;
  std::vector<int> row;
};

// Returns the word closest to a token and its distance, or null if none is close.
View const* ClosestWord(Words const& words, View token, int& distance, std::vector<int>& row) {
  View const* closest = nullptr;
  distance = LimitFor(token) + 1;
  for (View const& word : words) {
    int const each = Distance(token, word, distance - 1, row);
    if (each >= distance) continue;
    distance = each;
    closest = &word;
  }
  return closest;
}

template <class Range>
bool Holds(Range const& range, View token) {
  return std::any_of(std::begin(range), std::end(range),
                     [token](View word) { return VRELStringEqualsIgnoreCase(word, token); });
}

// Names of format modules that are not in the vocabulary of the library.
constexpr View kModuleNames[] = {u"Encoding"};

bool IsAscii(View name) {
  return std::all_of(name.begin(), name.end(), [](char16_t unit) { return unit < 0x80; });
}

// Hash table of all known settings, so that the time for an options file does not depend on their number. It holds the
// names without regard to case, and is built again when the library has new names.
class SettingIndex {
 public:
  enum Answer { Unknown, Known, Undecided };

  // Undecided for a name that a comparison by characters does not decide: one with a wildcard or with characters beyond
  // ASCII, and one that was removed.
  Answer Find(View name) {
    if (size != VRELOptionName::_optionNames.size()) Build();
    if (!isComplete || name.empty() || name.find(u'*') != name.npos || !IsAscii(name)) return Undecided;
    auto const found = places.find(Folded(name));
    if (found == places.end()) return Unknown;
    return found->second < 0 || VRELOptionName::_optionNames[found->second] != nullptr ? Known : Undecided;
  }

 private:
  static constexpr int kPermanent = -1;

  static std::u16string Folded(View name) {
    std::u16string folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), Fold);
    return folded;
  }

  void Build() {
    places.clear();
    isComplete = true;
    for (View const name : kModuleNames) places.emplace(Folded(name), kPermanent);
    for (View const name : kPublicNames) places.emplace(Folded(name), kPermanent);
    size = VRELOptionName::_optionNames.size();
    for (int i = 0; i < size; ++i) {
      VRELOptionName const* const known = VRELOptionName::_optionNames[i];
      if (known == nullptr) continue;
      VRELString const text(*known);
      isComplete = isComplete && IsAscii(text.view());
      places.emplace(Folded(text.view()), i);
    }
  }

  std::unordered_map<std::u16string, int> places;  // in the names of the library
  int size = -1;
  bool isComplete = false;  // all names are ASCII
};

bool IsSetting(View name) {
  static SettingIndex index;
  SettingIndex::Answer const answer = index.Find(name);
  if (answer != SettingIndex::Undecided) return answer == SettingIndex::Known;
  return Holds(kModuleNames, name) || VRELOptionName::IsValid(VRELString(name)).IsSuccess() ||
         Holds(kPublicNames, name);
}

}  // namespace

bool IsKnownOption(VRELString const& name) {
  View rest = name.view();
  if (IsSetting(rest)) return true;
  for (Words const& words : kLeadingTokens) {
    std::size_t const end = rest.find(kSeparator);
    if (end == rest.npos || !Holds(words, rest.substr(0, end))) return false;
    rest.remove_prefix(end + 1);
    if (IsSetting(rest)) return true;
  }
  return false;
}

std::vector<std::string> ClosestOptions(VRELString const& name) {
  Suggestions suggestions;
  std::vector<int> row;
  View rest = name.view();
  std::u16string leading;
  int distance = 0;
  SettingSearch(leading, distance, rest, suggestions).Run();
  for (Words const& words : kLeadingTokens) {
    std::size_t const end = rest.find(kSeparator);
    if (end == rest.npos) break;
    int more = 0;
    View const* const word = ClosestWord(words, rest.substr(0, end), more, row);
    if (word == nullptr) break;
    leading += std::u16string(*word) + kSeparator;
    distance += more;
    rest.remove_prefix(end + 1);
    SettingSearch(leading, distance, rest, suggestions).Run();
  }
  return suggestions.Texts();
}

std::string SuggestOptions(VRELString const& name) {
  std::vector<std::string> const names = ClosestOptions(name);
  if (names.empty()) return "";
  std::string text = "did you mean ";
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i != 0) text += i + 1 == names.size() ? " or " : ", ";
    text += QuoteName(names[i]);
  }
  return text + "?";
}

std::vector<std::string> KnownSettings() {
  std::set<std::string> names;
  for (VRELOptionName const* const name : VRELOptionName::_optionNames) {
    if (name != nullptr) names.insert(VRELString(*name).toUtf8());
  }
  for (View const name : kPublicNames) names.insert(VRELString(name).toUtf8());
  return {names.begin(), names.end()};
}
