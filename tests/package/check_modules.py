#!/usr/bin/env python3
"""Builds format modules against the installed package, and translates with them.

check_modules.py PREFIX LIBRARY-FOLDER BINARY-FOLDER ROOT SCRATCH
"""
import os
import re
import shutil
import subprocess
import struct
import sys
import unittest
from pathlib import Path

PREFIX, LIBRARIES, BINARIES, ROOT, SCRATCH = (Path(word).resolve() for word in sys.argv[1:6])
BRACKET = ROOT / "examples/bracket.stp"
TRIANGLE = "".join(
    f"{line}\n"
    for line in ["solid plate", "facet normal 0 0 1", "outer loop", "vertex 0 0 0", "vertex 1 0 0", "vertex 0 2.5 0"]
) + "endloop\nendfacet\nendsolid plate\n"


def run(*command, path=(), expected=0, cwd=SCRATCH):
    """Runs a command that must exit with the expected status, and returns both of its outputs."""
    environment = {key: value for key, value in os.environ.items() if key != "LD_LIBRARY_PATH"}
    environment.update(LC_ALL="C.UTF-8", BRIVET_MODULE_PATH=":".join(str(folder) for folder in path))
    environment["PKG_CONFIG_PATH"] = str(LIBRARIES / "pkgconfig")
    if shutil.which("make") is None:
        environment["CMAKE_GENERATOR"] = "Ninja"
    answer = subprocess.run(
        [str(word) for word in command], cwd=cwd, env=environment, capture_output=True, text=True, check=False
    )
    if answer.returncode != expected:
        raise AssertionError(f"{command}: {answer.returncode}\n{answer.stdout}\n{answer.stderr}")
    return answer.stdout + answer.stderr


def brivet(*words, path=(), expected=0):
    return run(BINARIES / "brivet", *words, path=path, expected=expected)


def write(name, content):
    path = SCRATCH / name
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(content if isinstance(content, bytes) else content.encode())
    return path


def binary(count, present):
    return b" " * 80 + struct.pack("<I", count) + (struct.pack("<12f", *range(12)) + b"\0\0") * present


def setUpModule():
    shutil.rmtree(SCRATCH, ignore_errors=True)
    SCRATCH.mkdir(parents=True)


class StlTest(unittest.TestCase):
    def build(self, compiler):
        if shutil.which(compiler) is None:
            self.skipTest(f"{compiler} is not installed")
        build, prefix = SCRATCH / f"build-{compiler}", SCRATCH / f"prefix-{compiler}"
        run("cmake", "-S", ROOT / "examples/stl-module", "-B", build, f"-DCMAKE_PREFIX_PATH={PREFIX}",
            f"-DCMAKE_CXX_COMPILER={compiler}", "-DCMAKE_CXX_FLAGS=-Werror", "-DCMAKE_INSTALL_LIBDIR=lib")
        run("cmake", "--build", build)
        run("ctest", "--test-dir", build, "--output-on-failure")
        run("cmake", "--install", build, "--prefix", prefix)
        return prefix / "lib/brivet"

    def translate(self, compiler):
        path = [self.build(compiler)]
        self.assertIn("stl      STL      read,write  BrivetStl    1.0", brivet("-formats", path=path))
        self.assertIn("Stl.*.Reader.Unit", brivet("-help", "stl", path=path))
        write("plate.stl", TRIANGLE)
        write("recognised.txt", TRIANGLE)
        for name in ["plate.stl", "recognised.txt"]:
            brivet(name, "plate.html", "-set", "Unit=cm", "-set", "Stl.*.Reader.Product=cover",
                   "-set", "Html.*.Writer.Plain=On", path=path)
            page = (SCRATCH / "plate.html").read_text(encoding="utf-8")
            self.assertIn("cover", page)
            self.assertIn("25.", page)
        brivet("plate.stl", "binary.stl", "-set", "Binary=On", path=path)
        self.assertEqual(len((SCRATCH / "binary.stl").read_bytes()), 84 + 50)
        brivet("binary.stl", "ascii.stl", path=path)
        self.assertIn("  vertex 0. 2.5 0.\n", (SCRATCH / "ascii.stl").read_text(encoding="utf-8"))
        write("cut.stl", binary(3, 2))
        self.assertIn("the file ends after 2 of 3 facets", brivet("cut.stl", "cut.html", path=path, expected=8))
        write("bad.stl", "solid a\nfacet normal 0 0 one\n")
        self.assertIn("bad.stl:2: error: expected a number, found 'one'", brivet("bad.stl", path=path, expected=21))
        self.assertIn("no ISO 10303-21 schema", brivet("plate.stl", "plate.stp", path=path, expected=4))
        self.assertFalse((SCRATCH / "plate.stp").exists())
        self.assertIn("no triangles", brivet(BRACKET, "bracket.stl", path=path, expected=4))
        # The assembly has two knobs with faces of 264 and 24 triangles.
        brivet(ROOT / "examples/assembly.stp", "knobs.stl", "-set", "Binary=On", path=path)
        self.assertEqual((SCRATCH / "knobs.stl").stat().st_size, 84 + 50 * 2 * (264 + 24))
        write("options.cfg", "# options\nStl.*.Reader.Unit = yard\n")
        error = "options.cfg:2: error: option 'Stl.*.Reader.Unit': expected one of mm, cm, m, inch, found 'yard'"
        self.assertIn(error, brivet("nosuch.stl", "-options", "options.cfg", path=path, expected=1))

    def test_gcc(self):
        self.translate("g++")

    def test_clang(self):
        self.translate("clang++-14" if shutil.which("clang++-14") else "clang++")


