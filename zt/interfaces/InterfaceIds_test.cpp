#include <gtest/gtest.h>
#include <zt/interfaces/IIterator64.h>
#include <zt/interfaces/IList64.h>
#include <zt/interfaces/IObject_ZT.h>
#include <zt/interfaces/InterfaceIds.h>
#include <zt/interfaces/ResultCodes.h>

#include <string>
#include <unordered_set>

namespace ZT {
namespace {

struct Named {
    const IID& id;
    const char* text;
};

const Named kAll[] = {
    {IID_IUnknown, "{00000000-0000-0000-C000-000000000046}"},
    {IID_NativeObject, "{6A7F5542-C2BD-480D-97B1-B90F2129774F}"},
    {IID_IObject_ZT, "{27AECDF5-2BCD-4E5A-B732-DA832B6F1209}"},
    {IID_ITypeBasic_ZT, "{43F27117-E934-49DF-A920-2F778FB1C83E}"},
    {IID_IDataContext, "{7608F844-1085-4208-ABCB-BAE36AF4DDB1}"},
    {IID_IArray2, "{183F9350-6DE4-4546-8117-0E0E81242D26}"},
    {IID_IArray_PW, "{465792D6-D9B7-4437-8EB4-035ABE0FC9CD}"},
    {IID_IArrayNum, "{1D93969E-4DA3-4156-A48C-9A03F0FFDDA6}"},
    {IID_IList64, "{06AF987B-6631-43ED-A181-FDC3FE7F0120}"},
    {IID_IIterator64, "{F7F910F4-BC16-4CF3-BBE6-0D60307F1EA4}"},
    {IID_IRefMap_ZT, "{C765B1FC-CB56-4C37-BADB-C8A9A90A05B9}"},
    {IID_IBlob, "{EC1DE31C-1F1B-4022-A0E3-7ECFDA2231BA}"},
    {IID_IRange, "{B55E80ED-A2CF-45FA-832B-4D934B8581FD}"},
    {IID_IHXFont, "{30471922-74DA-4671-8B3C-EE1537F06F98}"},
    {IID_IText, "{4968C48B-2DBE-4111-81C7-6CD0C83DE3F0}"},
    {IID_IDictionary_ZT, "{4DC98E26-A609-4861-85C5-31E7EA4823C5}"},
};

std::string Text(const IID& id) {
    OLECHAR wide[kGuidTextSize];
    StringFromGUID2(id, wide, kGuidTextSize);
    return std::string(wide, wide + kGuidTextSize - 1);
}

TEST(InterfaceIds, StandAsPublished) {
    for (const Named& named : kAll) EXPECT_EQ(Text(named.id), named.text);
}

TEST(InterfaceIds, AllDiffer) {
    std::unordered_set<IID> seen;
    for (const Named& named : kAll) EXPECT_TRUE(seen.insert(named.id).second) << named.text;
}

TEST(InterfaceIds, InterfacesTellTheirOwn) {
    EXPECT_EQ(Text(InterfaceIdOf<IObject_ZT>::value), Text(IID_IObject_ZT));
    EXPECT_EQ(Text(InterfaceIdOf<IList64>::value), Text(IID_IList64));
    EXPECT_EQ(Text(InterfaceIdOf<IIterator64>::value), Text(IID_IIterator64));
}

TEST(ResultCodes, FailuresHaveTheirBits) {
    EXPECT_EQ(static_cast<std::uint32_t>(DISP_E_PARAMNOTOPTIONAL), 0x8002000Fu);
    EXPECT_EQ(static_cast<std::uint32_t>(DISP_E_BADINDEX), 0x8002000Bu);
    EXPECT_EQ(static_cast<std::uint32_t>(E_UNEXPECTED), 0x8000FFFFu);
    EXPECT_EQ(static_cast<std::uint32_t>(E_NOINTERFACE), 0x80004002u);
    EXPECT_EQ(static_cast<std::uint32_t>(E_OUTOFMEMORY), 0x8007000Eu);
}

TEST(ResultCodes, ThreePlainNumbersPassForSuccess) {
    EXPECT_EQ(ERROR_CALL_NOT_IMPLEMENTED, 120);
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, 2);
    EXPECT_EQ(ERROR_INVALID_STATE, 5023);
    EXPECT_TRUE(SUCCEEDED(ERROR_CALL_NOT_IMPLEMENTED));
    EXPECT_TRUE(SUCCEEDED(ERROR_FILE_NOT_FOUND));
    EXPECT_TRUE(SUCCEEDED(ERROR_INVALID_STATE));
}

}  // namespace
}  // namespace ZT
