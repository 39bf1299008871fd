"""Checks pages with axe-core, if the environment variable AXE_CORE names its axe.min.js; skipped otherwise.

    npm install axe-core
    AXE_CORE=node_modules/axe-core/axe.min.js ctest --preset release -R pages.accessibility
"""
import os
import pathlib
import sys

from browser import SKIPPED, Page, PageTest, main


class AccessibilityTests(PageTest):
    arguments = ("--use-angle=swiftshader", "--enable-unsafe-swiftshader", "--ignore-gpu-blocklist")

    def test_has_no_serious_finding(self):
        axe = pathlib.Path(os.environ["AXE_CORE"]).read_text(encoding="utf-8")
        self.addCleanup(self.driver.execute_cdp_cmd, "Emulation.setEmulatedMedia", {"features": []})
        self.addCleanup(self.driver.execute_cdp_cmd, "Emulation.clearDeviceMetricsOverride", {})
        self.driver.set_script_timeout(300)
        for name in ("examples/bracket.stp", "examples/assembly.stp"):
            path = self.write_page(self.sample(name))
            for width in (400, 1280):
                self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                            {"width": width, "height": 900, "deviceScaleFactor": 1, "mobile": False})
                for scheme in ("light", "dark"):
                    with self.subTest(document=name, width=width, scheme=scheme):
                        self.check(axe, path, scheme)

    def check(self, axe, path, scheme):
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia",
                                    {"features": [{"name": "prefers-color-scheme", "value": scheme}]})
        page = Page(self.driver, path).open("#search=a")
        page.wait("return document.getElementById('view').dataset.picture && document.getElementById('search').dataset.done")
        page.run("document.querySelector('[role=treeitem] .name').click()")
        # Not by a script of the page, which its policy would not allow.
        self.driver.execute_cdp_cmd("Runtime.evaluate", {"expression": axe})
        found = self.driver.execute_async_script("""const done = arguments[arguments.length - 1];
            axe.run(document).then(result => done(result.violations.map(each =>
                [each.impact, each.id, each.nodes.length, each.nodes[0].html])), error => done([["critical", String(error)]]))""")
        self.assertEqual([each for each in found if each[0] in ("serious", "critical")], [])


if __name__ == "__main__":
    if not os.path.isfile(os.environ.get("AXE_CORE", "")):
        print("skipped: AXE_CORE does not name axe.min.js")
        sys.exit(SKIPPED)
    main()
