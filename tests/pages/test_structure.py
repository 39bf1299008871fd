"""The tree of the structure: counts, keyboard, selection; and the tables of the model."""
from browser import Page, PageTest, main  # skips the tests if selenium is missing

from selenium.webdriver.common.keys import Keys

from assembly import Assembly


def cart():
    """A cart with four wheels, each with a tyre and two bolts, and one frame; instances of products and uses by name."""
    assembly = Assembly()
    names = {name: assembly.product(name) for name in ("cart", "wheel", "frame", "tyre", "bolt")}
    names["uses"] = [assembly.use(names["cart"], names["wheel"], f"w{i}") for i in range(4)]
    names["f"] = assembly.use(names["cart"], names["frame"], "f")
    names["t"] = assembly.use(names["wheel"], names["tyre"])
    names["bolts"] = [assembly.use(names["wheel"], names["bolt"], f"b{i}") for i in range(2)]
    return assembly, names


def name_of(row):
    return row.split("#")[0].strip()


class StructureTests(PageTest):
    def open_cart(self, fragment=""):
        assembly, names = cart()
        return self.open_page(self.write_document(assembly.text), fragment=fragment), names

    def rows(self, page):
        return page.run("""return [...document.querySelectorAll('[role=treeitem]')].map(row => [
            Number(row.getAttribute('aria-level')), row.querySelector('.name').textContent,
            (row.querySelector('.times') || {textContent: ''}).textContent.trim(), row.getAttribute('aria-expanded')])""")

    def test_groups_equal_children(self):
        page, names = self.open_cart()
        self.assertEqual(page.count("[role=tree]"), 1)
        self.assertEqual(self.rows(page), [[1, "cart", "", "true"], [2, "wheel", "×4", "true"], [3, "tyre", "", None],
                                           [3, "bolt", "×2", None], [2, "f", "", None]])
        links = page.run("""return [...document.querySelectorAll('[role=treeitem]')[1].querySelectorAll('a')]
            .map(each => each.getAttribute('href'))""")
        self.assertEqual(links, [f"#{names['wheel']}", f"#{names['uses'][0]}"])
        page.run("document.querySelectorAll('[role=treeitem]')[1].querySelector('.name').click()")
        links = page.run("return [...document.querySelectorAll('.details dd:last-child a')].map(each => each.getAttribute('href'))")
        self.assertEqual(links[-4:], [f"#{use}" for use in names["uses"]])
        page.run("document.querySelectorAll('[role=treeitem]')[1].querySelector('a').click()")
        page.wait(f"return document.querySelector('.item.current')?.id === '{names['wheel']}'")
        self.assert_quiet(page)

    def test_counts_of_summary(self):
        page, _ = self.open_cart()
        facts = dict(zip(page.texts("#summary dt"), page.texts("#summary dd")))
        self.assertEqual((facts["Products"], facts["Occurrences"]), ("5", "8"))

    def test_keyboard(self):
        page, _ = self.open_cart()
        page.run("document.querySelector('[role=treeitem]').focus()")

        def press(key):
            self.driver.switch_to.active_element.send_keys(key)
            return page.run("return document.activeElement.querySelector('.name')?.textContent")

        self.assertEqual(press(Keys.ARROW_DOWN), "wheel")
        self.assertEqual(press(Keys.ARROW_LEFT), "wheel")
        self.assertEqual([row[1] for row in self.rows(page)], ["cart", "wheel", "f"])
        self.assertEqual(press(Keys.ARROW_RIGHT), "wheel")
        self.assertEqual(press(Keys.ARROW_RIGHT), "tyre")
        self.assertEqual(press(Keys.END), "f")
        self.assertEqual(press(Keys.ARROW_UP), "bolt")
        self.assertEqual(press(Keys.ARROW_LEFT), "wheel")
        self.assertEqual(press(Keys.HOME), "cart")
        self.assertEqual(press(Keys.ARROW_DOWN), "wheel")
        press(Keys.ENTER)
        self.assertEqual(page.run("""return document.querySelector('[aria-selected=true] .name').textContent"""), "wheel")
        self.assertEqual(page.count('[role=treeitem][tabindex="0"]'), 1)

    def test_selection_is_announced(self):
        page, names = self.open_cart()
        page.run("window.seen = []; document.addEventListener('brivet-select', event => seen.push(event.detail))")
        page.run("document.querySelectorAll('[role=treeitem] .name')[3].click()")
        self.assertEqual(page.run("return seen"), [{"path": "0/0/6", "origin": "tree", "levels": [[0], [0, 1, 2, 3], [6, 7]]}])
        self.assertIn("bolt", page.text(".details"))

    def test_selection_elsewhere_is_revealed(self):
        page, _ = self.open_cart()
        page.run("document.querySelectorAll('[role=treeitem]')[0].querySelector('.toggle').click()")
        self.assertEqual([row[1] for row in self.rows(page)], ["cart"])
        # The second bolt of the third wheel.
        page.run("""document.dispatchEvent(new CustomEvent('brivet-select',
            {detail: {path: '0/2/7', origin: 'view'}}))""")
        self.assertEqual(page.text("[aria-selected=true] .name"), "bolt")
        page.run("document.dispatchEvent(new CustomEvent('brivet-select', {detail: {path: null, origin: 'view'}}))")
        self.assertEqual(page.count("[aria-selected=true]"), 0)
        for path in ("9", "0/99", "0/2/0", "x"):
            page.run("""document.dispatchEvent(new CustomEvent('brivet-select',
                {detail: {path: arguments[0], origin: 'view'}}))""", path)
        page.go("#node=0/1")
        page.wait("return document.querySelector('[aria-selected=true] .name')?.textContent === 'wheel'")
        self.assert_quiet(page)

    def test_tables_of_model(self):
        assembly = Assembly()
        part = assembly.product("part")
        owner = assembly.attribute(part, "Supplier", "Example <Works>")
        layer = assembly.layer("7", "hidden lines", part)
        page = self.open_page(self.write_document(assembly.text))
        self.assertEqual(page.count("#properties tbody tr"), 1)
        cells = page.texts("#properties tbody td")
        self.assertIn("Example <Works>", cells[1])
        self.assertEqual(cells[-1], f"#{owner}")
        self.assertEqual(page.texts("#layers tbody td"), ["7", "hidden lines", "1", f"#{layer}"])
        self.assertEqual(page.count("#annotations"), 0)

    def test_wide_and_deep_structures(self):
        assembly = Assembly()
        top = assembly.product("top")
        for i in range(3000):
            assembly.use(top, assembly.product(f"leaf{i}"))
        parent = assembly.product("level0")
        assembly.use(top, parent)
        for i in range(1, 500):
            child = assembly.product(f"level{i}")
            assembly.use(parent, child)
            parent = child
        page = self.open_page(self.write_document(assembly.text))
        self.assertLess(page.count("*"), 20000)
        self.assertEqual(page.count("[role=treeitem]"), 1)
        page.run("document.querySelector('.toggle').click()")
        self.assertEqual(page.count("[role=treeitem]"), 202)
        page.run("document.querySelector('.row.more').click()")
        self.assertEqual(page.count("[role=treeitem]"), 402)
        # The use of level0 is the one after 3000 leaves; its chain has 499 more.
        page.go("#node=0/" + "/".join(str(3000 + i) for i in range(500)))
        page.wait("return document.querySelector('[aria-selected=true] .name')?.textContent === 'level499'")
        self.assert_quiet(page)


if __name__ == "__main__":
    main()
