#include "InteractivePage.h"

#include <utility>
#include <vector>

#include "BrivetModule.h"
#include "Document.h"
#include "HtmlText.h"
#include "InstanceBlocks.h"
#include "ModelData.h"
#include "PageAssets.h"
#include "PagePicture.h"
#include "PageShading.h"
#include "PageSummary.h"
#include "PageValidation.h"
#include "ProductModel.h"

// Order in the file: what is shown at once comes first, then the data, then the script that renders it. Everything that
// comes from the document is escaped by PageSummary, or compressed and encoded in Base64 by DataElements.

VRINResult InteractivePage::WritePage(BrivetWriteRequest& request) {
  Document& document = *request.document;
  ProductModel const* const model = document.GetModel(true, *request.progress);
  if (document.GetModelResult().IsFailure()) return document.GetModelResult();
  PageShading const shading = model != nullptr ? PageShading::Evaluate(request, *model) : PageShading();
  PageValidation const validation(model, request.options);
  PagePicture const picture = model != nullptr ? PagePicture::Of(*model, title) : PagePicture();
  WriteHead();
  std::vector<std::string> leftOut = ModelData::LeftOut(document, model);
  if (!picture.leftOut.empty()) leftOut.push_back(picture.leftOut);
  leftOut.insert(leftOut.end(), shading.leftOut.begin(), shading.leftOut.end());
  WriteSections(document, model, picture, PageSummary::Summary(document, model, leftOut, validation.SummaryRows()));
  ModelData(elements).Write(document, model, &validation);
  VRINResult const result = InstanceBlocks(elements).Write(request);
  WriteEnd(picture);
  return result;
}

void InteractivePage::WriteHead() {
  std::string const shown = PageSummary::DisplayText(title);
  std::string scripts = "'" + std::string(PageAssets::kScriptHash) + "'";
  if (!PageAssets::kThreeHash.empty()) scripts += " '" + std::string(PageAssets::kThreeHash) + "'";
  Put("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src '" +
      std::string(PageAssets::kStyleHash) + "'; script-src " + scripts +
      "; base-uri 'none'; form-action 'none'\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      "<meta name=\"color-scheme\" content=\"light dark\">\n<title>" +
      shown + "</title>\n<style>");
  Put(PageAssets::kStyle);
  Put("</style>\n</head>\n<body>\n<a class=\"skip\" href=\"#summary\">Skip to content</a>\n<header id=\"top\">\n<h1>" +
      shown + "</h1>\n<nav id=\"contents\" aria-label=\"Sections\"></nav>\n</header>\n<main>\n");
}

void InteractivePage::WriteSections(Document& document, ProductModel const* model, PagePicture const& picture,
                                    std::string const& summary) {
  WriteSection(
      "summary", "Summary",
      summary +
          "<noscript><p class=\"note\">Without scripts this page shows the summary, the drawing and the header. "
          "Write a plain listing with <code>-set Html.*.Writer.Plain=On</code>.</p></noscript>\n");
  if (!picture.drawing.empty() || !picture.geometry.empty()) {
    std::string drawing;
    AppendAsciiMarkup(drawing, picture.drawing);
    WriteSection("view", "View", drawing);
  }
  if (model != nullptr) {
    WriteEmptySection("structure", "Structure", !model->roots.empty());
    WriteEmptySection("properties", "Properties", !model->properties.empty());
    WriteEmptySection("layers", "Layers", !model->layers.empty());
    bool isUsed = false;
    for (ModelColourUse const& each : model->colours) isUsed = isUsed || each.items > 0;
    WriteEmptySection("colours", "Colours", isUsed);
    WriteEmptySection("annotations", "Annotations", !model->annotations.empty() || !model->views.empty());
  }
  bool const hasInstances = document.GetInstanceCount() > 0;
  WriteEmptySection("types", "Types", hasInstances);
  WriteEmptySection("search", "Search", hasInstances);
  WriteEmptySection("instances", "Instances", hasInstances);
  std::string const header = PageSummary::Header(document);
  if (!header.empty()) WriteSection("header", "Header", header);
  Put("</main>\n");
}

void InteractivePage::WriteSection(char const* id, char const* heading, std::string_view content) {
  std::string const name = id;
  Put("<section id=\"" + name + "\" aria-labelledby=\"" + name + "-heading\">\n<h2 id=\"" + name + "-heading\">" +
      heading + "</h2>\n");
  Put(content);
  Put("</section>\n");
}

void InteractivePage::WriteEmptySection(char const* id, char const* heading, bool isPresent) {
  if (!isPresent) return;
  std::string const name = id;
  Put("<section id=\"" + name + "\" aria-labelledby=\"" + name + "-heading\" hidden>\n<h2 id=\"" + name +
      "-heading\">" + heading + "</h2>\n</section>\n");
}

void InteractivePage::WriteEnd(PagePicture const& picture) {
  if (!picture.geometry.empty() && !PageAssets::kThree.empty()) {
    elements.Write("geometry", "", picture.geometry);
    Put("<!--\n");
    Put(PageAssets::kThreeNotice);
    Put("-->\n");
    elements.WriteEncoded("three", "", PageAssets::kThree);
  }
  Put("<script>");
  Put(PageAssets::kScript);
  Put("</script>\n</body>\n</html>\n");
}
