"""Pages of documents that try to execute something, or that are very large in one respect."""
from assembly import Assembly
from browser import PageTest, main

TRAPS = ["<script>trap()</script>", "</script><script>trap()</script>", "<img src=x onerror=trap()>", "--><script>trap()</script>",
         "\"'' onmouseover=trap() x=\"", "javascript:trap()", "<svg onload=trap()>", "</title><script>trap()</script>",
         "</style><script>trap()</script>", "{{trap()}}", "${trap()}", "<a href=javascript:trap()>x</a>", "]]><script>trap()</script>",
         "\\X2\\202E20660000\\X0\\", "\\X\\00\\X\\01\\X\\07", "a\\X2\\FEFF\\X0\\b"]


class HostileTests(PageTest):
    def test_strings_never_execute(self):
        assembly = Assembly()
        parent = assembly.product("top")
        for trap in TRAPS:
            part = assembly.product(trap)
            assembly.use(parent, part, trap)
            assembly.attribute(part, trap, trap)
            assembly.layer(trap, trap, part)
        trap = "<img src=x onerror=trap()>"
        header = (f"FILE_DESCRIPTION(('{trap}'),'{trap}');FILE_NAME('{trap}','{trap}',('{trap}'),('{trap}'),'{trap}',"
                  f"'{trap}','{trap}');FILE_SCHEMA(('{trap}'));")
        path = self.write_document(assembly.text, "<img src=x onerror=trap()> \u202e.stp", header)
        page = self.open_page(path)
        self.assertIn("<img src=x onerror=trap()>", page.text("h1"))
        self.assertNotIn("\u202e", page.text("h1"))
        self.assertEqual(page.count("img, iframe, object, embed, [onerror], [onload], [onmouseover], a[href^=javascript]"), 0)
        for row in page.find_all("[role=treeitem]")[:3]:
            page.run("arguments[0].querySelector('.name').click()", row)
        for fragment in ("#search=trap()", "#search=%3Cimg%20src%3Dx%20onerror%3Dtrap()%3E", "#search=%", "#<script>trap()</script>",
                         "#node=<script>", "#item=<b>", "#javascript:trap()", "#search=" + "x" * 5000):
            page.go(fragment)
            page.wait("return true")
        page.go("#search=onerror")
        page.wait("return document.getElementById('search').dataset.done === 'onerror'")
        self.assertEqual(page.count(".hits li"), 5)
        text = page.run("return document.body.innerText")
        for control in "\u202e\u2066\x00\x01\x07":
            self.assertNotIn(control, text)
        self.assertIn("<U+202E>", text)
        self.assert_quiet(page)

    def test_long_names_are_cut(self):
        assembly = Assembly()
        top = assembly.product("n" * 1000000)
        assembly.use(top, assembly.product("leaf"), "m" * 1000000)
        page = self.open_page(self.write_document(assembly.text))
        self.assertLess(len(page.text("#structure")), 20000)
        self.assertLess(page.count("*"), 20000)
        self.assert_quiet(page)

    def test_many_products_and_occurrences(self):
        assembly = Assembly()
        top = assembly.product("top")
        for i in range(20000):
            assembly.use(top, assembly.product(f"p{i}"))
        leaf = assembly.product("leaf")
        for i in range(50000):
            assembly.use(top, leaf)
        page = self.open_page(self.write_document(assembly.text))
        self.assertLess(page.count("*"), 20000)
        facts = dict(zip(page.texts("#summary dt"), page.texts("#summary dd")))
        self.assertEqual((facts["Products"], facts["Occurrences"]), ("20002", "70000"))
        # 200 ms on an idle machine.
        self.assertLess(page.watched()["longest"], 1500)
        self.assert_quiet(page)

    def test_nothing_to_show(self):
        page = self.open_page(self.write_document(""))
        self.assertEqual(page.run("return [...document.querySelectorAll('main > section')].map(each => each.id)"),
                         ["summary", "header"])
        self.assert_quiet(page)


if __name__ == "__main__":
    main()
