// Entry points of libBrivetStep.so, which reads and writes STEP files.
#include "BrivetModule.h"
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
