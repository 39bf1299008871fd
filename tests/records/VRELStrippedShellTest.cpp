#include "VRELStrippedShell.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

#include "VirtualSlot.h"

namespace {

TEST(VRELStrippedShellTest, IsStripped) {
  EXPECT_TRUE((std::is_base_of_v<VRELSurfacicShell, VRELStrippedShell>));
  EXPECT_EQ(sizeof(VRELStrippedShell), sizeof(VRELSurfacicShell));
  EXPECT_EQ(SlotOf(&VRELStrippedShell::IsStripped), 11U);
  std::unique_ptr<VRELSurfacicShell> const shell = std::make_unique<VRELStrippedShell>(4, 5, 6);
  EXPECT_TRUE(shell->IsStripped());
  EXPECT_EQ(shell->GetKey(), 4);
  EXPECT_EQ(shell->GetLOD(), 5);
  EXPECT_EQ(shell->GetPass(), 6);
}

TEST(VRELStrippedShellTest, CopyDataTakesOwnership) {
  std::unique_ptr<VRELSurfacicShell> shell = std::make_unique<VRELStrippedShell>(4, 5, 6);
  float const points[] = {1, 2, 3};
  int const faces[] = {1, 0};
  EXPECT_EQ(shell->CopyData(1, points, 0, nullptr, 2, faces, 0, nullptr), VREL_S_OK);
  int count = 0;
  int* copied = nullptr;
  shell->GetFaces(count, copied);
  ASSERT_EQ(count, 2);
  EXPECT_EQ(copied[0], 1);
  EXPECT_EQ(copied[1], 0);
}

}  // namespace
