#include "CommandLine.h"

#include <iterator>
#include <string_view>
#include <utility>

#include "Formats.h"
#include "OptionVocabulary.h"
#include "VRELArgs.h"

namespace {

enum Meaning { ShowHelp, ShowVersion, ReadOptions, SetOption, WriteFormat, ShowProgress, BeQuiet, ListOnly };

struct Option {
  char const* name;
  char const* argument;  // what stands behind it, as the usage names it; null where nothing does
  Meaning meaning;
};

// Of options that begin alike, a short form means the first.
constexpr Option OPTIONS[] = {
    {"help", nullptr, ShowHelp},
    {"version", nullptr, ShowVersion},
    {"options", "FILE", ReadOptions},
    {"set", "NAME=VALUE", SetOption},
    {"write", "html, text or step", WriteFormat},
    {"progress", nullptr, ShowProgress},
    {"quiet", nullptr, BeQuiet},
    {"list", nullptr, ListOnly},
};

// The names as VRELArgs takes them: texts that could be written to, a ":" behind those with an argument, and each once
// more for the second dash.
class OptionTable {
 public:
  OptionTable() {
    for (char const* dash : {"", "-"}) {
      for (Option const& option : OPTIONS) {
        texts.push_back(std::string(dash) + option.name + (option.argument != nullptr ? ":" : ""));
      }
    }
    for (std::string& text : texts) names.push_back(text.data());
  }
  OptionTable(OptionTable const&) = delete;
  OptionTable& operator=(OptionTable const&) = delete;

  // The option that a word means; null where it means none.
  Option const* Find(VRELArgs& args, char* word) {
    int index = -1;
    if (!args.IsAnOption(static_cast<int>(names.size()), names.data(), word, &index)) return nullptr;
    return &OPTIONS[static_cast<std::size_t>(index) % std::size(OPTIONS)];
  }

 private:
  std::vector<std::string> texts;
  std::vector<char*> names;
};

// One walk over the words of a line.
class Reading {
 public:
  Reading(int count, char** arguments) : args(count, arguments) {}

  CommandLine Read() {
    bool onlyFiles = false;
    while (char* const word = args.GetNextArg()) {
      std::string_view const text(word);
      if (!onlyFiles && text == "--") {
        onlyFiles = true;
      } else if (onlyFiles || text == "-" || text.substr(0, 1) != "-") {
        files.emplace_back(text);
      } else if (!TakeOption(word)) {
        return std::move(line);
      }
    }
    TakeFiles();
    return std::move(line);
  }

 private:
  void TakeFiles() {
    bool const standsAlone = line.action == CommandLine::Help || line.action == CommandLine::Version;
    std::string const found = ", found " + std::to_string(files.size()) + " files";
    if (standsAlone) {
      if (!files.empty() || lonely != 1) Refuse("expected nothing but options beside -help or -version", "");
    } else if (isListing && files.size() != 1) {
      Refuse("expected one INPUT beside -list" + found, "");
    } else if (files.empty() || files.size() > 2) {
      Refuse("expected INPUT and at most one OUTPUT" + found, "");
    } else {
      line.action = isListing ? CommandLine::List : CommandLine::Translate;
      line.input = files[0];
      if (files.size() == 2) TakeOutput(files[1]);
    }
  }

  void TakeOutput(std::string const& path) {
    line.output = path;
    if (path.empty()) Refuse("expected a name for OUTPUT, found nothing", "");
  }

  bool TakeOption(char* word) {
    Option const* const option = table.Find(args, word);
    if (option == nullptr) {
      return Refuse("unknown option " + std::string(word),
                    "see brivet --help, or put -- in front of a file of this name");
    }
    std::string argument;
    if (option->argument != nullptr && !TakeArgument(*option, argument)) return false;
    switch (option->meaning) {
      case ShowHelp:
      case ShowVersion:
        ++lonely;
        line.action = option->meaning == ShowHelp ? CommandLine::Help : CommandLine::Version;
        return true;
      case ReadOptions:
        line.sources.push_back({OptionSource::File, argument});
        return true;
      case SetOption:
        return TakeSetting(argument);
      case WriteFormat:
        return TakeFormat(argument);
      case ShowProgress:
        line.progress = true;
        return true;
      case BeQuiet:
        line.quiet = true;
        return true;
      case ListOnly:
        break;
    }
    isListing = true;
    return true;
  }

  bool TakeFormat(std::string const& name) {
    line.target = Format::Named(name);
    return line.target != nullptr || Refuse("expected html, text or step behind -write, found " + name, "");
  }

  bool TakeArgument(Option const& option, std::string& argument) {
    char* given = nullptr;
    if (args.GetOptionArgument(&given)) {
      argument = given;
      return true;
    }
    char const* const next = args.GetNextArg();
    std::string const found = next != nullptr ? next : "nothing";
    bool const isFile = option.meaning == ReadOptions && next != nullptr;
    return Refuse(std::string("expected ") + option.argument + " behind -" + option.name + ", found " + found,
                  isFile ? "put ./ in front of a file of this name" : "");
  }

  bool TakeSetting(std::string const& text) {
    std::string name;
    std::string value;
    if (!SplitSetting(text, name, value)) {
      return Refuse("expected NAME=VALUE behind -set, found " + text, "write -set Healing=On, for example");
    }
    if (name.empty()) return Refuse("expected a name in front of = behind -set, found " + text, "");
    if (HasEmptyToken(name)) {
      return Refuse("expected a name with something between its dots behind -set, found " + text, "");
    }
    if (value.empty()) {
      return Refuse("expected a value behind -set " + name + "=, found nothing", "write \"\" for an empty text");
    }
    line.sources.push_back({OptionSource::Setting, text});
    return true;
  }

  // Gives false.
  bool Refuse(std::string problem, std::string advice) {
    bool const quiet = line.quiet;
    line = CommandLine();
    line.quiet = quiet;
    line.problem = std::move(problem);
    line.advice = std::move(advice);
    return false;
  }

  OptionTable table;
  VRELArgs args;
  CommandLine line;
  std::vector<std::string> files;
  int lonely = 0;  // options that stand alone
  bool isListing = false;
};

}  // namespace

CommandLine CommandLine::Read(int count, char** arguments) {
  return Reading(count, arguments).Read();
}

char const* CommandLine::Usage() {
  return "usage: brivet [options] INPUT [OUTPUT]; brivet --help tells more\n";
}

Format const& CommandLine::Target() const {
  if (target != nullptr) return *target;
  Format const* const told = Format::OfOutput(output);
  return told != nullptr ? *told : Format::Page();
}

std::string CommandLine::OutputPath() const {
  if (!output.empty()) return output;
  std::string const name(input == "-" ? "stdin" : BaseNameOf(input));
  return name.substr(0, name.size() - ExtensionOf(name).size()) + Target().extension;
}
