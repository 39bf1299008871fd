#include "CommandLine.h"

#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>

#include "FileError.h"
#include "Formats.h"
#include "PathNames.h"
#include "VRELArgs.h"

namespace {

enum class OptionId { Output, Help, Version, Options, Set, Write, Progress, Quiet, List, NoSync };

struct Option {
  char const* name;
  char const* argument;  // name of the argument; null for none
  OptionId id;
};

// VRELArgs would take "-options" for a one-letter option with its argument.
constexpr Option kOutput = {"o", "FILE", OptionId::Output};

// An abbreviation means the first option that begins with it.
constexpr Option kOptions[] = {
    {"help", nullptr, OptionId::Help},      {"version", nullptr, OptionId::Version},
    {"options", "FILE", OptionId::Options}, {"set", "NAME=VALUE", OptionId::Set},
    {"write", "FORMAT", OptionId::Write},   {"progress", nullptr, OptionId::Progress},
    {"quiet", nullptr, OptionId::Quiet},    {"list", nullptr, OptionId::List},
    {"nosync", nullptr, OptionId::NoSync},
};

// The names in the form that VRELArgs requires: writable strings, with ":" after those that take an argument, once for
// each number of dashes.
class OptionTable {
 public:
  OptionTable() {
    for (char const* dash : {"", "-"}) {
      for (Option const& option : kOptions) {
        strings.push_back(std::string(dash) + option.name + (option.argument != nullptr ? ":" : ""));
      }
    }
    for (std::string& string : strings) names.push_back(string.data());
  }
  OptionTable(OptionTable const&) = delete;
  OptionTable& operator=(OptionTable const&) = delete;

  // Returns the option of a word, or null if it is none.
  Option const* Find(VRELArgs& args, char* word) {
    std::string_view const text(word);
    if (text == "-" || text == "--") return nullptr;
    if (text == "-o" || text == "--o") return &kOutput;
    int index = -1;
    if (!args.IsAnOption(static_cast<int>(names.size()), names.data(), word, &index)) return nullptr;
    return &kOptions[static_cast<std::size_t>(index) % std::size(kOptions)];
  }

 private:
  std::vector<std::string> strings;
  std::vector<char*> names;
};

// Parses one command line, from its first word to its last.
class CommandLineParser {
 public:
  CommandLineParser(int count, char** arguments) : args(count, arguments) {}

  CommandLine Parse() {
    bool onlyFiles = false;
    while (char* const word = args.GetNextArg()) {
      std::string_view const text(word);
      if (!onlyFiles && text == "--") {
        onlyFiles = true;
      } else if (onlyFiles || text == "-" || text.substr(0, 1) != "-") {
        files.emplace_back(text);
      } else if (!ParseOption(word)) {
        return std::move(line);
      }
    }
    ParseFiles();
    return std::move(line);
  }

 private:
  void ParseFiles() {
    if (line.action == CommandLine::Help || line.action == CommandLine::Version) {
      if (exclusiveOptionCount > 1) {
        Refuse("options -help and -version exclude each other", "");
      } else if (!files.empty() || hasOutputOption) {
        Refuse("options -help and -version take no file", "");
      }
      return;
    }
    std::size_t const limit = isListing || hasOutputOption ? 1 : 2;
    if (isListing && hasOutputOption) {
      Refuse("option -list writes no OUTPUT", "");
    } else if (files.empty()) {
      Refuse("missing INPUT", "");
    } else if (files.size() > limit) {
      Refuse("extra argument " + QuoteName(files[limit]), isListing ? "-list takes one INPUT" : "");
    } else {
      line.action = isListing ? CommandLine::List : CommandLine::Translate;
      line.input = files[0];
      if (files.size() == 2) line.output = files[1];
      if ((files.size() == 2 || hasOutputOption) && line.output.empty()) Refuse("the name of OUTPUT is empty", "");
    }
  }

