// Declarations, field offsets and sizes of the narrow string classes, which clients compile against.
#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

#include "Declaration.h"
#include "Gk_RWString.h"
#include "Gk_String.h"
#include "Gk_StringParser.h"
#include "VRELRoloNode.h"

namespace {

using S = Gk_String;
using View = Gk_ROString;
using Writer = Gk_RWString;
using Parser = Gk_StringParser;
using Node = VRELRoloNode;

static_assert(std::is_convertible_v<char const*, S> && std::is_constructible_v<S, char const*, int>);
static_assert(std::is_convertible_v<View const&, S> && std::is_copy_constructible_v<S>);
static_assert(IsDeclared<int (S::*)() const>(&S::len));
static_assert(IsDeclared<int (S::*)() const>(&S::dataLen));
static_assert(IsDeclared<char* (S::*)() const>(&S::operator char*));
static_assert(IsDeclared<char& (S::*)(int)>(&S::operator[]));
static_assert(IsDeclared<char (S::*)(int) const>(&S::operator[]));
static_assert(IsDeclared<void (S::*)(char)>(&S::append));
static_assert(IsDeclared<void (S::*)(char const*)>(&S::append));
static_assert(IsDeclared<void (S::*)(S const&)>(&S::append));
static_assert(IsDeclared<void (S::*)(View const&)>(&S::append));
static_assert(IsDeclared<void (S::*)(int, char const*)>(&S::append));
static_assert(IsDeclared<void (S::*)(int)>(&S::chop));
static_assert(IsDeclared<void (S::*)(int)>(&S::ensure));
static_assert(IsDeclared<S (S::*)(int, int) const>(&S::subset));
static_assert(IsDeclared<void (S::*)(int)>(&S::shrinkEnd));
static_assert(IsDeclared<void (S::*)(int)>(&S::shrinkFront));
static_assert(IsDeclared<void (S::*)()>(&S::clear));
static_assert(IsDeclared<S (S::*)() const>(&S::copy));
static_assert(IsDeclared<Writer (S::*)() const>(&S::dataStr));
static_assert(IsDeclared<Writer (S::*)() const>(&S::rwString));
static_assert(IsDeclared<bool (*)(S const&, S const&)>(&operator<));
static_assert(IsDeclared<bool (*)(S const&, S const&)>(&operator==));

static_assert(std::is_convertible_v<char const*, View> && std::is_constructible_v<View, char const*, int>);
static_assert(std::is_convertible_v<VRELDynamicArray<char> const&, View>);
static_assert(IsDeclared<void (View::*)(int)>(&View::offset));
static_assert(IsDeclared<int (View::*)() const>(&View::len));
static_assert(IsDeclared<char const* (View::*)() const>(&View::operator char const*));
static_assert(IsDeclared<char (View::*)(int) const>(&View::operator[]));
static_assert(IsDeclared<int (View::*)(char) const>(&View::find));
static_assert(IsDeclared<int (View::*)(View const&) const>(&View::find));
static_assert(IsDeclared<int (View::*)(char, int) const>(&View::reverseFind));
static_assert(IsDeclared<int (View::*)(View const&) const>(&View::matchPathString));
static_assert(IsDeclared<bool (View::*)(View const&) const>(&View::matchPathPattern));
static_assert(IsDeclared<bool (*)(View const&, View const&)>(&operator<));
static_assert(IsDeclared<bool (*)(View const&, View const&)>(&operator==));

static_assert(std::is_base_of_v<View, Writer> && std::is_convertible_v<VRELDynamicArray<char> const&, Writer>);
static_assert(IsDeclared<char& (Writer::*)(int)>(&Writer::operator[]));
static_assert(IsDeclared<void (Writer::*)()>(&Writer::toLower));

static_assert(std::is_convertible_v<S const&, Parser> && std::is_convertible_v<VRELString const&, Parser>);
static_assert(IsDeclared<bool (Parser::*)(char const*) const>(&Parser::isString));
static_assert(IsDeclared<int (Parser::*)(int)>(&Parser::countDigits));
static_assert(IsDeclared<int (Parser::*)(int)>(&Parser::countHexDigits));
static_assert(IsDeclared<bool (Parser::*)(int)>(&Parser::isUnsignedInteger));
static_assert(IsDeclared<bool (Parser::*)(int)>(&Parser::isInteger));
static_assert(IsDeclared<bool (Parser::*)(int)>(&Parser::isReal));
static_assert(IsDeclared<double (Parser::*)()>(&Parser::realValue));
static_assert(IsDeclared<int (Parser::*)()>(&Parser::intValue));
static_assert(IsDeclared<unsigned int (Parser::*)()>(&Parser::uIntValue));
static_assert(IsDeclared<void (Parser::*)()>(&Parser::testSpill));

static_assert(IsDeclared<S const& (Node::*)() const>(&Node::getValue));
static_assert(IsDeclared<void (Node::*)(S const&)>(&Node::setValue));
static_assert(IsDeclared<bool (Node::*)(View*) const>(&Node::matchNode));
static_assert(IsDeclared<Node* (Node::*)(View*, bool)>(&Node::findChildNode));
static_assert(IsDeclared<Node* (Node::*)(View*, bool)>(&Node::createNode));
static_assert(std::has_virtual_destructor_v<Node>);

static_assert(!std::is_polymorphic_v<S> && !std::is_polymorphic_v<View> && !std::is_polymorphic_v<Writer>);
static_assert(!std::is_polymorphic_v<Parser>);
static_assert(sizeof(S) == 8 && sizeof(View) == 16 && sizeof(Writer) == 16 && sizeof(Parser) == 24);
static_assert(sizeof(Node) == 24);

TEST(NarrowDeclarationsTest, ViewFieldsKeepOffsets) {
  View view("bolt");
  EXPECT_NE(FieldAt<void*>(view, 0), nullptr);
  EXPECT_EQ(FieldAt<std::int32_t>(view, 8), 0);
  view.offset(3);
  EXPECT_EQ(FieldAt<std::int32_t>(view, 8), 3);
}

TEST(NarrowDeclarationsTest, ParserFieldsKeepOffsets) {
  S const text("12x");
  Parser parser(text);
  EXPECT_EQ(FieldAt<void*>(parser, 0), FieldAt<void*>(text, 0));
  EXPECT_EQ(FieldAt<char const*>(parser, 8), nullptr);
  EXPECT_EQ(FieldAt<char>(parser, 16), 0);
  EXPECT_EQ(parser.intValue(), 12);
  EXPECT_EQ(FieldAt<char const*>(parser, 8), static_cast<char*>(text) + 2);
  EXPECT_EQ(FieldAt<char>(parser, 16), 1);
}

TEST(NarrowDeclarationsTest, NodeFieldsKeepOffsets) {
  Node node;
  EXPECT_EQ(reinterpret_cast<char const*>(&node.getValue()) - reinterpret_cast<char const*>(&node), 8);
  EXPECT_EQ(reinterpret_cast<char const*>(&node.getChildren()) - reinterpret_cast<char const*>(&node), 16);
}

}  // namespace
