# The installed tree: include/tavin/..., libtavin, the program, and the CMake package with target Tavin::tavin.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Tavin)
install(TARGETS tavin EXPORT TavinTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT TavinTargets NAMESPACE Tavin:: DESTINATION ${package_dir})
install(CODE "set(source_dir \"${PROJECT_SOURCE_DIR}\")
set(include_dir \"${CMAKE_INSTALL_INCLUDEDIR}/tavin\")")
install(SCRIPT cmake/InstallHeaders.cmake)

write_basic_package_version_file(${PROJECT_BINARY_DIR}/TavinConfigVersion.cmake COMPATIBILITY SameMinorVersion)
file(WRITE ${PROJECT_BINARY_DIR}/TavinConfig.cmake
    "include(\"\${CMAKE_CURRENT_LIST_DIR}/TavinTargets.cmake\")\n")
install(FILES ${PROJECT_BINARY_DIR}/TavinConfig.cmake ${PROJECT_BINARY_DIR}/TavinConfigVersion.cmake
    DESTINATION ${package_dir})
