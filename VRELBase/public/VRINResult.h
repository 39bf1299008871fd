// Result code that almost every operation returns.
#pragma once

#include <cstdint>

#include "VRELExport.h"

// Success codes.
constexpr long VREL_S_OK = 0;
constexpr long VREL_S_PARTIAL = 1;
constexpr long VREL_S_NO_ENTITY = 2;
constexpr long VREL_S_NO_GEOMETRY = 3;

// Failure codes.
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

// The operation was stopped on request.
constexpr long VREL_E_ABORTED = 0x2000003;

// The outcome is not known.
constexpr long VREL_UNDETERMINED = 0x3000006;

// Result code of 32 bits with three packed fields:
//
//   bits 0 to 15   number      code within its domain
//   bits 16 to 23  domain      component that issued the code; 0 for every code of this library
//   bits 24 to 27  criticity   0 success, 1 failure, 2 aborted, 3 undetermined
//
// Bits 28 to 31 are unused. Results are combined by &= (all must succeed) or |= (partial success if some succeed).
//
//   VRINResult total = VREL_S_OK;
//   total &= ReadHeader();
//   total &= ReadData();
//   if (total.IsFailure()) std::puts(total.GetMessage());
//
// Performance: as an int.
// Thread safety: as an int.
class VREL_EXPORT VRINResult {
 public:
  // Stores the low 32 bits of `value`.
  constexpr VRINResult(long value) noexcept : code(static_cast<std::int32_t>(value)) {}

  VRINResult& operator=(long value) noexcept {
    code = static_cast<std::int32_t>(value);
    return *this;
  }

  // Returns the code, sign-extended to long.
  constexpr operator long() const noexcept { return code; }

  // Compare all 32 bits, including bits 28 to 31.
  constexpr bool operator==(long value) const noexcept { return code == static_cast<std::int32_t>(value); }
  constexpr bool operator==(int value) const noexcept { return code == value; }
  constexpr bool operator==(VRINResult const& other) const noexcept { return code == other.code; }
  constexpr bool operator!=(long value) const noexcept { return !(*this == value); }
  constexpr bool operator!=(int value) const noexcept { return !(*this == value); }
  constexpr bool operator!=(VRINResult const& other) const noexcept { return !(*this == other); }

  // Returns true for criticity 0, which includes partial success.
  bool IsSuccess() const noexcept { return GetCriticity() == 0; }
  bool IsFailure() const noexcept { return !IsSuccess(); }
  // Returns true for VREL_S_PARTIAL only.
  bool IsPartialSuccess() const noexcept { return code == VREL_S_PARTIAL; }
  // Returns true for every success except VREL_S_PARTIAL, thus also for VREL_S_NO_ENTITY and VREL_S_NO_GEOMETRY.
  bool IsCompleteSuccess() const noexcept { return IsSuccess() && !IsPartialSuccess(); }
  // Returns true for VREL_UNDETERMINED only.
  bool IsUndetermined() const noexcept { return code == VREL_UNDETERMINED; }
  // Returns true for every failure except VREL_UNDETERMINED, thus also for VREL_E_ABORTED.
  bool IsDeterminedFailure() const noexcept { return IsFailure() && !IsUndetermined(); }

  long GetCriticity() const noexcept { return (code >> 24) & 0xF; }
  long GetDomain() const noexcept { return (code >> 16) & 0xFF; }
  long GetNumber() const noexcept { return code & 0xFFFF; }

  // Conjunction: keeps the worse of the two results. Returns a copy of the new value.
  //
  // Compatibility: the first determined failure remains, except that VREL_E_NOT_IMPLEMENTED is replaced by any `other`,
  // including a success. Among complete successes VREL_S_NO_GEOMETRY outranks VREL_S_NO_ENTITY, which outranks the
  // rest.
  VRINResult operator&=(VRINResult other) noexcept;

  // Disjunction: becomes VREL_S_PARTIAL if success and failure are combined. Returns a copy of the new value.
  //
  // Compatibility: VREL_UNDETERMINED combined with VREL_S_PARTIAL remains VREL_UNDETERMINED.
  VRINResult operator|=(VRINResult other) noexcept;

  // Returns the English message of the code. Never null: a code without a message returns "Unknown Result".
  char const* GetMessage() const noexcept;

  // Returns an exit status for the process: 0 for a success, 1 for a failure of another domain, otherwise the number.
  long GetReturnCode() const noexcept;

  // Returns 1 for true and 0 for false.
  //
  // Compatibility: the opposite of the overload above, which returns 0 for success.
  static long GetReturnCode(bool flag) noexcept { return flag ? 1 : 0; }

  // Returns "OK" for true and "KO" for false.
  static char const* GetOKKOString(bool flag) noexcept;

  // VREL_E_FAIL as an object, for callers that need its address.
  static VRINResult E_FAIL_RESULT;

 private:
  std::int32_t code;
};
