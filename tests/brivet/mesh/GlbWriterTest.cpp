#include "GlbWriter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "ChildProcess.h"
#include "MeshFixture.h"
#include "RecordingListener.h"
#include "ScratchDirectory.h"

namespace {

std::uint32_t Word(std::string const& bytes, std::size_t at) {
  std::uint32_t word = 0;
  for (std::size_t i = 4; i > 0; --i) word = word << 8U | static_cast<unsigned char>(bytes.at(at + i - 1));
  return word;
}

std::string JsonOf(std::string const& glb) {
  return glb.substr(20, Word(glb, 12));
}

bool Contains(std::string const& text, std::string const& part) {
  return text.find(part) != text.npos;
}

// Returns a shape with the faces of a cube, a sloping normal at each corner.
ProductModel CubeModel() {
  ProductModel model = AssemblyModel();
  ModelMesh cube = Mesh(
      {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 1, 1, 0, 1, 1, 1, 1, 0, 1, 1},
      {0, 2, 1, 0, 3, 2, 4, 5, 6, 4, 6, 7, 0, 1, 5, 0, 5, 4, 1, 2, 6, 1, 6, 5, 2, 3, 7, 2, 7, 6, 3, 0, 4, 3, 4, 7});
  for (double const each : cube.points) cube.normals.push_back(each - 0.5);
  model.products[0].meshes.push_back(cube);
  model.colours.push_back({{0.0, 0.5, 1.0, 0.25}, 1});
  model.products[0].meshes.push_back(Mesh({0, 0, 2, 1, 0, 2, 0, 1, 2}, {0, 1, 2}, 1));
  return model;
}

}  // namespace

TEST(GlbWriterTest, WritesTriangle) {
  std::string json =
      "{\"asset\":{\"version\":\"2.0\",\"generator\":\"brivet\"},\"scene\":0,\"scenes\":[{\"nodes\":[0]}],\"nodes\":["
      "{\"name\":\"part.stp\",\"rotation\":[-0.7071067811865476,0.0,0.0,0.7071067811865476],\"children\":[1]},"
      "{\"name\":\"plate\",\"mesh\":0,\"extras\":{\"instance\":\"#3\"}}],"
      "\"meshes\":[{\"name\":\"plate\",\"primitives\":[{\"attributes\":{\"POSITION\":0},\"indices\":1,\"material\":0}],"
      "\"extras\":{\"instance\":\"#3\"}}],"
      "\"materials\":[{\"name\":\"#ff0000\",\"pbrMetallicRoughness\":{\"baseColorFactor\":[1.0,0.0,0.0,1.0],"
      "\"metallicFactor\":0,\"roughnessFactor\":0.6},\"doubleSided\":true}],"
      "\"accessors\":[{\"bufferView\":0,\"componentType\":5126,\"count\":3,\"type\":\"VEC3\",\"min\":[0.0,0.0,0.0],"
      "\"max\":[1.0,0.5,0.0]},{\"bufferView\":1,\"componentType\":5125,\"count\":3,\"type\":\"SCALAR\"}],"
      "\"bufferViews\":[{\"buffer\":0,\"byteLength\":36,\"byteStride\":12,\"target\":34962},"
      "{\"buffer\":0,\"byteOffset\":36,\"byteLength\":12,\"target\":34963}],\"buffers\":[{\"byteLength\":48}]}";
  json.resize((json.size() + 3) / 4 * 4, ' ');
  auto const size = static_cast<std::uint32_t>(json.size());
  std::string const data = Words({0, 0, 0, 0x3F800000, 0, 0, 0, 0x3F000000, 0, 0, 1, 2});
  std::string const glb = Written<GlbWriter>(PlateModel());
  EXPECT_EQ(JsonOf(glb), json);
  EXPECT_EQ(glb, "glTF" + Words({2, 12 + 8 + size + 8 + 48, size}) + "JSON" + json + Words({48}) +
                     std::string("BIN\0", 4) + data);
}

// Both nodes share the mesh. The placement in metres has no scale: the unit of the plate is in its coordinates.
TEST(GlbWriterTest, SharesMeshOfOccurrences) {
  std::string const json = JsonOf(Written<GlbWriter>(AssemblyModel()));
  EXPECT_TRUE(Contains(json,
                       "{\"name\":\"top\",\"children\":[2,3],\"extras\":{\"instance\":\"#1\"}},"
                       "{\"name\":\"moved\",\"matrix\":[1.0,0.0,0.0,0.0,0.0,1.0,0.0,0.0,0.0,0.0,1.0,0.0,3.0,0.0,"
                       "0.0,1.0],\"mesh\":0,\"extras\":{\"instance\":\"#11\"}},"
                       "{\"name\":\"mirrored\",\"matrix\":[-1.0,0.0,0.0,0.0,0.0,1.0,0.0,0.0,0.0,0.0,1.0,0.0,0.0,"
                       "0.0,0.0,1.0],\"mesh\":0,\"extras\":{\"instance\":\"#12\"}}],\"meshes\":[{"))
      << json;
}

