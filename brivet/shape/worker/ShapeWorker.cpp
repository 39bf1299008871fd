// brivet-shape-worker FILE: evaluates the exact shapes of a STEP file with Open CASCADE.
//
// libBrivetShape.so runs it, with limits of memory and time, since the engine can crash or loop on damaged geometry.
// The request is on standard input, the answer on standard output; ShapeProtocol.h describes both. Messages of the
// engine are discarded.
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <BRepAdaptor_Surface.hxx>
#include <BRepBndLib.hxx>
#include <BRepGProp.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <GProp_GProps.hxx>
#include <IFSelect_WorkLibrary.hxx>
#include <Interface_Check.hxx>
#include <Interface_EntityIterator.hxx>
#include <Interface_Graph.hxx>
#include <Interface_InterfaceModel.hxx>
#include <Interface_Protocol.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Poly_Triangulation.hxx>
#include <STEPControl_Reader.hxx>
#include <Standard_Failure.hxx>
#include <Standard_OutOfMemory.hxx>
#include <StepData_StepModel.hxx>
#include <StepGeom_Axis1Placement.hxx>
#include <StepGeom_Axis2Placement3d.hxx>
#include <StepGeom_CartesianPoint.hxx>
#include <StepGeom_Circle.hxx>
#include <StepGeom_ConicalSurface.hxx>
#include <StepGeom_CylindricalSurface.hxx>
#include <StepGeom_Direction.hxx>
#include <StepGeom_Ellipse.hxx>
#include <StepGeom_Line.hxx>
#include <StepGeom_SphericalSurface.hxx>
#include <StepGeom_ToroidalSurface.hxx>
#include <StepGeom_Vector.hxx>
#include <StepRepr_MappedItem.hxx>
#include <StepRepr_Representation.hxx>
#include <StepRepr_RepresentationItem.hxx>
#include <StepRepr_RepresentationMap.hxx>
#include <StepShape_ConnectedFaceSet.hxx>
#include <StepShape_Edge.hxx>
#include <StepShape_EdgeLoop.hxx>
#include <StepShape_Face.hxx>
#include <StepShape_HArray1OfFace.hxx>
#include <StepShape_HArray1OfOrientedEdge.hxx>
#include <StepShape_OrientedEdge.hxx>
#include <StepShape_VertexPoint.hxx>
#include <TColStd_HArray1OfReal.hxx>
#include <TopExp_Explorer.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Face.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iostream>
#include <new>
#include <sstream>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "ShapeProtocol.h"

namespace {

constexpr int kMeshes = 1;  // ShapeEvaluator::Parts
constexpr int kProperties = 2;
constexpr double kSmallestDeflection = 1e-6;  // in millimetres
constexpr double kIntegrationError = 1e-6;    // relative, of each face
constexpr double kLargestLength = 1e15;       // as kLargestCoordinate
constexpr int kNewTransfer = 4;               // XSControl_WorkSession::InitTransferReader
constexpr int kArenaLimit = 4;                // address space of each thread's heap counts as memory

// Thrown if the other process reads no more.
struct BrokenPipe {};

class Answer {
 public:
  explicit Answer(int descriptor) : stream(fdopen(descriptor, "w")) { Put(kShapeHeader.data(), kShapeHeader.size()); }

  void Begin(ShapeRecord kind, std::size_t size) {
    Put32(static_cast<std::uint32_t>(kind));
    Put32(static_cast<std::uint32_t>(size));
    ++records;
  }
  void Put32(std::uint32_t number) { Put(&number, sizeof number); }
  void Put(void const* bytes, std::size_t size) {
    if (stream == nullptr || (size > 0 && std::fwrite(bytes, 1, size, stream) != size)) throw BrokenPipe();
  }
  template <class Number>
  void PutAll(std::vector<Number> const& numbers) {
    Put(numbers.data(), numbers.size() * sizeof(Number));
  }
  void PutProblem(std::uint32_t instance, std::string const& text) {
    std::string const shortened = text.substr(0, kProblemSize);
    Begin(ShapeRecord::Problem, 4 + shortened.size());
    Put32(instance);
    Put(shortened.data(), shortened.size());
  }
  void PutDone(std::size_t product) {
    Begin(ShapeRecord::Done, 4);
    Put32(static_cast<std::uint32_t>(product));
    Flush();
  }
  void PutEnd() {
    std::uint32_t const count = records;
    Begin(ShapeRecord::End, 4);
    Put32(count);
    Flush();
  }

