#include "VRELMap.h"

VRELMap::~VRELMap() = default;

void VRELMap::PushFront(long key, void* value) {
  chain.PushFront(new VRELMapNode(key, value));
}

void VRELMap::PushBack(long key, void* value) {
  chain.PushBack(new VRELMapNode(key, value));
}
