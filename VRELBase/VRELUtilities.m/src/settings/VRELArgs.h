// A walk over a command line.
#pragma once

#include "VRELExport.h"

// Takes the arguments of a program one by one, options by a table of their names. An option is an argument that begins
// with "-"; a name in the table that ends in ":" announces to the reader of the table that an argument follows.
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
// An option may be shortened to any beginning of its name; the first name in the table that begins so is meant, and
// "-" alone means the first name. What is no such beginning may be a group of options of one letter: "-ab" is "-a" and
// "-b". A full name is compared with its ":", and only names of one letter are compared without it; that is promised.
//
// The vectors belong to the caller and are not copied: the arguments must outlive the object. Null in place of an
// argument, a name or a vector counts as nothing there.
class VREL_EXPORT VRELArgs {
 public:
  // As main gets them, the program's name in front; that one counts as consumed.
  VRELArgs(int count, char** arguments) noexcept;
  ~VRELArgs();

  // Consumes an argument and returns it; null at the end.
  char* GetNextArg() noexcept;
  // Whether an argument that begins with "-" is still to come.
  bool AreThereOneMoreOptions() const noexcept;
  // Consumes the next argument and stores it. False, with nothing stored or consumed, where there is none or where it
  // begins with "-".
  bool GetOptionArgument(char** argument) noexcept;
  // Consumes an argument, or steps once behind the last one. Whether there was one to consume.
  bool Shift() noexcept;

  // The operations below look into a table of `count` names. They tell whether there was a hit, and store its position,
  // or -1, in `index`, which may be null.
  //
  // Looks for a name of this one letter.
  bool IsLetterAnOption(int count, char** table, char letter, int* index) const noexcept;
  // Looks for the name that an argument means; else for the first letter of a group, which the walk then enters.
  bool IsAnOption(int count, char** table, char* argument, int* index) noexcept;
  // Consumes the arguments up to the next option, passing over those that are none; nothing where none is left. Within
  // a group it takes the next letter. It is promised that a letter which is not in the table gives false while the
  // group goes on, and that the letter is sought in the argument last consumed, whatever else consumed one meanwhile.
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
