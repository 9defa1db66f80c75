#include <gtest/gtest.h>

#include <platform/files/CMemFile.h>
#include <platform/object/CDumpContext.h>
#include <platform/object/CObject.h>

#include <cstdint>
#include <limits>
#include <string>

namespace {

class Pen : public CObject {
    DECLARE_DYNAMIC(Pen)
    void Dump(CDumpContext& dc) const override { dc << "a pen, depth " << dc.GetDepth(); }
};
IMPLEMENT_DYNAMIC(Pen, CObject)

struct Dumped : testing::Test {
    CMemFile file;
    CDumpContext dc{&file};

    std::string Text() {
        std::string text(file.GetLength(), 0);
        file.SeekToBegin();
        file.Read(text.data(), static_cast<UINT>(text.size()));
        return text;
    }
};

}  // namespace

TEST_F(Dumped, TextAsItStands) {
    dc << "caf\xC3\xA9 %d\n";
    EXPECT_EQ(Text(), "caf\xC3\xA9 %d\n");
}

TEST_F(Dumped, NullText) {
    dc << static_cast<LPCTSTR>(nullptr);
    EXPECT_EQ(Text(), "(NULL)");
}

TEST_F(Dumped, Numbers) {
    dc << 'x' << ' ' << -5 << ' ' << 7u << ' ' << std::numeric_limits<LONGLONG>::min() << ' '
       << std::numeric_limits<ULONGLONG>::max() << ' ' << BYTE{200} << ' ' << true;
    EXPECT_EQ(Text(), "x -5 7 -9223372036854775808 18446744073709551615 200 1");
}

TEST_F(Dumped, RealNumbersWithTheShortestDigits) {
    dc << 0.1 << ' ' << 0.1F << ' ' << 1e307 << ' ' << -2.5;
    EXPECT_EQ(Text(), "0.1 0.1 1e+307 -2.5");
}

TEST_F(Dumped, Addresses) {
    dc << reinterpret_cast<const void*>(std::uintptr_t{0x7F001200}) << ' '
       << static_cast<const void*>(nullptr);
    EXPECT_EQ(Text(), "$7f001200 NULL");
}

TEST_F(Dumped, ObjectsWriteThemselves) {
    const Pen pen;
    dc.SetDepth(2);
    dc << pen << '\n' << &pen << '\n' << static_cast<const Pen*>(nullptr);
    EXPECT_EQ(Text(), "a pen, depth 2\na pen, depth 2\nNULL");
}

TEST_F(Dumped, BytesInLines) {
    const BYTE bytes[] = {0, 1, 0xAB, 0xFF, 16};
    dc.HexDump(">", bytes, 5, 2);
    EXPECT_EQ(Text(), "> 00 01\n> AB FF\n> 10\n");
}

TEST_F(Dumped, BytesWithAnOddWidthOrNone) {
    const BYTE bytes[] = {1, 2};
    dc.HexDump(nullptr, bytes, 2, 0);
    dc.HexDump("x", bytes, 0, 4);
    EXPECT_EQ(Text(), " 01\n 02\n");
}

TEST(CDumpContext, WithoutAFileWritesToStandardError) {
    testing::internal::CaptureStderr();
    afxDump << "to " << 2 << "\n";
    afxDump.Flush();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "to 2\n");
}

TEST(CDumpContext, BeginsAtDepthZero) {
    EXPECT_EQ(CDumpContext().GetDepth(), 0);
}
