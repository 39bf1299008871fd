#!/usr/bin/env python3
"""Draws layers.svg: the layers of the library, as the tests enforce them; above it brivet, its modules and their SDK.

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
# The modules and what they read or write.
MODULES = [
    ("BrivetStep", "reads and writes STEP"),
    ("BrivetHtml", "pages"),
    ("BrivetSvg", "drawings"),
    ("BrivetJson", "summaries"),
    ("BrivetText", "listings"),
    ("BrivetMesh", "glb, stl, obj"),
    ("BrivetShape", "exact shapes"),
]
LEFT, WIDTH, HEIGHT, TOP = 20, 760, 26, 262


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
        "<title>The layers of the library; above it brivet, its modules and their SDK</title>",
        "<style>text{font:13px sans-serif;fill:#223}.name{font-weight:bold}.side{fill:#556}</style>",
        f'<rect width="{LEFT * 2 + WIDTH}" height="{bottom + 60}" fill="#ffffff"/>',
    ]
    side = f'<text x="{LEFT + WIDTH / 2:g}" y="%d" text-anchor="middle" class="side">%s</text>'
    lines.append(box(LEFT, 14, WIDTH, 32, "#f2cccc", "brivet, the driver"))
    lines.append(side % (62, "loads modules by name, from their manifests"))
    gap = 12
    module = (WIDTH - 3 * gap) // 4
    for number, (name, text) in enumerate(MODULES):
        x, y = LEFT + number % 4 * (module + gap), 72 + number // 4 * 54
        lines.append(
            f'<rect x="{x}" y="{y}" width="{module}" height="44" rx="3" fill="#f6dcdc" stroke="#667"/>'
            f'<text x="{x + module / 2:g}" y="{y + 19}" text-anchor="middle" class="name">{name}</text>'
            f'<text x="{x + module / 2:g}" y="{y + 36}" text-anchor="middle">{text}</text>'
        )
    # The worker of the last module.
    x, y = LEFT + 3 * (module + gap), 126
    lines.append(f'<path d="M{x - gap} {y + 22}h{gap}" stroke="#667" stroke-dasharray="3 2"/>')
    lines.append(
        f'<rect x="{x}" y="{y}" width="{module}" height="44" rx="3" fill="#ffffff" stroke="#667" stroke-dasharray="3 2"/>'
        f'<text x="{x + module / 2:g}" y="{y + 19}" text-anchor="middle" class="name">brivet-shape-worker</text>'
        f'<text x="{x + module / 2:g}" y="{y + 36}" text-anchor="middle">a process, Open CASCADE</text>'
    )
    lines.append(box(LEFT, 184, WIDTH, 32, "#f2cccc", "libBrivetSdk.so: what modules include, and the product model"))
    lines.append(side % (246, "libVRELBase.so: a file includes only its own layer and lower ones"))
    for number, layer in enumerate(layers):
        description, colour = CONTENTS[layer]
        lines.append(box(LEFT, TOP + number * HEIGHT, WIDTH, HEIGHT, colour, layer, description))
    lines.append(box(LEFT, bottom + 16, WIDTH, 30, "#dddddd", "ICU (icu-uc), the C++ library, the dynamic loader"))
    return "\n".join([*lines, "</svg>", ""])


if __name__ == "__main__":
    Path(__file__).with_name("layers.svg").write_text(draw(), encoding="utf-8")
