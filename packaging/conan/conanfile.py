"""The Conan package of the library, made of the sources that this recipe stands in.

    conan create packaging/conan [-o kesvizcore/*:shared=False]
"""
import os

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeToolchain, cmake_layout
from conan.tools.files import copy, rmdir


class KesVizCoreRecipe(ConanFile):
    name = "kesvizcore"
    version = "0.1.0"
    description = "Visualization core for mechanical CAD data: scenes, identifiers, picking"
    package_type = "library"
    settings = "os", "compiler", "build_type", "arch"
    options = {"shared": [True, False], "fPIC": [True, False]}
    default_options = {"shared": True, "fPIC": True}
    implements = ["auto_shared_fpic"]

    def export_sources(self):
        root = os.path.join(self.recipe_folder, "..", "..")
        for pattern in ("CMakeLists.txt", "README.md", "CHANGELOG.md", "cmake/*",
                        "debugger/*", "docs/*", "include/*", "src/*", "packaging/copyright"):
            copy(self, pattern, src=root, dst=self.export_sources_folder)

    def layout(self):
        cmake_layout(self)

    def validate(self):
        check_min_cppstd(self, 17)

    def build_requirements(self):
        self.tool_requires("cmake/[>=3.25]")

    def generate(self):
        # CMakeToolchain itself sets BUILD_SHARED_LIBS and CMAKE_POSITION_INDEPENDENT_CODE.
        toolchain = CMakeToolchain(self)
        for part in ("TESTS", "EXAMPLES", "BENCHMARKS", "HOST", "DOCS", "FUZZERS"):
            toolchain.cache_variables[f"KESVIZCORE_BUILD_{part}"] = False
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()
        copy(self, "copyright", src=os.path.join(self.source_folder, "packaging"),
             dst=os.path.join(self.package_folder, "licenses"))
        # Conan makes what finds the package, and keeps no documentation.
        for folder in (("lib", "cmake"), ("lib", "pkgconfig"), ("share",)):
            rmdir(self, os.path.join(self.package_folder, *folder))

    def package_info(self):
        self.cpp_info.libs = ["KesVizCore"]
        self.cpp_info.set_property("cmake_file_name", "KesVizCore")
        self.cpp_info.set_property("cmake_target_name", "KesVizCore::KesVizCore")
        self.cpp_info.set_property("pkg_config_name", "KesVizCore")
        if not self.options.shared:
            self.cpp_info.defines = ["KESVIZCORE_STATIC"]
            if self.settings.os == "Linux":
                self.cpp_info.system_libs = ["m"]
