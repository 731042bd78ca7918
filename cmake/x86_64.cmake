# 64-bit x86 Linux.
set(CMAKE_C_FLAGS_INIT -m64)
set(CMAKE_CXX_FLAGS_INIT -m64)
set(CMAKE_LIBRARY_ARCHITECTURE x86_64-linux-gnu)
set(CMAKE_C_LIBRARY_ARCHITECTURE x86_64-linux-gnu)
set(CMAKE_CXX_LIBRARY_ARCHITECTURE x86_64-linux-gnu)
# Builds for several architectures can be installed side by side.
set(CMAKE_INSTALL_LIBDIR lib/x86_64-linux-gnu CACHE PATH "Libraries, below the prefix")

# The least of 64-bit processors. Arithmetic stays in the x87 and SSE units: it is what
# makes the numbers those of the 32-bit build.
set(QORKES_PROCESSOR -march=x86-64)
set(QORKES_DEBIAN_ARCHITECTURE amd64)
