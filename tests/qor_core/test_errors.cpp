// Reports, through the two report entries.
#include <qorkes/qor.h>
#include <support/compare.hpp>
#include <support/fpu.hpp>
#include <support/reports.hpp>
#include <support/stack.hpp>

#include <cerrno>
#include <cmath>
#include <limits>
#include <string>
#include <unistd.h>

using namespace qorkes;
using namespace qorkes::test;

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr unsigned defaultErrorByte = 0x1A00;

/// What `action` writes to standard error, past any buffer.
template <class Action> std::string standardErrorOf(Action&& action) {
    FILE* file = std::tmpfile();
    const int kept = dup(STDERR_FILENO);
    dup2(fileno(file), STDERR_FILENO);
    action();
    dup2(kept, STDERR_FILENO);
    close(kept);
    std::string text(static_cast<std::size_t>(lseek(fileno(file), 0, SEEK_END)), '\0');
    const ssize_t count = pread(fileno(file), text.data(), text.size(), 0);
    std::fclose(file);
    return count == static_cast<ssize_t>(text.size()) ? text : "unreadable";
}

class Report : public testing::Test {
protected:
    ~Report() override {
        _qorClearErrorCallBack();
        _qorSetMode(defaultErrorByte);
        _qorClearErrStatus();
    }
};

/// Status and errno start from values that no report sets.
int errnoAfter(unsigned errorByte, int status) {
    const double a = 1;
    double y = 2;
    _qorSetMode(errorByte);
    _qorSetErrStatus(-77);
    errno = 99;
    _qordError(status, 0, &a, &a, &y, &y, "name");
    const int result = errno;
    EXPECT_EQ(_qorGetErrStatus(), status);
    return result;
}

TEST_F(Report, ErrnoOfEachStatus) {
    constexpr struct {
        int status, errnoValue;
    } rows[] = {{0, 0},  {-1, 22}, {-2, 13}, {1, 33},  {2, 34},
                {3, 34}, {4, 34},  {5, 14},  {-3, 14}, {62, 14}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.status);
        EXPECT_EQ(errnoAfter(QorModeErrErrno, row.status), row.errnoValue);
        EXPECT_EQ(errnoAfter(QorModeErrIgnore, row.status), 99);
        EXPECT_EQ(errnoAfter(QorModeErrIgnore | QorModeErrErrno, row.status),
                  row.errnoValue);
        EXPECT_EQ(errnoAfter(QorModeErrCallback, row.status), 99);
        EXPECT_EQ(errnoAfter(QorModeErrExcept, row.status), 99);
    }
}

TEST_F(Report, TextOnStandardErrorIsExactToTheByte) {
    const struct {
        int status, index;
        double a, b, y, z;
        const char* text;
    } rows[] = {
        {0, 0, 1, 2, 3, 4, ""},
        {-1, -12, 1, 2, 3, 4,
         "Error (QOR_STATUS_BADSIZE) in f: array size -12 is not positive\n"},
        {-2, 3, 1, 2, 3, 4, "Error (QOR_STATUS_BADMEM) in f: NULL pointer is passed\n"},
        {1, 0, -4, -4, nan, nan,
         "Error (QOR_STATUS_ERRDOM) in f: argument is out of domain\n"
         "a(0)=-4\nr(0)=nan\n"},
        {2, 5, -0.0, -0.0, -infinity, -infinity,
         "Error (QOR_STATUS_SING) in f: argument caused singularity\n"
         "a(5)=-0\nr(5)=-inf\n"},
        {3, 1234567, 1e300, 0.5, infinity, infinity,
         "Error (QOR_STATUS_OVERFLOW) in f: argument caused overflow\n"
         "a(1234567)=1e+300\nb(1234567)=0.5\ny(1234567)=inf\n"},
        {4, 2, 0.1234567, 0.1234567, 1.5, 2.5,
         "Error (QOR_STATUS_UNDERFLOW) in f: argument caused underflow\n"
         "a(2)=0.123457\ny(2)=1.5\nz(2)=2.5\n"},
        // No line end behind the name of an unknown one.
        {62, 9, 1, 1, 2, 2, "Unknown error in fa(9)=1\nr(9)=2\n"},
        {-3, 9, 1, 7, 2, 2, "Unknown error in fa(9)=1\nb(9)=7\ny(9)=2\n"},
    };
    constexpr unsigned everything =
        QorModeErrErrno | QorModeErrStderr | QorModeErrExcept;
    for (auto row : rows)
        for (const unsigned errorByte : {QorModeErrStderr, everything}) {
            _qorSetMode(errorByte);
            // Arrays that begin before the element reported.
            const auto base = [&](double& element) { return &element - row.index; };
            EXPECT_EQ(standardErrorOf([&] {
                          _qordError(row.status, row.index, base(row.a), base(row.b),
                                     base(row.y), base(row.z), "f");
                      }),
                      row.text);
        }
}

