"""Instances of a page: navigation by the address, search, long documents and long items."""
from browser import Page, PageTest, main

SMALL = ("#10=LINE('one',$);\n#12=POINT('Two & <b>',#10);\n#11=(A(#12)B('THREE'));\n"
         "#99999999999999999999=C(#10,#99999999999999999999);\n#123=LINE('12',#7);\n")


def search(page, text):
    page.run("""const input = document.querySelector('#search input');
        delete document.getElementById('search').dataset.done;
        input.value = arguments[0]; input.form.requestSubmit();""", text)
    page.wait("return document.getElementById('search').dataset.done !== undefined")
    return page.text("#search-hits"), page.texts(".hits li")


class InstanceTests(PageTest):
    def current(self, page, name):
        page.wait(f"return document.querySelector('.item.current') && document.querySelector('.item.current').id === '{name}'")
        return page.text(".item.current")

    def test_links_instances(self):
        page = self.open_page(self.write_document(SMALL))
        self.assertEqual(page.texts(".item"), [
            "#10 = LINE('one', $)referred to by #12 #99999999999999999999",
            "#12 = POINT('Two & <b>', #10)referred to by #11",
            "#11 = (A(#12) B('THREE'))",
            "#99999999999999999999 = C(#10, #99999999999999999999)referred to by #99999999999999999999",
            "#123 = LINE('12', #7)"])
        self.assertEqual(page.run("return [...document.querySelectorAll('.item a')].map(each => each.getAttribute('href'))"),
                         ["#10", "#12", "#n4", "#12", "#10", "#11", "#11", "#12", "#n4", "#10", "#n4", "#n4", "#123"])

    def test_address_leads_to_instance(self):
        path = self.write_page(self.write_document(SMALL))
        page = Page(self.driver, path).open("#11")
        self.assertEqual(self.current(page, "11"), "#11 = (A(#12) B('THREE'))")
        page.go("#n4")
        self.assertIn("= C(", self.current(page, "n4"))
        page.go("#99999999999999999999")
        self.current(page, "n4")
        page.go("#10")
        self.current(page, "10")
        self.driver.back()
        self.driver.back()
        self.current(page, "n4")
        self.driver.back()
        self.current(page, "11")
        self.driver.forward()
        self.current(page, "n4")
        page.go("#55")
        page.wait("return document.querySelector('#instances .status').textContent.includes('no instance #55')")
        self.assert_quiet(page)

    def test_address_leads_to_any_page(self):
        # Ids in descending order in one half, so that ranges of blocks overlap.
        lines = [f"#{i}=P('{i:040d}',#{i % 30000 + 1});\n" for i in range(1, 15001)]
        lines += [f"#{i}=P('{i:040d}',#{i % 30000 + 1});\n" for i in range(30000, 15000, -1)]
        path = self.write_page(self.write_document("".join(lines)))
        page = Page(self.driver, path).open()
        self.assertGreater(page.count("[id^=data-instances-]"), 4)
        for number in (1, 15000, 15001, 30000, 22222):
            page.go(f"#{number}")
            self.assertTrue(self.current(page, str(number)).startswith(f"#{number} = P('{number:040d}', #"))
        self.assertEqual(page.count(".item"), 200)
        page.run("document.querySelector('[aria-label=\"Last page\"]').click()")
        page.wait("return document.getElementById('15001') !== null")
        page.run("document.querySelector('[aria-label=\"First page\"]').click()")
        page.wait("return document.getElementById('1') !== null")
        self.assert_quiet(page)

    def test_search_finds_ids_types_and_text(self):
        page = self.open_page(self.write_document(SMALL))
        self.assertEqual(search(page, "one"), ("1 hit", ["#10 = LINE('one', $)"]))
        self.assertEqual(search(page, "three"), ("1 hit", ["#11 = (A(#12) B('THREE'))"]))
        self.assertEqual(search(page, "line")[0], "2 hits")
        self.assertEqual(search(page, "<b>")[0], "1 hit")
        self.assertEqual(search(page, "nothing"), ("0 hits", []))
        # The instance and what refers to it, but not #123.
        self.assertEqual(search(page, "#12")[1], ["#12 = POINT('Two & <b>', #10)", "#11 = (A(#12) B('THREE'))"])
        self.assertEqual(search(page, "'12'")[0], "1 hit")
        self.assertEqual(search(page, ".*")[0], "0 hits")
        page.run("document.querySelector('.hits a')?.click()")
        search(page, "three")
        page.run("document.querySelector('.hits a').click()")
        self.current(page, "11")
        self.assert_quiet(page)

    def test_type_leads_to_its_instances(self):
        page = self.open_page(self.write_document(SMALL))
        self.assertEqual(page.texts("#types tbody td"), ["LINE", "2", "POINT", "1", "(A B)", "1", "C", "1"])
        page.run("[...document.querySelectorAll('#types a')].find(each => each.textContent === '(A B)').click()")
        page.wait("return document.getElementById('search-hits').textContent === '1 hit'")
        self.assertEqual(page.texts(".hits li"), ["#11 = (A(#12) B('THREE'))"])
        page.run("document.querySelector('#types a').click()")
        page.wait("return document.getElementById('search-hits').textContent === '2 hits'")

    def test_search_covers_all_blocks(self):
        lines = [f"#{i}=P('{'needle' if i % 10000 == 0 else 'hay'}','{'x' * 60}');\n" for i in range(1, 40001)]
        page = self.open_page(self.write_document("".join(lines)))
        hits, _ = search(page, "NEEDLE")
        self.assertEqual(hits, "4 hits")
        hits, listed = search(page, "hay")
        self.assertEqual((hits, len(listed)), ("39,996 hits, the first 1,000 are listed", 50))

    def test_search_shows_its_progress(self):
        lines = [f"#{i}=P('{'needle' if i % 10000 == 0 else 'hay'}','{'x' * 60}');\n" for i in range(1, 40001)]
        page = self.open_page(self.write_document("".join(lines)))
        self.assertGreater(page.count("[id^=data-instances-]"), 3)
        self.assertFalse(page.find("#search progress").is_displayed())
        # A clock that is a thousand times as fast makes each block take longer than the interval of the reports.
        page.run("""const now = performance.now.bind(performance);
            performance.now = () => 1000 * now();
            const bar = document.querySelector('#search progress');
            const stop = [...document.querySelectorAll('#search button')].find(each => each.textContent === 'Stop');
            window.states = [];
            new MutationObserver(() => states.push([bar.value, bar.offsetWidth > 0 && bar.offsetHeight > 0, stop.offsetWidth > 0,
              document.getElementById('search-hits').textContent])).observe(bar, {attributes: true});""")
        self.assertEqual(search(page, "hay")[0], "39,996 hits, the first 1,000 are listed")
        states = page.run("return states")
        values = [value for value, bar, stop, _ in states if bar and stop and 0 < value < 1]
        self.assertGreater(len(values), 1)
        self.assertEqual(values, sorted(values))
        for value, _, _, text in states:
            if value in values:
                self.assertIn(f" … {int(100 * value + 0.5)} %", text)
        self.assertEqual(states[-1][:3], [1, False, False])
        self.assertFalse(page.find("#search progress").is_displayed())
        # The next search begins at 0, and Stop hides the bar.
        page.run("""states.length = 0;
            const bar = document.querySelector('#search progress');
            new MutationObserver(() => {
              if (bar.value > 0 && bar.value < 1 && !bar.hidden) {
                [...document.querySelectorAll('#search button')].find(each => each.textContent === 'Stop').click();
              }
            }).observe(bar, {attributes: true});
            const input = document.querySelector('#search input');
            input.value = 'needle';
            input.form.requestSubmit();""")
        page.wait("return document.getElementById('search-hits').textContent.endsWith('(stopped)')")
        self.assertFalse(page.find("#search progress").is_displayed())
        self.assertEqual(page.run("return states[0]")[:3], [0, True, True])
        self.assert_quiet(page)

    def test_long_item_is_shown_in_pieces(self):
        count = 300000  # more than one block
        path = self.write_document("#1=A((" + "#2," * count + "#2),'end');\n#2=B();\n")
        page = self.open_page(path)
        self.assertGreater(page.count("[id^=data-instances-]"), 1)
        self.assertLess(page.count("*"), 5000)
        before = page.count(".item a")
        page.run("document.querySelector('.item .more').click()")
        page.wait(f"return document.querySelectorAll('.item a').length > {before} + 300")
        page.go("#2")
        self.assertEqual(self.current(page, "2"), "#2 = B()referred to by #1")
        self.assertEqual(search(page, "'end'")[0], "1 hit")
        self.assert_quiet(page)

    def test_large_page_has_few_elements_and_short_tasks(self):
        lines = []
        for i in range(1, 300001, 3):
            lines.append(f"#{i}=CARTESIAN_POINT('',({i}.5,2.,3.));\n#{i + 1}=DIRECTION('d{i}',(0.,0.,1.));\n"
                         f"#{i + 2}=AXIS1_PLACEMENT('',#{i},#{i + 1});\n")
        path = self.write_document("".join(lines))
        written = self.write_page(path)
        self.assertLess(written.stat().st_size, 0.6 * path.stat().st_size)
        page = Page(self.driver, written).open()
        self.assertLess(page.count("*"), 20000)
        self.assertEqual(search(page, "'d299998'")[0], "1 hit")
        page.go("#299999")
        self.current(page, "299999")
        self.assertLess(page.count("*"), 20000)
        # 200 ms on an idle machine.
        self.assertLess(page.watched()["longest"], 1500)
        self.assert_quiet(page)


if __name__ == "__main__":
    main()
