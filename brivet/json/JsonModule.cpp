// Entry points of libBrivetJson.so, which writes the summary of a document as JSON.
#include "BrivetModule.h"
#include "CheckedOutputStream.h"
#include "JsonSummary.h"
#include "ModuleDescription.h"

BRIVET_MODULE_ENTRY BrivetInitialize() {}
BRIVET_MODULE_ENTRY BrivetFinalize() {}

BRIVET_MODULE_ENTRY BrivetWriteDocument(BrivetWriteRequest& request) {
  CheckedOutputStream stream(request.stream);
  try {
    request.result = WriteJsonSummary(request, stream);
  } catch (CheckedOutputStream::Failure const&) {
    request.result = VREL_E_FILE_SAVE;
  }
  if (request.result.IsSuccess() && stream.HasFailed()) request.result = VREL_E_FILE_SAVE;
}

BRIVET_DESCRIBE_MODULE(module) {
  module.name = "BrivetJson";
  module.title = "summaries as JSON";
  module.version = BRIVET_VERSION;
  FormatDescription json;
  json.name = "json";
  json.title = "JSON";
  json.component = "Json";
  json.extensions = {".json"};
  json.mediaType = "application/json";
  json.writes = true;
  json.usesShapes = true;
  json.writerOptions = {
      {"Computed",
       OptionDescription::Bool,
       "Off",
       "compute volumes, areas and centroids by the shape module",
       {},
       "",
       ""},
  };
  module.formats = {json};
}
