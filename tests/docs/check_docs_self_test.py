#!/usr/bin/env python3
"""Tests each rule of check_docs.py on a small book with one mistake at a time, and the conversion of headers for
Doxygen."""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from check_docs import faults

ROOT = Path(__file__).resolve().parents[2]

BOOK = {
    "README.md": "# Library\n\nRead [the book](docs/README.md).\n",
    "docs/README.md": "# Book\n\n- [Tour](tour.md#first-step)\n- [brivet](brivet.md)\n",
    "docs/brivet.md": "# brivet\n\n```cpp\nanything();\n```\n",
    "docs/tour.md": "# Tour\n\n## First step\n\n[a step](../examples/tour/1_first.cpp), `[no](link)`:\n\n"
    "```cpp\nint main() {\n  Say();\n}\n```\n\n```text\nhello\n```\n\n"
    "## Second step\n\n[the data](../examples/tour/data.txt):\n\n```text\nbolt 8\n```\n\n"
    "[the step](../examples/tour/2_second.cpp):\n\n```cpp\nSayMore();\n```\n\n```text\nwritten\n```\n",
    "examples/tour/1_first.cpp": "#include \"A.h\"\n\nint main() {\n  Say();\n}\n",
    "examples/tour/1_first.out": "hello\n",
    "examples/tour/2_second.cpp": "#include \"B.h\"\n\nint main() {\n  Say();\n  SayMore();\n}\n",
    "examples/tour/2_second.out": "hello\nmore\n",
    "examples/tour/2_second.out.log": "written\n",
    "examples/tour/data.txt": "bolt 8\nnut 2\n",
}


class CheckDocsTest(unittest.TestCase):
    def found(self, **changes):
        """Returns the violations in the book after some replacements: file name -> (old text, new text)."""
        with tempfile.TemporaryDirectory() as folder:
            root = Path(folder).resolve()
            for name, text in BOOK.items():
                path = root / name
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text, encoding="utf-8")
            for name, (old, new) in changes.get("replace", {}).items():
                text = BOOK.get(name, "")
                self.assertIn(old, text)
                (root / name).write_text(text.replace(old, new), encoding="utf-8")
            return list(faults(root))

    def test_book_without_mistake(self):
        self.assertEqual(self.found(), [])

    def test_broken_link(self):
        expected = ["README.md:3: docs/book.md does not exist"]
        self.assertEqual(self.found(replace={"README.md": ("docs/README.md", "docs/book.md")}), expected)

    def test_missing_anchor(self):
        expected = ["docs/README.md:3: tour.md#third-step has no such heading"]
        self.assertEqual(self.found(replace={"docs/README.md": ("first-step", "third-step")}), expected)

    def test_unlisted_page(self):
        expected = ["docs/README.md: does not list brivet.md"]
        self.assertEqual(self.found(replace={"docs/README.md": ("- [brivet](brivet.md)\n", "")}), expected)

    def test_block_differs_from_file(self):
        expected = [
            "docs/tour.md:7: differs from 1_first.cpp, which has no line 'Shout();'",
            "docs/tour.md: does not show this line of 1_first.cpp: Say();",
        ]
        self.assertEqual(self.found(replace={"docs/tour.md": ("  Say();", "  Shout();")}), expected)

    def test_block_omits_line_of_file(self):
        replaced = {"examples/tour/1_first.cpp": ("  Say();\n", "\n  Say();\n")}
        self.assertEqual(self.found(replace=replaced), ["docs/tour.md:7: differs from 1_first.cpp"])

    def test_block_without_file(self):
        found = self.found(replace={"docs/tour.md": ("[the step](../examples/tour/2_second.cpp)", "The step")})
        self.assertEqual(found[0], "docs/tour.md:27: no source file is linked above this block")
        self.assertIn("examples/tour/2_second.cpp: no page links to it", found)

    def test_output_differs(self):
        for old, line, source in [("hello\n", 13, "the expected output of 1_first.cpp"),
                                  ("written\n", 31, "the expected output of 2_second.cpp"),
                                  ("bolt 8\n", 21, "data.txt")]:
            with self.subTest(old):
                expected = [f"docs/tour.md:{line}: differs from {source}, which has no line 'other'"]
                self.assertEqual(self.found(replace={"docs/tour.md": (old, "other\n")}), expected)

    def test_tour_omits_line(self):
        expected = ["docs/tour.md: does not show this line of 2_second.cpp: Whisper();"]
        self.assertEqual(
            self.found(replace={"examples/tour/2_second.cpp": ("  Say();\n", "  Say();\n  Whisper();\n")}), expected
        )

    def test_outdated_picture(self):
        script = "def draw():\n    return '<svg/>\\n'\n"
        picture = {"docs/images/draw_layers.py": script, "docs/images/layers.svg": "<svg/>\n"}
        BOOK.update(picture)
        try:
            self.assertEqual(self.found(), [])
            expected = ["docs/images/layers.svg: run docs/images/draw_layers.py"]
            self.assertEqual(self.found(replace={"docs/images/layers.svg": ("<svg/>", "<svg></svg>")}), expected)
        finally:
            for name in picture:
                del BOOK[name]


HEADER = """\
// Describes things.
#pragma once

// A thing, 100% <solid>, by `a::b` and \\S\\.
//
//   Thing thing;
//
//   thing.Use();
//
// Errors: none.
class Thing {
  int size;  // in bytes
  void Use() { size = 1; }
};
"""

DOCUMENTED = """\
/// @file
/// Describes things.
#pragma once

/// A thing, 100\\% \\<solid\\>, by `a::b` and \\\\S\\\\.
///
/// @code{.cpp}
/// Thing thing;
///
/// thing.Use();
/// @endcode
///
/// **Errors:** none.
class Thing {
  int size;  ///< in bytes
  void Use() { size = 1; }
};

"""


class DoxygenHeadersTest(unittest.TestCase):
    def test_comments_are_converted(self):
        with tempfile.TemporaryDirectory() as folder:
            source = Path(folder) / "from/deep"
            target = Path(folder) / "to"
            source.mkdir(parents=True)
            target.mkdir()
            (source / "Thing.h").write_text(HEADER, encoding="utf-8")
            (source / "Names.def").write_text("NAME(a)\n", encoding="utf-8")
            (target / "Old.h").write_text("", encoding="utf-8")
            subprocess.run([sys.executable, ROOT / "docs/doxygen_headers.py", source.parent, target], check=True)
            self.assertEqual((target / "Thing.h").read_text(encoding="utf-8"), DOCUMENTED)
            self.assertEqual(sorted(path.name for path in target.iterdir()), ["Names.def", "Thing.h"])


if __name__ == "__main__":
    unittest.main()
