#include <platform/collections/CArray.h>
#include <platform/collections/CountedElement_test.h>
#include <platform/object/CMemoryException.h>
#include <platform/text/CString.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstddef>
#include <iterator>
#include <limits>
#include <numeric>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

/// The largest index, which the compiler is not to see through.
const volatile INT_PTR kLargest = std::numeric_limits<INT_PTR>::max();
const INT_PTR kMost = kLargest;

/// An array that looks into its own fields.
template <class TYPE, class ARG_TYPE>
struct OpenArray : CArray<TYPE, ARG_TYPE> {
    using CArray<TYPE, ARG_TYPE>::m_nGrowBy;
    using CArray<TYPE, ARG_TYPE>::m_nMaxSize;
    using CArray<TYPE, ARG_TYPE>::m_nSize;
    using CArray<TYPE, ARG_TYPE>::m_pData;
};

using Ints = OpenArray<int, int>;
using Counted = CArray<CountedElement>;

template <class ARRAY>
auto All(const ARRAY& array) {
    return std::vector<typename ARRAY::value_type>(array.begin(), array.end());
}

void Fill(Ints& array, int count) {
    for (int i = 1; i <= count; ++i) array.Add(i);
}

std::vector<int> Numbers(const Counted& array) {
    std::vector<int> numbers;
    for (const CountedElement& element : array) {
        EXPECT_TRUE(element.IsAlive());
        numbers.push_back(element.Number());
    }
    return numbers;
}

/// An array of three: 1, 2, 3.
struct CArrayOfThree : testing::Test {
    CArrayOfThree() { Fill(array, 3); }
    Ints array;
};

struct CArrayOfObjects : testing::Test {
    CArrayOfObjects() {
        for (int i = 1; i <= 3; ++i) array.Add(i);
    }
    ~CArrayOfObjects() override { CountedElement::NeverFail(); }
    Counted array;
};

TEST(CArray, StartsEmptyWithoutMemory) {
    const Ints array;
    EXPECT_EQ(array.GetSize(), 0);
    EXPECT_EQ(array.GetCount(), 0);
    EXPECT_EQ(array.GetUpperBound(), -1);
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_EQ(array.GetData(), nullptr);
    EXPECT_EQ(array.begin(), array.end());
}

TEST(CArray, FieldsStandInTheirOrderBehindTheObject) {
    EXPECT_EQ(sizeof(Ints), 40U);
    EXPECT_EQ(offsetof(Ints, m_pData), 8U);
    EXPECT_EQ(offsetof(Ints, m_nSize), 16U);
    EXPECT_EQ(offsetof(Ints, m_nMaxSize), 24U);
    EXPECT_EQ(offsetof(Ints, m_nGrowBy), 32U);
}

TEST(CArray, IsNotCopiedByConstructionOrAssignment) {
    EXPECT_FALSE(std::is_copy_constructible_v<Ints>);
    EXPECT_FALSE(std::is_copy_assignable_v<Ints>);
}

TEST(CArray, NewNumbersAreZero) {
    CArray<double, double> array;
    array.SetSize(4);
    EXPECT_THAT(All(array), ElementsAre(0.0, 0.0, 0.0, 0.0));
    array[3] = 5.0;
    array.SetSize(2);
    array.SetSize(4);
    EXPECT_THAT(All(array), Each(0.0));
}

TEST_F(CArrayOfThree, SetSizeKeepsWhatStays) {
    array.SetSize(5);
    EXPECT_THAT(All(array), ElementsAre(1, 2, 3, 0, 0));
    array.SetSize(2);
    EXPECT_THAT(All(array), ElementsAre(1, 2));
    EXPECT_EQ(array.GetUpperBound(), 1);
}

TEST_F(CArrayOfThree, SetSizeZeroAndRemoveAllFreeTheMemory) {
    array.SetSize(0);
    EXPECT_EQ(array.GetData(), nullptr);
    EXPECT_EQ(array.m_nMaxSize, 0);
    Fill(array, 3);
    array.RemoveAll();
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_EQ(array.GetData(), nullptr);
    EXPECT_EQ(array.m_nMaxSize, 0);
}

TEST_F(CArrayOfThree, NegativeSizeRaisesInvalidArgument) {
    EXPECT_THROW(array.SetSize(-1), CInvalidArgException*);
    EXPECT_THROW(array.SetSize(std::numeric_limits<INT_PTR>::min()), CInvalidArgException*);
    EXPECT_THAT(All(array), ElementsAre(1, 2, 3));
}