class TutorialTest(unittest.TestCase):
    def test_files_and_commands(self):
        folder = SCRATCH / "tutorial"
        folder.mkdir()
        name, block, commands = None, None, []
        for line in (ROOT / "docs/modules.md").read_text(encoding="utf-8").split("## Reference")[0].splitlines():
            if block is None and (found := re.match(r"`([\w.]+)`", line)):
                name = found.group(1)
            if line.startswith("```") and block is None:
                block = []
                commands = block if line == "```sh" else commands
            elif line.startswith("```"):
                if block is not commands:
                    with open(folder / name, "a", encoding="utf-8") as file:
                        file.write("".join(f"{each}\n" for each in block))
                block = None
            elif block is not None:
                block.append(line)
        script = "\n".join(["set -e", f"PATH={BINARIES}:$PATH CXXFLAGS='-Wall -Wextra -Werror'", "export CXXFLAGS",
                            f"export CMAKE_PREFIX_PATH={PREFIX}", *commands])
        output = run("bash", "-c", script, cwd=folder)
        self.assertIn("xyz      point list read,write  BrivetXyz    1.0", output)
        self.assertIn("Xyz.*.Reader.Scale\n", output)
        self.assertIn("points.txt: 2 instances of 1 type from points.xyz", output)
        self.assertIn("#2 = POINT(10., 25., 0.)", (folder / "points.txt").read_text(encoding="utf-8"))
        self.assertEqual((folder / "scaled.xyz").read_text(encoding="utf-8"), "0. 0. 0.\n10. 25. 0.\n")


