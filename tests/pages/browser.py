"""Writes pages and opens them in headless Chromium.

Each test file is a program:  test_NAME.py BRIVET SOURCE_FOLDER. It ends with 77, and the reason, if something that it needs
is missing.

    from browser import PageTest, main

    class StructureTest(PageTest):
        def test_has_tree(self):
            page = self.open_page(self.sample("examples/bracket.stp"))
            self.assertEqual(page.count("[role=treeitem]"), 1)

    main()
"""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest
import urllib.parse

SKIPPED = 77

try:
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service
    from selenium.webdriver.common.by import By
    from selenium.webdriver.support.ui import WebDriverWait
except ImportError:
    print("skipped: python3-selenium is missing")
    sys.exit(SKIPPED)

PATIENCE = 60  # seconds

# Runs before the scripts of the page: records errors, violations of the policy, dialogs and long tasks.
WATCH = """
window.watched = {errors: [], policy: [], trapped: 0, longest: 0, tasks: [], contexts: []};
addEventListener('error', event => watched.errors.push(String(event.message)));
addEventListener('unhandledrejection', event => watched.errors.push(String(event.reason)));
document.addEventListener('securitypolicyviolation', event => watched.policy.push(event.violatedDirective));
window.trap = () => { ++watched.trapped; };
window.alert = window.confirm = window.prompt = window.trap;
const getContext = HTMLCanvasElement.prototype.getContext;
HTMLCanvasElement.prototype.getContext = function(...words) {
  const begin = performance.now();
  const context = getContext.apply(this, words);
  watched.contexts.push([begin, performance.now() - begin]);
  return context;
};
new PerformanceObserver(list => {
  for (const entry of list.getEntries()) {
    watched.longest = Math.max(watched.longest, entry.duration);
    watched.tasks.push([entry.startTime, entry.duration]);
  }
}).observe({entryTypes: ['longtask']});
"""