TEST_F(CArrayOfThree, SizeBeyondMemoryRaisesMemoryAndLeavesTheArray) {
    EXPECT_THROW(array.SetSize(kMost), CMemoryException*);
    EXPECT_THROW(array.SetAtGrow(kMost, 1), CMemoryException*);
    EXPECT_THROW(array.InsertAt(kMost, 1), CMemoryException*);
    EXPECT_THROW(array.InsertAt(1, 1, kMost), CMemoryException*);
    EXPECT_THAT(All(array), ElementsAre(1, 2, 3));
    array.AssertValid();
}

TEST_F(CArrayOfThree, FirstSizeTakesExactlyTheMemoryItNeeds) {
    Ints other;
    other.SetSize(7);
    EXPECT_EQ(other.m_nMaxSize, 7);
}

TEST_F(CArrayOfThree, GrowthStepIsTheLeastThatTheCapacityRisesBy) {
    Ints other;
    other.SetSize(1, 100);
    EXPECT_EQ(other.m_nGrowBy, 100);
    EXPECT_EQ(other.m_nMaxSize, 100);
    other.SetSize(101);
    EXPECT_EQ(other.m_nMaxSize, 200);
    other.SetSize(500);
    EXPECT_EQ(other.m_nMaxSize, 500);
    other.SetSize(500, -1);
    EXPECT_EQ(other.m_nGrowBy, 100);
    other.SetSize(500, 0);
    EXPECT_EQ(other.m_nGrowBy, 0);
}

TEST(CArray, WithoutStepTheCapacityDoubles) {
    Ints array;
    int moves = 0;
    const int* place = nullptr;
    for (int i = 0; i < 100000; ++i) {
        array.Add(i);
        moves += array.GetData() != place;
        place = array.GetData();
    }
    EXPECT_LE(moves, 20);
    EXPECT_LE(array.m_nMaxSize, 2 * array.GetSize());
}

TEST_F(CArrayOfThree, FreeExtraGivesBackWhatIsNotUsed) {
    array.SetSize(100);
    array.SetSize(3);
    array.FreeExtra();
    EXPECT_EQ(array.m_nMaxSize, 3);
    EXPECT_THAT(All(array), ElementsAre(1, 2, 3));
    array.RemoveAt(0, 3);
    array.FreeExtra();
    EXPECT_EQ(array.GetData(), nullptr);
    array.AssertValid();
}

TEST_F(CArrayOfThree, ElementsAreReadAndWrittenByIndex) {
    const Ints& constant = array;
    array[0] = 10;
    array.SetAt(1, 20);
    array.ElementAt(2) = 30;
    EXPECT_EQ(constant[0], 10);
    EXPECT_EQ(constant.GetAt(1), 20);
    EXPECT_EQ(constant.ElementAt(2), 30);
    EXPECT_EQ(constant.GetData()[2], 30);
    array.GetData()[2] = 31;
    EXPECT_EQ(array.GetAt(2), 31);
}

TEST_F(CArrayOfThree, IndexOutOfBoundsRaisesInvalidArgument) {
    const Ints& constant = array;
    for (INT_PTR index : {INT_PTR{-1}, INT_PTR{3}, kMost, std::numeric_limits<INT_PTR>::min()}) {
        EXPECT_THROW(array[index], CInvalidArgException*);
        EXPECT_THROW(constant[index], CInvalidArgException*);
        EXPECT_THROW(array.GetAt(index), CInvalidArgException*);
        EXPECT_THROW(constant.GetAt(index), CInvalidArgException*);
        EXPECT_THROW(array.ElementAt(index), CInvalidArgException*);
        EXPECT_THROW(constant.ElementAt(index), CInvalidArgException*);
        EXPECT_THROW(array.SetAt(index, 1), CInvalidArgException*);
    }
    EXPECT_THROW(Ints()[0], CInvalidArgException*);
}

TEST_F(CArrayOfThree, SetAtGrowReplacesOrLengthens) {
    array.SetAtGrow(1, 20);
    EXPECT_THAT(All(array), ElementsAre(1, 20, 3));
    array.SetAtGrow(3, 40);
    EXPECT_THAT(All(array), ElementsAre(1, 20, 3, 40));
    array.SetAtGrow(6, 70);
    EXPECT_THAT(All(array), ElementsAre(1, 20, 3, 40, 0, 0, 70));
    EXPECT_THROW(array.SetAtGrow(-1, 0), CInvalidArgException*);
}