/// The second argument and result are printed if they differ from the first and from 0,
/// whatever the kernel; a NaN never differs.
TEST_F(Report, TextNamesSecondValuesByValue) {
    const struct {
        float a, b, y, z;
        std::string lines;
    } rows[] = {
        {1, 2, 3, 4, "a(0)=1\nb(0)=2\ny(0)=3\nz(0)=4\n"},
        {1, 0, 2, 2, "a(0)=1\nr(0)=2\n"},
        {1, -0.0f, 2, 0, "a(0)=1\nr(0)=2\n"},
        {NAN, 3, 2, 2, "a(0)=nan\nr(0)=2\n"},
        {1, NAN, 2, NAN, "a(0)=1\nr(0)=2\n"},
        {1, 3, NAN, 4, "a(0)=1\nb(0)=3\ny(0)=nan\n"},
        {1, 1, 2, -2, "a(0)=1\ny(0)=2\nz(0)=-2\n"},
        {0.1f, 0, INFINITY, -INFINITY, "a(0)=0.1\ny(0)=inf\nz(0)=-inf\n"},
    };
    _qorSetMode(QorModeErrStderr);
    for (auto row : rows) {
        const auto report = [&] {
            _qorsError(1, 0, &row.a, &row.b, &row.y, &row.z, "g");
        };
        EXPECT_EQ(standardErrorOf(report),
                  "Error (QOR_STATUS_ERRDOM) in g: argument is out of domain\n" +
                      row.lines);
    }
}

TEST_F(Report, ExceptionOfEachStatus) {
    constexpr struct {
        int status;
        unsigned flag;
    } rows[] = {
        {0, 0}, {-1, 0}, {-2, 0},           {1, invalidFlag}, {2, divideByZeroFlag},
        {3, 0}, {5, 0},  {4, underflowFlag}};
    constexpr unsigned tellingFlags =
        invalidFlag | divideByZeroFlag | overflowFlag | underflowFlag;
    const double a = 1;
    double y = 2;
    for (const auto& row : rows)
        // Precision and rounding of the kernel that reports change nothing.
        for (const Fpu& setting : fpuSettings()) {
            const auto report = [&] { _qordError(row.status, 0, &a, &a, &y, &y, "f"); };
            _qorSetMode(QorModeErrExcept);
            EXPECT_EQ(runUnder(setting, report).statusWord & tellingFlags, row.flag)
                << row.status;
            _qorSetMode(QorModeErrErrno);
            EXPECT_EQ(runUnder(setting, report).statusWord & tellingFlags, 0u);
        }
}

