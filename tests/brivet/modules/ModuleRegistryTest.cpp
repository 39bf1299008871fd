#include "ModuleRegistry.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

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
