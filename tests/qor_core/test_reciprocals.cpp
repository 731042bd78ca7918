#include <qorkes/qor.h>

#include <gtest/gtest.h>

TEST(Div, GroupWithAZeroDivisorReportsThatElementOnly) {
    const double a[5] = {1, 2, 3, 4, 5}, b[5] = {2, 4, 0, 8, 16};
    double y[5] = {};
    _qorClearErrStatus();
    _qordDiv_HA(5, a, b, y);
    EXPECT_EQ(_qorGetErrStatus(), QOR_STATUS_SING);
    EXPECT_EQ(y[0], 0.5);
    EXPECT_EQ(y[4], 5.0 / 16);
}