 private:
  void Flush() {
    if (std::fflush(stream) != 0) throw BrokenPipe();
  }

  std::FILE* stream;
  std::uint32_t records = 0;
};

struct Product {
  bool isMeshed = false;
  std::vector<std::uint32_t> representations;
};

struct Request {
  int parts = 0;
  double share = 0.0;
  double angle = 0.0;
  std::vector<Product> products;
};

Request ReadRequest() {
  Request request;
  std::string line;
  if (std::getline(std::cin, line)) std::istringstream(line) >> request.parts >> request.share >> request.angle;
  while (std::getline(std::cin, line)) {
    std::istringstream words(line);
    Product product;
    words >> product.isMeshed;
    for (std::uint32_t id = 0; words >> id;) product.representations.push_back(id);
    request.products.push_back(product);
  }
  return request;
}

// Item of a product, and its shape.
struct Item {
  std::uint32_t instance;
  TopoDS_Shape shape;
};

class Evaluation {
 public:
  Evaluation(Request const& shapeRequest, Answer& shapeAnswer) : request(shapeRequest), answer(shapeAnswer) {}

  bool Read(char const* path) {
    if (!ReadModel(path)) return false;
    for (int i = 1; i <= model->NbEntities(); ++i) {
      int const ident = model->IdentLabel(model->Value(i));
      if (ident > 0) entities.emplace(static_cast<std::uint32_t>(ident), model->Value(i));
    }
    Transfer([this] { RemoveDamagedFaces(); });
    Transfer([this] { reader.TransferRoots(); });
    for (std::size_t i = 0; i < request.products.size(); ++i) {
      for (std::uint32_t const each : request.products[i].representations) owners.emplace(each, i);
    }
    return true;
  }

  void EvaluateAll() {
    MapFaces();
    for (std::size_t i = 0; i < request.products.size(); ++i) {
      try {
        Evaluate(i);
      } catch (Standard_OutOfMemory const&) {
        throw std::bad_alloc();
      } catch (Standard_Failure const& failure) {
        answer.PutProblem(FirstRepresentation(i), TextOf(failure));
      }
    }
  }

 private:
  static std::string TextOf(Standard_Failure const& failure) {
    char const* const text = failure.GetMessageString();
    return std::string("the engine fails: ") + failure.DynamicType()->Name() +
           (text != nullptr && *text != '\0' ? std::string(": ") + text : std::string());
  }

  // A failure of the engine leaves what it has transferred before.
  template <class Call>
  void Transfer(Call const& call) {
    try {
      call();
    } catch (Standard_OutOfMemory const&) {
      throw std::bad_alloc();
    } catch (Standard_Failure const& failure) {
      answer.PutProblem(0, TextOf(failure));
    }
  }

  static int CountOf(Handle(StepGeom_Direction) const& direction) {
    return direction.IsNull() || direction->DirectionRatios().IsNull() ? 0 : direction->NbDirectionRatios();
  }
  static int CountOf(Handle(StepGeom_CartesianPoint) const& point) {
    return point.IsNull() ? 0 : point->NbCoordinates();
  }

  // Reads as STEPControl_Reader::ReadFile does, but repairs the entities before they are checked.
  bool ReadModel(char const* path) {
    try {
      Handle(XSControl_WorkSession) const session = reader.WS();
      Handle(Interface_InterfaceModel) read;
      if (session->WorkLibrary()->ReadFile(path, read, session->Protocol()) != 0 || read.IsNull()) return false;
      RepairLists(*read);
      session->SetModel(read);
      session->InitTransferReader(kNewTransfer);
    } catch (Standard_OutOfMemory const&) {
      throw std::bad_alloc();
    } catch (Standard_Failure const&) {
      return false;
    }
    model = reader.StepModel();
    return !model.IsNull();
  }

