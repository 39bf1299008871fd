#include "ModuleDescription.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <set>

namespace {

constexpr std::size_t kNameLimit = 55;
constexpr std::size_t kTextLimit = 200;
constexpr std::size_t kListLimit = 32;
constexpr std::size_t kSignatureLimit = 64;

constexpr char const* kTypeNames[] = {"bool", "int", "double", "string", "choice"};

bool IsLetterOrDigit(char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9');
}

// Returns whether a name consists of letters, digits and the given other characters.
bool IsName(std::string_view text, std::string_view others, bool mayBeUpper, std::size_t limit) {
  return !text.empty() && text.size() <= limit && std::all_of(text.begin(), text.end(), [&](char byte) {
    bool const isUpper = byte >= 'A' && byte <= 'Z';
    return others.find(byte) != others.npos || (IsLetterOrDigit(byte) && (mayBeUpper || !isUpper));
  });
}

// Text of one line, as a configuration file keeps it.
bool IsLine(std::string const& text) {
  bool const hasControls =
      std::any_of(text.begin(), text.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x20; });
  bool const hasBlanks = !text.empty() && (text.front() == ' ' || text.back() == ' ');
  return text.size() <= kTextLimit && !hasControls && !hasBlanks;
}

std::string Quote(std::string_view text) {
  return "'" + std::string(text) + "'";
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  auto const lower = [](char byte) { return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte; };
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [&lower](char x, char y) { return lower(x) == lower(y); });
}

std::string_view WithoutQuotes(std::string_view value) {
  bool const isQuoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
  return isQuoted ? value.substr(1, value.size() - 2) : value;
}

// Decimal or hexadecimal: 10, -3, 0x1F.
bool ParseInt(std::string_view text, long long& number) {
  std::string const copy(text);
  std::string_view digits = text;
  if (!digits.empty() && (digits[0] == '-' || digits[0] == '+')) digits.remove_prefix(1);
  bool const isHexadecimal = digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X');
  if (isHexadecimal) digits.remove_prefix(2);
  char const* const allowed = isHexadecimal ? "0123456789abcdefABCDEF" : "0123456789";
  if (digits.empty() || digits.find_first_not_of(allowed) != digits.npos) return false;
  errno = 0;
  number = std::strtoll(copy.c_str(), nullptr, isHexadecimal ? 16 : 10);
  return errno == 0 && number >= INT_MIN && number <= INT_MAX;
}

// A decimal point, in every locale.
bool ParseDouble(std::string_view text, double& number) {
  if (text.empty() || text.find_first_not_of("0123456789+-.eE") != text.npos) return false;
  std::string const copy(text);
  static locale_t const kPlain = newlocale(LC_ALL_MASK, "C", nullptr);
  char* end = nullptr;
  number = strtod_l(copy.c_str(), &end, kPlain);
  return *end == '\0' && std::isfinite(number);
}

std::string Range(OptionDescription const& option) {
  if (!option.minimum.empty() && !option.maximum.empty()) return " from " + option.minimum + " to " + option.maximum;
  if (!option.minimum.empty()) return " of at least " + option.minimum;
  return option.maximum.empty() ? "" : " of at most " + option.maximum;
}

bool IsInRange(OptionDescription const& option, double number) {
  double bound = 0;
  if (ParseDouble(option.minimum, bound) && number < bound) return false;
  return !ParseDouble(option.maximum, bound) || number <= bound;
}

// Returns what a value should have been, or an empty string if it is valid.
std::string Expected(OptionDescription const& option, std::string_view value) {
  constexpr char const* kBools[] = {"On", "Off", "Yes", "No", "True", "False"};
  auto const isValue = [value](std::string_view each) { return EqualsIgnoringCase(value, each); };
  long long whole = 0;
  double number = 0;
  switch (option.type) {
    case OptionDescription::Bool:
      return std::any_of(std::begin(kBools), std::end(kBools), isValue) ? "" : "On or Off";
    case OptionDescription::Int:
      if (ParseInt(value, whole) && IsInRange(option, static_cast<double>(whole))) return "";
      return "a whole number" + Range(option);
    case OptionDescription::Double:
      return ParseDouble(value, number) && IsInRange(option, number) ? "" : "a number" + Range(option);
    case OptionDescription::Choice: {
      if (std::any_of(option.choices.begin(), option.choices.end(), isValue)) return "";
      std::string list = option.choices.size() > 1 ? "one of " : "";
      for (std::string const& each : option.choices) list += (&each == &option.choices[0] ? "" : ", ") + each;
      return list;
    }
    default:
      return "";
  }
}

