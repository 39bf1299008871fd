// Fuzzes the reader of STEP files. Asserts that the description agrees with the counts and with itself: a document that
// is written from it is read without a loss and has the same description, and the referrers of an instance are those
// that refer to it.
#include "StepFormatReader.h"

#include <cstdint>
#include <string>

#include "Require.h"
#include "StepDocument.h"

namespace {

std::string AroundData(std::string const& data) {
  return "ISO-10303-21;HEADER;FILE_DESCRIPTION((''),'2;1');FILE_NAME('','',('')"
         ",(''),'','','');"
         "FILE_SCHEMA(('S'));ENDSEC;\n" +
         data + (data.find("END-ISO-10303-21;\nSIGNATURE;") == data.npos ? "END-ISO-10303-21;\n" : "");
}

void CheckCounts(StepFormatReader& document, PlainWriter const& data) {
  Require(data.instances == document.GetInstanceCount(), "instances are counted");
  Require(data.complex == document.GetComplexCount(), "complex instances are counted");
  Require(data.escaped == document.GetEscapedCount(), "escapes are counted");
  long ofTypes = 0;
  for (std::size_t i = 0; i < document.GetTypeCount(); ++i) {
    Require(document.GetTypeInstanceCount(i) >= 0 && !document.GetTypeName(i).empty(), "a type has a name");
    ofTypes += document.GetTypeInstanceCount(i);
  }
  Require(ofTypes == data.instances, "every instance has a type");

  PlainWriter onlyEscaped;
  Require(document.DescribeEscaped(onlyEscaped) == VREL_S_OK, "strings with escapes are described");
  Require(onlyEscaped.escaped == data.escaped, "all strings with escapes are described");
}

// Both are in the order of the document.
void CheckReferrers(ReadDocument& read, PlainWriter const& data) {
  PlainWriter withReferrers;
  read.Describe(withReferrers, true);
  Require(withReferrers.text == data.text, "referrers change nothing else");
  Require(withReferrers.referrers == data.references, "referrers are those that refer");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  ReadDocument read(std::string(reinterpret_cast<char const*>(bytes), size));
  PlainWriter header;
  read.document->DescribeHeader(header);
  if (!read.isOpen) {
    Require(!read.document->GetState().IsSuccess(), "a file of another format is refused");
    return 0;
  }
  if (!read.isResolved) return 0;
  PlainWriter data;
  read.Describe(data, false);
  CheckCounts(*read.document, data);
  CheckReferrers(read, data);

  ReadDocument again(AroundData(data.text));
  Require(again.isOpen && again.isResolved, "a plain document is read");
  Require(again.document->GetFailedCount() == 0, "a plain document has no failure");
  PlainWriter same;
  again.Describe(same, false);
  Require(same.text == data.text, "a plain document has the same description");
  return 0;
}
