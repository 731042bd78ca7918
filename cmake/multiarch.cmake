# What a toolchain file sets once it has said `width` and `architecture`.
set(CMAKE_C_FLAGS_INIT -m${width})
set(CMAKE_CXX_FLAGS_INIT -m${width})
set(CMAKE_LIBRARY_ARCHITECTURE ${architecture})
set(CMAKE_C_LIBRARY_ARCHITECTURE ${architecture})
set(CMAKE_CXX_LIBRARY_ARCHITECTURE ${architecture})
# Builds for several architectures can be installed side by side.
set(CMAKE_INSTALL_LIBDIR lib/${architecture} CACHE PATH "Libraries, below the prefix")
