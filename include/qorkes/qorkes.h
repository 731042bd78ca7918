/* Everything: vector mathematics (qor.h), random streams, distributions and
 * convolution tasks (kes.h), signal primitives (zubs.h). */
#ifndef QORKES_QORKES_H
#define QORKES_QORKES_H

#include <qorkes/kes.h>
#include <qorkes/qor.h>
#include <qorkes/zubs.h>

#endif
