/// @file
/// Random numbers of a range in laws.

#pragma once

#include <rapidcheck.h>

namespace testing_support {

/// Any number from `from` up to, but not including, `to`: evenly from the first try on, while
/// `rc::gen::inRange` comes to the upper ones only in the last tries. For what picks one of
/// several cases by its number.
template <class Number>
Number Evenly(Number from, Number to) {
    return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange<Number>(from, to));
}

}  // namespace testing_support
