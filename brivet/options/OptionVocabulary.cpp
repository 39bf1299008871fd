#include "OptionVocabulary.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <numeric>
#include <utility>

#include "VRELOptionName.h"
#include "VRELStringConversions.h"

namespace {

using View = std::u16string_view;

constexpr char16_t SEPARATOR = '.';
constexpr std::size_t SUGGESTIONS = 3;
constexpr int NO_LIMIT = 1 << 20;
constexpr std::size_t LENGTH_LIMIT = 4096;  // of what is compared; no name is as long

constexpr View COMPONENTS[] = {
#define VREL_NAME(identifier, text) u##text,
#include "VRINComponentNames.def"
};
constexpr View REPRESENTATIONS[] = {
#define VREL_NAME(identifier, text) u##text,
#include "VRINRepresentationNames.def"
};
constexpr View DIRECTIONS[] = {
#define VREL_NAME(identifier, text) u##text,
#include "VRINReaderWriterNames.def"
};

// The names that applications use; some of them are no internal ones.
constexpr View PUBLIC_NAMES[] = {
#define VREL_NAME(identifier, text) u##text,
#include "VRINOptionNames.def"
};

struct Words {
  View const* first;
  std::size_t count;

  View const* begin() const { return first; }
  View const* end() const { return first + count; }
};

// What may stand in front of a setting, in this order.
constexpr Words LEADING_TOKENS[] = {
    {COMPONENTS, std::size(COMPONENTS)},
    {REPRESENTATIONS, std::size(REPRESENTATIONS)},
    {DIRECTIONS, std::size(DIRECTIONS)},
};

// Names are ASCII; other letters only ever differ from theirs.
char16_t Fold(char16_t unit) {
  return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

// How many letters have to be put in, left out or changed to come from one text to the other. Everything above the
// limit is the limit and 1, so that only cells near the diagonal are looked at. The row is the caller's for reuse.
int Distance(View a, View b, int limit, std::vector<int>& row) {
  int const rows = static_cast<int>(std::min(a.size(), LENGTH_LIMIT));
  int const columns = static_cast<int>(std::min(b.size(), LENGTH_LIMIT));
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
  return std::max(1, static_cast<int>(std::min(text.size(), LENGTH_LIMIT) / 3));
}

// The best names so far, the closest first; of equally close ones, the one that came first.
class Suggestions {
 public:
  // The largest distance of a name that would still be taken.
  int Limit() const { return all.size() < SUGGESTIONS ? NO_LIMIT : all.back().distance - 1; }

  void Add(std::u16string text, int distance) {
    for (Suggestion const& each : all) {
      if (VRELStringEqualsIgnoreCase(each.text, text)) return;
    }
    auto const place =
        std::find_if(all.begin(), all.end(), [distance](Suggestion const& each) { return each.distance > distance; });
    all.insert(place, {std::move(text), distance});
    if (all.size() > SUGGESTIONS) all.pop_back();
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

// Offers the settings that are close to one, behind leading tokens that differ by `distance` already.
class SettingSearch {
 public:
  SettingSearch(std::u16string leadingText, int leadingDistance, View wantedSetting, Suggestions& found)
      : leading(std::move(leadingText)), distance(leadingDistance), wanted(wantedSetting), suggestions(found) {}

  void Run() {
    for (VRELOptionName const* const name : VRELOptionName::_optionNames) {
      if (name != nullptr) Offer(VRELString(*name).view());
    }
    for (View const name : PUBLIC_NAMES) Offer(name);
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

// The word that is closest to a token, and how far it is; null where none is close.
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

bool IsSetting(View name) {
  return VRELOptionName::IsValid(VRELString(name)).IsSuccess() || Holds(PUBLIC_NAMES, name);
}

}  // namespace

bool HasEmptyToken(std::string_view name) {
  return name.empty() || name.front() == '.' || name.back() == '.' || name.find("..") != name.npos;
}

bool IsKnownOption(VRELString const& name) {
  View rest = name.view();
  if (IsSetting(rest)) return true;
  for (Words const& words : LEADING_TOKENS) {
    std::size_t const end = rest.find(SEPARATOR);
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
  for (Words const& words : LEADING_TOKENS) {
    std::size_t const end = rest.find(SEPARATOR);
    if (end == rest.npos) break;
    int more = 0;
    View const* const word = ClosestWord(words, rest.substr(0, end), more, row);
    if (word == nullptr) break;
    leading += std::u16string(*word) + SEPARATOR;
    distance += more;
    rest.remove_prefix(end + 1);
    SettingSearch(leading, distance, rest, suggestions).Run();
  }
  return suggestions.Texts();
}
