#include "VRELStringTokenizer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> Tokens(VRELStringTokenizer const& tokenizer) {
  std::vector<std::string> tokens;
  for (int i = 0; i < tokenizer.GetTokenCount(); ++i) {
    VRELString token;
    EXPECT_EQ(tokenizer.GetToken(i, token), VREL_S_OK);
    tokens.push_back(token.toUtf8());
  }
  return tokens;
}

using Expected = std::vector<std::string>;

TEST(VRELStringTokenizerTest, SplitsAtEachSeparator) {
  struct Row {
    wchar_t const* text;
    Expected tokens;
  };
  for (Row const& row :
       {Row{L"a,b", {"a", "b"}}, Row{L"a,,b", {"a", "", "b"}}, Row{L"a,", {"a", ""}}, Row{L",a", {"", "a"}},
        Row{L"", {}}, Row{L",", {"", ""}}, Row{L",,", {"", "", ""}}, Row{L"a b", {"a b"}},
        Row{L" a , b ", {" a ", " b "}}, Row{L"\u00E9,\U0001F529,x", {"\u00E9", "\U0001F529", "x"}}}) {
    EXPECT_EQ(Tokens(VRELStringTokenizer(VRELString(row.text), L',')), row.tokens) << VRELString(row.text);
  }
}

TEST(VRELStringTokenizerTest, SplitsBytes) {
  EXPECT_EQ(Tokens(VRELStringTokenizer("a;b,c;", L';')), (Expected{"a", "b,c", ""}));
  EXPECT_EQ(Tokens(VRELStringTokenizer("", L';')), Expected{});
  EXPECT_EQ(Tokens(VRELStringTokenizer(static_cast<char const*>(nullptr), L';')), Expected{});
}

TEST(VRELStringTokenizerTest, TokenReturnsReference) {
  VRELStringTokenizer const tokenizer(VRELString(L"a..bc"), L'.');
  EXPECT_EQ(tokenizer.Token(0).toUtf8(), "a");
  EXPECT_EQ(tokenizer.Token(1).toUtf8(), "");
  EXPECT_EQ(tokenizer.Token(2).toUtf8(), "bc");
  EXPECT_EQ(&tokenizer.Token(2), &tokenizer.Token(2));
}

TEST(VRELStringTokenizerTest, TokenEndsAtZero) {
  // UTF-7 encodes U+0000 in other bytes.
  EXPECT_EQ(Tokens(VRELStringTokenizer(VRELString("a+AAA-b,+AAA-,c", "UTF-7"), L',')), (Expected{"a", "", "c"}));
}

TEST(VRELStringTokenizerTest, UninitializedStringHasNoToken) {
  VRELString text(L"a,b");
  VRELString const taken(std::move(text));
  ASSERT_FALSE(text.getIsInitialized());
  EXPECT_EQ(VRELStringTokenizer(text, L',').GetTokenCount(), 0);
}

TEST(VRELStringTokenizerTest, SeparatorIsTruncatedTo16Bits) {
  EXPECT_EQ(Tokens(VRELStringTokenizer(VRELString(L"a,b"), static_cast<wchar_t>(0x1002C))), (Expected{"a", "b"}));
  EXPECT_EQ(Tokens(VRELStringTokenizer(VRELString(L"a\u042Cb,c"), L'\u042C')), (Expected{"a", "b,c"}));
}

TEST(VRELStringTokenizerTest, ZeroSeparatorFindsTerminator) {
  EXPECT_EQ(Tokens(VRELStringTokenizer(VRELString(L"ab"), L'\0')), (Expected{"ab", ""}));
}

TEST(VRELStringTokenizerTest, IndexOutOfRangeFails) {
  VRELStringTokenizer const tokenizer("a,b", L',');
  VRELString out(L"before");
  EXPECT_EQ(tokenizer.GetToken(-1, out), VREL_E_FAIL);
  EXPECT_EQ(tokenizer.GetToken(tokenizer.GetTokenCount(), out), VREL_E_FAIL);
  EXPECT_EQ(out.toUtf8(), "before");
  EXPECT_EQ(VRELStringTokenizer("", L',').GetToken(0, out), VREL_E_FAIL);
}

TEST(VRELStringTokenizerTest, ManyTokens) {
  std::string text;
  for (int i = 0; i < 100000; ++i) text += std::to_string(i) + ",";
  VRELStringTokenizer const tokenizer(text.c_str(), L',');
  EXPECT_EQ(tokenizer.GetTokenCount(), 100001);
  VRELString token;
  EXPECT_EQ(tokenizer.GetToken(99999, token), VREL_S_OK);
  EXPECT_EQ(token.toUtf8(), "99999");
}

}  // namespace
