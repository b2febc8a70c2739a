# cmake -DSOURCE=... -DPREFIX=... -DWORK=... -DLIBDIR=... -DQT=... -P other_host.cmake
# Builds the second host against an installed copy, the plug-in on that host, and a program that uses both. What was
# built stays for the next time.
include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)
# made(folder source prefix options...): configures, builds and installs.
function(made folder source prefix)
  run(${CMAKE_COMMAND} -S ${source} -B ${WORK}/${folder} -G Ninja -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_INSTALL_PREFIX=${WORK}/installed -DTARN_QT_VERSION=${QT} ${ARGN})
  run(${CMAKE_COMMAND} --build ${WORK}/${folder})
endfunction()

file(REMOVE_RECURSE ${WORK}/installed)
made(host ${SOURCE}/examples/other_host ${PREFIX})
run(${CMAKE_COMMAND} --install ${WORK}/host)
made(plug-in ${SOURCE} ${WORK}/installed -DTARN_BUILD_HOSTKIT=OFF -DTARN_HOST_PACKAGE=OtherHost -DTARN_BUILD_CLIENT=OFF
  -DTARN_BUILD_TESTS=OFF -DTARN_BUILD_BENCH=OFF -DCMAKE_UNITY_BUILD=ON)
run(${CMAKE_COMMAND} --install ${WORK}/plug-in)
made(test ${CMAKE_CURRENT_LIST_DIR}/other_host ${WORK}/installed)
set(ENV{LD_LIBRARY_PATH} ${WORK}/installed/lib:${WORK}/installed/${LIBDIR})
run(${WORK}/test/on_other_host)
message(STATUS "${output}")
