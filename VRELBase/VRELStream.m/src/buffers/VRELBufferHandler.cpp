#include "VRELBufferHandler.h"

VRELBufferHandler::VRELBufferHandler() = default;

VRELBufferHandler::~VRELBufferHandler() {
  delete[] buffer;
}
