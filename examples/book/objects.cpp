// Handles and chains of them, combined results, exceptions, and public handles.
#include <iostream>
#include <string>

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
  ~Node() override { std::cout << "delete " << number << "\n"; }

  int number;
  NodeHandle next;
};

void ReleaseChain() {
  NodeHandle head(new Node(1, NodeHandle(new Node(2, NodeHandle()))));
  NodeHandle const second(head->next);
  std::cout << "node 2 has " << second->GetReferenceCount() << " handles\n";
  while (head != nullptr) head = head->next;
  std::cout << "node 2 has " << second->GetReferenceCount() << " handle\n";
}

VRINResult Translate(int faces) {
  if (faces < 0) return VREL_E_INVALID_ARGUMENT;
  return faces == 0 ? VREL_S_NO_GEOMETRY : VREL_S_OK;
}

void Combine() {
  VRINResult all = VREL_S_OK;
  VRINResult any = VREL_E_FAIL;
  for (int const faces : {6, 0, -1, 4}) {
    all &= Translate(faces);
    any |= Translate(faces);
  }
  std::cout << "all: " << all.GetMessage() << ", any: " << any.GetMessage() << "\n";
}

// Calls a module and converts its exceptions to results.
template <class Work>
VRINResult CatchAsResult(Work const& work) {
  try {
    return work();
  } catch (VRELAbortException const&) {
    return VREL_E_ABORTED;
  } catch (Gk_Exception const& exception) {
    std::cout << "exception " << exception.token() << "\n";
    return VREL_E_ERROR;
  }
}

VRINResult Search() {
  Gk_ErrMgr::checkAbort();
  Gk_ErrMgr::raise(Gk_Exception("NO_SUCH_FACE"));
}

int main() {
  ReleaseChain();
  Combine();

  std::cout << CatchAsResult(Search).GetMessage() << "\n";
  Gk_ErrMgr::setAbort();
  std::cout << CatchAsResult(Search).GetMessage() << "\n";

  VRINValue const tolerance(0.5);
  VRINValue shared(true);
  shared = tolerance;
  std::cout << static_cast<double>(shared) << ", as an integer " << static_cast<int>(shared) << "\n";
  VRINValue const author(std::string("drawing office"));
  std::cout << static_cast<char const*>(author) << "\n";
  std::cout << static_cast<char const*>(VRINUnit("mm")) << "\n";
}
