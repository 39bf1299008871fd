// Entry points of libBrivetSvg.so, which writes drawings.
#include <iterator>

#include "BrivetModule.h"
#include "ModuleDescription.h"
#include "SvgDocument.h"

BRIVET_MODULE_ENTRY BrivetInitialize() {}
BRIVET_MODULE_ENTRY BrivetFinalize() {}

BRIVET_MODULE_ENTRY BrivetWriteDocument(BrivetWriteRequest& request) {
  request.result = WriteSvg(request);
}

BRIVET_DESCRIBE_MODULE(module) {
  module.name = "BrivetSvg";
  module.title = "line drawings";
  module.version = BRIVET_VERSION;
  FormatDescription svg;
  svg.name = "svg";
  svg.title = "SVG";
  svg.component = "Svg";
  svg.extensions = {".svg"};
  svg.mediaType = "image/svg+xml";
  svg.writes = true;
  using Type = OptionDescription;
  svg.writerOptions = {
      {"View",
       Type::Choice,
       "Isometric",
       "view of the drawing, or all four",
       {std::begin(kSvgViews), std::end(kSvgViews)},
       "",
       ""},
      {"SizeLimit",
       Type::Int,
       "16",
       "megabytes of the drawing; the shortest edges beyond are left out",
       {},
       "1",
       "512"},
  };
  module.formats = {svg};
}
