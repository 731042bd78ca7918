// __kesdBRngiAbstract: an abstract stream of integers has no doubles.
#include <qorkes/kes.h>

int __kesdBRngiAbstract(StreamState*, int, double*, double, double) {
    return KesStatusBadAbstractKind;
}
