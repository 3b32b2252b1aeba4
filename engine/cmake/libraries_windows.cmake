include(ExternalProject)

# FreeType with PDFium's choice of modules.
set(freetype_parts
  base/ftbase base/ftbitmap base/ftdebug base/ftfstype base/ftglyph base/ftinit base/ftmm
  base/ftsystem cff/cff cid/type1cid psaux/psaux pshinter/pshinter psnames/psmodule
  raster/raster sfnt/sfnt smooth/smooth truetype/truetype type1/type1)
list(TRANSFORM freetype_parts PREPEND ${FREETYPE_DIR}/src/)
list(TRANSFORM freetype_parts APPEND .c)
engine_library(freetype ${freetype_parts})
target_include_directories(freetype PUBLIC ${third_party}/freetype/include ${FREETYPE_DIR}/include
  PRIVATE ${PDFIUM_DIR})
target_compile_definitions(freetype
  PUBLIC "FT_CONFIG_MODULES_H=<freetype-custom-config/ftmodule.h>"
         "FT_CONFIG_OPTIONS_H=<freetype-custom-config/ftoption.h>"
  PRIVATE FT2_BUILD_LIBRARY)

# HarfBuzz serves font subsetting alone, on saving a document with new fonts:
# the subsetter for TrueType and CFF outlines, no shaping, and small before fast.
set(harfbuzz_parts hb-blob hb-buffer hb-common hb-face hb-font hb-map hb-number hb-ot-cff1-table
  hb-ot-cff2-table hb-ot-face hb-ot-font hb-ot-metrics hb-ot-tag hb-ot-var hb-set hb-shape-plan
  hb-shaper hb-static hb-subset hb-subset-cff-common hb-subset-cff1 hb-subset-cff2 hb-subset-input
  hb-subset-plan hb-subset-repacker hb-ucd hb-unicode graph/gsubgpos-context)
list(TRANSFORM harfbuzz_parts PREPEND ${HARFBUZZ_DIR}/src/)
list(TRANSFORM harfbuzz_parts APPEND .cc)
engine_library(harfbuzz ${harfbuzz_parts})
# The compiler fails on it at link time.
set_target_properties(harfbuzz PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 0
  INTERPROCEDURAL_OPTIMIZATION OFF)
target_include_directories(harfbuzz PUBLIC ${HARFBUZZ_DIR}/src)
target_compile_options(harfbuzz PRIVATE -fno-rtti -fno-threadsafe-statics -Os)
target_compile_definitions(harfbuzz PRIVATE HAVE_OT HB_NO_MMAP HB_LEAN HB_NO_LEGACY HB_NO_SHAPER
  "HB_CONFIG_OVERRIDE_H=\"${CMAKE_CURRENT_SOURCE_DIR}/harfbuzz_config.h\"")

# OpenJPEG: the library's own list, without its index writers and tools.
set(openjpeg_parts bio cio dwt event function_list ht_dec image invert j2k jp2 mct mqc openjpeg
  opj_clock opj_malloc pi sparse_array t1 t2 tcd tgt thread)
list(TRANSFORM openjpeg_parts PREPEND ${OPENJPEG_DIR}/src/lib/openjp2/)
list(TRANSFORM openjpeg_parts APPEND .c)
file(STRINGS ${OPENJPEG_DIR}/CMakeLists.txt openjpeg_version REGEX "^set\\(OPENJPEG_VERSION_(MAJOR|MINOR|BUILD) [0-9]+\\)")
foreach(line IN LISTS openjpeg_version)
  string(REGEX MATCH "(OPENJPEG_VERSION_[A-Z]+) ([0-9]+)" ignored "${line}")
  set(${CMAKE_MATCH_1} ${CMAKE_MATCH_2})
endforeach()
set(PACKAGE_VERSION ${OPENJPEG_VERSION_MAJOR}.${OPENJPEG_VERSION_MINOR}.${OPENJPEG_VERSION_BUILD})
set(OPJ_HAVE_STDINT_H 1)
set(OPJ_HAVE_INTTYPES_H 1)
set(OPJ_HAVE_MALLOC_H 1)
set(OPJ_HAVE__ALIGNED_MALLOC 1)
configure_file(${OPENJPEG_DIR}/src/lib/openjp2/opj_config.h.cmake.in openjpeg/opj_config.h)
configure_file(${OPENJPEG_DIR}/src/lib/openjp2/opj_config_private.h.cmake.in openjpeg/opj_config_private.h)
engine_library(openjpeg ${openjpeg_parts})
target_include_directories(openjpeg PUBLIC ${OPENJPEG_DIR}/src/lib/openjp2 ${CMAKE_CURRENT_BINARY_DIR}/openjpeg)
target_compile_definitions(openjpeg PUBLIC OPJ_STATIC PRIVATE MUTEX_win32)

# libjpeg-turbo has SIMD code with its own rules; it cannot be added as a folder.
set(jpeg_out ${CMAKE_CURRENT_BINARY_DIR}/jpeg)
ExternalProject_Add(jpeg_build
  SOURCE_DIR ${JPEG_DIR}
  BINARY_DIR ${jpeg_out}
  CMAKE_ARGS -DCMAKE_TOOLCHAIN_FILE=${CMAKE_CURRENT_SOURCE_DIR}/cmake/mingw.cmake
    -DCMAKE_SYSTEM_PROCESSOR=AMD64 -DCMAKE_INSTALL_PREFIX=${jpeg_out}/install
    -DCMAKE_BUILD_TYPE=Release "-DCMAKE_C_FLAGS=-fstack-protector-strong -w"
    -DENABLE_SHARED=OFF -DENABLE_STATIC=ON -DWITH_TURBOJPEG=OFF -DWITH_JAVA=OFF -DREQUIRE_SIMD=ON
  BUILD_COMMAND ${CMAKE_COMMAND} --build . --target jpeg-static -- --quiet
  INSTALL_COMMAND ""
  BUILD_BYPRODUCTS ${jpeg_out}/libjpeg.a)
add_library(jpeg STATIC IMPORTED)
set_target_properties(jpeg PROPERTIES IMPORTED_LOCATION ${jpeg_out}/libjpeg.a)
file(MAKE_DIRECTORY ${jpeg_out})
target_include_directories(jpeg INTERFACE ${JPEG_DIR} ${jpeg_out})
add_dependencies(jpeg jpeg_build)
target_link_libraries(engine_libraries INTERFACE jpeg)
add_dependencies(engine_libraries jpeg_build)

# The DLL's own heap. As objects, not an archive, so that its operator new comes
# before the C++ library's.
add_library(heap OBJECT heap.c heap_new.cpp)
# Guard pages around the heap's own data and around its pages of blocks.
target_compile_definitions(heap PRIVATE MI_SECURE=2)
target_include_directories(heap PRIVATE ${MIMALLOC_DIR}/include ${MIMALLOC_DIR}/src)
target_link_libraries(engine_libraries INTERFACE $<TARGET_OBJECTS:heap>)
add_dependencies(engine_libraries heap)

find_library(ZLIB_STATIC libz.a REQUIRED)
target_link_libraries(engine_libraries INTERFACE ${ZLIB_STATIC})
