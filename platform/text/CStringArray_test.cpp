#include <platform/text/CStringArray.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <tests/Raises.h>

#include <initializer_list>
#include <string>
#include <vector>

#include <platform/files/CArchive.h>
#include <platform/files/CMemFile.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

template <class Work>
testing::AssertionResult RaisesInvalidArg(Work work) {
    return testing_support::Raises<CInvalidArgException>(work);
}

std::vector<std::string> Texts(const CStringArray& array) {
    std::vector<std::string> texts;
    for (const CString& text : array) texts.emplace_back(text.View());
    return texts;
}

void Fill(CStringArray& array, std::initializer_list<const char*> texts) {
    for (const char* text : texts) array.Add(text);
}

// "a", "b", "c", and one text that is too long to be kept in the string itself.
struct FourTexts : testing::Test {
    FourTexts() { Fill(array, {"a", "b", "c", kLong}); }

    static constexpr const char* kLong = "a text that needs memory of its own, for certain";
    CStringArray array;
};

TEST(CStringArray, StartsEmpty) {
    const CStringArray array;
    EXPECT_EQ(array.GetSize(), 0);
    EXPECT_EQ(array.GetCount(), 0);
    EXPECT_EQ(array.GetUpperBound(), -1);
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_EQ(array.GetData(), nullptr);
    EXPECT_THAT(Texts(array), IsEmpty());
}

TEST(CStringArray, IsAnObjectOfItsOwnClass) {
    const CStringArray array;
    const CObject& object = array;
    EXPECT_STREQ(object.GetRuntimeClass()->m_lpszClassName, "CStringArray");
    EXPECT_TRUE(object.IsKindOf(RUNTIME_CLASS(CObject)));
    object.AssertValid();
}

TEST_F(FourTexts, AddGivesTheIndexOfTheNewElement) {
    EXPECT_EQ(array.Add("d"), 4);
    EXPECT_EQ(array.Add(CString("e")), 5);
    EXPECT_THAT(Texts(array), ElementsAre("a", "b", "c", kLong, "d", "e"));
}

TEST_F(FourTexts, ElementsAreReadAndWrittenByIndex) {
    array.SetAt(0, "A");
    array[1] = "B";
    array.ElementAt(2) += "C";
    const CStringArray& constant = array;
    EXPECT_EQ(constant[0], "A");
    EXPECT_EQ(constant.GetAt(1), "B");
    EXPECT_EQ(constant.ElementAt(2), "cC");
    EXPECT_EQ(array.GetData()[3], kLong);
}

TEST_F(FourTexts, IndexOutOfBoundsRaises) {
    for (const INT_PTR index : {INT_PTR{-1}, INT_PTR{4}, INTPTR_MIN, INTPTR_MAX}) {
        EXPECT_TRUE(RaisesInvalidArg([&] { array[index]; }));
        EXPECT_TRUE(RaisesInvalidArg([&] { array.GetAt(index); }));
        EXPECT_TRUE(RaisesInvalidArg([&] { array.ElementAt(index); }));
        EXPECT_TRUE(RaisesInvalidArg([&] { array.SetAt(index, "x"); }));
    }
    EXPECT_TRUE(RaisesInvalidArg([&] { array.SetAtGrow(-1, "x"); }));
    EXPECT_TRUE(RaisesInvalidArg([&] { array.InsertAt(-1, "x"); }));
    EXPECT_TRUE(RaisesInvalidArg([&] { array.RemoveAt(-1); }));
    EXPECT_TRUE(RaisesInvalidArg([&] { array.RemoveAt(3, 2); }));
    EXPECT_TRUE(RaisesInvalidArg([&] { array.SetSize(-1); }));
    EXPECT_EQ(array.GetSize(), 4);
}

TEST_F(FourTexts, SetSizeCutsAndAddsEmptyTexts) {
    array.SetSize(2);
    EXPECT_THAT(Texts(array), ElementsAre("a", "b"));
    array.SetSize(4, 16);
    EXPECT_THAT(Texts(array), ElementsAre("a", "b", "", ""));
    array.FreeExtra();
    EXPECT_THAT(Texts(array), ElementsAre("a", "b", "", ""));
    array.RemoveAll();
    EXPECT_TRUE(array.IsEmpty());
}

TEST_F(FourTexts, SetAtGrowFillsTheGapWithEmptyTexts) {
    array.SetAtGrow(1, "B");
    array.SetAtGrow(6, "g");
    EXPECT_THAT(Texts(array), ElementsAre("a", "B", "c", kLong, "", "", "g"));
}

