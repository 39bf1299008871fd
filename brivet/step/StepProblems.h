// What is told about a file while it is read.
#pragma once

#include <string>

// Sends "NAME:LINE: TEXT" on VRELWarning or VRELError, without the line where it is 0. Of each kind the first LIMIT are
// told, since a damaged file can have millions; TellRest says how many more there were.
class StepProblems {
 public:
  static constexpr long LIMIT = 100;

  explicit StepProblems(std::string shownName) : name(std::move(shownName)) {}

  void Warn(long line, std::string const& text);
  void Error(long line, std::string const& text);
  void TellRest();

 private:
  std::string Place(long line) const;

  std::string const name;
  long warnings = 0;
  long errors = 0;
};
