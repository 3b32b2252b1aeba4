# PDFium itself, without JavaScript and XFA, drawn by AGG.

set(pdfium_folders
  core/fdrm core/fpdfapi/cmaps core/fpdfapi/cmaps/CNS1 core/fpdfapi/cmaps/GB1
  core/fpdfapi/cmaps/Japan1 core/fpdfapi/cmaps/Korea1 core/fpdfapi/edit
  core/fpdfapi/font core/fpdfapi/page core/fpdfapi/parser core/fpdfapi/render
  core/fpdfdoc core/fpdftext core/fxcodec core/fxcodec/basic core/fxcodec/fax
  core/fxcodec/flate core/fxcodec/icc core/fxcodec/jbig2 core/fxcodec/jpeg
  core/fxcodec/jpx core/fxcrt core/fxcrt/debug core/fxcrt/xml core/fxge
  core/fxge/agg core/fxge/dib core/fxge/fontdata/chromefontdata
  core/fxge/freetype fpdfsdk fpdfsdk/formfiller fpdfsdk/pwl)
if(WIN32)
  list(APPEND pdfium_folders core/fxcrt/win core/fxge/win32)
else()
  list(APPEND pdfium_folders core/fxge/linux)
endif()

foreach(folder IN LISTS pdfium_folders)
  file(GLOB found CONFIGURE_DEPENDS ${PDFIUM_DIR}/${folder}/*.cpp
    ${PDFIUM_DIR}/${folder}/*.cc ${PDFIUM_DIR}/${folder}/*.c)
  list(APPEND pdfium_sources ${found})
endforeach()
foreach(name cjs_event_context_stub cjs_runtimestub ijs_runtime)
  list(APPEND pdfium_sources ${PDFIUM_DIR}/fxjs/${name}.cpp)
endforeach()

list(FILTER pdfium_sources EXCLUDE REGEX
  "_(unit|embedder)?test\\.(cpp|c)$|_test_support\\.cpp$|/(fake_time_test|test_with_page_module|cpdf_test_document|fpdf_view_c_api_test)\\.")
# Only XFA needs these.
list(FILTER pdfium_sources EXCLUDE REGEX
  "/(cfx_codec_memory|progressive_decoder|jpeg_progressive_decoder|cfx_memorystream|cpdf_seekablemultistream|cfx_cttnametable|fx_memory_pa)\\.cpp$")
if(WIN32)
  list(FILTER pdfium_sources EXCLUDE REGEX "/[a-z_]*_posix\\.cpp$|/mapped_data_bytes\\.cpp$")
else()
  list(FILTER pdfium_sources EXCLUDE REGEX
    "_windows\\.cpp$|/(code_point_view|cfx_windowsrenderdevice|cpdf_windowsrenderdevice|cpdf_scaledrenderbuffer)\\.cpp$")
endif()

include(cmake/changes.cmake)
# A changed file takes its source's place: files that are compiled together stay together, where the
# compiler can inline one's functions into another's.
foreach(file IN LISTS changed_files)
  if(file MATCHES "\\.cpp$")
    list(FIND pdfium_sources ${PDFIUM_DIR}/${file} place)
    list(INSERT pdfium_sources ${place} ${CHANGED_DIR}/${file})
    list(REMOVE_ITEM pdfium_sources ${PDFIUM_DIR}/${file})
  endif()
endforeach()

configure_file(quillmere_engine_version.h.in quillmere_engine_version.h @ONLY)

set(own_sources annotated_pages.cpp annotations.cpp flatten.cpp mark_appearance.cpp object_packer.cpp
  page_indexes.cpp release.cpp separate_pages.cpp version.cpp)
add_library(pdfium SHARED ${pdfium_sources} ${own_sources})
# Compiling many files as one reads the headers once for all of them, which is
# most of the work. Our own files keep to themselves.
set_target_properties(pdfium PROPERTIES UNITY_BUILD ${ENGINE_UNITY} UNITY_BUILD_BATCH_SIZE 24)
set_source_files_properties(${own_sources} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
# A changed header stands before PDFium's own.
target_include_directories(pdfium PRIVATE ${CHANGED_DIR} ${CMAKE_CURRENT_SOURCE_DIR} ${PDFIUM_DIR} ${PDFIUM_DIR}/public ${DEPS_DIR}
  ${DEPS_DIR}/third_party/abseil-cpp ${DEPS_DIR}/third_party/icu/source/common
  ${CMAKE_CURRENT_BINARY_DIR})
# COMPONENT_BUILD makes PDFium's headers mark the public functions for export.
target_compile_definitions(pdfium PRIVATE FPDF_IMPLEMENTATION COMPONENT_BUILD PDF_USE_AGG
  USE_SYSTEM_LIBJPEG USE_SYSTEM_LIBOPENJPEG2 USE_SYSTEM_ZLIB)
target_compile_options(pdfium PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-fno-rtti>)
target_link_libraries(pdfium PRIVATE engine_libraries)

if(WIN32)
  # Without it the print spooler's headers come along, whose macros rename
  # PDFium's functions in some files and not in others.
  target_compile_definitions(pdfium PRIVATE WIN32_LEAN_AND_MEAN)
  enable_language(RC)
  string(REPLACE "." "," ENGINE_VERSION_COMMAS "${ENGINE_VERSION}")
  configure_file(pdfium.rc.in pdfium.rc @ONLY)
  add_library(version_resource OBJECT ${CMAKE_CURRENT_BINARY_DIR}/pdfium.rc)
  target_link_libraries(pdfium PRIVATE version_resource)
  set_target_properties(pdfium PROPERTIES PREFIX "" IMPORT_PREFIX lib)
  target_link_libraries(pdfium PRIVATE gdi32 user32 advapi32)
  target_link_options(pdfium PRIVATE -static -fstack-protector-strong -Wl,--dynamicbase,--nxcompat,--high-entropy-va
    -Wl,--gc-sections -Wl,--exclude-all-symbols -s)
else()
  target_link_options(pdfium PRIVATE -Wl,--gc-sections,-z,relro,-z,now
    -Wl,--version-script=${CMAKE_CURRENT_SOURCE_DIR}/exports.map)
  if(ENGINE_SANITIZE)
    # The sanitizer's functions come from the program, whichever compiler made it.
    target_link_options(pdfium PRIVATE -fno-sanitize=all)
  else()
    target_link_options(pdfium PRIVATE -Wl,-z,defs -s)
  endif()
  set_target_properties(pdfium PROPERTIES LINK_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/exports.map)
endif()
