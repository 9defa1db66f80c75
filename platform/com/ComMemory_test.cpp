#include <gtest/gtest.h>
#include <tests/CountingNew.h>
#include <tests/Raises.h>

#include <string>

#include <platform/com/BstrT.h>
#include <platform/com/COleVariant.h>
#include <platform/com/ComError.h>
#include <platform/com/Variant.h>
#include <platform/object/CMemoryException.h>
#include <platform/text/CString.h>

// Texts on their way between bytes and wide characters, without memory for the way.

namespace {

using testing_support::MemoryFor;
using testing_support::Raises;

// Longer than what a string holds in itself.
const std::string kBytes(100, 'a');
const std::wstring kWide(100, L'a');

// The code with which `work`, for which there is no memory, raises `_com_error`; 0 if it
// does not.
template <class Work>
HRESULT FailureWithoutMemory(Work work) {
    const MemoryFor nothing(0);
    try {
        work();
    } catch (const _com_error& error) {
        return error.Error();
    }
    return 0;
}

HRESULT ChangeWithoutMemory(VARIANT& to, const VARIANT& from, VARTYPE type) {
    const MemoryFor nothing(0);
    return VariantChangeType(&to, &from, 0, type);
}

TEST(ComMemory, StringsOfBytesAreNotMade) {
    EXPECT_EQ(FailureWithoutMemory([] { const _bstr_t text(kBytes.c_str()); }), E_OUTOFMEMORY);
}

TEST(ComMemory, BytesOfStringsAreNotMade) {
    const _bstr_t text(kWide.c_str());
    const auto bytes = [&text] { return static_cast<const char*>(text); };
    EXPECT_EQ(FailureWithoutMemory(bytes), E_OUTOFMEMORY);
    EXPECT_EQ(bytes(), kBytes);
    // They are there now.
    EXPECT_EQ(FailureWithoutMemory(bytes), 0);
}

TEST(ComMemory, StringsThatCannotBeJoinedStay) {
    _bstr_t text(kWide.c_str());
    const _bstr_t tail(L"b");
    EXPECT_EQ(FailureWithoutMemory([&] { text += tail; }), E_OUTOFMEMORY);
    EXPECT_TRUE(text == kWide.c_str());
    text += tail;
    EXPECT_TRUE(text == (kWide + L'b').c_str());
}

TEST(ComMemory, NumbersDoNotTurnIntoText) {
    const COleVariant number(123456789L);
    COleVariant target("kept");
    EXPECT_EQ(ChangeWithoutMemory(target, number, VT_BSTR), E_OUTOFMEMORY);
    EXPECT_TRUE(target == COleVariant("kept"));
    EXPECT_EQ(VariantChangeType(&target, &number, 0, VT_BSTR), S_OK);
    EXPECT_TRUE(target == COleVariant("123456789"));
}

TEST(ComMemory, TextsDoNotTurnIntoNumbers) {
    const COleVariant text((std::string(100, ' ') + '1').c_str());
    COleVariant target("kept");
    for (const VARTYPE type : {VT_I4, VT_R8, VT_BOOL}) {
        EXPECT_EQ(ChangeWithoutMemory(target, text, type), E_OUTOFMEMORY) << type;
        EXPECT_TRUE(target == COleVariant("kept"));
    }
    EXPECT_EQ(VariantChangeType(&target, &text, 0, VT_I4), S_OK);
    EXPECT_EQ(target.lVal, 1);
}

TEST(ComMemory, SystemStringsOfTheFrameworksStringsAreNotMade) {
    const CString text(kBytes);
    EXPECT_TRUE(Raises<CMemoryException>([&] {
        const MemoryFor nothing(0);
        SysFreeString(text.AllocSysString());
    }));
    EXPECT_TRUE(Raises<CMemoryException>([&] {
        const MemoryFor nothing(0);
        const COleVariant variant(text);
    }));
    BSTR kept = SysAllocString(L"kept");
    EXPECT_TRUE(Raises<CMemoryException>([&] {
        const MemoryFor nothing(0);
        text.SetSysString(&kept);
    }));
    EXPECT_STREQ(kept, L"kept");
    SysFreeString(kept);
}

}  // namespace
