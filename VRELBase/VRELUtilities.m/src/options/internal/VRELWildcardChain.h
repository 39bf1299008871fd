// Wildcard nodes that are not allocated yet, with the option at their end.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "VRELExport.h"
#include "VRELOption.h"

// Returns the option with this name and a value that is parsed as by VRELOptions::AddOptionParseValue.
VRELOption VRELParseOption(VRELString const& name, VRELString const& text);

// Returns the string that a configuration file has as the value of a key; see VRELCfgFileKey::GetAllValues.
VRELString VRELConfiguredValue(std::string const& bytes);

// Chain of wildcard nodes below a node of the option tree. The last node of the chain has an option, and no node of the
// chain has other children. Almost every option is at the end of such a chain: a name of one token has six wildcard
// nodes. A chain needs a tenth of the memory of its nodes. VRELOptionToken replaces it by nodes, one by one, when a
// client asks for them.
//
// The option may be stored as the bytes of a name and of a value, until it is requested for the first time. An
// options file of a megabyte can contain 150,000 options, and a VRELOption with its strings needs 240 bytes or more.
//
// Thread safety: none. Option() changes the chain.
class VREL_EXPORT VRELWildcardChain {
 public:
  // Creates a chain of `levels` nodes, 1 to 6.
  static std::unique_ptr<VRELWildcardChain> Make(int levels, std::unique_ptr<VRELOption> option);
  // Creates a chain whose option is parsed at the first request.
  // Requires: CanDefer(name, value). Both are in the default code page of the process, which does not change.
  static std::unique_ptr<VRELWildcardChain> Make(int levels, std::string_view name, std::string_view value);

  // Returns whether the option can be parsed later with the same result. A number with a decimal point cannot, because
  // a program can change the locale.
  static bool CanDefer(std::string_view name, std::string_view value) noexcept;

  ~VRELWildcardChain() { delete option; }
  VRELWildcardChain(VRELWildcardChain const&) = delete;
  VRELWildcardChain& operator=(VRELWildcardChain const&) = delete;

  // Releases the memory of the bytes after the object too.
  static void operator delete(void* memory) noexcept { ::operator delete(memory); }

  int Levels() const noexcept { return levels; }
  // Removes the first node.
  // Requires: Levels() is at least 2.
  void RemoveLevel() noexcept { --levels; }

  // Returns the option. The chain owns it.
  // Errors: throws std::bad_alloc or VRELAllocException, with nothing changed.
  VRELOption* Option();
  // Returns whether the option was not requested yet, and is stored as bytes.
  bool IsDeferred() const noexcept { return option == nullptr; }
  // Returns name, value and option of a deferred option, which stays deferred.
  std::string NameBytes() const { return std::string(Bytes(), nameLength); }
  std::string ValueBytes() const { return std::string(Bytes() + nameLength, valueLength); }
  VRELString Name() const { return VRELString(NameBytes().c_str()); }
  VRELOption Parse() const;
  // Returns the option. The caller owns it.
  // Requires: Option() was called.
  VRELOption* ReleaseOption() noexcept;

  // Whether an enumeration has passed the nodes.
  bool isEnumerated = false;

 private:
  VRELWildcardChain(int levelCount, VRELOption* theOption) noexcept
      : option(theOption), levels(static_cast<unsigned char>(levelCount)) {}

  char const* Bytes() const noexcept { return reinterpret_cast<char const*>(this + 1); }

  VRELOption* option;
  unsigned char levels;
  unsigned short nameLength = 0;
  unsigned short valueLength = 0;
  // The bytes of name and value follow the object in memory.
};
