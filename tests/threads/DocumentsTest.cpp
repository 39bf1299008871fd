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
#include "VRELFormatReaderHandle.h"
#include "VRELOptions.h"
#include "VRELStringOutputStream.h"

namespace {

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
  VRELFormatReaderHandle const owner(request.document);
  VRELStringOutputStream stream;
  VRELOptions options;
  Progress progress;
  BrivetWriteRequest output{request.document, &stream, &options, &progress, "bracket"};
  write(output);
  EXPECT_TRUE(output.result.IsSuccess()) << output.result.GetMessage();
  stream.writeChar('\0');
  return stream.contents();
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
