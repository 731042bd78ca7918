// __kesiBRngdAbstract: an abstract stream of doubles has no integers.
#include <qorkes/kes.h>

int __kesiBRngdAbstract(StreamState*, int, uint32_t*) {
    return KesStatusBadAbstractKind;
}
