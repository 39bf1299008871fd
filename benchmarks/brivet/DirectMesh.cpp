// DirectMesh FILE OUTPUT: translates a STEP file to binary glTF by Open CASCADE alone, as the peer of brivet.
#include <BRepBndLib.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <Bnd_Box.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_ProgressRange.hxx>
#include <RWGltf_CafWriter.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <TColStd_IndexedDataMapOfStringString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <cmath>

// Deflection and angle are those of the shape module, for each product.
int main(int count, char** arguments) {
  if (count != 3) return 2;
  Message::DefaultMessenger()->ChangePrinters().Clear();
  Handle(TDocStd_Document) document;
  Handle(XCAFApp_Application) const application = XCAFApp_Application::GetApplication();
  application->NewDocument("MDTV-XCAF", document);
  STEPCAFControl_Reader reader;
  if (reader.ReadFile(arguments[1]) != IFSelect_RetDone || !reader.Transfer(document)) return 1;
  Handle(XCAFDoc_ShapeTool) const tool = XCAFDoc_DocumentTool::ShapeTool(document->Main());
  TDF_LabelSequence labels;
  tool->GetShapes(labels);
  for (int i = 1; i <= labels.Length(); ++i) {
    if (XCAFDoc_ShapeTool::IsAssembly(labels.Value(i))) continue;
    TopoDS_Shape const shape = XCAFDoc_ShapeTool::GetShape(labels.Value(i));
    Bnd_Box box;
    BRepBndLib::Add(shape, box, Standard_False);
    if (box.IsVoid()) continue;
    IMeshTools_Parameters parameters;
    parameters.Deflection = 0.001 * std::sqrt(box.SquareExtent());
    parameters.Angle = 0.3;
    parameters.InParallel = Standard_True;
    BRepMesh_IncrementalMesh const mesh(shape, parameters);
  }
  RWGltf_CafWriter writer(arguments[2], Standard_True);
  return writer.Perform(document, TColStd_IndexedDataMapOfStringString(), Message_ProgressRange()) ? 0 : 1;
}