  // Fills lists that the file leaves empty, since the engine uses them when it checks the entities, and crashes. The
  // faces that depend on them are removed later.
  void RepairLists(Interface_InterfaceModel const& read) {
    for (int i = 1; i <= read.NbEntities(); ++i) {
      Handle(Standard_Transient) const& entity = read.Value(i);
      if (auto const direction = Handle(StepGeom_Direction)::DownCast(entity);
          !direction.IsNull() && direction->DirectionRatios().IsNull()) {
        direction->SetDirectionRatios(new TColStd_HArray1OfReal(1, 3, 0.0));
        repaired.insert(entity.get());
      } else if (auto const loop = Handle(StepShape_EdgeLoop)::DownCast(entity);
                 !loop.IsNull() && loop->EdgeList().IsNull()) {
        Handle(StepShape_OrientedEdge) const edge = new StepShape_OrientedEdge;
        edge->SetEdgeElement(new StepShape_Edge);
        loop->SetEdgeList(new StepShape_HArray1OfOrientedEdge(1, 1, edge));
        repaired.insert(entity.get());
      }
    }
  }

  // Lengths beyond this are damaged numbers, with which the engine crashes or loops.
  static bool IsLength(double length) { return std::abs(length) <= kLargestLength; }

  // Returns whether an entity has fewer coordinates than its use requires, an impossible length, or no edges: the
  // engine transfers such an entity to nothing, and then uses it. Points and directions of parametric curves have two
  // coordinates.
  static bool IsDamaged(Handle(Standard_Transient) const& entity) {
    if (auto const direction = Handle(StepGeom_Direction)::DownCast(entity); !direction.IsNull()) {
      return CountOf(direction) < 2;
    }
    if (auto const point = Handle(StepGeom_CartesianPoint)::DownCast(entity); !point.IsNull()) {
      int const count = CountOf(point);
      for (int i = 1; i <= count; ++i) {
        if (!IsLength(point->CoordinatesValue(i))) return true;
      }
      return count < 2;
    }
    if (auto const vertex = Handle(StepShape_VertexPoint)::DownCast(entity); !vertex.IsNull()) {
      auto const point = Handle(StepGeom_CartesianPoint)::DownCast(vertex->VertexGeometry());
      return !point.IsNull() && CountOf(point) < 3;
    }
    if (auto const place = Handle(StepGeom_Axis2Placement3d)::DownCast(entity); !place.IsNull()) {
      return CountOf(place->Location()) < 3 || (place->HasAxis() && CountOf(place->Axis()) < 3) ||
             (place->HasRefDirection() && CountOf(place->RefDirection()) < 3);
    }
    if (auto const axis = Handle(StepGeom_Axis1Placement)::DownCast(entity); !axis.IsNull()) {
      return CountOf(axis->Location()) < 3 || (axis->HasAxis() && CountOf(axis->Axis()) < 3);
    }
    if (auto const line = Handle(StepGeom_Line)::DownCast(entity); !line.IsNull() && !line->Dir().IsNull()) {
      return CountOf(line->Dir()->Orientation()) < CountOf(line->Pnt());
    }
    if (auto const circle = Handle(StepGeom_Circle)::DownCast(entity); !circle.IsNull()) {
      return !IsLength(circle->Radius());
    }
    if (auto const ellipse = Handle(StepGeom_Ellipse)::DownCast(entity); !ellipse.IsNull()) {
      return !IsLength(ellipse->SemiAxis1()) || !IsLength(ellipse->SemiAxis2());
    }
    if (auto const cylinder = Handle(StepGeom_CylindricalSurface)::DownCast(entity); !cylinder.IsNull()) {
      return !IsLength(cylinder->Radius());
    }
    if (auto const cone = Handle(StepGeom_ConicalSurface)::DownCast(entity); !cone.IsNull()) {
      return !IsLength(cone->Radius());
    }
    if (auto const sphere = Handle(StepGeom_SphericalSurface)::DownCast(entity); !sphere.IsNull()) {
      return !IsLength(sphere->Radius());
    }
    if (auto const torus = Handle(StepGeom_ToroidalSurface)::DownCast(entity); !torus.IsNull()) {
      return !IsLength(torus->MajorRadius()) || !IsLength(torus->MinorRadius());
    }
    return false;
  }

