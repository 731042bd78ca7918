// __kesdBRngsAbstract: an abstract stream of floats has no doubles.
#include <qorkes/kes.h>

int __kesdBRngsAbstract(StreamState*, int, double*, double, double) {
    return KesStatusBadAbstractKind;
}
