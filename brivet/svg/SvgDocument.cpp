#include "SvgDocument.h"

#include <strings.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <iterator>
#include <string>

#include "BrivetModule.h"
#include "CheckedOutputStream.h"
#include "Diagnostics.h"
#include "Document.h"
#include "Drawing.h"
#include "ModuleOptions.h"
#include "ProductModel.h"
#include "Progress.h"

namespace {

constexpr int kDefaultMegabytes = 16;
constexpr int kMostMegabytes = 512;

DrawingOptions OptionsOf(BrivetWriteRequest const& request) {
  ModuleOptions const options(request.options, "Svg", ModuleOptions::Writer);
  std::string const view = options.GetString("View", kSvgViews[0]);
  auto const* const found = std::find_if(std::begin(kSvgViews), std::end(kSvgViews),
                                         [&view](char const* each) { return strcasecmp(each, view.c_str()) == 0; });
  DrawingOptions drawing;
  if (found != std::end(kSvgViews)) drawing.view = static_cast<DrawingOptions::View>(found - std::begin(kSvgViews));
  int const megabytes = std::clamp(options.GetInt("SizeLimit", kDefaultMegabytes), 1, kMostMegabytes);
  drawing.limit = static_cast<std::size_t>(megabytes) << 20U;
  return drawing;
}

}  // namespace

VRINResult WriteSvg(BrivetWriteRequest& request) {
  ProductModel const* const model = request.document->GetModel(true, *request.progress);
  std::string svg = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  if (model == nullptr || !WriteDrawing(*model, OptionsOf(request), request.title, svg)) {
    ReportProblem(request.shownName, "nothing to draw: the document has no edges and no triangles");
    return VREL_E_FAIL;
  }
  CheckedOutputStream stream(request.stream);
  for (std::size_t at = 0; at < svg.size() && !stream.HasFailed();) {
    auto const count = static_cast<int>(std::min(svg.size() - at, std::size_t{1} << 20U));
    stream.write(svg.data() + at, count);
    at += static_cast<std::size_t>(count);
  }
  return stream.HasFailed() ? VREL_E_FILE_SAVE : VREL_S_OK;
}
