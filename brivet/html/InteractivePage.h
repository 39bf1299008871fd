// Interactive HTML page of a document.
#pragma once

#include <string>
#include <string_view>

#include "CheckedOutputStream.h"
#include "DataElements.h"
#include "VRINResult.h"

class Document;
struct BrivetWriteRequest;
struct PagePicture;
struct ProductModel;

// Writes one file that needs nothing else: the summary, the drawing and the header of the document as markup; all other
// sections are rendered by the scripts of the page from compressed data elements. A section without content is absent.
// The page has only ASCII characters, and a Content-Security-Policy that allows its own scripts and nothing else.
//
// Errors: CheckedOutputStream::Failure if the stream does not accept everything.
class InteractivePage {
 public:
  InteractivePage(CheckedOutputStream& target, std::string const& pageTitle) : title(pageTitle), elements(target) {}

  // Errors: those of Document::Describe.
  VRINResult WritePage(BrivetWriteRequest& request);

 private:
  void Put(std::string_view markup) { elements.WriteMarkup(markup); }
  void WriteHead();
  void WriteSections(Document& document, ProductModel const* model, PagePicture const& picture,
                     std::string const& summary);
  void WriteSection(char const* id, char const* heading, std::string_view content);
  // A section that the scripts fill and show.
  void WriteEmptySection(char const* id, char const* heading, bool isPresent);
  void WriteEnd(PagePicture const& picture);

  std::string const title;
  DataElements elements;
};
