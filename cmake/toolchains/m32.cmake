# 32-bit x86 Linux with the compilers of a 64-bit machine; it runs what is built.
# For clang++: -DCMAKE_CXX_COMPILER=clang++.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_CXX_FLAGS_INIT -m32)

# The kernel's headers are the same for both widths, but only the 64-bit compiler looks
# for them here; g++-multilib has a link for it that no cross compiler tolerates.
string(APPEND CMAKE_CXX_FLAGS_INIT " -isystem /usr/include/x86_64-linux-gnu")

set(CMAKE_LIBRARY_PATH /usr/lib32)
