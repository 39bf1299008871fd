#include "GuardedRun.h"

#include <new>

#include "Gk_Exception.h"
#include "ProblemReport.h"
#include "StepError.h"
#include "VRELAbortException.h"
#include "VRELAllocException.h"
#include "VRELError.h"

VRINResult RunGuarded(std::string const& subject, std::function<void()> const& work) {
  int const errorsBefore = VRELError::GetErrorCount();
  try {
    work();
    return VRELError::GetErrorCount() == errorsBefore ? VREL_S_OK : VREL_E_FAIL;
  } catch (StepError const& error) {
    ReportProblem(error.line == 0 ? subject : subject + ":" + std::to_string(error.line), error.text);
    return error.result;
  } catch (VRELAbortException const&) {
    ReportProblem(subject, "expected the end of the file, found a request to stop");
    return VREL_E_ABORTED;
  } catch (Gk_Exception const&) {
    return VREL_E_FAIL;
  } catch (std::bad_alloc const&) {
  } catch (VRELAllocException const&) {
  }
  ReportProblem(subject, "expected more memory, found no more");
  return VREL_E_UNEXPECTED;
}
