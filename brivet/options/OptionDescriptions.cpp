#include "OptionDescriptions.h"

#include <fnmatch.h>
#include <strings.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <vector>

#include "ModuleRegistry.h"
#include "OptionVocabulary.h"

namespace {

constexpr char kReader[] = "Reader";
constexpr char kWriter[] = "Writer";

// Declared names are ASCII.
bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

bool MatchesToken(std::string const& token, std::string_view word) {
  return token == "*" || EqualsIgnoringCase(token, word);
}

std::vector<std::string> TokensOf(VRELString const& name) {
  std::string rest = name.toUtf8();
  std::vector<std::string> tokens;
  for (std::size_t dot = 0; (dot = rest.find('.')) != rest.npos; rest.erase(0, dot + 1)) {
    tokens.push_back(rest.substr(0, dot));
  }
  tokens.push_back(rest);
  return tokens;
}

// Option of a format that is used, not of one that another module shadows.
struct DeclaredOption {
  FormatDescription const* format;
  char const* task;
  OptionDescription const* option;
};

std::vector<DeclaredOption> FindDeclaredOptions() {
  std::vector<DeclaredOption> all;
  for (ModuleRegistry::Module const& module : ModuleRegistry::Get().All()) {
    if (!module.shadowedBy.empty()) continue;
    for (FormatDescription const& format : module.description.formats) {
      for (OptionDescription const& option : format.readerOptions) all.push_back({&format, kReader, &option});
      for (OptionDescription const& option : format.writerOptions) all.push_back({&format, kWriter, &option});
    }
  }
  return all;
}

// Returns the formats that evaluate exact shapes, without those that another module shadows.
std::vector<ModuleRegistry::Match> FindEvaluators() {
  std::vector<ModuleRegistry::Match> found;
  for (ModuleRegistry::Module const& module : ModuleRegistry::Get().All()) {
    if (!module.shadowedBy.empty()) continue;
    for (FormatDescription const& format : module.description.formats) {
      if (format.evaluates) found.push_back({&module, &format});
    }
  }
  return found;
}

std::vector<DeclaredOption> const& DeclaredOptions() {
  static std::vector<DeclaredOption> const kAll = FindDeclaredOptions();
  return kAll;
}

// A name has up to three leading tokens: component, representation, direction. Representations are not declared.
bool Names(std::vector<std::string> const& tokens, DeclaredOption const& each) {
  if (tokens.size() > 4 || !MatchesToken(tokens.back(), each.option->name)) return false;
  if (tokens.size() > 1 && !MatchesToken(tokens[0], each.format->Component())) return false;
  return tokens.size() < 4 || MatchesToken(tokens[2], each.task);
}

bool IsUsed(DeclaredOption const& each, std::string_view source, std::string_view target) {
  return each.format->evaluates || each.format->name == (each.task == kReader ? source : target);
}

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char byte) { return std::tolower(byte); });
  return text;
}

bool Matches(std::string const& pattern, std::string const& name) {
  if (pattern.find_first_of("*?[") == pattern.npos) return Lower(name).find(Lower(pattern)) != std::string::npos;
  return fnmatch(pattern.c_str(), name.c_str(), FNM_CASEFOLD) == 0;
}

std::string FullName(DeclaredOption const& each) {
  return each.format->Component() + ".*." + each.task + "." + each.option->name;
}

// "choice of mm, inch"
std::string RangeOf(OptionDescription const& option) {
  std::string range;
  for (std::string const& choice : option.choices) range += (range.empty() ? " of " : ", ") + choice;
  if (!option.minimum.empty()) range += " from " + option.minimum;
  if (!option.maximum.empty()) range += " to " + option.maximum;
  return range;
}

std::string DefaultOf(OptionDescription const& option) {
  return option.defaultValue.empty() ? "none" : option.defaultValue;
}

std::string Padded(std::string text, std::size_t width) {
  if (text.size() < width) text.append(width - text.size(), ' ');
  return text;
}

}  // namespace

bool IsModuleOption(VRELString const& name) {
  std::string const token = TokensOf(name).back();
  std::vector<DeclaredOption> const& all = DeclaredOptions();
  return std::any_of(all.begin(), all.end(),
                     [&token](DeclaredOption const& each) { return EqualsIgnoringCase(each.option->name, token); });
}

bool IsDeclaredOption(VRELString const& name) {
  std::vector<std::string> const tokens = TokensOf(name);
  std::vector<DeclaredOption> const& all = DeclaredOptions();
  return tokens.back() != "*" &&
         std::any_of(all.begin(), all.end(), [&tokens](DeclaredOption const& each) { return Names(tokens, each); });
}

