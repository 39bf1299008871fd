#include "CatchAsResult.h"

#include <exception>
#include <new>
#include <string>

#include "Diagnostics.h"
#include "FileError.h"
#include "Gk_Exception.h"
#include "InputError.h"
#include "VRELAbortException.h"
#include "VRELAllocException.h"
#include "VRELError.h"
#include "VRELString.h"

namespace {

VRINResult ReportInternalError(std::string const& subject, char const* text) {
  ReportProblem(subject, std::string("internal error: ") + text);
  ReportProblem("hint", "please report this, with the file if possible");
  return VREL_E_FAIL;
}

}  // namespace

VRINResult CatchAsResult(std::string const& subject, std::function<VRINResult()> const& work) {
  int const errorsBefore = VRELError::GetErrorCount();
  try {
    VRINResult const result = work();
    if (result.IsSuccess()) CheckMemory();
    bool const hasNewErrors = VRELError::GetErrorCount() != errorsBefore;
    return result.IsSuccess() && hasNewErrors ? VRINResult(VREL_E_FAIL) : result;
  } catch (FileError const& error) {
    ReportProblem(error.message);
    if (!error.hint.empty()) ReportProblem("hint", error.hint);
    return error.result;
  } catch (InputError const& error) {
    if (error.line == 0) {
      ReportProblem(subject, error.text);
    } else {
      ReportErrorAt({subject, error.line, error.column}, error.text);
    }
    return error.result;
  } catch (ReadFailure const& failure) {
    ReportProblem(subject, failure.text);
    return VREL_E_FILE_OPEN;
  } catch (VRELAbortException const&) {
    ReportProblem("interrupted");
    return VREL_E_ABORTED;
  } catch (Gk_Exception const&) {
    return VREL_E_FAIL;
  } catch (std::bad_alloc const&) {
  } catch (VRELAllocException const&) {
  } catch (std::exception const& error) {
    return ReportInternalError(subject, error.what());
  } catch (...) {
    return ReportInternalError(subject, "unknown exception");
  }
  ReportProblem("out of memory");
  return VREL_E_UNEXPECTED;
}

void CheckMemory() {
  if (VRELString::getFailureCount() != 0) throw std::bad_alloc();
}
