# Imported target `pdfium`: the engine that engine/build has put into its cache, or the one under
# QUILLMERE_ENGINE_DIR if that is set. engine_prefix has include/, lib/, bin/ and licenses/.
if(WIN32)
  set(engine_target windows)
elseif(QUILLMERE_SANITIZE)
  # This finds faults inside the engine as well. It has no sanitizer runtime of its own, so that
  # programs built with either compiler can use it.
  set(engine_target native-asan)
else()
  set(engine_target native)
endif()

if(DEFINED QUILLMERE_ENGINE_DIR)
  set(engine_prefix ${QUILLMERE_ENGINE_DIR})
else()
  execute_process(COMMAND ${CMAKE_SOURCE_DIR}/engine/build --check ${engine_target}
    RESULT_VARIABLE engine_missing)
  execute_process(COMMAND ${CMAKE_SOURCE_DIR}/engine/build --print-dir ${engine_target}
    OUTPUT_VARIABLE engine_prefix OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  if(engine_missing)
    message(FATAL_ERROR "PDFium is not built yet: nothing complete at ${engine_prefix}.\n"
      "Build it first: engine/build ${engine_target}")
  endif()
endif()

add_library(pdfium SHARED IMPORTED GLOBAL)
target_include_directories(pdfium SYSTEM INTERFACE ${engine_prefix}/include)
# Declares the engine's functions as imports from a shared library.
target_compile_definitions(pdfium INTERFACE COMPONENT_BUILD)
if(WIN32)
  set_target_properties(pdfium PROPERTIES
    IMPORTED_LOCATION ${engine_prefix}/bin/pdfium.dll
    IMPORTED_IMPLIB ${engine_prefix}/lib/libpdfium.dll.a)
  # Programs look for the engine in their own folder, which they all share.
  add_custom_command(OUTPUT ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/pdfium.dll
    COMMAND ${CMAKE_COMMAND} -E copy ${engine_prefix}/bin/pdfium.dll
      ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/pdfium.dll
    DEPENDS ${engine_prefix}/bin/pdfium.dll VERBATIM)
  add_custom_target(engine_beside_programs ALL
    DEPENDS ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/pdfium.dll)
else()
  set_target_properties(pdfium PROPERTIES IMPORTED_LOCATION ${engine_prefix}/lib/libpdfium.so)
endif()
