#include "StepEntitySource.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "ModelFixture.h"

namespace {

// Products with names of many lengths and forms, far from each other.
std::string ProductsText(int count) {
  std::string const gap = "/*" + std::string(30000, ' ') + "*/\n";
  std::string data;
  for (int i = 0; i < count; ++i) {
    std::string const name = i % 3 == 0   ? std::string(static_cast<std::size_t>(1000 * i), 'n')
                             : i % 3 == 1 ? "caf\\X2\\00E9\\X0\\"
                                          : "it''s " + std::to_string(i);
    data += ProductText(100 + 10 * i, name, "#12") + gap;
  }
  return data;
}

}  // namespace

TEST(StepEntitySourceTest, ReadsInstancesInAnyForm) {
  ReadModel const model(ProductsText(80));
  ASSERT_EQ(model->products.size(), 80U);
  EXPECT_EQ(model->products[0].name, "");
  EXPECT_EQ(model->products[3].name, std::string(3000, 'n'));
  EXPECT_EQ(model->products[78].name, std::string(78000, 'n'));
  EXPECT_EQ(model->products[1].name, "caf\xC3\xA9");
  EXPECT_EQ(model->products[79].name, "caf\xC3\xA9");
  EXPECT_EQ(model->products[2].name, "it's 2");
  EXPECT_EQ(model->products[77].name, "it's 77");
  EXPECT_EQ(model->products[79].instance, "#890");
}

TEST(StepEntitySourceTest, ReportsTruncatedFile) {
  ReadDocument document(DocumentText(kContexts + ProductsText(80)), "part.stp", false);
  ASSERT_EQ(truncate(document.Path().c_str(), 500000), 0);
  Progress progress;
  EXPECT_EQ(document->GetModel(false, progress), nullptr);
  ASSERT_FALSE(document.Messages().empty());
  EXPECT_NE(document.Messages().back().find("the file has changed since it was read"), std::string::npos);
}

TEST(StepEntitySourceTest, ReadsSeveralDataSections) {
  std::string const next = "ENDSEC;\nDATA;\n";
  ReadModel const model(PointText(20, "1.,2.,3.") + next + PointText(21, "4.,5.,6.") + next + next +
                        "#22=GEOMETRIC_SET('',(#20,#21));\n" + ProductText(100, "a", "#22"));
  EXPECT_EQ(model->warnings, std::vector<std::string>());
  ASSERT_EQ(model->products.size(), 1U);
  ExpectBox(model->extent, {1, 2, 3, 4, 5, 6});
}

// Instances that begin far after the first one of their group.
TEST(StepEntitySourceTest, ReadsInstancesFarApart) {
  std::string data;
  std::string edges;
  for (int i = 0; i < 100; ++i) {
    data += PointText(1000 + i, std::to_string(i) + ".,0.,0.");
    if (i % 9 == 4) data += "#" + std::to_string(2000 + i) + "=STRANGE('" + std::string(20000, 'x') + "');\n";
    edges += (i == 0 ? "#" : ",#") + std::to_string(1000 + i);
  }
  data += "#3000=GEOMETRIC_SET('',(" + edges + "));\n";
  ReadModel const model(data + ProductText(100, "a", "#3000"));
  ExpectBox(model->extent, {0, 0, 0, 99, 0, 0});
}

TEST(StepEntitySourceTest, KeepsLongIds) {
  std::string const id(25, '7');
  ReadModel const model("#" + id + "=PRODUCT('a','a','',());\n#90=PRODUCT_DEFINITION_FORMATION('','',#" + id +
                        ");\n#91=PRODUCT_DEFINITION('','',#90,$);\n");
  ASSERT_EQ(model->products.size(), 1U);
  EXPECT_EQ(model->products[0].instance, "#" + id);
}
