"""The files of the source tree, the layer of each, and what they include."""
import re
from functools import cached_property
from pathlib import Path

# The layers of the library, from the lowest to the highest. A file includes only files of its own or a lower layer. A
# layer is a folder of sources; "logging" has one folder for each of its groups.
LIBRARY_LAYERS = [
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
    "plugins",
    "logging",
    "readers",
    "units",
    "geometry",
    "records",
    "public",
    "startup",
    "umbrella",
]

# The layers of the driver. Folders on one line are siblings: none of them includes another.
DRIVER_LAYERS = [
    ["sdk"],
    ["model"],
    ["process"],
    ["io"],
    ["modules"],
    ["terminal"],
    ["options"],
    ["translate"],
    ["main"],
]

# The folders that hold the code that uses the library, and that the library never includes.
CLIENTS = ["tests", "examples", "fuzz", "benchmarks"]

# What a format module uses of another one's folder.
MODULE_USES = {"brivet/html": ["brivet/svg"]}

# Files whose layer is not that of their folder.
LAYER_OF_FILE = {
    "VRINResult.h": "object",
    "VRINResult.cpp": "object",
    "VRELIcuNamespace.h": "object",
    "VRELStartup.cpp": "startup",
    "VRELBase.h": "umbrella",
}

# Folders of headers that a client does not include directly.
NOT_PUBLIC = ["detail", "internal"]

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*"([^"]+)"', re.MULTILINE)


class SourceTree:
    def __init__(self, root):
        self.root = Path(root)

    @cached_property
    def files(self):
        """Every header and source, by its path from the root."""
        found = []
        for top in ["VRELBase", "brivet"] + CLIENTS:
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
    def public_headers(self):
        return [file for file in self.library_headers if file.parent.name not in NOT_PUBLIC]

    @cached_property
    def by_name(self):
        return {self.name(file): file for file in self.files}

    @staticmethod
    def name(file):
        """The name of a file; a header that CMake configures counts without its ".in"."""
        return re.sub(r"\.in$", "", file.name)

    def text(self, file):
        return (self.root / file).read_text(encoding="utf-8")

    def includes(self, file):
        """The names that a file includes in quotes: those of the tree's own headers."""
        return INCLUDE.findall(self.text(file))

    def included_file(self, name):
        """The file that an include refers to, or None. A header in a folder "detail" is named with that folder."""
        file = self.by_name.get(name.removeprefix("detail/"))
        if file is None or (file.parent.name == "detail") != name.startswith("detail/"):
            return None
        return file

    @staticmethod
    def folder(file):
        """The folder of a file from its group of sources on, for example "strings" or "logging/tasks"."""
        parts = [part for part in file.parts[1:-1] if not part.endswith(".m") and part not in ("src", *NOT_PUBLIC)]
        return "/".join(parts)

    def layer(self, file):
        """The name of a file's layer, or None if its folder is no layer."""
        if file.parts[0] in CLIENTS:
            return "clients"
        name = self.name(file)
        folder = self.folder(file).split("/")[0]
        if file.parts[0] == "brivet":
            return "brivet/" + (folder or "main")
        if name in LAYER_OF_FILE:
            return LAYER_OF_FILE[name]
        if len(file.parts) > 2 and file.parts[1] == "VRELStream.m":
            return "streams"
        return folder if folder in LIBRARY_LAYERS else None

    def may_include(self, file, included):
        """Whether the layer of a file may include that of another. A format module may include only itself, the SDK,
        the model, and what MODULE_USES lists."""
        source, target = self.layer(file), self.layer(included)
        if source is None or target is None or source == target or source == "clients":
            return True
        if target == "clients":
            return False
        if source in LIBRARY_LAYERS:
            return target in LIBRARY_LAYERS and LIBRARY_LAYERS.index(target) <= LIBRARY_LAYERS.index(source)
        if target in LIBRARY_LAYERS:
            return True
        heights = {f"brivet/{name}": height for height, names in enumerate(DRIVER_LAYERS) for name in names}
        if source not in heights:
            return target in ("brivet/sdk", "brivet/model", *MODULE_USES.get(source, []))
        return target in heights and heights[target] < heights[source]

    def test_folder(self, file):
        """The folder of tests/ that mirrors a file's own."""
        return "tests/" + self.folder(file)
