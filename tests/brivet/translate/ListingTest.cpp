#include "Listing.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>

#include "Document.h"
#include "FormatModule.h"
#include "Progress.h"
#include "RecordingListener.h"
#include "ScratchDirectory.h"
#include "TestDocument.h"
#include "VRELFormatReaderHandle.h"
#include "VRELReader.h"

namespace {

class ListingTest : public testing::Test {
 protected:
  // Reads a document and does not resolve it.
  Document& Read(std::string const& bytes) {
    BrivetOpenRequest request;
    request.file = VRELFileHandle(new VRELFile(folder.Write("a.stp", bytes).c_str()));
    request.shownName = "a.stp";
    EXPECT_EQ(module.Open(request), VREL_S_OK);
    handle = VRELFormatReaderHandle(request.document);
    VRELReader reader(handle);
    reader.ReadHeaderSection();
    reader.ReadDataSection();
    return *request.document;
  }

  ScratchDirectory folder;
  FormatModule module{Format::OfInput("a.stp")};
  Progress progress;
  VRELFormatReaderHandle handle;
};

constexpr char kHeader[] =
    "FILE_DESCRIPTION\n"
    "description              : (empty)\n"
    "implementation_level     : 2;1\n"
    "\n"
    "FILE_NAME\n"
    "File Name                : (empty)\n"
    "time_stamp               : (empty)\n"
    "Author                   : (empty)\n"
    "Organization             : (empty)\n"
    "preprocessor_version     : (empty)\n"
    "originating_system       : (empty)\n"
    "authorization            : (empty)\n"
    "\n"
    "FILE_SCHEMA\n"
    "schema_identifiers       : S\n"
    "\n";

}  // namespace

TEST_F(ListingTest, SortsTypesByCount) {
  Document& document = Read(DocumentText("#1=A();\n#2=B();\n#3=B();\n#4=(C()D());\n#5=A();\n#6=B();\n#7=A(;\n"));
  testing::internal::CaptureStdout();
  EXPECT_EQ(PrintListing(document, progress), VREL_S_OK);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), std::string(kHeader) +
                                                        "data sections              1\n"
                                                        "entity instances           6\n"
                                                        "  simple                   5\n"
                                                        "  complex                  1\n"
                                                        "lost                       1\n"
                                                        "entity types               3\n"
                                                        "escaped strings            0\n"
                                                        "\n"
                                                        "     count  type\n"
                                                        "         3  B\n"
                                                        "         2  A\n"
                                                        "         1  (C D)\n");
}

// Columns are as wide as their widest entry.
TEST_F(ListingTest, ShowsEscapedStrings) {
  Document& document =
      Read(DocumentText("#1=A('plain');\n#1234567890=A('\\S\\|','\\X2\\000A\\X0\\');\n#3=B(('\\\\'));\n"));
  testing::internal::CaptureStdout();
  EXPECT_EQ(PrintListing(document, progress), VREL_S_OK);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), std::string(kHeader) +
                                                        "data sections              1\n"
                                                        "entity instances           3\n"
                                                        "  simple                   3\n"
                                                        "  complex                  0\n"
                                                        "entity types               2\n"
                                                        "escaped strings            3\n"
                                                        "\n"
                                                        "     count  type\n"
                                                        "         2  A\n"
                                                        "         1  B\n"
                                                        "\n"
                                                        "  line  instance     text\n"
                                                        "     8  #1234567890  \xC3\xBC\n"
                                                        "     8  #1234567890  <U+000A>\n"
                                                        "     9  #3           \\\n");
}

