# 64-bit x86 Linux.
set(width 64)
set(architecture x86_64-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/multiarch.cmake)

# The least of 64-bit processors. Arithmetic stays in the x87 and SSE units: it is what
# makes the numbers those of the 32-bit build.
set(QORKES_PROCESSOR -march=x86-64)
set(QORKES_DEBIAN_ARCHITECTURE amd64)
