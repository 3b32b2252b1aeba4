# Settings that all our targets are compiled and linked with.
add_library(quillmere_settings INTERFACE)
target_compile_options(quillmere_settings INTERFACE -Wall -Wextra)
if(QUILLMERE_WERROR)
  target_compile_options(quillmere_settings INTERFACE -Werror)
endif()
target_include_directories(quillmere_settings INTERFACE ${CMAKE_SOURCE_DIR}/src)

if(QUILLMERE_SANITIZE)
  set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(quillmere_settings INTERFACE ${sanitizers})
  target_link_options(quillmere_settings INTERFACE ${sanitizers})
endif()

if(QUILLMERE_FUZZ)
  target_compile_options(quillmere_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()

if(WIN32)
  target_compile_definitions(quillmere_settings INTERFACE
    UNICODE _UNICODE NOMINMAX _WIN32_WINNT=0x0A00 WINVER=0x0A00)
  target_compile_options(quillmere_settings INTERFACE -fstack-protector-strong
    -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  target_link_options(quillmere_settings INTERFACE -static -fstack-protector-strong
    -Wl,--dynamicbase,--high-entropy-va,--nxcompat -Wl,--no-insert-timestamp)
endif()

# The system libraries that the Windows side links.
set(QUILLMERE_WINDOWS_LIBRARIES gdiplus comctl32 comdlg32 ole32 oleaut32 shell32 shlwapi uuid
  winspool winhttp version gdi32 user32 advapi32)

# quillmere_executable(NAME SOURCES... LIBRARIES...): a program of ours. The libraries may call
# one another in circles; those that do not exist (yet) are left out.
function(quillmere_executable name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  set(existing "")
  foreach(library IN LISTS arg_LIBRARIES)
    if(TARGET ${library})
      list(APPEND existing ${library})
    endif()
  endforeach()
  list(JOIN existing "," group)
  if(group)
    target_link_libraries(${name} PRIVATE "$<LINK_GROUP:RESCAN,${group}>")
  endif()
  target_link_libraries(${name} PRIVATE quillmere_settings pdfium)
  if(WIN32)
    target_link_libraries(${name} PRIVATE ${QUILLMERE_WINDOWS_LIBRARIES})
    add_dependencies(${name} engine_beside_programs)
  endif()
endfunction()

# quillmere_library(NAME SOURCES...): a static library of ours; none when there are no sources.
function(quillmere_library name)
  if(NOT ARGN)
    return()
  endif()
  add_library(${name} STATIC ${ARGN})
  target_link_libraries(${name} PUBLIC quillmere_settings pdfium)
endfunction()
