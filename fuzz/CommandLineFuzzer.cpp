// Feeds brivet's command line parser a list of words, one per line. Checks that a refused line has a reason and nothing
// else, that an accepted one can be run, that files are words of the line, and that parsing has no state.
#include "CommandLine.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "Batch.h"
#include "Formats.h"
#include "FuzzInput.h"
#include "Require.h"

namespace {

using Words = std::vector<std::string>;

CommandLine Parse(Words words) {
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  return CommandLine::Parse(static_cast<int>(words.size()), arguments.data());
}

bool IsWord(Words const& words, std::string const& text) {
  return std::any_of(words.begin() + 1, words.end(), [&text](std::string const& word) {
    return word == text || (word.size() > text.size() && word[word.size() - text.size() - 1] == '=' &&
                            word.compare(word.size() - text.size(), text.size(), text) == 0);
  });
}

void CheckRefused(CommandLine const& line) {
  Require(!line.problem.empty(), "a refused line has a reason");
  Require(line.input.empty() && line.output.empty() && line.sources.empty() && line.inputs.empty(),
          "a refused line has no files and options");
}

void CheckInputs(CommandLine const& line, Words const& words) {
  Require(!line.inputs.empty() && !line.outputFolder.empty(), "several inputs have a folder");
  std::vector<BatchItem> const items = MakeBatch(line.inputs, line.Target(), line.outputFolder, line.logFolder);
  Require(items.size() == line.inputs.size(), "each input is an item");
  for (BatchItem const& item : items) {
    Require(IsWord(words, item.input), "an input is a word of the line");
    Require(item.output.compare(0, line.outputFolder.size(), line.outputFolder) == 0, "an output is in the folder");
    std::string const extension = line.Target().extension;
    Require(item.output.size() > extension.size() &&
                item.output.compare(item.output.size() - extension.size(), extension.size(), extension) == 0,
            "an output has the extension of its format");
  }
}

void CheckAccepted(CommandLine const& line, Words const& words) {
  Require(line.problem.empty() && line.hint.empty(), "an accepted line has no problem");
  for (OptionSource const& source : line.sources) {
    Require(IsWord(words, source.text), "an option source is a word of the line");
    std::string name;
    std::string value;
    bool const isSetting = source.kind == OptionSource::Setting;
    Require(!isSetting || SplitSetting(source.text, name, value), "a setting has a name and a value");
    Require(!isSetting || (!HasEmptyToken(name) && !value.empty()), "the name and the value are valid");
  }
  if (line.action == CommandLine::TranslateAll) CheckInputs(line, words);
  if (line.action != CommandLine::Translate && line.action != CommandLine::List) return;
  Require(IsWord(words, line.input), "INPUT is a word of the line");
  if (line.action != CommandLine::Translate) return;
  Require(line.output.empty() || IsWord(words, line.output), "OUTPUT is a word of the line");
  Require(line.jobs == 0 && line.temporarySpace > 0, "numbers are in their ranges");
  Require(!line.OutputPath().empty(), "the output has a name");
  // The default format is accepted also if its module is not installed; the translation then reports that.
  Format const& target = line.Target();
  Require(&target == &Format::Page() || Format::Named(target.name) != nullptr, "the format can be written");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  FuzzInput input(bytes, size);
  Words words = {"brivet"};
  while (!input.IsAtEnd()) words.emplace_back(input.Line().c_str());
  CommandLine const line = Parse(words);
  if (line.action == CommandLine::Refuse) {
    CheckRefused(line);
  } else {
    CheckAccepted(line, words);
  }
  CommandLine const again = Parse(words);
  Require(again.action == line.action && again.problem == line.problem && again.input == line.input,
          "parsing has no state");
  return 0;
}
