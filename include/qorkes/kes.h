/* Random streams, distributions, convolution and correlation tasks. */
#ifndef QORKES_KES_H
#define QORKES_KES_H

#include <qorkes/api.h>

#endif
