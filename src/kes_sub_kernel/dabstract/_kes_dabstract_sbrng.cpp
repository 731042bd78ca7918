// __kessBRngdAbstract: an abstract stream of doubles has no floats.
#include <qorkes/kes.h>

int __kessBRngdAbstract(StreamState*, int, float*, float, float) {
    return KesStatusBadAbstractKind;
}
