#include "PagePicture.h"

#include "Drawing.h"
#include "PictureData.h"

PagePicture PagePicture::Of(ProductModel const& model, std::string const& title) {
  PagePicture picture;
  DrawingOptions options;
  options.limit = kDrawingBytes;
  WriteDrawing(model, options, title, picture.drawing);
  picture.geometry = PictureData::Encode(model, picture.leftOut);
  return picture;
}
