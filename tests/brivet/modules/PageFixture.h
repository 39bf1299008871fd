// Pages for tests.
#pragma once

#include <string>

#include "BrivetModule.h"
#include "PageWriter.h"
#include "StepFixture.h"
#include "StreamText.h"
#include "WatchedStream.h"

inline BrivetWriteRequest PageRequest(ReadDocument& document, NoProgress& progress, std::string const& title) {
  BrivetWriteRequest request;
  request.document = &*document;
  request.progress = &progress;
  request.title = title;
  return request;
}

// Takes `room` bytes and no more.
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

// A header, all kinds of parameters, two sections, a broken instance, a reference to nothing and an id beyond a long.
inline std::string PageDocument() {
  return "ISO-10303-21;HEADER;FILE_NAME('a<b','',(),(),'','','');FILE_DESCRIPTION(('x'),'');FILE_SCHEMA(('S'));ENDSEC;"
         "DATA;#1=A('it''s \\X2\\30D6000A\\X0\\ & "
         "<co>',.T.,-1.5E-3,\"0F\",$,*,(#2,T(1),()));\n#2=(B()C(#1,#1));#3=X(;\n"
         "ENDSEC;DATA('two');#99999999999999999999=A(#2,#7,#99999999999999999999);ENDSEC;END-ISO-10303-21;";
}
