// A chain that is dropped behind, results that are folded, and what is thrown.
#include <iostream>

#include "Gk_ErrMgr.h"
#include "Gk_Exception.h"
#include "VRELAbortException.h"
#include "VRELReferenceCount.h"
#include "VRELTypedHandle.h"
#include "VRINResult.h"
#include "VRINUnit.h"
#include "VRINValue.h"

class Node;
using NodeHandle = VRELTypedHandle<Node>;

class Node : public VRELReferenceCount {
 public:
  Node(int nodeNumber, NodeHandle const& nextNode) : number(nodeNumber), next(nextNode) {}
  ~Node() override { std::cout << "gone: " << number << "\n"; }

  int number;
  NodeHandle next;
};

void WalkAndDrop() {
  NodeHandle node(new Node(1, NodeHandle(new Node(2, NodeHandle()))));
  std::cout << "at " << node->number << "\n";
  node = node->next;
  std::cout << "at " << node->number << ", held by " << node->GetReferenceCount() << "\n";
}

VRINResult Translate(int faces) {
  if (faces < 0) return VREL_E_INVALID_ARGUMENT;
  return faces == 0 ? VREL_S_NO_GEOMETRY : VREL_S_OK;
}

void Fold() {
  VRINResult all = VREL_S_OK;
  VRINResult any = VREL_E_FAIL;
  for (int const faces : {6, 0, -1, 4}) {
    all &= Translate(faces);
    any |= Translate(faces);
  }
  std::cout << "all: " << all.GetMessage() << ", any: " << any.GetMessage() << "\n";
}

// What a driver does around a module: whatever comes up becomes a result.
template <class Work>
VRINResult Guarded(Work const& work) {
  try {
    return work();
  } catch (VRELAbortException const&) {
    return VREL_E_ABORTED;
  } catch (Gk_Exception const& exception) {
    std::cout << "raised " << exception.token() << "\n";
    return VREL_E_ERROR;
  }
}

VRINResult Search() {
  Gk_ErrMgr::checkAbort();
  Gk_ErrMgr::raise(Gk_Exception("NO_SUCH_FACE"));
}

int main() {
  WalkAndDrop();
  Fold();

  std::cout << Guarded(Search).GetMessage() << "\n";
  Gk_ErrMgr::setAbort();
  std::cout << Guarded(Search).GetMessage() << "\n";

  VRINValue const tolerance(0.5);
  VRINValue shared(true);
  shared = tolerance;
  std::cout << static_cast<double>(shared) << ", as an integer " << static_cast<int>(shared) << "\n";
  std::cout << static_cast<char const*>(VRINUnit("mm")) << "\n";
}
