#include "Gk_Nest.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <type_traits>

#include "ChildProcess.h"
#include "Gk_ErrMgr.h"
#include "Gk_Observable.h"
#include "Gk_Option.h"
#include "VRELAbortException.h"

namespace {

TEST(Gk_NestTest, RootIsNamedSlash) {
  static_assert(std::is_base_of_v<VRELRoloNode, Gk_Nest>);
  Gk_Nest& root = Gk_Nest::fetchRoot();
  EXPECT_TRUE(root.getValue() == "/");
  EXPECT_EQ(&Gk_Nest::fetchRoot(), &root);
  // Single and not virtual inheritance.
  EXPECT_EQ(static_cast<void*>(static_cast<VRELRoloNode*>(&root)), static_cast<void*>(&root));
}

TEST(Gk_NestTest, FoldersAreNests) {
  Gk_ROString path("Gk_NestTest/a/name");
  Gk_Nest* const made = Gk_Nest::fetch(&path, true);
  ASSERT_NE(made, nullptr);
  EXPECT_TRUE(made->getValue() == "a");
  EXPECT_EQ(made->getOptions().size(), 0);
  EXPECT_EQ(path.text(), "name");
}

TEST(Gk_NestTest, FetchOptionByPath) {
  EXPECT_EQ(Gk_Nest::fetchOption("Gk_NestTest.options/a/name", false), nullptr);
  // Nothing was made.
  Gk_ROString folder("Gk_NestTest.options/");
  EXPECT_EQ(Gk_Nest::fetch(&folder, false), &Gk_Nest::fetchRoot());

  Gk_Option* const option = Gk_Nest::fetchOption("Gk_NestTest.options/a/name", true);
  ASSERT_NE(option, nullptr);
  EXPECT_STREQ(option->getValue(), "name");
  EXPECT_EQ(Gk_Nest::fetchOption("Gk_NestTest.options/a/name", true), option);
  EXPECT_EQ(Gk_Nest::fetchOption("Gk_NestTest.options/a/name", false), option);
  EXPECT_EQ(Gk_Nest::fetchOption("/Gk_NestTest.options/a/name", false), option);
  Gk_Option* const other = Gk_Nest::fetchOption("Gk_NestTest.options/a/Name", true);
  EXPECT_NE(other, option);

  Gk_ROString path("Gk_NestTest.options/a/");
  Gk_Nest const* const nest = Gk_Nest::fetch(&path, false);
  ASSERT_EQ(nest->getOptions().size(), 2);
  EXPECT_EQ(nest->getOptions()[0], option);
  EXPECT_EQ(nest->getOptions()[1], other);
  // The name of a folder is not an option.
  EXPECT_EQ(Gk_Nest::fetchOption("Gk_NestTest.options/a", false), nullptr);
  EXPECT_EQ(Gk_Nest::fetchOption("", false), nullptr);
}

TEST(Gk_NestTest, OddPaths) {
  struct {
    char const* path;
    char const* name;
  } const rows[] = {
      {"Gk_NestTest.odd/", ""},      // the option of the folder with an empty name
      {"Gk_NestTest.odd//x", "/x"},  // an empty segment is no folder
      {"Gk_NestTest.plain", "Gk_NestTest.plain"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.path);
    Gk_Option* const option = Gk_Nest::fetchOption(row.path, true);
    ASSERT_NE(option, nullptr);
    EXPECT_EQ(option->getValue().text(), row.name);
    EXPECT_EQ(Gk_Nest::fetchOption(row.path, true), option);
    EXPECT_EQ(Gk_Nest::fetchOption(row.path, false), option);
  }
}

TEST(Gk_NestTest, FetchOptionFindsLatest) {
  Gk_Option* const first = Gk_Nest::fetchOption("Gk_NestTest.latest/first", true);
  Gk_Option* const second = Gk_Nest::fetchOption("Gk_NestTest.latest/second", true);
  // An option keeps its cached name, so that an assignment makes two options of one name.
  *first = *second;
  EXPECT_EQ(Gk_Nest::fetchOption("Gk_NestTest.latest/second", false), second);
  *second = *Gk_Nest::fetchOption("Gk_NestTest.latest/third", true);
  EXPECT_EQ(Gk_Nest::fetchOption("Gk_NestTest.latest/second", false), first);
}

TEST(Gk_NestTest, ObservablesAndOptions) {
  EXPECT_EQ(Gk_Nest::fetchObservable("Gk_NestTest.both/name", false), nullptr);
  Gk_Option* const option = Gk_Nest::fetchOption("Gk_NestTest.both/name", true);
  EXPECT_EQ(Gk_Nest::fetchObservable("Gk_NestTest.both/name", false), nullptr);
  Gk_Observable* const observable = Gk_Nest::fetchObservable("Gk_NestTest.both/name", true);
  ASSERT_NE(observable, nullptr);
  EXPECT_STREQ(observable->getValue(), "name");
  EXPECT_EQ(Gk_Nest::fetchObservable("Gk_NestTest.both/name", true), observable);
  EXPECT_EQ(Gk_Nest::fetchObservable("Gk_NestTest.both/name", false), observable);
  EXPECT_NE(Gk_Nest::fetchObservable("Gk_NestTest.both/other", true), observable);
  EXPECT_EQ(Gk_Nest::fetchOption("Gk_NestTest.both/name", false), option);
}

TEST(Gk_NestTest, CreatePollsAbortFlag) {
  Gk_Option* const option = Gk_Nest::fetchOption("Gk_NestTest.abort/name", true);
  struct {
    char const* text;
    void (*create)();
  } const rows[] = {
      {"a new option", [] { Gk_Nest::fetchOption("Gk_NestTest.abort/new", true); }},
      {"an option that is there", [] { Gk_Nest::fetchOption("Gk_NestTest.abort/name", true); }},
      {"an observable", [] { Gk_Nest::fetchObservable("Gk_NestTest.abort/new", true); }},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.text);
    Gk_ErrMgr::setAbort();
    EXPECT_THROW(row.create(), VRELAbortException);
    EXPECT_FALSE(Gk_ErrMgr::shouldAbort());
  }
  EXPECT_EQ(Gk_Nest::fetchOption("Gk_NestTest.abort/new", false), nullptr);
  EXPECT_EQ(Gk_Nest::fetchObservable("Gk_NestTest.abort/new", false), nullptr);

