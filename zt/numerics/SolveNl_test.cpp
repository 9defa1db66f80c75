#include <zt/numerics/SolveNl.h>

#include <gtest/gtest.h>
#include <tests/ExactNumbers.h>

#include <limits>
#include <string>

namespace ZT {
namespace {

using testing_support::Is;

// The order in which the three functions are called, one letter a call.
std::string calls;

double Square(double x) {
    calls += 'f';
    return x * x - 2;
}
double SquareSlope(double x) {
    calls += 'd';
    return 2 * x;
}
double SquareCurvature(double) {
    calls += 'c';
    return 2;
}
double Line(double x) {
    return x - 3;
}
double Falling(double x) {
    return 3 - x;
}
double One(double) {
    return 1;
}
double MinusOne(double) {
    return -1;
}
double Zero(double) {
    return 0;
}
double AtTheLeastSlope(double) {
    return 0.0001;
}
double BelowTheLeastSlope(double) {
    return 0.00009;
}
double NaN(double) {
    return std::numeric_limits<double>::quiet_NaN();
}

// What the solver throws, or an empty text.
std::string Complaint(double (*f)(double), double (*df)(double), double (*d2f)(double), double x0) {
    try {
        SolveNl(f, df, d2f, 0, 0, x0);
    } catch (const char* text) {
        return text;
    }
    return {};
}

TEST(SolveNl, FindsTheRoot) {
    EXPECT_NEAR(SolveNl(Square, SquareSlope, SquareCurvature, 0, 0, 2.0), std::sqrt(2.0), 1e-12);
}

TEST(SolveNl, ReturnsTheNewPointOfTheLastStep) {
    double x = 2.0;
    double next = x - (x * x - 2) / (2 * x);
    while (!(1e-6 > std::fabs(next - x))) {
        x = next;
        next = x - (x * x - 2) / (2 * x);
    }
    EXPECT_THAT(SolveNl(Square, SquareSlope, SquareCurvature, 0, 0, 2.0), Is(next));
}

TEST(SolveNl, StepOfExactlyTheBoundIsNotTheLast) {
    calls.clear();
    const auto once = [](double x) {
        calls += 'f';
        return x == 0 ? 1e-6 : 0.0;
    };
    EXPECT_THAT(SolveNl(once, One, Zero, 0, 0, 0.0), Is(-1e-6));
    EXPECT_EQ(calls, "ff");
}

TEST(SolveNl, CallsEachFunctionOnceAStepInOrder) {
    calls.clear();
    // One long step to 1.5, one to 1.4166..., and so on: five in all.
    SolveNl(Square, SquareSlope, SquareCurvature, 0, 0, 2.0);
    EXPECT_EQ(calls, "fdcfdcfdcfdcfdc");
}

TEST(SolveNl, FourthAndFifthArgumentAreNotRead) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT(SolveNl(Line, One, Zero, nan, nan, 0.0), Is(3.0));
    EXPECT_THAT(SolveNl(Line, One, Zero, 100.0, 200.0, 0.0), Is(3.0));
}

TEST(SolveNl, RootAtTheStartIsReturned) {
    EXPECT_THAT(SolveNl(Line, One, One, 0, 0, 3.0), Is(3.0));
    EXPECT_THAT(SolveNl(Line, One, MinusOne, 0, 0, 3.0), Is(3.0));
}

TEST(SolveNl, ThrowsWhereFunctionAndSecondDerivativeDifferInSign) {
    EXPECT_EQ(Complaint(Line, One, MinusOne, 4.0), "Different signs f and the second derivative");
    EXPECT_EQ(Complaint(Line, One, One, 2.0), "Different signs f and the second derivative");
}

TEST(SolveNl, SignsAreTestedBeforeTheSlope) {
    EXPECT_EQ(Complaint(Line, Zero, MinusOne, 4.0), "Different signs f and the second derivative");
}

TEST(SolveNl, ThrowsWhereTheFunctionIsFlat) {
    EXPECT_EQ(Complaint(Line, Zero, One, 4.0), " Nearly zero derivative");
    EXPECT_EQ(Complaint(Line, BelowTheLeastSlope, One, 4.0), " Nearly zero derivative");
}

TEST(SolveNl, ThrowsWhereTheFunctionFalls) {
    EXPECT_EQ(Complaint(Falling, MinusOne, Zero, 0.0), " Nearly zero derivative");
}

TEST(SolveNl, SlopeOfExactlyTheBoundIsAccepted) {
    EXPECT_THAT(SolveNl(Zero, AtTheLeastSlope, Zero, 0, 0, 4.0), Is(4.0));
}

TEST(SolveNl, ThrowsWhenItDoesNotConverge) {
    EXPECT_EQ(Complaint(One, One, Zero, 0.0), "No convergence");
    EXPECT_EQ(Complaint(NaN, One, Zero, 0.0), "No convergence");
}

TEST(SolveNl, GivesUpAfterAThousandSteps) {
    calls.clear();
    const auto never = [](double) {
        calls += 'f';
        return 1.0;
    };
    EXPECT_EQ(Complaint(never, One, Zero, 0.0), "No convergence");
    EXPECT_EQ(calls.size(), 1000u);
}

}  // namespace
}  // namespace ZT