std::string WhyInvalidOption(OptionDescription const& option) {
  std::string const name = "option " + Quote(option.name);
  if (!IsName(option.name, "", true, kNameLimit)) return name + ": the name is not of letters and digits";
  if (!IsLine(option.help) || option.help.empty()) return name + ": the help is not one line of at most 200 bytes";
  if (!IsLine(option.defaultValue)) return name + ": the default is not one line of at most 200 bytes";
  if (option.type == OptionDescription::Choice && option.choices.empty()) return name + ": no choices";
  if (option.choices.size() > kListLimit) return name + ": more than 32 choices";
  for (std::string const& choice : option.choices) {
    if (!IsName(choice, "-_.+", true, kSignatureLimit)) return name + ": invalid choice " + Quote(choice);
  }
  double bound = 0;
  for (std::string const& each : {option.minimum, option.maximum}) {
    if (!each.empty() && !ParseDouble(each, bound)) return name + ": the range is not of numbers";
  }
  std::string const fault = option.defaultValue.empty() ? "" : option.InvalidReason(option.defaultValue);
  return fault.empty() ? "" : name + ": default: " + fault;
}

std::string WhyInvalidOptions(std::vector<OptionDescription> const& options) {
  std::vector<std::string_view> names;
  for (OptionDescription const& option : options) {
    std::string fault = WhyInvalidOption(option);
    if (!fault.empty()) return fault;
    for (std::string_view const name : names) {
      if (EqualsIgnoringCase(name, option.name)) return "two options have the name " + Quote(name);
    }
    names.emplace_back(option.name);
  }
  return options.size() > kListLimit ? "more than 32 options" : "";
}

std::string WhyInvalidFormat(FormatDescription const& format) {
  std::string const name = "format " + Quote(format.name) + ": ";
  if (!IsName(format.name, "-_", false, kListLimit)) {
    return name + "the name is not of at most 32 lower-case letters, digits, '-' and '_'";
  }
  if (!IsLine(format.title) || format.title.empty()) return name + "the title is not one line of at most 200 bytes";
  if (!format.component.empty() && !IsName(format.component, "", true, kListLimit)) {
    return name + "the component is not of letters and digits";
  }
  if (!format.mediaType.empty() && !IsName(format.mediaType, "/-_.+", true, kTextLimit)) {
    return name + "invalid media type " + Quote(format.mediaType);
  }
  if (!format.reads && !format.writes && !format.evaluates) return name + "neither read nor written";
  if (format.extensions.empty()) return name + "no extension";
  if (format.extensions.size() > kListLimit) return name + "more than 32 extensions";
  for (std::string const& each : format.extensions) {
    bool const isValid = !each.empty() && each[0] == '.' && IsName(each.substr(1), "-_", false, kListLimit);
    if (!isValid || each == ".gz") return name + "invalid extension " + Quote(each);
  }
  for (Signature const& each : format.signatures) {
    bool const isValid = each.offset >= 0 && each.offset < kRecognisedBytes && !each.bytes.empty() &&
                         each.bytes.size() <= kSignatureLimit && format.signatures.size() <= 4;
    if (!isValid) return name + "more than 4 signatures, or one that is empty, too long or too far into the file";
  }
  for (auto const* options : {&format.readerOptions, &format.writerOptions}) {
    std::string const fault = WhyInvalidOptions(*options);
    if (!fault.empty()) return name + fault;
  }
  return "";
}

}  // namespace

char const* NameOf(OptionDescription::Type type) {
  return kTypeNames[type];
}

bool FindOptionType(std::string_view name, OptionDescription::Type& type) {
  for (std::size_t i = 0; i < std::size(kTypeNames); ++i) {
    if (name != kTypeNames[i]) continue;
    type = static_cast<OptionDescription::Type>(i);
    return true;
  }
  return false;
}

std::string OptionDescription::InvalidReason(std::string_view value) const {
  std::string const expected = Expected(*this, WithoutQuotes(value));
  return expected.empty() ? "" : "expected " + expected + ", found " + Quote(value);
}

bool Signature::Matches(std::string_view begin) const {
  std::size_t const at = static_cast<std::size_t>(offset);
  return offset >= 0 && at <= begin.size() && begin.substr(at, bytes.size()) == bytes;
}

bool FormatDescription::Recognises(std::string_view begin) const {
  return std::any_of(signatures.begin(), signatures.end(),
                     [begin](Signature const& each) { return each.Matches(begin); });
}

FormatDescription const* ModuleDescription::Find(std::string_view formatName) const {
  auto const found = std::find_if(formats.begin(), formats.end(),
                                  [formatName](FormatDescription const& each) { return each.name == formatName; });
  return found == formats.end() ? nullptr : &*found;
}

std::string ModuleDescription::InvalidReason() const {
  if (!IsName(name, "-_", true, kNameLimit)) {
    return "the name of the module is not of at most 55 letters, digits, '-' and '_'";
  }
  if (!IsLine(title)) return "the title of the module is not one line of at most 200 bytes";
  if (!IsName(version, "-_.+~", true, kListLimit)) return "the version of the module is not a word of at most 32 bytes";
  if (formats.empty()) return "the module has no formats";
  if (formats.size() > kListLimit) return "more than 32 formats";
  std::set<std::string> names;
  for (FormatDescription const& format : formats) {
    std::string fault = WhyInvalidFormat(format);
    if (!fault.empty()) return fault;
    if (!names.insert(format.name).second) return "two formats have the name " + Quote(format.name);
  }
  return "";
}
