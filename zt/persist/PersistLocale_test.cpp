#include <locale.h>
#include <zt/persist/detail/NumberText.h>
#include <zt/persist/Cursor_test.hpp>

#include <clocale>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace ZT {
namespace {

/// The process in a locale that writes a decimal comma. Such a locale need not be
/// installed: the numeric category of one is made in a temporary folder, in the
/// layout of the C library's compiled locales.
class DecimalComma {
public:
    DecimalComma() {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"})
            if (std::setlocale(LC_NUMERIC, name)) return;
        Make();
        setenv("LOCPATH", m_folder.c_str(), 1);
        std::setlocale(LC_NUMERIC, "zt_comma");
        unsetenv("LOCPATH");
    }
    ~DecimalComma() {
        std::setlocale(LC_NUMERIC, "C");
        if (!m_folder.empty()) std::filesystem::remove_all(m_folder);
    }
    DecimalComma(const DecimalComma&) = delete;
    DecimalComma& operator=(const DecimalComma&) = delete;

    bool IsSet() const { return std::string(std::localeconv()->decimal_point) == ","; }

private:
    void Make() {
        std::string folder = (std::filesystem::temp_directory_path() / "ztcommaXXXXXX").string();
        if (!mkdtemp(folder.data())) return;
        m_folder = folder;
        std::filesystem::create_directory(m_folder / "zt_comma");
        std::ofstream file(m_folder / "zt_comma" / "LC_NUMERIC", std::ios::binary);
        const auto word = [&](std::uint32_t w) {
            file.write(reinterpret_cast<const char*>(&w), sizeof w);
        };
        constexpr std::uint32_t kMagic = 0x20031115 ^ LC_NUMERIC, kFields = 6,
                                kText = 8 + 4 * kFields;
        word(kMagic);
        word(kFields);
        // Point, separator and grouping as bytes; point and separator as wide
        // characters; the name of the character set.
        for (const std::uint32_t offset : {0u, 2u, 3u, 4u, 8u, 12u}) word(kText + offset);
        file.write(",\0\0\0", 4);
        word(',');
        word(0);
        file.write("ANSI_X3.4-1968", 15);
    }

    std::filesystem::path m_folder;
};

struct PersistLocale : CursorTest {
    DecimalComma comma;

    void SetUp() override {
        if (!comma.IsSet()) GTEST_SKIP() << "this system takes no locale with a decimal comma";
        char text[16];
        std::snprintf(text, sizeof text, "%g", 0.5);
        ASSERT_STREQ(text, "0,5");
    }
};

TEST_F(PersistLocale, NumbersAreWrittenAndScannedWithAPoint) {
    char text[NumberText::kMaxLength];
    EXPECT_EQ(std::string(text, NumberText::WriteDouble(text, 0.5)), "0.5");
    double number = 0;
    float narrow = 0;
    for (const char* plain : {"1.25", "+1.25", " 1.25e", "0x1.4", "1.25e+"}) {
        number = narrow = 0;
        EXPECT_TRUE(NumberText::ScanDouble(plain, number));
        EXPECT_TRUE(NumberText::ScanFloat(plain, narrow));
        EXPECT_EQ(number, 1.25) << plain;
        EXPECT_EQ(narrow, 1.25f) << plain;
    }
    for (const char* text_with_comma : {"1,25", "+1,25"}) {
        EXPECT_TRUE(NumberText::ScanDouble(text_with_comma, number));
        EXPECT_EQ(number, 1) << text_with_comma;
    }
    EXPECT_STREQ(std::localeconv()->decimal_point, ",") << "the process's locale stays";
}

TEST_F(PersistLocale, ADocumentIsStoredAndLoadedAsInAnyOther) {
    Store();
    double values[] = {0.5, -1.25e10, 1e-7};
    float color[] = {0.25f, 0.5f, 0.75f};
    cursor->PersistData("D", values, 3, true);
    cursor->PersistColor(color);
    EXPECT_EQ(Xml(), "<R><D>0.5 -1.25e+10 1e-07</D><Co>0.25 0.5 0.75</Co></R>");
    Reload();
    double loaded[3] = {};
    float loaded_color[3] = {};
    cursor->PersistData("D", loaded, 3, true);
    cursor->PersistColor(loaded_color);
    EXPECT_THAT(loaded, testing::ElementsAreArray(values));
    EXPECT_THAT(loaded_color, testing::ElementsAreArray(color));
}

}  // namespace
}  // namespace ZT
