find_package(PkgConfig REQUIRED)
pkg_check_modules(SYSTEM_LIBRARIES REQUIRED IMPORTED_TARGET
  freetype2 harfbuzz harfbuzz-subset libjpeg libopenjp2 zlib)
target_link_libraries(engine_libraries INTERFACE PkgConfig::SYSTEM_LIBRARIES pthread)
# FreeType's shared library keeps its glyph-name tables to itself.
target_compile_definitions(engine_libraries INTERFACE DEFINE_PS_TABLES_DATA)
