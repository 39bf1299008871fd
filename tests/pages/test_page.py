"""The page of a document as a whole: sections, policy, network."""
from browser import PageTest, main


class PageTests(PageTest):
    def test_opens_without_errors(self):
        page = self.open_page(self.sample("examples/bracket.stp"))
        self.assertEqual(page.run("return document.compatMode"), "CSS1Compat")
        self.assertEqual(page.run("return document.documentElement.lang"), "en")
        self.assertEqual(page.run("return document.title"), "bracket.stp")
        self.assert_quiet(page)


if __name__ == "__main__":
    main()
