#include <platform/com/Variant.h>

#include <gtest/gtest.h>
#include <tests/CountedObject.h>

#include <cstddef>
#include <cstring>

namespace {

using testing_support::CountedObject;

VARTYPE Word(int word) {
    return static_cast<VARTYPE>(word);
}

VARIANT OfType(int word) {
    VARIANT variant = {};
    variant.vt = Word(word);
    return variant;
}

VARIANT OfText(const wchar_t* text) {
    VARIANT variant = OfType(VT_BSTR);
    variant.bstrVal = SysAllocString(text);
    return variant;
}

VARIANT OfBytes(ULONG count) {
    VARIANT variant = OfType(VT_ARRAY | VT_UI1);
    variant.parray = SafeArrayCreateVector(VT_UI1, 0, count);
    return variant;
}

const VARTYPE kScalarTypes[] = {VT_I1,   VT_UI1,  VT_I2,    VT_UI2,  VT_I4,      VT_UI4,
                                VT_I8,   VT_UI8,  VT_INT,   VT_UINT, VT_R4,      VT_R8,
                                VT_DATE, VT_BOOL, VT_ERROR, VT_BSTR, VT_UNKNOWN, VT_DISPATCH};

TEST(Variant, TypeWordComesFirstAndTheValueAtEight) {
    EXPECT_EQ(offsetof(VARIANT, vt), 0u);
    EXPECT_EQ(sizeof(VARIANT::vt), 2u);
    EXPECT_EQ(offsetof(VARIANT, llVal), 8u);
    EXPECT_EQ(offsetof(VARIANT, byref), 8u);
    EXPECT_EQ(offsetof(VARIANT, bVal), 8u);
}

TEST(Variant, TypesHaveTheirAgreedNumbers) {
    EXPECT_EQ(VT_EMPTY, 0);
    EXPECT_EQ(VT_NULL, 1);
    EXPECT_EQ(VT_I2, 2);
    EXPECT_EQ(VT_I4, 3);
    EXPECT_EQ(VT_R4, 4);
    EXPECT_EQ(VT_R8, 5);
    EXPECT_EQ(VT_DATE, 7);
    EXPECT_EQ(VT_BSTR, 8);
    EXPECT_EQ(VT_DISPATCH, 9);
    EXPECT_EQ(VT_ERROR, 10);
    EXPECT_EQ(VT_BOOL, 11);
    EXPECT_EQ(VT_VARIANT, 12);
    EXPECT_EQ(VT_UNKNOWN, 13);
    EXPECT_EQ(VT_I1, 16);
    EXPECT_EQ(VT_UI1, 17);
    EXPECT_EQ(VT_UI2, 18);
    EXPECT_EQ(VT_UI4, 19);
    EXPECT_EQ(VT_I8, 20);
    EXPECT_EQ(VT_UI8, 21);
    EXPECT_EQ(VT_INT, 22);
    EXPECT_EQ(VT_UINT, 23);
    EXPECT_EQ(VT_ARRAY, 0x2000);
    EXPECT_EQ(VT_BYREF, 0x4000);
    EXPECT_EQ(VARIANT_TRUE, -1);
    EXPECT_EQ(VARIANT_FALSE, 0);
}

TEST(Variant, TypeWordsWithAMeaning) {
    for (const VARTYPE type : kScalarTypes) {
        EXPECT_TRUE(IsVariantType(type)) << type;
        EXPECT_TRUE(IsVariantType(Word(type | VT_ARRAY))) << type;
        EXPECT_TRUE(IsVariantType(Word(type | VT_BYREF))) << type;
        EXPECT_TRUE(IsVariantType(Word(type | VT_ARRAY | VT_BYREF))) << type;
    }
    for (const int word : {int{VT_EMPTY}, int{VT_NULL}, int{VT_BYREF}, VT_BYREF | VT_VARIANT,
                           VT_ARRAY | VT_VARIANT}) {
        EXPECT_TRUE(IsVariantType(Word(word))) << word;
    }
}

TEST(Variant, TypeWordsWithoutAMeaning) {
    for (const int word : {int{VT_VARIANT}, int{VT_ARRAY}, VT_BYREF | VT_NULL, VT_ARRAY | VT_NULL,
                           VT_ARRAY | VT_BYREF, 6, 14, 15, 24, 0x1000 | VT_I4, 0x8000}) {
        EXPECT_FALSE(IsVariantType(Word(word))) << word;
    }
}

TEST(Variant, InitMakesItEmptyUnseen) {
    VARIANT variant;
    std::memset(static_cast<void*>(&variant), 0xAB, sizeof variant);
    VariantInit(&variant);
    EXPECT_EQ(variant.vt, VT_EMPTY);
    EXPECT_EQ(variant.llVal, 0);
    VariantInit(nullptr);
}

TEST(Variant, ClearEndsStringsAndArrays) {
    for (VARIANT variant : {OfText(L"abc"), OfText(nullptr), OfBytes(3), OfType(VT_I4),
                            OfType(VT_ARRAY | VT_UI1), OfType(VT_NULL), OfType(VT_EMPTY)}) {
        EXPECT_EQ(VariantClear(&variant), S_OK);
        EXPECT_EQ(variant.vt, VT_EMPTY);
    }
}

TEST(Variant, ClearReleasesInterfaces) {
    for (const VARTYPE type : {VT_UNKNOWN, VT_DISPATCH}) {
        CountedObject object;
        VARIANT variant = OfType(type);
        EXPECT_EQ(VariantClear(&variant), S_OK);
        variant.vt = type;
        variant.punkVal = &object;
        object.AddRef();
        EXPECT_EQ(VariantClear(&variant), S_OK);
        EXPECT_EQ(object.count, 1u);
    }
}

TEST(Variant, ClearLeavesWhatAReferencePointsTo) {
    CountedObject object;
    IUnknown* pointer = &object;
    VARIANT variant = OfType(VT_BYREF | VT_UNKNOWN);
    variant.ppunkVal = &pointer;
    EXPECT_EQ(VariantClear(&variant), S_OK);
    EXPECT_EQ(object.count, 1u);
    VARIANT raw = OfType(VT_BYREF);
    raw.byref = &object;
    EXPECT_EQ(VariantClear(&raw), S_OK);
    EXPECT_EQ(raw.vt, VT_EMPTY);
}

TEST(Variant, ClearOfNonsenseFails) {
    VARIANT variant = OfType(15);
    EXPECT_EQ(VariantClear(&variant), DISP_E_BADVARTYPE);
    EXPECT_EQ(variant.vt, 15);
    EXPECT_EQ(VariantClear(nullptr), E_INVALIDARG);
}

TEST(Variant, LockedArrayIsNotCleared) {
    VARIANT variant = OfBytes(2), empty = {};
    SafeArrayLock(variant.parray);
    EXPECT_EQ(VariantClear(&variant), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(VariantCopy(&variant, &empty), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(VariantChangeType(&variant, &empty, 0, VT_I4), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(variant.vt, VT_ARRAY | VT_UI1);
    SafeArrayUnlock(variant.parray);
    EXPECT_EQ(VariantClear(&variant), S_OK);
}

TEST(Variant, CopyIsDeep) {
    VARIANT text = OfText(L"abc"), bytes = OfBytes(3), copy = {};
    static_cast<BYTE*>(bytes.parray->pvData)[1] = 9;
    EXPECT_EQ(VariantCopy(&copy, &text), S_OK);
    EXPECT_NE(copy.bstrVal, text.bstrVal);
    EXPECT_STREQ(copy.bstrVal, L"abc");
    EXPECT_EQ(VariantCopy(&copy, &bytes), S_OK);
    EXPECT_EQ(copy.vt, VT_ARRAY | VT_UI1);
    EXPECT_NE(copy.parray, bytes.parray);
    EXPECT_EQ(static_cast<BYTE*>(copy.parray->pvData)[1], 9);
    VariantClear(&copy);
    VariantClear(&text);
    VariantClear(&bytes);
}

TEST(Variant, CopyOfNullContents) {
    VARIANT copy = {};
    for (const int word : {int{VT_BSTR}, int{VT_UNKNOWN}, VT_ARRAY | VT_I4}) {
        const VARIANT null = OfType(word);
        EXPECT_EQ(VariantCopy(&copy, &null), S_OK);
        EXPECT_EQ(copy.vt, word);
        EXPECT_EQ(copy.byref, nullptr);
    }
    VariantClear(&copy);
}

TEST(Variant, CopyAddsAReference) {
    CountedObject object;
    VARIANT variant = OfType(VT_UNKNOWN), copy = {};
    variant.punkVal = &object;
    EXPECT_EQ(VariantCopy(&copy, &variant), S_OK);
    EXPECT_EQ(object.count, 2u);
    VariantClear(&copy);
    EXPECT_EQ(object.count, 1u);
}

TEST(Variant, CopyOfARawPointerKeepsTheTypeWord) {
    int target = 0;
    VARIANT variant = OfType(VT_BYREF), copy = {};
    variant.byref = &target;
    EXPECT_EQ(VariantCopy(&copy, &variant), S_OK);
    EXPECT_EQ(copy.vt, 0x4000);
    EXPECT_EQ(copy.byref, &target);
}

TEST(Variant, CopyToItselfChangesNothing) {
    VARIANT text = OfText(L"abc");
    EXPECT_EQ(VariantCopy(&text, &text), S_OK);
    EXPECT_STREQ(text.bstrVal, L"abc");
    VariantClear(&text);
}

TEST(Variant, CopyOfNonsenseFails) {
    VARIANT to = OfType(VT_I4);
    const VARIANT nonsense = OfType(15);
    EXPECT_EQ(VariantCopy(&to, &nonsense), DISP_E_BADVARTYPE);
    EXPECT_EQ(to.vt, VT_I4);
    EXPECT_EQ(VariantCopy(nullptr, &to), E_INVALIDARG);
    EXPECT_EQ(VariantCopy(&to, nullptr), E_INVALIDARG);
}

TEST(Variant, CopyIndFollowsReferencesOfEveryType) {
    // The value 5 or its like behind a pointer, whatever the width.
    alignas(8) BYTE memory[8] = {5, 0, 0, 0, 0, 0, 0, 0};
    for (const VARTYPE type : {VT_I1, VT_UI1, VT_I2, VT_UI2, VT_BOOL, VT_I4, VT_UI4, VT_INT,
                               VT_UINT, VT_ERROR, VT_I8, VT_UI8, VT_R4, VT_R8, VT_DATE}) {
        VARIANT reference = OfType(VT_BYREF | type), value = {};
        reference.pbVal = memory;
        EXPECT_EQ(VariantCopyInd(&value, &reference), S_OK) << type;
        EXPECT_EQ(value.vt, type);
        EXPECT_EQ(value.bVal, 5) << type;
    }
}

TEST(Variant, CopyIndCopiesWhatIsOwned) {
    VARIANT value = {};
    BSTR string = SysAllocString(L"abc");
    VARIANT reference = OfType(VT_BYREF | VT_BSTR);
    reference.pbstrVal = &string;
    EXPECT_EQ(VariantCopyInd(&value, &reference), S_OK);
    EXPECT_NE(value.bstrVal, string);
    EXPECT_STREQ(value.bstrVal, L"abc");
    SysFreeString(string);

    SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 0, 3);
    reference = OfType(VT_BYREF | VT_ARRAY | VT_UI1);
    reference.pparray = &array;
    EXPECT_EQ(VariantCopyInd(&value, &reference), S_OK);
    EXPECT_NE(value.parray, array);
    EXPECT_EQ(value.vt, VT_ARRAY | VT_UI1);
    SafeArrayDestroy(array);

    CountedObject object;
    IUnknown* pointer = &object;
    reference = OfType(VT_BYREF | VT_UNKNOWN);
    reference.ppunkVal = &pointer;
    EXPECT_EQ(VariantCopyInd(&value, &reference), S_OK);
    EXPECT_EQ(object.count, 2u);
    VariantClear(&value);
}

TEST(Variant, CopyIndFollowsAVariantBehindAVariant) {
    LONG number = 5;
    VARIANT inner = OfType(VT_BYREF | VT_I4), outer = OfType(VT_BYREF | VT_VARIANT), value = {};
    inner.plVal = &number;
    outer.pvarVal = &inner;
    EXPECT_EQ(VariantCopyInd(&value, &outer), S_OK);
    EXPECT_EQ(value.vt, VT_I4);
    EXPECT_EQ(value.lVal, 5);
    VARIANT outermost = OfType(VT_BYREF | VT_VARIANT);
    outermost.pvarVal = &outer;
    EXPECT_EQ(VariantCopyInd(&value, &outermost), E_INVALIDARG);
}

TEST(Variant, CopyIndOfAValueIsACopy) {
    VARIANT text = OfText(L"abc"), copy = {};
    EXPECT_EQ(VariantCopyInd(&copy, &text), S_OK);
    EXPECT_STREQ(copy.bstrVal, L"abc");
    EXPECT_EQ(VariantCopyInd(&copy, &copy), S_OK);
    EXPECT_STREQ(copy.bstrVal, L"abc");
    VariantClear(&copy);
    VariantClear(&text);
}

TEST(Variant, CopyIndIntoTheReferenceItself) {
    LONG number = 5;
    VARIANT variant = OfType(VT_BYREF | VT_I4);
    variant.plVal = &number;
    EXPECT_EQ(VariantCopyInd(&variant, &variant), S_OK);
    EXPECT_EQ(variant.vt, VT_I4);
    EXPECT_EQ(variant.lVal, 5);
}

TEST(Variant, CopyIndNeedsSomethingToFollow) {
    VARIANT value = {};
    int target = 0;
    VARIANT raw = OfType(VT_BYREF);
    raw.byref = &target;
    EXPECT_EQ(VariantCopyInd(&value, &raw), E_INVALIDARG);
    for (const int word : {VT_BYREF | VT_I4, VT_BYREF | VT_VARIANT, VT_BYREF | VT_ARRAY | VT_I4}) {
        const VARIANT null = OfType(word);
        EXPECT_EQ(VariantCopyInd(&value, &null), E_INVALIDARG) << word;
    }
    EXPECT_EQ(VariantCopyInd(nullptr, &raw), E_INVALIDARG);
    EXPECT_EQ(VariantCopyInd(&value, nullptr), E_INVALIDARG);
    const VARIANT nonsense = OfType(VT_BYREF | VT_NULL);
    EXPECT_EQ(VariantCopyInd(&value, &nonsense), DISP_E_BADVARTYPE);
}

}  // namespace
