#!/usr/bin/env python3
"""Checks the recipes for vcpkg and Conan as far as that goes without either of them: the version
stands in all as in CMakeLists.txt, the fields and options are such as there are, and the sources
that the Conan recipe exports can be configured with the options that it sets.

    check_recipes.py SOURCE_FOLDER WORK_FOLDER
"""
import fnmatch
import json
import pathlib
import re
import shutil
import subprocess
import sys
import types

SOURCE = pathlib.Path(sys.argv[1])
WORK = pathlib.Path(sys.argv[2])
PROJECT = (SOURCE / "CMakeLists.txt").read_text()
VERSION = re.search(r"VERSION (\d+\.\d+\.\d+)\n", PROJECT)[1]


def check(holds, message):
    if not holds:
        sys.exit(message)


def check_same(found, expected, what):
    check(found == expected, f"{what}: {found!r} instead of {expected!r}")


def check_vcpkg():
    port = json.loads((SOURCE / "packaging/vcpkg/vcpkg.json").read_text())
    check_same(set(port), {"name", "version", "description", "license", "dependencies"},
               "fields of vcpkg.json")
    check_same(port["version"], VERSION, "version in vcpkg.json")
    portfile = (SOURCE / "packaging/vcpkg/portfile.cmake").read_text()
    helpers = {entry["name"] for entry in port["dependencies"] if entry["host"]}
    check_same(helpers, {"vcpkg-cmake", "vcpkg-cmake-config"}, "helpers of the port")
    check("vcpkg_cmake_configure(" in portfile and "vcpkg_cmake_config_fixup(" in portfile,
          "the portfile uses no helper")


def copy(recipe, pattern, src, dst):
    """As Conan's: what matches the pattern, by its path below src, goes to the same below dst."""
    found = [path for path in pathlib.Path(src).rglob("*") if path.is_file() and
             fnmatch.fnmatch(path.relative_to(src).as_posix(), pattern)]
    check(found, f"nothing matches {pattern}")
    for path in found:
        target = pathlib.Path(dst) / path.relative_to(src)
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(path, target)


class Toolchain:
    def __init__(self, recipe):
        self.cache_variables = {}

    def generate(self):
        Toolchain.made = self


def import_recipe(path):
    """The recipe, with stand-ins for the modules of Conan."""
    names = {
        "conan": {"ConanFile": object},
        "conan.tools.build": {"check_min_cppstd": lambda recipe, year: check_same(year, 17, "C++"),
                              "can_run": lambda recipe: True},
        "conan.tools.cmake": {"CMake": object, "CMakeToolchain": Toolchain,
                              "cmake_layout": lambda recipe: None},
        "conan.tools.files": {"copy": copy, "rmdir": None},
    }
    for name, members in names.items():
        sys.modules[name] = types.ModuleType(name)
        vars(sys.modules[name]).update(members)
    module = types.ModuleType(path.stem)
    exec(compile(path.read_text(), path, "exec"), vars(module))
    return module


class CppInfo:
    def __init__(self):
        self.defines, self.properties = [], {}

    def set_property(self, name, value):
        self.properties[name] = value


def check_conan():
    recipe = import_recipe(SOURCE / "packaging/conan/conanfile.py").KesVizCoreRecipe()
    check_same(recipe.version, VERSION, "version in conanfile.py")

    exported = WORK / "exported"
    shutil.rmtree(WORK, ignore_errors=True)
    recipe.recipe_folder = str(SOURCE / "packaging/conan")
    recipe.export_sources_folder = str(exported)
    recipe.export_sources()

    recipe.validate()
    recipe.generate()
    variables = Toolchain.made.cache_variables
    options = set(re.findall(r"option\((KESVIZCORE_BUILD_\w+)", PROJECT))
    check_same(set(variables), options, "what is not built")
    result = subprocess.run(
        ["cmake", "-G", "Ninja", "-S", exported, "-B", WORK / "build",
         *(f"-D{name}={'ON' if value else 'OFF'}" for name, value in variables.items())],
        stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, check=False)
    check_same((result.returncode, result.stderr), (0, ""), "configuring the exported sources")

    for shared, defines in ((True, []), (False, ["KESVIZCORE_STATIC"])):
        recipe.options = types.SimpleNamespace(shared=shared)
        recipe.settings = types.SimpleNamespace(os="Linux")
        recipe.cpp_info = CppInfo()
        recipe.package_info()
        check_same(recipe.cpp_info.defines, defines, f"definitions, shared {shared}")
        check_same(recipe.cpp_info.properties["cmake_target_name"], "KesVizCore::KesVizCore",
                   "target")
    import_recipe(SOURCE / "packaging/conan/test_package/conanfile.py")


check_same(re.search(r"## (\d+\.\d+\.\d+)", (SOURCE / "CHANGELOG.md").read_text())[1], VERSION,
           "topmost version in CHANGELOG.md")
check_vcpkg()
check_conan()
