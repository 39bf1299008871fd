#include "StepModelReader.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "ModelFixture.h"

namespace {

struct Counts {
  char const* file;
  std::size_t products, occurrences, layers, annotations, properties, views;
  long solids, faces, edges;
};

// Counted with grep.
void ExpectCounts(char const* variable, std::vector<Counts> const& rows) {
  char const* const folder = std::getenv(variable);
  if (folder == nullptr) GTEST_SKIP() << "set " << variable << " to a folder of STEP files to run this test";
  for (Counts const& row : rows) {
    SCOPED_TRACE(row.file);
    ReadDocument document(FileText(std::string(folder) + "/" + row.file), row.file, false);
    Progress progress;
    ProductModel const* const model = document->GetModel(false, progress);
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(model->warnings, std::vector<std::string>());
    EXPECT_EQ(model->products.size(), row.products);
    EXPECT_EQ(model->occurrences.size(), row.occurrences);
    EXPECT_EQ(model->layers.size(), row.layers);
    EXPECT_EQ(model->annotations.size(), row.annotations);
    EXPECT_EQ(model->properties.size(), row.properties);
    EXPECT_EQ(model->views.size(), row.views);
    long solids = 0;
    long faces = 0;
    long edges = 0;
    for (ModelProduct const& product : model->products) {
      solids += product.solids;
      faces += product.faces;
      edges += product.edges;
    }
    EXPECT_EQ(solids, row.solids);
    EXPECT_EQ(faces, row.faces);
    EXPECT_EQ(edges, row.edges);
  }
}

}  // namespace

TEST(StepModelReaderTest, CountsCorpus) {
  ExpectCounts("VREL_CORPUS", {{"as1-oc-214.stp", 9, 13, 1, 0, 27, 0, 5, 53, 126},
                               {"dm1-id-214.stp", 7, 7, 0, 0, 23, 0, 3, 24, 51},
                               {"io1-cm-214.stp", 1, 0, 0, 9, 6, 0, 1, 29, 70}});
}

TEST(StepModelReaderTest, CountsModels) {
  ExpectCounts("VREL_MODELS", {{"annotated-assembly.stp", 4, 2, 0, 6, 4, 0, 0, 1, 4},
                               {"assembly-invisible.stp", 10, 14, 0, 0, 0, 0, 3, 19, 40},
                               {"attributes-layers.stp", 3, 2, 14, 0, 57, 0, 2, 11, 18},
                               {"mapped-annotations.stp", 1, 0, 1, 9, 0, 3, 0, 0, 0},
                               {"validation-properties.stp", 1, 0, 0, 6, 12, 0, 1, 7, 15}});
}
