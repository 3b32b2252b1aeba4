# GoogleTest from Debian's source package, so that both compilers use the same one.
set(googletest_source /usr/src/googletest)
if(NOT EXISTS ${googletest_source}/CMakeLists.txt)
  message(FATAL_ERROR "GoogleTest's sources are missing: scripts/require-packages googletest")
endif()
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(BUILD_GMOCK ON CACHE BOOL "" FORCE)
add_subdirectory(${googletest_source} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
foreach(target gtest gtest_main gmock gmock_main)
  set_target_properties(${target} PROPERTIES COMPILE_OPTIONS "-w")
  get_target_property(include_dirs ${target} INTERFACE_INCLUDE_DIRECTORIES)
  set_target_properties(${target} PROPERTIES
    INTERFACE_SYSTEM_INCLUDE_DIRECTORIES "${include_dirs}")
endforeach()

# Tests take longer to compile than to run, so they are not optimised and GoogleTest's headers are
# precompiled. The code under test keeps its own options.
function(quick_to_compile target)
  target_compile_options(${target} PRIVATE -O0 -U_FORTIFY_SOURCE)
  target_precompile_headers(${target} PRIVATE <gmock/gmock.h>)
endfunction()
