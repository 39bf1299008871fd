// The one way in which success and failure travel through the library: a word that almost every operation returns by
// value.
#pragma once

#include <cstdint>

#include "VRELExport.h"

// Successes. The work was done, with what the name says.
constexpr long VREL_S_OK = 0;
constexpr long VREL_S_PARTIAL = 1;
constexpr long VREL_S_NO_ENTITY = 2;
constexpr long VREL_S_NO_GEOMETRY = 3;

// Failures.
constexpr long VREL_E_FAIL = 0x1000001;
constexpr long VREL_E_ERROR = 0x1000002;
constexpr long VREL_E_NOT_SUPPORTED = 0x1000004;
constexpr long VREL_E_NOT_IMPLEMENTED = 0x1000005;
constexpr long VREL_E_UNEXPECTED = 0x1000007;
constexpr long VREL_E_OPTION_UNSET = 0x1000008;
constexpr long VREL_E_INVALID_COMPONENT = 0x1000009;
constexpr long VREL_E_INVALID_OBJECT = 0x100000A;
constexpr long VREL_E_INVALID_ARGUMENT = 0x100000B;
constexpr long VREL_E_FILE_NOT_FOUND = 0x100000D;
constexpr long VREL_E_FILE_OPEN = 0x100000E;
constexpr long VREL_E_FILE_SAVE = 0x100000F;
constexpr long VREL_E_FILE_ENCRYPTED = 0x1000010;
constexpr long VREL_E_MODEL_TOO_LARGE = 0x1000011;
constexpr long VREL_E_MODEL_TOO_SMALL = 0x1000012;
constexpr long VREL_E_WRITE_UNIT = 0x1000013;
constexpr long VREL_E_FILE_VERSION = 0x1000014;
constexpr long VREL_E_INVALID_FILE = 0x1000015;

// The run was stopped on request.
constexpr long VREL_E_ABORTED = 0x2000003;

// Nobody can tell how it ended.
constexpr long VREL_UNDETERMINED = 0x3000006;

// A result code of 32 bits, read as three packed fields:
//
//   bits 0 to 15   number      the code within its domain
//   bits 16 to 23  domain      who issued the code; 0 for every code of this library
//   bits 24 to 27  criticity   0 success, 1 failure, 2 aborted, 3 undetermined
//
// Bits 28 to 31 belong to no field. A function starts its result as a failure, assigns VREL_S_OK when the work is done
// and returns it by value; many results fold into one by &= (all must succeed) or |= (one success counts).
//
//   VRINResult total = VREL_S_OK;
//   total &= ReadHeader();
//   total &= ReadData();
//   if (total.IsFailure()) std::puts(total.GetMessage());
class VREL_EXPORT VRINResult {
 public:
  // Keeps the low 32 bits of `value`.
  constexpr VRINResult(long value) noexcept : code(static_cast<std::int32_t>(value)) {}

  VRINResult& operator=(long value) noexcept {
    code = static_cast<std::int32_t>(value);
    return *this;
  }

  // The word, sign-extended where long is wider.
  constexpr operator long() const noexcept { return code; }

  // The whole word is compared, bits 28 to 31 included.
  constexpr bool operator==(long value) const noexcept { return code == static_cast<std::int32_t>(value); }
  constexpr bool operator==(int value) const noexcept { return code == value; }
  constexpr bool operator==(VRINResult const& other) const noexcept { return code == other.code; }
  constexpr bool operator!=(long value) const noexcept { return !(*this == value); }
  constexpr bool operator!=(int value) const noexcept { return !(*this == value); }
  constexpr bool operator!=(VRINResult const& other) const noexcept { return !(*this == other); }

  // Criticity 0: complete and partial successes alike.
  bool IsSuccess() const noexcept { return GetCriticity() == 0; }
  bool IsFailure() const noexcept { return !IsSuccess(); }
  // Exactly VREL_S_PARTIAL.
  bool IsPartialSuccess() const noexcept { return code == VREL_S_PARTIAL; }
  // Any success but the partial one, VREL_S_NO_ENTITY and VREL_S_NO_GEOMETRY included.
  bool IsCompleteSuccess() const noexcept { return IsSuccess() && !IsPartialSuccess(); }
  // Exactly VREL_UNDETERMINED.
  bool IsUndetermined() const noexcept { return code == VREL_UNDETERMINED; }
  // Any failure but the undetermined one; VREL_E_ABORTED is among them.
  bool IsDeterminedFailure() const noexcept { return IsFailure() && !IsUndetermined(); }

  long GetCriticity() const noexcept { return (code >> 24) & 0xF; }
  long GetDomain() const noexcept { return (code >> 16) & 0xFF; }
  long GetNumber() const noexcept { return code & 0xFFFF; }

  // Conjunction: as bad as the worse of the two. The first determined failure stays, except that "Method is not
  // implemented" gives way to whatever comes. Returns a copy of the new value.
  VRINResult operator&=(VRINResult other) noexcept;

  // Disjunction: a success among failures is a partial success. That an undetermined result stays undetermined beside
  // a partial success is promised: callers tell a half-done alternative from a done one by it. Returns a copy of the
  // new value.
  VRINResult operator|=(VRINResult other) noexcept;

  // The code's fixed English text; "Unknown Result" for every value without one. Never null.
  char const* GetMessage() const noexcept;

  // For the exit status of a process: 0 for a success, 1 for a failure of a foreign domain, otherwise the number.
  long GetReturnCode() const noexcept;

  // The flag as a number, 1 for true. The sense is promised to be the reverse of the other GetReturnCode: the flag is
  // only passed through.
  static long GetReturnCode(bool flag) noexcept { return flag ? 1 : 0; }

  // "OK" for true, "KO" for false.
  static char const* GetOKKOString(bool flag) noexcept;

  // VREL_E_FAIL as an object.
  static VRINResult E_FAIL_RESULT;

 private:
  std::int32_t code;
};
