#include <zt/numerics/NPair.h>

#include <gtest/gtest.h>
#include <platform/files/CArchive.h>
#include <platform/files/CMemFile.h>
#include <rapidcheck.h>
#include <zt/frame/VirtualTable_test.hpp>

#include <cstddef>
#include <limits>
#include <new>
#include <utility>

namespace ZT {

void PrintTo(const NPair& cell, std::ostream* os) {
    *os << '(' << cell.m_n[0] << ", " << cell.m_n[1] << ')';
}

namespace {

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

TEST(NPair, FieldsFollowTheTableInOrder) {
    EXPECT_EQ(offsetof(NPair, m_n), 8u);
    EXPECT_EQ(sizeof(NPair::m_n), 8u);
    EXPECT_EQ(sizeof(NPair), 16u);
}

struct Recorder : NPair {
    explicit Recorder(int* last) : m_last(last) {}
    ~Recorder() override { *m_last = kSlotDestructor; }
    CRuntimeClass* GetRuntimeClass() const override {
        *m_last = kSlotGetRuntimeClass;
        return nullptr;
    }
    void Serialize(CArchive&) override { *m_last = kSlotSerialize; }
    void AssertValid() const override { *m_last = kSlotAssertValid; }
    void Dump(CDumpContext&) const override { *m_last = kSlotDump; }
    int* m_last;
};

TEST(NPair, VirtualOperationsAreThoseOfTheRoot) {
    int last = -1;
    alignas(Recorder) std::byte memory[sizeof(Recorder)];
    auto* const cell = new (memory) Recorder(&last);
    for (const std::size_t slot :
         {kSlotGetRuntimeClass, kSlotSerialize, kSlotAssertValid, kSlotDump, kSlotDestructor}) {
        CallSlot<void>(cell, slot, static_cast<void*>(nullptr));
        EXPECT_EQ(last, static_cast<int>(slot));
    }
}

TEST(NPair, HasTheRuntimeClassOfTheRoot) {
    EXPECT_EQ(NPair().GetRuntimeClass(), CObject::GetThisClass());
}

TEST(NPair, NewCellIsAtTheOrigin) {
    EXPECT_EQ(NPair().m_n[0], 0);
    EXPECT_EQ(NPair().m_n[1], 0);
}

TEST(NPair, StoresBothCoordinates) {
    NPair cell(3, -4);
    EXPECT_EQ(cell.m_n[0], 3);
    EXPECT_EQ(cell.m_n[1], -4);
    cell.Set(5, 6);
    EXPECT_EQ(cell, NPair(5, 6));
}

TEST(NPair, CopiesBothCoordinates) {
    const NPair cell(3, -4);
    const NPair copy(cell);
    EXPECT_EQ(copy, NPair(3, -4));
    NPair target(9, 9);
    EXPECT_EQ(&(target = cell), &target);
    EXPECT_EQ(target, NPair(3, -4));
}

TEST(NPair, EqualityComparesBothCoordinates) {
    EXPECT_TRUE(NPair(1, 2) == NPair(1, 2));
    EXPECT_FALSE(NPair(1, 2) == NPair(1, 3));
    EXPECT_FALSE(NPair(1, 2) == NPair(0, 2));
    EXPECT_FALSE(NPair(1, 2) == NPair(2, 1));
    EXPECT_FALSE(NPair(1, 2) != NPair(1, 2));
    EXPECT_TRUE(NPair(1, 2) != NPair(1, 3));
    EXPECT_TRUE(NPair(1, 2) != NPair(0, 2));
}

TEST(NPair, EveryIndexButZeroReachesCoordinateOne) {
    NPair cell(3, -4);
    EXPECT_EQ(&cell[0], &cell.m_n[0]);
    for (const int i : {1, 2, 5, -1, kLowest, kHighest}) EXPECT_EQ(&cell[i], &cell.m_n[1]);
    cell[5] = 8;
    EXPECT_EQ(cell, NPair(3, 8));
    EXPECT_EQ(std::as_const(cell)[0], 3);
    EXPECT_EQ(std::as_const(cell)[-1], 8);
}

TEST(NPair, DistanceIsTheLargerDifference) {
    EXPECT_EQ(NPair(0, 0).DistM(NPair(3, -4)), 4);
    EXPECT_EQ(NPair(3, -4).DistM(NPair(0, 0)), 4);
    EXPECT_EQ(NPair(-5, 1).DistM(NPair(2, 4)), 7);
    EXPECT_EQ(NPair(2, 2).DistM(NPair(2, 2)), 0);
}

TEST(NPair, DistanceThatDoesNotFitIsTheGreatestInteger) {
    EXPECT_EQ(NPair(kLowest, 0).DistM(NPair(kHighest, 0)), kHighest);
    EXPECT_EQ(NPair(0, 0).DistM(NPair(0, kLowest)), kHighest);
    EXPECT_FALSE(NPair(kLowest, 0).IsNextTo(NPair(kHighest, 0)));
}

TEST(NPair, EightCellsAreNextToACell) {
    for (int x = -2; x <= 2; ++x) {
        for (int y = -2; y <= 2; ++y) {
            SCOPED_TRACE(testing::Message() << x << ", " << y);
            const bool neighbour = x >= -1 && x <= 1 && y >= -1 && y <= 1 && (x != 0 || y != 0);
            EXPECT_EQ(NPair(10, 20).IsNextTo(NPair(10 + x, 20 + y)), neighbour);
        }
    }
}

TEST(NPairLaws, DistanceIsAMetric) {
    EXPECT_TRUE(rc::check("metric", [] {
        const auto cell = [] {
            return NPair(*rc::gen::inRange(-1000, 1000), *rc::gen::inRange(-1000, 1000));
        };
        const NPair a = cell();
        const NPair b = cell();
        const NPair c = cell();
        RC_ASSERT(a.DistM(b) == b.DistM(a));
        RC_ASSERT((a.DistM(b) == 0) == (a == b));
        RC_ASSERT(a.DistM(c) <= a.DistM(b) + b.DistM(c));
        RC_ASSERT(a.IsNextTo(b) == (a.DistM(b) == 1));
    }));
}

}  // namespace
}  // namespace ZT
