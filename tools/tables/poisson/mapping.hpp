// The three curves that make a Poisson variate of a normal one: the integer part of
// curve(coefficients, mean, z). Their formulas are those of the library's code.
#pragma once

#include "quantiles.hpp"

namespace poisson {

using Curve = Real (*)(const Real* coefficients, Real mean, Real z);

/// Means from 100 on, 23 coefficients: in powers of the inverse mean.
Real largeMean(const Real* coefficients, Real mean, Real z);

/// Means of one binade from 1 to 128, 23 coefficients.
Real middleMean(const Real* coefficients, Real mean, Real z);

/// The vector form: means of one binade from 1/16 on, 20 coefficients.
Real vectorMean(const Real* coefficients, Real mean, Real z);

} // namespace poisson
