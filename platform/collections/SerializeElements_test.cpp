#include <platform/collections/CArray.h>
#include <platform/collections/CList.h>
#include <platform/collections/CMap.h>
#include <platform/collections/CObArray.h>
#include <platform/collections/CObList.h>
#include <platform/collections/SerializeElements.h>
#include <platform/files/CArchive.h>
#include <platform/files/CMemFile.h>
#include <platform/text/CString.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

/// Not plain, and without an archive form.
struct Opaque {
    Opaque() = default;
    Opaque(const Opaque& other) : number(other.number) {}
    Opaque& operator=(const Opaque&) = default;
    int number = 0;
};

/// Not plain, with an archive form of its own.
struct Marked {
    Marked(int n = 0) : number(n) {}
    Marked(const Marked& other) : number(other.number) {}
    Marked& operator=(const Marked&) = default;
    int number;
};

}  // namespace

template <>
void SerializeElements<Marked>(CArchive& ar, Marked* elements, INT_PTR count) {
    for (Marked* element = elements; element != elements + count; ++element) {
        BYTE mark = 'M';
        if (ar.IsStoring()) {
            ar << mark << element->number;
        } else {
            ar >> mark >> element->number;
        }
    }
}

namespace {

/// What an object stores, as bytes.
std::string Stored(CObject& object) {
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    object.Serialize(ar);
    ar.Close();
    std::string bytes(static_cast<std::size_t>(file.GetLength()), '\0');
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

void Load(CObject& object, std::string bytes) {
    CMemFile file(reinterpret_cast<BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
    CArchive ar(&file, CArchive::load);
    object.Serialize(ar);
}

/// Loads and tells the cause of the archive exception that this raises.
int CauseOfLoading(CObject& object, const std::string& bytes) {
    try {
        Load(object, bytes);
    } catch (CArchiveException* exception) {
        const int cause = exception->m_cause;
        exception->Delete();
        return cause;
    }
    return CArchiveException::none;
}

template <class CONTAINER>
auto All(const CONTAINER& from) {
    return std::vector<typename CONTAINER::value_type>(from.begin(), from.end());
}

TEST(SerializeElements, AnArrayIsItsCountAndTheImageOfItsElements) {
    CArray<int, int> array;
    array.Add(1);
    array.Add(0x01020304);
    EXPECT_EQ(Stored(array), std::string("\2\0\1\0\0\0\4\3\2\1", 10));
}

TEST(SerializeElements, AnArrayIsLoadedInPlaceOfWhatItHeld) {
    CArray<double, double> array, loaded;
    for (double number : {1.5, -2.5, 1e307}) array.Add(number);
    loaded.SetSize(7);
    Load(loaded, Stored(array));
    EXPECT_THAT(All(loaded), ElementsAre(1.5, -2.5, 1e307));
    array.RemoveAll();
    Load(loaded, Stored(array));
    EXPECT_TRUE(loaded.IsEmpty());
}

TEST(SerializeElements, AnArrayOfManyPartsIsTheSameWhenLoaded) {
    const INT_PTR count = 2 * Collections::ElementsAtATime(sizeof(std::int64_t)) + 5;
    CArray<std::int64_t, std::int64_t> array, loaded;
    array.SetSize(count);
    for (INT_PTR i = 0; i < count; ++i) array[i] = i * i;
    const std::string bytes = Stored(array);
    EXPECT_EQ(bytes.size(), 6 + 8 * static_cast<std::size_t>(count));
    Load(loaded, bytes);
    ASSERT_EQ(loaded.GetSize(), count);
    EXPECT_EQ(std::memcmp(loaded.GetData(), array.GetData(), 8 * static_cast<std::size_t>(count)),
              0);
}

TEST(SerializeElements, AShortFileRaisesEndOfFile) {
    CArray<int, int> array;
    array.SetSize(3);
    const std::string bytes = Stored(array);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        CArray<int, int> loaded;
        EXPECT_EQ(CauseOfLoading(loaded, bytes.substr(0, length)), CArchiveException::endOfFile);
        EXPECT_EQ(loaded.GetSize(), length < 2 ? 0 : 3);
    }
}

TEST(SerializeElements, AFalseCountMeetsTheEndOfTheFileBeforeItClaimsItsMemory) {
    const std::string huge("\xFF\xFF\xFF\xFF\xFF\xFF\0\0\0\0\0\0\0\x10", 14);
    const std::string beyond("\xFF\xFF\xFF\xFF\xFF\xFF\0\0\0\0\0\0\0\xF0", 14);
    CArray<double, double> array;
    EXPECT_EQ(CauseOfLoading(array, huge), CArchiveException::endOfFile);
    EXPECT_LE(array.GetSize(), Collections::ElementsAtATime(sizeof(double)));
    EXPECT_EQ(CauseOfLoading(array, beyond), CArchiveException::endOfFile);
    CList<double, double> list;
    EXPECT_EQ(CauseOfLoading(list, huge), CArchiveException::endOfFile);
    CObArray objects;
    EXPECT_EQ(CauseOfLoading(objects, huge), CArchiveException::endOfFile);
}

TEST(SerializeElements, TextsAreStoredWithTheirLengths) {
    CArray<CString, LPCTSTR> array, loaded;
    array.Add("arc");
    array.Add("");
    const std::string bytes = Stored(array);
    EXPECT_EQ(bytes, std::string("\2\0\3arc\0", 7));
    Load(loaded, bytes);
    EXPECT_THAT(All(loaded), ElementsAre(CString("arc"), CString()));
}

TEST(SerializeElements, AProgramsOwnFormIsUsed) {
    CArray<Marked> array, loaded;
    array.Add(5);
    array.Add(6);
    const std::string bytes = Stored(array);
    EXPECT_EQ(bytes, std::string("\2\0M\5\0\0\0M\6\0\0\0", 12));
    Load(loaded, bytes);
    ASSERT_EQ(loaded.GetSize(), 2);
    EXPECT_EQ(loaded[1].number, 6);
}

TEST(SerializeElements, ElementsWithoutAFormRaiseNotSupported) {
    CArray<Opaque> array;
    array.SetSize(1);
    EXPECT_THROW(Stored(array), CNotSupportedException*);
    EXPECT_THROW(Load(array, std::string("\1\0\0\0\0\0", 6)), CNotSupportedException*);
}

TEST(SerializeElements, AListIsLoadedBehindWhatItHolds) {
    CList<int, int> list, loaded;
    list.AddTail(7);
    list.AddTail(8);
    const std::string bytes = Stored(list);
    EXPECT_EQ(bytes, std::string("\2\0\7\0\0\0\x8\0\0\0", 10));
    loaded.AddTail(1);
    Load(loaded, bytes);
    EXPECT_THAT(All(loaded), ElementsAre(1, 7, 8));
}

TEST(SerializeElements, AMapIsLoadedIntoWhatItHolds) {
    CMap<CString, LPCTSTR, int, int> map, loaded;
    map["arc"] = 1;
    map["knot"] = 2;
    loaded["seam"] = 3;
    loaded["arc"] = 9;
    Load(loaded, Stored(map));
    EXPECT_EQ(loaded.GetCount(), 3);
    EXPECT_EQ(loaded["arc"], 1);
    EXPECT_EQ(loaded["knot"], 2);
    EXPECT_EQ(loaded["seam"], 3);
}

TEST(SerializeElements, ObjectsAreStoredWithTheirClassesAndLoadedAnew) {
    CObList list, inner;
    for (CObject* object : {static_cast<CObject*>(&inner), static_cast<CObject*>(nullptr),
                            static_cast<CObject*>(&inner)}) {
        list.AddTail(object);
    }
    CObList loaded;
    Load(loaded, Stored(list));
    ASSERT_EQ(loaded.GetCount(), 3);
    CObject* object = loaded.GetHead();
    ASSERT_NE(object, nullptr);
    EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(CObList)));
    EXPECT_THAT(All(loaded), ElementsAre(object, nullptr, object));
    delete object;
}

TEST(SerializeElements, ObjectsOfAnArrayAreLoadedInPlaceOfWhatItHeld) {
    CObArray inner, array, loaded;
    array.Add(&inner);
    array.Add(nullptr);
    loaded.SetSize(5);
    Load(loaded, Stored(array));
    ASSERT_EQ(loaded.GetSize(), 2);
    ASSERT_NE(loaded[0], nullptr);
    EXPECT_TRUE(loaded[0]->IsKindOf(RUNTIME_CLASS(CObArray)));
    EXPECT_EQ(loaded[1], nullptr);
    delete loaded[0];
}

TEST(SerializeElements, ObjectsWithoutAnArchiveRecordRaiseNotSupported) {
    struct Plain : CObject {
    } plain;
    CObList list;
    list.AddTail(&plain);
    EXPECT_THROW(Stored(list), CNotSupportedException*);
}

}  // namespace
