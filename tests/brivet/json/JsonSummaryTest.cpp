#include "JsonSummary.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "BrivetModule.h"
#include "CheckedOutputStream.h"
#include "ChildProcess.h"
#include "ModelFixture.h"
#include "PageFixture.h"
#include "RecordingListener.h"
#include "ScratchDirectory.h"
#include "SolidText.h"
#include "VRELOptions.h"

namespace {

std::string JsonOf(std::string const& data) {
  ReadDocument document(DocumentText(data));
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  return TextOf([&request](VRELOutputStream* target) {
    CheckedOutputStream stream(target);
    EXPECT_EQ(WriteJsonSummary(request, stream), VREL_S_OK);
  });
}

bool Contains(std::string const& text, std::string const& part) {
  return text.find(part) != text.npos;
}

// Python of Debian, whose modules are those of Debian.
ChildResult Validate(std::string const& file) {
  return RunProgram({"/usr/bin/python3", "-c",
                     "import json, sys, jsonschema\n"
                     "schema = json.load(open(sys.argv[1]))\n"
                     "jsonschema.Draft7Validator.check_schema(schema)\n"
                     "jsonschema.Draft7Validator(schema).validate(json.load(open(sys.argv[2])))\n",
                     VREL_SOURCE_DIR "/docs/summary.schema.json", file});
}

std::string AssemblyText() {
  return kContexts + ProductText(100, "top", "#12") + ProductText(200, "part", "#22", 2) + PointText(21, "1.,2.,3.") +
         "#22=GEOMETRIC_SET('',(#21));\n" + UsageText(300, 100, 200) +
         "#30=PRESENTATION_LAYER_ASSIGNMENT('layer','',(#22));\n"
         "#31=PROPERTY_DEFINITION('geometric validation property','',#202);\n#32=DATUM('','',$,.F.,'A');\n"
         "#33=CAMERA_MODEL_D3('front',#12,#12);\n";
}

}  // namespace

TEST(JsonSummaryTest, WritesEmptyDocument) {
  EXPECT_EQ(JsonOf("#1=A();\n"),
            "{\n  \"format\": \"brivet-summary\",\n  \"version\": 1,\n"
            "  \"file\": {\n    \"name\": \"\",\n    \"schemas\": [\"S\"],\n    \"applicationProtocol\": \"other\",\n"
            "    \"description\": [\"\"],\n    \"timeStamp\": \"\",\n    \"authors\": [\"\"],\n"
            "    \"organizations\": [\"\"],\n    \"preprocessor\": \"\",\n    \"originatingSystem\": \"\"\n  },\n"
            "  \"counts\": {\n    \"instances\": 1,\n    \"complex\": 0,\n    \"skipped\": 0,\n    \"types\": {\n"
            "      \"A\": 1\n    }\n  },\n"
            "  \"status\": {\n    \"result\": \"success\",\n    \"lost\": []\n  },\n"
            "  \"units\": [],\n  \"products\": [],\n  \"structure\": [],\n  \"extent\": null,\n  \"colours\": [],\n"
            "  \"layers\": [],\n  \"properties\": [],\n  \"annotations\": [],\n  \"views\": []\n}\n");
}

TEST(JsonSummaryTest, WritesModel) {
  std::string const json = JsonOf(AssemblyText());
  EXPECT_TRUE(Contains(json, "\"name\": \"INCH\",\n        \"metres\": 0.0254\n")) << json;
  EXPECT_TRUE(Contains(json, "\"occurrence\": \"#300\",\n"));
  EXPECT_TRUE(Contains(json, "\"placement\": [25.4, 0, 0, 0, 0, 25.4, 0, 0, 0, 0, 25.4, 0]"));
  EXPECT_TRUE(Contains(json, "\"min\": [25.4, 50.8, 76.19999999999999],\n")) << json;
  EXPECT_TRUE(Contains(json, "\"unit\": \"millimetre\"\n"));
  EXPECT_TRUE(Contains(json, "\"kind\": \"validation\",\n      \"values\": []\n"));
  EXPECT_TRUE(Contains(json, "\"kind\": \"datum\",\n      \"form\": \"semantic\",\n"));
  EXPECT_TRUE(Contains(json, "\"kind\": \"camera\"\n"));
}