class BadModuleTest(unittest.TestCase):
    def setUp(self):
        self.folder = SCRATCH / self.id().rsplit(".", 1)[1]
        self.folder.mkdir()
        self.manifest = self.folder / "BrivetBad.brivet"

    def build(self, *options, manifest=True):
        library = self.folder / "libBrivetBad.so"
        flags = run("pkg-config", "--cflags", "--libs", "brivet-sdk").split()
        run("g++", "-std=c++17", "-shared", "-fPIC", "-fvisibility=hidden", "-Wl,-soname,libBrivetBad.so", *options,
            ROOT / "tests/package/modules/Bad.cpp", "-o", library, *flags)
        if manifest:
            self.describe(library)
        return library

    def describe(self, library, expected=0):
        program = run("pkg-config", "--variable=describe", "brivet-sdk").strip()
        return run(program, library, self.manifest, expected=expected)

    def use(self, expected=4):
        return brivet(BRACKET, "out.bad", path=[self.folder], expected=expected)

    def replace(self, *options):
        """Replaces the module and keeps the manifest."""
        self.build()
        return self.build(*options, manifest=False)

    def test_missing(self):
        self.build().unlink()
        self.assertRegex(self.use(), "cannot load the module for writing Bad: .*No such file or directory")

    def test_other_architecture(self):
        library = self.build()
        content = bytearray(library.read_bytes())
        content[18:20] = struct.pack("<H", 8)
        library.write_bytes(content)
        self.assertRegex(self.use(), "cannot load the module for writing Bad: .*libBrivetBad.so: ")

    def test_without_entry_points(self):
        library = self.replace("-DNO_OPEN")
        write("in.bad", "")
        error = brivet("in.bad", "out.html", path=[self.folder], expected=4)
        self.assertRegex(error, "cannot load the module for reading Bad: .*undefined symbol: BrivetOpenDocument")
        self.assertIn("no function BrivetOpenDocument", self.describe(library, expected=1))

    def test_other_sdk(self):
        library = self.replace("-DOTHER_SDK")
        self.assertIn("built for version 99 of the SDK, this brivet has version 1", self.use())
        self.assertIn("built for version 99 of the SDK, this is 1", self.describe(library, expected=1))

    def test_undescribed(self):
        library = self.replace("-DUNDESCRIBED")
        self.assertIn("undefined symbol: BrivetSdkVersion", self.use())
        self.assertIn("no function BrivetSdkVersion", self.describe(library, expected=1))

    def test_undefined_symbol(self):
        library = self.replace("-DUNDEFINED")
        self.assertIn("undefined symbol: _Z14NowhereDefinedv", self.use())
        self.assertIn("undefined symbol: _Z14NowhereDefinedv", self.describe(library, expected=1))

    def test_other_soname(self):
        self.replace("-Wl,-soname,libOther.so")
        self.assertIn("its soname is not libBrivetBad.so", self.use())

    def test_throws(self):
        self.build("-DTHROWS")
        answer = subprocess.run(
            [BINARIES / "brivet", BRACKET, "out.bad", "-nolog"], cwd=SCRATCH, capture_output=True, text=True,
            env=dict(os.environ, BRIVET_MODULE_PATH=str(self.folder)), check=False)
        self.assertEqual(answer.returncode, 1)
        self.assertIn("the module 'BrivetBad' has failed: thrown by the module", answer.stderr)
        self.assertFalse((SCRATCH / "out.bad").exists())

    def test_exits(self):
        self.build("-DEXITS")
        self.assertIn("a format module has called exit", self.use(expected=1))
        self.assertFalse((SCRATCH / "out.bad").exists())

    def test_null_document(self):
        self.build()
        write("in.bad", "")
        answer = subprocess.run(
            [BINARIES / "brivet", "in.bad", "out.html", "-nolog"], cwd=SCRATCH, capture_output=True, text=True,
            env=dict(os.environ, BRIVET_MODULE_PATH=str(self.folder)), check=False)
        self.assertEqual(answer.returncode, 1)
        self.assertIn("reported success without a document", answer.stderr)

    def test_invalid_description(self):
        library = self.build("-DTWICE", manifest=False)
        self.assertIn("two formats have the name 'bad'", self.describe(library, expected=1))
        library = self.build("-DBAD_OPTION", manifest=False)
        self.assertIn("expected a whole number, found 'x'", self.describe(library, expected=1))

    def test_lying_manifest(self):
        self.replace("-DOTHER_VERSION")
        self.assertIn("its manifest describes another module", self.use())

    def test_damaged_manifest(self):
        self.build()
        text = self.manifest.read_text(encoding="utf-8")
        for damaged in [text[: len(text) // 2], text.replace("extensions = .bad", "extensions = bad"), "[" + text,
                        text.replace("module = BrivetBad", "module = BrivetOther"), "bad", "\0bad"]:
            self.manifest.write_text(damaged, encoding="utf-8")
            self.assertIn("BrivetBad.brivet: the format module is skipped: ", brivet("-formats", path=[self.folder]))

    def test_shadowed(self):
        self.build()
        other = self.folder / "other"
        other.mkdir()
        shutil.copy(self.manifest, other)
        table = brivet("-formats", path=[other, self.folder])
        self.assertIn(f"{self.folder}/libBrivetBad.so (not used: {other}/BrivetBad.brivet is before it)", table)
        self.manifest.write_text(self.manifest.read_text().replace(".bad", ".html"), encoding="utf-8")
        self.assertIn(f".html is of bad in {self.manifest}", brivet("-formats", path=[self.folder]))

    def test_links(self):
        self.manifest.symlink_to("BrivetBad.brivet")
        self.assertIn("Too many levels of symbolic links", brivet("-formats", path=[self.folder]))
        self.manifest.unlink()
        os.mkfifo(self.manifest)
        self.assertIn("not a regular file", brivet("-formats", path=[self.folder]))

    def test_untrusted(self):
        self.build()
        self.manifest.chmod(0o666)
        self.assertIn("the manifest can be written by everybody", brivet("-formats", path=[self.folder]))
        self.manifest.chmod(0o644)
        self.folder.chmod(0o777)
        self.assertIn("the folder can be written by everybody", brivet("-formats", path=[self.folder]))
        self.folder.chmod(0o755)
        self.assertIn("its path is relative", brivet("-formats", path=["."]))
        self.assertNotIn("Bad", brivet("-formats"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[6:])
