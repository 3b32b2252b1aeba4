# Only Boost's headers, without the rest of the folder that they are installed in: its other headers
# are for the native compiler and would mislead the one for Windows.
if(NOT EXISTS /usr/include/boost/regex.hpp)
  message(FATAL_ERROR "Boost.Regex is missing: install the package libboost1.81-dev.")
endif()
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/boost)
file(CREATE_LINK /usr/include/boost ${CMAKE_BINARY_DIR}/boost/boost SYMBOLIC)
add_library(boost_headers INTERFACE)
target_include_directories(boost_headers SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/boost)
