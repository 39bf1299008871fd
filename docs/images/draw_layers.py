#!/usr/bin/env python3
"""Draws layers.svg: the layers of the library, as the tests enforce them, and brivet with its modules on top.

draw_layers.py     writes layers.svg next to this script
"""
import sys
from html import escape
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests/tree"))

from source_tree import LIBRARY_LAYERS  # noqa: E402

UTILITIES, STREAM, MATH, PUBLIC = "#dbe7f5", "#dff0dc", "#f8ecd2", "#ececf4"
# The contents of each layer, and the colour of the folder that it belongs to.
CONTENTS = {
    "object": ("results, counted objects, handles, exceptions", UTILITIES),
    "containers": ("array, hash map and list, list, stack, tree", UTILITIES),
    "strings": ("VRELString, conversions, ISO 10303-21 text", UTILITIES),
    "numeric": ("tolerances, number reading, locale, dates", MATH),
    "events": ("bus, channels, errors, the abort flag", UTILITIES),
    "narrow": ("Gk_String and the number parser", UTILITIES),
    "values": ("VRELValue, VRELTable", UTILITIES),
    "files": ("paths, files, folders, file header", UTILITIES),
    "streams": ("streams, buffers, archive, formatters", STREAM),
    "settings": ("environment, properties, the known names", UTILITIES),
    "options": ("option store, configuration files", UTILITIES),
    "plugins": ("modules that are loaded by name", UTILITIES),
    "logging": ("loggers, tasks, timing, observers", UTILITIES),
    "readers": ("format, section and entity readers", UTILITIES),
    "units": ("length units", MATH),
    "geometry": ("points, morphs, matrices, boxes", MATH),
    "records": ("placements, selections, colours, shells", MATH),
    "public": ("the handles of applications", PUBLIC),
}
LEFT, WIDTH, HEIGHT, TOP = 20, 640, 26, 130


def box(x, y, width, height, fill, title, text=""):
    middle = y + height / 2 + 4.5
    if not text:
        words = f'<text x="{x + width / 2:g}" y="{middle:g}" text-anchor="middle" class="name">{escape(title)}</text>'
    else:
        words = (
            f'<text x="{x + 12}" y="{middle:g}" class="name">{escape(title)}</text>'
            f'<text x="{x + 160}" y="{middle:g}">{escape(text)}</text>'
        )
    return f'<rect x="{x}" y="{y}" width="{width}" height="{height}" rx="3" fill="{fill}" stroke="#667"/>{words}'


def draw():
    layers = [layer for layer in reversed(LIBRARY_LAYERS) if layer in CONTENTS]
    if set(CONTENTS) != set(LIBRARY_LAYERS[: LIBRARY_LAYERS.index("startup")]):
        sys.exit("draw_layers.py: the layers have changed: describe them in CONTENTS")
    bottom = TOP + len(layers) * HEIGHT
    lines = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {LEFT * 2 + WIDTH} {bottom + 60}" role="img">',
        "<title>The layers of the library, and brivet with its modules on top</title>",
        "<style>text{font:13px sans-serif;fill:#223}.name{font-weight:bold}.side{fill:#556}</style>",
        f'<rect width="{LEFT * 2 + WIDTH}" height="{bottom + 60}" fill="#ffffff"/>',
    ]
    module = (WIDTH - 2 * 20) // 3
    for number, name in enumerate(["BrivetStep", "BrivetHtml", "BrivetText"]):
        lines.append(box(LEFT + number * (module + 20), 64, module, 32, "#f6dcdc", name))
    lines.append(box(LEFT, 14, WIDTH, 32, "#f2cccc", "brivet, the driver"))
    lines.append(f'<text x="{LEFT + WIDTH / 2:g}" y="59" text-anchor="middle" class="side">loads by name</text>')
    lines.append(
        f'<text x="{LEFT + WIDTH / 2:g}" y="117" text-anchor="middle" class="side">'
        "libVRELBase.so: a file includes only its own layer and lower ones</text>"
    )
    for number, layer in enumerate(layers):
        description, colour = CONTENTS[layer]
        lines.append(box(LEFT, TOP + number * HEIGHT, WIDTH, HEIGHT, colour, layer, description))
    lines.append(box(LEFT, bottom + 16, WIDTH, 30, "#dddddd", "ICU (icu-uc), the C++ library, the dynamic loader"))
    return "\n".join([*lines, "</svg>", ""])


if __name__ == "__main__":
    Path(__file__).with_name("layers.svg").write_text(draw(), encoding="utf-8")
