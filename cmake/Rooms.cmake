# Every folder of the source tree is an object library, a room; all rooms together make the shared library libtavin.

# What every target of ours is compiled with. Contraction of a*b+c is off so that results do not depend on the machine.
# GCC 12 warns falsely of overlapping copies in "text" + std::string.
add_library(tavin_options INTERFACE)
target_compile_options(tavin_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    -ffp-contract=off -fno-semantic-interposition -fvisibility-inlines-hidden
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    $<$<BOOL:${TAVIN_WERROR}>:-Werror>)
target_include_directories(tavin_options INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
if(TAVIN_SANITIZE)
    target_compile_options(tavin_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(tavin_options INTERFACE -fsanitize=address,undefined)
endif()

set_property(GLOBAL PROPERTY TAVIN_ROOMS "")

# tavin_room(folder [libraries...]): the sources directly in `folder`, compiled with the libraries given.
function(tavin_room folder)
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
    if(NOT sources)
        return()
    endif()
    string(REPLACE "/" "_" name tavin_${folder})
    add_library(${name} OBJECT ${sources})
    target_link_libraries(${name} PUBLIC tavin_options ${ARGN})
    set_property(GLOBAL APPEND PROPERTY TAVIN_ROOMS ${name})
endfunction()

function(tavin_library)
    get_property(rooms GLOBAL PROPERTY TAVIN_ROOMS)
    add_library(tavin SHARED)
    add_library(Tavin::tavin ALIAS tavin)
    target_link_libraries(tavin PRIVATE ${rooms})
    target_include_directories(tavin INTERFACE
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/tavin>)
    target_compile_features(tavin INTERFACE cxx_std_20)
    set_target_properties(tavin PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
endfunction()
