#include "ContractVisitor.h"

#include <gtest/gtest.h>

namespace {

using Id = DocumentVisitor::Id;

Id IdOf(std::string_view digits, std::int64_t number) {
  return {digits, number, 0};
}

DocumentVisitor::Text TextOf(std::string_view encoded, std::string_view utf8) {
  DocumentVisitor::Text text;
  text.encoded = encoded;
  text.utf8 = utf8;
  return text;
}

// Returns the messages about one record of #7, whose values the function passes.
std::string InRecord(void (*pass)(DocumentVisitor&)) {
  ContractVisitor visitor(ContractVisitor::Data);
  visitor.BeginSection();
  visitor.BeginInstance(IdOf("7", 7), false);
  visitor.BeginRecord("A_1");
  pass(visitor);
  visitor.EndRecord();
  visitor.EndInstance();
  visitor.EndSection();
  return visitor.Finish();
}

}  // namespace

TEST(ContractVisitorTest, AcceptsValidCalls) {
  EXPECT_EQ(InRecord([](DocumentVisitor& visitor) {
              visitor.Integer("-12");
              for (char const* real : {"1.", "-0.5", "1.5E-3", "2.E+7"}) visitor.Real(real);
              visitor.String(TextOf("a", "a"));
              visitor.Enumeration("MILLI");
              visitor.Binary("0F");
              visitor.Reference(IdOf("7", 7), true);
              visitor.Reference(IdOf("8", 8), false);
              visitor.BeginList();
              visitor.BeginTyped("LENGTH");
              visitor.Unset();
              visitor.EndTyped();
              visitor.EndList();
            }),
            "");
  ContractVisitor header(ContractVisitor::Header);
  header.BeginRecord("FILE_NAME");
  header.String(TextOf("a", "a"));
  header.EndRecord();
  EXPECT_EQ(header.Finish(), "");
}

TEST(ContractVisitorTest, NamesBrokenRuleOfValues) {
  EXPECT_EQ(InRecord([](DocumentVisitor& visitor) { visitor.Real("1"); }), "#7: Real '1' has no decimal point\n");
  EXPECT_EQ(InRecord([](DocumentVisitor& visitor) { visitor.Real(".5"); }),
            "#7: Real '.5' has no digits before the decimal point\n");
  EXPECT_EQ(InRecord([](DocumentVisitor& visitor) { visitor.Real("1.5E"); }),
            "#7: Real '1.5E' has no digits after E\n");
  EXPECT_EQ(InRecord([](DocumentVisitor& visitor) { visitor.Real("1.5e3"); }), "#7: Real '1.5e3' is no number\n");
  EXPECT_EQ(InRecord([](DocumentVisitor& visitor) { visitor.Integer("1.5"); }),
            "#7: Integer '1.5' is no decimal number\n");
  EXPECT_EQ(InRecord([](DocumentVisitor& visitor) { visitor.Enumeration(".MM."); }),
            "#7: Enumeration '.MM.' is not of upper-case letters, digits and '_'\n");
  EXPECT_EQ(InRecord([](DocumentVisitor& visitor) { visitor.Binary("4"); }),
            "#7: Binary '4' is not of upper-case hexadecimal digits after one from 0 to 3\n");
  EXPECT_EQ(InRecord([](DocumentVisitor& visitor) { visitor.String(TextOf("a", "\xFF")); }),
            "#7: String: utf8 is not UTF-8\n");
  EXPECT_EQ(InRecord([](DocumentVisitor& visitor) { visitor.Reference(IdOf("08", 8), false); }),
            "#7: id '08' is not decimal, or has leading zeros\n#7: id '08' has the number 8\n");
  EXPECT_EQ(InRecord([](DocumentVisitor& visitor) { visitor.Reference(IdOf("9", 9), true); }),
            "Reference #9 is defined, but no instance has it\n");
  EXPECT_EQ(InRecord([](DocumentVisitor& visitor) {
              visitor.BeginTyped("A");
              visitor.EndTyped();
            }),
            "#7: BeginTyped contains no value\n");
}

TEST(ContractVisitorTest, NamesBrokenRuleOfNesting) {
  EXPECT_EQ(InRecord([](DocumentVisitor& visitor) { visitor.EndList(); }),
            "#7: EndList does not end what was begun last\n");
  EXPECT_EQ(InRecord([](DocumentVisitor& visitor) {
              visitor.EndRecord();
              visitor.BeginRecord("B");
            }),
            "#7: the simple instance has 2 records\n");
  ContractVisitor visitor(ContractVisitor::Data);
  visitor.Unset();
  visitor.BeginInstance(IdOf("1", 1), false);
  visitor.EndInstance();
  visitor.BeginSection();
  EXPECT_EQ(visitor.Finish(),
            "Unset is outside a record\n#1: BeginInstance outside a section is not allowed here\n"
            "#1: the instance has no record\nsomething was begun and not ended: S\n");
}

TEST(ContractVisitorTest, LimitsMessages) {
  ContractVisitor visitor(ContractVisitor::Data);
  for (int i = 0; i < 1000; ++i) visitor.Unset();
  EXPECT_EQ(visitor.Finish().size(), ContractVisitor::kMessageLimit * sizeof "Unset is outside a record");
}
