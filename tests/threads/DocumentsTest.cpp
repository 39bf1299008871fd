// Documents that are translated at the same time, each on its own thread, by the format modules.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#ifdef BRIVET_STEP_MODULE

#include "BrivetModule.h"
#include "Document.h"
#include "OnThreads.h"
#include "Progress.h"
#include "VRELFilePath.h"
#include "VRELFormatReaderHandle.h"
#include "VRELOptions.h"
#include "VRELOutputStream.h"
#include "VRELReader.h"

namespace {

class StringStream : public VRELOutputStream {
 public:
  int write(char const* bytes, int count) override {
    text.append(bytes, static_cast<std::size_t>(count));
    return count;
  }
  void flush() override {}
  void close() override {}

  std::string text;
};

template <class Function>
Function* Find(char const* module, char const* name) {
  void* const handle = dlopen(module, RTLD_NOW);
  EXPECT_NE(handle, nullptr) << dlerror();
  return handle == nullptr ? nullptr : reinterpret_cast<Function*>(dlsym(handle, name));
}

std::string Translate(BrivetOpenFunction* open, BrivetWriteFunction* write) {
  BrivetOpenRequest request{VRELFileHandle(new VRELFile(VRELFilePath(SAMPLE_DOCUMENT))), "bracket.stp"};
  open(request);
  EXPECT_TRUE(request.result.IsSuccess()) << request.result.GetMessage();
  if (request.document == nullptr) return "";
  VRELFormatReaderHandle owner(request.document);
  VRELReader reader(owner);
  reader.ReadHeaderSection();
  reader.ReadDataSection();
  reader.Resolve();
  StringStream stream;
  VRELOptions options;
  Progress progress;
  BrivetWriteRequest output;
  output.document = request.document;
  output.stream = &stream;
  output.options = &options;
  output.progress = &progress;
  output.title = "bracket";
  write(output);
  EXPECT_TRUE(output.result.IsSuccess()) << output.result.GetMessage();
  return stream.text;
}

TEST(DocumentsTest, EightPagesAtOnce) {
  auto* const open = Find<BrivetOpenFunction>(BRIVET_STEP_MODULE, BRIVET_OPEN);
  auto* const write = Find<BrivetWriteFunction>(BRIVET_HTML_MODULE, BRIVET_WRITE);
  ASSERT_NE(open, nullptr);
  ASSERT_NE(write, nullptr);
  std::string const expected = Translate(open, write);
  EXPECT_GT(expected.size(), 1000u);
  OnThreads([&](int) { EXPECT_EQ(Translate(open, write), expected); });
}

TEST(DocumentsTest, EightFilesAtOnce) {
  auto* const open = Find<BrivetOpenFunction>(BRIVET_STEP_MODULE, BRIVET_OPEN);
  auto* const write = Find<BrivetWriteFunction>(BRIVET_STEP_MODULE, BRIVET_WRITE);
  ASSERT_NE(open, nullptr);
  ASSERT_NE(write, nullptr);
  std::string const expected = Translate(open, write);
  EXPECT_GT(expected.size(), 1000u);
  OnThreads([&](int) { EXPECT_EQ(Translate(open, write), expected); });
}

}  // namespace

#else

TEST(DocumentsTest, NeedsModules) {
  GTEST_SKIP() << "built without brivet";
}

#endif
