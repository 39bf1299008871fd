#!/usr/bin/env python3
"""Compares the book with the files that it shows.

check_docs.py [--root FOLDER]     fails with a line for each violation

The rules:
- A link of docs/*.md and README.md refers to a file or folder of the tree, and after a # to a heading of that page.
- docs/README.md links every page of docs/.
- A block of C++ belongs to the source file of the last link above it, in its section, and is a run of the lines of that
  file, possibly with less indentation. A block of text after such a link is a run of the lines of the program's
  expected output; after a link to a data file, of that file. FREE_PAGES are exempt.
- Every source file of examples/ is linked by a page.
- docs/images/layers.svg is the output of docs/images/draw_layers.py.
- The tour shows each step completely, as far as it differs from the previous step: every line except includes and
  single braces.
"""
import argparse
import re
import subprocess
import sys
import textwrap
from pathlib import Path

FREE_PAGES = {"brivet.md", "fuzzing.md", "packaging.md", "platforms.md", "modules.md"}
HEADING = re.compile(r"^#+ +(.*?) *$")
FENCE = re.compile(r"^```(\w*)")
LINK = re.compile(r"\[(?:[^\[\]]|\[[^\]]*\])*\]\(([^()\s]+)\)")
INLINE_CODE = re.compile(r"`[^`]*`")


class Page:
    """A parsed page: its headings, its links and their files, and its blocks.

    Each block has the example of the last link above it in its section."""

    def __init__(self, path):
        self.path = path
        self.headings = set()
        self.links = []
        self.files = set()
        self.blocks = []
        example = None
        language = None
        lines = []
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            fence = FENCE.match(line)
            if language is not None:
                if fence:
                    self.blocks.append((first, language, lines, example))
                    language = None
                else:
                    lines.append(line)
            elif fence:
                first, language, lines = number, fence.group(1), []
            elif heading := HEADING.match(line):
                self.headings.add(slug(heading.group(1)))
                example = None
            else:
                for target in LINK.findall(INLINE_CODE.sub("``", line)):
                    file = (path.parent / target.partition("#")[0]).resolve()
                    self.links.append((number, target))
                    self.files.add(file)
                    if "examples" in file.parts and file.is_file():
                        example = file


def slug(heading):
    """Returns the anchor of a heading, as repository hosts generate it."""
    plain = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", heading).lower()
    return re.sub(r"[^\w\- ]", "", plain).strip().replace(" ", "-")


def is_run(block, text):
    """Returns whether the lines are a contiguous run of the text, apart from indentation."""
    lines = text.splitlines()
    wanted = textwrap.dedent("\n".join(block))
    size = len(block)
    return any(
        textwrap.dedent("\n".join(lines[start : start + size])) == wanted for start in range(len(lines) - size + 1)
    )


def first_unknown_line(block, text):
    """Returns ", which has no line ..." for the first line of the block that the text does not have; "" for none."""
    known = {line.strip() for line in text.splitlines()}
    unknown = [line.strip() for line in block if line.strip() not in known]
    return f", which has no line '{unknown[0]}'" if unknown else ""


def check_links(root, pages):
    headings = {page.path.resolve(): page.headings for page in pages}
    for page in pages:
        for number, target in page.links:
            if re.match(r"[a-z]+:", target):
                continue
            name, _, anchor = target.partition("#")
            file = (page.path.parent / name).resolve() if name else page.path.resolve()
            location = f"{page.path.relative_to(root)}:{number}"
            if not file.exists():
                yield f"{location}: {target} does not exist"
            elif anchor and anchor not in headings.get(file, {anchor}):
                yield f"{location}: {target} has no such heading"


def check_contents(root, pages):
    contents = root / "docs/README.md"
    linked = {file for page in pages if page.path == contents for file in page.files}
    for page in pages:
        if page.path.parent == contents.parent and page.path != contents and page.path.resolve() not in linked:
            yield f"docs/README.md: does not list {page.path.name}"


def check_blocks(root, pages):
    for page in pages:
        if page.path.parent != root / "docs" or page.path.name in FREE_PAGES:
            continue
        for number, language, lines, example in page.blocks:
            location = f"{page.path.relative_to(root)}:{number}"
            if language == "cpp" and (example is None or example.suffix != ".cpp"):
                yield f"{location}: no source file is linked above this block"
            elif language == "cpp" and not is_run(lines, example.read_text(encoding="utf-8")):
                unknown = first_unknown_line(lines, example.read_text(encoding="utf-8"))
                yield f"{location}: differs from {example.name}{unknown}"
            elif language == "text" and example is not None:
                files = sorted(example.parent.glob(f"{example.stem}.out*")) if example.suffix == ".cpp" else [example]
                texts = [file.read_text(encoding="utf-8") for file in files]
                if not any(is_run(lines, text) for text in texts):
                    expected = f"the expected output of {example.name}" if example.suffix == ".cpp" else example.name
                    unknown = first_unknown_line(lines, "\n".join(texts))
                    yield f"{location}: differs from {expected}{unknown}"


def check_examples(root, pages):
    linked = {file for page in pages for file in page.files}
    for source in sorted((root / "examples").rglob("*.cpp")):
        if source.resolve() not in linked:
            yield f"{source.relative_to(root)}: no page links to it"


def check_tour(root, pages):
    shown = {}
    for page in pages:
        for _, language, lines, example in page.blocks:
            if page.path.name == "tour.md" and language == "cpp" and example is not None:
                shown.setdefault(example.name, set()).update(line.strip() for line in lines)
    before = set()
    steps = sorted((root / "examples/tour").glob("[0-9]*.cpp"), key=lambda file: int(file.name.partition("_")[0]))
    for step in steps:
        lines = [line.strip() for line in step.read_text(encoding="utf-8").splitlines()]
        for line in lines:
            is_plain = line.startswith("#include") or not re.search(r"\w", line)
            if not is_plain and line not in before and line not in shown.get(step.name, set()):
                yield f"docs/tour.md: does not show this line of {step.name}: {line}"
        before = set(lines)


def check_picture(root, _pages):
    script = root / "docs/images/draw_layers.py"
    if script.exists():
        drawn = subprocess.run(
            [sys.executable, "-c", "import draw_layers; print(draw_layers.draw(), end='')"],
            cwd=script.parent, capture_output=True, text=True,
        )
        if drawn.returncode != 0:
            yield drawn.stderr.strip()
        elif drawn.stdout != script.with_name("layers.svg").read_text(encoding="utf-8"):
            yield "docs/images/layers.svg: run docs/images/draw_layers.py"


def faults(root):
    pages = [Page(path) for path in [root / "README.md", *sorted((root / "docs").glob("*.md"))]]
    for check in [check_links, check_contents, check_blocks, check_examples, check_tour, check_picture]:
        yield from check(root, pages)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--root", type=Path, default=Path(__file__).resolve().parents[2])
    found = list(faults(parser.parse_args().root))
    for fault in found:
        print(fault)
    print(f"docs: {len(found)} faults")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