  // Removes the faces that depend on an instance that the engine could not read from their shells, since the engine
  // does not check for missing references when it transfers them, and crashes.
  void RemoveDamagedFaces() {
    std::vector<Handle(Standard_Transient)> pending;
    std::unordered_set<Standard_Transient const*> reached;
    std::unordered_set<Standard_Transient const*> damaged;
    auto const reach = [&](Handle(Standard_Transient) const& entity) {
      if (!reached.insert(entity.get()).second) return;
      if (entity->IsKind(STANDARD_TYPE(StepShape_Face))) {
        damaged.insert(entity.get());
        answer.PutProblem(InstanceOf(entity), "the face depends on a damaged or missing instance");
        damagedFaces.insert(InstanceOf(entity));
      } else {
        pending.push_back(entity);
      }
    };
    for (int i = 1; i <= model->NbEntities(); ++i) {
      Handle(Interface_Check) const check = model->Check(i, Standard_False);
      bool const hasFailed = model->IsErrorEntity(i) || (!check.IsNull() && check->HasFailed());
      Handle(Standard_Transient) const& entity = model->Value(i);
      if (hasFailed || repaired.count(entity.get()) != 0 || IsDamaged(entity)) reach(entity);
    }
    if (reached.empty()) return;
    Interface_Graph const& graph = reader.WS()->Graph();
    while (!pending.empty()) {
      Handle(Standard_Transient) const entity = pending.back();
      pending.pop_back();
      for (Interface_EntityIterator each = graph.Sharings(entity); each.More(); each.Next()) reach(each.Value());
    }
    for (auto const& each : entities) {
      Handle(StepShape_ConnectedFaceSet) const shell = Handle(StepShape_ConnectedFaceSet)::DownCast(each.second);
      if (!shell.IsNull()) RemoveFaces(*shell, damaged);
    }
  }

  static void RemoveFaces(StepShape_ConnectedFaceSet& shell,
                          std::unordered_set<Standard_Transient const*> const& damaged) {
    Handle(StepShape_HArray1OfFace) const all = shell.CfsFaces();
    if (all.IsNull()) return;
    std::vector<Handle(StepShape_Face)> kept;
    for (int i = all->Lower(); i <= all->Upper(); ++i) {
      Handle(StepShape_Face) const& face = all->Value(i);
      if (!face.IsNull() && damaged.count(face.get()) == 0) kept.push_back(face);
    }
    if (static_cast<int>(kept.size()) == all->Length()) return;
    // An array has at least one face. The engine skips one without a surface.
    if (kept.empty()) kept.push_back(new StepShape_Face);
    Handle(StepShape_HArray1OfFace) const rest = new StepShape_HArray1OfFace(1, static_cast<int>(kept.size()));
    for (std::size_t i = 0; i < kept.size(); ++i) rest->SetValue(static_cast<int>(i) + 1, kept[i]);
    shell.SetCfsFaces(rest);
  }

  std::uint32_t FirstRepresentation(std::size_t product) const {
    auto const& all = request.products[product].representations;
    return all.empty() ? 0 : all[0];
  }

  std::uint32_t InstanceOf(Handle(Standard_Transient) const& entity) const {
    return static_cast<std::uint32_t>(std::max(0, model->IdentLabel(entity)));
  }

  TopoDS_Shape ShapeOf(Handle(Standard_Transient) const& entity) const {
    return TransferBRep::ShapeResult(reader.WS()->TransferReader()->TransientProcess(), entity);
  }

  // Finds the instance of each face by its geometry, which all placements of a face share. Healing can split a face.
  void MapFaces() {
    for (auto const& [instance, entity] : entities) {
      if (!entity->IsKind(STANDARD_TYPE(StepShape_Face))) continue;
      TopoDS_Shape const shape = ShapeOf(entity);
      if (shape.IsNull()) {
        if (damagedFaces.count(instance) == 0) missingFaces.push_back(instance);
        continue;
      }
      for (TopExp_Explorer each(shape, TopAbs_FACE); each.More(); each.Next()) {
        faces.emplace(each.Current().TShape().get(), instance);
      }
    }
    std::sort(missingFaces.begin(), missingFaces.end());
    for (std::uint32_t const instance : missingFaces)
      answer.PutProblem(instance, "the engine does not transfer the face");
  }

