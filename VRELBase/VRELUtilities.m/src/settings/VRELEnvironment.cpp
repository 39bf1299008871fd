#include "VRELEnvironment.h"

#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "VRELChannelLine.h"
#include "VRELInfo.h"
#include "VRELStringAsciiCharUtil.h"
#include "VRELStringConversions.h"

namespace {

VRINResult GetUserName(VRELString& value) {
  passwd const* const entry = getpwuid(getuid());
  if (entry == nullptr) return VREL_E_FAIL;
  value = VRELString(entry->pw_name);
  return VREL_S_OK;
}

// Reads one of the strings of uname; the empty string if uname fails.
template <class Field>
VRINResult GetSystemName(Field utsname::*field, VRELString& value) {
  utsname names{};
  static_cast<void>(uname(&names));
  value = VRELString(names.*field);
  return VREL_S_OK;
}

// Forms "name=value" with both in the encodings of GetVariable. Returns false if one of them cannot be converted.
bool FormEntry(VRELString const& name, VRELString const& value, std::string& entry) {
  VRELStringAsciiCharUtil const narrowName(name, false);
  char* narrowValue = nullptr;
  if (narrowName == nullptr || VRELStringToChars(value, narrowValue) != VREL_S_OK) return false;
  entry = std::string(narrowName) + "=" + narrowValue;
  VRELReleaseChars(narrowValue);
  return true;
}

}  // namespace

VRELEnvironment* VRELEnvironment::_pVariables = nullptr;

VRELEnvironment::VRELEnvironment() = default;

VRELEnvironment::~VRELEnvironment() = default;

// The first calls can run on several threads: each creates an object, one of them stores its own, and the others delete
// theirs.
VRELEnvironment* VRELEnvironment::GetEnv() {
  VRELEnvironment* current = __atomic_load_n(&_pVariables, __ATOMIC_ACQUIRE);
  if (current != nullptr) return current;
  auto created = std::make_unique<VRELEnvironment>();
  // A reference of its own, so that no handle deletes it.
  created->RaiseReference();
  bool const isStored =
      __atomic_compare_exchange_n(&_pVariables, &current, created.get(), false, __ATOMIC_ACQ_REL, __ATOMIC_ACQUIRE);
  return isStored ? created.release() : current;
}

VRINResult VRELEnvironment::GetVariable(VRELString const& name, VRELString& value) {
  std::u16string_view const exactName = name.view();
  if (exactName == u"USERNAME") return GetUserName(value);
  if (exactName == u"OS") return GetSystemName(&utsname::sysname, value);
  if (exactName == u"COMPUTERNAME") return GetSystemName(&utsname::nodename, value);

  VRELStringAsciiCharUtil const narrowName(name, false);
  char const* const text = narrowName == nullptr ? nullptr : std::getenv(narrowName);
  if (text == nullptr) return VREL_E_FAIL;
  value = VRELString(text);
  return VREL_S_OK;
}

VRINResult VRELEnvironment::GetVariable(VRELString const& name, int& value) {
  VRELString text;
  VRINResult const found = GetVariable(name, text);
  if (found != VREL_S_OK) return found;
  return VRELStringToInteger(text, value);
}

VRINResult VRELEnvironment::GetVariable(VRELString const& name, bool& value) {
  value = false;
  VRELString text;
  VRINResult const found = GetVariable(name, text);
  if (found == VREL_S_OK) VRELStringToBool(text, value);
  return found;
}

VRINResult VRELEnvironment::PutVariable(VRELString const& name, VRELString& value) {
  static char live[256];
  std::string entry;
  if (!FormEntry(name, value, entry)) return VREL_E_FAIL;
  VRELInfo::Printf("Environment variable: %s\n", entry.c_str());
  // Unescaping never makes the string longer.
  entry.resize(VRELChannelLine::CopyUnescaped(entry.c_str(), entry.data(), entry.size()));
  if (entry.size() >= sizeof live) return VREL_E_FAIL;
  std::memcpy(live, entry.c_str(), entry.size() + 1);
  return putenv(live) == 0 ? VREL_S_OK : VREL_E_FAIL;
}
