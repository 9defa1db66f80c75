#include <platform/com/COleVariant.h>

#include <gtest/gtest.h>
#include <tests/CountedObject.h>
#include <tests/Raises.h>

#include <cmath>
#include <cstring>
#include <utility>

#include <platform/object/COleException.h>

namespace {

using testing_support::CountedObject;
using testing_support::Raises;

// The result of the OLE exception that `work` raises.
template <class Work>
SCODE RaisedResult(Work work) {
    try {
        work();
    } catch (COleException* e) {
        const SCODE result = e->m_sc;
        e->Delete();
        return result;
    }
    return S_OK;
}

COleVariant OfBytes(const char* bytes, LONG lowerBound = 0) {
    COleVariant variant;
    const auto count = static_cast<ULONG>(std::strlen(bytes));
    variant.parray = SafeArrayCreateVector(VT_UI1, lowerBound, count);
    variant.vt = VT_ARRAY | VT_UI1;
    std::memcpy(variant.parray->pvData, bytes, count);
    return variant;
}

COleVariant OfTexts(std::initializer_list<const wchar_t*> texts) {
    COleVariant variant;
    variant.parray = SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(texts.size()));
    variant.vt = VT_ARRAY | VT_BSTR;
    LONG index = 0;
    for (const wchar_t* text : texts) {
        BSTR string = SysAllocString(text);
        SafeArrayPutElement(variant.parray, &index, string);
        SysFreeString(string);
        ++index;
    }
    return variant;
}

COleVariant OfVariants(const COleVariant& element) {
    COleVariant variant;
    variant.parray = SafeArrayCreateVector(VT_VARIANT, 0, 1);
    variant.vt = VT_ARRAY | VT_VARIANT;
    const LONG index = 0;
    SafeArrayPutElement(variant.parray, &index, static_cast<const VARIANT*>(element));
    return variant;
}

TEST(COleVariant, HasTheSizeOfAVariant) {
    EXPECT_EQ(sizeof(COleVariant), sizeof(VARIANT));
}

TEST(COleVariant, StartsEmpty) {
    const COleVariant variant;
    EXPECT_EQ(variant.vt, VT_EMPTY);
    EXPECT_EQ(variant.llVal, 0);
}

TEST(COleVariant, IsMadeFromEveryType) {
    EXPECT_EQ(COleVariant(true).vt, VT_BOOL);
    EXPECT_EQ(COleVariant(true).boolVal, VARIANT_TRUE);
    EXPECT_EQ(COleVariant(false).boolVal, VARIANT_FALSE);
    EXPECT_EQ(COleVariant(static_cast<signed char>(-1)).vt, VT_I1);
    EXPECT_EQ(COleVariant(static_cast<signed char>(-1)).cVal, -1);
    EXPECT_EQ(COleVariant(static_cast<BYTE>(200)).vt, VT_UI1);
    EXPECT_EQ(COleVariant(static_cast<BYTE>(200)).bVal, 200);
    EXPECT_EQ(COleVariant(static_cast<SHORT>(-5)).vt, VT_I2);
    EXPECT_EQ(COleVariant(static_cast<SHORT>(-5)).iVal, -5);
    EXPECT_EQ(COleVariant(static_cast<USHORT>(5)).vt, VT_UI2);
    EXPECT_EQ(COleVariant(-5).vt, VT_I4);
    EXPECT_EQ(COleVariant(-5).lVal, -5);
    EXPECT_EQ(COleVariant(5u).vt, VT_UI4);
    EXPECT_EQ(COleVariant(-5L).vt, VT_I8);
    EXPECT_EQ(COleVariant(-5LL).llVal, -5);
    EXPECT_EQ(COleVariant(5UL).vt, VT_UI8);
    EXPECT_EQ(COleVariant(5ULL).ullVal, 5u);
    EXPECT_EQ(COleVariant(1.5f).vt, VT_R4);
    EXPECT_EQ(COleVariant(1.5f).fltVal, 1.5f);
    EXPECT_EQ(COleVariant(1.5).vt, VT_R8);
    EXPECT_EQ(COleVariant(1.5).dblVal, 1.5);
}

