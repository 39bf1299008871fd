#include "PagePicture.h"

PagePicture PagePicture::Of(ProductModel const& /*model*/, std::string const& /*title*/) {
  return {};
}
