"""Checks pages with axe-core, if the environment variable AXE_CORE names its axe.min.js; skipped otherwise.

    npm install axe-core
    AXE_CORE=node_modules/axe-core/axe.min.js ctest --preset release -R pages.accessibility
"""
import os
import pathlib
import sys

from browser import SKIPPED, PageTest, main


class AccessibilityTests(PageTest):
    def test_has_no_serious_finding(self):
        axe = pathlib.Path(os.environ["AXE_CORE"]).read_text(encoding="utf-8")
        for scheme in ("light", "dark"):
            self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia",
                                        {"features": [{"name": "prefers-color-scheme", "value": scheme}]})
            for name in ("examples/bracket.stp", "examples/assembly.stp"):
                with self.subTest(scheme=scheme, document=name):
                    self.open_page(self.sample(name), fragment="#search=a")
                    # Not by a script of the page, which its policy would not allow.
                    self.driver.execute_cdp_cmd("Runtime.evaluate", {"expression": axe})
                    self.driver.set_script_timeout(300)
                    found = self.driver.execute_async_script("""const done = arguments[arguments.length - 1];
                        axe.run(document).then(result => done(result.violations.map(each =>
                            [each.impact, each.id, each.nodes.length, each.nodes[0].html])), error => done(String(error)))""")
                    self.assertEqual([each for each in found if each[0] in ("serious", "critical")], [])


if __name__ == "__main__":
    if not os.path.isfile(os.environ.get("AXE_CORE", "")):
        print("skipped: AXE_CORE does not name axe.min.js")
        sys.exit(SKIPPED)
    main()
