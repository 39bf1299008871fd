// A format module for tests of the driver. The name of the input selects a fault: "null.fault" opens without a
// document, and writing fails for "save.stp".
#include <new>
#include <stdexcept>
#include <string>

#include "BrivetModule.h"
#include "Document.h"
#include "DocumentVisitor.h"
#include "InputError.h"
#include "ModuleDescription.h"

BRIVET_DESCRIBE_MODULE(module) {
  module.name = "BrivetFault";
  module.version = "1.0";
  FormatDescription fault;
  fault.name = "fault";
  fault.title = "fault list";
  fault.component = "Fault";
  fault.extensions = {".fault"};
  fault.reads = fault.writes = true;
  module.formats = {fault};
}

namespace {

class FaultDocument final : public Document {
 public:
  FaultDocument(VRELFileHandle const& opened, std::string documentFault)
      : Document(opened), fault(std::move(documentFault)) {}

  VRINResult Open() override { return VREL_S_OK; }
  VRINResult PreprocessData() override {
    if (fault == "line.fault") throw InputError{VREL_E_INVALID_FILE, 7, "bad thing"};
    if (fault == "column.fault") throw InputError{VREL_E_INVALID_FILE, 7, "bad thing", 3};
    return VREL_S_OK;
  }
  VRINResult Resolve() override { return fault == "resolve.fault" ? VREL_E_FAIL : VREL_S_OK; }
  VRELFileHeader& GetFileHeader() override { return header; }
  VRINResult GetState() const override { return VREL_S_OK; }
  long GetFailedCount() const override { return 0; }
  long GetSectionCount() const override { return 1; }
  long GetInstanceCount() const override { return 1; }
  long GetComplexCount() const override { return 0; }
  std::size_t GetTypeCount() const override { return 1; }
  std::string GetTypeName(std::size_t) const override { return "A"; }
  long GetTypeInstanceCount(std::size_t) const override { return 1; }
  VRINResult DescribeHeader(DocumentVisitor&) override { return fault == "header.fault" ? VREL_E_FAIL : VREL_S_OK; }
  VRINResult Describe(DocumentVisitor&, Progress&, bool) override { return VREL_S_OK; }

 private:
  std::string const fault;
  VRELFileHeader header;
};

}  // namespace

BRIVET_MODULE_ENTRY BrivetInitialize() {}
BRIVET_MODULE_ENTRY BrivetFinalize() {}

BRIVET_MODULE_ENTRY BrivetOpenDocument(BrivetOpenRequest& request) {
  std::string const& fault = request.shownName;
  if (fault == "throw.fault") throw std::runtime_error("thrown by the module");
  if (fault == "number.fault") throw 12;
  if (fault == "memory.fault") throw std::bad_alloc();
  request.result = fault == "open.fault" ? VREL_E_FILE_OPEN : VREL_S_OK;
  if (fault != "open.fault" && fault != "null.fault") request.document = new FaultDocument(request.file, fault);
}

// Leaves VREL_E_NOT_IMPLEMENTED for other names.
BRIVET_MODULE_ENTRY BrivetWriteDocument(BrivetWriteRequest& request) {
  if (request.title == "save.stp") request.result = VREL_E_FILE_SAVE;
  if (request.title == "fail.stp") request.result = VREL_E_FAIL;
}
