// What holds for all lists of ranges, and for the array below them.

#include <zt/ranges/RangeMulti.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <tests/Evenly.h>
#include <zt/ranges/RangeFamily_test.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace ZT {
namespace {

using namespace testing_support;

// A range in order whose limits are multiples of 1/8, so that sums are exact.
Range ExactRange() {
    const int lo = *rc::gen::inRange(-200, 200);
    return {lo / 8.0, (lo + *rc::gen::inRange(0, 40)) / 8.0};
}

std::vector<Range> ExactRanges() {
    std::vector<Range> ranges;
    const int count = *rc::gen::inRange(0, 20);
    for (int i = 0; i < count; ++i) ranges.push_back(ExactRange());
    return ranges;
}

RangeMulti UnionOf(const std::vector<Range>& ranges) {
    RangeMulti list;
    for (const Range& range : ranges) list.Add(range);
    return list;
}

bool HoldsIn(const std::vector<Range>& ranges, double x) {
    return std::any_of(ranges.begin(), ranges.end(), [x](const Range& r) { return r.In(x); });
}

// Points at every possible limit and between them.
template <class Check>
void ForPoints(Check check) {
    for (int i = -420; i < 520; i += 3) check(i / 16.0);
}

bool SameMembers(const RangeMulti& a, const RangeMulti& b) {
    if (a.GetCount() != b.GetCount()) return false;
    for (int64 i = 0; i < a.GetCount(); ++i) {
        if (!SameDouble(a[i].m_min, b[i].m_min) || !SameDouble(a[i].m_max, b[i].m_max))
            return false;
    }
    return true;
}

TEST(RangeMultiLaws, AListOfAddedRangesIsTheirUnionInOrder) {
    EXPECT_TRUE(rc::check([] {
        const std::vector<Range> ranges = ExactRanges();
        const RangeMulti list = UnionOf(ranges);
        RC_ASSERT(list.IsValid());
        for (int64 i = 1; i < list.GetCount(); ++i) RC_ASSERT(list[i - 1].m_max < list[i].m_min);
        ForPoints([&](double x) { RC_ASSERT((list.FindRange(x) >= 0) == HoldsIn(ranges, x)); });
    }));
}

TEST(RangeMultiLaws, UnionDoesNotDependOnTheOrder) {
    EXPECT_TRUE(rc::check([] {
        std::vector<Range> ranges = ExactRanges();
        const RangeMulti list = UnionOf(ranges);
        std::reverse(ranges.begin(), ranges.end());
        RC_ASSERT(SameMembers(UnionOf(ranges), list));
        RangeMulti twice;
        twice.Copy(list);
        twice.Unite(list);
        RC_ASSERT(SameMembers(twice, list));
    }));
}

TEST(RangeMultiLaws, IntersectionOfListsHoldsWhatBothHold) {
    EXPECT_TRUE(rc::check([] {
        const RangeMulti a = UnionOf(ExactRanges());
        const RangeMulti b = UnionOf(ExactRanges());
        RangeMulti shared;
        shared.Copy(a);
        shared.Intersect(b);
        RC_ASSERT(shared.GetCount() == a.GetCount() * b.GetCount());
        ForPoints([&](double x) {
            const auto holds = [x](const Range& r) { return !r.IsEmpty() && r.In(x); };
            const Range* const members = shared.GetData();
            const bool inShared = std::any_of(members, members + shared.GetCount(), holds);
            RC_ASSERT(inShared == (a.FindRange(x) >= 0 && b.FindRange(x) >= 0));
        });
    }));
}

// The merger, one step after the other.
std::vector<Range> MergeStepByStep(const std::vector<Range>& a, const std::vector<Range>& b) {
    if (a.empty() || b.empty()) return a.empty() ? b : a;
    std::vector<Range> merged;
    std::size_t n = a.size() + b.size();
    std::size_t i = 0;
    std::size_t j = 0;
    const auto append = [&](const std::vector<Range>& from, std::size_t k) {
        merged.insert(merged.end(), from.begin() + static_cast<std::ptrdiff_t>(k), from.end());
    };
    while (merged.size() < n) {
        const bool same = zToler > std::fabs(a[i] - b[j]);
        if (same) --n;
        if (a[i] <= b[j]) {
            merged.push_back(a[i]);
            if (same && ++j == b.size()) {
                append(a, i + 1);
                break;
            }
            if (++i == a.size()) {
                append(b, j);
                break;
            }
        } else {
            merged.push_back(b[j]);
            if (same && ++i == a.size()) {
                append(b, j + 1);
                break;
            }
            if (++j == b.size()) {
                append(a, i);
                break;
            }
        }
    }
    RC_ASSERT(merged.size() == n);
    return merged;
}

TEST(RangeMultiLaws, MergeTakesItsSteps) {
    EXPECT_TRUE(rc::check([] {
        const auto fewStarts = [] {
            std::vector<Range> ranges;
            const int count = *rc::gen::inRange(0, 8);
            for (int i = 0; i < count; ++i) {
                const int lo = *rc::gen::inRange(0, 4);
                ranges.push_back(Range(lo, lo + *rc::gen::inRange(0, 4)));
            }
            return ranges;
        };
        const std::vector<Range> a = fewStarts();
        const std::vector<Range> b = fewStarts();
        CAISimpArr<Range> listA;
        CAISimpArr<Range> listB;
        for (const Range& range : a) listA.Add(range);
        for (const Range& range : b) listB.Add(range);
        CAISimpArr<Range> merged;
        const int64 n = merged.Merge(listA, listB);
        const std::vector<Range> expected = MergeStepByStep(a, b);
        RC_ASSERT(n == static_cast<int64>(expected.size()));
        RC_ASSERT(merged.GetCount() == n);
        for (std::size_t k = 0; k < expected.size(); ++k) {
            RC_ASSERT(expected[k] == merged[static_cast<int64>(k)]);
        }
    }));
}

TEST(CAISimpArrLaws, AnArrayHoldsWhatWasPutIntoIt) {
    EXPECT_TRUE(rc::check([] {
        CAISimpArr<int> array;
        std::vector<int> model;
        const int steps = *rc::gen::inRange(0, 60);
        for (int step = 0; step < steps; ++step) {
            const int size = static_cast<int>(model.size());
            const int place = Evenly(0, size + 1);
            switch (Evenly(0, 6)) {
                case 0:
                    array.Add(step);
                    model.push_back(step);
                    break;
                case 1:
                    array.InsertAt(place, step);
                    model.insert(model.begin() + place, step);
                    break;
                case 2:
                    array.SetAtGrow(place, step);
                    model.resize(std::max(model.size(), static_cast<std::size_t>(place) + 1));
                    model[static_cast<std::size_t>(place)] = step;
                    break;
                case 3: {
                    const int count = *rc::gen::inRange(0, size - place + 1);
                    array.RemoveAt(place, count);
                    model.erase(model.begin() + place, model.begin() + place + count);
                    break;
                }
                case 4: {
                    // A copy that shares takes the place of the array that it was made from.
                    const CAISimpArr<int> old(array);
                    CAISimpArr<int> copy;
                    copy.Copy(old);
                    array.Detach();
                    array = copy;
                    break;
                }
                default:
                    array.SetSizeGrow(*rc::gen::inRange(0, 100));
                    break;
            }
            RC_ASSERT(array.GetCount() <= array.GetSize());
            const int* const data = array.GetData();
            RC_ASSERT(std::vector<int>(data, data + array.GetCount()) == model);
        }
    }));
}

}  // namespace
}  // namespace ZT
