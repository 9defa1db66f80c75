#include <zt/numerics/SolveNl.h>

#include <cmath>

namespace ZT {

double SolveNl(double (*f)(double), double (*df)(double), double (*d2f)(double), double, double,
               double x0) {
    constexpr int kMostSteps = 1000;
    constexpr double kSmallestSlope = 0.0001;
    constexpr double kLastStep = 1e-6;

    double x = x0;
    for (int step = 0; step < kMostSteps; ++step) {
        const double value = f(x);
        const double slope = df(x);
        const double curvature = d2f(x);
        if (curvature * value < 0) throw "Different signs f and the second derivative";
        // Signed: a falling function fails here too, deliberately.
        if (slope < kSmallestSlope) throw " Nearly zero derivative";
        const double next = x - value / slope;
        if (kLastStep > std::fabs(next - x)) return next;
        x = next;
    }
    throw "No convergence";
}

}  // namespace ZT