TEST_F(CArrayOfThree, AddReturnsTheIndex) {
    EXPECT_EQ(array.Add(4), 3);
    EXPECT_EQ(array.Add(5), 4);
    EXPECT_THAT(All(array), ElementsAre(1, 2, 3, 4, 5));
}

TEST_F(CArrayOfThree, AppendReturnsTheFirstNewIndex) {
    Ints other;
    EXPECT_EQ(array.Append(other), 3);
    Fill(other, 2);
    EXPECT_EQ(array.Append(other), 3);
    EXPECT_THAT(All(array), ElementsAre(1, 2, 3, 1, 2));
    EXPECT_EQ(array.Append(array), 5);
    EXPECT_THAT(All(array), ElementsAre(1, 2, 3, 1, 2, 1, 2, 3, 1, 2));
}

TEST_F(CArrayOfThree, CopyTakesOverSizeAndElements) {
    Ints other;
    Fill(other, 5);
    other.Copy(array);
    EXPECT_THAT(All(other), ElementsAre(1, 2, 3));
    other.Copy(other);
    EXPECT_THAT(All(other), ElementsAre(1, 2, 3));
    other.Copy(Ints());
    EXPECT_TRUE(other.IsEmpty());
}

TEST_F(CArrayOfThree, InsertAtMovesTheRestUp) {
    array.InsertAt(1, 9);
    EXPECT_THAT(All(array), ElementsAre(1, 9, 2, 3));
    array.InsertAt(0, 8, 2);
    EXPECT_THAT(All(array), ElementsAre(8, 8, 1, 9, 2, 3));
    array.InsertAt(6, 7);
    EXPECT_THAT(All(array), ElementsAre(8, 8, 1, 9, 2, 3, 7));
    array.InsertAt(9, 6, 2);
    EXPECT_THAT(All(array), ElementsAre(8, 8, 1, 9, 2, 3, 7, 0, 0, 6, 6));
}

TEST_F(CArrayOfThree, InsertAtNoTimesChangesNothing) {
    array.InsertAt(1, 9, 0);
    EXPECT_THAT(All(array), ElementsAre(1, 2, 3));
}

TEST_F(CArrayOfThree, InsertAtNegativePlacesOrCountsRaisesInvalidArgument) {
    const Ints* none = nullptr;
    EXPECT_THROW(array.InsertAt(-1, 9), CInvalidArgException*);
    EXPECT_THROW(array.InsertAt(0, 9, -1), CInvalidArgException*);
    EXPECT_THROW(array.InsertAt(-1, &array), CInvalidArgException*);
    EXPECT_THROW(array.InsertAt(0, none), CInvalidArgException*);
    EXPECT_THAT(All(array), ElementsAre(1, 2, 3));
}

TEST_F(CArrayOfThree, AnArrayIsInsertedAsAWhole) {
    Ints other;
    array.InsertAt(1, &other);
    EXPECT_THAT(All(array), ElementsAre(1, 2, 3));
    Fill(other, 2);
    array.InsertAt(1, &other);
    EXPECT_THAT(All(array), ElementsAre(1, 1, 2, 2, 3));
    array.InsertAt(6, &other);
    EXPECT_THAT(All(array), ElementsAre(1, 1, 2, 2, 3, 0, 1, 2));
}

TEST_F(CArrayOfThree, AnArrayMayBeInsertedIntoItself) {
    for (INT_PTR index = 0; index <= 5; ++index) {
        Ints self;
        Fill(self, 3);
        self.InsertAt(index, &self);
        std::vector<int> expected{1, 2, 3};
        if (index > 3) expected.resize(static_cast<std::size_t>(index));
        expected.insert(expected.begin() + index, {1, 2, 3});
        EXPECT_EQ(All(self), expected) << index;
    }
}

TEST_F(CArrayOfThree, RemoveAtMovesTheRestDown) {
    array.Add(4);
    array.RemoveAt(1);
    EXPECT_THAT(All(array), ElementsAre(1, 3, 4));
    array.RemoveAt(0, 2);
    EXPECT_THAT(All(array), ElementsAre(4));
    array.RemoveAt(0);
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_NE(array.GetData(), nullptr);
}

TEST_F(CArrayOfThree, RemoveAtNothingAtTheEndIsAllowed) {
    array.RemoveAt(3, 0);
    EXPECT_THAT(All(array), ElementsAre(1, 2, 3));
}

