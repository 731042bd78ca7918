// __kesiBRngsAbstract: an abstract stream of floats has no integers.
#include <qorkes/kes.h>

int __kesiBRngsAbstract(StreamState*, int, uint32_t*) {
    return KesStatusBadAbstractKind;
}
