/// @file
/// The root of a function of one variable.

#pragma once

#include <zt/frame/Export.h>

namespace ZT {

/// A root of `f` by Newton's method, starting from `x0`. `df` and `d2f` are the first
/// and the second derivative; all three are called once in each step, in this order.
/// The search ends when a step is shorter than 1e-6. The fourth and the fifth argument
/// are not read.
///
/// Where the method cannot go on it throws a `const char*`, which points to a constant
/// and is not to be freed: "Different signs f and the second derivative" where the two
/// differ in sign, " Nearly zero derivative", with its leading blank, where the
/// derivative is below 0.0001 (so also where it is negative), and "No convergence" after
/// 1000 steps.
ZT_API double SolveNl(double (*f)(double), double (*df)(double), double (*d2f)(double), double,
                      double, double x0);

}  // namespace ZT
