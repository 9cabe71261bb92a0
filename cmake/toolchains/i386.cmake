# 32-bit x86 Linux, run as it is. With g++-12-multilib the kernel's headers have to be pointed at:
# the package that would link them into place excludes the cross compilers.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER gcc-12)
set(CMAKE_CXX_COMPILER g++-12)
set(CMAKE_C_FLAGS_INIT "-m32 -idirafter /usr/include/x86_64-linux-gnu")
set(CMAKE_CXX_FLAGS_INIT ${CMAKE_C_FLAGS_INIT})
