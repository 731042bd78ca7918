#include <qorkes/qor.h>
#include <support/fpu.hpp>
#include <support/reports.hpp>

#include <thread>

using namespace qorkes::test;

namespace {

/// Each test starts on a thread of its own, with cells of its own.
template <class Body> void onNewThread(Body&& body) {
    std::thread(std::forward<Body>(body)).join();
}

int answerZero(QorErrorRecord*) { return 0; }

/// The words that a change of mode leaves.
Fpu wordsAfter(unsigned mode, const Fpu& before) {
    return runUnder(before, [=] { _qorSetMode(mode); }).words;
}

TEST(Mode, EachThreadStartsWithTheDefaultsWhateverOthersHaveSet) {
    const auto expectDefaults = [] {
        EXPECT_EQ(_qorGetMode(), 6658);
        EXPECT_EQ(_qorGetErrStatus(), 0);
        EXPECT_EQ(_qorGetErrorCallBack(), nullptr);
    };
    onNewThread([&] {
        expectDefaults();
        _qorSetMode(QorModeErrStderr | QorModeFpNarrow | QorModeAccuracyOne);
        _qorSetErrStatus(7);
        _qorSetErrorCallBack(answerZero);
        onNewThread(expectDefaults);
        EXPECT_EQ(_qorGetErrStatus(), 7);
        EXPECT_EQ(_qorGetErrorCallBack(), answerZero);
        _qorSetMode(QorModeFpRestore);
    });
}

TEST(Mode, StatusSettersReturnTheValueBefore) {
    onNewThread([] {
        EXPECT_EQ(_qorSetErrStatus(-5), 0);
        EXPECT_EQ(_qorSetErrStatus(3), -5);
        EXPECT_EQ(_qorClearErrStatus(), 3);
        EXPECT_EQ(_qorGetErrStatus(), 0);
    });
}

TEST(Mode, FieldsAreReplacedWholeOrNotAtAll) {
    constexpr struct {
        unsigned before, change, after;
    } rows[] = {
        {0x1A02, 0, 0x1A02},
        {0x1A02, 0x200, 0x0202},      // drops callback and exception
        {0x1A02, 0x1, 0x1A01},        // accuracy alone
        {0x1A02, 0xF, 0x1A0F},        // any accuracy is kept
        {0x1A02, 0xFF00, 0xFF02},     // unnamed bits of the error byte, too
        {0x1A02, 0xFFFF0000, 0x1A02}, // nothing beyond bit 15
        {0x1A02, 0x30, 0x1A02},       // restore with nothing in force
        {0x1A02, 0x131, 0x0101},      // the other fields come first
        {0x1A02, 0x10, 0x1A12},
        {0x1A12, 0x20, 0x1A22},
        {0x1A22, 0x30, 0x1A22}, // a restore is not stored
        {0x1A12, 0xF0, 0x1AF2},
    };
    for (const auto& row : rows)
        onNewThread([&] {
            SCOPED_TRACE(testing::Message()
                         << std::hex << row.before << ' ' << row.change);
            // Words that every setting agrees with.
            runUnder(defaultFpu, [&] { _qorSetMode(row.before); });
            int old = 0;
            runUnder(defaultFpu, [&] { old = _qorSetMode(row.change); });
            EXPECT_EQ(static_cast<unsigned>(old), row.before);
            EXPECT_EQ(static_cast<unsigned>(_qorGetMode()), row.after);
        });
}

TEST(Mode, SettingForcesPrecisionAndRoundingToNearest) {
    constexpr struct {
        unsigned mode;
        uint16_t precision;
    } rows[] = {
        {0x11, 0x200}, {0x12, 0x200}, {0x13, 0x300}, {0x1F, 0x300}, {0x21, 0x300},
        {0x22, 0x300}, {0x41, 0x300}, {0x92, 0x300}, {0xF2, 0x300},
    };
    for (const auto& row : rows)
        for (const Fpu& before : fpuSettings())
            onNewThread([&] {
                const Fpu after = wordsAfter(row.mode, before);
                ASSERT_EQ(after.controlWord,
                          (before.controlWord & ~0xF00) | row.precision)
                    << std::hex << row.mode;
                // Flush to zero stays.
                ASSERT_EQ(after.mxcsr, before.mxcsr & ~0x6000u);
            });
}

TEST(Mode, SettingTakesTheAccuracyOfTheSameCall) {
    onNewThread([] {
        EXPECT_EQ(wordsAfter(QorModeFpNarrow, defaultFpu).controlWord, 0x027F);
        EXPECT_EQ(wordsAfter(QorModeFpNarrow | 3, defaultFpu).controlWord, 0x037F);
        // Accuracy 3 is kept now.
        EXPECT_EQ(wordsAfter(QorModeFpNarrow, defaultFpu).controlWord, 0x037F);
    });
}

TEST(Mode, RestoreBringsBackTheWordsFromBeforeTheFirstSetting) {
    constexpr Fpu first = {0x0A7F, 0xBF80}, second = {0x007F, 0xFF80};
    onNewThread([&] {
        wordsAfter(QorModeFpNarrow, first);
        wordsAfter(QorModeFpWide, second);
        // Once and again: what is in force stays so.
        for (int i = 0; i < 2; ++i) {
            const Fpu after = wordsAfter(QorModeFpRestore, defaultFpu);
            EXPECT_EQ(after.controlWord, first.controlWord);
            EXPECT_EQ(after.mxcsr & 0xFFFF, first.mxcsr);
            EXPECT_EQ(_qorGetMode() & 0xF0, 0x20);
        }
        // The words are shared: another thread restores to them, but only with a
        // setting of its own in force, whose first call keeps its own words instead.
        onNewThread([&] {
            const Fpu after = wordsAfter(QorModeFpRestore, defaultFpu);
            EXPECT_EQ(after.controlWord, defaultFpu.controlWord);
            EXPECT_EQ(after.mxcsr, defaultFpu.mxcsr);
            wordsAfter(QorModeFpWide, second);
        });
        const Fpu after = wordsAfter(QorModeFpRestore, defaultFpu);
        EXPECT_EQ(after.controlWord, second.controlWord);
        EXPECT_EQ(after.mxcsr, second.mxcsr);
    });
}

TEST(Mode, UnmaskedExceptionsStayAsTheCallerHasThem) {
    constexpr Fpu divisionTraps = {0x037B, 0x1D80};
    onNewThread([&] {
        for (const unsigned mode : {QorModeFpNarrow, QorModeFpWide, QorModeFpRestore}) {
            const Fpu after = wordsAfter(mode, divisionTraps);
            EXPECT_EQ(after.controlWord & 0x7F, divisionTraps.controlWord & 0x7F);
            EXPECT_EQ(after.mxcsr, divisionTraps.mxcsr);
        }
    });
}

TEST(Mode, CallBackSetterWorksThroughTheMode) {
    onNewThread([] {
        _qorSetMode(QorModeErrErrno);
        EXPECT_EQ(_qorSetErrorCallBack(answerZero), nullptr);
        EXPECT_EQ(_qorGetMode(), 0x1202);
        EXPECT_EQ(_qorClearErrorCallBack(), answerZero);
        EXPECT_EQ(_qorGetErrorCallBack(), nullptr);
        EXPECT_EQ(_qorGetMode(), 0x0202);

        // The byte cannot be emptied.
        _qorSetErrorCallBack(answerZero);
        _qorSetMode(QorModeErrCallback);
        EXPECT_EQ(_qorSetErrorCallBack(nullptr), answerZero);
        EXPECT_EQ(_qorGetMode(), 0x1002);
        EXPECT_EQ(_qorGetErrorCallBack(), nullptr);

        // A setting in force is put in force again.
        wordsAfter(QorModeFpNarrow, defaultFpu);
        const Fpu after =
            runUnder({0x0F7F, 0x7F80}, [] { _qorSetErrorCallBack(answerZero); }).words;
        EXPECT_EQ(after.controlWord, 0x027F);
        EXPECT_EQ(after.mxcsr, 0x1F80u);
        EXPECT_EQ(_qorGetMode(), 0x1012);
    });
}

TEST(Mode, ProcessorLevel) { EXPECT_EQ(dll_cpu_version(), 1); }

} // namespace
