/// @file
/// Sets of arcs in tests.

#pragma once

#include <zt/ranges/RangeS1Family_test.h>
#include <zt/ranges/SetS1.h>

#include <initializer_list>
#include <utility>
#include <vector>

namespace testing_support {

/// A set that deletes its arcs in the end.
class OwningSet : public ZT::SetS1 {
public:
    OwningSet() = default;
    OwningSet(std::initializer_list<RangeS1> arcs) {
        for (const RangeS1& arc : arcs) AddTail(new RangeS1(arc));
    }
    OwningSet(const OwningSet&) = delete;
    ~OwningSet() override { Clear(); }
};

/// The arcs of a set from head to tail.
inline std::vector<RangeS1> Arcs(const ZT::SetS1& set) {
    std::vector<RangeS1> arcs;
    for (const RangeS1* arc : set) arcs.push_back(*arc);
    return arcs;
}

/// An arc of no length.
inline RangeS1 PointArc(double at) {
    return RawArc(at, at);
}

}  // namespace testing_support
