// Allocations of single operations fail one at a time, for classes that guarantee not to throw or not to change.
#include <gtest/gtest.h>
#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <vector>

#include "ChildProcess.h"
#include "FaultPlan.h"
#include "Gk_CPUTime.h"
#include "OpenDescriptors.h"
#include "ScratchDirectory.h"
#include "VRELAllocException.h"
#include "VRELAssemblyComponentTransform.h"
#include "VRELCamera.h"
#include "VRELConsoleLogger.h"
#include "VRELDynamicArray.h"
#include "VRELEnvironment.h"
#include "VRELError.h"
#include "VRELErrorTracker.h"
#include "VRELEventBus.h"
#include "VRELFilePath.h"
#include "VRELHashMap.h"
#include "VRELLogFileWrapper.h"
#include "VRELLogger.h"
#include "VRELOption.h"
#include "VRELOptionToken.h"
#include "VRELOptions.h"
#include "VRELPolylineSet.h"
#include "VRELRGBColor.h"
#include "VRELRoloNode.h"
#include "VRELStartTaskEvent.h"
#include "VRELString.h"
#include "VRELStringConversions.h"
#include "VRELStringOutputStream.h"
#include "VRELSurfacicShell.h"
#include "VRELTable.h"
#include "VRELTemporaryFile.h"
#include "VRELTree.h"
#include "VRELValue.h"
#include "VRINResult.h"

namespace {

// Makes allocations of this process fail while the object exists.
class Failing {
 public:
  explicit Failing(long number) : Failing(number, number) {}
  Failing(long first, long last) {
    plan.first = first;
    plan.last = last;
    faultPlan = &plan;
  }
  ~Failing() { faultPlan = nullptr; }
  Failing(Failing const&) = delete;
  Failing& operator=(Failing const&) = delete;

  // Returns whether an allocation has failed.
  bool HasFailed() const { return plan.count >= plan.first; }

