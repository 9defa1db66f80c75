/// @file
/// The framework's exceptions in tests.

#pragma once

#include <gtest/gtest.h>

namespace testing_support {

/// Whether `work` throws a pointer to an exception of the class `E`, which is ended.
template <class E, class Work>
testing::AssertionResult Raises(Work work) {
    try {
        work();
    } catch (E* e) {
        e->Delete();
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "nothing was raised";
}

}  // namespace testing_support
