#include "CatchAsResult.h"

#include <exception>
#include <new>
#include <string>

#include "Gk_Exception.h"
#include "InputError.h"
#include "Diagnostics.h"
#include "VRELAbortException.h"
#include "VRELAllocException.h"
#include "VRELError.h"
#include "VRELString.h"

VRINResult CatchAsResult(std::string const& subject, std::function<VRINResult()> const& work) {
  int const errorsBefore = VRELError::GetErrorCount();
  try {
    VRINResult const result = work();
    if (result.IsSuccess()) CheckMemory();
    bool const isUnsound = result.IsSuccess() && VRELError::GetErrorCount() != errorsBefore;
    return isUnsound ? VRINResult(VREL_E_FAIL) : result;
  } catch (InputError const& error) {
    ReportProblem(error.line == 0 ? subject : subject + ":" + std::to_string(error.line), error.text);
    return error.result;
  } catch (ReadFailure const& failure) {
    ReportProblem(subject, failure.text);
    return VREL_E_FILE_OPEN;
  } catch (VRELAbortException const&) {
    ReportProblem(subject, "expected the end of the work, found a request to stop");
    return VREL_E_ABORTED;
  } catch (Gk_Exception const&) {
    return VREL_E_FAIL;
  } catch (std::bad_alloc const&) {
  } catch (VRELAllocException const&) {
  } catch (std::exception const& error) {
    ReportProblem(subject, std::string("expected to get on, found ") + error.what() + "; report this with the file");
    return VREL_E_UNEXPECTED;
  } catch (...) {
    ReportProblem(subject, "expected to get on, found an exception of an unknown kind; report this with the file");
    return VREL_E_UNEXPECTED;
  }
  ReportProblem(subject, "expected more memory, found no more; close other programs or split the file");
  return VREL_E_UNEXPECTED;
}

void CheckMemory() {
  if (VRELString::getFailureCount() != 0) throw std::bad_alloc();
}
