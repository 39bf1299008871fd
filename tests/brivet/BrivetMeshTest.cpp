// Meshes written by the program, and its shape module.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "BrivetFixture.h"
#include "ModuleRegistry.h"
#include "TestDocument.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

// A tessellated triangle of 2 by 1 millimetres.
std::string TriangleDocument() {
  return "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_NAME('','',(''),(''),'','','');\n"
         "FILE_SCHEMA(('AP242'));\nENDSEC;\nDATA;\n"
         "#1=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#2))REPRESENTATION_CONTEXT('',''));\n"
         "#2=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n#3=PRODUCT('plate','plate','',());\n"
         "#4=PRODUCT_DEFINITION_FORMATION('','',#3);\n#5=PRODUCT_DEFINITION('','',#4,$);\n"
         "#6=PRODUCT_DEFINITION_SHAPE('','',#5);\n#7=SHAPE_DEFINITION_REPRESENTATION(#6,#8);\n"
         "#8=TESSELLATED_SHAPE_REPRESENTATION('',(#9),#1);\n#9=TESSELLATED_SHELL('',(#10),$);\n"
         "#10=TRIANGULATED_FACE('',#11,3,((0.,0.,1.)),$,(),((1,2,3)));\n"
         "#11=COORDINATES_LIST('',3,((0.,0.,0.),(2.,0.,0.),(0.,1.,0.)));\nENDSEC;\nEND-ISO-10303-21;\n";
}

class BrivetMeshTest : public BrivetFixture {
 protected:
  // A folder with the shape module and a worker that runs these commands.
  std::string ModuleWithWorker(std::string const& commands) {
    auto const match = ModuleRegistry::Get().FindName("shape", ModuleRegistry::Evaluating);
    if (!match) return "";
    std::string const modules = folder.Path() + "/modules";
    mkdir(modules.c_str(), 0755);
    Write("modules/BrivetShape.brivet", FileText(match.module->manifest));
    Write("modules/libBrivetShape.so", FileText(match.module->library));
    Write("modules/brivet-shape-worker", "#!/bin/sh\n" + commands);
    chmod((modules + "/brivet-shape-worker").c_str(), 0755);
    return modules;
  }
};

}  // namespace

TEST_F(BrivetMeshTest, WritesTessellatedShape) {
  Write("plate.stp", TriangleDocument());
  EXPECT_EQ(Brivet({"plate.stp", "plate.stl"}).exitStatus, 0);
  EXPECT_EQ(folder.Read("plate.stl").size(), 84U + 50U);
  EXPECT_EQ(Brivet({"plate.stp", "plate.glb"}).exitStatus, 0);
  EXPECT_THAT(folder.Read("plate.glb"), StartsWith("glTF"));
  EXPECT_EQ(Brivet({"plate.stp", "-write", "obj"}).exitStatus, 0);
  EXPECT_EQ(folder.Read("plate.obj"),
            "# plate.stp by brivet\n# unit: millimetre\no plate\nv 0 0 0\nv 2 0 0\nv 0 1 0\n"
            "vn 0 0 1\nvn 0 0 1\nvn 0 0 1\nf 1//1 2//2 3//3\n");
}

TEST_F(BrivetMeshTest, RefusesDocumentWithoutShape) {
  Write("a.stp", "ISO-10303-21;HEADER;FILE_SCHEMA(('S'));ENDSEC;DATA;#1=A();ENDSEC;END-ISO-10303-21;");
  ChildResult const result = Brivet({"a.stp", "a.glb"});
  EXPECT_EQ(result.exitStatus, 4);
  EXPECT_THAT(result.errors, HasSubstr("brivet: a.stp: the document contains no meshes, which glb requires\n"));
  EXPECT_FALSE(folder.Has("a.glb"));
}

TEST_F(BrivetMeshTest, MeshesExactShape) {
  if (!ModuleRegistry::Get().FindName("shape", ModuleRegistry::Evaluating)) GTEST_SKIP() << "no shape module";
  Write("bracket.stp", FileText(BracketPath()));
  EXPECT_EQ(Brivet({"bracket.stp", "bracket.stl"}).exitStatus, 0);
  EXPECT_GT(folder.Read("bracket.stl").size(), 84U + 50U * 20U);
  // Compressed input, which the worker reads from a file without a name.
  EXPECT_EQ(Brivet({"bracket.stp", "packed.stp.gz", "-write", "step"}).exitStatus, 0);
  EXPECT_EQ(Brivet({"packed.stp.gz", "packed.stl"}).exitStatus, 0);
  EXPECT_EQ(folder.Read("packed.stl"), folder.Read("bracket.stl"));
}

TEST_F(BrivetMeshTest, ComputesPropertiesOnRequest) {
  if (!ModuleRegistry::Get().FindName("shape", ModuleRegistry::Evaluating)) GTEST_SKIP() << "no shape module";
  Write("bracket.stp", FileText(BracketPath()));
  EXPECT_EQ(Brivet({"bracket.stp", "off.json"}).exitStatus, 0);
  EXPECT_THAT(folder.Read("off.json"), HasSubstr("\"computed\": null"));
  EXPECT_EQ(Brivet({"bracket.stp", "on.json", "-set", "Json.*.Writer.Computed=On"}).exitStatus, 0);
  EXPECT_THAT(folder.Read("on.json"), HasSubstr("\"volume\": "));
}

// A failure of the engine is a warning: the summary is written, and the status is that of the document.
TEST_F(BrivetMeshTest, SurvivesCrashOfWorker) {
  std::string const modules = ModuleWithWorker("kill -SEGV $$\n");
  if (modules.empty()) GTEST_SKIP() << "no shape module";
  Write("bracket.stp", FileText(BracketPath()));
  ProgramOptions options;
  options.directory = folder.Path();
  options.environment = {"BRIVET_MODULE_PATH=" + modules};
  ChildResult const result =
      RunProgram({BRIVET_PROGRAM, "-nolog", "bracket.stp", "on.json", "-set", "Computed=On"}, options);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.errors, HasSubstr("warning: bracket.stp: exact shapes are not evaluated: the shape worker has "
                                       "crashed: Segmentation fault\n"));
  EXPECT_THAT(folder.Read("on.json"), HasSubstr("\"computed\": null"));
}

// The engine allocates in destructors, where an exception would end the worker by a signal.
TEST_F(BrivetMeshTest, ReportsMemoryLimit) {
  if (!ModuleRegistry::Get().FindName("shape", ModuleRegistry::Evaluating)) GTEST_SKIP() << "no shape module";
  Write("assembly.stp", FileText(VREL_SOURCE_DIR "/examples/assembly.stp"));
  ChildResult const result =
      Brivet({"-set", "Shape.*.Reader.MemoryLimit=100", "-set", "Shape.*.Reader.Deflection=0.000001", "-set",
              "Shape.*.Reader.Angle=0.01", "assembly.stp", "a.glb"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors,
            "brivet: warning: assembly.stp: exact shapes are not evaluated: the memory limit of 100 MB was reached; "
            "the option Shape.*.Reader.MemoryLimit raises it\n");
}

TEST_F(BrivetMeshTest, ListsOptionsOfShapeModule) {
  if (!ModuleRegistry::Get().FindName("shape", ModuleRegistry::Evaluating)) GTEST_SKIP() << "no shape module";
  ChildResult const result = Brivet({"-help", "shape"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.output, HasSubstr("evaluated by"));
  EXPECT_THAT(result.output, HasSubstr("\n  Shape.*.Reader.Deflection\n"));
}
