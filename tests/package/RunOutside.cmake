# Installs the build tree to a scratch prefix, starts the installed program, builds the outside program against that
# prefix and runs it.
# Variables: BUILD, OUTSIDE (the program's source), SCRATCH, CONFIG, COMPILER, GENERATOR, FLAGS.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE failed OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(failed)
        message(FATAL_ERROR "failed: ${ARGN}\n${output}")
    endif()
endfunction()

file(REMOVE_RECURSE ${SCRATCH})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${SCRATCH}/prefix --config ${CONFIG})
# Moved, as a package is: nothing may lead back to where it was built or installed.
file(RENAME ${SCRATCH}/prefix ${SCRATCH}/moved)
run(${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH ${SCRATCH}/moved/bin/tavin --version)
foreach(file man/man1/tavin.1 bash-completion/completions/tavin zsh/site-functions/_tavin
        fish/vendor_completions.d/tavin.fish applications/tavin.desktop mime/packages/tavin.xml
        icons/hicolor/scalable/apps/tavin.svg tavin/samples/tide-gauge.csv)
    file(READ ${SCRATCH}/moved/share/${file} text)
    if(NOT text MATCHES "tavin|<svg|tide gauge")
        message(FATAL_ERROR "share/${file} does not hold what it should")
    endif()
endforeach()
run(${CMAKE_COMMAND} -S ${OUTSIDE} -B ${SCRATCH}/build -G ${GENERATOR} -DCMAKE_PREFIX_PATH=${SCRATCH}/moved
    -DCMAKE_BUILD_TYPE=${CONFIG} -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS})
run(${CMAKE_COMMAND} --build ${SCRATCH}/build)
run(${SCRATCH}/build/outside)
