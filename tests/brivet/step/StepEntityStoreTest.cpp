#include "StepEntityStore.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "StepFixture.h"

namespace {

class StoredDocument {
 public:
  explicit StoredDocument(std::string const& data) : document(DocumentText(data)) {
    Progress progress;
    EXPECT_EQ(document->Describe(store, progress, false), VREL_S_OK);
  }

  StepEntityStore store;

 private:
  ReadDocument document;
};

// Source that knows one instance: #1=CARTESIAN_POINT('p').
class PointSource final : public StepEntityStore::Source {
 public:
  PointSource() : store(4, *this) {}

  void Load(std::uint32_t instance) noexcept override {
    ++loads;
    if (fails) return;
    DocumentVisitor::Id id;
    id.number = 1;
    id.ordinal = instance;
    DocumentVisitor::Text text;
    text.utf8 = "p";
    store.BeginInstance(id, false);
    store.BeginRecord("CARTESIAN_POINT");
    store.String(text);
    store.EndRecord();
    store.EndInstance();
  }
  std::string IdOf(std::uint32_t instance) const override { return "#" + std::to_string(10 * instance); }
  std::uint32_t TypeNumberOf(std::uint32_t instance) const noexcept override { return numbers[instance]; }
  std::uint64_t OffsetOf(std::uint32_t /*instance*/) const noexcept override { return 0; }
  void List(std::uint32_t instance, char const* type) {
    StepEntityStore::Type const found = store.FindType(type);
    numbers[instance] = found.number;
    store.List(instance, found, 0);
  }

  StepEntityStore store;
  std::uint32_t numbers[5] = {};
  int loads = 0;
  bool fails = false;
};

}  // namespace

TEST(StepEntityStoreTest, ReadsInternalAndExternalMapping) {
  StoredDocument const document(
      "#1=STYLED_ITEM('name',(#2),#2);\n#2=(REPRESENTATION_ITEM('other')STYLED_ITEM((#1),#1));\n");
  StepEntityStore const& store = document.store;
  EXPECT_EQ(store.Get(1, STEP_ATTRIBUTE(RepresentationItem, "name")).text, "name");
  EXPECT_EQ(store.Get(1, STEP_ATTRIBUTE(StyledItem, "item")).reference, 2U);
  EXPECT_EQ(store.Get(2, STEP_ATTRIBUTE(RepresentationItem, "name")).text, "other");
  EXPECT_EQ(store.Get(2, STEP_ATTRIBUTE(StyledItem, "item")).reference, 1U);
  EXPECT_EQ(store.InstancesOf(StepEntity::StyledItem), (std::vector<std::uint32_t>{1, 2}));
  EXPECT_TRUE(store.Is(2, StepEntity::StyledItem));
  EXPECT_FALSE(store.Is(2, StepEntity::Curve));
}

TEST(StepEntityStoreTest, StoresValues) {
  StoredDocument const document(
      "#1=CARTESIAN_POINT('it''s',(1.5,-2,LENGTH_MEASURE(3.)));\n#2=PRODUCT($,*,.X.,(#1,#99,(\"0F\")));\n");
  StepEntityStore const& store = document.store;
  StepValues list(store.Get(1, STEP_ATTRIBUTE(CartesianPoint, "coordinates")));
  ASSERT_TRUE(list.Next());
  EXPECT_EQ(list.Current().number, 1.5);
  ASSERT_TRUE(list.Next());
  EXPECT_EQ(list.Current().number, -2);
  ASSERT_TRUE(list.Next());
  EXPECT_EQ(list.Current().kind, StepValue::Typed);
  EXPECT_EQ(list.Current().text, "LENGTH_MEASURE");
  EXPECT_FALSE(list.Next());
  EXPECT_FALSE(list.Next());
  EXPECT_EQ(store.Get(1, STEP_ATTRIBUTE(RepresentationItem, "name")).text, "it's");
  EXPECT_EQ(store.Get(2, STEP_ATTRIBUTE(Product, "id")).kind, StepValue::Unset);
  EXPECT_EQ(store.Get(2, STEP_ATTRIBUTE(Product, "name")).kind, StepValue::Derived);
  EXPECT_EQ(store.Get(2, STEP_ATTRIBUTE(Product, "description")).text, "X");
  StepValues references(store.Get(2, STEP_ATTRIBUTE(Product, "frame_of_reference")));
  ASSERT_TRUE(references.Next());
  EXPECT_EQ(references.Current().reference, 1U);
  ASSERT_TRUE(references.Next());
  EXPECT_EQ(references.Current().reference, 0U);
  EXPECT_EQ(references.Current().text, "99");
}

TEST(StepEntityStoreTest, KeepsIdsAndTypesOfUnknownInstances) {
  StoredDocument const document(
      "#7=STRANGE(1);\n#123456789012345678901234567890=PRODUCT();\n#8=(ODD()STRANGE());\n#9=(ODD()CURVE());\n");
  StepEntityStore const& store = document.store;
  EXPECT_EQ(store.InstanceCount(), 4U);
  EXPECT_EQ(store.IdOf(1), "#7");
  EXPECT_EQ(store.TypeNameOf(1), "STRANGE");
  EXPECT_EQ(store.EntityOf(1), StepEntity::None);
  EXPECT_EQ(store.IdOf(2), "#123456789012345678901234567890");
  EXPECT_EQ(store.Get(2, STEP_ATTRIBUTE(Product, "id")).kind, StepValue::EndOfList);
  EXPECT_EQ(store.TypeNameOf(3), "ODD");
  EXPECT_EQ(store.TypeNameOf(4), "CURVE");
  EXPECT_EQ(store.IdOf(0), "#?");
  EXPECT_EQ(store.IdOf(5), "#?");
}

