// Records what kernels report, through the error callback.
//
//     Reports reports;
//     _qordInv_HA(3, a, y);
//     ASSERT_EQ(reports.seen.size(), 1u);
//     EXPECT_EQ(reports.seen[0].index, 2);
#pragma once

#include <qorkes/qor.h>

#include <functional>
#include <vector>

namespace qorkes::test {

/// Installed as the thread's callback while it lives, as the only one that a report
/// reaches; afterwards callback and error byte are as before and the status is 0.
class Reports {
public:
    std::vector<QorErrorRecord> seen;

    /// Called after recording, under the kernel's control words; may change the
    /// results. The answer is the callback's.
    std::function<int(QorErrorRecord&)> then;

    Reports()
        : outer_(current()), oldMode_(_qorGetMode()),
          oldCallBack_(_qorSetErrorCallBack(record)) {
        current() = this;
        _qorSetMode(QorModeErrCallback);
        _qorClearErrStatus();
    }
    ~Reports() {
        _qorSetErrorCallBack(oldCallBack_);
        _qorSetMode(static_cast<unsigned>(oldMode_) & 0xFF00);
        _qorClearErrStatus();
        current() = outer_;
    }
    Reports(const Reports&) = delete;
    Reports& operator=(const Reports&) = delete;

private:
    static Reports*& current() {
        static thread_local Reports* reports = nullptr;
        return reports;
    }
    static int record(QorErrorRecord* record) {
        current()->seen.push_back(*record);
        return current()->then ? current()->then(*record) : 0;
    }

    Reports* outer_;
    int oldMode_;
    QorErrorCallBack oldCallBack_;
};

} // namespace qorkes::test
