#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zt/containers/MapPtrToPtrZT.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

namespace ZT {
namespace {

void* P(std::uintptr_t number) {
    return reinterpret_cast<void*>(number);
}

struct Open : MapPtrToPtrZT {
    using MapPtrToPtrZT::m_nBlockSize;
};

struct MapPtrToPtrZTTest : testing::Test {
    void Fill(std::uintptr_t count) {
        for (std::uintptr_t i = 1; i <= count; ++i) map.SetAt(P(i), P(i + 0x100));
    }

    std::string Printed() const {
        testing::internal::CaptureStdout();
        map.Pr();
        std::fflush(stdout);
        return testing::internal::GetCapturedStdout();
    }

    std::string Header() const {
        return Line("MapPtrToPtrZT: 0x%08x count=%u map (key, value):\n", &map,
                    static_cast<unsigned>(map.GetCount()));
    }

    // The first `count` pairs as the map itself walks them.
    std::string Pairs(int count) const {
        std::string text;
        void* key = nullptr;
        void* value = nullptr;
        for (POSITION pos = map.GetStartPosition(); pos != nullptr && count > 0; --count) {
            map.GetNextAssoc(pos, key, value);
            text += Line("0x%08x   0x%08x\n", key, Low(value));
        }
        return text;
    }

    static unsigned Low(const void* pointer) {
        return static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(pointer) & 0xFFFFFFFFu);
    }
    static std::string Line(const char* format, const void* first, unsigned second) {
        char text[100];
        std::snprintf(text, sizeof text, format, Low(first), second);
        return text;
    }

    Open map;
};

TEST_F(MapPtrToPtrZTTest, IsAPlainMapOfPointers) {
    EXPECT_EQ(sizeof(MapPtrToPtrZT), sizeof(CMapPtrToPtr));
    EXPECT_TRUE(map.IsEmpty());
    EXPECT_EQ(map.m_nBlockSize, 10);
}

TEST_F(MapPtrToPtrZTTest, FindsAKeyByItsValue) {
    Fill(50);
    for (std::uintptr_t i = 1; i <= 50; ++i) EXPECT_EQ(map.FindValue(P(i + 0x100)), P(i));
    EXPECT_EQ(map.FindValue(P(1)), nullptr);
    EXPECT_EQ(map.FindValue(nullptr), nullptr);
}

TEST_F(MapPtrToPtrZTTest, FindsNothingInAnEmptyMap) {
    EXPECT_EQ(map.FindValue(nullptr), nullptr);
    EXPECT_EQ(map.FindValue(P(1)), nullptr);
}

TEST_F(MapPtrToPtrZTTest, FindsTheFirstOfEqualValuesInTheMapsOrder) {
    Fill(30);
    map.SetAt(P(7), P(5));
    map.SetAt(P(12), P(5));
    map.SetAt(P(29), P(5));
    void* key = nullptr;
    void* value = nullptr;
    POSITION pos = map.GetStartPosition();
    while (value != P(5)) map.GetNextAssoc(pos, key, value);
    EXPECT_EQ(map.FindValue(P(5)), key);
}

TEST_F(MapPtrToPtrZTTest, NullKeyLooksLikeFailure) {
    map.SetAt(nullptr, P(5));
    EXPECT_EQ(map.FindValue(P(5)), nullptr);
}

TEST_F(MapPtrToPtrZTTest, FindsANullValue) {
    map.SetAt(P(5), nullptr);
    EXPECT_EQ(map.FindValue(nullptr), P(5));
}

TEST_F(MapPtrToPtrZTTest, PrintsHeaderAndLineFeedWhenEmpty) {
    EXPECT_EQ(Printed(), Header() + "\n");
    EXPECT_THAT(Printed(), testing::EndsWith(" count=0 map (key, value):\n\n"));
}

TEST_F(MapPtrToPtrZTTest, PrintsOnePair) {
    map.SetAt(P(0xAB), P(0xC));
    EXPECT_EQ(Printed(), Header() + "0x000000ab   0x0000000c\n\n");
    EXPECT_THAT(Printed(), testing::StartsWith("MapPtrToPtrZT: 0x"));
    EXPECT_THAT(Printed(), testing::HasSubstr(" count=1 map"));
}

TEST_F(MapPtrToPtrZTTest, PrintsTheLow32BitsOfPointers) {
    map.SetAt(P(0x123456789ABCDEF0), P(0xFFFFFFFF00000000));
    EXPECT_EQ(Printed(), Header() + "0x9abcdef0   0x00000000\n\n");
}

TEST_F(MapPtrToPtrZTTest, PrintsAllOfTwentyPairs) {
    Fill(20);
    EXPECT_EQ(Printed(), Header() + Pairs(20) + "\n");
}

TEST_F(MapPtrToPtrZTTest, GivesNoticeAfterThe21stPairEvenIfItIsTheLast) {
    Fill(21);
    EXPECT_EQ(Printed(), Header() + Pairs(21) + "First 20 pairs. Has more\n");
    Fill(22);
    EXPECT_EQ(Printed(), Header() + Pairs(21) + "First 20 pairs. Has more\n");
    Fill(500);
    EXPECT_EQ(Printed(), Header() + Pairs(21) + "First 20 pairs. Has more\n");
    EXPECT_THAT(Printed(), testing::HasSubstr(" count=500 map"));
}

}  // namespace
}  // namespace ZT