TEST_F(Report, IgnoreStoresTheStatusAndNothingElse) {
    const double a = 1;
    double y = 2, z = 3;
    Reports reports;
    reports.then = [](QorErrorRecord& record) {
        record.result1 = record.result2 = 9;
        return 0;
    };
    _qorSetMode(QorModeErrIgnore);
    errno = 99;
    EXPECT_EQ(standardErrorOf([&] { _qordError(1, 0, &a, &a, &y, &z, "f"); }), "");
    EXPECT_EQ(_qorGetErrStatus(), 1);
    EXPECT_TRUE(reports.seen.empty());
    EXPECT_EQ(y, 2);
    EXPECT_EQ(z, 3);
    EXPECT_EQ(errno, 99);

    // With any other bit of the error byte it ignores nothing.
    _qorSetMode(QorModeErrIgnore | QorModeErrCallback);
    _qordError(2, 0, &a, &a, &y, &z, "f");
    EXPECT_EQ(reports.seen.size(), 1u);
    EXPECT_EQ(y, 9);
}

/// What a record holds of an element is tested for all kernels.
TEST_F(Report, RecordHoldsNameAndCall) {
    const float a = 1;
    float y = 2;
    const std::string longName(63, 'n'), tooLong(70, 't');
    Reports reports;
    _qorsError(1, 0, &a, &a, &y, &y, longName.c_str());
    _qorsError(QOR_STATUS_BADSIZE, -7, nullptr, nullptr, nullptr, nullptr, "");
    _qorsError(QOR_STATUS_BADMEM, 0, nullptr, nullptr, nullptr, nullptr,
               tooLong.c_str());

    ASSERT_EQ(reports.seen.size(), 3u);
    EXPECT_EQ(reports.seen[0].funcName, longName);
    EXPECT_EQ(reports.seen[0].funcNameLength, 63);
    // Speaks of the call: no array is looked at.
    EXPECT_EQ(reports.seen[1].index, -7);
    EXPECT_EQ(reports.seen[1].funcNameLength, 0);
    // A name that its field cannot end is cut off.
    EXPECT_EQ(reports.seen[2].funcNameLength, 64);
    EXPECT_EQ(std::string(reports.seen[2].funcName, 64), tooLong.substr(0, 64));
    EXPECT_EQ(_qorGetErrStatus(), QOR_STATUS_BADMEM);
}

TEST_F(Report, CallbacksAnswerDecidesAboutTheRest) {
    const double a = 1;
    for (const int answer : {0, 1, -1}) {
        const bool isAccepted = answer == 0;
        double y = 2, z = 3;
        Reports reports;
        reports.then = [answer](QorErrorRecord& record) {
            record.result1 = 20;
            record.result2 = 30;
            return answer;
        };
        _qorSetMode(QorModeErrCallback | QorModeErrErrno | QorModeErrStderr);
        errno = 99;
        const std::string text =
            standardErrorOf([&] { _qordError(1, 0, &a, &a, &y, &z, "f"); });
        EXPECT_EQ(y, isAccepted ? 20 : 2);
        EXPECT_EQ(z, isAccepted ? 30 : 3);
        EXPECT_EQ(errno, isAccepted ? EDOM : 99);
        // The handlers see what the callback made of the record.
        EXPECT_EQ(text.find("y(0)=20\nz(0)=30") != text.npos, isAccepted) << text;
        EXPECT_EQ(text.empty(), !isAccepted);
    }
}

/// Any of the four top bits lets the callback in; a stored one is not called without.
TEST_F(Report, ModeBitsThatCallTheCallback) {
    const double a = 1;
    double y = 2;
    Reports reports;
    std::size_t calls = 0;
    for (unsigned errorByte = 0x100; errorByte <= 0x8000; errorByte <<= 1) {
        _qorSetMode(errorByte);
        standardErrorOf([&] { _qordError(1, 0, &a, &a, &y, &y, "f"); });
        calls += (errorByte & 0xF000) != 0;
        EXPECT_EQ(reports.seen.size(), calls) << std::hex << errorByte;
    }
}