  bool IsChild(Handle(StepRepr_RepresentationItem) const& item, std::size_t product) const {
    Handle(StepRepr_MappedItem) const mapped = Handle(StepRepr_MappedItem)::DownCast(item);
    if (mapped.IsNull() || mapped->MappingSource().IsNull()) return false;
    auto const owner = owners.find(InstanceOf(mapped->MappingSource()->MappedRepresentation()));
    return owner != owners.end() && owner->second != product;
  }

  static bool HasFaces(TopoDS_Shape const& shape) { return TopExp_Explorer(shape, TopAbs_FACE).More(); }

  // Items that can have faces: other items have no shape, and are not missed.
  static bool IsSolidOrSurface(Handle(StepRepr_RepresentationItem) const& item) {
    static constexpr char const* kTypes[] = {"StepShape_SolidModel", "StepShape_ShellBasedSurfaceModel",
                                             "StepShape_FaceBasedSurfaceModel", "StepShape_GeometricSet",
                                             "StepRepr_MappedItem"};
    return std::any_of(std::begin(kTypes), std::end(kTypes), [&item](char const* type) { return item->IsKind(type); });
  }

  std::vector<Item> ItemsOf(std::size_t product) {
    std::vector<Item> items;
    for (std::uint32_t const id : request.products[product].representations) {
      auto const found = entities.find(id);
      if (found == entities.end()) continue;
      Handle(StepRepr_Representation) const representation = Handle(StepRepr_Representation)::DownCast(found->second);
      if (representation.IsNull()) continue;
      for (int i = 1; i <= representation->NbItems(); ++i) {
        Handle(StepRepr_RepresentationItem) const item = representation->ItemsValue(i);
        if (item.IsNull() || !IsSolidOrSurface(item) || IsChild(item, product)) continue;
        TopoDS_Shape shape = ShapeOf(item);
        if (shape.IsNull()) {
          // Not part of a root.
          Transfer([this, &item] { reader.TransferEntity(item); });
          shape = ShapeOf(item);
        }
        if (shape.IsNull()) {
          answer.PutProblem(InstanceOf(item), "the engine does not transfer the item");
        } else if (HasFaces(shape)) {
          items.push_back({InstanceOf(item), shape});
        }
      }
    }
    return items;
  }

  void Evaluate(std::size_t product) {
    std::vector<Item> const items = ItemsOf(product);
    if (items.empty()) return;
    BRep_Builder builder;
    TopoDS_Compound whole;
    builder.MakeCompound(whole);
    for (Item const& item : items) builder.Add(whole, item.shape);
    if ((request.parts & kProperties) != 0) PutProperties(product, whole);
    if ((request.parts & kMeshes) != 0 && request.products[product].isMeshed) {
      Mesh(whole);
      for (Item const& item : items) {
        for (TopExp_Explorer each(item.shape, TopAbs_FACE); each.More(); each.Next()) {
          PutFace(product, item.instance, TopoDS::Face(each.Current()));
        }
      }
    }
    answer.PutDone(product);
  }

  void Mesh(TopoDS_Shape const& shape) const {
    Bnd_Box box;
    BRepBndLib::Add(shape, box, Standard_False);
    double diagonal = box.IsVoid() ? 0.0 : std::sqrt(box.SquareExtent());
    if (!std::isfinite(diagonal)) diagonal = 1.0;
    IMeshTools_Parameters parameters;
    parameters.Deflection = std::max(request.share * diagonal, kSmallestDeflection);
    parameters.Angle = request.angle;
    parameters.InParallel = Standard_True;
    BRepMesh_IncrementalMesh const mesh(shape, parameters);
  }