TEST_F(FourTexts, InsertsAnElementSeveralTimes) {
    array.InsertAt(1, "x", 2);
    array.InsertAt(0, "y");
    EXPECT_THAT(Texts(array), ElementsAre("y", "a", "x", "x", "b", "c", kLong));
    array.InsertAt(8, "z");
    EXPECT_EQ(array.GetSize(), 9);
    EXPECT_EQ(array[7], "");
}

TEST_F(FourTexts, InsertsAnArrayAlsoItself) {
    CStringArray other;
    Fill(other, {"x", "y"});
    array.InsertAt(1, &other);
    EXPECT_THAT(Texts(array), ElementsAre("a", "x", "y", "b", "c", kLong));
    other.InsertAt(1, &other);
    EXPECT_THAT(Texts(other), ElementsAre("x", "x", "y", "y"));
}

TEST_F(FourTexts, RemovesARun) {
    array.RemoveAt(1, 2);
    EXPECT_THAT(Texts(array), ElementsAre("a", kLong));
    array.RemoveAt(0);
    EXPECT_THAT(Texts(array), ElementsAre(kLong));
    array.RemoveAt(0, 0);
    EXPECT_EQ(array.GetSize(), 1);
}

TEST_F(FourTexts, AppendAndCopyTakeOverTexts) {
    CStringArray other;
    Fill(other, {"x", "y"});
    EXPECT_EQ(other.Append(array), 2);
    EXPECT_THAT(Texts(other), ElementsAre("x", "y", "a", "b", "c", kLong));
    other.Copy(array);
    EXPECT_THAT(Texts(other), ElementsAre("a", "b", "c", kLong));
    other[0] = "changed";
    EXPECT_EQ(array[0], "a");
    array.Append(array);
    EXPECT_EQ(array.GetSize(), 8);
}

TEST_F(FourTexts, AnElementOfTheArrayItselfCanBeAdded) {
    array.FreeExtra();
    array.Add(array[3]);
    array.FreeExtra();
    array.InsertAt(0, array[3]);
    EXPECT_THAT(Texts(array), ElementsAre(kLong, "a", "b", "c", kLong, kLong));
}

TEST_F(FourTexts, RangeForWrites) {
    for (CString& text : array) text = text.Left(1);
    EXPECT_THAT(Texts(array), ElementsAre("a", "b", "c", "a"));
}

void Store(CFile& file, CStringArray& array) {
    CArchive archive(&file, CArchive::store);
    array.Serialize(archive);
    archive.Close();
    file.SeekToBegin();
}

void Load(CFile& file, CStringArray& array) {
    CArchive archive(&file, CArchive::load);
    array.Serialize(archive);
}

TEST_F(FourTexts, TravelsThroughAnArchive) {
    array.Add(CString("with\0zero", 9));
    array.Add("");
    CMemFile file;
    Store(file, array);
    CStringArray loaded;
    loaded.Add("replaced");
    Load(file, loaded);
    EXPECT_EQ(Texts(loaded), Texts(array));
}

TEST(CStringArray, RecordThatPromisesTooMuchEndsAtTheEndOfTheFile) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive.WriteCount(0x7FFFFFFFFFFFFFFF);
    archive.Close();
    file.SeekToBegin();
    CStringArray loaded;
    EXPECT_TRUE(testing_support::Raises<CArchiveException>([&] { Load(file, loaded); }));
}

TEST(CStringArray, GrowsGeometricallyWithoutAStep) {
    CStringArray array;
    int moves = 0;
    const CString* data = nullptr;
    for (int i = 0; i < 10000; ++i) {
        array.Add("x");
        if (array.GetData() != data) ++moves;
        data = array.GetData();
    }
    EXPECT_LT(moves, 50);
}

TEST(CStringArray, BehavesAsAVectorOfTexts) {
    EXPECT_TRUE(rc::check([](const std::vector<std::string>& steps) {
        CStringArray array;
        std::vector<std::string> expected;
        for (const std::string& text : steps) {
            const CString element{std::string_view(text)};
            const auto place = *rc::gen::inRange<INT_PTR>(0, array.GetSize() + 1);
            if (place < array.GetSize() && text.size() % 3 == 0) {
                array.RemoveAt(place);
                expected.erase(expected.begin() + place);
            } else {
                array.InsertAt(place, element);
                expected.insert(expected.begin() + place, text);
            }
        }
        RC_ASSERT(Texts(array) == expected);
    }));
}

}  // namespace