// The column of all rows is as wide as the longest id.
TEST_F(ListingTest, ShortensLongIds) {
  std::string const id(100'000, '7');
  std::string strings;
  for (int i = 0; i < 10'000; ++i) strings += i == 0 ? "'\\\\'" : ",'\\\\'";
  std::string const bytes = DocumentText("#" + id + "=A('\\\\');\n#1=B(" + strings + ");\n");
  Document& document = Read(bytes);
  testing::internal::CaptureStdout();
  EXPECT_EQ(PrintListing(document, progress), VREL_S_OK);
  std::string const output = testing::internal::GetCapturedStdout();
  EXPECT_NE(output.find("\n  line  instance                  text\n     7  #77777777777777777777...  \\\n"
                        "     8  #1                        \\\n"),
            output.npos);
  EXPECT_LT(output.size(), 24 * bytes.size());
}

TEST_F(ListingTest, ReportsFullOutputOnce) {
  std::string data;
  for (int i = 1; i <= 20000; ++i) data += "#" + std::to_string(i) + "=A('\\S\\|" + std::string(20, 'x') + "');\n";
  Document& document = Read(DocumentText(data));
  std::fflush(stdout);
  int const before = dup(STDOUT_FILENO);
  int const full = open("/dev/full", O_WRONLY);
  dup2(full, STDOUT_FILENO);
  RecordingListener const listener;
  EXPECT_EQ(PrintListing(document, progress), VREL_E_FILE_SAVE);
  dup2(before, STDOUT_FILENO);
  close(before);
  close(full);
  EXPECT_EQ(listener.Texts(), (std::vector<std::string>{"cannot write to standard output: No space left on device"}));
}

// The window of the reader is smaller than the comments, so that the model is read from the file again.
TEST_F(ListingTest, ReportsChangedFile) {
  std::string const comment = "/*" + std::string(5U << 20U, ' ') + "*/";
  std::string const bytes =
      DocumentText("#1=A();" + comment + "#3=PRODUCT_DEFINITION('','',#1,$);" + comment + "#4=A();");
  Document& document = Read(bytes);
  ASSERT_EQ(truncate(folder.Path("a.stp").c_str(), static_cast<off_t>(bytes.find("#3="))), 0);
  testing::internal::CaptureStdout();
  VRINResult const listed = PrintListing(document, progress);
  VRINResult const summarized = PrintDocumentSummary(document, progress);
  testing::internal::GetCapturedStdout();
  EXPECT_EQ(listed, VREL_E_INVALID_FILE);
  EXPECT_EQ(summarized, VREL_E_INVALID_FILE);
}

// A summary fits on a screen of 24 lines, however large the assembly is.
TEST_F(ListingTest, SummaryOfLargeAssemblyFitsScreen) {
  std::string data;
  auto const addProduct = [&data](int id) {
    std::string const number = std::to_string(id);
    data += "#" + number + "=PRODUCT('p" + number + "','','',());\n#" + std::to_string(id + 1) +
            "=PRODUCT_DEFINITION_FORMATION('','',#" + number + ");\n#" + std::to_string(id + 2) +
            "=PRODUCT_DEFINITION('','',#" + std::to_string(id + 1) + ",$);\n";
  };
  int next = 100000;
  // A tree of 3 levels with 30 different children each at the second one.
  for (int i = 0; i < 931; ++i) {
    addProduct(10 * i + 10);
    if (i == 0) continue;
    int const parent = i <= 30 ? 0 : (i - 31) / 30 + 1;
    data += "#" + std::to_string(++next) + "=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#" +
            std::to_string(10 * parent + 12) + ",#" + std::to_string(10 * i + 12) + ",$);\n";
    data += "#" + std::to_string(++next) + "=PRESENTATION_LAYER_ASSIGNMENT('layer " + std::to_string(i) + "','',());\n";
    data += "#" + std::to_string(++next) + "=PROPERTY_DEFINITION('property " + std::to_string(i) + "','',$);\n";
  }
  Document& document = Read(DocumentText(data));
  testing::internal::CaptureStdout();
  EXPECT_EQ(PrintDocumentSummary(document, progress), VREL_S_OK);
  std::string const text = testing::internal::GetCapturedStdout();
  EXPECT_LE(std::count(text.begin(), text.end(), '\n'), 24);
  for (std::size_t at = 0; at < text.size();) {
    std::size_t const end = text.find('\n', at);
    EXPECT_LE(end - at, 80U);
    at = end + 1;
  }
  EXPECT_NE(text.find("\ncontents          931 products, 930 occurrences\n"), text.npos) << text;
  EXPECT_NE(text.find("p10 (30 parts)\n"), text.npos) << text;
}
