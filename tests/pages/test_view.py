"""The interactive picture: views, selection, annotations, and the drawing without WebGL."""
import base64
import struct
import time
import zlib

from browser import PageTest, main  # skips the tests if selenium is missing

from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys

import extreme

ASSEMBLY = "examples/assembly.stp"

# A rectangular frame of four edges; `x` and `z` are its size.
FRAME = """#1=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#2))REPRESENTATION_CONTEXT('',''));
#2=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));
#10=PRODUCT('p','frame','',());
#11=PRODUCT_DEFINITION_FORMATION('','',#10);
#12=PRODUCT_DEFINITION('','',#11,$);
#13=PRODUCT_DEFINITION_SHAPE('','',#12);
#14=SHAPE_DEFINITION_REPRESENTATION(#13,#15);
#15=SHAPE_REPRESENTATION('',(#16),#1);
#16=GEOMETRIC_CURVE_SET('',(#17));
#17=POLYLINE('',(#18,#19,#20,#21,#18));
#18=CARTESIAN_POINT('',({x0},0.,{z0}));
#19=CARTESIAN_POINT('',({x1},0.,{z0}));
#20=CARTESIAN_POINT('',({x1},0.,{z1}));
#21=CARTESIAN_POINT('',({x0},0.,{z1}));
"""