TEST(JsonSummaryTest, CountsRecordsOfComplexInstances) {
  std::string const json = JsonOf("#1=(A()B());\n#2=A();\n#3=C(;\n");
  EXPECT_TRUE(Contains(json, "\"A\": 2,\n      \"B\": 1\n")) << json;
  EXPECT_TRUE(Contains(json, "\"result\": \"partial\""));
  EXPECT_TRUE(Contains(json, "\"instances\": [\"#3\"]"));
}

TEST(JsonSummaryTest, MatchesSchema) {
  if (RunProgram({"/usr/bin/python3", "-c", "import jsonschema"}).exitStatus != 0) {
    GTEST_SKIP() << "python3-jsonschema is missing";
  }
  ScratchDirectory folder;
  for (std::string const& data : {std::string("#1=A();\n"), AssemblyText(), std::string("#1=(A()B());\n#3=C(;\n")}) {
    ChildResult const result = Validate(folder.Write("summary.json", JsonOf(data)));
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
  }
  ChildResult const refused = Validate(folder.Write("summary.json", "{\"format\": \"brivet-summary\"}"));
  EXPECT_NE(refused.exitStatus, 0);
}

// Indentation of each of 20,000 levels would take gigabytes.
TEST(JsonSummaryTest, WritesDeepStructureInLinearSpace) {
  constexpr int kDepth = 20000;
  std::string data = "#20=PRODUCT('p','p','',());\n#21=PRODUCT_DEFINITION_FORMATION('','',#20);\n";
  for (int i = 0; i <= kDepth; ++i) data += "#" + std::to_string(1000 + i) + "=PRODUCT_DEFINITION('','',#21,$);\n";
  for (int i = 0; i < kDepth; ++i) {
    data += "#" + std::to_string(500000 + i) + "=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#" + std::to_string(1000 + i) +
            ",#" + std::to_string(1001 + i) + ",$);\n";
  }
  EXPECT_LT(JsonOf(data).size(), 20000000U);
}

TEST(JsonSummaryTest, ReportsChangedFile) {
  ReadDocument document(ChangeableText());
  CutChangeableText(document);
  Progress progress;
  BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
  TextOf([&request](VRELOutputStream* target) {
    CheckedOutputStream stream(target);
    EXPECT_EQ(WriteJsonSummary(request, stream), VREL_E_INVALID_FILE);
  });
  EXPECT_EQ(document->GetModelResult(), VREL_E_INVALID_FILE);
}

TEST(JsonSummaryTest, WritesKindsOfAnnotations) {
  std::string const json = JsonOf(
      "#1=DIMENSIONAL_SIZE($,'d');\n#2=FLATNESS_TOLERANCE('','',$,$);\n#3=DATUM('','',$,.F.,'A');\n"
      "#4=ANNOTATION_TEXT_OCCURRENCE('n',(),$);\n#5=ANNOTATION_PLACEHOLDER_OCCURRENCE('p',(),$,.GPS_DATA.,0.);\n"
      "#6=TESSELLATED_ANNOTATION_OCCURRENCE('t',(),$);\n#7=CAMERA_MODEL_D3('c',$,$);\n"
      "#8=CAMERA_MODEL_D3('s',$,$);\n#9=DRAUGHTING_MODEL('',(#8,#6),$);\n");
  auto const row = [](char const* id, char const* name, char const* kind, char const* form, char const* view) {
    return std::string("      \"instance\": \"") + id + "\",\n      \"name\": \"" + name + "\",\n      \"kind\": \"" +
           kind + "\",\n      \"form\": \"" + form + "\",\n      \"value\": null,\n      \"view\": " + view + "\n";
  };
  EXPECT_TRUE(Contains(json, row("#4", "n", "note", "polyline", "null"))) << json;
  EXPECT_TRUE(Contains(json, row("#5", "p", "placeholder", "polyline", "null")));
  EXPECT_TRUE(Contains(json, row("#6", "t", "other", "tessellated", "\"s\"")));
  EXPECT_TRUE(Contains(json, row("#1", "d", "dimension", "semantic", "null")));
  EXPECT_TRUE(Contains(json, row("#2", "", "tolerance", "semantic", "null")));
  EXPECT_TRUE(Contains(json, row("#3", "A", "datum", "semantic", "null")));
  EXPECT_TRUE(Contains(json, "\"instance\": \"#7\",\n      \"name\": \"c\",\n      \"kind\": \"camera\"\n"));
  EXPECT_TRUE(Contains(json, "\"instance\": \"#8\",\n      \"name\": \"s\",\n      \"kind\": \"saved\"\n"));
}