TEST_F(CArrayOfThree, RemoveAtOutsideTheArrayRaisesInvalidArgument) {
    EXPECT_THROW(array.RemoveAt(-1), CInvalidArgException*);
    EXPECT_THROW(array.RemoveAt(3), CInvalidArgException*);
    EXPECT_THROW(array.RemoveAt(0, -1), CInvalidArgException*);
    EXPECT_THROW(array.RemoveAt(1, 3), CInvalidArgException*);
    EXPECT_THROW(array.RemoveAt(1, kMost), CInvalidArgException*);
    EXPECT_THROW(array.RemoveAt(4, 0), CInvalidArgException*);
    EXPECT_THAT(All(array), ElementsAre(1, 2, 3));
}

TEST_F(CArrayOfThree, RangeForReadsAndWrites) {
    for (int& element : array) element *= 2;
    EXPECT_EQ(std::accumulate(array.begin(), array.end(), 0), 12);
    static_assert(std::contiguous_iterator<decltype(array.begin())>);
}

TEST_F(CArrayOfThree, AssertValidRaisesOnBrokenFields) {
    array.AssertValid();
    std::swap(array.m_nSize, array.m_nMaxSize);
    ++array.m_nSize;
    EXPECT_THROW(array.AssertValid(), CInvalidArgException*);
    --array.m_nSize;
    std::swap(array.m_nSize, array.m_nMaxSize);
    array.AssertValid();
}

TEST_F(CArrayOfObjects, ElementsLiveExactlyAsLongAsTheyAreInTheArray) {
    EXPECT_EQ(CountedElement::Living(), 3);
    array.SetSize(10);
    EXPECT_EQ(CountedElement::Living(), 10);
    array.InsertAt(2, CountedElement(7), 4);
    EXPECT_EQ(CountedElement::Living(), 14);
    array.RemoveAt(1, 6);
    EXPECT_EQ(CountedElement::Living(), 8);
    array.FreeExtra();
    EXPECT_EQ(CountedElement::Living(), 8);
    EXPECT_THAT(Numbers(array), ElementsAre(1, 0, 0, 0, 0, 0, 0, 0));
    array.RemoveAll();
    EXPECT_EQ(CountedElement::Living(), 0);
}

TEST_F(CArrayOfObjects, AnElementOfTheArrayMayBeAddedToIt) {
    for (int i = 0; i < 50; ++i) array.Add(array[1]);
    EXPECT_EQ(array.GetSize(), 53);
    EXPECT_EQ(Numbers(array), [] {
        std::vector<int> expected(53, 2);
        expected[0] = 1;
        expected[2] = 3;
        return expected;
    }());
}

TEST_F(CArrayOfObjects, AnElementOfTheArrayMayBeInsertedOrSet) {
    array.InsertAt(0, array[2], 2);
    EXPECT_THAT(Numbers(array), ElementsAre(3, 3, 1, 2, 3));
    array.InsertAt(1, array[3]);
    EXPECT_THAT(Numbers(array), ElementsAre(3, 2, 3, 1, 2, 3));
    array.SetAtGrow(7, array[3]);
    EXPECT_THAT(Numbers(array), ElementsAre(3, 2, 3, 1, 2, 3, 0, 1));
    array.FreeExtra();
    array.InsertAt(0, array[6]);
    EXPECT_THAT(Numbers(array), ElementsAre(0, 3, 2, 3, 1, 2, 3, 0, 1));
    array.SetAt(1, array[1]);
    EXPECT_EQ(array[1].Number(), 3);
}

TEST_F(CArrayOfObjects, AppendingOrInsertingAnArrayCopiesItsElements) {
    Counted other;
    other.Add(8);
    other.Append(array);
    other.InsertAt(1, &array);
    EXPECT_THAT(Numbers(other), ElementsAre(8, 1, 2, 3, 1, 2, 3));
    other.InsertAt(2, &other);
    EXPECT_THAT(Numbers(other), ElementsAre(8, 1, 8, 1, 2, 3, 1, 2, 3, 2, 3, 1, 2, 3));
    EXPECT_EQ(CountedElement::Living(), 17);
}