class Page:
    """A page in the browser."""

    def __init__(self, driver, path):
        self.driver = driver
        self.url = "file://" + urllib.parse.quote(str(path))

    def open(self, fragment=""):
        self.driver.get("about:blank")
        self.driver.get_log("browser")
        self.driver.get_log("performance")
        self.driver.get(self.url + fragment)
        self.wait("return document.documentElement.dataset.ready === 'true'")
        return self

    def run(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

    def wait(self, script, seconds=PATIENCE):
        """Waits until a script returns a true value, and returns it."""
        return WebDriverWait(self.driver, seconds, 0.05).until(lambda driver: driver.execute_script(script))

    def find(self, selector):
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def find_all(self, selector):
        return self.driver.find_elements(By.CSS_SELECTOR, selector)

    def count(self, selector):
        return self.run("return document.querySelectorAll(arguments[0]).length", selector)

    def text(self, selector):
        return self.run("return document.querySelector(arguments[0]).textContent", selector)

    def texts(self, selector):
        return self.run("return [...document.querySelectorAll(arguments[0])].map(each => each.textContent)", selector)

    def go(self, fragment):
        self.run("location.hash = arguments[0]", fragment)

    def watched(self):
        return self.run("return window.watched")

    def console(self):
        """Returns the errors in the console since the page was opened."""
        return [entry["message"] for entry in self.driver.get_log("browser") if entry["level"] == "SEVERE"]

    def requests(self):
        """Returns the addresses that the page requested, except its own."""
        import json
        found = []
        for entry in self.driver.get_log("performance"):
            message = json.loads(entry["message"])["message"]
            if message["method"] == "Network.requestWillBeSent":
                url = message["params"]["request"]["url"]
                if not url.startswith((self.url, "about:")):
                    found.append(url)
        return found


class PageTest(unittest.TestCase):
    """A test with a folder of its own and one browser for all tests of the class."""

    arguments = []  # more of the browser

    @classmethod
    def setUpClass(cls):
        cls.profile = tempfile.mkdtemp(prefix="brivet-pages-")
        options = webdriver.ChromeOptions()
        options.binary_location = shutil.which("chromium")
        for argument in ("--headless=new", "--no-sandbox", "--disable-quic", "--no-first-run",
                         "--disable-background-networking", "--disable-component-update", "--disable-sync",
                         "--force-color-profile=srgb", "--hide-scrollbars", "--window-size=1280,900",
                         "--user-data-dir=" + cls.profile, *cls.arguments):
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        cls.driver = webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=options)
        cls.driver.set_page_load_timeout(PATIENCE * 3)
        cls.driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": WATCH})

    @classmethod
    def tearDownClass(cls):
        cls.driver.quit()
        shutil.rmtree(cls.profile, ignore_errors=True)

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="brivet-pages-"))
        self.addCleanup(shutil.rmtree, self.folder, True)

    def sample(self, name):
        return SOURCE / name

    def write_document(self, data, name="part.stp", header=None):
        """Writes a STEP file with the instances of `data`, and returns its path."""
        header = header or ("FILE_DESCRIPTION(('test'),'2;1');FILE_NAME('part','2024-01-02T03:04:05',('a'),('o'),'p',"
                            "'Sys','');FILE_SCHEMA(('AP242_MANAGED_MODEL_BASED_3D_ENGINEERING_MIM_LF'));")
        path = self.folder / name
        path.write_text(f"ISO-10303-21;\nHEADER;{header}ENDSEC;\nDATA;\n{data}ENDSEC;\nEND-ISO-10303-21;\n",
                        encoding="utf-8")
        return path

    def write_page(self, document, *words):
        """Translates a document and returns the path of the page."""
        page = self.folder / (document.stem + ".html")
        result = subprocess.run([BRIVET, "-quiet", "-nolog", *words, str(document), str(page)], cwd=self.folder,
                                capture_output=True, text=True, check=False)
        self.assertIn(result.returncode, (0, 8), result.stderr)
        return page

    def open_page(self, document, *words, fragment=""):
        return Page(self.driver, self.write_page(document, *words)).open(fragment)

    def assert_short_tasks(self, path, use=lambda page: None, limit=200):
        """Checks that no task of the tab takes longer than `limit` milliseconds while the page opens and `use` works with it.

        The time in which the browser creates contexts of WebGL does not count: it starts a process, or waits for the one
        that still draws an earlier page. Other work on the machine stretches tasks: the best of several attempts counts,
        and the limit grows by how much the same loop is stretched in the same tab.
        """
        found = []
        for _ in range(5):
            page = Page(self.driver, path).open()
            if page.run("return document.getElementById('data-three') !== null"):
                page.wait("return document.getElementById('view').dataset.picture")
            use(page)
            watched = page.watched()
            longest = max([length - sum(took for at, took in watched["contexts"] if begin <= at + took / 2 <= begin + length)
                           for begin, length in watched["tasks"]], default=0)
            times = page.run("""const times = [];
                for (let i = 0; i < 20; ++i) {
                  const begin = performance.now();
                  let sum = 0;
                  for (let k = 0; k < 5000000; ++k) sum = (sum + k * 7) % 1000003;
                  times.push(performance.now() - begin + sum * 1e-30);
                }
                return times.slice(1)""")
            found.append((longest, max(times) / min(times)))
            if longest <= limit * max(times) / min(times):
                return page
        self.fail(f"tasks of more than {limit} ms, and how much the machine stretched a loop: {found}")

    def assert_quiet(self, page):
        """Checks that the page has reported no error, requested nothing and executed nothing foreign."""
        self.assertEqual(page.console(), [])
        self.assertEqual(page.requests(), [])
        watched = page.watched()
        self.assertEqual((watched["errors"], watched["policy"], watched["trapped"]), ([], [], 0))


def main():
    for program in ("chromium", "chromedriver"):
        if shutil.which(program) is None:
            print(f"skipped: {program} is missing")
            sys.exit(SKIPPED)
    unittest.main(argv=sys.argv[:1] + sys.argv[3:], verbosity=2)


BRIVET = sys.argv[1] if len(sys.argv) > 1 else "brivet"
SOURCE = pathlib.Path(sys.argv[2] if len(sys.argv) > 2 else ".").resolve()
