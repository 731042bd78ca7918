/* Marks the entries of the shared object; included by the other headers. */
#ifndef QORKES_API_H
#define QORKES_API_H

#include <stdint.h>

#ifdef __cplusplus
#define QORKES_API extern "C" __attribute__((visibility("default")))
#else
#define QORKES_API extern __attribute__((visibility("default")))
#endif

#endif
