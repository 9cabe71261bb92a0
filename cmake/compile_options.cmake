# Flags of everything in this repository (kavo_options) and of the library alone
# (kavo_library_options). Floating-point contraction is off everywhere: it changes results.
add_library(kavo_options INTERFACE)
target_compile_features(kavo_options INTERFACE cxx_std_20 c_std_11)
target_compile_options(kavo_options INTERFACE -ffp-contract=off -Wall -Wextra -Wpedantic -Wshadow
  -Wconversion -Wsign-conversion -Wdouble-promotion -Wformat=2
  $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>)
if(KAVO_WERROR)
  target_compile_options(kavo_options INTERFACE -Werror)
endif()
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(i.86|x86)$")
  target_compile_options(kavo_options INTERFACE -msse2 -mfpmath=sse)
endif()
if(KAVO_SANITIZE)
  target_compile_options(kavo_options INTERFACE -fsanitize=${KAVO_SANITIZE}
    -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(kavo_options INTERFACE -fsanitize=${KAVO_SANITIZE})
endif()

add_library(kavo_library_options INTERFACE)
target_link_libraries(kavo_library_options INTERFACE kavo_options)
target_compile_definitions(kavo_library_options INTERFACE KAVO_BUILDING_LIBRARY)
target_compile_options(kavo_library_options INTERFACE -fPIC -fvisibility=hidden
  $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti>
  $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
# Whatever the tool chain's own defaults: nothing of the loaded library is both writable and
# executable, and its tables of addresses are read-only from the start.
if(CMAKE_SYSTEM_NAME STREQUAL Linux)
  target_link_options(kavo_library_options INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack,-z,text)
endif()
