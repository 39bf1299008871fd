#include "CommandLine.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>

#include "FileError.h"
#include "Formats.h"
#include "PathNames.h"
#include "VRELArgs.h"

namespace {

enum class OptionId {
  Output,
  Help,
  Version,
  Options,
  Set,
  Write,
  Progress,
  Quiet,
  List,
  Summary,
  NoSync,
  Strict,
  Report,
  OutDir,
  Jobs,
  Force,
  Formats,
  Settings,
  LogDir,
  NoLog,
  Verbose,
  TempSpace,
  Worker,
  ReadLog,
  WriteLog,
};

struct Option {
  char const* name;
  char const* argument;  // name of the argument; null for none
  OptionId id;
};

// VRELArgs would take "-options" for a one-letter option with its argument.
constexpr Option kOutput = {"o", "FILE", OptionId::Output};

// An abbreviation means the first option that begins with it. The last three are those of worker processes.
constexpr Option kOptions[] = {
    {"help", nullptr, OptionId::Help},          {"version", nullptr, OptionId::Version},
    {"options", "FILE", OptionId::Options},     {"set", "NAME=VALUE", OptionId::Set},
    {"write", "FORMAT", OptionId::Write},       {"progress", nullptr, OptionId::Progress},
    {"quiet", nullptr, OptionId::Quiet},        {"list", nullptr, OptionId::List},
    {"summary", nullptr, OptionId::Summary},    {"nosync", nullptr, OptionId::NoSync},
    {"strict", nullptr, OptionId::Strict},      {"report", "FILE", OptionId::Report},
    {"outdir", "DIR", OptionId::OutDir},        {"jobs", "N", OptionId::Jobs},
    {"force", nullptr, OptionId::Force},        {"formats", nullptr, OptionId::Formats},
    {"settings", nullptr, OptionId::Settings},  {"logdir", "DIR", OptionId::LogDir},
    {"nolog", nullptr, OptionId::NoLog},        {"verbose", nullptr, OptionId::Verbose},
    {"tempspace", "SIZE", OptionId::TempSpace}, {"worker", nullptr, OptionId::Worker},
    {"readlog", "FILE", OptionId::ReadLog},     {"writelog", "FILE", OptionId::WriteLog},
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
    if (exclusiveOptionCount > 1) {
      Refuse("options " + exclusiveNames + " exclude each other", "");
    } else if (line.action == CommandLine::ListSettings) {
      ParsePattern();
    } else if (line.action == CommandLine::Help && files.size() == 1 && !hasOutputOption) {
      line.format = files[0];
    } else if (exclusiveOptionCount == 1) {
      if (!files.empty() || hasOutputOption)
        Refuse("option " + exclusiveNames + " takes no file",
               line.action == CommandLine::Help ? "it takes one FORMAT" : "");
    } else if (!listingName.empty()) {
      ParseListing();
    } else if (!line.outputFolder.empty() || hasOutputFolder) {
      ParseInputs();
    } else {
      ParseTranslation();
    }
  }

  void ParsePattern() {
    if (files.size() > 1 || hasOutputOption) {
      Refuse("option -settings takes one PATTERN", "");
    } else if (!files.empty()) {
      line.pattern = files[0];
    }
  }

  void ParseListing() {
    if (hasOutputOption || hasOutputFolder) {
      Refuse("option " + listingName + " writes no OUTPUT", "");
    } else if (files.empty()) {
      Refuse("missing INPUT", "");
    } else if (files.size() > 1) {
      Refuse("extra argument " + QuoteName(files[1]), listingName + " takes one INPUT");
    } else if (line.report == "-") {
      Refuse("options " + listingName + " and -report - both write to standard output", "");
    } else {
      line.action = CommandLine::List;
      line.input = files[0];
    }
  }

  void ParseInputs() {
    if (line.outputFolder.empty()) {
      Refuse("the name of the folder for -outdir is empty", "");
    } else if (hasOutputOption) {
      Refuse("options -outdir and -o exclude each other", "");
    } else if (files.empty()) {
      Refuse("missing INPUT", "");
    } else {
      line.action = CommandLine::TranslateAll;
      line.inputs = std::move(files);
    }
  }

  void ParseTranslation() {
    std::size_t const limit = hasOutputOption ? 1 : 2;
    if (line.jobs != 0) {
      Refuse("option -jobs requires -outdir", "");
    } else if (files.empty()) {
      Refuse("missing INPUT", "");
    } else if (files.size() > limit) {
      Refuse("extra argument " + QuoteName(files[limit]), "to translate several files, use -outdir DIR");
    } else {
      line.action = CommandLine::Translate;
      line.input = files[0];
      if (files.size() == 2) line.output = files[1];
      CheckOutput(files.size() == 2 || hasOutputOption);
    }
  }

