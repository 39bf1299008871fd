"""Shaded faces of exact shapes, and computed properties next to stored ones. Skipped without the shape module."""
import base64
import subprocess
import sys

from browser import BRIVET, SKIPPED, PageTest, main

BRACKET = "examples/bracket.stp"

# Returns the number of pixels that differ from the background, and their colours with their numbers.
COUNT = """
const [data, done] = arguments;
const bytes = Uint8Array.from(atob(data), each => each.charCodeAt(0));
createImageBitmap(new Blob([bytes], {type: 'image/png'})).then(image => {
  const canvas = new OffscreenCanvas(image.width, image.height);
  const context = canvas.getContext('2d');
  context.drawImage(image, 0, 0);
  const {data: pixels} = context.getImageData(0, 0, image.width, image.height);
  const at = 4 * (image.width * (image.height >> 1) + 8);
  const colours = {};
  let drawn = 0;
  for (let y = 6; y < image.height - 6; ++y) {
    for (let x = 6; x < image.width - 6; ++x) {
      const i = 4 * (y * image.width + x);
      const colour = [0, 1, 2].map(k => pixels[i + k]);
      if (Math.max(...[0, 1, 2].map(k => Math.abs(colour[k] - pixels[at + k]))) <= 24) continue;
      ++drawn;
      colours[colour] = (colours[colour] || 0) + 1;
    }
  }
  done({drawn, total: image.width * image.height, colours});
});
"""


