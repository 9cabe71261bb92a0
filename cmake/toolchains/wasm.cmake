# WebAssembly, run by node, with the files of this machine.
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-O1 -sNODERAWFS=1 -sALLOW_MEMORY_GROWTH=1 -sEXIT_RUNTIME=1 -sWASM_ASYNC_COMPILATION=0")
