# Installs the build tree to a scratch prefix, builds the outside program against that prefix and runs it.
# Variables: BUILD, OUTSIDE (the program's source), SCRATCH, CONFIG, COMPILER, GENERATOR, FLAGS.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE failed OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(failed)
        message(FATAL_ERROR "failed: ${ARGN}\n${output}")
    endif()
endfunction()

file(REMOVE_RECURSE ${SCRATCH})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${SCRATCH}/prefix --config ${CONFIG})
run(${CMAKE_COMMAND} -S ${OUTSIDE} -B ${SCRATCH}/build -G ${GENERATOR} -DCMAKE_PREFIX_PATH=${SCRATCH}/prefix
    -DCMAKE_BUILD_TYPE=${CONFIG} -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS})
run(${CMAKE_COMMAND} --build ${SCRATCH}/build)
run(${SCRATCH}/build/outside)