TEST_F(CArrayOfObjects, AnElementThatCannotBeMadeLeavesASoundArray) {
    const CountedElement nine(9);
    for (int allowed = 0; allowed < 3; ++allowed) {
        CountedElement::FailAfter(allowed);
        EXPECT_THROW(array.InsertAt(1, nine), CountedElement::Failure);
        CountedElement::NeverFail();
        EXPECT_THAT(Numbers(array), ElementsAre(1, 2, 3));
        EXPECT_EQ(CountedElement::Living(), 4);
    }
    array.SetSize(3);
    array.FreeExtra();
    for (int allowed = 0; allowed < 2; ++allowed) {
        CountedElement::FailAfter(allowed);
        EXPECT_THROW(array.Add(nine), CountedElement::Failure);
        CountedElement::NeverFail();
        EXPECT_THAT(Numbers(array), ElementsAre(1, 2, 3));
        EXPECT_EQ(CountedElement::Living(), 4);
    }
    array.SetSize(4);
    array.SetSize(3);
    for (int allowed = 0; allowed < 2; ++allowed) {
        CountedElement::FailAfter(allowed);
        EXPECT_THROW(array.Add(nine), CountedElement::Failure);
        CountedElement::NeverFail();
        EXPECT_THAT(Numbers(array), ElementsAre(1, 2, 3));
        EXPECT_EQ(CountedElement::Living(), 4);
    }
    CountedElement::FailAfter(2);
    EXPECT_THROW(array.SetSize(8), CountedElement::Failure);
    CountedElement::NeverFail();
    EXPECT_THAT(Numbers(array), ElementsAre(1, 2, 3));
    EXPECT_EQ(CountedElement::Living(), 4);
}

TEST(CArray, ElementsMayBeHandedInAsAnotherType) {
    CArray<CString, LPCTSTR> array;
    array.Add("one");
    for (int i = 0; i < 20; ++i) array.Add(array[0]);
    array.InsertAt(0, array[20], 3);
    EXPECT_EQ(array.GetSize(), 24);
    EXPECT_THAT(All(array), Each(CString("one")));
}

/// Its assignment ignores small differences, its copies are exact.
struct Tolerant {
    Tolerant(double v = 0) : value(v) {}
    Tolerant(const Tolerant&) = default;
    Tolerant& operator=(const Tolerant& other) {
        if (other.value > value + 1 || other.value < value - 1) value = other.value;
        return *this;
    }
    double value;
};

TEST(CArray, ElementsThatMoveAreNotAssigned) {
    CArray<Tolerant> array;
    array.Add(10.0);
    array.Add(10.5);
    array.Add(11.0);
    array.RemoveAt(0);
    EXPECT_EQ(array[0].value, 10.5);
    EXPECT_EQ(array[1].value, 11.0);
    array.InsertAt(0, 20.0);
    EXPECT_EQ(array[1].value, 10.5);
    array.SetAt(1, 10.9);
    EXPECT_EQ(array[1].value, 10.5);
}

struct alignas(64) Wide {
    double value = 0;
};

TEST(CArray, ElementsAreAligned) {
    CArray<Wide> array;
    for (int i = 0; i < 9; ++i) {
        array.Add(Wide());
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(array.GetData()) % 64, 0U);
    }
}

/// One random operation on an array and on the vector that models it.
void Apply(Ints& array, std::vector<int>& model, unsigned kind, int place) {
    const std::ptrdiff_t size = std::ssize(model);
    const std::ptrdiff_t index = place % (size + 1);
    const auto at = model.begin() + index;
    switch (kind % 8) {
        case 0:
        case 1:
            RC_ASSERT(array.Add(place) == size);
            return model.push_back(place);
        case 2:
            array.InsertAt(index, place, place % 4);
            return void(model.insert(at, static_cast<std::size_t>(place % 4), place));
        case 3: {
            const std::ptrdiff_t count = std::min<std::ptrdiff_t>(place % 3, size - index);
            array.RemoveAt(index, count);
            return void(model.erase(at, at + count));
        }
        case 4:
            array.SetSize(place % 40);
            return model.resize(static_cast<std::size_t>(place % 40));
        case 5:
            array.SetAtGrow(index, place);
            if (index == size) return model.push_back(place);
            return void(*at = place);
        case 6:
            return array.FreeExtra();
        default:
            if (size > 500) return;
            array.InsertAt(index, &array);
            const std::vector<int> copy = model;
            model.insert(model.begin() + index, copy.begin(), copy.end());
    }
}

TEST(CArray, BehavesAsAPlainSequenceUnderAnyOperations) {
    EXPECT_TRUE(rc::check([](const std::vector<std::pair<unsigned, std::uint16_t>>& steps) {
        Ints array;
        std::vector<int> model;
        for (const auto& [kind, place] : steps) {
            Apply(array, model, kind, place);
            array.AssertValid();
            RC_ASSERT(All(array) == model);
        }
    }));
}

}  // namespace
