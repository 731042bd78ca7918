// The per-thread mode word, and the control words that it can put in force.
//
//   bits 0x000F   accuracy, kept for the layer above
//   bits 0x00F0   floating-point setting: none, narrow (53-bit for accuracies 1 and 2),
//                 wide; "restore" is a command and never stored
//   bits 0xFF00   what a report does
#include <common/ext.hpp>
#include <qor_core/thread_cell.hpp>
#include <qorkes/qor.h>

#include <xmmintrin.h>

using namespace qorkes;

namespace {

constexpr unsigned accuracyField = 0xF;
constexpr unsigned floatingPointField = 0xF0;
constexpr unsigned errorField = 0xFF00;

constexpr unsigned controlWordField = 0xF00;
constexpr unsigned narrowPrecision = 0x200;
constexpr unsigned widePrecision = 0x300;
constexpr unsigned vectorRoundingField = 0x6000;

constexpr unsigned defaultMode =
    QorModeAccuracyTwo | QorModeErrErrno | QorModeErrExcept | QorModeErrCallback;
static_assert(defaultMode == 6658);

pthread_key_t Mode_key;
pthread_once_t Mode_konce = PTHREAD_ONCE_INIT;

void Mode_destroy(void* block) { std::free(block); }
void Mode_alloc_key() { pthread_key_create(&Mode_key, Mode_destroy); }

unsigned* _GetMode() {
    return accessCell<unsigned>({&Mode_key, &Mode_konce, Mode_alloc_key, defaultMode});
}

// The control words of the moment when the first setting was put in force. Shared by
// all threads, unguarded.
uint32_t qorOldScalarCW;
uint32_t qorOldVectorCW;

void fldcw(uint16_t word) { setControlWord(word); }

/// Loads a control word and returns it. The word is the one in force, so that the load
/// never unmasks an exception that the caller had masked.
uint16_t fnstcw() {
    const uint16_t word = controlWord();
    fldcw(word);
    return word;
}

void ldmxcsr(uint32_t word) { _mm_setcsr(word); }
uint32_t stmxcsr() { return _mm_getcsr(); }

unsigned replaceField(unsigned mode, unsigned field, unsigned value) {
    return (mode & ~field) | (value & field);
}

void restoreControlWords() {
    if (fnstcw() != (qorOldScalarCW & 0xFFFF))
        fldcw(static_cast<uint16_t>(qorOldScalarCW));
    if ((stmxcsr() & 0xFFFF) != (qorOldVectorCW & 0xFFFF)) ldmxcsr(qorOldVectorCW);
}

unsigned wantedPrecision(unsigned mode, unsigned setting) {
    const unsigned key = (mode & accuracyField) | setting;
    const bool isNarrow = key == (QorModeFpNarrow | QorModeAccuracyOne) ||
                          key == (QorModeFpNarrow | QorModeAccuracyTwo);
    return isNarrow ? narrowPrecision : widePrecision;
}

/// Precision and round to nearest for both units; `isFirst` keeps what was in force.
void putInForce(unsigned precision, bool isFirst) {
    const uint16_t scalar = fnstcw();
    const uint32_t vector = stmxcsr();
    if (isFirst) {
        qorOldScalarCW = scalar;
        qorOldVectorCW = vector & 0xFFFF;
    }
    if ((scalar & controlWordField) != precision)
        fldcw(static_cast<uint16_t>(replaceField(scalar, controlWordField, precision)));
    if (vector & vectorRoundingField) ldmxcsr(vector & ~vectorRoundingField);
}

} // namespace

int _qorGetMode(void) { return static_cast<int>(*_GetMode()); }

int _qorSetMode(unsigned mode) {
    unsigned& cell = *_GetMode();
    const unsigned old = cell;
    if (mode & accuracyField) cell = replaceField(cell, accuracyField, mode);
    if (mode & errorField) cell = replaceField(cell, errorField, mode);

    const unsigned setting = mode & floatingPointField;
    const bool isInForce = (old & floatingPointField) != 0;
    if (setting == QorModeFpRestore) {
        if (isInForce) restoreControlWords();
    } else if (setting != 0) {
        putInForce(wantedPrecision(cell, setting), !isInForce);
        cell = replaceField(cell, floatingPointField, setting);
    }
    return static_cast<int>(old);
}
