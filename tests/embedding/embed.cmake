# cmake -DBUILD=... -DSOURCE=... -DWORK=... -DFLAGS=... -P embed.cmake
# Installs the build into a prefix of its own, builds the outside host against it and runs that.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "'${ARGN}' failed (${result}):\n${output}")
  endif()
  set(output ${output} PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/prefix)
run(${CMAKE_COMMAND} -S ${SOURCE} -B ${WORK}/build -G Ninja -DCMAKE_PREFIX_PATH=${WORK}/prefix -DCMAKE_CXX_FLAGS=${FLAGS})
run(${CMAKE_COMMAND} --build ${WORK}/build)
set(ENV{LD_LIBRARY_PATH} ${WORK}/prefix/lib:${WORK}/prefix/${LIBDIR})
run(${WORK}/build/embedding-host)
message(STATUS "${output}")