TEST(COleVariant, NumbersTakeTheTypesThatFitThem) {
    EXPECT_EQ(COleVariant(static_cast<SHORT>(5), VT_BOOL).boolVal, VARIANT_TRUE);
    EXPECT_EQ(COleVariant(LONG{5}, VT_BOOL).boolVal, VARIANT_TRUE);
    EXPECT_EQ(COleVariant(LONG{0}, VT_BOOL).boolVal, VARIANT_FALSE);
    EXPECT_EQ(COleVariant(LONG{0}, VT_BOOL).vt, VT_BOOL);
    EXPECT_EQ(COleVariant(LONG{5}, VT_INT).vt, VT_INT);
    EXPECT_EQ(COleVariant(E_FAIL, VT_ERROR).scode, E_FAIL);
    EXPECT_TRUE(Raises<CInvalidArgException>([] { COleVariant(LONG{5}, VT_R8); }));
    EXPECT_EQ(COleVariant(5L, VT_I4), COleVariant(LONG{5}));
    EXPECT_EQ(COleVariant(5L, VT_I8), COleVariant(LONGLONG{5}));
    EXPECT_TRUE(Raises<CInvalidArgException>([] { COleVariant(1L << 32, VT_I4); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([] { COleVariant(5L, VT_R8); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([] { COleVariant(static_cast<SHORT>(5), VT_I4); }));
}

TEST(COleVariant, PlainLongsKeepAllTheirBits) {
    const COleVariant wide(1L << 32);
    EXPECT_EQ(wide.vt, VT_I8);
    EXPECT_EQ(wide.llVal, 4294967296);
    COleVariant assigned;
    assigned = -5L;
    EXPECT_EQ(assigned.vt, VT_I8);
    assigned = COleVariant(-5L, VT_I4);
    EXPECT_EQ(assigned.vt, VT_I4);
    EXPECT_EQ(assigned.lVal, -5);
    assigned = LONG{-5};
    EXPECT_EQ(assigned.vt, VT_I4);
}

TEST(COleVariant, TextIsWideInside) {
    for (const COleVariant& text : {COleVariant("a\xC3\xA9"), COleVariant(CString("a\xC3\xA9")),
                                    COleVariant(L"a\u00E9"), COleVariant("a\xC3\xA9", VT_BSTR)}) {
        EXPECT_EQ(text.vt, VT_BSTR);
        EXPECT_STREQ(text.bstrVal, L"a\u00E9");
    }
    const char* null = nullptr;
    EXPECT_EQ(COleVariant(null).vt, VT_BSTR);
    EXPECT_EQ(COleVariant(null).bstrVal, nullptr);
    EXPECT_EQ(COleVariant(null, VT_BSTRT).bstrVal, nullptr);
}

TEST(COleVariant, TextCanBeKeptInBytes) {
    const COleVariant text("abc", VT_BSTRT);
    EXPECT_EQ(text.vt, VT_BSTR);
    EXPECT_EQ(SysStringByteLen(text.bstrVal), 3u);
    EXPECT_EQ(std::memcmp(text.bstrVal, "abc", 3), 0);
    EXPECT_TRUE(Raises<CInvalidArgException>([] { COleVariant("abc", VT_I4); }));
}

TEST(COleVariant, InterfacesAreCounted) {
    CountedObject object;
    {
        const COleVariant variant(static_cast<IUnknown*>(&object));
        EXPECT_EQ(variant.vt, VT_UNKNOWN);
        EXPECT_EQ(object.count, 2u);
        const COleVariant copy(variant);
        EXPECT_EQ(object.count, 3u);
    }
    EXPECT_EQ(object.count, 1u);
    EXPECT_EQ(COleVariant(static_cast<IUnknown*>(nullptr)).punkVal, nullptr);
}

TEST(COleVariant, CopiesAreDeep) {
    const COleVariant original("abc");
    const COleVariant copy(original);
    EXPECT_NE(copy.bstrVal, original.bstrVal);
    EXPECT_STREQ(copy.bstrVal, L"abc");
    const VARIANT& record = original;
    EXPECT_STREQ(COleVariant(record).bstrVal, L"abc");
    EXPECT_STREQ(COleVariant(&record).bstrVal, L"abc");
    EXPECT_EQ(COleVariant(static_cast<const VARIANT*>(nullptr)).vt, VT_EMPTY);
}

TEST(COleVariant, MovingTakesTheValueAlong) {
    COleVariant from("abc");
    const BSTR string = from.bstrVal;
    COleVariant to(std::move(from));
    EXPECT_EQ(to.bstrVal, string);
    EXPECT_EQ(from.vt, VT_EMPTY);
    COleVariant assigned;
    assigned = std::move(to);
    EXPECT_EQ(assigned.bstrVal, string);
}

TEST(COleVariant, AssignmentTakesTheTypeOfTheValue) {
    COleVariant variant;
    variant = 5;
    EXPECT_EQ(variant.vt, VT_I4);
    variant = "abc";
    EXPECT_STREQ(variant.bstrVal, L"abc");
    variant = L"wide";
    EXPECT_STREQ(variant.bstrVal, L"wide");
    variant = CString("string");
    EXPECT_STREQ(variant.bstrVal, L"string");
    variant = true;
    EXPECT_EQ(variant.boolVal, VARIANT_TRUE);
    variant = 2.5;
    EXPECT_EQ(variant.dblVal, 2.5);
    variant.SetString("bytes", VT_BSTRT);
    EXPECT_EQ(SysStringByteLen(variant.bstrVal), 5u);
    const COleVariant other("other");
    variant = other;
    EXPECT_TRUE(variant == other);
    variant = static_cast<const VARIANT&>(COleVariant(7));
    EXPECT_EQ(variant.lVal, 7);
    variant = static_cast<const VARIANT*>(other);
    EXPECT_STREQ(variant.bstrVal, L"other");
    variant = static_cast<const VARIANT*>(nullptr);
    EXPECT_EQ(variant.vt, VT_EMPTY);
}

TEST(COleVariant, SelfAssignmentKeepsTheValue) {
    COleVariant variant("abc");
    const COleVariant& same = variant;
    variant = same;
    EXPECT_STREQ(variant.bstrVal, L"abc");
}

TEST(COleVariant, ClearMakesItEmpty) {
    COleVariant variant("abc");
    variant.Clear();
    EXPECT_EQ(variant.vt, VT_EMPTY);
}

TEST(COleVariant, FailuresAreRaisedWithTheirResult) {
    COleVariant array = OfBytes("abc");
    SafeArrayLock(array.parray);
    EXPECT_EQ(RaisedResult([&] { array.Clear(); }), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(RaisedResult([&] { array = 5; }), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(RaisedResult([&] { array = COleVariant("x").vt == VT_BSTR ? "y" : "z"; }),
              DISP_E_ARRAYISLOCKED);
    EXPECT_TRUE(array == OfBytes("abc"));
    SafeArrayUnlock(array.parray);
    COleVariant text("no number");
    EXPECT_EQ(RaisedResult([&] { text.ChangeType(VT_I4); }), DISP_E_TYPEMISMATCH);
    EXPECT_STREQ(text.bstrVal, L"no number");
    VARIANT nonsense = {};
    nonsense.vt = 15;
    EXPECT_EQ(RaisedResult([&] { COleVariant copy(nonsense); }), DISP_E_BADVARTYPE);
    EXPECT_EQ(RaisedResult([&] { text = nonsense; }), DISP_E_BADVARTYPE);
}

TEST(COleVariant, ChangesItsType) {
    COleVariant variant("42");
    variant.ChangeType(VT_I4);
    EXPECT_EQ(variant.lVal, 42);
    const COleVariant source(2.5);
    variant.ChangeType(VT_BSTR, &source);
    EXPECT_STREQ(variant.bstrVal, L"2.5");
}

TEST(COleVariant, AttachAndDetachPassTheValue) {
    VARIANT record = {};
    record.vt = VT_BSTR;
    record.bstrVal = SysAllocString(L"abc");
    COleVariant variant("old");
    variant.Attach(record);
    EXPECT_EQ(record.vt, VT_EMPTY);
    EXPECT_STREQ(variant.bstrVal, L"abc");
    variant.Attach(variant);
    EXPECT_STREQ(variant.bstrVal, L"abc");
    record = variant.Detach();
    EXPECT_EQ(variant.vt, VT_EMPTY);
    EXPECT_STREQ(record.bstrVal, L"abc");
    VariantClear(&record);
}

TEST(COleVariant, ConvertsToAPointerToItself) {
    COleVariant variant;
    VARIANT* pointer = variant;
    const VARIANT* constant = std::as_const(variant);
    EXPECT_EQ(pointer, &variant);
    EXPECT_EQ(constant, &variant);
}

TEST(COleVariant, EqualsOnlyItsOwnTypeAndValue) {
    CountedObject object, other;
    int target = 0;
    COleVariant null, raw, otherRaw, number, otherNumber;
    null.vt = VT_NULL;
    LONG pointed = 0, otherPointed = 0;
    raw.vt = otherRaw.vt = VT_BYREF;
    number.vt = otherNumber.vt = VT_BYREF | VT_I4;
    raw.byref = &target;
    otherRaw.byref = number.plVal = &pointed;
    otherNumber.plVal = &otherPointed;
    const COleVariant family[] = {COleVariant(),
                                  null,
                                  true,
                                  false,
                                  static_cast<signed char>(5),
                                  static_cast<BYTE>(5),
                                  static_cast<SHORT>(5),
                                  static_cast<USHORT>(5),
                                  5,
                                  6,
                                  COleVariant(5, VT_INT),
                                  COleVariant(5, VT_ERROR),
                                  5u,
                                  5L,
                                  5UL,
                                  5.0f,
                                  5.0,
                                  "5",
                                  "",
                                  "55",
                                  COleVariant("5", VT_BSTRT),
                                  COleVariant(static_cast<IUnknown*>(&object)),
                                  COleVariant(static_cast<IUnknown*>(&other)),
                                  raw,
                                  otherRaw,
                                  number,
                                  otherNumber,
                                  OfBytes("abc"),
                                  OfBytes("abd"),
                                  OfBytes("ab"),
                                  OfBytes("abc", 1),
                                  OfTexts({L"a", L"b"}),
                                  OfTexts({L"a", L"c"}),
                                  OfVariants(5),
                                  OfVariants(6),
                                  OfVariants("5")};
    const int count = static_cast<int>(std::size(family));
    for (int i = 0; i < count; ++i) {
        for (int j = 0; j < count; ++j) {
            EXPECT_EQ(family[i] == COleVariant(family[j]), i == j) << i << " and " << j;
        }
    }
}

TEST(COleVariant, ComparesWithRecordsAndPointers) {
    const COleVariant five(5);
    VARIANT record = {};
    record.vt = VT_I4;
    record.lVal = 5;
    EXPECT_TRUE(five == record);
    EXPECT_TRUE(five == &record);
    record.lVal = 6;
    EXPECT_TRUE(five != record);
    EXPECT_FALSE(five == static_cast<const VARIANT*>(nullptr));
}

TEST(COleVariant, NullStringEqualsTheEmptyOne) {
    const char* null = nullptr;
    EXPECT_TRUE(COleVariant(null) == COleVariant(""));
    EXPECT_FALSE(COleVariant(null) == COleVariant());
}

// One value of each kind that a table of parameters holds, through all the hands it passes.
TEST(COleVariant, ValuesSurviveCopyAssignmentAndTheirSourcesEnd) {
    CountedObject object;
    int target = 0;
    COleVariant raw;
    raw.vt = VT_BYREF;
    raw.byref = &target;
    for (const COleVariant& value :
         {COleVariant(), COleVariant(-5), COleVariant(LONGLONG{1} << 40), COleVariant(0.1),
          COleVariant(true), COleVariant("text"), COleVariant(static_cast<IUnknown*>(&object)), raw,
          OfBytes("bytes")}) {
        COleVariant source(value), kept("old");
        kept = source;
        source.Clear();
        EXPECT_EQ(source.vt, VT_EMPTY);
        EXPECT_EQ(source.llVal, 0);
        EXPECT_TRUE(kept == value) << value.vt;
        const COleVariant copy(kept);
        kept.Clear();
        EXPECT_TRUE(copy == value) << value.vt;
    }
    EXPECT_EQ(object.count, 1u);
}

TEST(COleVariant, NullArrayEqualsOnlyANullOne) {
    COleVariant null;
    null.vt = VT_ARRAY | VT_UI1;
    EXPECT_TRUE(null == COleVariant(null));
    EXPECT_FALSE(null == OfBytes(""));
}

TEST(COleVariant, NumbersCompareAsNumbers) {
    EXPECT_TRUE(COleVariant(0.0) == COleVariant(-0.0));
    EXPECT_FALSE(COleVariant(std::nan("")) == COleVariant(std::nan("")));
}

TEST(COleVariant, ARawPointerCopiesWithItsTypeWord) {
    int target = 0;
    COleVariant raw;
    raw.vt = VT_BYREF;
    raw.byref = &target;
    const COleVariant copy(raw);
    EXPECT_EQ(copy.vt, 0x4000);
    EXPECT_EQ(copy.byref, &target);
}

}  // namespace
