# 32-bit x86 Linux on a 64-bit or 32-bit Debian host with g++-multilib.
set(CMAKE_C_FLAGS_INIT -m32)
set(CMAKE_CXX_FLAGS_INIT -m32)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
set(CMAKE_C_LIBRARY_ARCHITECTURE i386-linux-gnu)
set(CMAKE_CXX_LIBRARY_ARCHITECTURE i386-linux-gnu)
# Builds for several architectures can be installed side by side.
set(CMAKE_INSTALL_LIBDIR lib/i386-linux-gnu CACHE PATH "Libraries, below the prefix")

# x87, SSE and MMX, no SSE2: every processor since 1999. Callers from before the 16-byte
# stack rule are served by realigning.
set(QORKES_PROCESSOR -march=pentium3 -mstackrealign)
set(QORKES_DEBIAN_ARCHITECTURE i386)
