# cmake -DBUILD=... -DPREFIX=... -P install.cmake
# Installs the build into a prefix of its own.
include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)
file(REMOVE_RECURSE ${PREFIX})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX})