TEST(GlbWriterTest, WritesPrimitiveForEachColour) {
  std::string const json = JsonOf(Written<GlbWriter>(CubeModel()));
  EXPECT_TRUE(Contains(json,
                       "\"primitives\":[{\"attributes\":{\"POSITION\":0},\"indices\":1,\"material\":0},"
                       "{\"attributes\":{\"POSITION\":2,\"NORMAL\":3},\"indices\":4,\"material\":1},"
                       "{\"attributes\":{\"POSITION\":5},\"indices\":6,\"material\":2}]"))
      << json;
  // ((0.5 + 0.055) / 1.055) ^ 2.4 = 0.2140
  EXPECT_TRUE(Contains(json, "\"name\":\"#0080ff\",\"pbrMetallicRoughness\":{\"baseColorFactor\":[0.0,0.2140"));
  EXPECT_TRUE(Contains(json, ",1.0,0.75],\"metallicFactor\":0,\"roughnessFactor\":0.6},\"alphaMode\":\"BLEND\""));
  EXPECT_TRUE(Contains(json, "\"name\":\"default\",\"pbrMetallicRoughness\":{\"baseColorFactor\":[0.3185"));
}

// A sharing of coordinates among meshes of one colour shifts the indices of the second one.
TEST(GlbWriterTest, MergesMeshesOfColour) {
  ProductModel model = PlateModel();
  model.products[0].meshes.push_back(model.products[0].meshes[0]);
  std::string const glb = Written<GlbWriter>(model);
  EXPECT_EQ(glb.substr(glb.size() - 24), Words({0, 1, 2, 3, 4, 5}));
}

TEST(GlbWriterTest, WritesShearAsRotation) {
  RecordingListener listener;
  ProductModel model = AssemblyModel();
  model.occurrences[0].placement = Placement({0.5, 0.25, 0, 3, 0, 0.5, 0, 0, 0, 0, 0.5, 0});
  model.occurrences[1].placement = Placement({0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0});
  std::string const json = JsonOf(Written<GlbWriter>(model));
  EXPECT_TRUE(Contains(json, "{\"name\":\"moved\",\"matrix\":[1.0,0.0,0.0,0.0,0.0,1.0,0.0,0.0,")) << json;
  EXPECT_TRUE(Contains(json, "{\"name\":\"mirrored\",\"matrix\":[1.0,0.0,0.0,0.0,0.0,1.0,0.0,0.0,")) << json;
  ASSERT_EQ(listener.Texts().size(), 2U);
  EXPECT_EQ(listener.Texts()[0], "folder/part.stp: #11: glTF has no shear; the placement is written without it");
}

TEST(GlbWriterTest, WritesInvalidUtf8AsReplacement) {
  ProductModel model = PlateModel();
  model.products[0].name = "a\xFF\"\n";
  EXPECT_TRUE(Contains(JsonOf(Written<GlbWriter>(model)), "{\"name\":\"a\xEF\xBF\xBD\\\"\\n\",\"mesh\""));
}

TEST(GlbWriterTest, PassesKhronosValidator) {
  ProgramOptions options;
  options.environment = {
      "NODE_PATH=" + std::string(std::getenv("NODE_PATH") != nullptr ? std::getenv("NODE_PATH") : "") +
      ":/usr/local/lib/node_modules:/usr/lib/node_modules"};
  if (RunProgram({"node", "-e", "require('gltf-validator')"}, options).exitStatus != 0) {
    GTEST_SKIP() << "gltf-validator is missing: npm install -g gltf-validator";
  }
  ScratchDirectory folder;
  for (ProductModel const& model : {PlateModel(), AssemblyModel(), CubeModel()}) {
    ChildResult const result =
        RunProgram({"node", "-e",
                    "const fs = require('fs'), v = require('gltf-validator');\n"
                    "v.validateBytes(new Uint8Array(fs.readFileSync(process.argv[1]))).then(r => {\n"
                    "  console.log(JSON.stringify(r.issues.messages));\n"
                    "  process.exit(r.issues.numErrors + r.issues.numWarnings > 0 ? 1 : 0); });\n",
                    folder.Write("model.glb", Written<GlbWriter>(model))},
                   options);
    EXPECT_EQ(result.exitStatus, 0) << result.output << result.errors;
  }
}
