"""Pages of documents that are extreme in one respect: they open, and never stop the tab for long."""
import extreme
from browser import PageTest, main


class ExtremeTests(PageTest):
    arguments = ("--use-angle=swiftshader", "--enable-unsafe-swiftshader", "--ignore-gpu-blocklist")

    def check(self, kind, count, use=lambda page: None):
        path = extreme.write(kind, count, self.folder / (kind + ".stp"))
        page = self.assert_short_tasks(self.write_page(path), use)
        self.assertLess(page.count("*"), 20000)
        self.assert_quiet(page)
        return page

    def search(self, text):
        def use(page):
            page.go("#search=" + text)
            page.wait(f"return document.getElementById('search').dataset.done === '{text}'")
        return use

    def drawn(self, page):
        page.wait("return document.querySelector('#view canvas').dataset.frame === 'drawn'", 120)

    def facts(self, page):
        return dict(zip(page.texts("#summary dt"), page.texts("#summary dd")))

    def test_many_edges(self):
        def use(page):
            self.drawn(page)
            page.run("document.querySelector('#view .toolbar button').click()")
            self.drawn(page)
        page = self.check("edges", 300000, use)
        self.assertEqual(page.count("#view .stage .note"), 0)

    def test_many_triangles(self):
        self.check("triangles", 300000, self.drawn)

    def test_many_products(self):
        def use(page):
            page.run("document.querySelector('.toggle').click()")
            page.go("#node=0/99999")
            page.wait("return document.querySelector('[aria-selected=true] .name')?.textContent === 'o99999'")
        page = self.check("products", 100000, use)
        self.assertEqual(self.facts(page)["Products"], "100001")

    def test_many_places(self):
        page = self.check("occurrences", 300000)
        self.assertIn("The picture shows 200,000 of 300,000 parts.", page.texts("#view .note"))
        self.assertEqual(page.text(".times"), " ×300000")

    def test_many_shapes(self):
        self.check("shapes", 10000, self.drawn)

    def test_many_instances(self):
        page = self.check("instances", 1000000, self.search("v999999"))
        self.assertEqual(page.text("#search-hits"), "1 hit")

    def test_long_names(self):
        page = self.check("name", 1000000, self.search("leaf"))
        self.assertLess(len(page.text("main")), 300000)

    def test_long_strings(self):
        page = self.check("text", 1000000, self.search("absent"))
        self.assertEqual(page.text("#search-hits"), "0 hits")


if __name__ == "__main__":
    main()