  Gk_ErrMgr::setAbort();
  EXPECT_EQ(Gk_Nest::fetchOption("Gk_NestTest.abort/name", false), option);
  EXPECT_TRUE(Gk_ErrMgr::shouldAbort());
  EXPECT_THROW(Gk_ErrMgr::checkAbort(), VRELAbortException);
}

TEST(Gk_NestTest, PlainNodeHasNoOptions) {
  auto* const plain = new VRELRoloNode();
  plain->setValue(Gk_String("Gk_NestTest.node"));
  Gk_Nest::fetchRoot().getChildren().add(plain);
  Gk_ROString path("Gk_NestTest.node/name");
  EXPECT_EQ(Gk_Nest::fetch(&path, false), nullptr);
  EXPECT_EQ(Gk_Nest::fetchOption("Gk_NestTest.node/name", false), nullptr);
  EXPECT_EQ(Gk_Nest::fetchOption("Gk_NestTest.node/name", true), nullptr);
  EXPECT_EQ(Gk_Nest::fetchObservable("Gk_NestTest.node/name", true), nullptr);
}

TEST(Gk_NestTest, TreeIsDestroyedAtExit) {
  struct Node : VRELRoloNode {
    ~Node() override { std::fputs("gone", stdout); }
  };
  ChildResult const child = RunInChild([] {
    Gk_Nest::fetchRoot().getChildren().add(new Node());
    return 0;
  });
  EXPECT_EQ(child.output, "gone");
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
}

TEST(Gk_NestTest, FolderOwnsItems) {
  // Items that are not deleted would be reported as leaks.
  Gk_Nest nest;
  EXPECT_EQ(nest.getValue().len(), 0);
  Gk_ROString path("a/b/name");
  ASSERT_NE(dynamic_cast<Gk_Nest*>(nest.createNode(&path, true)), nullptr);
}

}  // namespace