bool HasEffect(VRELString const& name, std::string_view source, std::string_view target) {
  std::vector<std::string> const tokens = TokensOf(name);
  std::vector<DeclaredOption> const& all = DeclaredOptions();
  return std::any_of(all.begin(), all.end(),
                     [&](DeclaredOption const& each) { return Names(tokens, each) && IsUsed(each, source, target); });
}

std::string WhyInvalidValue(VRELString const& name, VRELString const& value) {
  std::vector<std::string> const tokens = TokensOf(name);
  std::string first;
  for (DeclaredOption const& each : DeclaredOptions()) {
    if (!Names(tokens, each)) continue;
    std::string reason = each.option->InvalidReason(value.toUtf8());
    if (reason.empty()) return "";
    if (first.empty()) first = reason;
  }
  return first;
}

std::string WhyInvalidValue(VRELString const& name, VRELString const& value, std::string_view source,
                            std::string_view target) {
  std::vector<std::string> const tokens = TokensOf(name);
  for (DeclaredOption const& each : DeclaredOptions()) {
    if (!Names(tokens, each) || !IsUsed(each, source, target)) continue;
    std::string reason = each.option->InvalidReason(value.toUtf8());
    if (!reason.empty()) return reason;
  }
  return "";
}

std::string ListOptions(std::string const& pattern) {
  std::vector<std::string> lines;
  std::vector<DeclaredOption> const& all = DeclaredOptions();
  for (DeclaredOption const& each : all) {
    std::string const name = FullName(each);
    if (!Matches(pattern, name) && !Matches(pattern, each.option->name)) continue;
    lines.push_back(Padded(name, 36) + " " + Padded(NameOf(each.option->type) + RangeOf(*each.option), 8) +
                    " default: " + Padded(DefaultOf(*each.option), 4) + " " + each.option->help);
  }
  for (std::string const& name : KnownSettings()) {
    bool const isDeclared = std::any_of(all.begin(), all.end(), [&name](DeclaredOption const& each) {
      return EqualsIgnoringCase(each.option->name, name);
    });
    if (!isDeclared && Matches(pattern, name)) lines.push_back(name);
  }
  std::sort(lines.begin(), lines.end());
  std::string list;
  for (std::string const& line : lines) list += line + "\n";
  return list;
}

std::string DescribeFormat(std::string const& format) {
  ModuleRegistry& registry = ModuleRegistry::Get();
  ModuleRegistry::Match const reader = registry.FindName(format, ModuleRegistry::Reading);
  ModuleRegistry::Match const writer = registry.FindName(format, ModuleRegistry::Writing);
  ModuleRegistry::Match const evaluator = registry.FindName(format, ModuleRegistry::Evaluating);
  if (!reader && !writer && !evaluator) return "";
  ModuleRegistry::Match const& any = writer ? writer : reader ? reader : evaluator;
  std::string text = any.format->name + ": " + any.format->title + "\n";
  auto const addLine = [&text](char const* key, std::string const& value) {
    if (!value.empty()) text += Padded(key, 14) + value + "\n";
  };
  std::string extensions;
  for (std::string const& each : any.format->extensions) extensions += (extensions.empty() ? "" : " ") + each;
  addLine("extensions", extensions);
  addLine("media type", any.format->mediaType);
  if (reader) addLine("read by", reader.module->library + " " + reader.module->description.version);
  if (writer) addLine("written by", writer.module->library + " " + writer.module->description.version);
  if (evaluator) addLine("evaluated by", evaluator.module->library + " " + evaluator.module->description.version);
  bool hasOptions = false;
  auto const addOptions = [&](ModuleRegistry::Match const& match, char const* task, char const* heading) {
    if (!match) return;
    auto const& options = task == kReader ? match.format->readerOptions : match.format->writerOptions;
    for (OptionDescription const& option : options) {
      if (!hasOptions) text += heading;
      hasOptions = true;
      text += "  " + FullName({match.format, task, &option}) + "\n      " + option.help + "\n      " +
              NameOf(option.type) + RangeOf(option) + ", default: " + DefaultOf(option) + "\n";
    }
  };
  constexpr char kHeading[] = "options:\n";
  addOptions(reader, kReader, kHeading);
  addOptions(writer, kWriter, kHeading);
  if (!reader) addOptions(evaluator, kReader, kHeading);
  if (writer && writer.format->usesShapes) {
    bool const hasOwnOptions = hasOptions;
    hasOptions = false;
    for (ModuleRegistry::Match const& each : FindEvaluators()) {
      addOptions(each, kReader, "options of exact shapes:\n");
    }
    hasOptions = hasOptions || hasOwnOptions;
  }
  if (!hasOptions) text += "no options\n";
  return text;
}
