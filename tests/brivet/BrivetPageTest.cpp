// The plain page of the shipped document in a real browser. The tests of the interactive page are in tests/pages.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "BrivetFixture.h"
#include "HeadlessBrowser.h"

namespace {

// Checks that every link has an anchor and clicks one, and writes the findings to the title.
constexpr char kScript[] = R"(<SCRIPT>
addEventListener('load', () => {
  const links = [...document.querySelectorAll('a[href]')];
  const lost = links.filter(link => document.getElementsByName(link.hash.slice(1)).length != 1);
  const link = links.find(each => each.hash == '#48');
  const target = document.getElementsByName('48')[0];
  const before = target.getBoundingClientRect().top;
  link.click();
  setTimeout(() => {
    const after = target.getBoundingClientRect().top;
    const marked = getComputedStyle(target).backgroundColor;
    document.title = [links.length > 500, lost.length, location.hash, before > innerHeight,
                      Math.abs(after) < innerHeight, marked].join(' ');
  }, 500);
});
</SCRIPT>)";

class BrivetPageTest : public BrivetFixture {};

}  // namespace

TEST_F(BrivetPageTest, LinksLeadToInstances) {
  if (!HasHeadlessBrowser()) GTEST_SKIP() << "chromium is missing";
  ASSERT_EQ(Brivet({BracketPath(), "page.html", "-set", "Html.*.Writer.Plain=On"}).exitStatus, 0);
  std::string page = folder.Read("page.html");
  page.insert(page.rfind("</BODY>"), kScript);
  Write("look.html", page);
  EXPECT_THAT(OpenPage(folder.Path("look.html")),
              testing::HasSubstr("<title>true 0 #48 true true rgb(255, 230, 128)</title>"));
}