class ShadeTests(PageTest):
    arguments = ("--use-angle=swiftshader", "--enable-unsafe-swiftshader", "--ignore-gpu-blocklist")

    def open_view(self, document, *words):
        page = self.open_page(document, *words)
        if page.wait("return document.getElementById('view').dataset.picture") != "ready":
            self.skipTest("the browser has no WebGL")
        self.settle(page)
        return page

    def settle(self, page):
        page.driver.execute_async_script(
            "const done = arguments[0]; requestAnimationFrame(() => requestAnimationFrame(() => setTimeout(done, 50)))")

    def count(self, page):
        png = page.find("#view canvas").screenshot_as_png
        return page.driver.execute_async_script(COUNT, base64.b64encode(png).decode())

    def bracket(self, old="", new="", more=""):
        """Writes the bracket with a replacement and more instances."""
        text = self.sample(BRACKET).read_text(encoding="utf-8")
        self.assertIn(old, text)
        text = text.replace(old, new, 1)
        end = text.rindex("ENDSEC;")
        path = self.folder / "part.stp"
        path.write_text(text[:end] + more + text[end:], encoding="utf-8")
        return path

    def test_faces_are_filled(self):
        shaded = self.open_view(self.sample(BRACKET))
        filled = self.count(shaded)
        self.assert_quiet(shaded)
        edges = self.count(self.open_view(self.sample(BRACKET), "-set", "Html.*.Writer.Shade=Off"))
        self.assertGreater(filled["drawn"], 5 * edges["drawn"])
        # The upper sides, the left ones and the right ones have different brightness.
        large = [colour for colour, number in filled["colours"].items() if number > filled["drawn"] / 20]
        self.assertGreaterEqual(len(large), 3)

    def test_edges_are_on_top(self):
        colours = self.count(self.open_view(self.sample(BRACKET)))["colours"]
        ink = sum(number for colour, number in colours.items() if max(map(int, colour.split(","))) < 80)
        self.assertGreater(ink, 500)

    def test_faces_have_their_colours(self):
        # The whole solid is red.
        text = self.sample(BRACKET).read_text(encoding="utf-8")
        solid = text[:text.index("= MANIFOLD_SOLID_BREP")].rsplit("#", 1)[1].strip()
        page = self.open_view(self.bracket(more=(
            "#9001=COLOUR_RGB('',1.,0.,0.);\n#9002=FILL_AREA_STYLE_COLOUR('',#9001);\n#9003=FILL_AREA_STYLE('',(#9002));\n"
            "#9004=SURFACE_STYLE_FILL_AREA(#9003);\n#9005=SURFACE_SIDE_STYLE('',(#9004));\n"
            "#9006=SURFACE_STYLE_USAGE(.BOTH.,#9005);\n#9007=PRESENTATION_STYLE_ASSIGNMENT((#9006));\n"
            f"#9008=STYLED_ITEM('',(#9007),#{solid});\n")))
        found = self.count(page)
        red = sum(number for colour, number in found["colours"].items()
                  if int(colour.split(",")[0]) > 100 and max(map(int, colour.split(",")[1:])) < 30)
        self.assertGreater(red, 0.8 * found["drawn"])

    def properties(self, volume, centroid):
        """Returns instances of validation properties of the bracket."""
        text = self.sample(BRACKET).read_text(encoding="utf-8")
        definition = text[:text.index("= PRODUCT_DEFINITION(")].rsplit("#", 1)[1].strip()
        return ("#9101=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.CENTI.,.METRE.));\n#9102=DERIVED_UNIT_ELEMENT(#9101,3.);\n"
                "#9103=DERIVED_UNIT((#9102));\n"
                "#9104=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#9101))"
                "REPRESENTATION_CONTEXT('',''));\n"
                f"#9105=PROPERTY_DEFINITION('geometric validation property','volume',#{definition});\n"
                "#9106=PROPERTY_DEFINITION_REPRESENTATION(#9105,#9107);\n#9107=REPRESENTATION('volume',(#9108),#9104);\n"
                f"#9108=MEASURE_REPRESENTATION_ITEM('volume measure',VOLUME_MEASURE({volume}),#9103);\n"
                f"#9109=PROPERTY_DEFINITION('geometric validation property','centroid',#{definition});\n"
                "#9110=PROPERTY_DEFINITION_REPRESENTATION(#9109,#9111);\n"
                "#9111=REPRESENTATION('centroid',(#9112),#9104);\n"
                f"#9112=CARTESIAN_POINT('centre point',({centroid}));\n")

    # Plates of 60 by 40 by 6 and 44 by 40 by 6 with two holes of radius 4.5: 24960 - 12 pi 4.5^2 = 24196.593.
    def test_stored_properties_agree(self):
        page = self.open_page(self.bracket(more=self.properties("24.1966", "1.84847,2.,1.34531")))
        facts = dict(zip(page.texts("#summary dt"), page.texts("#summary dd")))
        self.assertEqual(facts["Volume"], "24196.6 millimetre^3 computed; 24.1966 centimetre^3 stored, agrees within 0.1 %")
        self.assertEqual(facts["Validation"], "2 stored values agree with the computed shape")
        self.assertEqual(page.count(".differs"), 0)
        self.assertIn("Computed", page.texts("#properties th"))
        self.assertEqual(page.texts("#properties .check"), ["agrees within 0.1 %"] * 2)
        self.assert_quiet(page)

    def test_difference_is_marked(self):
        page = self.open_page(self.bracket(more=self.properties("30.", "1.84847,2.,1.34531")))
        facts = dict(zip(page.texts("#summary dt"), page.texts("#summary dd")))
        self.assertIn("30 centimetre^3 stored, differs by 19.3 %, more than 0.1 %", facts["Volume"])
        self.assertEqual(facts["Validation"], "1 of 2 stored values differ from the computed shape; see the properties")
        self.assertEqual(page.count("#summary .differs"), 2)
        self.assertEqual(page.texts("#properties .differs"), ["differs by 19.3 %, more than 0.1 %"])
        self.assertGreater(page.run("return parseFloat(getComputedStyle(document.querySelector('#properties .differs'))"
                                    ".borderLeftWidth)"), 0)

    def test_has_no_column_without_computed_shape(self):
        page = self.open_page(self.bracket(more=self.properties("30.", "0.,0.,0.")), "-set", "Html.*.Writer.Shade=Off")
        self.assertNotIn("Computed", page.texts("#properties th"))
        self.assertNotIn("Volume", page.texts("#summary dt"))


def has_shape_module():
    result = subprocess.run([BRIVET, "-help", "shape"], capture_output=True, text=True, check=False)
    return result.returncode == 0 and "evaluated by" in result.stdout


if not has_shape_module():
    print("skipped: the shape module is missing")
    sys.exit(SKIPPED)
main()
