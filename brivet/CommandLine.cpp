#include "CommandLine.h"

#include <string_view>
#include <vector>

#include "VRELArgs.h"

namespace {

struct Option {
  char name[16];
  CommandLine::Action action;
};

CommandLine Refused(std::string problem, std::string advice) {
  CommandLine line;
  line.problem = std::move(problem);
  line.advice = std::move(advice);
  return line;
}

}  // namespace

CommandLine CommandLine::Read(int count, char** arguments) {
  // VRELArgs takes names that could be written to.
  Option options[] = {{"help", Help}, {"version", Version}, {"-help", Help}, {"-version", Version}};
  std::vector<char*> names;
  for (Option& option : options) names.push_back(option.name);

  CommandLine line;
  int words = 0;
  bool onlyFiles = false;
  VRELArgs args(count, arguments);
  while (char* const argument = args.GetNextArg()) {
    std::string_view const word(argument);
    int option = -1;
    if (!onlyFiles && word == "--") {
      onlyFiles = true;
      continue;
    }
    ++words;
    if (onlyFiles || word == "-" || word.substr(0, 1) != "-") {
      line.file = word;
      line.action = Summarise;
    } else if (args.IsAnOption(static_cast<int>(names.size()), names.data(), argument, &option)) {
      line.action = options[option].action;
    } else {
      return Refused("unknown option " + std::string(word),
                     "see brivet --help, or put -- in front of a file of this name");
    }
  }
  if (words != 1) return Refused("expected one file, found " + std::to_string(words) + " arguments", "");
  return line;
}
