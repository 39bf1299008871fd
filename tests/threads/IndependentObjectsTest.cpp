// Work on independent objects, on several threads at a time. Run it under ThreadSanitizer (preset tsan), which reports
// shared state; without it, the tests only check the results.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "Gk_ErrMgr.h"
#include "Gk_Func.h"
#include "Gk_String.h"
#include "Gk_StringParser.h"
#include "Imploder.h"
#include "OnThreads.h"
#include "ScratchDirectory.h"
#include "StreamText.h"
#include "VRELBlast.h"
#include "VRELBox3D.h"
#include "VRELCfgFile.h"
#include "VRELDynamicArray.h"
#include "VRELEnvironment.h"
#include "VRELErrorEvent.h"
#include "VRELFileHeader.h"
#include "VRELFileInputStream.h"
#include "VRELFilePath.h"
#include "VRELHashMap.h"
#include "VRELInfo.h"
#include "VRELMorph3D.h"
#include "VRELOption.h"
#include "VRELOptionName.h"
#include "VRELOptions.h"
#include "VRELPoint3D.h"
#include "VRELProperties.h"
#include "VRELReferenceHandle.h"
#include "VRELStreamFormatter.h"
#include "VRELStringConversions.h"
#include "VRELTimingLogger.h"
#include "VRELWarning.h"

namespace {

TEST(IndependentObjectsTest, StringsAndContainers) {
  OnThreads([](int thread) {
    VRELHashMap<VRELString, int> map;
    VRELDynamicArray<VRELString> array;
    for (int i = 0; i < 200; ++i) {
      VRELString const key = VRELString(L"r\u00E4der ") + VRELString(std::to_string(i * (thread + 1)));
      map.Add(key, i);
      array.add(key);
      char* bytes = nullptr;
      EXPECT_TRUE(VRELStringToChars(key, bytes).IsSuccess());
      VRELReleaseChars(bytes);
    }
    EXPECT_EQ(map.Size(), 200);
    EXPECT_EQ(array[199].toUtf8(),
              "r\xC3\xA4"
              "der " +
                  std::to_string(199 * (thread + 1)));
    Gk_StringParser parser(Gk_String("12.5"));
    EXPECT_EQ(parser.realValue(), 12.5);
  });
}

TEST(IndependentObjectsTest, HandlesOfOwnObjects) {
  OnThreads([](int) {
    VRELReferenceHandle handle;
    for (int i = 0; i < 1000; ++i) {
      handle.reset(new VRELReferenceCount);
      VRELReferenceHandle const copy(handle);
    }
    EXPECT_TRUE(handle.IsLastCall());
  });
}

TEST(IndependentObjectsTest, OptionsAndSettings) {
  ScratchDirectory const folder;
  std::string const options = folder.Write("options.txt", "ConvertAttributes=true\nStep.*.Reader.Tolerance=0.5\n");
  OnThreads([&](int thread) {
    VRELOptions store;
    store.AddOption(VRELString(L"Step.Own"), thread);
    EXPECT_TRUE(store.ReadFromFile(VRELString(options)).IsSuccess());
    for (int i = 0; i < 50; ++i) {
      VRELOption* option = nullptr;
      EXPECT_TRUE(store.GetOption(VRELString(L"Step.Assembly.Reader.Tolerance"), option).IsSuccess());
      EXPECT_TRUE(store.GetOption(VRELString(L"Step.Own"), option).IsSuccess());
      int own = -1;
      EXPECT_TRUE(option->GetValue(own).IsSuccess());
      EXPECT_EQ(own, thread);
    }
    VRELProperties properties;
    properties.Set(L"a=b");
    EXPECT_EQ(properties.GetCount(), 1);
    VRELString home;
    VRELEnvironment::GetVariable(VRELString(L"HOME"), home);
    EXPECT_GT(VRELOptionName::_optionNames.size(), 0);
  });
}

TEST(IndependentObjectsTest, FilesAndStreams) {
  ScratchDirectory const folder;
  OnThreads([&](int thread) {
    std::string const name = "part" + std::to_string(thread) + ".txt";
    std::string const path = folder.Path() + "/" + name;
    folder.Write(name, std::string(10000, static_cast<char>('a' + thread)));
    VRELFilePath const filePath(path.c_str());
    EXPECT_EQ(filePath.GetName().toUtf8(), name);
    VRELFileInputStream stream(path.c_str());
    EXPECT_EQ(stream.readChar(), 'a' + thread);
    stream.skip(9000);
    EXPECT_EQ(stream.readChar(), 'a' + thread);
    VRELFileHeader header;
    header.Set(VRELFileHeader::AUTHOR, name.c_str());
    VRELString author;
    EXPECT_TRUE(header.Get(VRELFileHeader::AUTHOR, author).IsSuccess());
    EXPECT_EQ(author.toUtf8(), name);
    std::string const text = TextOf([&](VRELOutputStream* output) {
      VRELStreamFormatter formatter(output);
      formatter << "thread " << thread << " " << 2.5 << formatter.endline();
    });
    EXPECT_EQ(text.substr(0, 8), "thread " + std::to_string(thread));
  });
}

TEST(IndependentObjectsTest, GeometryPollsAbortFlag) {
  OnThreads([](int thread) {
    VRELBox3D box;
    for (int i = 0; i < 500; ++i) {
      VRELPoint3D point(i, thread, 1.0);
      point.Add(VRELPoint3D(1.0, 1.0, 1.0));
      VRELPoint3D const unit = point.Normalize();
      EXPECT_TRUE(Gk_Func::equal(unit.Length(), 1.0, 1e-9));
      Gk_ErrMgr::checkAbort();
    }
  });
}

unsigned ReadAll(void* how, unsigned char** buffer) {
  auto* const data = static_cast<std::string*>(how);
  thread_local std::string current;
  current = std::move(*data);
  data->clear();
  *buffer = reinterpret_cast<unsigned char*>(current.data());
  return static_cast<unsigned>(current.size());
}

int Append(void* how, unsigned char* bytes, unsigned count) {
  static_cast<std::string*>(how)->append(reinterpret_cast<char*>(bytes), count);
  return 0;
}

TEST(IndependentObjectsTest, Blast) {
  std::string plain;
  for (int i = 0; i < 500; ++i) plain += "wheel " + std::to_string(i % 17) + "\n";
  std::string const packed = Implode(plain, true, 6);
  OnThreads([&](int) {
    std::string input = packed;
    std::string output;
    EXPECT_EQ(blast(ReadAll, &input, Append, &output), 0);
    EXPECT_EQ(output, plain);
  });
}

// Without a listener nothing is shared but the list of listeners and the counters, which are only read.
TEST(IndependentObjectsTest, SendWithoutListener) {
  OnThreads([](int thread) {
    for (int i = 0; i < 200; ++i) {
      VRELInfo::Printf("thread %d", thread);
      VRELWarning::Printf("thread %d", thread);
      VRELError error(VREL_E_FILE_OPEN, VRELString(L"part.stp"));
      EXPECT_EQ(VRELErrorEvent::Fire(error, __FILE__, __LINE__), VREL_E_FILE_OPEN);
    }
  });
}

TEST(IndependentObjectsTest, FirstGetEnv) {
  VRELEnvironment* found[kThreadCount] = {};
  OnThreads([&](int thread) { found[thread] = VRELEnvironment::GetEnv(); });
  for (VRELEnvironment const* each : found) EXPECT_EQ(each, VRELEnvironment::_pVariables);
  EXPECT_EQ(VRELEnvironment::GetEnv()->GetReferenceCount(), 1u);
}

}  // namespace
