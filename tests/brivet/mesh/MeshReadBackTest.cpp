// Reads what is written back by another library.
#ifdef BRIVET_HAS_ASSIMP

#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <assimp/Importer.hpp>
#include <functional>
#include <string>
#include <vector>

#include "BinaryStlWriter.h"
#include "GlbWriter.h"
#include "MeshFixture.h"
#include "ObjWriter.h"
#include "ScratchDirectory.h"

namespace {

struct Contents {
  int nodes = 0;
  unsigned triangles = 0;
  std::vector<float> low{1e30F, 1e30F, 1e30F};
  std::vector<float> high{-1e30F, -1e30F, -1e30F};
};

void Count(aiScene const& scene, aiNode const& node, aiMatrix4x4 const& parent, Contents& contents) {
  ++contents.nodes;
  aiMatrix4x4 const global = parent * node.mTransformation;
  for (unsigned i = 0; i < node.mNumMeshes; ++i) {
    aiMesh const& mesh = *scene.mMeshes[node.mMeshes[i]];
    contents.triangles += mesh.mNumFaces;
    for (unsigned k = 0; k < mesh.mNumVertices; ++k) {
      aiVector3D const point = global * mesh.mVertices[k];
      for (unsigned axis = 0; axis < 3; ++axis) {
        contents.low[axis] = std::min(contents.low[axis], point[axis]);
        contents.high[axis] = std::max(contents.high[axis], point[axis]);
      }
    }
  }
  for (unsigned i = 0; i < node.mNumChildren; ++i) Count(scene, *node.mChildren[i], global, contents);
}

Contents Read(std::string const& name, std::string const& bytes) {
  ScratchDirectory folder;
  Assimp::Importer importer;
  aiScene const* const scene = importer.ReadFile(folder.Write(name, bytes), aiProcess_ValidateDataStructure);
  EXPECT_NE(scene, nullptr) << importer.GetErrorString();
  Contents contents;
  if (scene != nullptr) Count(*scene, *scene->mRootNode, aiMatrix4x4(), contents);
  return contents;
}

}  // namespace

// In metres with y up: x, z and -y of the model. The nodes are the title, the root and two occurrences.
TEST(MeshReadBackTest, ReadsGlb) {
  Contents const contents = Read("assembly.glb", Written<GlbWriter>(AssemblyModel()));
  EXPECT_EQ(contents.nodes, 4);
  EXPECT_EQ(contents.triangles, 2U);
  std::vector<float> const low{-1, 0, -0.5F};
  std::vector<float> const high{4, 0, 0};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(contents.low[i], low[i], 1e-6F) << i;
    EXPECT_NEAR(contents.high[i], high[i], 1e-6F) << i;
  }
}

TEST(MeshReadBackTest, ReadsStl) {
  Contents const contents = Read("assembly.stl", Written<BinaryStlWriter>(AssemblyModel()));
  EXPECT_EQ(contents.triangles, 2U);
  EXPECT_EQ(contents.low, (std::vector<float>{-1, 0, 0}));
  EXPECT_EQ(contents.high, (std::vector<float>{4, 0.5F, 0}));
}

TEST(MeshReadBackTest, ReadsObj) {
  Contents const contents = Read("assembly.obj", Written<ObjWriter>(AssemblyModel()));
  EXPECT_EQ(contents.nodes, 3);
  EXPECT_EQ(contents.triangles, 2U);
  EXPECT_EQ(contents.low, (std::vector<float>{-1, 0, 0}));
  EXPECT_EQ(contents.high, (std::vector<float>{4, 0.5F, 0}));
}

#endif