  void PutProperties(std::size_t product, TopoDS_Shape const& shape) {
    double numbers[kPropertyCount] = {};
    std::uint32_t flags = 0;
    GProp_GProps surface;
    GProp_GProps volume;
    // Without an error bound the engine integrates rational curves to 0.1 %.
    BRepGProp::SurfaceProperties(shape, surface, kIntegrationError);
    BRepGProp::VolumeProperties(shape, volume, kIntegrationError, Standard_True);
    if (surface.Mass() > 0.0) {
      flags |= kHasMass;
      numbers[0] = volume.Mass();
      numbers[1] = surface.Mass();
      gp_Pnt const center = volume.Mass() > 0.0 ? volume.CentreOfMass() : surface.CentreOfMass();
      for (int i = 0; i < 3; ++i) numbers[2 + i] = center.Coord(i + 1);
    }
    Bnd_Box box;
    BRepBndLib::AddOptimal(shape, box, Standard_False, Standard_False);
    if (!box.IsVoid() && !box.IsOpen()) {
      flags |= kHasBox;
      box.SetGap(0.0);
      box.Get(numbers[5], numbers[6], numbers[7], numbers[8], numbers[9], numbers[10]);
    }
    if (!std::all_of(std::begin(numbers), std::end(numbers), [](double each) { return std::isfinite(each); })) {
      answer.PutProblem(FirstRepresentation(product), "the engine computes no finite properties");
      return;
    }
    answer.Begin(ShapeRecord::Properties, 8 + sizeof numbers);
    answer.Put32(static_cast<std::uint32_t>(product));
    answer.Put32(flags);
    answer.Put(numbers, sizeof numbers);
  }

  void PutFace(std::size_t product, std::uint32_t item, TopoDS_Face const& face) {
    auto const found = faces.find(face.TShape().get());
    std::uint32_t const instance = found == faces.end() ? 0 : found->second;
    TopLoc_Location location;
    Handle(Poly_Triangulation) const mesh = BRep_Tool::Triangulation(face, location);
    if (mesh.IsNull() || mesh->NbTriangles() == 0) {
      answer.PutProblem(instance != 0 ? instance : item, "the engine does not mesh a face");
      return;
    }
    bool const isReversed = face.Orientation() == TopAbs_REVERSED;
    gp_Trsf const& placement = location.Transformation();
    bool const isMirrored = placement.VectorialPart().Determinant() < 0.0;
    auto const count = static_cast<std::size_t>(mesh->NbNodes());
    points.clear();
    for (int i = 1; i <= mesh->NbNodes(); ++i) {
      gp_Pnt const point = mesh->Node(i).Transformed(placement);
      points.insert(points.end(), {point.X(), point.Y(), point.Z()});
    }
    triangles.clear();
    for (int i = 1; i <= mesh->NbTriangles(); ++i) {
      int corners[3];
      mesh->Triangle(i).Get(corners[0], corners[1], corners[2]);
      if (isReversed != isMirrored) std::swap(corners[1], corners[2]);
      for (int const corner : corners) triangles.push_back(static_cast<std::uint32_t>(corner - 1));
    }
    MakeNormals(face, *mesh);
    std::size_t const size =
        kMeshHeaderSize + count * (kPointSize + kNormalSize) + triangles.size() * sizeof(std::uint32_t);
    if (size > 0x7FFFFFFFU) {
      answer.PutProblem(instance, "the mesh of the face is too large");
      return;
    }
    answer.Begin(ShapeRecord::Mesh, size);
    answer.Put32(static_cast<std::uint32_t>(product));
    answer.Put32(instance);
    answer.Put32(item);
    answer.Put32(static_cast<std::uint32_t>(count));
    answer.Put32(static_cast<std::uint32_t>(triangles.size() / 3));
    answer.PutAll(points);
    answer.PutAll(normals);
    answer.PutAll(triangles);
  }

