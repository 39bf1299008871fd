"""The page of a document as a whole: sections, layout, policy, network, printing."""
import base64
import html
import re

from browser import Page, PageTest, main

# A washer: one product without shape, a layer-like list and a complex instance.
SMALL = "#10=PRODUCT('w','Washer','',(#20));\n#20=(A()B('x'));\n#30=LINE('',#10,#99);\n"


class PageTests(PageTest):
    def test_opens_without_errors(self):
        page = self.open_page(self.sample("examples/bracket.stp"))
        self.assertEqual(page.run("return document.compatMode"), "CSS1Compat")
        self.assertEqual(page.run("return document.documentElement.lang"), "en")
        self.assertEqual(page.run("return document.title"), "bracket.stp")
        self.assert_quiet(page)

    def test_summary_has_facts(self):
        page = self.open_page(self.write_document(SMALL))
        facts = dict(zip(page.texts("#summary dt"), page.texts("#summary dd")))
        self.assertEqual(facts["File"], "part")
        self.assertEqual(facts["Application protocol"], "AP242")
        self.assertEqual(facts["Originating system"], "Sys")
        self.assertEqual(facts["Date"], "2024-01-02T03:04:05")
        self.assertEqual(facts["Instances"], "3")
        self.assertEqual(page.count(".banner"), 0)

    def test_banner_says_what_is_lost(self):
        page = self.open_page(self.write_document("#1=A(;\n#2=B();\n"))
        self.assertIn("Parts of the document could not be read", page.text(".banner"))
        self.assertIn("line 4: #1 expected parameter, found ';'", page.text(".banner"))

    def test_empty_sections_are_absent(self):
        page = self.open_page(self.write_document(SMALL))
        self.assertEqual(page.run("return [...document.querySelectorAll('main > section')].map(each => each.id)"),
                         ["summary", "types", "search", "instances", "header"])
        self.assertEqual(page.count("main > section[hidden]"), 0)
        self.assertEqual(page.texts("#contents a"), ["Summary", "Types", "Search", "Instances", "Header"])

    def test_shows_the_text_of_the_plain_listing(self):
        document = self.sample("examples/bracket.stp")
        plain = self.write_page(document, "-set", "Html.*.Writer.Plain=On").read_text()
        plain = plain[plain.index("<H2>Data section 1"):]
        lines = html.unescape(re.sub(r"<[^>]*>", "", plain.replace("<br>\r\n", "\n").replace("&nbsp;", "")))
        expected = [line for line in lines.split("\n")[1:] if line.strip()]
        page = self.open_page(document)
        shown = []
        for number in range(1, 3):
            page.wait(f"return document.querySelector('#instances input[type=number]').value === '{number}'")
            shown += page.run("""return [...document.querySelectorAll('.item')].flatMap(item => {
                const referrers = item.querySelector('.referrers');
                const all = item.textContent;
                return referrers ? [all.slice(0, all.length - referrers.textContent.length), referrers.textContent] : [all];
            })""")
            page.run("document.querySelector('[aria-label=\"Next page\"]').click()")
        self.assertGreater(len(expected), 232)
        self.assertEqual(shown, expected)

    def test_policy_allows_only_its_own_hashes(self):
        page = self.open_page(self.sample("examples/bracket.stp"))
        policy = page.run("return document.querySelector('meta[http-equiv]').content")
        self.assertRegex(policy, r"^default-src 'none'; style-src 'sha256-[^']*'; script-src ('sha256-[^']*' ?)+;")
        self.assertNotIn("unsafe", policy)
        page.run("const s = document.createElement('script'); s.textContent = 'trap()'; document.body.append(s)")
        page.run("const i = document.createElement('img'); i.src = 'http://127.0.0.1:9/x.png'; document.body.append(i)")
        page.wait("return watched.policy.length >= 2")
        self.assertEqual(page.watched()["trapped"], 0)

    def test_page_without_scripts_shows_header_and_summary(self):
        path = self.write_page(self.sample("examples/bracket.stp"))
        self.driver.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": True})
        try:
            self.driver.get("file://" + str(path))
            shown = [each.get_attribute("id") for each in self.driver.find_elements("css selector", "main > section")
                     if each.is_displayed()]
            self.assertIn("summary", shown)
            self.assertIn("header", shown)
            self.assertIn("view", shown)
            self.assertTrue(self.driver.find_element("css selector", "#view > svg").is_displayed())
            self.assertNotIn("instances", shown)
            self.assertIn("Plain=On", self.driver.find_element("css selector", "noscript").text)
        finally:
            self.driver.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": False})

    def test_narrow_page_does_not_scroll_sideways(self):
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                    {"width": 400, "height": 800, "deviceScaleFactor": 1, "mobile": False})
        try:
            page = self.open_page(self.sample("examples/bracket.stp"))
            self.assertEqual(page.run("return innerWidth"), 400)
            self.assertLessEqual(page.run("return document.documentElement.scrollWidth"), 400)
        finally:
            self.driver.execute_cdp_cmd("Emulation.clearDeviceMetricsOverride", {})

    def test_follows_the_colour_scheme(self):
        colours = {}
        for scheme in ("light", "dark"):
            self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia",
                                        {"features": [{"name": "prefers-color-scheme", "value": scheme}]})
            page = self.open_page(self.write_document(SMALL))
            colours[scheme] = page.run("return getComputedStyle(document.body).backgroundColor")
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": []})
        self.assertEqual(colours, {"light": "rgb(255, 255, 255)", "dark": "rgb(21, 25, 30)"})

    def test_prints(self):
        self.open_page(self.sample("examples/bracket.stp"))
        result = self.driver.execute_cdp_cmd("Page.printToPDF", {"printBackground": False})
        document = base64.b64decode(result["data"])
        self.assertTrue(document.startswith(b"%PDF-"))
        self.assertGreater(len(document), 10000)

    def test_every_control_has_a_name(self):
        page = self.open_page(self.sample("examples/bracket.stp"))
        unnamed = page.run("""return [...document.querySelectorAll('button, input, a, [role=region], [role=tree], progress')]
            .filter(each => !(each.textContent.trim() || each.getAttribute('aria-label') || (each.labels || []).length))
            .map(each => each.outerHTML)""")
        self.assertEqual(unnamed, [])
        levels = page.run("return [...document.querySelectorAll('h1, h2, h3')].map(each => Number(each.tagName[1]))")
        self.assertEqual(levels[0], 1)
        self.assertTrue(all(after - before <= 1 for before, after in zip(levels, levels[1:])), levels)
        ids = page.run("return [...document.querySelectorAll('[id]')].map(each => each.id)")
        self.assertEqual(len(ids), len(set(ids)))


if __name__ == "__main__":
    main()