TEST_F(Report, ResultsAreWrittenBackTheFirstLast) {
    Reports reports;
    reports.then = [](QorErrorRecord& record) {
        record.result1 = 1e300;
        record.result2 = -1e-300;
        return 0;
    };
    // One array for both results, as of a kernel with one output.
    const double a[] = {1, 2};
    double y[] = {3, 4};
    _qordError(1, 1, a, a, y, y, "f");
    EXPECT_EQ(y[0], 3);
    EXPECT_EQ(y[1], 1e300);

    // Rounded to float, beyond its range too.
    const float b[] = {1, 2};
    float u[] = {3, 4}, v[] = {5, 6};
    _qorsError(1, 1, b, b, u, v, "f");
    EXPECT_EQ(u[1], std::numeric_limits<float>::infinity());
    EXPECT_EQ(bitsOf(v[1]), 0x80000000u);
    reports.then = [](QorErrorRecord& record) {
        record.result1 = 0.1;
        return 0;
    };
    _qorsError(1, 0, b, b, u, v, "f");
    EXPECT_EQ(u[0], 0.1f);
    EXPECT_EQ(v[0], 5);
}

/// The last report counts; a call without one leaves the status as it is.
TEST_F(Report, StatusKeepsTheLastReport) {
    const double a[] = {0, -1, 0, -1}, ordinary = 4;
    double y[4];
    _qordInvSqrt_HA(3, a, y);
    EXPECT_EQ(_qorGetErrStatus(), QOR_STATUS_SING);
    _qordInvSqrt_HA(4, a, y);
    EXPECT_EQ(_qorGetErrStatus(), QOR_STATUS_ERRDOM);
    _qordInvSqrt_HA(1, &ordinary, y);
    EXPECT_EQ(_qorGetErrStatus(), QOR_STATUS_ERRDOM);
}

TEST_F(Report, CallbackMayUseTheLibrary) {
    const double a[] = {0, 4, 0};
    double y[3], inner[] = {-1};
    Reports reports;
    reports.then = [&](QorErrorRecord& record) {
        if (record.status != QOR_STATUS_SING) return 0;
        double root;
        _qordSqrt_HA(1, inner, &root);
        record.result1 = -8;
        return 0;
    };
    _qordInv_HA(3, a, y);
    ASSERT_EQ(reports.seen.size(), 4u);
    EXPECT_STREQ(reports.seen[1].funcName, "_qordSqrt_HA");
    EXPECT_EQ(y[0], -8);
    EXPECT_EQ(y[1], 0.25);
    EXPECT_EQ(y[2], -8);
}

#ifndef __SANITIZE_ADDRESS__ // whose own frames need an aligned stack
/// Leaves its stack pointer, as it was before the call, in result1.
int stackPointer(QorErrorRecord* record) {
    const uintptr_t frame = reinterpret_cast<uintptr_t>(__builtin_frame_address(0));
    setBits(record->result1, frame + 2 * sizeof(void*));
    return 0;
}

/// A callback finds the boundary that compilers rely on now, whoever called a kernel.
TEST_F(Report, CallbackStackIsAligned) {
    const double a = 0;
    _qorSetErrorCallBack(stackPointer);
    for (const uintptr_t offset : {0u, 4u, 8u, 12u}) {
        double y = 1;
        callOffBoundary(offset, _qordInv_HA, 1, &a, &y);
        EXPECT_EQ(bitsOf(y) % 16, 0u) << offset;
    }
}
#endif

TEST(Strings, LengthAndConcatenation) {
    EXPECT_EQ(hox_qor_service_strlen1(""), 0);
    EXPECT_EQ(hox_qor_service_strlen1("kernel"), 6);
    char text[8] = "_______";
    EXPECT_EQ(hox_qor_service_strcat1("ab", "cde", text), 5);
    EXPECT_EQ(std::string(text, 7), std::string("abcde\0_", 7));
    EXPECT_EQ(hox_qor_service_strcat1("", "", text), 0);
    EXPECT_STREQ(text, "");
}

} // namespace