 private:
  FaultPlan plan;
};

enum Outcome { Right, Lost, Wrong };

struct Operation {
  char const* name;
  std::function<Outcome()> work;
};

// Longer than the internal buffer of an ICU string, and not ASCII.
constexpr char16_t kLong[] = u"Z\u00FCndkerzen-Schl\u00FCssel f\u00FCr M14 \u2300 16, verl\u00E4ngert, mit Gelenk";

VRELString const& Long() {
  static VRELString const text{std::u16string_view(kLong)};
  return text;
}

// Returns whether a string is complete or uninitialized.
Outcome Is(VRELString const& text, std::u16string_view wanted) {
  if (!text.getIsInitialized()) return text.length() == -1 && text.view().empty() ? Lost : Wrong;
  return text.view() == wanted ? Right : Wrong;
}

// Returns whether a conversion is complete or failed with an empty string. If the converter cannot be opened, the
// default converter is used and the failure is counted.
Outcome IsConverted(VRELString const& text, char const* codepage, std::string const& wanted) {
  char bytes[200] = "before";
  VRINResult const result = text.convertToMBCS(bytes, sizeof bytes, codepage, false);
  if (result.IsFailure()) return bytes[0] == '\0' ? Lost : Wrong;
  return bytes == wanted ? Right : Lost;
}

std::u16string const& Utf16() {
  static std::u16string const text(kLong);
  return text;
}

std::vector<Operation> const& TextOperations() {
  static std::string const utf8 = Long().toUtf8();
  static std::wstring const wide(kLong, kLong + Utf16().size());
  static std::vector<int> const scalars = [] {
    std::vector<int> all(kLong, kLong + Utf16().size());
    all.push_back(0);
    return all;
  }();
  static std::string const latin = "Z\xFCndkerzen-Schl\xFCssel, verl\xE4ngert, mit Gelenk und so weiter";
  static std::u16string const fromLatin = u"Z\u00FCndkerzen-Schl\u00FCssel, verl\u00E4ngert, mit Gelenk und so weiter";
  static std::u16string const twice = Utf16() + Utf16();
  static std::u16string const replaced = [] {
    std::u16string text = Utf16();
    for (char16_t& unit : text) unit = unit == u'e' ? u'i' : unit;
    return text;
  }();
  static VRELString const ofLatin{std::u16string_view(fromLatin)};
  static std::vector<Operation> const operations = {
      {"of UTF-8", [] { return Is(VRELString(utf8), kLong); }},
      {"of UTF-16", [] { return Is(VRELString(std::u16string_view(kLong)), kLong); }},
      {"of units", [] { return Is(VRELString(reinterpret_cast<unsigned short const*>(kLong)), kLong); }},
      {"of wide characters", [] { return Is(VRELString(wide.c_str()), kLong); }},
      {"of UTF-32", [] { return Is(VRELString(scalars.data()), kLong); }},
      {"of a code point", [] { return Is(VRELString(0x1F529), u"\U0001F529"); }},
      {"of a unit", [] { return Is(VRELString(static_cast<unsigned short>(0xFC)), u"\u00FC"); }},
      {"empty", [] { return Is(VRELString(), u""); }},
      {"copy", [] { return Is(VRELString(Long()), kLong); }},
      {"assignment",
       [] {
         VRELString text(L"a");
         text = Long();
         return Is(text, kLong);
       }},
      {"sum", [] { return Is(Long() + Long(), twice); }},
      {"part", [] { return Is(Long().substring(1), std::u16string_view(kLong).substr(1)); }},
      {"replacement", [] { return Is(Long().replace('e', 'i'), replaced); }},
      {"bytes in ISO 8859-1", [] { return IsConverted(ofLatin, "ISO-8859-1", latin); }},
      {"characters",
       [] {
         char* bytes = nullptr;
         if (VRELStringToChars(VRELString(L"bolt"), bytes).IsFailure()) return bytes == nullptr ? Lost : Wrong;
         bool const isRight = std::strcmp(bytes, "bolt") == 0;
         VRELReleaseChars(bytes);
         return isRight ? Right : Wrong;
       }},
      {"wide characters",
       [] {
         wchar_t* text = nullptr;
         if (VRELStringToWideChars(Long(), text).IsFailure()) return text == nullptr ? Lost : Wrong;
         bool const isRight = wide == text;
         VRELReleaseWideChars(text);
         return isRight ? Right : Wrong;
       }},
      {"comparison", [] { return Long().compareToIgnoreCase(ofLatin) != 0 ? Right : Wrong; }},
      {"equality", [] { return VRELStringEqualsIgnoreCase(kLong, kLong) ? Right : Wrong; }},
      {"hash", [] { return VRELHashTraits<VRELString>::Hash(Long()) != 0 ? Right : Wrong; }},
  };
  return operations;
}

// Returns 0, or the number of an allocation whose failure had a wrong result.
int TryEach(Operation const& operation, bool countsLosses) {
  for (int number = 1; number < 200; ++number) {
    int const lostBefore = VRELString::getFailureCount();
    Outcome outcome = Right;
    bool hasFailed = false;
    {
      Failing const failing(number);
      outcome = operation.work();
      hasFailed = failing.HasFailed();
    }
    bool const isCounted = !countsLosses || outcome != Lost || VRELString::getFailureCount() > lostBefore;
    if (outcome == Wrong || !isCounted) return number;
    if (!hasFailed) return outcome == Right ? 0 : number;
  }
  return 200;
}

void ExpectSound(std::vector<Operation> const& operations, bool countsLosses) {
  for (Operation const& operation : operations) {
    SCOPED_TRACE(operation.name);
    ChildResult const result = RunInChildWithoutTeardown([&] {
      try {
        return TryEach(operation, countsLosses);
      } catch (...) {
        return 201;
      }
    });
    EXPECT_EQ(result.signal, 0) << result.errors;
    EXPECT_EQ(result.exitStatus, 0) << "the number of the allocation that failed; 201 for an exception";
  }
}

std::vector<Operation> PathOperations(std::string const& folder) {
  static VRELString const model(L"/somewhere/far/assembly/left front wheel.first.STEP");
  static VRELString const extension(L"a rather long extension of a name");
  VRELFilePath const there(VRELString((folder + "/a file whose name takes more than a few bytes.stp")));
  VRELFilePath const tooLong(("first folder of all/" + std::string(5000, 'x') + "/wheel.stp").c_str());
  auto const ignore = [](auto const& /*result*/) { return Right; };
  return {
      {"of bytes", [=] { return ignore(VRELFilePath("c:\\parts\\bolt and nut and washer and wheel.stp")); }},
      {"name", [=] { return ignore(VRELFilePath(model).GetName()); }},
      {"name without extension", [=] { return ignore(VRELFilePath(model).GetNameWithoutExtension()); }},
      {"name without last extension", [=] { return ignore(VRELFilePath(model).GetNameWithoutLastExtension()); }},
      {"extension", [=] { return ignore(VRELFilePath(model).GetLastExtension()); }},
      {"directory", [=] { return ignore(VRELFilePath(model).GetDirectory()); }},
      {"has extension", [=] { return ignore(VRELFilePath(model).HasLastExtensionIgnoringCase(extension)); }},
      {"last extension replaced", [=] { return ignore(VRELFilePath(model).ReplaceLastExtension(extension)); }},
      {"first extension replaced", [=] { return ignore(VRELFilePath(model).ReplaceFirstExtension(extension)); }},
      {"extension added",
       [=] {
         VRELFilePath path(model);
         path.AddExtension(extension);
         return Right;
       }},
      {"joined", [=] { return ignore(VRELFilePath(model) + extension); }},
      {"looked for", [=] { return ignore(there.DoesFileExist()); }},
      {"opened",
       [=] {
         std::FILE* const file = there.OpenFile("w");
         if (file != nullptr) std::fclose(file);
         return Right;
       }},
      {"size",
       [=] {
         long size = 0;
         return ignore(there.GetFileSize(size));
       }},
      {"current directory", [=] { return ignore(VRELFilePath::GetCurrentWorkingDirectory()); }},
      {"removed", [=] { return ignore(there.RemoveFile()); }},
      // This one may lose strings without an error; only the string of the complete path throws.
      {"resolved",
       [=] {
         VRELFilePath base("/no/such/folder/of/that/name/top.asm");
         try {
           return ignore(tooLong.ResolveAgainst(base));
         } catch (VRELAllocException const&) {
           return Lost;
         }
       }},
  };
}

std::vector<Operation> RecordOperations() {
  return {
      {"transform",
       [] {
         VRELAssemblyComponentTransform const made;
         VRELAssemblyComponentTransform copy(made);
         copy = made;
         return Right;
       }},
      {"polylines",
       [] {
         VRELPolylineSet const made(7);
         return VRELPolylineSet(made).GetKey() == 7 ? Right : Wrong;
       }},
      {"shell", [] { return VRELSurfacicShell(7, 1, 2).GetKey() == 7 ? Right : Wrong; }},
      {"camera",
       [] {
         VRELCamera const camera;
         return Right;
       }},
      {"colour",
       [] {
         VRELRGBColor colour(0.5F, 0.25F, 1.0F, 0.0F);
         return colour == VRELRGBColor(colour) ? Right : Wrong;
       }},
      {"time", [] { return Gk_CPUTime::now().seconds() >= 0 ? Right : Wrong; }},
  };
}

}  // namespace