  bool ParseOption(char* word) {
    std::string_view const text(word);
    std::size_t const equals = text.find('=');
    std::string name(text.substr(0, equals));
    Option const* const option = table.Find(args, name.data());
    if (option == nullptr || (equals != text.npos && option->argument == nullptr)) {
      std::string const problem = option == nullptr ? "unknown option " : "option takes no argument: ";
      return Refuse(problem + QuoteName(text), "to use a file of this name, put -- before it");
    }
    std::string argument;
    if (equals != text.npos) {
      argument = text.substr(equals + 1);
    } else if (option->argument != nullptr && !ParseArgument(*option, argument)) {
      return false;
    }
    return Apply(*option, argument);
  }

  bool Apply(Option const& option, std::string const& argument) {
    switch (option.id) {
      case OptionId::Help:
      case OptionId::Version:
        ++exclusiveOptionCount;
        line.action = option.id == OptionId::Help ? CommandLine::Help : CommandLine::Version;
        break;
      case OptionId::Output:
        line.output = argument;
        hasOutputOption = true;
        break;
      case OptionId::Options:
        line.sources.push_back({OptionSource::File, argument});
        break;
      case OptionId::Set:
        return ParseSetting(argument);
      case OptionId::Write:
        return ParseFormat(argument);
      case OptionId::Progress:
        line.showsProgress = true;
        break;
      case OptionId::Quiet:
        line.isQuiet = true;
        break;
      case OptionId::List:
        isListing = true;
        break;
      case OptionId::NoSync:
        line.isSynchronized = false;
        break;
    }
    return true;
  }

  bool ParseFormat(std::string const& name) {
    line.target = Format::Named(name);
    return line.target != nullptr ||
           Refuse("unknown format " + QuoteName(name) + " for -write", "the formats are " + Format::WrittenNames());
  }

  bool ParseArgument(Option const& option, std::string& argument) {
    char* given = nullptr;
    if (args.GetOptionArgument(&given)) {
      argument = given;
      return true;
    }
    char const* const next = args.GetNextArg();
    if (option.id == OptionId::Output && next != nullptr && std::string_view(next) == "-") {
      argument = next;
      return true;
    }
    std::string const problem = std::string("option -") + option.name + " requires an argument: " + option.argument;
    bool const isFile = std::string_view(option.argument) == "FILE" && next != nullptr;
    return Refuse(problem, isFile ? "to use a file of the name " + QuoteName(next) + ", put ./ before it" : "");
  }

  bool ParseSetting(std::string const& text) {
    std::string const problem = "invalid argument " + QuoteName(text) + " for -set: ";
    std::string name;
    std::string value;
    if (!SplitSetting(text, name, value)) return Refuse(problem + "no '=' in it", "for example: -set Healing=On");
    if (name.empty()) return Refuse(problem + "no name before '='", "for example: -set Healing=On");
    if (HasEmptyToken(name)) return Refuse(problem + "the name has an empty part between dots", "");
    if (value.empty()) return Refuse(problem + "no value after '='", "write \"\" for an empty string");
    line.sources.push_back({OptionSource::Setting, text});
    return true;
  }

  // Returns false.
  bool Refuse(std::string problem, std::string hint) {
    bool const isQuiet = line.isQuiet;
    line = CommandLine();
    line.isQuiet = isQuiet;
    line.problem = std::move(problem);
    line.hint = std::move(hint);
    return false;
  }

  OptionTable table;
  VRELArgs args;
  CommandLine line;
  std::vector<std::string> files;
  int exclusiveOptionCount = 0;  // -help and -version
  bool isListing = false;
  bool hasOutputOption = false;
};

}  // namespace

CommandLine CommandLine::Parse(int count, char** arguments) {
  return CommandLineParser(count, arguments).Parse();
}

char const* CommandLine::Usage() {
  return "usage: brivet [options] INPUT [OUTPUT]\nTry 'brivet -help' for more information.\n";
}

Format const& CommandLine::Target() const {
  if (target != nullptr) return *target;
  Format const* const byExtension = Format::OfOutput(output);
  return byExtension != nullptr ? *byExtension : Format::Page();
}

std::string CommandLine::OutputPath() const {
  if (!output.empty()) return output;
  std::string const name(input == "-" ? "stdin" : BaseNameOf(input));
  return name.substr(0, name.size() - ExtensionOf(name).size()) + Target().extension;
}
