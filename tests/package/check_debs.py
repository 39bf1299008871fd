#!/usr/bin/env python3
"""Installs the Debian packages, uses them, and removes them again, as root, in a mount namespace of its own. Overlays of
/usr, /etc and /var take all changes and disappear when the test ends, with any outcome.

check_debs.py SCRATCH
"""
import io
import os
import re
import shutil
import subprocess
import sys
import tarfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
VERSION = re.search(r"VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text().split("project(", 1)[1]).group(1)
# Before 1.0 the version of the binary interface is major and minor version.
ABI = re.match(r"0\.\d+|\d+", VERSION).group()
RUNTIME, DEVELOPMENT, DRIVER, SDK = f"libvrelbase{ABI}", "libvrelbase-dev", "brivet", "brivet-dev"
PACKAGES = [RUNTIME, DEVELOPMENT, DRIVER, SDK]
SCRATCH = Path()

ENVIRONMENT = {key: value for key, value in os.environ.items() if key not in ("LD_LIBRARY_PATH", "PKG_CONFIG_PATH")}
ENVIRONMENT.update(LC_ALL="C.UTF-8", DEBIAN_FRONTEND="noninteractive")


def run(*command, cwd=None, expected=0):
    """Runs a command that must exit with the expected status, and returns both of its outputs."""
    answer = subprocess.run(
        command, cwd=cwd or SCRATCH, env=ENVIRONMENT, stdin=subprocess.DEVNULL, capture_output=True, text=True
    )
    if answer.returncode != expected:
        raise AssertionError(f"{command}: {answer.returncode}\n{answer.stdout}\n{answer.stderr}")
    return answer.stdout + answer.stderr


def package(name, version=VERSION):
    return next((SCRATCH if version != VERSION else ROOT / "build/package").glob(f"{name}_{version}_*.deb"))


def field(name, which):
    return run("dpkg-deb", "--field", package(name), which).strip()


def files(name):
    """Returns the files of a package, without folders: from the path to its line in the listing."""
    lines = run("dpkg-deb", "--contents", package(name)).splitlines()
    entries = {line.split(None, 5)[5].split(" -> ")[0][1:]: line for line in lines}
    return {path: line for path, line in entries.items() if not path.endswith("/")}


def contents(name):
    """Returns the names of the files of a package, without those that every package has."""
    return sorted(path.rsplit("/", 1)[1] for path in files(name) if not re.search("/share/(doc|lintian)/", path))


def control_files(name):
    """Returns the names of the control files of a package."""
    archive = subprocess.run(["dpkg-deb", "--ctrl-tarfile", package(name)], capture_output=True, check=True).stdout
    with tarfile.open(fileobj=io.BytesIO(archive)) as control:
        return control.getnames()


def older(name):
    """Returns the same package with an older version."""
    tree = SCRATCH / f"older-{name}"
    run("dpkg-deb", "--raw-extract", package(name), tree)
    control = tree / "DEBIAN/control"
    control.write_text(control.read_text().replace(VERSION, "0.0.1"))
    run("dpkg-deb", "--root-owner-group", "--build", tree, SCRATCH / f"{name}_0.0.1_all.deb")
    return package(name, "0.0.1")


def installed(name):
    answer = subprocess.run(["dpkg-query", "-W", "-f=${Status} ${Version}", name], capture_output=True, text=True)
    return answer.stdout.replace("install ok installed ", "") if "ok installed" in answer.stdout else None


class MetadataTest(unittest.TestCase):
    def test_description(self):
        sections = {RUNTIME: "libs", DEVELOPMENT: "libdevel", DRIVER: "utils", SDK: "libdevel"}
        for name in PACKAGES:
            with self.subTest(name):
                self.assertEqual((field(name, "Package"), field(name, "Version")), (name, VERSION))
                self.assertEqual(field(name, "Section"), sections[name])
                self.assertEqual(field(name, "Priority"), "optional")
                self.assertRegex(field(name, "Maintainer"), r"^\S.* <\S+@\S+>$")
                description = field(name, "Description").splitlines()
                self.assertLess(len(description[0]), 80)
                self.assertGreater(len(description), 2)

    def test_dependencies(self):
        library = f"{RUNTIME} (= {VERSION})"
        for name in [DRIVER, DEVELOPMENT]:
            self.assertIn(f"{name} (= {VERSION})", field(SDK, "Depends").split(", "))
        self.assertEqual(field(DEVELOPMENT, "Depends"), library)
        self.assertEqual(field(DRIVER, "Depends").split(", ")[0], library)
        needed = [depends.split()[0] for depends in field(RUNTIME, "Depends").split(", ")]
        self.assertIn("libc6", needed)
        self.assertIn("libstdc++6", needed)
        self.assertTrue([name for name in needed if re.fullmatch(r"libicu\d+", name)])
        shlibs = run("dpkg-deb", "--info", package(RUNTIME), "shlibs")
        self.assertEqual(shlibs, f"libVRELBase {ABI} {RUNTIME} (>= {VERSION})\n")

    def test_contents(self):
        library = contents(RUNTIME)
        self.assertEqual(library, [f"libVRELBase.so.{ABI}", f"libVRELBase.so.{VERSION}"])
        development = files(DEVELOPMENT)
        for end in ["/usr/include/VRELBase/VRELString.h", "/libVRELBase.so", "/VRELBaseConfig.cmake", "/VRELBase.pc"]:
            self.assertEqual(len([path for path in development if path.endswith(end)]), 1, end)
        driver = contents(DRIVER)
        self.assertEqual(driver, ["BrivetHtml.brivet", "BrivetJson.brivet", "BrivetMesh.brivet", "BrivetStep.brivet",
                                  "BrivetSvg.brivet", "BrivetText.brivet", "_brivet", "brivet", "brivet", "brivet.1.gz",
                                  "brivet.fish", "libBrivetHtml.so", "libBrivetJson.so", "libBrivetMesh.so",
                                  "libBrivetSdk.so.1", f"libBrivetSdk.so.1.{ABI}", "libBrivetStep.so", "libBrivetSvg.so",
                                  "libBrivetText.so"])
        if any((ROOT / "build/package").glob(f"brivet-shape_{VERSION}_*.deb")):
            shape = contents("brivet-shape")
            self.assertEqual(shape, ["BrivetShape.brivet", "brivet-shape-worker", "libBrivetShape.so"])
            self.assertIn(f"{DRIVER} (= {VERSION})", field("brivet-shape", "Depends").split(", "))
        sdk = files(SDK)
        for end in ["/usr/include/brivet/Document.h", "/libBrivetSdk.so", "/BrivetModule.cmake", "/brivet-sdk.pc",
                    "/brivet-describe"]:
            self.assertEqual(len([path for path in sdk if path.endswith(end)]), 1, end)

    def test_changelog_and_copyright(self):
        for name in PACKAGES:
            with self.subTest(name):
                tree = SCRATCH / f"documents-{name}"
                run("dpkg-deb", "--extract", package(name), tree)
                documents = tree / "usr/share/doc" / name
                self.assertIn("No licence is granted yet.", (documents / "copyright").read_text())
                changes = run("dpkg-parsechangelog", "-l", documents / "changelog.gz", "--show-field", "Version")
                self.assertEqual(changes.strip(), VERSION)
                self.assertEqual("three.js authors" in (documents / "copyright").read_text(), name == DRIVER)

    def test_has_no_maintainer_scripts(self):
        for name in PACKAGES:
            scripts = control_files(name)
            self.assertEqual("./triggers" in scripts, name in [RUNTIME, DRIVER], name)
            self.assertFalse({"./postinst", "./postrm", "./preinst", "./prerm"} & set(scripts), name)

    def test_lintian_finds_nothing(self):
        if shutil.which("lintian") is None:
            self.skipTest("lintian is not installed")
        found = run("lintian", "--no-cfg", "--allow-root", "--fail-on", "none", *[package(name) for name in PACKAGES])
        self.assertEqual(found, "")

    def test_owner_and_modes(self):
        for name in PACKAGES:
            for path, line in files(name).items():
                self.assertRegex(line, r"^(-rw-r--r--|-rwxr-xr-x|lrwxrwxrwx) root/root ", path)

    def test_has_no_run_path(self):
        for name in [RUNTIME, DRIVER]:
            tree = SCRATCH / f"tree-{name}"
            run("dpkg-deb", "--extract", package(name), tree)
            for path in files(name):
                if ".so" in path or path.endswith("/bin/brivet"):
                    self.assertNotRegex(run("readelf", "-d", f"{tree}{path}"), r"RPATH|RUNPATH")


class FinishTest(unittest.TestCase):
    """Packages of debug symbols as CPack writes them: only packages that are not quick have some."""

    def test_symbols_are_independent_of_build_folder(self):
        tree = SCRATCH / "symbols"
        symbols = tree / "usr/lib/debug/.build-id/01/23.debug"
        symbols.parent.mkdir(parents=True)
        symbols.write_text("symbols\n")
        symbols.chmod(0o755)
        (tree / "DEBIAN").mkdir()
        (tree / "DEBIAN/control").write_text("Package: part-dbgsym\nVersion: 1\nArchitecture: all\nMaintainer: M <m@m.m>\n"
                                             "Description: debug symbols\n")
        (tree / "DEBIAN/md5sums").write_text(f"8d3067c94b3a2ee1d7e4b0a5c7f4a8b1  {symbols}\n")
        (SCRATCH / "finish").mkdir()
        finished = SCRATCH / "finish/part-dbgsym_1_all.ddeb"
        run("dpkg-deb", "--root-owner-group", "--build", tree, finished)
        run("cmake", f"-DCPACK_PACKAGE_FILES={finished}", f"-DCPACK_TEMPORARY_DIRECTORY={SCRATCH}/finish", "-P",
            ROOT / "cmake/FinishPackages.cmake")
        sums = run("dpkg-deb", "--info", finished, "md5sums")
        # printf 'symbols\n' | md5sum
        self.assertEqual(sums, "dd4534a4f803a68ce350b40e5234098f  usr/lib/debug/.build-id/01/23.debug\n")
        listing = run("dpkg-deb", "--contents", finished)
        self.assertRegex(listing, r"-rw-r--r-- root/root .* \./usr/lib/debug/\.build-id/01/23\.debug\n")
        self.assertIn(" ./usr/share/doc/part-dbgsym -> part\n", listing)


class InstallTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        for name in PACKAGES:
            if installed(name):
                run("dpkg", "--purge", "--force-depends", name)
        run("dpkg", "--install", *[older(name) for name in PACKAGES])
        assert installed(DRIVER) == "0.0.1"
        run("dpkg", "--install", *[package(name) for name in PACKAGES])

    def test_replaces_older_version(self):
        self.assertEqual([installed(name) for name in PACKAGES], [VERSION] * 4)

    def test_driver_translates(self):
        self.assertEqual(run("brivet", "--version"), f"brivet {VERSION}\n")
        self.assertEqual(shutil.which("brivet"), "/usr/bin/brivet")
        for name, begin in {"bracket.html": "<", "bracket.txt": "", "new.stp": "ISO-10303-21;"}.items():
            run("brivet", ROOT / "examples/bracket.stp", name)
            self.assertTrue((SCRATCH / name).read_text(encoding="utf-8").lstrip().startswith(begin))

    def test_driver_has_manual_and_completion(self):
        self.assertEqual(run("gunzip", "-c", "/usr/share/man/man1/brivet.1.gz"), (ROOT / "docs/man/brivet.1").read_text())
        completion = "source /usr/share/bash-completion/completions/brivet; complete -p brivet"
        self.assertIn("-F _brivet brivet", run("bash", "--norc", "-ec", completion))

    def test_client_builds_by_pkg_config(self):
        flags = run("pkg-config", "--cflags", "--libs", "VRELBase").split()
        options = ["-std=c++17", "-Wall", "-Wextra", "-Werror", "-o", "by-pkg-config"]
        run("c++", *options, ROOT / "tests/package/client/main.cpp", *flags)
        run("./by-pkg-config")
        self.assertIn("/libVRELBase.so.", run("ldd", "by-pkg-config").split("libVRELBase.so.", 1)[1])

    def test_client_builds_by_cmake(self):
        run(ROOT / "tests/package/build_with_cmake.sh", ROOT / "tests/package/client", "by-cmake", "-G", "Ninja")

    def test_gdb_loads_the_printers(self):
        if shutil.which("gdb") is None:
            self.skipTest("gdb is not installed")
        # The debugger attaches, and sets no breakpoint, since some kernels let it write no registers.
        (SCRATCH / "debugged.cpp").write_text(
            '#include <sys/prctl.h>\n#include <cstdio>\n#include "VRINResult.h"\nint main() {\n'
            "  VRINResult result = VREL_E_FAIL;\n  prctl(PR_SET_PTRACER, PR_SET_PTRACER_ANY);\n"
            '  std::puts("ready");\n  std::fflush(stdout);\n  std::getchar();\n  return result.IsSuccess();\n}\n'
        )
        flags = run("pkg-config", "--cflags", "--libs", "VRELBase").split()
        run("c++", "-std=c++17", "-g", "-O0", "-Wl,--no-as-needed", "debugged.cpp", "-o", "debugged", *flags)
        with subprocess.Popen(
            ["./debugged"], cwd=SCRATCH, env=ENVIRONMENT, stdin=subprocess.PIPE, stdout=subprocess.PIPE
        ) as program:
            self.assertEqual(program.stdout.readline(), b"ready\n")
            steps = [f"attach {program.pid}", "frame function main", "print result"]
            output = run("gdb", "-nx", "-batch", *[word for step in steps for word in ["-ex", step]], "./debugged")
        if re.search(r"ptrace|Could not attach|Couldn't|not permitted", output):
            self.skipTest("this machine does not let gdb attach to a program")
        self.assertIn("$1 = VREL_E_FAIL (failure, number 1)", output)

    def test_z_removal_leaves_nothing(self):
        run("dpkg", "--remove", RUNTIME, expected=1)
        held = [path for name in PACKAGES for path in files(name)]
        self.assertTrue(all(os.path.lexists(path) for path in held))
        run("dpkg", "--remove", *PACKAGES)
        self.assertEqual([path for path in held if os.path.lexists(path)], [])
        self.assertEqual([installed(name) for name in PACKAGES], [None] * 4)
        self.assertFalse(os.path.exists("/usr/include/VRELBase"))


def run_in_namespace():
    """Mounts overlays on /usr, /etc and /var, and runs the tests."""
    run("mount", "-t", "tmpfs", "scratch", SCRATCH, cwd="/")
    for folder in ["usr", "etc", "var"]:
        for part in ["upper", "work"]:
            (SCRATCH / part / folder).mkdir(parents=True)
        layers = f"lowerdir=/{folder},upperdir={SCRATCH}/upper/{folder},workdir={SCRATCH}/work/{folder}"
        try:
            run("mount", "-t", "overlay", "overlay", "-o", layers, f"/{folder}", cwd="/")
        except AssertionError as fault:
            print(f"skipped: this machine allows no overlay mount: {fault}")
            return 77
    return 0 if unittest.main(argv=sys.argv[:1], exit=False).result.wasSuccessful() else 1


def reason_to_skip():
    if os.geteuid() != 0:
        return "only root can install packages"
    for tool in ["dpkg", "dpkg-deb", "dpkg-shlibdeps", "unshare", "mount"]:
        if shutil.which(tool) is None:
            return f"{tool} is not installed"
    if subprocess.run(["unshare", "--mount", "true"], capture_output=True).returncode != 0:
        return "this machine allows no mount namespace"
    return None


def main():
    reason = reason_to_skip()
    if reason:
        print(f"skipped: {reason}")
        return 77
    built = subprocess.run([ROOT / "script/package", "--quick"], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if built.returncode != 0:
        print(built.stdout)
        return 1
    shutil.rmtree(SCRATCH, ignore_errors=True)
    SCRATCH.mkdir(parents=True)
    before = [installed(name) for name in PACKAGES]
    command = ["unshare", "--mount", "--propagation", "private", sys.executable, __file__, "--inside", SCRATCH]
    status = subprocess.run(command).returncode
    if before != [installed(name) for name in PACKAGES]:
        print("the test changed the installed packages of the machine")
        return 1
    return status


if __name__ == "__main__":
    SCRATCH = Path(sys.argv.pop()).absolute()
    sys.exit(run_in_namespace() if "--inside" in sys.argv else main())
