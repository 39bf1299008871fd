// Entry points of libBrivetMesh.so, which writes meshes.
#include "BinaryStlWriter.h"
#include "BrivetModule.h"
#include "GlbWriter.h"
#include "ModuleDescription.h"
#include "ObjWriter.h"

BRIVET_MODULE_ENTRY BrivetInitialize() {}
BRIVET_MODULE_ENTRY BrivetFinalize() {}

BRIVET_MODULE_ENTRY BrivetWriteDocument(BrivetWriteRequest& request) {
  if (request.format == "glb") {
    request.result = GlbWriter().Write(request);
  } else if (request.format == "stl") {
    request.result = BinaryStlWriter().Write(request);
  } else if (request.format == "obj") {
    request.result = ObjWriter().Write(request);
  }
}

BRIVET_DESCRIBE_MODULE(module) {
  module.name = "BrivetMesh";
  module.title = "meshes for viewers and printers";
  module.version = BRIVET_VERSION;
  FormatDescription glb;
  glb.name = "glb";
  glb.title = "glTF";
  glb.component = "Gltf";
  glb.extensions = {".glb"};
  glb.mediaType = "model/gltf-binary";
  glb.writes = true;
  glb.usesShapes = true;
  FormatDescription obj;
  obj.name = "obj";
  obj.title = "OBJ";
  obj.component = "Obj";
  obj.extensions = {".obj"};
  obj.mediaType = "model/obj";
  obj.writes = true;
  obj.usesShapes = true;
  FormatDescription stl;
  stl.name = "stl";
  stl.title = "STL";
  stl.component = "Stl";
  stl.extensions = {".stl"};
  stl.mediaType = "model/stl";
  stl.writes = true;
  stl.usesShapes = true;
  module.formats = {glb, obj, stl};
}
