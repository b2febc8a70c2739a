# cmake -DSOURCE=... -DREADME=... -DPREFIX=... -DWORK=... -DLIBDIR=... -DFLAGS=... -DQT=... -P embed.cmake
# Builds the embedding program against the installed copy and runs it. Its lines are those that the README shows.
include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)
file(READ ${README} readme)
file(READ ${SOURCE}/main.cpp program)
string(REGEX MATCH "```cpp\n([^`]*)```" ignored "${readme}")
string(REGEX REPLACE "\n +" "\n" shown "${CMAKE_MATCH_1}")
string(REGEX REPLACE "\n +" "\n" written "${program}")
string(FIND "${written}" "// [embed]\n${shown}// [embed]\n" at)
if(shown STREQUAL "" OR at EQUAL -1)
  message(FATAL_ERROR "The lines of the README are not those between the marks of main.cpp")
endif()

file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} -S ${SOURCE} -B ${WORK} -G Ninja -DCMAKE_PREFIX_PATH=${PREFIX} -DCMAKE_CXX_FLAGS=${FLAGS}
  -DTARN_QT_VERSION=${QT})
run(${CMAKE_COMMAND} --build ${WORK})
set(ENV{LD_LIBRARY_PATH} ${PREFIX}/lib:${PREFIX}/${LIBDIR})
run(${WORK}/embed --play-first)
if(NOT output MATCHES ": [1-9][0-9]* cameras")
  message(FATAL_ERROR "No plan has played: ${output}")
endif()
message(STATUS "${output}")
