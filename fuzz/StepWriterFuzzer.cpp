// Fuzzes the writer of STEP files with documents; the first byte is the length of lines. Asserts that the output is
// read without a loss, has the same data, and is written the same again.
#include "StepWriter.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "BrivetModule.h"
#include "FuzzInput.h"
#include "Require.h"
#include "StepDocument.h"
#include "VRELOptions.h"
#include "VRELOutputStream.h"

namespace {

// Stores what is written.
class TextStream final : public VRELOutputStream {
 public:
  int write(char const* buffer, int count) override {
    text.append(buffer, static_cast<std::size_t>(count));
    return count;
  }
  void flush() override {}
  void close() override {}

  std::string text;
};

std::string Written(ReadDocument& read, VRELOptions& options) {
  TextStream stream;
  Progress progress;
  BrivetWriteRequest request;
  request.document = read.document;
  request.stream = &stream;
  request.options = &options;
  request.progress = &progress;
  Require(WriteStep(request) == VREL_S_OK, "a document that was resolved is written");
  return stream.text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  FuzzInput input(bytes, size);
  VRELOptions options;
  options.AddOption(L"FileLineLength", input.Number(256));
  ReadDocument first(input.Rest());
  if (!first.isOpen || !first.isResolved) return 0;
  PlainWriter data;
  first.Describe(data, false);
  std::string const written = Written(first, options);

  ReadDocument second(written);
  Require(second.isOpen && second.isResolved, "the output is read");
  Require(second.document->GetFailedCount() == 0, "the output has no failure");
  PlainWriter same;
  second.Describe(same, false);
  Require(same.text == data.text, "what is written has the same data");
  bool const isWhole = first.document->GetLosses().empty();
  Require((Written(second, options) == written) == isWhole, "what is written is written the same, but for the comment");
  return 0;
}
