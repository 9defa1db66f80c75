#include <platform/com/SafeArray.h>

#include <gtest/gtest.h>
#include <tests/CountedObject.h>

#include <climits>
#include <cstddef>
#include <cstring>
#include <string>

#include <platform/com/Bstr.h>
#include <platform/com/Variant.h>

namespace {

using testing_support::CountedObject;

// An array that its test destroys.
struct Array {
    explicit Array(SAFEARRAY* p) : array(p) {}
    Array(const Array&) = delete;
    Array& operator=(const Array&) = delete;
    ~Array() { EXPECT_EQ(SafeArrayDestroy(array), S_OK); }
    operator SAFEARRAY*() const { return array; }
    SAFEARRAY* operator->() const { return array; }

    SAFEARRAY* array;
};

std::wstring StringAt(SAFEARRAY* array, LONG index) {
    BSTR string = nullptr;
    EXPECT_EQ(SafeArrayGetElement(array, &index, &string), S_OK);
    const std::wstring text(string, SysStringLen(string));
    SysFreeString(string);
    return text;
}

TEST(SafeArray, FieldsStandInOrder) {
    EXPECT_EQ(offsetof(SAFEARRAY, cDims), 0u);
    EXPECT_EQ(offsetof(SAFEARRAY, fFeatures), 2u);
    EXPECT_EQ(offsetof(SAFEARRAY, cbElements), 4u);
    EXPECT_EQ(offsetof(SAFEARRAY, cLocks), 8u);
    EXPECT_EQ(offsetof(SAFEARRAY, pvData), 16u);
    EXPECT_EQ(offsetof(SAFEARRAY, rgsabound), 24u);
}

TEST(SafeArray, NewVectorHasItsShapeAndZeroBytes) {
    const Array array(SafeArrayCreateVector(VT_UI1, 0, 5));
    ASSERT_NE(array.array, nullptr);
    EXPECT_EQ(SafeArrayGetDim(array), 1u);
    EXPECT_EQ(SafeArrayGetElemsize(array), 1u);
    EXPECT_EQ(array->cLocks, 0u);
    EXPECT_EQ(array->rgsabound[0].cElements, 5u);
    EXPECT_EQ(std::memcmp(array->pvData, "\0\0\0\0\0", 5), 0);
    VARTYPE type = 0;
    EXPECT_EQ(SafeArrayGetVartype(array, &type), S_OK);
    EXPECT_EQ(type, VT_UI1);
}

TEST(SafeArray, ElementSizesFollowTheType) {
    const struct {
        VARTYPE type;
        UINT size;
    } rows[] = {{VT_I1, 1},
                {VT_UI1, 1},
                {VT_I2, 2},
                {VT_UI2, 2},
                {VT_BOOL, 2},
                {VT_I4, 4},
                {VT_UI4, 4},
                {VT_INT, 4},
                {VT_UINT, 4},
                {VT_R4, 4},
                {VT_ERROR, 4},
                {VT_I8, 8},
                {VT_UI8, 8},
                {VT_R8, 8},
                {VT_DATE, 8},
                {VT_BSTR, 8},
                {VT_UNKNOWN, 8},
                {VT_DISPATCH, 8},
                {VT_VARIANT, sizeof(VARIANT)}};
    for (const auto& row : rows) {
        const Array array(SafeArrayCreateVector(row.type, 0, 3));
        ASSERT_NE(array.array, nullptr) << row.type;
        EXPECT_EQ(SafeArrayGetElemsize(array), row.size) << row.type;
    }
}

TEST(SafeArray, CannotBeMadeFromNonsense) {
    const SAFEARRAYBOUND bound = {1, 0};
    for (const int type : {int{VT_EMPTY}, int{VT_NULL}, 15, VT_ARRAY | VT_UI1}) {
        EXPECT_EQ(SafeArrayCreate(static_cast<VARTYPE>(type), 1, &bound), nullptr) << type;
    }
    EXPECT_EQ(SafeArrayCreate(VT_UI1, 0, &bound), nullptr);
    EXPECT_EQ(SafeArrayCreate(VT_UI1, 1, nullptr), nullptr);
    EXPECT_EQ(SafeArrayCreate(VT_UI1, 0x10000, &bound), nullptr);
    EXPECT_EQ(SafeArrayCreateVector(VT_UI1, INT_MAX, 2), nullptr);
    const SAFEARRAYBOUND huge[] = {{0x7FFFFFFF, 0}, {0x7FFFFFFF, 0}, {0x7FFFFFFF, 0}};
    EXPECT_EQ(SafeArrayCreate(VT_R8, 3, huge), nullptr);
}

TEST(SafeArray, NullHasNoShape) {
    LONG bound = 0;
    EXPECT_EQ(SafeArrayGetDim(nullptr), 0u);
    EXPECT_EQ(SafeArrayGetElemsize(nullptr), 0u);
    EXPECT_EQ(SafeArrayGetLBound(nullptr, 1, &bound), E_INVALIDARG);
    EXPECT_EQ(SafeArrayGetUBound(nullptr, 1, &bound), E_INVALIDARG);
    EXPECT_EQ(SafeArrayGetVartype(nullptr, nullptr), E_INVALIDARG);
    EXPECT_EQ(SafeArrayDestroy(nullptr), S_OK);
}

TEST(SafeArray, BoundsAreToldPerDimension) {
    const SAFEARRAYBOUND bounds[] = {{2, 10}, {3, -1}};
    const Array array(SafeArrayCreate(VT_I4, 2, bounds));
    LONG bound = 0;
    EXPECT_EQ(SafeArrayGetLBound(array, 1, &bound), S_OK);
    EXPECT_EQ(bound, 10);
    EXPECT_EQ(SafeArrayGetUBound(array, 1, &bound), S_OK);
    EXPECT_EQ(bound, 11);
    EXPECT_EQ(SafeArrayGetLBound(array, 2, &bound), S_OK);
    EXPECT_EQ(bound, -1);
    EXPECT_EQ(SafeArrayGetUBound(array, 2, &bound), S_OK);
    EXPECT_EQ(bound, 1);
    for (const UINT dimension : {0u, 3u}) {
        EXPECT_EQ(SafeArrayGetLBound(array, dimension, &bound), DISP_E_BADINDEX);
        EXPECT_EQ(SafeArrayGetUBound(array, dimension, &bound), DISP_E_BADINDEX);
    }
    EXPECT_EQ(SafeArrayGetLBound(array, 1, nullptr), E_INVALIDARG);
    EXPECT_EQ(SafeArrayGetUBound(array, 1, nullptr), E_INVALIDARG);
}

TEST(SafeArray, EmptyArrayEndsBelowItsStart) {
    const Array array(SafeArrayCreateVector(VT_UI1, 4, 0));
    LONG bound = 0;
    EXPECT_EQ(SafeArrayGetUBound(array, 1, &bound), S_OK);
    EXPECT_EQ(bound, 3);
    void* data = nullptr;
    EXPECT_EQ(SafeArrayAccessData(array, &data), S_OK);
    EXPECT_EQ(SafeArrayUnaccessData(array), S_OK);
}

TEST(SafeArray, FirstDimensionRunsFastest) {
    const SAFEARRAYBOUND bounds[] = {{2, 0}, {3, 0}};
    const Array array(SafeArrayCreate(VT_I4, 2, bounds));
    for (LONG i = 0; i < 2; ++i) {
        for (LONG j = 0; j < 3; ++j) {
            const LONG indices[] = {i, j};
            const LONG value = 10 * i + j;
            EXPECT_EQ(SafeArrayPutElement(array, indices, &value), S_OK);
        }
    }
    const LONG expected[] = {0, 10, 1, 11, 2, 12};
    EXPECT_EQ(std::memcmp(array->pvData, expected, sizeof expected), 0);
    const LONG indices[] = {1, 2};
    LONG value = 0;
    EXPECT_EQ(SafeArrayGetElement(array, indices, &value), S_OK);
    EXPECT_EQ(value, 12);
    void* place = nullptr;
    EXPECT_EQ(SafeArrayPtrOfIndex(array, indices, &place), S_OK);
    EXPECT_EQ(place, static_cast<LONG*>(array->pvData) + 5);
}

TEST(SafeArray, IndexOutOfBoundsIsABadIndex) {
    const Array array(SafeArrayCreateVector(VT_I4, -2, 3));
    LONG value = 0;
    void* place;
    for (const LONG index : {-3, 1, INT_MIN, INT_MAX}) {
        EXPECT_EQ(SafeArrayGetElement(array, &index, &value), DISP_E_BADINDEX);
        EXPECT_EQ(SafeArrayPutElement(array, &index, &value), DISP_E_BADINDEX);
        EXPECT_EQ(SafeArrayPtrOfIndex(array, &index, &place), DISP_E_BADINDEX);
        EXPECT_EQ(place, nullptr);
    }
    for (const LONG index : {-2, 0}) {
        EXPECT_EQ(SafeArrayGetElement(array, &index, &value), S_OK);
    }
}

TEST(SafeArray, NullArgumentsAreRefused) {
    const Array array(SafeArrayCreateVector(VT_I4, 0, 1));
    LONG index = 0, value = 0;
    void* place;
    EXPECT_EQ(SafeArrayGetElement(nullptr, &index, &value), E_INVALIDARG);
    EXPECT_EQ(SafeArrayGetElement(array, nullptr, &value), E_INVALIDARG);
    EXPECT_EQ(SafeArrayGetElement(array, &index, nullptr), E_INVALIDARG);
    EXPECT_EQ(SafeArrayPutElement(nullptr, &index, &value), E_INVALIDARG);
    EXPECT_EQ(SafeArrayPutElement(array, nullptr, &value), E_INVALIDARG);
    EXPECT_EQ(SafeArrayPutElement(array, &index, nullptr), E_INVALIDARG);
    EXPECT_EQ(SafeArrayPtrOfIndex(nullptr, &index, &place), E_INVALIDARG);
    EXPECT_EQ(SafeArrayPtrOfIndex(array, &index, nullptr), E_INVALIDARG);
    EXPECT_EQ(SafeArrayLock(nullptr), E_INVALIDARG);
    EXPECT_EQ(SafeArrayUnlock(nullptr), E_INVALIDARG);
    EXPECT_EQ(SafeArrayAccessData(nullptr, &place), E_INVALIDARG);
    EXPECT_EQ(SafeArrayAccessData(array, nullptr), E_INVALIDARG);
    EXPECT_EQ(SafeArrayCopy(array, nullptr), E_INVALIDARG);
    EXPECT_EQ(SafeArrayRedim(array, nullptr), E_INVALIDARG);
    EXPECT_EQ(array->cLocks, 0u);
}

TEST(SafeArray, LockedArrayCannotBeDestroyed) {
    const Array array(SafeArrayCreateVector(VT_UI1, 0, 1));
    EXPECT_EQ(SafeArrayLock(array), S_OK);
    EXPECT_EQ(SafeArrayLock(array), S_OK);
    EXPECT_EQ(SafeArrayDestroy(array), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(SafeArrayUnlock(array), S_OK);
    EXPECT_EQ(SafeArrayDestroy(array), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(SafeArrayUnlock(array), S_OK);
}

TEST(SafeArray, LocksAreCounted) {
    const Array array(SafeArrayCreateVector(VT_UI1, 0, 1));
    EXPECT_EQ(SafeArrayUnlock(array), E_UNEXPECTED);
    for (int i = 0; i < 65535; ++i) ASSERT_EQ(SafeArrayLock(array), S_OK);
    EXPECT_EQ(SafeArrayLock(array), E_UNEXPECTED);
    void* data = &data;
    EXPECT_EQ(SafeArrayAccessData(array, &data), E_UNEXPECTED);
    EXPECT_EQ(data, nullptr);
    for (int i = 0; i < 65535; ++i) ASSERT_EQ(SafeArrayUnlock(array), S_OK);
}

TEST(SafeArray, AccessLocksAndGivesTheBlock) {
    const Array array(SafeArrayCreateVector(VT_UI1, 0, 3));
    void* data = nullptr;
    EXPECT_EQ(SafeArrayAccessData(array, &data), S_OK);
    EXPECT_EQ(data, array->pvData);
    EXPECT_EQ(array->cLocks, 1u);
    EXPECT_EQ(SafeArrayUnaccessData(array), S_OK);
    EXPECT_EQ(array->cLocks, 0u);
}

TEST(SafeArray, StringElementsAreCopies) {
    const Array array(SafeArrayCreateVector(VT_BSTR, 0, 2));
    BSTR string = SysAllocString(L"abc");
    const LONG index = 1;
    EXPECT_EQ(SafeArrayPutElement(array, &index, string), S_OK);
    string[0] = L'X';
    EXPECT_EQ(StringAt(array, 1), L"abc");
    EXPECT_EQ(SafeArrayPutElement(array, &index, string), S_OK);
    EXPECT_EQ(StringAt(array, 1), L"Xbc");
    EXPECT_EQ(SafeArrayPutElement(array, &index, nullptr), S_OK);
    EXPECT_EQ(StringAt(array, 1), L"");
    SysFreeString(string);
}

TEST(SafeArray, InterfaceElementsAreCounted) {
    CountedObject object;
    {
        const Array array(SafeArrayCreateVector(VT_UNKNOWN, 0, 2));
        IUnknown* pointer = &object;
        for (const LONG index : {0, 1}) {
            EXPECT_EQ(SafeArrayPutElement(array, &index, pointer), S_OK);
        }
        EXPECT_EQ(object.count, 3u);
        const LONG index = 0;
        IUnknown* got = nullptr;
        EXPECT_EQ(SafeArrayGetElement(array, &index, &got), S_OK);
        EXPECT_EQ(got, pointer);
        EXPECT_EQ(object.count, 4u);
        got->Release();
        EXPECT_EQ(SafeArrayPutElement(array, &index, nullptr), S_OK);
        EXPECT_EQ(object.count, 2u);
    }
    EXPECT_EQ(object.count, 1u);
}

TEST(SafeArray, VariantElementsAreCopies) {
    const Array array(SafeArrayCreateVector(VT_VARIANT, 0, 1));
    VARIANT value = {};
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocString(L"abc");
    const LONG index = 0;
    EXPECT_EQ(SafeArrayPutElement(array, &index, &value), S_OK);
    EXPECT_EQ(SafeArrayPutElement(array, &index, &value), S_OK);
    VARIANT got = {};
    EXPECT_EQ(SafeArrayGetElement(array, &index, &got), S_OK);
    EXPECT_NE(got.bstrVal, value.bstrVal);
    EXPECT_STREQ(got.bstrVal, L"abc");
    VariantClear(&got);
    VariantClear(&value);
}

TEST(SafeArray, ElementThatCannotBeEndedKeepsTheArray) {
    SAFEARRAY* outer = SafeArrayCreateVector(VT_VARIANT, 0, 1);
    VARIANT& element = *static_cast<VARIANT*>(outer->pvData);
    element.vt = VT_ARRAY | VT_UI1;
    element.parray = SafeArrayCreateVector(VT_UI1, 0, 1);
    SafeArrayLock(element.parray);
    EXPECT_EQ(SafeArrayDestroy(outer), DISP_E_ARRAYISLOCKED);
    const LONG index = 0;
    VARIANT empty = {};
    EXPECT_EQ(SafeArrayPutElement(outer, &index, &empty), DISP_E_ARRAYISLOCKED);
    SafeArrayUnlock(element.parray);
    EXPECT_EQ(SafeArrayDestroy(outer), S_OK);
}

TEST(SafeArray, CopyHasElementsOfItsOwn) {
    const SAFEARRAYBOUND bounds[] = {{2, 1}, {1, 5}};
    const Array array(SafeArrayCreate(VT_BSTR, 2, bounds));
    const LONG indices[] = {2, 5};
    BSTR string = SysAllocString(L"abc");
    SafeArrayPutElement(array, indices, string);
    SysFreeString(string);
    SafeArrayLock(array);
    SAFEARRAY* made = nullptr;
    EXPECT_EQ(SafeArrayCopy(array, &made), S_OK);
    SafeArrayUnlock(array);
    const Array copy(made);
    EXPECT_EQ(copy->cLocks, 0u);
    EXPECT_EQ(std::memcmp(copy->rgsabound, array->rgsabound, 2 * sizeof(SAFEARRAYBOUND)), 0);
    BSTR got = nullptr;
    EXPECT_EQ(SafeArrayGetElement(copy, indices, &got), S_OK);
    EXPECT_STREQ(got, L"abc");
    SysFreeString(got);
    EXPECT_NE(static_cast<BSTR*>(copy->pvData)[1], static_cast<BSTR*>(array->pvData)[1]);
}

TEST(SafeArray, CopyOfNullIsNull) {
    SAFEARRAY* copy = reinterpret_cast<SAFEARRAY*>(&copy);
    EXPECT_EQ(SafeArrayCopy(nullptr, &copy), S_OK);
    EXPECT_EQ(copy, nullptr);
}

TEST(SafeArray, RedimensioningKeepsWhatStays) {
    const Array array(SafeArrayCreateVector(VT_BSTR, 0, 2));
    BSTR string = SysAllocString(L"abc");
    for (const LONG index : {0, 1}) SafeArrayPutElement(array, &index, string);
    SysFreeString(string);
    const SAFEARRAYBOUND longer = {4, 1};
    EXPECT_EQ(SafeArrayRedim(array, &longer), S_OK);
    EXPECT_EQ(StringAt(array, 1), L"abc");
    EXPECT_EQ(StringAt(array, 2), L"abc");
    EXPECT_EQ(StringAt(array, 4), L"");
    const SAFEARRAYBOUND shorter = {1, 0};
    EXPECT_EQ(SafeArrayRedim(array, &shorter), S_OK);
    EXPECT_EQ(StringAt(array, 0), L"abc");
    LONG bound = -1;
    EXPECT_EQ(SafeArrayGetUBound(array, 1, &bound), S_OK);
    EXPECT_EQ(bound, 0);
    SafeArrayLock(array);
    EXPECT_EQ(SafeArrayRedim(array, &longer), DISP_E_ARRAYISLOCKED);
    SafeArrayUnlock(array);
    const SAFEARRAYBOUND beyond = {2, INT_MAX};
    EXPECT_EQ(SafeArrayRedim(array, &beyond), E_INVALIDARG);
}

TEST(SafeArray, RedimensioningFromAndToNothing) {
    const Array array(SafeArrayCreateVector(VT_I4, 0, 0));
    const SAFEARRAYBOUND two = {2, 0}, none = {0, 0};
    EXPECT_EQ(SafeArrayRedim(array, &two), S_OK);
    const LONG index = 1;
    LONG value = 5;
    EXPECT_EQ(SafeArrayPutElement(array, &index, &value), S_OK);
    EXPECT_EQ(SafeArrayRedim(array, &none), S_OK);
    EXPECT_EQ(SafeArrayPutElement(array, &index, &value), DISP_E_BADINDEX);
}

}  // namespace
