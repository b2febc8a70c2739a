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
# A target with this property is compiled as without a sanitizer, and linked with it.
define_property(TARGET PROPERTY TARN_COMPILED_PLAIN INITIALIZE_FROM_VARIABLE ALL_TARN_COMPILED_PLAIN
  BRIEF_DOCS "Compile without the sanitizers of TARN_SANITIZE")
if(TARN_SANITIZE)
  set(instrumented $<NOT:$<BOOL:$<TARGET_PROPERTY:TARN_COMPILED_PLAIN>>>)
  target_compile_options(tarn_build_options INTERFACE
    "$<${instrumented}:-fsanitize=${TARN_SANITIZE};-fno-omit-frame-pointer;-fno-sanitize-recover=all>")
  target_compile_definitions(tarn_build_options INTERFACE QT_FORCE_ASSERTS)
  target_link_options(tarn_build_options INTERFACE -fsanitize=${TARN_SANITIZE})
endif()
