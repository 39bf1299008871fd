// Tests of the STL module, without a framework: each check that fails prints its line.
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

#include "BrivetModule.h"
#include "ContractVisitor.h"
#include "InputError.h"
#include "Progress.h"
#include "StlDocument.h"
#include "StlWriter.h"
#include "VRELFileHandle.h"
#include "VRELOptions.h"
#include "VRELOutputStream.h"

namespace {

int failures = 0;

void Check(bool isTrue, int line, char const* condition) {
  if (isTrue) return;
  std::printf("StlTests.cpp:%d: %s is false\n", line, condition);
  ++failures;
}
#define CHECK(condition) Check(condition, __LINE__, #condition)

constexpr char kTriangle[] =
    "solid plate\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 2.5 0\nendloop\nendfacet\n"
    "endsolid plate\n";

// Reads a document, and returns what the contract says about its calls.
std::string Read(std::string const& bytes, long& facets) {
  std::ofstream("test.stl", std::ios::binary) << bytes;
  VRELFileHandle const file(new VRELFile("test.stl"));
  StlDocument document(file, "test.stl", nullptr);
  CHECK(document.Open().IsSuccess());
  document.PreprocessData();
  facets = document.GetTypeInstanceCount(1);
  ContractVisitor header(ContractVisitor::Header);
  document.DescribeHeader(header);
  ContractVisitor data(ContractVisitor::Data);
  Progress progress;
  document.Describe(data, progress, false);
  return header.Finish() + data.Finish();
}

std::string Binary(unsigned count, unsigned present) {
  std::string bytes(80, ' ');
  bytes.append(reinterpret_cast<char const*>(&count), 4);
  return bytes.append(present * 50, '\0');
}

// Stream that keeps all bytes.
class Bytes final : public VRELOutputStream {
 public:
  int write(char const* buffer, int count) override {
    text.append(buffer, static_cast<std::size_t>(count));
    return count;
  }
  void flush() override {}
  void close() override {}

  std::string text;
};

// Reads a document, and returns what the writer makes of its product model.
std::string Written(std::string const& bytes, bool isBinary) {
  std::ofstream("test.stl", std::ios::binary) << bytes;
  VRELFileHandle const file(new VRELFile("test.stl"));
  StlDocument document(file, "test.stl", nullptr);
  CHECK(document.Open().IsSuccess());
  document.PreprocessData();
  VRELOptions options;
  options.AddOption(VRELString("Stl.*.Writer.Binary"), isBinary);
  Progress progress;
  Bytes stream;
  BrivetWriteRequest request;
  request.document = &document;
  request.stream = &stream;
  request.options = &options;
  request.progress = &progress;
  request.title = "plate";
  CHECK(WriteStl(request).IsSuccess());
  return stream.text;
}

void TestBadAscii(std::string const& bytes, long line) {
  long facets = 0;
  try {
    Read(bytes, facets);
    Check(false, __LINE__, "no error");
  } catch (InputError const& error) {
    CHECK(error.line == line);
  }
}

}  // namespace

int main() {
  long facets = 0;
  CHECK(Read(kTriangle, facets).empty() && facets == 1);
  CHECK(Read(Binary(3, 3), facets).empty() && facets == 3);
  CHECK(Read(Binary(3, 2), facets).empty() && facets == 2);
  // The normal is that of the corners, which are counterclockwise.
  CHECK(Written(kTriangle, false) ==
        "solid plate\nfacet normal 0. 0. 1.\n outer loop\n  vertex 0. 0. 0.\n  vertex 1. 0. 0.\n  vertex 0. 2.5 0.\n"
        " endloop\nendfacet\nendsolid plate\n");
  CHECK(Written(kTriangle, true).size() == 84 + 50);
  CHECK(Written(Written(kTriangle, true), false) == Written(kTriangle, false));
  TestBadAscii("solid a\nfacet normal 0 0 one\n", 2);
  TestBadAscii("solid a\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0\nendloop", 6);
  TestBadAscii("solid a\n", 2);
  TestBadAscii("plate", 1);
  std::remove("test.stl");
  return failures == 0 ? 0 : 1;
}
