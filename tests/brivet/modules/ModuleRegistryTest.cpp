#include "ModuleRegistry.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "RecordingListener.h"
#include "ScratchDirectory.h"

namespace {

std::string ManifestOf(std::string const& module, std::string const& format, std::string const& extension) {
  return "sdk = 1\nmodule = " + module + "\nversion = 1\nformats = " + format + "\n[" + format + "]\ntitle = T\n" +
         "extensions = " + extension + "\nsignatures = 0:" + "6162\nreads = TRUE\nwrites = FALSE\n";
}

}  // namespace

TEST(ModuleRegistryTest, FindsFirstInPath) {
  ScratchDirectory const first;
  ScratchDirectory const second;
  first.Write("B.brivet", ManifestOf("B", "b", ".x"));
  second.Write("A.brivet", ManifestOf("A", "a", ".x"));
  second.Write("B.brivet", ManifestOf("B", "old", ".old"));
  ModuleRegistry registry({first.Path(), "/nonexistent", second.Path()});
  EXPECT_EQ(registry.FindExtension(".x", ModuleRegistry::Reading).format->name, "b");
  EXPECT_FALSE(registry.FindExtension(".x", ModuleRegistry::Writing));
  EXPECT_EQ(registry.FindName("a", ModuleRegistry::Reading).module->library, second.Path() + "/libA.so");
  EXPECT_FALSE(registry.FindName("old", ModuleRegistry::Reading));
  EXPECT_FALSE(registry.FindName("", ModuleRegistry::Reading));
  EXPECT_EQ(registry.FindSignature("abc").format->name, "b");
  EXPECT_FALSE(registry.FindSignature("a"));
  ASSERT_EQ(registry.All().size(), 3U);
  EXPECT_EQ(registry.All().front().name, "B");
  EXPECT_EQ(registry.All().back().shadowedBy, first.Path() + "/B.brivet");
}

TEST(ModuleRegistryTest, ParsesOnlyWhatIsWanted) {
  ScratchDirectory const folder;
  folder.Write("A.brivet", "damaged");
  folder.Write("B.brivet", ManifestOf("B", "b", ".x"));
  ModuleRegistry registry({folder.Path()});
  RecordingListener const listener;
  EXPECT_TRUE(registry.FindExtension(".x", ModuleRegistry::Reading));
  EXPECT_TRUE(listener.events.empty());
  EXPECT_EQ(registry.All().size(), 1U);
  EXPECT_EQ(listener.events.size(), 1U);
}

TEST(ModuleRegistryTest, SkipsFolderBelowUntrustedOne) {
  ScratchDirectory const scratch;
  scratch.Write("shared/modules/A.brivet", ManifestOf("A", "a", ".x"));
  scratch.Write("shared/modules/libA.so", "");
  scratch.Write("own/A.brivet", ManifestOf("A", "a", ".x"));
  std::filesystem::create_symlink(scratch.Path() + "/shared/modules", scratch.Path() + "/link");
  std::filesystem::create_symlink(scratch.Path() + "/shared/modules/libA.so", scratch.Path() + "/own/libA.so");
  ModuleRegistry registry({scratch.Path() + "/link"});
  ASSERT_EQ(registry.All().size(), 1U);
  EXPECT_EQ(registry.All().front().library,
            std::filesystem::canonical(scratch.Path()).string() + "/shared/modules/libA.so");
  EXPECT_EQ(ModuleRegistry({scratch.Path() + "/own"}).All().size(), 1U);
  ASSERT_EQ(chmod((scratch.Path() + "/shared").c_str(), 0777), 0);
  RecordingListener const listener;
  EXPECT_TRUE(ModuleRegistry({scratch.Path() + "/link"}).All().empty());
  EXPECT_TRUE(ModuleRegistry({scratch.Path() + "/own"}).All().empty());
  ASSERT_EQ(listener.events.size(), 2U);
  EXPECT_NE(listener.events[0].text.find("/shared' can be written by everybody"), std::string::npos);
  EXPECT_NE(listener.events[1].text.find("/shared' can be written by everybody"), std::string::npos);
}

TEST(ModuleRegistryTest, SkipsWhatOthersOwnOrTheirGroupMayWrite) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root";
  constexpr unsigned kNobodysId = 1234567890;
  ScratchDirectory const scratch;
  std::string const modules = scratch.Path() + "/modules";
  scratch.Write("modules/A.brivet", ManifestOf("A", "a", ".x"));
  scratch.Write("modules/libA.so", "");
  for (std::string const& path : {modules, modules + "/A.brivet", modules + "/libA.so"}) {
    ASSERT_EQ(chown(path.c_str(), 0, kNobodysId), 0);
    EXPECT_EQ(ModuleRegistry({modules}).All().size(), 1U) << path;
    ASSERT_EQ(chmod(path.c_str(), 0775), 0);
    {
      RecordingListener const listener;
      EXPECT_TRUE(ModuleRegistry({modules}).All().empty()) << path;
      ASSERT_EQ(listener.events.size(), 1U);
      EXPECT_NE(listener.events[0].text.find(" can be written by the group '1234567890'"), std::string::npos);
    }
    ASSERT_EQ(chmod(path.c_str(), 0755), 0);
    ASSERT_EQ(chown(path.c_str(), kNobodysId, 0), 0);
    {
      RecordingListener const listener;
      EXPECT_TRUE(ModuleRegistry({modules}).All().empty()) << path;
      ASSERT_EQ(listener.events.size(), 1U);
      EXPECT_NE(listener.events[0].text.find(" belongs to another user"), std::string::npos);
    }
    ASSERT_EQ(chown(path.c_str(), 0, 0), 0);
  }
}

TEST(ModuleRegistryTest, KeepsWarningsUntilTheyAreReported) {
  ScratchDirectory const folder;
  folder.Write("A.brivet", "damaged");
  RecordingListener const listener;
  ModuleRegistry::SetWarningMode(ModuleRegistry::Keep);
  EXPECT_TRUE(ModuleRegistry({folder.Path()}).All().empty());
  EXPECT_TRUE(listener.events.empty());
  ModuleRegistry::SetWarningMode(ModuleRegistry::Report);
  EXPECT_EQ(listener.events.size(), 1U);
  ModuleRegistry::SetWarningMode(ModuleRegistry::Keep);
  EXPECT_TRUE(ModuleRegistry({folder.Path()}).All().empty());
  ModuleRegistry::SetWarningMode(ModuleRegistry::Drop);
  ModuleRegistry::SetWarningMode(ModuleRegistry::Report);
  EXPECT_EQ(listener.events.size(), 1U);
}

TEST(ModuleRegistryTest, SkipsWhatEverybodyMayWrite) {
  ScratchDirectory const folder;
  folder.Write("A.brivet", ManifestOf("A", "a", ".x"));
  ASSERT_EQ(chmod((folder.Path() + "/A.brivet").c_str(), 0666), 0);
  RecordingListener const listener;
  EXPECT_TRUE(ModuleRegistry({folder.Path()}).All().empty());
  ASSERT_EQ(listener.events.size(), 1U);
  ASSERT_EQ(chmod((folder.Path() + "/A.brivet").c_str(), 0644), 0);
  EXPECT_EQ(ModuleRegistry({folder.Path()}).All().size(), 1U);
  ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
  EXPECT_TRUE(ModuleRegistry({folder.Path()}).All().empty());
  ASSERT_EQ(chmod(folder.Path().c_str(), 0700), 0);
}
