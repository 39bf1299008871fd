#!/usr/bin/env python3
"""Holds script/abi against small libraries: what is gone or changed is told and fails, what is added is welcome."""
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
        """The status and what is told of a library whose source was edited since the baseline."""
        self.assertEqual(self.abi("--update", "--library", self.library(SOURCE))[0], 0)
        edited = SOURCE
        for old, new in edits:
            self.assertIn(old, edited)
            edited = edited.replace(old, new)
        status, output, errors = self.abi("--library", self.library(edited, **options))
        if status != 0:
            self.assertIn("script/abi: failed while comparing ", errors)
            self.assertIn("write the baseline anew: script/abi --update", errors)
        return status, output

    def test_accepts_the_same_library(self):
        status, output = self.differences()
        self.assertEqual(status, 0)
        self.assertEqual(output.splitlines()[-1], f"script/abi: all that {self.baseline} tells is there as it was")

    def test_accepts_what_is_added(self):
        added = "double Volume(Point const& point) { return point.y; }\nclass Body { public: virtual ~Body(); };\n"
        status, output = self.differences(("double Length", added + "Body::~Body() {}\ndouble Length"))
        self.assertEqual((status, "Volume" in output), (0, False))

    def test_accepts_what_is_added_to_a_class_or_behind_an_enumeration(self):
        member = ("virtual double Area() const;", "virtual double Area() const;\n  double Width() const;")
        body = ("enum Kind", "double Shape::Width() const { return corner.y; }\nenum Kind")
        self.assertEqual(self.differences(member, body, ("Round, Flat", "Round, Flat, Oval"))[0], 0)

    def test_accepts_the_loss_of_what_each_program_brings_itself(self):
        self.assertEqual(self.differences(("Twice(point.x)", "2 * point.x"))[0], 0)

    def test_refuses_a_function_that_is_gone(self):
        status, output = self.differences(("bool IsFlat(Kind kind) { return kind == Flat; }", ""))
        self.assertEqual(status, 1)
        self.assertIn("IsFlat(Kind)", output)

    def test_refuses_a_larger_class(self):
        status, output = self.differences(("double y;", "double y; double z;"))
        self.assertEqual(status, 1)
        self.assertIn("type size changed from 128 to 192", output)

    def test_refuses_a_moved_field(self):
        self.assertEqual(self.differences(("double x; double y;", "double y; double x;"))[0], 1)

    def test_refuses_another_virtual_operation(self):
        edits = [("virtual double Area", "virtual int Sides() const;\n  virtual double Area")]
        status, output = self.differences(*edits, ("enum Kind", "int Shape::Sides() const { return 4; }\nenum Kind"))
        self.assertEqual(status, 1)
        self.assertIn("Sides", output)

    def test_refuses_an_enumerator_of_another_number(self):
        status, output = self.differences(("Round, Flat", "Round, Oval, Flat"))
        self.assertEqual(status, 1)
        self.assertIn("Kind::Flat", output)

    def test_refuses_another_soname(self):
        status, output = self.differences(soname="libshapes.so.2")
        self.assertEqual(status, 1)
        self.assertIn("libshapes.so.2", output)

    def test_says_what_is_missing(self):
        status, _, errors = self.abi("--library", "/nowhere/libshapes.so")
        self.assertEqual(status, 1)
        advice = "write it: script/abi --update"
        self.assertEqual(errors, f"script/abi: failed while looking for {self.baseline}: {advice}\n")

    def test_leaves_the_baseline_where_none_can_be_made(self):
        self.baseline.write_text("as it was")
        self.assertNotEqual(self.abi("--update", "--library", "/nowhere/libshapes.so")[0], 0)
        self.assertEqual(self.baseline.read_text(), "as it was")

    def test_refuses_unknown_arguments(self):
        status, _, errors = self.abi("--all")
        self.assertEqual((status, errors), (1, "script/abi: failed while reading --all: see script/abi --help\n"))


if __name__ == "__main__":
    if shutil.which("abidiff") is None or shutil.which("abidw") is None:
        print("skipped: there is no abidiff")
        sys.exit(77)
    unittest.main()
