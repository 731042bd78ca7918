// __kessBRngiAbstract: an abstract stream of integers has no floats.
#include <qorkes/kes.h>

int __kessBRngiAbstract(StreamState*, int, float*, float, float) {
    return KesStatusBadAbstractKind;
}
