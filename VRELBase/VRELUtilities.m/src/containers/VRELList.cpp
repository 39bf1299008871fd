#include "VRELList.h"

VRELList::~VRELList() = default;

void VRELList::PushFront(void* value) {
  chain.PushFront(new VRELListNode(value));
}

void VRELList::PushBack(void* value) {
  chain.PushBack(new VRELListNode(value));
}