TEST(JsonSummaryTest, WritesKindsOfProperties) {
  std::string const json = JsonOf(
      "#1=PROPERTY_DEFINITION('geometric validation property',$,$);\n#2=PROPERTY_DEFINITION('density','',$);\n"
      "#3=PROPERTY_DEFINITION('user defined attribute','',$);\n#4=PROPERTY_DEFINITION($,'',$);\n"
      "#5=PROPERTY_DEFINITION_REPRESENTATION(#4,#6);\n#6=REPRESENTATION('',(#7,#8,#9),$);\n"
      "#7=DESCRIPTIVE_REPRESENTATION_ITEM('a','b');\n#8=VALUE_REPRESENTATION_ITEM('c',COUNT_MEASURE(0.1));\n"
      "#9=CARTESIAN_POINT('d',(1.,2.5,-3.));\n");
  for (char const* kind : {"validation", "material", "attribute", "other"}) {
    EXPECT_TRUE(Contains(json, std::string("\"kind\": \"") + kind + "\",\n      \"values\": ")) << kind;
  }
  EXPECT_TRUE(Contains(json, "\"name\": \"a\",\n          \"value\": \"b\",\n          \"unit\": null\n")) << json;
  EXPECT_TRUE(Contains(json, "\"name\": \"c\",\n          \"value\": 0.1,\n          \"unit\": null\n"));
  EXPECT_TRUE(Contains(json, "\"name\": \"d\",\n          \"value\": [1, 2.5, -3],\n          \"unit\": null\n"));
  EXPECT_TRUE(Contains(json, "\"instance\": \"#4\",\n      \"product\": null,\n      \"name\": null,\n"));
}

TEST(JsonSummaryTest, ComputedWarnsOfMissingModule) {
  std::vector<int> faces;
  int solid = 0;
  std::string const box = BoxText(1000, 2, 3, 4, faces, solid);
  std::string const exact = kContexts + box + ProductText(100, "box", "#" + std::to_string(solid));
  VRELOptions options;
  options.AddOption(L"Json.*.Writer.Computed", true);
  auto const warnings = [](std::string const& data, VRELOptions* given) {
    ReadDocument document(DocumentText(data));
    Progress progress;
    BrivetWriteRequest request = PageRequest(document, progress, "part.stp");
    request.options = given;
    RecordingListener listener;
    TextOf([&request](VRELOutputStream* target) {
      CheckedOutputStream stream(target);
      EXPECT_EQ(WriteJsonSummary(request, stream), VREL_S_OK);
    });
    return listener.Texts();
  };
  EXPECT_EQ(
      warnings(exact, &options),
      std::vector<std::string>{"folder/part.stp: volumes, areas and centroids are not computed: install the package "
                               "brivet-shape, which evaluates exact shapes"});
  EXPECT_EQ(warnings(exact, nullptr), std::vector<std::string>());
  EXPECT_EQ(warnings(AssemblyText(), &options), std::vector<std::string>());
}
