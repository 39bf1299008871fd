#include "VRELArgs.h"

#include <cstring>

namespace {

bool BeginsWithDash(char const* argument) noexcept {
  return argument != nullptr && argument[0] == '-';
}

// Returns whether the name, without a trailing ":", is this one letter.
bool IsOneLetter(char const* name, char letter) noexcept {
  if (name == nullptr) return false;
  std::size_t const length = std::strlen(name);
  bool const takesArgument = length > 0 && name[length - 1] == ':';
  return length - (takesArgument ? 1 : 0) == 1 && name[0] == letter;
}

bool Report(int position, int* index) noexcept {
  if (index != nullptr) *index = position;
  return position >= 0;
}

// Returns the position of the first name that begins with `text`, or -1.
int FindBeginning(int count, char** table, char const* text) noexcept {
  if (table == nullptr) return -1;
  std::size_t const length = std::strlen(text);
  for (int position = 0; position < count; ++position) {
    if (table[position] != nullptr && std::strncmp(text, table[position], length) == 0) return position;
  }
  return -1;
}

}  // namespace

VRELArgs::VRELArgs(int count, char** vector) noexcept : lastIndex(count < 1 ? -1 : count - 1), arguments(vector) {
  for (int position = lastIndex; position > 0 && lastOption == 0; --position) {
    if (BeginsWithDash(ArgumentAt(position))) lastOption = position;
  }
}

VRELArgs::~VRELArgs() {
  lastIndex = 0;
  arguments = nullptr;
  current = 0;
  lastOption = 0;
  LeaveGroup();
}

char* VRELArgs::GetNextArg() noexcept {
  if (current >= lastIndex) return nullptr;
  ++current;
  return arguments == nullptr ? nullptr : arguments[current];
}

bool VRELArgs::AreThereOneMoreOptions() const noexcept {
  return current < lastOption;
}

bool VRELArgs::GetOptionArgument(char** argument) noexcept {
  if (argument == nullptr || current >= lastIndex) return false;
  char const* const next = ArgumentAt(current + 1);
  if (next == nullptr || BeginsWithDash(next)) return false;
  *argument = GetNextArg();
  return true;
}

bool VRELArgs::Shift() noexcept {
  bool const isOneLeft = current < lastIndex;
  if (current <= lastIndex) ++current;
  return isOneLeft;
}

bool VRELArgs::IsLetterAnOption(int count, char** table, char wanted, int* index) const noexcept {
  if (table == nullptr) return Report(-1, index);
  for (int position = 0; position < count; ++position) {
    if (IsOneLetter(table[position], wanted)) return Report(position, index);
  }
  return Report(-1, index);
}

bool VRELArgs::IsAnOption(int count, char** table, char* argument, int* index) noexcept {
  if (!BeginsWithDash(argument)) return Report(-1, index);
  int const position = FindBeginning(count, table, argument + 1);
  if (position >= 0) return Report(position, index);
  if (!IsLetterAnOption(count, table, argument[1], index)) return false;
  inGroup = true;
  letter = argument[1];
  groupPosition = 1;
  return true;
}

bool VRELArgs::GetNextOption(int count, char** table, int* index) noexcept {
  if (inGroup) {
    if (TakeLetterOfGroup()) return IsLetterAnOption(count, table, letter, index);
    LeaveGroup();
  }
  for (int position = current; position < lastIndex && arguments != nullptr;) {
    ++position;
    if (IsAnOption(count, table, arguments[position], index)) {
      current = position;
      return true;
    }
  }
  return false;
}

// Returns null after the last argument.
char const* VRELArgs::ArgumentAt(int position) const noexcept {
  return arguments == nullptr || position > lastIndex ? nullptr : arguments[position];
}

// Advances to the next letter of the group. Returns false if the argument last consumed has no more letters.
bool VRELArgs::TakeLetterOfGroup() noexcept {
  ++groupPosition;
  char const* const argument = ArgumentAt(current);
  if (argument == nullptr || static_cast<std::size_t>(groupPosition) >= std::strlen(argument)) return false;
  letter = argument[groupPosition];
  return true;
}

void VRELArgs::LeaveGroup() noexcept {
  inGroup = false;
  letter = '?';
  groupPosition = 0;
}