TEST(LibraryAllocationTest, StringIsCompleteOrUninitialized) {
  ExpectSound(TextOperations(), true);
}

TEST(LibraryAllocationTest, PathsNeverThrow) {
  ScratchDirectory const folder;
  ExpectSound(PathOperations(folder.Path()), false);
}

TEST(LibraryAllocationTest, TemporaryFileNeverThrows) {
  ScratchDirectory const folder;
  ASSERT_EQ(setenv("TMPDIR", folder.Path().c_str(), 1), 0);
  ExpectSound({{"temporary file",
                [] {
                  VRELTemporaryFile file(VRELFilePath("/d/a model with a long name.stp"), "part.tmp", 3);
                  if (std::FILE* const stream = file.Open(nullptr)) std::fputs("bytes", stream);
                  return Right;
                }}},
              false);
  unsetenv("TMPDIR");
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(LibraryAllocationTest, RecordsNeverThrow) {
  ExpectSound(RecordOperations(), false);
}

TEST(LibraryAllocationTest, ArrayIsUnchangedAfterFailedGrowth) {
  for (long number = 1;; ++number) {
    VRELDynamicArray<int> array;
    for (int i = 0; i < 10; ++i) array.add(i);
    bool hasThrown = false;
    bool hasFailed = false;
    {
      Failing const failing(number);
      try {
        array.add(10);
      } catch (VRELAllocException const&) {
        hasThrown = true;
      }
      hasFailed = failing.HasFailed();
    }
    EXPECT_EQ(hasThrown, hasFailed);
    ASSERT_EQ(array.size(), hasFailed ? 10 : 11);
    for (int i = 0; i < array.size(); ++i) EXPECT_EQ(array[i], i);
    if (!hasFailed) break;
  }
}

TEST(LibraryAllocationTest, MapIsUnchangedAfterFailedGrowth) {
  long met = 0;
  for (long number = 1; number < 1000; ++number) {
    VRELHashMap<int, int> map(3);
    int added = 0;
    bool hasThrown = false;
    bool hasFailed = false;
    {
      Failing const failing(number);
      try {
        for (; added < 50; ++added) map.Add(added, added * added);
      } catch (VRELAllocException const&) {
        hasThrown = true;
      }
      hasFailed = failing.HasFailed();
    }
    EXPECT_EQ(hasThrown, hasFailed);
    ASSERT_EQ(map.Size(), added);
    for (int i = 0; i < 50; ++i) {
      int value = -1;
      ASSERT_EQ(map.Get(i, value), i < added) << "entry " << i << ", allocation " << number;
      EXPECT_EQ(value, i < added ? i * i : -1);
    }
    // The map can grow when there is memory again.
    EXPECT_TRUE(map.Add(100, 1));
    if (!hasFailed) break;
    ++met;
  }
  EXPECT_GT(met, 5);
}

TEST(LibraryAllocationTest, ClearEmptiesMapAfterFailure) {
  VRELString const keys[] = {VRELString(L"hub"), VRELString(L"rim"), VRELString(L"axle")};
  long met = 0;
  for (long number = 1; number < 100; ++number) {
    VRELHashMap<VRELString, int> map(3);
    map.Add(keys[0], 0);
    map.Add(keys[1], 1);
    bool hasFailed = false;
    {
      Failing const failing(number);
      try {
        map.Clear();
      } catch (VRELAllocException const&) {
      }
      hasFailed = failing.HasFailed();
    }
    EXPECT_EQ(map.Size(), 0);
    EXPECT_FALSE(map.HasNext());
    for (VRELString const& key : keys) EXPECT_EQ(map.FindKey(key), -1);
    for (VRELString const& key : keys) EXPECT_TRUE(map.Add(key, 7));
    for (VRELString const& key : keys) EXPECT_NE(map.FindKey(key), -1);
    EXPECT_EQ(map.Size(), 3);
    if (!hasFailed) break;
    ++met;
  }
  EXPECT_GT(met, 2);
}

TEST(LibraryAllocationTest, TreeNodeIsLinkedCompletely) {
  using Node = VRELTree::VRELTreeNode;
  int object = 0;
  long met = 0;
  for (long number = 1; number < 1000; ++number) {
    VRELTree tree(&object);
    Node* const hub = tree.GetRoot()->AddChild(&object);
    std::vector<Node*> spokes;
    for (int i = 0; i < 20; ++i) spokes.push_back(tree.GetRoot()->AddChild(&object));
    bool hasFailed = false;
    {
      Failing const failing(number);
      for (Node* spoke : spokes) {
        try {
          hub->AddChildPtr(spoke);
        } catch (VRELAllocException const&) {
        } catch (std::bad_alloc const&) {
        }
        try {
          spoke->AddChildPtr(hub);
        } catch (VRELAllocException const&) {
        } catch (std::bad_alloc const&) {
        }
      }
      hasFailed = failing.HasFailed();
    }
    for (Node* spoke : spokes) {
      ASSERT_EQ(vrelArrayFind<Node*>(hub->GetChildren(), spoke) >= 0,
                vrelArrayFind<Node*>(spoke->GetParents(), hub) >= 0);
      ASSERT_EQ(vrelArrayFind<Node*>(spoke->GetChildren(), hub) >= 0,
                vrelArrayFind<Node*>(hub->GetParents(), spoke) >= 0);
    }
    if (!hasFailed) break;
    ++met;
  }
  EXPECT_GT(met, 5);
}

TEST(LibraryAllocationTest, IterationContinuesAfterFailure) {
  int objects[40] = {};
  long met = 0;
  for (long number = 1; number < 1000; ++number) {
    VRELTree tree(&objects[0]);
    VRELTree::VRELTreeNode* node = tree.GetRoot();
    for (int i = 1; i < 40; ++i) {
      VRELTree::VRELTreeNode* const child = node->AddChild(&objects[i]);
      if (i % 3 != 0) node = child;
    }
    std::vector<void*> expected;
    VRELTree::VRELTreeNode::VRELTreeNodeIterator whole(tree.GetRoot());
    while (void* const object = whole.GetNextObject()) expected.push_back(object);
    ASSERT_EQ(expected.size(), 39U);
    std::vector<void*> seen;
    seen.reserve(100);
    VRELTree::VRELTreeNode::VRELTreeNodeIterator walk(tree.GetRoot());
    bool hasFailed = false;
    {
      Failing const failing(number);
      bool isOver = false;
      while (!isOver && seen.size() < 100) {
        try {
          void* const object = walk.GetNextObject();
          isOver = object == nullptr;
          if (!isOver) seen.push_back(object);
        } catch (VRELAllocException const&) {
        } catch (std::bad_alloc const&) {
        }
      }
      hasFailed = failing.HasFailed();
    }
    ASSERT_EQ(seen, expected) << number;
    if (!hasFailed) break;
    ++met;
  }
  EXPECT_GT(met, 50);
}

TEST(LibraryAllocationTest, TableIgnoresKeyOfFailedRow) {
  long met = 0;
  for (long number = 1; number < 1000; ++number) {
    VRELTable table;
    std::vector<bool> isThere(40);
    bool hasFailed = false;
    {
      Failing const failing(number);
      for (int i = 0; i < 40; ++i) {
        VRELValue const key(i);
        try {
          isThere[static_cast<std::size_t>(i)] =
              (i % 2 == 0 ? table.Add(&key, nullptr) : table.Set(&key, nullptr)).IsSuccess();
        } catch (VRELAllocException const&) {
        }
      }
      hasFailed = failing.HasFailed();
    }
    EXPECT_EQ(table.GetRowsCount(), hasFailed ? 39 : 40);
    for (int i = 0; i < 40; ++i) {
      VRELValue key(i);
      ASSERT_EQ(table.Get(&key, nullptr).IsSuccess(), isThere[static_cast<std::size_t>(i)]) << i;
      ASSERT_TRUE(key == VRELValue(i));
    }
    if (!hasFailed) break;
    ++met;
  }
  EXPECT_GT(met, 40);
}

struct CountedFolder : VRELRoloNode {
  CountedFolder() { ++alive; }
  ~CountedFolder() override { --alive; }
  static inline int alive = 0;
};

TEST(LibraryAllocationTest, FolderDestructorNeedsNoMemory) {
  for (bool lasts : {false, true}) {
    long met = 0;
    for (long number = 1; number < 100; ++number) {
      auto* const root = new CountedFolder();
      for (int i = 0; i < 5; ++i) {
        auto* const child = new CountedFolder();
        root->getChildren().add(child);
        for (int j = 0; j < 20; ++j) child->getChildren().add(new CountedFolder());
      }
      EXPECT_EQ(CountedFolder::alive, 106);
      bool hasFailed = false;
      {
        Failing const failing(number, lasts ? 1000000 : number);
        delete root;
        hasFailed = failing.HasFailed();
      }
      EXPECT_EQ(CountedFolder::alive, 0);
      if (!hasFailed) break;
      ++met;
    }
    EXPECT_GT(met, 2);
  }
}

TEST(LibraryAllocationTest, ShellIsUnchangedAfterFailedCopy) {
  float const points[] = {1, 2, 3};
  int const faces[] = {0, 0, 0};
  for (long number = 1;; ++number) {
    VRELSurfacicShell shell(1, 2, 3);
    bool hasThrown = false;
    bool hasFailed = false;
    {
      Failing const failing(number);
      try {
        shell.CopyData(1, points, 1, points, 1, faces, 1, points);
      } catch (std::bad_alloc const&) {
        hasThrown = true;
      }
      hasFailed = failing.HasFailed();
    }
    int count = -1;
    float* held = nullptr;
    shell.GetPoints(count, held);
    EXPECT_EQ(hasThrown, hasFailed);
    EXPECT_EQ(count, hasFailed ? 0 : 1);
    EXPECT_EQ(held == nullptr, hasFailed);
    if (!hasFailed) break;
  }
}

namespace {

// Runs the work with each of its allocations failing in turn, and `check` after each failure. Returns the number
// of failures.
int FailEach(std::function<void()> const& work, std::function<void()> const& check) {
  for (long number = 1;; ++number) {
    SCOPED_TRACE("allocation " + std::to_string(number));
    bool hasFailed = false;
    bool hasThrown = false;
    {
      Failing const failing(number);
      try {
        work();
      } catch (std::bad_alloc const&) {
        hasThrown = true;
      } catch (VRELAllocException const&) {
        hasThrown = true;
      }
      hasFailed = failing.HasFailed();
    }
    if (!hasFailed) return static_cast<int>(number - 1);
    if (hasThrown) check();
  }
}

int ListenerCount() {
  return VRELEventBus::GetEventBus()->GetListenerCount();
}

// Fills the bus, so that one more listener needs memory.
class FullBus {
 public:
  FullBus() {
    for (Silent& listener : listeners) VRELEventBus::GetEventBus()->AddListener(&listener);
  }
  ~FullBus() {
    for (Silent& listener : listeners) VRELEventBus::GetEventBus()->RemoveListener(&listener);
  }
  FullBus(FullBus const&) = delete;
  FullBus& operator=(FullBus const&) = delete;

 private:
  struct Silent : VRELEventListener {
    void HandleEvent(VRELEvent& /*event*/) override {}
  };
  Silent listeners[10];
};

// Does the work in a process of its own, where the bus has capacity for ten listeners.
void ExpectSuccessInChild(std::function<void()> const& work) {
  ChildResult const result = RunInChildWithoutTeardown([&] {
    unsetenv("VRELLogLevel");
    unsetenv("VRELConsoleTracesLevel");
    work();
    return testing::Test::HasFailure() ? 1 : 0;
  });
  EXPECT_EQ(result.exitStatus, 0) << result.output << result.errors;
  EXPECT_EQ(result.signal, 0);
}

}  // namespace

TEST(LibraryAllocationTest, FailedLogClosesFile) {
  ScratchDirectory const folder;
  std::string const name = folder.Path("log");
  VRELFilePath const path(name.c_str());
  ExpectSuccessInChild([&] {
    FullBus const bus;
    int const failures = FailEach([&] { VRELLogFileWrapper const log(path); },
                                  [&] {
                                    EXPECT_EQ(CountOpenDescriptors(name), 0);
                                    EXPECT_EQ(ListenerCount(), 10);
                                  });
    EXPECT_GT(failures, 1);
    // A borrowed one stays open.
    std::FILE* const file = std::fopen(name.c_str(), "w");
    FailEach([&] { VRELLogFileWrapper const log(file); }, [&] { EXPECT_EQ(CountOpenDescriptors(name), 1); });
    EXPECT_EQ(std::fclose(file), 0);
  });
}

TEST(LibraryAllocationTest, FailedLoggerStaysInactive) {
  ScratchDirectory const folder;
  std::string const name = folder.Path("log");
  folder.Write("log", "");
  ExpectSuccessInChild([&] {
    VRELFilePath path(name.c_str());
    for (long number = 1;; ++number) {
      FullBus const bus;
      VRELLogger logger;
      bool hasFailed = false;
      {
        Failing const failing(number);
        logger.Initialize(path, VREL_LEVEL_DEFAULT);
        hasFailed = failing.HasFailed();
      }
      if (!hasFailed) break;
      // Some failures are compensated; the others leave no partial initialization.
      bool const isActive = logger.GetOutputStream() != nullptr;
      EXPECT_EQ(ListenerCount(), isActive ? 11 : 10) << "allocation " << number;
      EXPECT_EQ(CountOpenDescriptors(name), isActive ? 1 : 0) << "allocation " << number;
      if (isActive) continue;
      logger.Initialize(path, VREL_LEVEL_DEFAULT);
      EXPECT_NE(logger.GetOutputStream(), nullptr);
      EXPECT_EQ(ListenerCount(), 11);
    }
  });
}

TEST(LibraryAllocationTest, FailedConsoleCanBeStartedLater) {
  ExpectSuccessInChild([] {
    for (long number = 1;; ++number) {
      FullBus const bus;
      VRELConsoleLogger console;
      bool hasFailed = false;
      try {
        Failing const failing(number);
        console.Initialize(VREL_LEVEL_NONE);
        hasFailed = failing.HasFailed();
      } catch (...) {
        hasFailed = true;
        EXPECT_FALSE(console.IsInitialized()) << "allocation " << number;
        EXPECT_EQ(ListenerCount(), 10);
      }
      if (!hasFailed) break;
      console.Initialize(VREL_LEVEL_NONE);
      EXPECT_TRUE(console.IsInitialized());
      EXPECT_EQ(ListenerCount(), 11);
    }
  });
}

TEST(LibraryAllocationTest, FailedTrackerCanBeStartedLater) {
  ExpectSuccessInChild([] {
    FullBus const bus;
    int const failures = FailEach(VRELErrorTracker::Initialize, [] {
      EXPECT_EQ(VRELErrorTracker::GetInstance(), nullptr);
      EXPECT_EQ(ListenerCount(), 10);
    });
    EXPECT_GT(failures, 1);
    EXPECT_NE(VRELErrorTracker::GetInstance(), nullptr);
    VRELError::Printf("kept");
    EXPECT_EQ(VRELError::GetErrorCount(), 1);
  });
}

TEST(LibraryAllocationTest, FailedConstructorsReleaseMemory) {
  std::string const text(50000, 'x');
  VRELStartTaskEvent const source("Start", text.c_str(), VREL_LEVEL_INFO);
  std::size_t used = mallinfo2().uordblks;
  auto const expectNothingMore = [&] {
    std::size_t const now = mallinfo2().uordblks;
    EXPECT_LT(now, used + 25000);
    used = now;
  };
  EXPECT_GT(
      FailEach([&] { VRELStartTaskEvent const event("Start", text.c_str(), VREL_LEVEL_INFO); }, expectNothingMore), 2);
  EXPECT_GT(FailEach([&] { std::make_unique<VRELStartTaskEvent>(source); }, expectNothingMore), 3);
}

TEST(LibraryAllocationTest, FailedOptionNodeIsReleased) {
  auto const addInVain = [] {
    for (long number = 1; number < 10; ++number) {
      VRELOptionToken root(nullptr);
      VRELOptionToken* child = nullptr;
      try {
        Failing const failing(number);
        root.AddToken(L"Tolerance", child);
      } catch (...) {
        EXPECT_EQ(child, nullptr);
      }
      root.RemoveAll();
    }
  };
  addInVain();
  std::size_t const used = mallinfo2().uordblks;
  for (int i = 0; i < 1000; ++i) addInVain();
  EXPECT_LT(mallinfo2().uordblks, used + 20000);
}

// Marks removed entries in memory of its own; without it the entries are moved at once.
TEST(LibraryAllocationTest, RemovalOfCollidingKeysNeedsNoMemory) {
  VRELHashMap<VRELString, int> map;
  map.SetFunctions([](VRELString const&) { return 7U; }, nullptr);
  std::vector<VRELString> keys;
  for (int i = 0; i < 1000; ++i) keys.emplace_back("key" + std::to_string(i));
  for (int i = 0; i < 1000; ++i) ASSERT_TRUE(map.Add(keys[static_cast<std::size_t>(i)], i));
  for (std::size_t i = 0; i < 100; ++i) {
    Failing const failing(1, 1000000);
    EXPECT_TRUE(map.Remove(keys[i]));
  }
  for (std::size_t i = 100; i < 116; ++i) EXPECT_TRUE(map.Remove(keys[i]));
  for (std::size_t i = 116; i < 300; ++i) {
    Failing const failing(1, 1000000);
    EXPECT_TRUE(map.Remove(keys[i]));
  }
  EXPECT_EQ(map.Size(), 700);
  for (int i = 0; i < 1000; ++i) {
    int value = -1;
    EXPECT_EQ(map.Get(keys[static_cast<std::size_t>(i)], value), i >= 300);
    EXPECT_EQ(value, i >= 300 ? i : -1);
  }
  EXPECT_EQ(map.FindKey(keys[300]), 7);
  EXPECT_EQ(map.FindKey(keys[999]), 706);
}

// An option of a file is created at its first request.
TEST(LibraryAllocationTest, FailedRequestKeepsDeferredOption) {
  std::FILE* const stream = std::tmpfile();
  ASSERT_NE(stream, nullptr);
  std::fputs("A.X=text that is longer than the internal buffer of a string\n", stream);
  std::rewind(stream);
  VRELOptions options;
  ASSERT_EQ(options.ReadFromFile(stream), VREL_S_OK);
  std::fclose(stream);
  VRELOption* option = nullptr;
  VRELString const name(L"A.b.X");
  int failed = 0;
  for (long number = 1; number < 100 && option == nullptr; ++number) {
    try {
      Failing const failing(number);
      options.GetOption(name, option);
    } catch (...) {
      ++failed;
      option = nullptr;
    }
  }
  EXPECT_GT(failed, 2);
  ASSERT_NE(option, nullptr);
  VRELString value;
  EXPECT_EQ(option->GetValue(value), VREL_S_OK);
  EXPECT_EQ(value, VRELString(L"text that is longer than the internal buffer of a string"));
  EXPECT_EQ(option->GetName(value), VREL_S_OK);
  EXPECT_EQ(value, VRELString(L"A.X"));
}

TEST(LibraryAllocationTest, FailedSetenvIsReported) {
  enum Answer { NotMet, Refused, Thrown, Broken };
  // The memory for the environment is allocated last.
  int last = Broken;
  for (long number = 1;; ++number) {
    ChildResult const child = RunInChildWithoutTeardown([number] {
      VRELString value(L"x");
      VRINResult result = VREL_S_OK;
      bool hasFailed = false;
      try {
        Failing const failing(number);
        result = VRELEnvironment::PutVariable(L"VRELFault", value);
        hasFailed = failing.HasFailed();
      } catch (...) {
        return std::getenv("VRELFault") == nullptr ? Thrown : Broken;
      }
      bool const isThere = std::getenv("VRELFault") != nullptr;
      if (!hasFailed) return isThere && result == VREL_S_OK ? NotMet : Broken;
      return !isThere && result == VREL_E_FAIL ? Refused : Broken;
    });
    ASSERT_NE(child.exitStatus, Broken) << "allocation " << number;
    ASSERT_EQ(child.signal, 0);
    if (child.exitStatus == NotMet) break;
    last = child.exitStatus;
  }
  EXPECT_EQ(last, Refused);
}

class CountedNode : public VRELTree::VRELTreeNode {
 public:
  explicit CountedNode(int& theDead) : VRELTreeNode(nullptr), deleted(theDead) {}
  ~CountedNode() noexcept(false) override { ++deleted; }

 private:
  int& deleted;
};

// A node with two children, each of which has two.
VRELTree::VRELTreeNode* TreeOfSevenNodes(int& deleted) {
  auto* const root = new CountedNode(deleted);
  for (int i = 0; i < 2; ++i) {
    auto* const child = new CountedNode(deleted);
    root->AddChildPtr(child);
    for (int j = 0; j < 2; ++j) child->AddChildPtr(new CountedNode(deleted));
  }
  return root;
}

// Children that a destructor cannot add to the list of pending deletions are kept; the others are deleted, and nothing
// is thrown.
TEST(LibraryAllocationTest, FailedNodeKeepsChildren) {
  // No child of the root is added; one of them; both, but one child of the first that is deleted is not.
  std::vector<int> const expected = {1, 4, 6};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    SCOPED_TRACE(i);
    ChildResult const result = RunInChildWithoutTeardown([number = static_cast<long>(i) + 1] {
      int deleted = 0;
      VRELTree::VRELTreeNode* const root = TreeOfSevenNodes(deleted);
      Failing const failing(number);
      delete root;
      return failing.HasFailed() ? deleted : -1;
    });
    EXPECT_EQ(result.signal, 0);
    EXPECT_EQ(result.exitStatus, expected[i]);
  }
}

TEST(LibraryAllocationTest, FailedReadClosesFile) {
  ScratchDirectory const folder;
  std::string const name = folder.Write("options.cfg", "Step.Reader.Tolerance=0.5\nHeal=a text longer than in place\n");
  ExpectSuccessInChild([&] {
    VRELString const path(name);
    VRELOptions options;
    EXPECT_GT(FailEach([&] { options.ReadFromFile(path); }, [&] { EXPECT_EQ(CountOpenDescriptors(name), 0); }), 10);
  });
}