def pixels(png):
    """Returns width, height and the rows of RGB bytes of a PNG image of 8 bits a channel without interlacing."""
    at = 8
    data = b""
    while at < len(png):
        length, kind = struct.unpack(">I4s", png[at:at + 8])
        body = png[at + 8:at + 8 + length]
        if kind == b"IHDR":
            width, height, _, colour = struct.unpack(">IIBB", body[:10])
        elif kind == b"IDAT":
            data += body
        at += 12 + length
    step = 4 if colour == 6 else 3
    raw = zlib.decompress(data)
    rows = []
    previous = bytearray(width * step)
    for y in range(height):
        begin = y * (width * step + 1)
        method = raw[begin]
        row = bytearray(raw[begin + 1:begin + 1 + width * step])
        for i in range(len(row)):
            left = row[i - step] if i >= step else 0
            up = previous[i]
            corner = previous[i - step] if i >= step else 0
            if method == 1:
                row[i] = (row[i] + left) & 255
            elif method == 2:
                row[i] = (row[i] + up) & 255
            elif method == 3:
                row[i] = (row[i] + (left + up) // 2) & 255
            elif method == 4:
                near = left + up - corner
                distance = [abs(near - left), abs(near - up), abs(near - corner)]
                row[i] = (row[i] + (left, up, corner)[distance.index(min(distance))]) & 255
        rows.append(row)
        previous = row
    return width, height, step, rows


class Shot:
    """What the canvas shows, as a set of the pixels that differ from the background."""

    def __init__(self, page):
        page.run("document.querySelector('#view .selection').style.visibility = 'hidden'")  # it covers the canvas
        self.png = page.find("#view canvas").screenshot_as_png
        width, height, step, rows = pixels(self.png)
        background = bytes(rows[height // 2][8 * step:8 * step + 3])
        self.width, self.height = width, height
        self.drawn = {}
        for y in range(6, height - 6):
            row = rows[y]
            for x in range(6, width - 6):
                colour = bytes(row[x * step:x * step + 3])
                if max(abs(a - b) for a, b in zip(colour, background)) > 24:
                    self.drawn[(x, y)] = tuple(colour)

    def box(self):
        xs = [x for x, _ in self.drawn]
        ys = [y for _, y in self.drawn]
        return max(xs) - min(xs), max(ys) - min(ys)

    def colours(self):
        return set(self.drawn.values())


class ViewTests(PageTest):
    arguments = ("--use-angle=swiftshader", "--enable-unsafe-swiftshader", "--ignore-gpu-blocklist")

    def open_view(self, document, *words, fragment=""):
        page = self.open_page(document, *words, fragment=fragment)
        state = page.wait("return document.getElementById('view').dataset.picture")
        if state != "ready":
            self.skipTest("the browser has no WebGL")
        self.settle(page)
        return page

    def settle(self, page):
        """Waits until requested frames are drawn."""
        page.driver.execute_async_script("const done = arguments[0]; requestAnimationFrame(() => requestAnimationFrame(done))")
        page.wait("return document.querySelector('#view canvas').dataset.frame === 'drawn'")
        page.driver.execute_async_script("const done = arguments[0]; requestAnimationFrame(() => setTimeout(done, 50))")

    def press(self, page, name):
        button = next(each for each in page.find_all("#view button") if each.text == name)
        button.click()
        self.settle(page)
        return button

    def drag(self, page, x, y):
        ActionChains(page.driver).move_to_element(page.find("#view canvas")).click_and_hold().move_by_offset(x, y) \
            .release().perform()
        self.settle(page)

    def selected(self, page):
        return page.run("return document.querySelector('#view canvas').dataset.selected")

    def test_draws_model(self):
        page = self.open_view(self.sample(ASSEMBLY))
        shot = Shot(page)
        self.assertGreater(len(shot.drawn), 2000)
        self.assertGreater(len(shot.colours()), 20)
        self.assertEqual([each.text for each in page.find_all("#view button")],
                         ["Fit", "Front", "Top", "Right", "Isometric", "Perspective", "+", "\u2212", "Annotations",
                          "Only selection"])
        self.assertFalse(page.find("#view > svg").is_displayed())
        self.assert_quiet(page)

    def test_dragging_rotates(self):
        page = self.open_view(self.sample(ASSEMBLY))
        before = Shot(page).drawn
        self.drag(page, 120, 40)
        self.assertNotEqual(Shot(page).drawn, before)
        self.press(page, "Isometric")
        self.assertEqual(Shot(page).drawn, before)
        self.assert_quiet(page)

    def test_draws_only_when_needed(self):
        page = self.open_view(self.sample(ASSEMBLY))
        page.run("window.frames_ = 0; const draw = WebGLRenderingContext.prototype.drawElements;"
                 "WebGLRenderingContext.prototype.drawElements = function(...all) { ++frames_; return draw.apply(this, all); }")
        time.sleep(0.5)
        self.assertEqual(page.run("return frames_"), 0)
        self.press(page, "+")
        self.assertGreater(page.run("return frames_"), 0)

    def test_standard_views(self):
        # 100 wide, 50 high, and seen from the right a line.
        document = self.write_document(FRAME.format(x0="0.", x1="100.", z0="0.", z1="50."))
        page = self.open_view(document)
        self.press(page, "Front")
        width, height = Shot(page).box()
        self.assertAlmostEqual(width / height, 2.0, delta=0.05)
        self.press(page, "Top")
        self.assertLess(Shot(page).box()[1], 4)
        self.press(page, "Right")
        width, height = Shot(page).box()
        self.assertLess(width, 4)
        self.assertGreater(height, 100)
        self.press(page, "Isometric")
        # 100 / sqrt 2 wide, (100 + 2 * 50) / sqrt 6 high.
        width, height = Shot(page).box()
        self.assertAlmostEqual(width / height, 70.711 / 81.650, delta=0.03)

    def test_fit_and_zoom(self):
        page = self.open_view(self.write_document(FRAME.format(x0="0.", x1="100.", z0="0.", z1="50.")))
        self.press(page, "Front")
        fitted = Shot(page).box()
        self.press(page, "\u2212")
        self.assertAlmostEqual(Shot(page).box()[0] * 1.4, fitted[0], delta=4)
        self.press(page, "Fit")
        self.assertEqual(Shot(page).box(), fitted)
        # The wheel belongs to the page until the picture has the focus.
        page.find("h1").click()
        page.run("document.activeElement.blur()")
        canvas = page.find("#view canvas")
        page.run("arguments[0].dispatchEvent(new WheelEvent('wheel', {deltaY: 200, cancelable: true}))", canvas)
        self.settle(page)
        self.assertEqual(Shot(page).box(), fitted)
        page.run("arguments[0].focus();"
                 "arguments[0].dispatchEvent(new WheelEvent('wheel', {deltaY: 200, cancelable: true}))", canvas)
        self.settle(page)
        self.assertLess(Shot(page).box()[0], fitted[0] - 20)

    def test_keyboard(self):
        page = self.open_view(self.write_document(FRAME.format(x0="0.", x1="100.", z0="0.", z1="50.")))
        canvas = page.find("#view canvas")
        canvas.send_keys("1")
        self.settle(page)
        fitted = Shot(page)
        canvas.send_keys(Keys.ARROW_RIGHT)
        self.settle(page)
        self.assertLess(Shot(page).box()[0], fitted.box()[0])
        canvas.send_keys("1", "-", "f")
        self.settle(page)
        self.assertEqual(Shot(page).box(), fitted.box())
        canvas.send_keys(Keys.SHIFT + Keys.ARROW_LEFT)
        self.settle(page)
        self.assertNotEqual(Shot(page).drawn.keys(), fitted.drawn.keys())

    def touch(self, page, kind, *points):
        self.driver.execute_cdp_cmd("Input.dispatchTouchEvent", {
            "type": kind, "touchPoints": [{"x": x, "y": y, "id": i} for i, (x, y) in enumerate(points)]})

    def test_touch(self):
        page = self.open_view(self.write_document(FRAME.format(x0="0.", x1="100.", z0="0.", z1="50.")))
        self.press(page, "Front")
        self.press(page, "\u2212")
        self.press(page, "\u2212")
        before = Shot(page)
        page.run("document.querySelector('#view canvas').scrollIntoView({block: 'center'})")
        x, y = page.run("""const box = document.querySelector('#view canvas').getBoundingClientRect();
            return [box.x + box.width / 2, box.y + box.height / 2]""")
        # Two fingers move apart: the frame is 1.5 times as large.
        self.touch(page, "touchStart", (x - 60, y), (x + 60, y))
        for step in range(1, 11):
            self.touch(page, "touchMove", (x - 60 - 3 * step, y), (x + 60 + 3 * step, y))
        self.touch(page, "touchEnd")
        self.settle(page)
        after = Shot(page)
        self.assertAlmostEqual(after.box()[0] / before.box()[0], 1.5, delta=0.08)
        # Two fingers move in parallel: the frame moves and keeps its size.
        self.touch(page, "touchStart", (x - 60, y), (x + 60, y))
        for step in range(1, 11):
            self.touch(page, "touchMove", (x - 60 + 4 * step, y), (x + 60 + 4 * step, y))
        self.touch(page, "touchEnd")
        self.settle(page)
        moved = Shot(page)
        self.assertAlmostEqual(min(x for x, _ in moved.drawn) - min(x for x, _ in after.drawn), 40, delta=5)
        self.assertAlmostEqual(moved.box()[0], after.box()[0], delta=4)
        # One finger rotates.
        self.touch(page, "touchStart", (x, y))
        for step in range(1, 11):
            self.touch(page, "touchMove", (x + 8 * step, y))
        self.touch(page, "touchEnd")
        self.settle(page)
        self.assertLess(Shot(page).box()[0], 0.9 * moved.box()[0])
        self.assert_quiet(page)

    def test_perspective(self):
        page = self.open_view(self.sample(ASSEMBLY))
        parallel = Shot(page).drawn
        button = self.press(page, "Perspective")
        self.assertEqual(button.get_attribute("aria-pressed"), "true")
        self.assertNotEqual(Shot(page).drawn, parallel)
        self.press(page, "Perspective")
        self.assertEqual(Shot(page).drawn, parallel)

    def test_annotations_can_be_switched(self):
        page = self.open_view(self.sample(ASSEMBLY))
        with_annotations = len(Shot(page).drawn)
        button = self.press(page, "Annotations")
        self.assertEqual(button.get_attribute("aria-pressed"), "false")
        self.assertLess(len(Shot(page).drawn), with_annotations - 200)
        self.press(page, "Annotations")
        self.assertEqual(len(Shot(page).drawn), with_annotations)

    def test_selection_from_structure(self):
        page = self.open_view(self.sample(ASSEMBLY))
        before = Shot(page).colours()
        page.go("node=0/2")
        page.wait("return document.querySelector('#view canvas').dataset.selected === '0/2'")
        self.settle(page)
        after = Shot(page).colours()
        # Orange edges appear, and those of the other parts fade.
        self.assertFalse([each for each in before if each[0] > 200 and 50 < each[1] < 120 and each[2] < 20])
        self.assertTrue([each for each in after if each[0] > 200 and 50 < each[1] < 120 and each[2] < 20])
        self.assertEqual(page.text("#view .selection"), "Base plate")
        self.assert_quiet(page)

    def test_selection_from_picture(self):
        page = self.open_view(self.sample(ASSEMBLY))
        self.press(page, "Front")
        # A knob is in the middle of the front view.
        page.run("window.heard = []; document.addEventListener('brivet-select', e => heard.push([e.detail.path, e.detail.origin]))")
        shot = Shot(page)
        red = [place for place, colour in shot.drawn.items() if colour[0] > 120 and colour[1] < 60 and colour[2] < 60]
        x, y = sorted(red)[len(red) // 2]
        ActionChains(page.driver).move_to_element_with_offset(
            page.find("#view canvas"), x - shot.width // 2, y - shot.height // 2).click().perform()
        self.settle(page)
        self.assertEqual(page.run("return heard"), [["0/6", "view"]])
        self.assertEqual(page.text("#view .selection"), "Front knob")
        self.assertEqual(page.count("#structure [aria-selected=true]"), 1)
        # A click outside the model selects nothing.
        ActionChains(page.driver).move_to_element_with_offset(
            page.find("#view canvas"), 20 - shot.width // 2, 20 - shot.height // 2).click().perform()
        self.settle(page)
        self.assertEqual(self.selected(page), "")
        self.assert_quiet(page)

    def orange(self, page):
        """Returns what the canvas shows, and the pixels in the hue of the selection."""
        shot = Shot(page)
        selected = [place for place, colour in shot.drawn.items() if colour[0] > colour[1] and colour[0] - colour[2] > 20]
        return shot, selected

    def test_row_selects_all_its_nodes(self):
        """A row that represents several nodes selects them all; each of them selects the row."""
        # Three frames: two side by side and one above the first.
        page = self.open_view(self.write_document("".join(extreme.placed(3))))
        self.press(page, "Front")
        width, height = Shot(page).box()
        page.run("[...document.querySelectorAll('.row')].find(row => row.querySelector('.times')).querySelector('.name').click()")
        self.settle(page)
        self.assertEqual(page.text("#view .selection"), "part ×3")
        shot, selected = self.orange(page)
        self.assertGreater(len(selected), 0.9 * len(shot.drawn))
        everything = {(x, y) for x, y in selected}
        self.press(page, "Only selection")
        self.assertEqual(Shot(page).box(), (width, height))
        self.press(page, "Only selection")
        # A click on the left edge of each frame: the corners of all are at 0, 2 and 3 of 3 units to the right.
        left, right = min(x for x, _ in everything), max(x for x, _ in everything)
        top, bottom = min(y for _, y in everything), max(y for _, y in everything)
        unit = (right - left) / 3
        for number, (x, y) in enumerate([(left, bottom - unit / 4), (right, bottom - unit / 4), (left, top + unit / 4)]):
            ActionChains(page.driver).move_to_element_with_offset(
                page.find("#view canvas"), round(x) - shot.width // 2, round(y) - shot.height // 2).click().perform()
            page.wait(f"return document.querySelector('#view canvas').dataset.selected === '0/{number}'")
            self.settle(page)
            self.assertEqual(page.text("[aria-selected=true] .times"), " ×3")
            self.assertEqual(page.count("[aria-selected=true]"), 1)
            self.assertLess(len(self.orange(page)[1]), 0.5 * len(everything))
        # The row again.
        page.find("[aria-selected=true] .name").click()
        self.settle(page)
        self.assertGreater(len(self.orange(page)[1]), 0.9 * len(everything))
        self.assert_quiet(page)

    def test_row_in_repeated_row_selects_all_its_nodes(self):
        # Two assemblies of two frames each.
        data = "".join(extreme.placed(2)).replace("'top','top'", "'pair','pair'")
        data += ("#50=PRODUCT('all','all','',());\n#51=PRODUCT_DEFINITION_FORMATION('','',#50);\n"
                 "#52=PRODUCT_DEFINITION('','',#51,$);\n#53=PRODUCT_DEFINITION_SHAPE('','',#52);\n"
                 "#54=SHAPE_DEFINITION_REPRESENTATION(#53,#55);\n#55=SHAPE_REPRESENTATION('',(#36),#1);\n")
        for i in range(2):
            k = 5000 + 10 * i
            data += (f"#{k}=NEXT_ASSEMBLY_USAGE_OCCURRENCE('{i}','','',#52,#32,$);\n"
                     f"#{k + 1}=CARTESIAN_POINT('',(0.,0.,{2 * i}.));\n#{k + 2}=AXIS2_PLACEMENT_3D('',#{k + 1},$,$);\n"
                     f"#{k + 3}=ITEM_DEFINED_TRANSFORMATION('','',#36,#{k + 2});\n"
                     f"#{k + 4}=(REPRESENTATION_RELATIONSHIP('','',#35,#55)REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION"
                     f"(#{k + 3})SHAPE_REPRESENTATION_RELATIONSHIP());\n#{k + 5}=PRODUCT_DEFINITION_SHAPE('','',#{k});\n"
                     f"#{k + 6}=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#{k + 4},#{k + 5});\n")
        page = self.open_view(self.write_document(data))
        self.press(page, "Front")
        page.run("[...document.querySelectorAll('.row .name')].find(each => each.textContent === 'part').click()")
        self.settle(page)
        self.assertEqual(page.text("#view .selection"), "part ×4")
        shot, selected = self.orange(page)
        self.assertGreater(len(selected), 0.9 * len(shot.drawn))
        # One of them, by its address.
        page.go("node=0/2/0")
        page.wait("return document.querySelector('#view canvas').dataset.selected === '0/2/0'")
        self.settle(page)
        one = len(self.orange(page)[1])
        self.assertGreater(one, 0.15 * len(selected))
        self.assertLess(one, 0.4 * len(selected))
        self.assert_quiet(page)

    def test_only_selection(self):
        # Edges only: shaded faces of a pin that is fitted take more pixels than those of everything.
        page = self.open_view(self.sample(ASSEMBLY), "-set", "Html.*.Writer.Shade=Off")
        everything = len(Shot(page).drawn)
        self.assertFalse(next(each for each in page.find_all("#view button") if each.text == "Only selection").is_enabled())
        page.go("node=0/5")
        page.wait("return document.querySelector('#view canvas').dataset.selected === '0/5'")
        self.press(page, "Only selection")
        shot = Shot(page)
        self.assertLess(len(shot.drawn), everything / 2)
        self.assertGreater(shot.box()[1], shot.height * 0.5)  # fits the pin
        page.find("#view canvas").send_keys(Keys.ESCAPE)
        self.settle(page)
        self.assertEqual(self.selected(page), "")
        self.press(page, "Isometric")
        self.assertAlmostEqual(len(Shot(page).drawn), everything, delta=everything / 50)

    def test_extreme_sizes(self):
        sizes = {"tiny": ("0.", "1.E-9", "0.", "5.E-10"), "huge": ("0.", "1.E9", "0.", "5.E8"),
                 "far": ("1.E9", "1000000100.", "-1.E9", "-999999950.")}
        for name, (x0, x1, z0, z1) in sizes.items():
            with self.subTest(name):
                page = self.open_view(self.write_document(FRAME.format(x0=x0, x1=x1, z0=z0, z1=z1), name + ".stp"))
                self.press(page, "Front")
                width, height = Shot(page).box()
                self.assertAlmostEqual(width / height, 2.0, delta=0.05)
                self.assertGreater(width, 300)
                self.assert_quiet(page)

    def test_flat_model(self):
        page = self.open_view(self.write_document(FRAME.format(x0="0.", x1="100.", z0="0.", z1="0.")))
        self.press(page, "Front")
        self.assertGreater(Shot(page).box()[0], 300)
        self.assert_quiet(page)

    def test_repeated_product_is_instanced(self):
        """A thousand places take the space of one; each can be selected."""
        data = "".join(extreme.placed(1000, columns=40))
        page = self.open_view(self.write_document(data))
        self.press(page, "Front")
        width, height = Shot(page).box()
        self.assertAlmostEqual(width / height, 79 / 48.5, delta=0.05)
        packed = page.run("return document.getElementById('data-geometry').textContent")
        picture = zlib.decompress(base64.b64decode(packed), 31)
        self.assertLess(len(picture), 400)
        # The first place is in the lower left corner.
        shot = Shot(page)
        x, y = min(shot.drawn, key=lambda place: place[0] - 3 * place[1])
        ActionChains(page.driver).move_to_element_with_offset(
            page.find("#view canvas"), x - shot.width // 2, y - shot.height // 2).click().perform()
        self.settle(page)
        self.assertEqual(self.selected(page), "0/0")
        page.go("node=0/999")
        page.wait("return document.querySelector('#view canvas').dataset.selected === '0/999'")
        self.press(page, "Only selection")
        width, height = Shot(page).box()
        self.assertAlmostEqual(width / height, 2.0, delta=0.05)
        self.assert_quiet(page)

    def test_selects_one_of_many_children(self):
        """A node among thousands is shown without the rows before it."""
        data = FRAME.format(x0="0.", x1="1.", z0="0.", z1="0.5").replace("#12=", "#9=")
        data += ("#30=PRODUCT('top','top','',());\n#31=PRODUCT_DEFINITION_FORMATION('','',#30);\n"
                 "#32=PRODUCT_DEFINITION('','',#31,$);\n#33=PRODUCT_DEFINITION_SHAPE('','',#32);\n"
                 "#34=SHAPE_DEFINITION_REPRESENTATION(#33,#15);\n")
        for i in range(3000):
            k = 1000 + 10 * i
            data += (f"#{k}=PRODUCT('p{i}','part {i}','',());\n#{k + 1}=PRODUCT_DEFINITION_FORMATION('','',#{k});\n"
                     f"#{k + 2}=PRODUCT_DEFINITION('','',#{k + 1},$);\n"
                     f"#{k + 3}=NEXT_ASSEMBLY_USAGE_OCCURRENCE('{i}','','',#32,#{k + 2},$);\n")
        page = self.open_view(self.write_document(data))
        page.go("node=1/2000")
        page.wait("return document.querySelector('#structure [aria-selected=true]')")
        self.assertIn("part 2000", page.text("#structure [aria-selected=true]"))
        self.assertLess(page.count("#structure [role=treeitem]"), 1500)
        page.go("node=1/1500")
        page.wait("return document.querySelector('#structure [aria-selected=true]').textContent.includes('part 1500')")
        names = [name for name in page.texts("#structure .row .name") if name.startswith("part ")]
        self.assertEqual(names, sorted(set(names), key=lambda name: int(name[5:])))
        self.assert_quiet(page)

    def test_dark(self):
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia",
                                    {"features": [{"name": "prefers-color-scheme", "value": "dark"}]})
        self.addCleanup(self.driver.execute_cdp_cmd, "Emulation.setEmulatedMedia", {"features": []})
        page = self.open_view(self.sample("examples/bracket.stp"))
        _, height, step, rows = pixels(page.find("#view canvas").screenshot_as_png)
        self.assertLess(max(rows[height // 2][8 * step:8 * step + 3]), 60)
        self.assertTrue([each for each in Shot(page).colours() if min(each) > 120])

    def test_resize(self):
        page = self.open_view(self.write_document(FRAME.format(x0="0.", x1="100.", z0="0.", z1="50.")))
        self.press(page, "Front")
        size = self.driver.get_window_size()
        self.addCleanup(self.driver.set_window_size, size["width"], size["height"])
        self.driver.set_window_size(500, 900)
        self.settle(page)
        self.press(page, "Fit")
        shot = Shot(page)
        self.assertLess(shot.width, 500)
        self.assertAlmostEqual(shot.box()[0] / shot.box()[1], 2.0, delta=0.05)


class NoWebGlTests(PageTest):
    arguments = ("--disable-gpu", "--disable-3d-apis")

    def test_shows_drawing(self):
        page = self.open_page(self.sample(ASSEMBLY))
        page.wait("return document.getElementById('view').dataset.picture === 'unavailable'")
        self.assertTrue(page.find("#view > svg").is_displayed())
        self.assertEqual(page.count("#view canvas"), 0)
        self.assertGreater(page.count("#view > svg path"), 3)
        self.assertIn("WebGL", page.text("#view .note"))
        self.assertEqual(page.watched()["errors"], [])


if __name__ == "__main__":
    main()