  // The normals of the surface, on the outer side; where it has none, as at the apex of a cone, those of the triangles.
  void MakeNormals(TopoDS_Face const& face, Poly_Triangulation const& mesh) {
    std::size_t const count = points.size() / 3;
    std::vector<double> sums(points.size(), 0.0);
    for (std::size_t i = 0; i + 3 <= triangles.size(); i += 3) {
      double const* const a = &points[3 * std::size_t{triangles[i]}];
      gp_Vec const first(gp_Pnt(a[0], a[1], a[2]), PointAt(triangles[i + 1]));
      gp_Vec const second(gp_Pnt(a[0], a[1], a[2]), PointAt(triangles[i + 2]));
      gp_Vec const normal = first.Crossed(second);
      for (std::size_t k = i; k < i + 3; ++k) {
        for (int axis = 0; axis < 3; ++axis) {
          sums[3 * std::size_t{triangles[k]} + static_cast<std::size_t>(axis)] += normal.Coord(axis + 1);
        }
      }
    }
    BRepAdaptor_Surface const surface(face, Standard_False);
    normals.assign(points.size(), 0.0F);
    for (std::size_t i = 0; i < count; ++i) {
      gp_Vec const average(sums[3 * i], sums[3 * i + 1], sums[3 * i + 2]);
      gp_Vec normal = average;
      if (mesh.HasUVNodes()) {
        gp_Pnt2d const uv = mesh.UVNode(static_cast<int>(i) + 1);
        gp_Pnt point;
        gp_Vec u;
        gp_Vec v;
        surface.D1(uv.X(), uv.Y(), point, u, v);
        gp_Vec exact = u.Crossed(v);
        if (exact.Magnitude() > 1e-9 * u.Magnitude() * v.Magnitude() && exact.Magnitude() > 1e-20) {
          if (exact.Dot(average) < 0.0) exact.Reverse();
          normal = exact;
        }
      }
      double const length = normal.Magnitude();
      for (int axis = 0; axis < 3; ++axis) {
        double const component =
            length > 0.0 && std::isfinite(length) ? normal.Coord(axis + 1) / length : (axis == 2 ? 1.0 : 0.0);
        normals[3 * i + static_cast<std::size_t>(axis)] = static_cast<float>(component);
      }
    }
  }

  gp_Pnt PointAt(std::uint32_t index) const {
    double const* const point = &points[3 * std::size_t{index}];
    return gp_Pnt(point[0], point[1], point[2]);
  }

  Request const& request;
  Answer& answer;
  STEPControl_Reader reader;
  Handle(StepData_StepModel) model;
  std::unordered_map<std::uint32_t, Handle(Standard_Transient)> entities;
  std::unordered_map<std::uint32_t, std::size_t> owners;          // the product of each representation
  std::unordered_map<TopoDS_TShape const*, std::uint32_t> faces;  // the instance of each face
  std::unordered_set<Standard_Transient const*> repaired;
  std::unordered_set<std::uint32_t> damagedFaces;  // those that were reported
  std::vector<std::uint32_t> missingFaces;
  std::vector<double> points;
  std::vector<float> normals;
  std::vector<std::uint32_t> triangles;
};

// Keeps standard output for the answer, and discards what the engine prints.
int TakeOutput() {
  int const output = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
  int const nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (nowhere >= 0) dup2(nowhere, STDOUT_FILENO);
  return output;
}

// The engine allocates memory in destructors, from which no exception can be thrown: std::terminate is called instead
// of the handlers in main.
[[noreturn]] void EndWithoutHandler() {
  try {
    if (std::current_exception() != nullptr) throw;
  } catch (std::bad_alloc const&) {
    _exit(kWorkerOutOfMemory);
  } catch (Standard_OutOfMemory const&) {
    _exit(kWorkerOutOfMemory);
  } catch (...) {
  }
  std::abort();
}

int Run(char const* path) {
  mallopt(M_ARENA_MAX, kArenaLimit);
  Answer answer(TakeOutput());
  Request const request = ReadRequest();
  Message::DefaultMessenger()->ChangePrinters().Clear();
  Evaluation evaluation(request, answer);
  if (!evaluation.Read(path)) return kWorkerUnreadable;
  evaluation.EvaluateAll();
  answer.PutEnd();
  return 0;
}

}  // namespace

// Ends by _exit, since the destructors of the engine only cost time.
int main(int count, char** arguments) {
  if (count != 2) {
    std::fputs("usage: brivet-shape-worker FILE\n", stderr);
    return 2;
  }
  std::set_terminate(EndWithoutHandler);
  int status = kWorkerFailed;
  try {
    status = Run(arguments[1]);
  } catch (std::bad_alloc const&) {
    status = kWorkerOutOfMemory;
  } catch (Standard_OutOfMemory const&) {
    status = kWorkerOutOfMemory;
  } catch (Standard_Failure const&) {
  } catch (BrokenPipe const&) {
  }
  _exit(status);
}