  void CheckOutput(bool isGiven) {
    if (!isGiven) return;
    std::string const extension(ExtensionOf(line.output));
    if (line.output.empty()) {
      Refuse("the name of OUTPUT is empty", "");
    } else if (line.output == "-" && line.report == "-") {
      Refuse("OUTPUT and -report are both standard output", "");
    } else if (line.target == nullptr && !extension.empty() && Format::OfOutput(line.output) == nullptr) {
      Refuse("no format has the extension of OUTPUT " + QuoteName(line.output),
             "use one of " + Format::WrittenExtensions() + ", or -write FORMAT");
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
        return SetAction(CommandLine::Help, option);
      case OptionId::Version:
        return SetAction(CommandLine::Version, option);
      case OptionId::Formats:
        return SetAction(CommandLine::ListFormats, option);
      case OptionId::Settings:
        return SetAction(CommandLine::ListSettings, option);
      case OptionId::List:
        listingName = listingName.empty() ? "-list" : listingName;
        return true;
      case OptionId::Summary:
        listingName = listingName.empty() ? "-summary" : listingName;
        return SetFlag(line.isSummary, true);
      case OptionId::Output:
        hasOutputOption = true;
        return SetText(line.output, argument);
      case OptionId::OutDir:
        hasOutputFolder = true;
        return SetText(line.outputFolder, argument);
      case OptionId::Options:
        line.sources.push_back({OptionSource::File, argument});
        return true;
      case OptionId::Set:
        return ParseSetting(argument);
      case OptionId::Write:
        return ParseFormat(argument);
      case OptionId::Jobs:
        return ParseJobs(argument);
      case OptionId::TempSpace:
        return ParseTemporarySpace(argument);
      case OptionId::Report:
        return SetName(line.report, argument, "-report");
      case OptionId::LogDir:
        return SetName(line.logFolder, argument, "-logdir");
      case OptionId::ReadLog:
        return SetText(line.readLog, argument);
      case OptionId::WriteLog:
        return SetText(line.writeLog, argument);
      case OptionId::Progress:
        return SetFlag(line.showsProgress, true);
      case OptionId::Quiet:
        return SetFlag(line.isQuiet, true);
      case OptionId::NoSync:
        return SetFlag(line.isSynchronized, false);
      case OptionId::Strict:
        return SetFlag(line.isStrict, true);
      case OptionId::Force:
        return SetFlag(line.isForced, true);
      case OptionId::NoLog:
        return SetFlag(line.hasLogs, false);
      case OptionId::Verbose:
        return SetFlag(line.isVerbose, true);
      case OptionId::Worker:
        return SetFlag(line.isWorker, true);
    }
    return true;
  }

  bool SetAction(CommandLine::Action action, Option const& option) {
    ++exclusiveOptionCount;
    exclusiveNames += (exclusiveNames.empty() ? "-" : " and -") + std::string(option.name);
    line.action = action;
    return true;
  }

  static bool SetFlag(bool& flag, bool value) {
    flag = value;
    return true;
  }

  static bool SetText(std::string& target, std::string const& text) {
    target = text;
    return true;
  }

  bool SetName(std::string& target, std::string const& name, std::string const& option) {
    target = name;
    return !name.empty() || Refuse("the name for " + option + " is empty", "");
  }

  bool ParseJobs(std::string const& text) {
    bool const isNumber = !text.empty() && text.size() <= 4 && text.find_first_not_of("0123456789") == text.npos;
    line.jobs = isNumber ? std::stoi(text) : 0;
    if (line.jobs >= 1 && line.jobs <= CommandLine::kJobLimit) return true;
    return Refuse("invalid argument " + QuoteName(text) + " for -jobs: not a number from 1 to " +
                      std::to_string(CommandLine::kJobLimit),
                  "");
  }

  bool ParseTemporarySpace(std::string const& text) {
    return ParseSize(text, line.temporarySpace) ||
           Refuse("invalid argument " + QuoteName(text) + " for -tempspace: not a size",
                  "for example: -tempspace 500M");
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
    bool const takesStandardOutput = option.id == OptionId::Output || option.id == OptionId::Report;
    if (takesStandardOutput && next != nullptr && std::string_view(next) == "-") {
      argument = next;
      return true;
    }
    std::string const problem = std::string("option -") + option.name + " requires an argument: " + option.argument;
    std::string_view const kind(option.argument);
    bool const isFile = (kind == "FILE" || kind == "DIR") && next != nullptr;
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
  int exclusiveOptionCount = 0;  // options that need no file: -help, -version, ...
  std::string exclusiveNames;
  std::string listingName;  // -list or -summary; empty without them
  bool hasOutputOption = false;
  bool hasOutputFolder = false;
};

}  // namespace

CommandLine CommandLine::Parse(int count, char** arguments) {
  return CommandLineParser(count, arguments).Parse();
}

char const* CommandLine::Usage() {
  return "usage: brivet [options] INPUT [OUTPUT]\n"
         "       brivet [options] -outdir DIR INPUT...\n"
         "Try 'brivet -help' for more information.\n";
}

Format const& CommandLine::Target() const {
  if (target != nullptr) return *target;
  Format const* const byExtension = Format::OfOutput(output);
  return byExtension != nullptr ? *byExtension : Format::Page();
}

std::string CommandLine::OutputPath() const {
  return !output.empty() ? output : Target().OutputName(input);
}

bool ParseSize(std::string const& text, long& size) {
  constexpr std::string_view kUnits = "KMGT";
  constexpr long kLimit = 1L << 62U;
  std::size_t const end = std::min(text.find_first_not_of("0123456789"), text.size());
  if (end == 0 || end > 18 || text.size() - end > 1) return false;
  long const number = std::stol(text.substr(0, end));
  int shift = 0;
  if (end < text.size()) {
    std::size_t const unit = kUnits.find(text[end] >= 'a' ? static_cast<char>(text[end] - 'a' + 'A') : text[end]);
    if (unit == kUnits.npos) return false;
    shift = 10 * (static_cast<int>(unit) + 1);
  }
  if (number == 0 || number > kLimit >> shift) return false;
  size = number << shift;
  return true;
}
