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

# The program's place in a desktop and in shells. Its manual page and completions are what it prints of itself.
set(texts_dir ${PROJECT_BINARY_DIR}/texts)
set(texts "")
foreach(text manual bash zsh fish)
    add_custom_command(OUTPUT ${texts_dir}/${text}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${texts_dir}
        COMMAND tavin_program print ${text} > ${texts_dir}/${text}
        DEPENDS tavin_program VERBATIM)
    list(APPEND texts ${texts_dir}/${text})
endforeach()
add_custom_target(tavin_texts ALL DEPENDS ${texts})
if(TAVIN_TESTS)
    add_dependencies(tavin_tests tavin_texts)
endif()
install(FILES ${texts_dir}/manual DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 RENAME tavin.1)
install(FILES ${texts_dir}/bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME tavin)
install(FILES ${texts_dir}/zsh DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions RENAME _tavin)
install(FILES ${texts_dir}/fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d RENAME tavin.fish)
install(FILES share/tavin.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES samples/tide-gauge.csv DESTINATION ${CMAKE_INSTALL_DATADIR}/tavin/samples)
install(FILES share/tavin.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES share/tavin.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
