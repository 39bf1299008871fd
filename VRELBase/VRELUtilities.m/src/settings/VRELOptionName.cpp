#include "VRELOptionName.h"

#include <limits>
#include <string_view>

#include "VRELStringConversions.h"

namespace {

constexpr auto kSeparator = static_cast<char16_t>(VREL_OPTION_SEPARATOR);
constexpr std::u16string_view kWildcard = u"*";
constexpr int kLastScoredIndex = 30;

int AddWildcard(int score, int index) {
  if (score < 0 || index > kLastScoredIndex) return std::numeric_limits<int>::min();
  return score + (1 << index);
}

// Compares both names token by token in one pass. Names are equal exactly if all their tokens are, because only a dot
// folds to a dot; and a different token and a different number of tokens have the same score, so that the first
// difference decides.
int Score(std::u16string_view known, std::u16string_view given) {
  // The empty name has no tokens.
  if (known.empty() || given.empty()) {
    return known.size() == given.size() ? VREL_OPTION_EXACT_MATCH : VREL_OPTION_NO_MATCH;
  }
  bool isEqual = true;
  int score = VREL_OPTION_EXACT_MATCH;
  for (int index = 0;; ++index) {
    std::size_t const knownEnd = known.find(kSeparator);
    std::size_t const givenEnd = given.find(kSeparator);
    std::u16string_view const knownToken = known.substr(0, knownEnd);
    std::u16string_view const givenToken = given.substr(0, givenEnd);
    if (givenToken == kWildcard) {
      score = AddWildcard(score, index);
      isEqual = isEqual && knownToken == kWildcard;
    } else if (!VRELStringEqualsIgnoreCase(knownToken, givenToken)) {
      return VREL_OPTION_NO_MATCH;
    }
    bool const isLastKnown = knownEnd == known.npos;
    bool const isLastGiven = givenEnd == given.npos;
    if (isLastKnown != isLastGiven) return VREL_OPTION_NO_MATCH;
    if (isLastKnown) return isEqual ? VREL_OPTION_EXACT_MATCH : score;
    known.remove_prefix(knownEnd + 1);
    given.remove_prefix(givenEnd + 1);
  }
}

}  // namespace

VRELOptionName::VRELOptionName(VRELString const& name) : text(name), index(_optionNames.size()) {
  _optionNames.add(this);
}

VRELOptionName::VRELOptionName(Literal literal) : text(std::u16string_view(literal.text)), index(_optionNames.size()) {
  _optionNames.add(this);
}

VRELOptionName::~VRELOptionName() {
  bool const isInPlace = index < _optionNames.size() && _optionNames[index] == this;
  int const place = isInPlace ? index : vrelArrayFind<VRELOptionName*>(_optionNames, this);
  if (place >= 0) _optionNames[place] = nullptr;
}

VRINResult VRELOptionName::Match(VRELString const& known, VRELString const& given, int& score) {
  score = Score(known.view(), given.view());
  return score < 0 ? VREL_E_FAIL : VREL_S_OK;
}

VRINResult VRELOptionName::IsValid(VRELString const& given) {
  int best = VREL_OPTION_NO_MATCH;
  std::u16string_view const text = given.view();
  for (VRELOptionName const* const name : _optionNames) {
    if (name == nullptr) continue;
    int const score = Score(name->text.view(), text);
    if (score == VREL_OPTION_EXACT_MATCH) return VREL_S_OK;
    if (score < best) best = score;
  }
  return best == VREL_OPTION_NO_MATCH ? VREL_E_FAIL : VREL_S_OK;
}
