# GSL, by the names of its libraries at run time: its development package is there for
# one architecture at a time, and its headers serve all.
find_library(GSL_LIBRARY libgsl.so.27 REQUIRED)
find_library(GSLCBLAS_LIBRARY libgslcblas.so.0 REQUIRED)
