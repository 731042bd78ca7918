// What happens when a kernel reports an element: the status and callback cells of each
// thread, the record that a callback sees, and the standard handlers behind it.
#include <common/bits.hpp>
#include <common/ext.hpp>
#include <qor_core/thread_cell.hpp>
#include <qorkes/qor.h>

#include <cerrno>
#include <cstdio>
#include <type_traits>

using namespace qorkes;

namespace {

// Callbacks built long ago know the record by its layout.
static_assert(sizeof(void*) != 4 || sizeof(QorErrorRecord) == 108);

constexpr unsigned errorField = 0xFF00;
constexpr unsigned callbackBits = 0xF000;
constexpr unsigned standardHandlerBits = 0x0F00;

pthread_key_t ErrStatus_key;
pthread_once_t ErrStatus_konce = PTHREAD_ONCE_INIT;
pthread_key_t CallBack_key;
pthread_once_t CallBack_konce = PTHREAD_ONCE_INIT;

void ErrStatus_destroy(void* block) { std::free(block); }
void ErrStatus_alloc_key() { pthread_key_create(&ErrStatus_key, ErrStatus_destroy); }
void CallBack_destroy(void* block) { std::free(block); }
void CallBack_alloc_key() { pthread_key_create(&CallBack_key, CallBack_destroy); }

int* _GetErrStatus() {
    return accessCell<int>({&ErrStatus_key, &ErrStatus_konce, ErrStatus_alloc_key, 0});
}

QorErrorCallBack* _GetCallBack() {
    return accessCell<QorErrorCallBack>(
        {&CallBack_key, &CallBack_konce, CallBack_alloc_key, nullptr});
}

/// What the standard handlers make of one status code.
struct StatusRow {
    int status;
    const char* word;
    const char* detail;
    int errnoValue;
};
constexpr StatusRow statusRows[] = {
    {QOR_STATUS_OK, nullptr, nullptr, 0},
    {QOR_STATUS_BADSIZE, "BADSIZE", "array size %d is not positive\n", EINVAL},
    {QOR_STATUS_BADMEM, "BADMEM", "NULL pointer is passed\n", EACCES},
    {QOR_STATUS_ERRDOM, "ERRDOM", "argument is out of domain\n", EDOM},
    {QOR_STATUS_SING, "SING", "argument caused singularity\n", ERANGE},
    {QOR_STATUS_OVERFLOW, "OVERFLOW", "argument caused overflow\n", ERANGE},
    {QOR_STATUS_UNDERFLOW, "UNDERFLOW", "argument caused underflow\n", ERANGE},
};
constexpr int errnoOfUnknownStatus = EFAULT;
static_assert(EINVAL == 22 && EACCES == 13 && EDOM == 33 && ERANGE == 34 &&
              EFAULT == 14);

constexpr const char* _qorStrErrStatusHeading = "Error (QOR_STATUS_%s) in %s: ";

/// The row of a status, or null for a code outside the table.
const StatusRow* rowOf(int status) {
    for (const StatusRow& row : statusRows)
        if (row.status == status) return &row;
    return nullptr;
}

/// True for the two codes that speak of a call and not of an element.
bool concernsCall(int status) {
    return status == QOR_STATUS_BADSIZE || status == QOR_STATUS_BADMEM;
}

/// Operands of the exception handler. Each non-zero one has its 32-bit halves in the
/// opposite of the machine's order; the handler's effects are defined with these
/// values.
constexpr uint64_t _qordSpecialTab[] = {
    0x0000000100100000, // a denormal
    0xFFFFFFFF7FEFFFFF, // a quiet NaN
    0x0000000000000000,
    0x000000003FF00000, // a denormal
};

double special(int entry) {
    double value;
    setBits(value, _qordSpecialTab[entry]);
    return value;
}

void _qorStdErrorHandlerErrno(const QorErrorRecord* record) {
    const StatusRow* row = rowOf(record->status);
    errno = row ? row->errnoValue : errnoOfUnknownStatus;
}

/// True if `second` says something that `first` does not. A NaN compares equal.
bool isPresent(double second, double first) {
    return (second < first || second > first) && (second < 0.0 || second > 0.0);
}

void printValues(const QorErrorRecord* record) {
    const int i = record->index;
    const bool hasArgument2 = isPresent(record->argument2, record->argument1);
    const bool hasResult2 = isPresent(record->result2, record->result1);
    if (!hasArgument2 && !hasResult2)
        std::fprintf(stderr, "a(%d)=%g\nr(%d)=%g\n", i, record->argument1, i,
                     record->result1);
    else if (!hasArgument2)
        std::fprintf(stderr, "a(%d)=%g\ny(%d)=%g\nz(%d)=%g\n", i, record->argument1, i,
                     record->result1, i, record->result2);
    else if (!hasResult2)
        std::fprintf(stderr, "a(%d)=%g\nb(%d)=%g\ny(%d)=%g\n", i, record->argument1, i,
                     record->argument2, i, record->result1);
    else
        std::fprintf(stderr, "a(%d)=%g\nb(%d)=%g\ny(%d)=%g\nz(%d)=%g\n", i,
                     record->argument1, i, record->argument2, i, record->result1, i,
                     record->result2);
}

void _qorStdErrorHandlerStderr(const QorErrorRecord* record) {
    if (record->status == QOR_STATUS_OK) return;
    if (const StatusRow* row = rowOf(record->status)) {
        std::fprintf(stderr, _qorStrErrStatusHeading, row->word, record->funcName);
        if (record->status == QOR_STATUS_BADSIZE)
            std::fprintf(stderr, row->detail, record->index);
        else
            std::fputs(row->detail, stderr);
    } else {
        std::fprintf(stderr, "Unknown error in %s", record->funcName);
    }
    if (!concernsCall(record->status)) printValues(record);
}

/// One operation of the unit on values that the compiler cannot see through. The store
/// as a double is what delivers an underflow.
void raiseByDivision(int dividend, int divisor) {
    const volatile double x = special(dividend), y = special(divisor);
    const volatile double result = round64(ext{x} / y);
    static_cast<void>(result);
}
void raiseByProduct(int factor) {
    const volatile double x = special(factor);
    const volatile double result = round64(ext{x} * x);
    static_cast<void>(result);
}

void _qorStdErrorHandlerExcept(const QorErrorRecord* record) {
    switch (record->status) {
    case QOR_STATUS_ERRDOM: // 0 / 0 raises invalid
        raiseByDivision(2, 2);
        break;
    case QOR_STATUS_SING: // a number by 0 raises divide by zero
        raiseByDivision(3, 2);
        break;
    case QOR_STATUS_OVERFLOW: // a quiet NaN raises nothing
        raiseByProduct(1);
        break;
    case QOR_STATUS_UNDERFLOW: // far below the least denormal
        raiseByProduct(0);
        break;
    default:
        break;
    }
}

void _qorStdErrorHandler(const QorErrorRecord* record) {
    const auto mode = static_cast<unsigned>(_qorGetMode());
    if (mode & QorModeErrErrno) _qorStdErrorHandlerErrno(record);
    if (mode & QorModeErrStderr) _qorStdErrorHandlerStderr(record);
    if (mode & QorModeErrExcept) _qorStdErrorHandlerExcept(record);
}

/// Copies `s` up to its end or `limit` bytes; returns the place behind the copy.
char* copyPiece(char* out, const char* s, int limit) {
    for (int i = 0; i < limit && s[i] != '\0'; ++i) *out++ = s[i];
    return out;
}

int _qorCreateFuncNameStr(const char* prefix, const char* name, const char* suffix,
                          char* out) {
    char* end = copyPiece(out, prefix, 8);
    end = copyPiece(end, name, 64);
    end = copyPiece(end, suffix, 8);
    *end = '\0';
    return static_cast<int>(end - out);
}

/// The arrays of one report, of double or float.
template <class T> struct Arrays {
    const T *a, *b;
    T *y, *z;
};

template <class T>
int reportElement(int status, int index, const Arrays<T>& arrays, const char* name) {
    *_GetErrStatus() = status;
    const auto mode = static_cast<unsigned>(_qorGetMode());
    if ((mode & errorField) == QorModeErrIgnore) return 0;

    // The alignment makes the compiler realign this frame, and with it those of the
    // callback and of the C library, for callers that keep their stack to 4 bytes.
    alignas(16) QorErrorRecord record;
    record.status = status;
    record.index = index;
    record.funcNameLength = _qorCreateFuncNameStr("", name, "", record.funcName);
    const bool hasValues = !concernsCall(status);
    if (hasValues) {
        record.argument1 = arrays.a[index];
        record.argument2 = arrays.b[index];
        record.result1 = arrays.y[index];
        record.result2 = arrays.z[index];
    }

    const QorErrorCallBack callback = *_GetCallBack();
    if ((mode & callbackBits) && callback != nullptr && callback(&record) != 0)
        return 0;
    if (mode & standardHandlerBits) _qorStdErrorHandler(&record);
    if (hasValues) {
        arrays.z[index] = static_cast<T>(record.result2);
        arrays.y[index] = static_cast<T>(record.result1);
    }
    return 0;
}

int exchange(int& cell, int value) {
    const int old = cell;
    cell = value;
    return old;
}

} // namespace

int _qorGetErrStatus(void) { return *_GetErrStatus(); }

int _qorSetErrStatus(int status) { return exchange(*_GetErrStatus(), status); }

int _qorClearErrStatus(void) { return exchange(*_GetErrStatus(), QOR_STATUS_OK); }

QorErrorCallBack _qorGetErrorCallBack(void) { return *_GetCallBack(); }

QorErrorCallBack _qorSetErrorCallBack(QorErrorCallBack callback) {
    QorErrorCallBack& cell = *_GetCallBack();
    const QorErrorCallBack old = cell;
    const auto mode = static_cast<unsigned>(_qorGetMode());
    cell = callback;
    _qorSetMode(callback ? mode | QorModeErrCallback : mode & ~QorModeErrCallback);
    return old;
}

QorErrorCallBack _qorClearErrorCallBack(void) { return _qorSetErrorCallBack(nullptr); }

int _qorsError(int status, int index, const float* a, const float* b, float* y,
               float* z, const char* name) {
    return reportElement<float>(status, index, {a, b, y, z}, name);
}

int _qordError(int status, int index, const double* a, const double* b, double* y,
               double* z, const char* name) {
    return reportElement<double>(status, index, {a, b, y, z}, name);
}
