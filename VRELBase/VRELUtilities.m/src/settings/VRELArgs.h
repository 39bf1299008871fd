// Command line parser with abbreviated option names.
#pragma once

#include "VRELExport.h"

// Reads the arguments of a program one by one, and options by a table of their names. An option is an argument that
// begins with "-". A ":" at the end of a name marks an option that takes an argument; the caller reads that argument
// with GetOptionArgument.
//
//   char file[] = "file:";
//   char verbose[] = "verbose";
//   char* table[] = {file, verbose};
//   VRELArgs args(argc, argv);
//   int option = -1;
//   while (args.GetNextOption(2, table, &option)) {
//     char* name = nullptr;
//     if (option == 0 && args.GetOptionArgument(&name)) ...
//   }
//
// An option can be abbreviated to any prefix of its name. The first name in the table with that prefix is used; "-"
// alone is a prefix of the first name. An argument that is no prefix can be a group of single-letter options: "-ab" is
// "-a" and "-b".
//
// Compatibility: prefixes are compared with the name including its ":"; only single letters are compared without it.
//
// Ownership: the vectors belong to the caller and are not copied; they must outlive the object. A null argument, name
// or vector counts as absent.
class VREL_EXPORT VRELArgs {
 public:
  // Takes the parameters of main. The name of the program counts as consumed.
  VRELArgs(int count, char** arguments) noexcept;
  ~VRELArgs();

  // Consumes an argument and returns it, or returns null at the end.
  char* GetNextArg() noexcept;
  // Returns whether an argument that begins with "-" follows.
  bool AreThereOneMoreOptions() const noexcept;
  // Consumes the next argument and stores it. Returns false, and stores and consumes nothing, if there is none or if it
  // begins with "-".
  bool GetOptionArgument(char** argument) noexcept;
  // Consumes an argument, or moves once past the last one. Returns whether there was an argument.
  bool Shift() noexcept;

  // Looks up a single-letter name in a table of `count` names. Stores its position in `index`, or -1, and returns
  // whether it was found. `index` can be null, here and below.
  bool IsLetterAnOption(int count, char** table, char letter, int* index) const noexcept;
  // Looks up an argument in a table of `count` names, first as a prefix of a name, then as a group of single letters,
  // which is then current. Stores the position, or -1, and returns whether it was found.
  bool IsAnOption(int count, char** table, char* argument, int* index) noexcept;
  // Consumes the arguments up to the next option, skipping arguments that are not options; within a group, reads its
  // next letter. Stores the position of the option and returns true.
  //
  // Returns false and consumes nothing if there is no further option: `index` is then -1, or unchanged if there was no
  // argument left to look at.
  // Compatibility: a letter that is not in the table returns false, and the group continues. The letter is read from
  // the argument last consumed, also if another operation consumed it.
  bool GetNextOption(int count, char** table, int* index) noexcept;

 private:
  char const* ArgumentAt(int position) const noexcept;
  bool TakeLetterOfGroup() noexcept;
  void LeaveGroup() noexcept;

  int lastIndex;
  char** arguments;
  int current = 0;
  int lastOption = 0;
  bool inGroup = false;
  char letter = '?';
  int groupPosition = 0;
};
