// Pages for tests.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <string>

#include "BrivetModule.h"
#include "CheckedOutputStream.h"
#include "PageWriter.h"
#include "StepFixture.h"
#include "StreamText.h"

inline BrivetWriteRequest PageRequest(ReadDocument& document, Progress& progress, std::string const& title) {
  BrivetWriteRequest request;
  request.document = &*document;
  request.progress = &progress;
  request.title = title;
  request.shownName = "folder/" + title;
  return request;
}

// Accepts `room` bytes and no more.
class FullStream final : public VRELOutputStream {
 public:
  explicit FullStream(int bytes) : room(bytes) {}
  int write(char const* /*buffer*/, int count) override {
    int const taken = count < room ? count : room;
    room -= taken;
    return taken;
  }
  void flush() override {}
  void close() override {}

 private:
  int room;
};

// Keeps the size of the largest piece that it is given.
class PieceStream final : public VRELOutputStream {
 public:
  int write(char const* /*buffer*/, int count) override {
    largest = std::max(largest, count);
    total += count;
    return count;
  }
  void flush() override {}
  void close() override {}

  int largest = 0;
  long total = 0;
};

// A document of one instance, of more than a megabyte.
inline std::string LongDocument() {
  std::string values;
  for (int i = 0; i < 200'000; ++i) values += "12345,";
  return DocumentText("#1=A((" + values + "1));");
}

// A document whose last instance, which is part of the product model, is beyond the bytes that a reader keeps, so that
// it is read again from the file.
inline std::string ChangeableText() {
  return DocumentText("#1=A();" + ("/*" + std::string(5U << 20U, ' ') + "*/") + "#3=PRODUCT_DEFINITION('','',#1,$);");
}

// Cuts the last instance off the file of such a document.
inline void CutChangeableText(ReadDocument& document) {
  EXPECT_EQ(truncate(document.Path().c_str(), static_cast<off_t>(ChangeableText().find("#3="))), 0);
}

// A header, all kinds of parameters, two sections, a broken instance, a reference to nothing and an id beyond a long.
inline std::string PageDocument() {
  return "ISO-10303-21;HEADER;FILE_NAME('a<b','',(),(),'','','');FILE_DESCRIPTION(('x'),'');FILE_SCHEMA(('S'));ENDSEC;"
         "DATA;#1=A('it''s \\X2\\30D6000A\\X0\\ & "
         "<co>',.T.,-1.5E-3,\"0F\",$,*,(#2,T(1),()));\n#2=(B()C(#1,#1));#3=X(;\n"
         "ENDSEC;DATA('two');#99999999999999999999=A(#2,#7,#99999999999999999999);ENDSEC;END-ISO-10303-21;";
}
