# The libraries PDFium stands on: for Windows from their Debian sources, for the
# native build the installed ones. The target engine_libraries carries them all.

add_library(engine_libraries INTERFACE)

set(third_party ${PDFIUM_DIR}/third_party)
function(engine_library name)
  add_library(${name} STATIC ${ARGN})
  target_link_libraries(engine_libraries INTERFACE ${name})
endfunction()

file(GLOB agg_sources ${third_party}/agg23/*.cpp)
engine_library(agg ${agg_sources})
target_include_directories(agg PRIVATE ${PDFIUM_DIR} ${DEPS_DIR})

file(GLOB lcms_sources ${third_party}/lcms/src/*.c)
engine_library(lcms ${lcms_sources})
target_include_directories(lcms PRIVATE ${PDFIUM_DIR} ${DEPS_DIR} ${third_party}/lcms/include)

# Only the character classes and the simple case mapping of ICU are used.
set(icu_common ${DEPS_DIR}/third_party/icu/source/common)
engine_library(icu_chars ${icu_common}/uchar.cpp ${icu_common}/ucase.cpp)
target_include_directories(icu_chars PRIVATE ${icu_common})
target_compile_definitions(icu_chars PUBLIC U_STATIC_IMPLEMENTATION PRIVATE U_COMMON_IMPLEMENTATION)

# flat_hash_set and inlined_vector, and what those call.
set(absl ${DEPS_DIR}/third_party/abseil-cpp/absl)
engine_library(absl_containers
  ${absl}/base/internal/raw_logging.cc
  ${absl}/base/log_severity.cc
  ${absl}/container/internal/raw_hash_set.cc
  ${absl}/hash/internal/city.cc
  ${absl}/hash/internal/hash.cc)
target_include_directories(absl_containers PRIVATE ${DEPS_DIR}/third_party/abseil-cpp)

engine_library(unreached unreached.cpp)
target_include_directories(unreached PRIVATE ${DEPS_DIR}/third_party/abseil-cpp ${icu_common})
target_link_libraries(absl_containers PUBLIC unreached)
target_link_libraries(icu_chars PUBLIC unreached)

if(WIN32)
  include(cmake/libraries_windows.cmake)
else()
  include(cmake/libraries_native.cmake)
endif()
