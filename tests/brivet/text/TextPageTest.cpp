#include "TextPage.h"

#include <gtest/gtest.h>

#include "PageFixture.h"

TEST(TextPageTest, WritesDocument) {
  ReadDocument document(PageDocument());
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  std::string const page = TextOf([&request](VRELOutputStream* target) {
    CheckedOutputStream stream(target);
    EXPECT_EQ(TextPage(stream).WritePage(request), VREL_S_OK);
  });
  EXPECT_EQ(page,
            "part.stp\n"
            "\n"
            "Incomplete\n"
            "----------\n"
            "Parts of the document could not be read and are not part of this page.\n"
            "line 2                   : #3 expected parameter, found ';'\n"
            "\n"
            "Header\n"
            "------\n"
            "FILE_NAME\n"
            "File Name                : a<b\n"
            "time_stamp               : (empty)\n"
            "Author                   : (none)\n"
            "Organization             : (none)\n"
            "preprocessor_version     : (empty)\n"
            "originating_system       : (empty)\n"
            "authorization            : (empty)\n"
            "\n"
            "FILE_DESCRIPTION\n"
            "description              : x\n"
            "implementation_level     : (empty)\n"
            "\n"
            "FILE_SCHEMA\n"
            "schema_identifiers       : S\n"
            "\n"
            "Instances\n"
            "---------\n"
            "data sections            : 2\n"
            "instances                : 3\n"
            "complex ones             : 1\n"
            "left out                 : 1\n"
            "\n"
            "Types\n"
            "-----\n"
            "A                        : 2\n"
            "(B C)                    : 1\n"
            "\n"
            "Data section 1\n"
            "--------------\n"
            "#1 = A('it's \xE3\x83\x96<U+000A> & <co>', .T., -1.5E-3, \"0F\", $, *, (#2, T(1), ()))\n"
            "    referred to by #2\n"
            "#2 = (B() C(#1, #1))\n"
            "    referred to by #1 #99999999999999999999\n"
            "\n"
            "Data section 2\n"
            "--------------\n"
            "('two')\n"
            "#99999999999999999999 = A(#2, #7, #99999999999999999999)\n"
            "    referred to by #99999999999999999999\n");
}

TEST(TextPageTest, ReportsFullStream) {
  ReadDocument document(PageDocument());
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  FullStream target(700);
  CheckedOutputStream stream(&target);
  EXPECT_THROW(TextPage(stream).WritePage(request), CheckedOutputStream::Failure);
}

// So that memory does not grow with the length of an instance.
TEST(TextPageTest, WritesLongLineInPieces) {
  ReadDocument document(LongDocument());
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  PieceStream target;
  CheckedOutputStream stream(&target);
  TextPage page(stream);
  EXPECT_EQ(page.WritePage(request), VREL_S_OK);
  EXPECT_GT(target.total, 1'200'000);
  EXPECT_LT(target.largest, 70'000);
}

TEST(TextPageTest, BeginsWithSummary) {
  ReadDocument document(DocumentText(
      "#1=PRODUCT('p','plate','',());\n#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n#3=PRODUCT_DEFINITION('','',#2,$);\n"
      "#4=PRODUCT('w','washer','',());\n#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
      "#6=PRODUCT_DEFINITION('','',#5,$);\n#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','left','',#3,#6,$);\n"
      "#8=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','right','',#3,#6,$);\n"));
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  std::string const page = TextOf([&request](VRELOutputStream* target) {
    CheckedOutputStream stream(target);
    EXPECT_EQ(TextPage(stream).WritePage(request), VREL_S_OK);
  });
  EXPECT_EQ(page.substr(0, page.find("\nHeader")),
            "part.stp\n"
            "\n"
            "Summary\n"
            "-------\n"
            "contents                 : 2 products, 2 occurrences\n"
            "plate\n"
            "  washer \xC3\x97"
            "2\n");
}

TEST(TextPageTest, ReportsChangedFile) {
  ReadDocument document(ChangeableText());
  CutChangeableText(document);
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  TextOf([&request](VRELOutputStream* target) {
    CheckedOutputStream stream(target);
    EXPECT_EQ(TextPage(stream).WritePage(request), VREL_E_INVALID_FILE);
  });
}
