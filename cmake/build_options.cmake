# Compile options that every target of this project takes by linking to tarn_build_options.
add_library(tarn_build_options INTERFACE)
target_compile_options(tarn_build_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
  -Woverloaded-virtual -Wcast-align)
target_compile_definitions(tarn_build_options INTERFACE QT_NO_KEYWORDS QT_NO_FOREACH QT_STRICT_ITERATORS
  QT_NO_URL_CAST_FROM_STRING)
if(TARN_WARNINGS_AS_ERRORS)
  target_compile_options(tarn_build_options INTERFACE -Werror)
endif()
# tarn_export_marked_symbols(target): a library shows what its headers mark, and nothing of Qt's or std's beside it.
set(TARN_EXPORTED_SYMBOLS ${CMAKE_CURRENT_LIST_DIR}/exported_symbols.map)
function(tarn_export_marked_symbols target)
  target_link_options(${target} PRIVATE LINKER:--version-script=${TARN_EXPORTED_SYMBOLS})
  set_target_properties(${target} PROPERTIES LINK_DEPENDS ${TARN_EXPORTED_SYMBOLS})
endfunction()
if(TARN_SANITIZE)
  target_compile_options(tarn_build_options INTERFACE -fsanitize=${TARN_SANITIZE} -fno-omit-frame-pointer
    -fno-sanitize-recover=all)
  target_link_options(tarn_build_options INTERFACE -fsanitize=${TARN_SANITIZE})
endif()
