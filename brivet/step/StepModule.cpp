// Entry points of libBrivetStep.so, which reads and writes STEP files.
#include "BrivetModule.h"
#include "ModuleDescription.h"
#include "StepFormatReader.h"
#include "StepWriter.h"

BRIVET_MODULE_ENTRY BrivetInitialize() {}

BRIVET_MODULE_ENTRY BrivetFinalize() {}

BRIVET_MODULE_ENTRY BrivetOpenDocument(BrivetOpenRequest& request) {
  auto document = std::make_unique<StepFormatReader>(request.file, request.shownName, request.options);
  request.result = document->Open();
  if (request.result.IsSuccess()) request.document = document.release();
}

BRIVET_MODULE_ENTRY BrivetWriteDocument(BrivetWriteRequest& request) {
  request.result = WriteStep(request);
}

BRIVET_DESCRIBE_MODULE(module) {
  module.name = "BrivetStep";
  module.title = "STEP files, ISO 10303-21 clear text";
  module.version = BRIVET_VERSION;
  FormatDescription step;
  step.name = "step";
  step.title = "STEP";
  step.component = "Step";
  step.extensions = {".stp", ".step", ".p21"};
  step.mediaType = "model/step";
  step.signatures = {{0, "ISO-10303-21;"}};
  step.reads = true;
  step.writes = true;
  using Type = OptionDescription;
  step.readerOptions = {
      {"Encoding", Type::String, "", "encoding of bytes that are not ASCII, by any name that ICU knows", {}, "", ""},
  };
  step.writerOptions = {
      {"Encoding", Type::String, "", "encoding of characters that are not ASCII; escapes for the others", {}, "", ""},
      {"FileLineLength", Type::Int, "0", "maximum length of a line; 0 for no limit", {}, "0", "2147483647"},
      {"AuthorName", Type::String, "", "replaces the authors of the header", {}, "", ""},
      {"OrganizationName", Type::String, "", "replaces the organizations of the header", {}, "", ""},
      {"PreProcessorVersion", Type::String, "", "replaces the preprocessor version of the header", {}, "", ""},
      {"SendingSystemName", Type::String, "", "replaces the originating system of the header", {}, "", ""},
      {"FileDescription", Type::String, "", "replaces the description of the header", {}, "", ""},
  };
  module.formats = {step};
}
