#!/usr/bin/env python3
"""Tests script/abi on small libraries: it fails for removed and changed symbols, and accepts additions."""
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SOURCE = """
struct Point { double x; double y; };
class Shape {
 public:
  virtual ~Shape();
  virtual double Area() const;
 private:
  Point corner;
};
Shape::~Shape() {}
double Shape::Area() const { return corner.x; }
enum Kind { Round, Flat };
template <class T> T Twice(T value) { return value + value; }
double Length(Point const& point) { return Twice(point.x); }
bool IsFlat(Kind kind) { return kind == Flat; }
"""


class AbiTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.baseline = self.folder / "shapes.abi.gz"

    def library(self, source, soname="libshapes.so.1"):
        (self.folder / "shapes.cpp").write_text(source)
        library = self.folder / "libshapes.so"
        compiler = os.environ.get("CXX", "c++")
        options = ["-std=c++17", "-g", "-O0", "-fPIC", "-shared", f"-Wl,-soname,{soname}"]
        subprocess.run([compiler, *options, self.folder / "shapes.cpp", "-o", library], check=True)
        return library

    def abi(self, *arguments):
        command = [ROOT / "script/abi", *arguments, "--baseline", self.baseline]
        answer = subprocess.run(command, cwd="/", capture_output=True, text=True)
        return answer.returncode, answer.stdout, answer.stderr

    def differences(self, *edits, **options):
        """Returns the status and the output for a library whose source was edited since the baseline."""
        self.assertEqual(self.abi("--update", "--library", self.library(SOURCE))[0], 0)
        edited = SOURCE
        for old, new in edits:
            self.assertIn(old, edited)
            edited = edited.replace(old, new)
        status, output, errors = self.abi("--library", self.library(edited, **options))
        if status != 0:
            self.assertIn("script/abi: failed while comparing ", errors)
            self.assertIn("rewrite the baseline: script/abi --update", errors)
        return status, output

    def test_accepts_same_library(self):
        status, output = self.differences()
        self.assertEqual(status, 0)
        self.assertEqual(output.splitlines()[-1], f"script/abi: the library has every symbol of {self.baseline}, unchanged")

    def test_accepts_added_symbols(self):
        added = "double Volume(Point const& point) { return point.y; }\nclass Body { public: virtual ~Body(); };\n"
        status, output = self.differences(("double Length", added + "Body::~Body() {}\ndouble Length"))
        self.assertEqual((status, "Volume" in output), (0, False))

    def test_accepts_member_function_and_last_enumerator(self):
        member = ("virtual double Area() const;", "virtual double Area() const;\n  double Width() const;")
        body = ("enum Kind", "double Shape::Width() const { return corner.y; }\nenum Kind")
        self.assertEqual(self.differences(member, body, ("Round, Flat", "Round, Flat, Oval"))[0], 0)

    def test_accepts_removed_weak_symbol(self):
        self.assertEqual(self.differences(("Twice(point.x)", "2 * point.x"))[0], 0)

    def test_refuses_removed_function(self):
        status, output = self.differences(("bool IsFlat(Kind kind) { return kind == Flat; }", ""))
        self.assertEqual(status, 1)
        self.assertIn("IsFlat(Kind)", output)

    def test_refuses_larger_class(self):
        status, output = self.differences(("double y;", "double y; double z;"))
        self.assertEqual(status, 1)
        self.assertIn("type size changed from 128 to 192", output)

    def test_refuses_moved_field(self):
        self.assertEqual(self.differences(("double x; double y;", "double y; double x;"))[0], 1)

    def test_refuses_inserted_virtual_function(self):
        edits = [("virtual double Area", "virtual int Sides() const;\n  virtual double Area")]
        status, output = self.differences(*edits, ("enum Kind", "int Shape::Sides() const { return 4; }\nenum Kind"))
        self.assertEqual(status, 1)
        self.assertIn("Sides", output)

    def test_refuses_changed_enumerator(self):
        status, output = self.differences(("Round, Flat", "Round, Oval, Flat"))
        self.assertEqual(status, 1)
        self.assertIn("Kind::Flat", output)

    def test_refuses_other_soname(self):
        status, output = self.differences(soname="libshapes.so.2")
        self.assertEqual(status, 1)
        self.assertIn("libshapes.so.2", output)

    def test_names_missing_baseline(self):
        status, _, errors = self.abi("--library", "/nowhere/libshapes.so")
        self.assertEqual(status, 1)
        advice = "create it: script/abi --update"
        self.assertEqual(errors, f"script/abi: failed while looking for {self.baseline}\nhint: {advice}\n")

    def test_failed_update_keeps_baseline(self):
        self.baseline.write_text("unchanged")
        self.assertNotEqual(self.abi("--update", "--library", "/nowhere/libshapes.so")[0], 0)
        self.assertEqual(self.baseline.read_text(), "unchanged")

    def test_refuses_unknown_arguments(self):
        status, _, errors = self.abi("--all")
        self.assertEqual((status, errors), (1, "script/abi: failed while reading --all\nhint: see script/abi --help\n"))


if __name__ == "__main__":
    if shutil.which("abidiff") is None or shutil.which("abidw") is None:
        print("skipped: abidiff is not installed")
        sys.exit(77)
    unittest.main()
