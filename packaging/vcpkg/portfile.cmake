# Builds the sources that this port stands in. vcpkg says by the triplet whether the library is
# shared or static.
get_filename_component(SOURCE_PATH "${CURRENT_PORT_DIR}/../.." ABSOLUTE)

vcpkg_cmake_configure(
    SOURCE_PATH "${SOURCE_PATH}"
    OPTIONS
        -DKESVIZCORE_BUILD_TESTS=OFF
        -DKESVIZCORE_BUILD_EXAMPLES=OFF
        -DKESVIZCORE_BUILD_BENCHMARKS=OFF
        -DKESVIZCORE_BUILD_HOST=OFF
        -DKESVIZCORE_BUILD_DOCS=OFF
        -DKESVIZCORE_BUILD_FUZZERS=OFF)
vcpkg_cmake_install()
vcpkg_copy_pdbs()
vcpkg_cmake_config_fixup(PACKAGE_NAME KesVizCore CONFIG_PATH lib/cmake/KesVizCore)
vcpkg_fixup_pkgconfig()

file(REMOVE_RECURSE
    "${CURRENT_PACKAGES_DIR}/debug/include"
    "${CURRENT_PACKAGES_DIR}/debug/share"
    "${CURRENT_PACKAGES_DIR}/share/doc")
file(INSTALL "${SOURCE_PATH}/packaging/copyright"
    DESTINATION "${CURRENT_PACKAGES_DIR}/share/${PORT}")
file(INSTALL "${CURRENT_PORT_DIR}/usage" DESTINATION "${CURRENT_PACKAGES_DIR}/share/${PORT}")
