#!/usr/bin/env python3
"""Shows that each check of the tree bites: a small sound tree passes, and each fault put into it is found."""
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

import check_objects
import check_tree
from source_tree import SourceTree

SOURCES = "VRELBase/VRELUtilities.m/src"
SOUND = {
    f"{SOURCES}/object/Ground.h": "#pragma once\n",
    f"{SOURCES}/strings/Text.h": '#pragma once\n#include <string>\n#include "Ground.h"\n',
    f"{SOURCES}/strings/Text.cpp": '#include "Text.h"\n',
    f"{SOURCES}/plugins/Library.h": '#include "Text.h"\n',
    f"{SOURCES}/logging/Log.h": '#include "Library.h"\n',
    f"{SOURCES}/plugins/EntityReader.h": '#include "Log.h"\n#include "Packet.h"\n',
    "VRELBase/VRELStream.m/src/Packet.h": '#include "Text.h"\n',
    "VRELBase/public/VRINResult.h": "#pragma once\n",
    f"{SOURCES}/object/Names.h.in": "#pragma once\n",
    "brivet/Driver.cpp": '#include "VRELBase.h"\n#include "EntityReader.h"\n',
    "tests/object/GroundTest.cpp": '#include "Ground.h"\n',
    "README.md": """# House
## The map of the house
```text
VRELBase/             all
  VRELUtilities.m/src/
    object/           ground
    strings/  logging/  plugins/    above it
  VRELStream.m/src/   bytes
  public/             top
brivet/  tests/       beside
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
        self.write(SOUND)
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

    def test_sound_tree_passes(self):
        for check in ["floors", "circles", "names", "umbrella", "map"]:
            self.assertEqual(self.faults(check), [], check)

    def test_folder_without_floor(self):
        self.write({"VRELBase/VRELUtilities.m/src/misc/Names.h.in": ""})
        self.assert_one_fault("floors", "Names.h.in", "no floor")

    def test_header_climbs(self):
        self.write({f"{SOURCES}/object/Ground.h": '#  include "Text.h"\n'})
        self.assert_one_fault("floors", "Ground.h", "from object to strings for Text.h", "declare it forward")

    def test_public_header_is_above_records_but_results_are_ground(self):
        self.write({"VRELBase/public/VRINFile.h": "", f"{SOURCES}/object/Ground.h": '#include "VRINResult.h"\n'})
        self.assertEqual(self.faults("floors"), [])
        self.write({"VRELBase/VRELMath.m/src/records/Shell.h": '#include "VRINFile.h"\n'})
        self.assert_one_fault("floors", "Shell.h", "from records to public")

    def test_plugin_library_may_not_log(self):
        self.write({f"{SOURCES}/plugins/Library.h": '#include "Log.h"\n'})
        self.assert_one_fault("floors", "Library.h", "from plug-in libraries to logging")

    def test_library_may_not_lean_on_driver_tests_or_umbrella(self):
        self.write({"brivet/Module.h": "", "tests/support/Child.h": ""})
        self.write({f"{SOURCES}/strings/Text.cpp": '#include "Module.h"\n#include "Child.h"\n#include "VRELBase.h"\n'})
        self.assertEqual(len(self.faults("floors")), 3)

    def test_source_climbs_only_when_listed(self):
        self.write({f"{SOURCES}/strings/Text.cpp": '#include "Packet.h"\n'})
        self.assert_one_fault("floors", "Text.cpp", "from strings to streams for Packet.h", "list it")
        self.write({"tests/tree/upward_calls.txt": "Text.cpp Packet.h writes itself\n"})
        self.assertEqual(self.faults("floors"), [])

    def test_header_climbs_even_when_listed(self):
        self.write({f"{SOURCES}/object/Ground.h": '#include "Text.h"\n'})
        self.write({"tests/tree/upward_calls.txt": "Ground.h Text.h wants to\n"})
        self.assertEqual(len(self.faults("floors")), 2)

    def test_stale_or_bare_entry_of_list(self):
        self.write({"tests/tree/upward_calls.txt": "Text.cpp Packet.h\n"})
        faults = self.faults("floors")
        self.assertEqual(len(faults), 2)
        self.assertIn("no reason given", faults[0])
        self.assertIn("does not climb", faults[1])

    def test_unknown_header(self):
        self.write({f"{SOURCES}/strings/Text.cpp": '#include "Absent.h"\n'})
        self.assert_one_fault("floors", "Text.cpp", "Absent.h", "does not have")

    def test_circle(self):
        self.write({f"{SOURCES}/strings/Text.h": '#include "Token.h"\n', f"{SOURCES}/strings/Token.h": '#include "Text.h"'})
        self.assert_one_fault("circles", "Text.h -> Token.h -> Text.h")

    def test_header_that_includes_itself(self):
        self.write({f"{SOURCES}/strings/Text.h": '#include "Text.h"\n'})
        self.assert_one_fault("circles", "Text.h -> Text.h")

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

    def test_umbrella_goes_from_the_ground_up(self):
        text = (self.root / check_tree.UMBRELLA).read_text()
        order = ["VRINResult.h", "Text.h", "Packet.h", "Library.h", "Log.h", "EntityReader.h"]
        places = [text.index(f'"{name}"') for name in order]
        self.assertEqual(places, sorted(places))

    def test_map_names_absent_folder(self):
        sound = SOUND["README.md"]
        self.write({"README.md": sound.replace("    strings/", "    objects/  strings/")})
        self.assert_one_fault("map", f"{SOURCES}/objects")
        self.write({"README.md": sound.replace("    strings/", "    public/  strings/")})
        self.assert_one_fault("map", f"{SOURCES}/public")
        self.write({"README.md": sound.replace("  tests/", "  test/")})
        self.assert_one_fault("map", "names test,")

    def test_map_leaves_out_a_folder(self):
        self.write({f"{SOURCES}/values/Value.h": ""})
        self.assert_one_fault("map", "does not name", f"{SOURCES}/values")
        self.write({"brivet/step/Reader.h": ""})
        self.assertEqual(len(self.faults("map")), 2)

    def test_no_map(self):
        self.write({"README.md": "# House\n"})
        self.assert_one_fault("map", "no map")


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

    def test_what_runs_at_load_is_found(self):
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

    def test_startup_is_the_one_place(self):
        self.assertEqual(check_objects.faults([self.compile("VRELStartup.cpp", "struct A { A(); }; A a;")]), [])


if __name__ == "__main__":
    unittest.main()
