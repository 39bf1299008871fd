"""The files of the tree, the floor on which each stands, and what they include."""
import re
from functools import cached_property
from pathlib import Path

# From the ground up; a file includes only what stands on its own floor or below. The folders of the library carry the
# names of their floors, but for the plug-ins, whose folder holds two.
FLOORS = [
    "object",
    "containers",
    "strings",
    "numeric",
    "events",
    "narrow",
    "values",
    "files",
    "streams",
    "settings",
    "options",
    "plug-in libraries",
    "logging",
    "plug-in readers",
    "units",
    "geometry",
    "records",
    "public",
    "startup",
    "umbrella",
    "brivet",
    "outside",
]

# Files that do not stand where their folder does.
FLOOR_OF_FILE = {
    "VRINResult.h": "object",
    "VRINResult.cpp": "object",
    "VRELIcuNamespace.h": "object",
    "VRELStartup.cpp": "startup",
    "VRELBase.h": "umbrella",
}

# What leans on the library and on which nothing of the library leans.
OUTSIDE = ["tests", "examples", "fuzz", "benchmarks"]

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*"([^"]+)"', re.MULTILINE)


class SourceTree:
    def __init__(self, root):
        self.root = Path(root)

    @cached_property
    def files(self):
        """Every header and source, by its path below the root; a header that is configured counts without its .in."""
        found = []
        for top in ["VRELBase", "brivet"] + OUTSIDE:
            for path in sorted((self.root / top).rglob("*")):
                if re.search(r"\.(h|cpp|def|h\.in)$", path.name):
                    found.append(path.relative_to(self.root))
        return found

    @cached_property
    def headers(self):
        return [file for file in self.files if self.name(file).endswith(".h")]

    @cached_property
    def library_headers(self):
        return [file for file in self.headers if file.parts[0] == "VRELBase"]

    @cached_property
    def by_name(self):
        return {self.name(file): file for file in self.files}

    @staticmethod
    def name(file):
        return re.sub(r"\.in$", "", file.name)

    def text(self, file):
        return (self.root / file).read_text(encoding="utf-8")

    def includes(self, file):
        """The names that a file includes in quotes: those of the tree's own headers."""
        return INCLUDE.findall(self.text(file))

    def floor(self, file):
        """The name of a file's floor, None where the folder has none."""
        if file.parts[0] == "brivet":
            return "brivet"
        if file.parts[0] in OUTSIDE:
            return "outside"
        name = self.name(file)
        if name in FLOOR_OF_FILE:
            return FLOOR_OF_FILE[name]
        folder = file.parent.name
        if folder == "plugins":
            return "plug-in readers" if "Reader" in name else "plug-in libraries"
        if len(file.parts) > 2 and file.parts[1] == "VRELStream.m":
            return "streams"
        return folder if folder in FLOORS else None

    def test_folder(self, file):
        """The folder of tests/ that mirrors a file's own: the streams have no folder below their src/."""
        return "streams" if self.floor(file) == "streams" else file.parent.name

    def height(self, file):
        return FLOORS.index(self.floor(file))
