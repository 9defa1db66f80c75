#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <platform/modules/TestModules_test.hpp>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string FailureOf(const std::string& path) {
    ResourceFile file;
    return file.Open(path.c_str()) ? "" : file.Failure().GetString();
}

}  // namespace

using ResourceFileOf = TestModules;

TEST(ResourceFile, IsEmptyAtFirst) {
    const ResourceFile file;
    EXPECT_FALSE(file.HasSection());
    EXPECT_EQ(file.GetCount(), 0u);
    EXPECT_EQ(file.GetAt(0), std::nullopt);
    EXPECT_EQ(file.Find("T", "n"), std::nullopt);
    EXPECT_TRUE(file.Failure().IsEmpty());
}

TEST_F(ResourceFileOf, ModuleWithoutASectionHasNone) {
    ResourceFile file;
    EXPECT_TRUE(file.Open(Copy().c_str()));
    EXPECT_FALSE(file.HasSection());
    EXPECT_EQ(file.GetCount(), 0u);
}

TEST_F(ResourceFileOf, ModuleListsItsResourcesInOrder) {
    const std::string path = CopyWith("table");
    ASSERT_TRUE(Put(path, "ICON", "Nail", "icon"));
    ASSERT_TRUE(Put(path, "ICON", "Nail", "german icon", 7));
    ResourceFile file;
    ASSERT_TRUE(file.Open(path.c_str()));
    EXPECT_TRUE(file.HasSection());
    ASSERT_EQ(file.GetCount(), 3u);
    EXPECT_EQ(file.GetAt(0)->language, 7);
    EXPECT_EQ(file.GetAt(0)->bytes.size(), 11u);
    EXPECT_EQ(file.GetAt(1)->name, "Nail");
    EXPECT_EQ(file.GetAt(1)->language, 1033);
    EXPECT_EQ(file.GetAt(2)->type, "TABLE");
    EXPECT_EQ(file.GetAt(3), std::nullopt);
}

TEST_F(ResourceFileOf, ModuleFindsAResource) {
    const std::string path = CopyWith("table");
    EXPECT_EQ(InFile(path, "table", "gauge"), "table");
    EXPECT_EQ(InFile(path, "TABLE", "Gauge", 7), "(none)");
}

TEST_F(ResourceFileOf, ModuleFindsEnglishOrElseTheLowestLanguage) {
    const std::string path = CopyWith("english");
    ASSERT_TRUE(Put(path, "TABLE", "Gauge", "german", 7));
    ASSERT_TRUE(Put(path, "TABLE", "Screw", "french", 12));
    ASSERT_TRUE(Put(path, "TABLE", "Screw", "german", 7));
    ResourceFile file;
    ASSERT_TRUE(file.Open(path.c_str()));
    EXPECT_EQ(file.FindAny("TABLE", "gauge")->language, 1033);
    EXPECT_EQ(file.FindAny("TABLE", "Screw")->language, 7);
    EXPECT_EQ(file.FindAny("TABLE", "Nail"), std::nullopt);
}

TEST_F(ResourceFileOf, ModuleThatIsReplacedStaysAsItWasOpened) {
    const std::string path = CopyWith("old");
    ResourceFile file;
    ASSERT_TRUE(file.Open(path.c_str()));
    ASSERT_TRUE(Put(path, "TABLE", "Gauge", "new"));
    EXPECT_EQ(file.GetAt(0)->bytes[0], 'o');
    ASSERT_TRUE(file.Open(path.c_str()));
    EXPECT_EQ(file.GetAt(0)->bytes[0], 'n');
}

TEST_F(ResourceFileOf, FailureSaysWhy) {
    EXPECT_EQ(FailureOf(directory / "no"), "No such file or directory");
    EXPECT_EQ(FailureOf(directory.Path()), "Is a directory");
    MakeFile(directory / "text", "some text");
    EXPECT_EQ(FailureOf(directory / "text"), "no module, so it can have no section .ztrsrc");
    const std::string path = CopyWith("table");
    const std::string whole = BytesOf(path);
    MakeFile(path, whole.substr(0, whole.size() - 1));
    EXPECT_THAT(FailureOf(path), StartsWith("section .ztrsrc is damaged: it, or the table"));
    std::string bad = whole;
    bad[bad.find("ZTRSRC") + 6] = 9;
    MakeFile(path, bad);
    EXPECT_THAT(FailureOf(path), HasSubstr(".ztrsrc is damaged: it is of an unknown version"));
    ResourceFile file;
    EXPECT_FALSE(file.Open(nullptr));
    EXPECT_EQ(file.GetCount(), 0u);
}

// Whatever a byte of the file's last part says, it is read or refused without harm.
TEST_F(ResourceFileOf, DamagedModuleDoesNoHarm) {
    const std::string whole = BytesOf(CopyWith("table"));
    std::size_t refused = 0;
    for (std::size_t at = 0; at < whole.size(); at = at == 63 ? whole.size() - 2500 : at + 1) {
        std::string bytes = whole;
        bytes[at] = static_cast<char>(~bytes[at]);
        ResourceFile file;
        const bool read = file.Read({reinterpret_cast<const BYTE*>(bytes.data()), bytes.size()});
        refused += !read;
        for (DWORD i = 0; i < file.GetCount(); ++i) {
            const auto record = file.GetAt(i);
            ASSERT_TRUE(record.has_value());
            EXPECT_LE(record->bytes.size(), bytes.size());
        }
        EXPECT_EQ(read, file.Failure().IsEmpty() != FALSE);
    }
    EXPECT_GT(refused, 30u);
}