// The second instance is lost; the ordinals of the others are those of the document.
TEST(StepEntityStoreTest, KeepsOrdinalsAfterLostInstances) {
  StoredDocument const document("#1=CURVE('a');\n#2=CURVE('b';\n#3=CURVE_REPLICA('c',#1,#3);\n");
  StepEntityStore const& store = document.store;
  std::vector<std::uint32_t> const curves = store.InstancesOf(StepEntity::Curve);
  ASSERT_EQ(curves.size(), 2U);
  EXPECT_EQ(store.IdOf(curves[1]), "#3");
  EXPECT_EQ(store.IdOf(store.Get(curves[1], STEP_ATTRIBUTE(CurveReplica, "parent_curve")).reference), "#1");
}

TEST(StepEntityStoreTest, LoadsListedInstancesOnce) {
  PointSource source;
  StepEntityStore& store = source.store;
  source.List(1, "CARTESIAN_POINT");
  source.List(2, "STRANGE");
  source.List(4, "(ODD BOUNDED_CURVE STYLED_ITEM)");
  EXPECT_EQ(store.InstanceCount(), 4U);
  EXPECT_EQ(store.InstancesOf(StepEntity::Point), std::vector<std::uint32_t>{1});
  EXPECT_EQ(store.InstancesOf(StepEntity::Curve), std::vector<std::uint32_t>{4});
  EXPECT_EQ(store.InstancesOf(StepEntity::StyledItem), std::vector<std::uint32_t>{4});
  EXPECT_TRUE(store.Is(1, StepEntity::Point));
  EXPECT_FALSE(store.Is(1, StepEntity::Curve));
  EXPECT_FALSE(store.Is(2, StepEntity::Point));
  EXPECT_FALSE(store.Is(3, StepEntity::Point));
  EXPECT_TRUE(store.Is(4, StepEntity::StyledItem));
  EXPECT_TRUE(store.Is(4, StepEntity::Curve));
  EXPECT_FALSE(store.Is(4, StepEntity::Point));
  EXPECT_EQ(store.EntityOf(4), StepEntity::BoundedCurve);
  EXPECT_EQ(store.TypeNameOf(1), "CARTESIAN_POINT");
  EXPECT_EQ(store.TypeNameOf(2), "STRANGE");
  EXPECT_EQ(store.IdOf(2), "#20");
  EXPECT_EQ(store.IdOf(3), "#?");
  EXPECT_EQ(store.Get(2, STEP_ATTRIBUTE(RepresentationItem, "name")).kind, StepValue::EndOfList);
  EXPECT_EQ(source.loads, 0);
  EXPECT_EQ(store.Get(1, STEP_ATTRIBUTE(RepresentationItem, "name")).text, "p");
  EXPECT_EQ(store.Get(1, STEP_ATTRIBUTE(RepresentationItem, "name")).text, "p");
  EXPECT_EQ(source.loads, 1);
  EXPECT_EQ(store.InstancesOf(StepEntity::Point), std::vector<std::uint32_t>{1});
}

TEST(StepEntityStoreTest, AttributesOfOtherEntitiesAreNotLoaded) {
  PointSource source;
  source.List(1, "CARTESIAN_POINT");
  EXPECT_EQ(source.store.Get(1, STEP_ATTRIBUTE(StyledItem, "item")).kind, StepValue::EndOfList);
  EXPECT_EQ(source.loads, 0);
  double point[3];
  EXPECT_FALSE(source.store.ReadTriple(1, STEP_ATTRIBUTE(CartesianPoint, "coordinates"), point));
  EXPECT_FALSE(source.store.RecordOf(1).Skip());
  EXPECT_FALSE(source.store.RecordOf(2).Skip());
  EXPECT_FALSE(source.store.RecordOf(1000).Skip());
}

TEST(StepEntityStoreTest, FailedLoadHasNoValues) {
  PointSource source;
  source.fails = true;
  source.List(1, "CARTESIAN_POINT");
  EXPECT_EQ(source.store.Get(1, STEP_ATTRIBUTE(RepresentationItem, "name")).kind, StepValue::EndOfList);
  EXPECT_TRUE(source.store.Is(1, StepEntity::Point));
}

// Views of values stay valid while other instances are stored, also of one that is longer than a chunk.
TEST(StepEntityStoreTest, StoredInstancesDoNotMove) {
  std::string data = "#1=PRODUCT('first');\n#2=PRODUCT('" + std::string(1000000, 'x') + "');\n";
  for (int i = 3; i <= 20000; ++i) data += "#" + std::to_string(i) + "=PRODUCT('name " + std::to_string(i) + "');\n";
  StoredDocument const document(data);
  StepEntityStore const& store = document.store;
  EXPECT_EQ(store.Get(1, STEP_ATTRIBUTE(Product, "id")).text, "first");
  EXPECT_EQ(store.Get(2, STEP_ATTRIBUTE(Product, "id")).text.size(), 1000000U);
  EXPECT_EQ(store.Get(3, STEP_ATTRIBUTE(Product, "id")).text, "name 3");
  EXPECT_EQ(store.Get(20000, STEP_ATTRIBUTE(Product, "id")).text, "name 20000");
}
