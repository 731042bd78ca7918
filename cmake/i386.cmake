# 32-bit x86 Linux on a 64-bit or 32-bit Debian host with g++-multilib.
set(width 32)
set(architecture i386-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/multiarch.cmake)

# x87, SSE and MMX, no SSE2: every processor since 1999. Callers from before the 16-byte
# stack rule are served by realigning.
set(QORKES_PROCESSOR -march=pentium3 -mstackrealign)
set(QORKES_DEBIAN_ARCHITECTURE i386)
