// Entry points and description of libBrivetStl.so.
#include <memory>

#include "BrivetModule.h"
#include "ModuleDescription.h"
#include "StlDocument.h"
#include "StlWriter.h"

BRIVET_DESCRIBE_MODULE(module) {
  module.name = "BrivetStl";
  module.title = "triangles in ASCII and binary STL";
  module.version = STL_VERSION;
  FormatDescription stl;
  stl.name = "stl";
  stl.title = "STL";
  stl.component = "Stl";
  stl.extensions = {".stl"};
  stl.mediaType = "model/stl";
  stl.signatures = {{0, "solid "}};
  stl.reads = true;
  stl.writes = true;
  using Type = OptionDescription;
  stl.readerOptions = {
      {"Unit", Type::Choice, "mm", "unit of the coordinates in the file", {"mm", "cm", "m", "inch"}, "", ""},
      {"Product", Type::String, "", "name of the product; by default that in the file", {}, "", ""},
  };
  stl.writerOptions = {
      {"Binary", Type::Bool, "Off", "write binary STL", {}, "", ""},
  };
  module.formats = {stl};
}

BRIVET_MODULE_ENTRY BrivetInitialize() {}

BRIVET_MODULE_ENTRY BrivetFinalize() {}

BRIVET_MODULE_ENTRY BrivetOpenDocument(BrivetOpenRequest& request) {
  auto document = std::make_unique<StlDocument>(request.file, request.shownName, request.options);
  request.result = document->Open();
  if (request.result.IsSuccess()) request.document = document.release();
}

BRIVET_MODULE_ENTRY BrivetWriteDocument(BrivetWriteRequest& request) {
  request.result = WriteStl(request);
}
