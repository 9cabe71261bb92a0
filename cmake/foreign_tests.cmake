# The libraries of the tests for a foreign machine. Debian has the test framework as sources too; the
# headers of the JSON library lie among those of this machine, where no foreign compiler may look.
set(BUILD_GMOCK OFF)
set(INSTALL_GTEST OFF)
add_subdirectory(/usr/src/googletest googletest EXCLUDE_FROM_ALL)

set(headers ${CMAKE_CURRENT_BINARY_DIR}/include)
file(MAKE_DIRECTORY ${headers})
file(CREATE_LINK /usr/include/nlohmann ${headers}/nlohmann SYMBOLIC)
add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
target_include_directories(nlohmann_json::nlohmann_json INTERFACE ${headers})

# One foreign compiler after the other builds the tests anew: less optimisation and a precompiled
# header make that a matter of a minute each.
add_compile_options(-O1 -g0)
function(precompile_test_headers first second)
  target_precompile_headers(${first} PRIVATE <gtest/gtest.h> <random> <sstream>)
  target_precompile_headers(${second} REUSE_FROM ${first})
endfunction()
