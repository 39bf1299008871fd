#include "DataElements.h"

#include <gtest/gtest.h>

#include "PageData.h"
#include "PageFixture.h"

TEST(DataElementsTest, WritesCompressedElement) {
  std::string const page = ElementsOf([](DataElements& elements) {
    elements.Write("a-0", " data-x=\"1\"", "content </script> \x01");
    elements.Write("b", "", "");
  });
  EXPECT_EQ(AttributesOf(page, "a-0"), " data-x=\"1\"");
  EXPECT_EQ(DataOf(page, "a-0"), "content </script> \x01");
  EXPECT_EQ(DataOf(page, "b"), "");
  EXPECT_EQ(page.rfind("<script type=\"application/gzip\" id=\"data-a-0\" data-x=\"1\">H4sI", 0), 0U);
  EXPECT_EQ(page.substr(page.size() - 10), "</script>\n");
}

TEST(DataElementsTest, WritesInPieces) {
  PieceStream target;
  CheckedOutputStream stream(&target);
  DataElements elements(stream);
  elements.WriteMarkup(std::string(1'000'000, 'x'));
  EXPECT_EQ(target.total, 1'000'000);
  EXPECT_LE(target.largest, 65536);
}

TEST(DataElementsTest, ReportsFullStream) {
  FullStream target(100);
  CheckedOutputStream stream(&target);
  DataElements elements(stream);
  EXPECT_THROW(elements.WriteMarkup(std::string(101, 'x')), CheckedOutputStream::Failure);
}
