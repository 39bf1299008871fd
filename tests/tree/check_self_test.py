#!/usr/bin/env python3
"""Tests the checks of the source tree: a small valid tree passes, and each violation put into it is found."""
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

import check_objects
import check_tree
from source_tree import SourceTree

SOURCES = "VRELBase/VRELUtilities.m/src"
VALID = {
    f"{SOURCES}/object/Ground.h": "#pragma once\n",
    f"{SOURCES}/strings/Text.h": '#pragma once\n#include <string>\n#include "Ground.h"\n',
    f"{SOURCES}/strings/Text.cpp": '#include "Text.h"\n',
    f"{SOURCES}/plugins/Library.h": '#include "Text.h"\n',
    f"{SOURCES}/logging/Log.h": '#include "Library.h"\n',
    f"{SOURCES}/readers/EntityReader.h": '#include "Log.h"\n#include "Packet.h"\n',
    "VRELBase/VRELStream.m/src/buffers/Packet.h": '#include "Text.h"\n',
    "VRELBase/public/VRINResult.h": "#pragma once\n",
    f"{SOURCES}/object/Names.h.in": "#pragma once\n",
    "brivet/main.cpp": '#include "VRELBase.h"\n#include "EntityReader.h"\n',
    "tests/object/GroundTest.cpp": '#include "Ground.h"\n',
    "README.md": """# Library
## Source tree
```text
VRELBase/             the library
  VRELUtilities.m/src/
    object/           objects
    strings/  logging/  plugins/  readers/    higher layers
  VRELStream.m/src/
    buffers/          bytes
  public/             the API
brivet/  tests/       the driver and the tests
```
""",
    "tests/tree/upward_calls.txt": "# comment\n",
    "tests/tree/untested_headers.txt": "Log.h it only declares\n",
}


class TreeCheckTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        self.write(VALID)
        self.write_umbrella()

    def write(self, files):
        for name, text in files.items():
            path = self.root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)

    def write_umbrella(self):
        self.write({check_tree.UMBRELLA: check_tree.umbrella_text(SourceTree(self.root))})

    def faults(self, check):
        return check_tree.CHECKS[check](SourceTree(self.root))

    def assert_one_fault(self, check, *words):
        faults = self.faults(check)
        self.assertEqual(len(faults), 1, faults)
        for word in words:
            self.assertIn(word, faults[0])

    def test_valid_tree_passes(self):
        for check in ["layers", "cycles", "names", "umbrella", "map"]:
            self.assertEqual(self.faults(check), [], check)

    def test_folder_without_layer(self):
        self.write({"VRELBase/VRELUtilities.m/src/misc/Names.h.in": ""})
        self.assert_one_fault("layers", "Names.h.in", "no layer")

    def test_header_includes_higher_layer(self):
        self.write({f"{SOURCES}/object/Ground.h": '#  include "Text.h"\n'})
        self.assert_one_fault("layers", "Ground.h", "layer object includes Text.h of layer strings", "declare it forward")

    def test_public_is_above_records_but_results_are_lowest(self):
        self.write({"VRELBase/public/VRINFile.h": "", f"{SOURCES}/object/Ground.h": '#include "VRINResult.h"\n'})
        self.assertEqual(self.faults("layers"), [])
        self.write({"VRELBase/VRELMath.m/src/records/Shell.h": '#include "VRINFile.h"\n'})
        self.assert_one_fault("layers", "Shell.h", "of layer public")

    def test_plugins_may_not_include_logging(self):
        self.write({f"{SOURCES}/plugins/Library.h": '#include "Log.h"\n'})
        self.assert_one_fault("layers", "Library.h", "layer plugins includes Log.h of layer logging")

    def test_library_may_not_include_driver_tests_or_umbrella(self):
        self.write({"brivet/sdk/Module.h": "", "tests/support/Child.h": ""})
        self.write({f"{SOURCES}/strings/Text.cpp": '#include "Module.h"\n#include "Child.h"\n#include "VRELBase.h"\n'})
        self.assertEqual(len(self.faults("layers")), 3)

    def test_source_may_include_higher_layer_if_listed(self):
        self.write({f"{SOURCES}/strings/Text.cpp": '#include "Packet.h"\n'})
        self.assert_one_fault("layers", "Text.cpp", "layer strings includes Packet.h of layer streams", "list it")
        self.write({"tests/tree/upward_calls.txt": "Text.cpp Packet.h writes itself\n"})
        self.assertEqual(self.faults("layers"), [])

    def test_listed_header_is_still_a_violation(self):
        self.write({f"{SOURCES}/object/Ground.h": '#include "Text.h"\n'})
        self.write({"tests/tree/upward_calls.txt": "Ground.h Text.h wants to\n"})
        self.assertEqual(len(self.faults("layers")), 2)

    def test_stale_or_bare_entry_of_list(self):
        self.write({"tests/tree/upward_calls.txt": "Text.cpp Packet.h\n"})
        faults = self.faults("layers")
        self.assertEqual(len(faults), 2)
        self.assertIn("no reason given", faults[0])
        self.assertIn("is listed but not needed", faults[1])

    def test_driver_layers(self):
        self.write({"brivet/io/File.h": "", "brivet/translate/Job.h": '#include "File.h"\n'})
        self.assertEqual(self.faults("layers"), [])
        self.write({"brivet/io/File.h": '#include "Job.h"\n'})
        self.assert_one_fault("layers", "layer brivet/io includes Job.h of layer brivet/translate")

    def test_format_module_may_include_only_sdk_and_model(self):
        self.write({"brivet/sdk/Page.h": "", "brivet/step/Reader.h": '#include "Page.h"\n#include "Text.h"\n'})
        self.assertEqual(self.faults("layers"), [])
        self.write({"brivet/io/File.h": "", "brivet/step/Reader.h": '#include "File.h"\n'})
        self.assert_one_fault("layers", "layer brivet/step includes File.h of layer brivet/io")
        self.write({"brivet/step/Reader.h": "", "brivet/io/File.h": '#include "Reader.h"\n'})
        self.assert_one_fault("layers", "layer brivet/io includes Reader.h of layer brivet/step")

    def test_detail_header_is_included_with_its_folder(self):
        self.write({f"{SOURCES}/object/detail/Rows.h": "", f"{SOURCES}/strings/Text.cpp": '#include "detail/Rows.h"\n'})
        for check in ["layers", "names"]:
            self.assertEqual(self.faults(check), [], check)
        self.write({f"{SOURCES}/strings/Text.cpp": '#include "Rows.h"\n'})
        self.assert_one_fault("layers", "Text.cpp", "Rows.h", "does not have")

    def test_unknown_header(self):
        self.write({f"{SOURCES}/strings/Text.cpp": '#include "Absent.h"\n'})
        self.assert_one_fault("layers", "Text.cpp", "Absent.h", "does not have")

    def test_cycle(self):
        self.write({f"{SOURCES}/strings/Text.h": '#include "Token.h"\n', f"{SOURCES}/strings/Token.h": '#include "Text.h"'})
        self.assert_one_fault("cycles", "Text.h -> Token.h -> Text.h")

    def test_header_that_includes_itself(self):
        self.write({f"{SOURCES}/strings/Text.h": '#include "Text.h"\n'})
        self.assert_one_fault("cycles", "Text.h -> Text.h")

    def test_name_twice(self):
        self.write({"tests/support/Text.h": ""})
        self.assert_one_fault("names", "tests/support/Text.h", f"{SOURCES}/strings/Text.h has the same name")

    def test_include_by_path(self):
        self.write({f"{SOURCES}/strings/Text.cpp": '#include "../strings/Text.h"\n'})
        self.assert_one_fault("names", "Text.cpp", "by a path")

    def test_header_without_test(self):
        self.write({"tests/tree/untested_headers.txt": "".join(f"{name} reason\n" for name in self.untested()[1:])})
        self.assert_one_fault("tests", self.untested()[0], "has no test")

    def test_header_that_has_test_is_not_listed(self):
        names = self.untested() + ["Ground.h"]
        self.write({"tests/tree/untested_headers.txt": "".join(f"{name} reason\n" for name in names)})
        self.assert_one_fault("tests", "Ground.h", "has a test")

    def test_test_in_other_folder_does_not_count(self):
        names = self.untested()
        self.write({"tests/tree/untested_headers.txt": "".join(f"{name} reason\n" for name in names)})
        self.assertEqual(self.faults("tests"), [])
        (self.root / "tests/object/GroundTest.cpp").rename(self.root / "tests/GroundTest.cpp")
        self.assert_one_fault("tests", "Ground.h", "has no test")

    def untested(self):
        return ["EntityReader.h", "Library.h", "Log.h", "Names.h", "Packet.h", "Text.h", "VRELBase.h", "VRINResult.h"]

    def test_header_missing_in_umbrella(self):
        self.write({f"{SOURCES}/strings/Token.h": ""})
        faults = self.faults("umbrella")
        self.assertEqual(len(faults), 2)
        self.assertIn("Token.h is missing", faults[0])

    def test_umbrella_lists_lowest_layer_first(self):
        text = (self.root / check_tree.UMBRELLA).read_text()
        order = ["VRINResult.h", "Text.h", "Packet.h", "Library.h", "Log.h", "EntityReader.h"]
        positions = [text.index(f'"{name}"') for name in order]
        self.assertEqual(positions, sorted(positions))

    def test_detail_and_internal_headers_are_not_in_umbrella(self):
        self.write({f"{SOURCES}/strings/detail/Rows.h": "", f"{SOURCES}/strings/internal/Bytes.h": ""})
        self.assertEqual(self.faults("umbrella"), [])

    def test_map_names_absent_folder(self):
        valid = VALID["README.md"]
        self.write({"README.md": valid.replace("    strings/", "    objects/  strings/")})
        self.assert_one_fault("map", f"{SOURCES}/objects")
        self.write({"README.md": valid.replace("    strings/", "    public/  strings/")})
        self.assert_one_fault("map", f"{SOURCES}/public")
        self.write({"README.md": valid.replace("  tests/", "  test/")})
        self.assert_one_fault("map", "names test,")

    def test_map_omits_folder(self):
        self.write({f"{SOURCES}/values/Value.h": ""})
        self.assert_one_fault("map", "does not name", f"{SOURCES}/values")
        self.write({"brivet/step/Reader.h": ""})
        self.assertEqual(len(self.faults("map")), 2)

    def test_readme_without_map(self):
        self.write({"README.md": "# Library\n"})
        self.assert_one_fault("map", "has no section")


class ObjectCheckTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def compile(self, name, text):
        source = self.folder / name
        source.write_text(text)
        target = str(source) + ".o"
        subprocess.run([os.environ.get("CXX", "c++"), "-std=c++17", "-c", str(source), "-o", target], check=True)
        return target

    def test_dynamic_initialization_is_found(self):
        for number, text in enumerate(
            [
                "struct A { A(); int a; }; A a;",
                "struct A { ~A(); }; static A a;",
                "struct A { A(); }; struct B { static A a; }; A B::a;",
                "struct A { A(); }; template <class T> struct B { static A a; }; template <class T> A B<T>::a; "
                "A* use() { return &B<int>::a; }",
                "struct A { A(); }; struct B { inline static A a; }; A* use() { return &B::a; }",
                "int compute(); int const value = compute(); int const* use() { return &value; }",
                "#include <iostream>\n",
            ]
        ):
            with self.subTest(text):
                self.assertEqual(len(check_objects.faults([self.compile(f"Bad{number}.cpp", text)])), 1)

    def test_constants_and_local_statics_pass(self):
        for number, text in enumerate(
            [
                "struct A { constexpr A(int a) : a(a) {} int a; }; extern A const a; A const a(3);",
                "char const* names[] = {\"a\", \"b\"}; int count = 3; void* none = nullptr;",
                "struct A { A(); ~A(); }; A& use() { static A a; return a; }",
            ]
        ):
            with self.subTest(text):
                self.assertEqual(check_objects.faults([self.compile(f"Good{number}.cpp", text)]), [])

    def test_startup_file_may_initialize(self):
        self.assertEqual(check_objects.faults([self.compile("VRELStartup.cpp", "struct A { A(); }; A a;")]), [])


if __name__ == "__main__":
    unittest.main()
