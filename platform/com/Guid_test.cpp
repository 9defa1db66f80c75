#include <platform/com/Guid.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstddef>
#include <string>
#include <unordered_set>

namespace {

constexpr GUID kSample = {
    0x6A7F5542, 0xC2BD, 0x480D, {0x97, 0xB1, 0xB9, 0x0F, 0x21, 0x29, 0x77, 0x4F}};
constexpr const wchar_t* kSampleText = L"{6A7F5542-C2BD-480D-97B1-B90F2129774F}";

TEST(Guid, FieldsStandInOrderWithoutPadding) {
    EXPECT_EQ(sizeof(GUID), 16u);
    EXPECT_EQ(offsetof(GUID, Data1), 0u);
    EXPECT_EQ(offsetof(GUID, Data2), 4u);
    EXPECT_EQ(offsetof(GUID, Data3), 6u);
    EXPECT_EQ(offsetof(GUID, Data4), 8u);
}

TEST(Guid, DiffersByAnySingleByte) {
    EXPECT_EQ(kSample, GUID(kSample));
    for (std::size_t i = 0; i < sizeof(GUID); ++i) {
        GUID other = kSample;
        reinterpret_cast<unsigned char*>(&other)[i] ^= 1;
        EXPECT_NE(other, kSample) << i;
        EXPECT_FALSE(IsEqualGUID(other, kSample)) << i;
    }
    EXPECT_TRUE(IsEqualIID(kSample, kSample) && IsEqualCLSID(GUID_NULL, CLSID_NULL));
}

TEST(Guid, HashesAlikeWhenEqual) {
    const std::unordered_set<GUID> ids = {kSample, GUID_NULL, kSample};
    EXPECT_EQ(ids.size(), 2u);
    EXPECT_TRUE(ids.contains(kSample));
}

TEST(Guid, WritesItsRegistryForm) {
    wchar_t text[kGuidTextSize];
    EXPECT_EQ(StringFromGUID2(kSample, text, kGuidTextSize), 39);
    EXPECT_STREQ(text, kSampleText);
    EXPECT_EQ(StringFromGUID2(GUID_NULL, text, kGuidTextSize), 39);
    EXPECT_STREQ(text, L"{00000000-0000-0000-0000-000000000000}");
}

TEST(Guid, TextWithoutRoomIsNotWritten) {
    wchar_t text[kGuidTextSize] = L"untouched";
    EXPECT_EQ(StringFromGUID2(kSample, text, 38), 0);
    EXPECT_EQ(StringFromGUID2(kSample, text, -1), 0);
    EXPECT_STREQ(text, L"untouched");
    EXPECT_EQ(StringFromGUID2(kSample, nullptr, 39), 0);
}

TEST(Guid, ReadsDigitsOfEitherCase) {
    GUID id;
    EXPECT_EQ(CLSIDFromString(kSampleText, &id), S_OK);
    EXPECT_EQ(id, kSample);
    EXPECT_EQ(IIDFromString(L"{6a7f5542-c2bd-480d-97b1-b90f2129774f}", &id), S_OK);
    EXPECT_EQ(id, kSample);
}

TEST(Guid, TextOfAnotherShapeIsRefused) {
    for (const wchar_t* text : {
             L"",
             L"6A7F5542-C2BD-480D-97B1-B90F2129774F",
             L"{6A7F5542-C2BD-480D-97B1-B90F2129774F",
             L"{6A7F5542-C2BD-480D-97B1-B90F2129774F}x",
             L"{6A7F5542-C2BD-480D-97B1-B90F2129774G}",
             L"{6A7F5542+C2BD-480D-97B1-B90F2129774F}",
             L"{6A7F5542-C2BD-480D-97B1B-90F2129774F}",
             L"{ A7F5542-C2BD-480D-97B1-B90F2129774F}",
         }) {
        GUID id = kSample;
        EXPECT_EQ(CLSIDFromString(text, &id), CO_E_CLASSSTRING) << std::wstring(text).size();
        EXPECT_EQ(id, GUID_NULL);
    }
}

TEST(Guid, NullTextReadsAsTheNullIdentifier) {
    GUID id = kSample;
    EXPECT_EQ(CLSIDFromString(nullptr, &id), S_OK);
    EXPECT_EQ(id, GUID_NULL);
    EXPECT_EQ(CLSIDFromString(kSampleText, nullptr), E_INVALIDARG);
}

TEST(Guid, TextComesBack) {
    EXPECT_TRUE(rc::check([](std::uint32_t a, std::uint16_t b, std::uint16_t c) {
        const GUID id = {a, b, c, {1, 2, 3, 4, 5, 6, 7, 255}};
        wchar_t text[kGuidTextSize];
        RC_ASSERT(StringFromGUID2(id, text, kGuidTextSize) == kGuidTextSize);
        GUID read;
        RC_ASSERT(CLSIDFromString(text, &read) == S_OK);
        RC_ASSERT(read == id);
    }));
}

TEST(Guid, NewIdentifiersAreRandomOfVersionFour) {
    std::unordered_set<GUID> ids;
    for (int i = 0; i < 1000; ++i) {
        GUID id = {};
        ASSERT_EQ(CoCreateGuid(&id), S_OK);
        EXPECT_EQ(id.Data3 >> 12, 4);
        EXPECT_EQ(id.Data4[0] >> 6, 2);
        ids.insert(id);
    }
    EXPECT_EQ(ids.size(), 1000u);
}

TEST(Guid, NewIdentifierNeedsAPlace) {
    EXPECT_EQ(CoCreateGuid(nullptr), E_INVALIDARG);
}

}  // namespace
