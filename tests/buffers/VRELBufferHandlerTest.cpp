#include "VRELBufferHandler.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "VRELBufferHandlerHandle.h"
#include "VirtualSlot.h"

namespace {

// Reads the bytes of its own block.
class BlockHandler : public VRELBufferHandler {
 public:
  explicit BlockHandler(bool hasBlock) {
    EXPECT_EQ(buffer, nullptr);
    if (hasBlock) buffer = new char[3]{'a', 'b', 'c'};
  }
  VRINResult GetChar(long position, unsigned char& value) override {
    if (buffer == nullptr || position < 0 || position > 2) return VREL_E_FAIL;
    value = static_cast<unsigned char>(buffer[position]);
    return VREL_S_OK;
  }
};

TEST(VRELBufferHandlerTest, IsAbstract) {
  static_assert(std::is_base_of_v<VRELReferenceCount, VRELBufferHandler>);
  static_assert(std::is_abstract_v<VRELBufferHandler>);
  EXPECT_EQ(SlotOf(&VRELBufferHandler::GetChar), 5U);
}

// A leak would be reported by the leak check.
TEST(VRELBufferHandlerTest, DeletesBlock) {
  for (bool const hasBlock : {false, true}) {
    SCOPED_TRACE(hasBlock);
    VRELBufferHandlerHandle const handler(new BlockHandler(hasBlock));
    unsigned char value = '-';
    EXPECT_EQ(handler->GetChar(1, value), hasBlock ? VREL_S_OK : VREL_E_FAIL);
    EXPECT_EQ(value, hasBlock ? 'b' : '-');
  }
}

}  // namespace
