#include "VRINResult.h"

VRINResult VRINResult::operator&=(VRINResult other) noexcept {
  if (IsCompleteSuccess()) {
    // Among complete successes VREL_S_NO_GEOMETRY outranks VREL_S_NO_ENTITY, which outranks the rest.
    bool const otherOutranks = !other.IsCompleteSuccess() || other == VREL_S_NO_GEOMETRY ||
                               (other == VREL_S_NO_ENTITY && *this != VREL_S_NO_GEOMETRY);
    if (otherOutranks) *this = other;
  } else if (IsDeterminedFailure()) {
    if (*this == VREL_E_NOT_IMPLEMENTED) *this = other;
  } else if (IsPartialSuccess()) {
    if (other.IsFailure()) *this = other;
  } else if (other.IsDeterminedFailure()) {
    *this = other;
  }
  return *this;
}

VRINResult VRINResult::operator|=(VRINResult other) noexcept {
  if (IsCompleteSuccess()) {
    if (!other.IsCompleteSuccess()) *this = VREL_S_PARTIAL;
  } else if (IsDeterminedFailure()) {
    if (other.IsSuccess()) *this = VREL_S_PARTIAL;
  } else if (IsUndetermined()) {
    if (other.IsCompleteSuccess()) {
      *this = VREL_S_PARTIAL;
    } else if (other.IsDeterminedFailure()) {
      *this = other;
    }
  }
  return *this;
}

char const* VRINResult::GetMessage() const noexcept {
  switch (code) {
    case VREL_S_OK:
      return "Success";
    case VREL_S_PARTIAL:
      return "Partial Success";
    case VREL_S_NO_ENTITY:
      return "No Entity to Translate";
    case VREL_S_NO_GEOMETRY:
      return "No translatable geometry";
    case VREL_E_FAIL:
      return "Failure";
    case VREL_E_ERROR:
      return "Error Encountered";
    case VREL_E_NOT_SUPPORTED:
      return "Not supported";
    case VREL_E_NOT_IMPLEMENTED:
      return "Method is not implemented";
    case VREL_E_UNEXPECTED:
      return "Unexpected Error";
    case VREL_E_INVALID_COMPONENT:
      return "Invalid Component";
    case VREL_E_INVALID_OBJECT:
      return "Invalid Object";
    case VREL_E_INVALID_ARGUMENT:
      return "Invalid Argument";
    case VREL_E_FILE_NOT_FOUND:
      return "File Not Found";
    case VREL_E_FILE_OPEN:
      return "File Open Error";
    case VREL_E_FILE_SAVE:
      return "File Save Error";
    case VREL_E_FILE_ENCRYPTED:
      return "File is encrypted";
    case VREL_E_MODEL_TOO_LARGE:
      return "Model size exceeds valid box";
    case VREL_E_MODEL_TOO_SMALL:
      return "Model size is smaller than the valid box";
    case VREL_E_WRITE_UNIT:
      return "File write unit is invalid";
    case VREL_E_FILE_VERSION:
      return "File version is not supported";
    case VREL_E_INVALID_FILE:
      return "Invalid file";
    case VREL_E_ABORTED:
      return "Aborted";
    case VREL_UNDETERMINED:
      return "Undetermined";
    default:
      // Includes VREL_E_OPTION_UNSET, which has no message.
      return "Unknown Result";
  }
}

long VRINResult::GetReturnCode() const noexcept {
  if (IsSuccess()) return 0;
  return GetDomain() != 0 ? 1 : GetNumber();
}

char const* VRINResult::GetOKKOString(bool flag) noexcept {
  static char const* const ok = "OK";
  static char const* const ko = "KO";
  return flag ? ok : ko;
}
