#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <platform/base/LastError.h>
#include <platform/modules/TestModules_test.hpp>

#include <dlfcn.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <string>

using testing::HasSubstr;

namespace {

// A module as long as the object lives.
class Loaded {
public:
    explicit Loaded(const std::string& path) : m_module(AfxLoadLibrary(path.c_str())) {
        EXPECT_NE(m_module, nullptr);
    }
    ~Loaded() {
        if (m_module) AfxFreeLibrary(m_module);
    }
    Loaded(const Loaded&) = delete;
    Loaded& operator=(const Loaded&) = delete;
    operator HMODULE() const { return m_module; }

private:
    HMODULE m_module;
};

int Shell(const std::string& command) {
    return std::system((command + " >/dev/null 2>&1").c_str());
}

// Loads a module past the platform and answers its resource.
std::string OnceLoaded(const std::string& path) {
    void* const handle = dlopen(path.c_str(), RTLD_NOW);
    const HMODULE module = GetModuleHandleA(path.c_str());
    SetLastError(0);
    const std::string bytes = InMemory(module, "TABLE", "Gauge");
    if (handle) dlclose(handle);
    return bytes == "(none)" ? "error " + std::to_string(GetLastError()) : bytes;
}

}  // namespace

using ModuleResource = TestModules;

TEST_F(ModuleResource, IsFoundByNameAndType) {
    const Loaded module(CopyWith("1 2 3"));
    const HRSRC place = FindResourceA(module, "Gauge", "TABLE");
    ASSERT_NE(place, nullptr);
    const HGLOBAL resource = LoadResource(module, place);
    ASSERT_NE(resource, nullptr);
    EXPECT_EQ(SizeofResource(module, place), 5u);
    EXPECT_EQ(std::memcmp(LockResource(resource), "1 2 3", 5), 0);
    EXPECT_EQ(FindResourceA(module, "Gauge", "TABLE"), place);
    EXPECT_EQ(FindResourceA(module, "gauge", "table"), place) << "case does not count";
}

TEST_F(ModuleResource, LiesAtAnAlignedAddress) {
    const std::string path = CopyWith("1");
    for (LPCSTR name : {"A", "B", "C"}) ASSERT_TRUE(Put(path, "T", name, "12345"));
    const Loaded module(path);
    for (LPCSTR name : {"A", "B", "C"}) {
        const HRSRC place = FindResourceA(module, name, "T");
        EXPECT_EQ(reinterpret_cast<UINT_PTR>(LockResource(LoadResource(module, place))) % 16, 0u);
    }
}

TEST_F(ModuleResource, OfSizeZeroHasAnAddress) {
    const Loaded module(CopyWith(""));
    const HRSRC place = FindResourceA(module, "Gauge", "TABLE");
    ASSERT_NE(place, nullptr);
    EXPECT_EQ(SizeofResource(module, place), 0u);
    EXPECT_NE(LockResource(LoadResource(module, place)), nullptr);
}

TEST_F(ModuleResource, IsTakenInEnglishOrElseInTheLowestLanguage) {
    const std::string path = CopyWith("english");
    ASSERT_TRUE(Put(path, "TABLE", "Gauge", "german", 7));
    ASSERT_TRUE(Put(path, "TABLE", "Screw", "french", 12));
    ASSERT_TRUE(Put(path, "TABLE", "Screw", "german", 7));
    const Loaded module(path);
    EXPECT_EQ(InMemory(module, "TABLE", "Gauge"), "english");
    EXPECT_EQ(InMemory(module, "TABLE", "Screw"), "german");
    EXPECT_NE(FindResourceExA(module, "TABLE", "Screw", 12), nullptr);
    EXPECT_NE(FindResourceExA(module, "TABLE", "Screw", 12),
              FindResourceExA(module, "TABLE", "Screw", 7));
    EXPECT_EQ(FindResourceExA(module, "TABLE", "Screw", 1033), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ENOENT});
}

TEST_F(ModuleResource, NumberIsTheTextOfItsDigits) {
    const std::string path = CopyWith("1");
    ASSERT_TRUE(Put(path, "#10", "#3", "numbered"));
    const Loaded module(path);
    EXPECT_EQ(InMemory(module, MAKEINTRESOURCEA(10), MAKEINTRESOURCEA(3)), "numbered");
    EXPECT_EQ(InMemory(module, "#10", "#3"), "numbered");
}

TEST_F(ModuleResource, ThatIsNotThereIsNotFound) {
    const Loaded module(CopyWith("1"));
    const auto error = [](HMODULE of, LPCSTR name, LPCSTR type) {
        SetLastError(0);
        return FindResourceA(of, name, type) ? -1 : static_cast<int>(GetLastError());
    };
    EXPECT_EQ(error(module, "Gaug", "TABLE"), ENOENT);
    EXPECT_EQ(error(module, "Gauge", "TABL"), ENOENT);
    EXPECT_EQ(error(module, "TABLE", "Gauge"), ENOENT);
    EXPECT_EQ(error(module, nullptr, "TABLE"), EINVAL);
    EXPECT_EQ(error(module, "Gauge", nullptr), EINVAL);
    EXPECT_EQ(error(nullptr, "Gauge", "TABLE"), ENOENT) << "null is this program";
    int nowhere = 0;
    EXPECT_EQ(error(reinterpret_cast<HMODULE>(&nowhere), "Gauge", "TABLE"), EINVAL);
    const Loaded other(Copy("other.so"));
    EXPECT_EQ(error(other, "Gauge", "TABLE"), ENOENT) << "no section at all";
}

TEST_F(ModuleResource, PlaceOfAnotherModuleIsRefused) {
    const Loaded module(CopyWith("1"));
    const Loaded other(CopyWith("2", "other.so"));
    const HRSRC place = FindResourceA(module, "Gauge", "TABLE");
    EXPECT_EQ(LoadResource(other, place), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{EINVAL});
    EXPECT_EQ(SizeofResource(other, place), 0u);
    EXPECT_EQ(LoadResource(module, nullptr), nullptr);
    EXPECT_EQ(SizeofResource(module, nullptr), 0u);
    EXPECT_EQ(LoadResource(nullptr, place), nullptr);
    EXPECT_EQ(LockResource(nullptr), nullptr);
}

TEST_F(ModuleResource, StaysAsItWasLoadedWhateverBecomesOfTheFile) {
    const std::string path = PlainWith("old");
    const Loaded module(path);
    // Nobody has looked anything up yet.
    ASSERT_EQ(InChild([&] { return Put(path, "TABLE", "Gauge", "new") ? 0 : 1; }), 0);
    EXPECT_EQ(InFile(path, "TABLE", "Gauge"), "new");
    EXPECT_EQ(InMemory(module, "TABLE", "Gauge"), "old");
    std::filesystem::remove(path);
    EXPECT_EQ(InMemory(module, "TABLE", "Gauge"), "old");
}

TEST_F(ModuleResource, PointerLivesAsLongAsTheModule) {
    const std::string path = CopyWith("old");
    const Loaded module(path);
    const HRSRC place = FindResourceA(module, "Gauge", "TABLE");
    const void* const bytes = LockResource(LoadResource(module, place));
    ASSERT_TRUE(Put(path, "TABLE", "Gauge", "new"));
    {
        // Something else comes and goes meanwhile.
        const Loaded other(CopyWith("2", "other.so"));
    }
    EXPECT_EQ(FindResourceA(module, "Gauge", "TABLE"), place);
    EXPECT_EQ(LockResource(LoadResource(module, place)), bytes);
    EXPECT_EQ(std::memcmp(bytes, "old", 3), 0);
}

TEST_F(ModuleResource, IsThatOfTheFileThatIsLoadedNow) {
    // Loaded and unloaded past the platform, at what is often the same address.
    const std::string path = CopyWith("1");
    for (const char* bytes : {"first", "second", "third"}) {
        ASSERT_TRUE(Put(path, "TABLE", "Gauge", bytes));
        void* const handle = dlopen(path.c_str(), RTLD_NOW);
        ASSERT_NE(handle, nullptr);
        EXPECT_EQ(InMemory(GetModuleHandleA(path.c_str()), "TABLE", "Gauge"), bytes);
        dlclose(handle);
    }
}

TEST_F(ModuleResource, OfAModuleThatMovedIsFound) {
    const std::string path = CopyWith("old");
    void* const handle = dlopen(path.c_str(), RTLD_NOW);
    ASSERT_NE(handle, nullptr);
    const HMODULE module = GetModuleHandleA(path.c_str());
    std::filesystem::rename(path, directory / "moved.so");
    CopyWith("new");
    EXPECT_EQ(InMemory(module, "TABLE", "Gauge"), "old");
    dlclose(handle);
}

TEST_F(ModuleResource, OfAnExtensionModuleIsThatOfItsStart) {
    const std::string path = CopyWith("old", "libbare.so", ZT_BARE_EXTENSION);
    void* const handle = dlopen(path.c_str(), RTLD_NOW);
    ASSERT_NE(handle, nullptr);
    const HMODULE module = GetModuleHandleA(path.c_str());
    ASSERT_EQ(InChild([&] { return Put(path, "TABLE", "Gauge", "new") ? 0 : 1; }), 0);
    EXPECT_EQ(InMemory(module, "TABLE", "Gauge"), "old");
    dlclose(handle);
}

TEST_F(ModuleResource, IsFoundByTheModulesOwnConstructors) {
    const Loaded module(CopyWith("1 2 3"));
    const auto size = reinterpret_cast<DWORD (*)()>(GetProcAddress(module, "SizeOfGaugeAtStart"));
    ASSERT_NE(size, nullptr);
    EXPECT_EQ(size(), 5u);
}

TEST_F(ModuleResource, OfTheProgramIsThatOfItsStart) {
    const std::string program = directory / "asking";
    std::filesystem::copy_file(ZT_ASKING_PROGRAM, program);
    ASSERT_TRUE(Put(program, "TABLE", "Gauge", "old"));
    const std::string other = directory / "other";
    std::filesystem::copy_file(program, other);
    ASSERT_TRUE(Put(other, "TABLE", "Gauge", "another one"));
    const auto run = [&](const std::string& command) {
        const std::string out = directory / "out";
        const std::string line = "'" + program + "' \"" + command + "\" >'" + out + "'";
        return std::system(line.c_str()) == 0 ? BytesOf(out) : "failure: " + BytesOf(out);
    };
    EXPECT_EQ(run("true"), "old");
    EXPECT_EQ(run("mv '" + other + "' '" + program + "'"), "old");
    EXPECT_EQ(run("true"), "another one");
    EXPECT_EQ(run("rm '" + program + "'"), "another one");
}

TEST_F(ModuleResource, IsKeptWhenTheProgramItselfReplacesTheFile) {
    const std::string path = PlainWith("old");
    void* const handle = dlopen(path.c_str(), RTLD_NOW);
    ASSERT_NE(handle, nullptr);
    const HMODULE module = GetModuleHandleA(path.c_str());
    // Nobody has looked anything up yet.
    ASSERT_TRUE(Put(path, "TABLE", "Gauge", "new"));
    EXPECT_EQ(InMemory(module, "TABLE", "Gauge"), "old");
    dlclose(handle);
}

TEST_F(ModuleResource, IsReadAnewFromAFileThatWasWrittenToBetweenTwoLoads) {
    const std::string first = BytesOf(PlainWith("first", "first"));
    const std::string other = BytesOf(PlainWith("other", "other"));
    const std::string longer = BytesOf(PlainWith(std::string(9000, 'x'), "longer"));
    const std::string none = BytesOf(ZT_PLAIN_MODULE);
    const std::string without = "error " + std::to_string(ENOENT);
    ASSERT_EQ(first.size(), other.size());
    const std::string path = directory / "plain.so";
    const auto written = [&](const std::string& bytes) {
        MakeFile(path, bytes);
        return OnceLoaded(path);
    };
    EXPECT_EQ(written(none), without);
    EXPECT_EQ(written(first), "first");
    EXPECT_EQ(written(other), "other") << "as long as the one before";
    EXPECT_TRUE(written(longer) == std::string(9000, 'x'));
    EXPECT_EQ(written(first), "first") << "the file is shorter";
    EXPECT_EQ(written(none), without);
}

TEST_F(ModuleResource, PlaceStaysWhenItsFileIsTouched) {
    const std::string path = CopyWith("bytes");
    const Loaded module(path);
    const HRSRC place = FindResourceA(module, "Gauge", "TABLE");
    ASSERT_EQ(Shell("touch '" + path + "'"), 0);
    { const Loaded other(CopyWith("2", "other.so")); }
    EXPECT_EQ(SizeofResource(module, place), 5u);
}

TEST_F(ModuleResource, PlaceStaysWhenItsFileGrowsInItsPlace) {
    const std::string path = CopyWith("bytes");
    const Loaded module(path);
    const HRSRC place = FindResourceA(module, "Gauge", "TABLE");
    const void* const bytes = LockResource(LoadResource(module, place));
    for (int i = 0; i < 3; ++i) {
        std::ofstream(path, std::ios::app) << 'x';
        { const Loaded other(CopyWith("2", "other" + std::to_string(i) + ".so")); }
        EXPECT_EQ(SizeofResource(module, place), 5u) << i;
        EXPECT_EQ(LockResource(LoadResource(module, place)), bytes) << i;
        EXPECT_EQ(InMemory(module, "TABLE", "Gauge"), "bytes") << i;
    }
    const Loaded other(CopyWith("2", "other.so"));
    EXPECT_EQ(SizeofResource(other, place), 0u) << "a place of the one is none of the other";
}

TEST_F(ModuleResource, PlaceIsNoneWhenItsFileHasBecomeTooShortForIt) {
    const std::string path = PlainWith("bytes");
    const Loaded module(path);
    const HRSRC place = FindResourceA(module, "Gauge", "TABLE");
    const std::string without = BytesOf(ZT_PLAIN_MODULE);
    ASSERT_LT(without.size(), std::filesystem::file_size(path));
    std::filesystem::resize_file(path, without.size());
    { const Loaded other(CopyWith("2", "other.so")); }
    SetLastError(0);
    EXPECT_EQ(SizeofResource(module, place), 0u);
    EXPECT_EQ(GetLastError(), DWORD{EINVAL});
}

TEST_F(ModuleResource, OfAFileThatWasReplacedUnseenIsNotTakenForTheNewOne) {
    const std::string path = PlainWith("old");
    void* const handle = dlopen(path.c_str(), RTLD_NOW);
    ASSERT_NE(handle, nullptr);
    const HMODULE module = GetModuleHandleA(path.c_str());
    ASSERT_EQ(InChild([&] { return Put(path, "TABLE", "Gauge", "new") ? 0 : 1; }), 0);
    EXPECT_EQ(FindResourceA(module, "Gauge", "TABLE"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ESTALE});
    dlclose(handle);
}

TEST_F(ModuleResource, InAFileWithTheMarkOfRemovalInItsNameIsFound) {
    const std::string path = CopyWith("bytes", "nail (deleted)");
    const Loaded module(path);
    EXPECT_EQ(InMemory(module, "TABLE", "Gauge"), "bytes");
}

TEST_F(ModuleResource, InAFolderWithAnyNameIsFound) {
    const std::string folder = directory / "a b\n\xC3\xA9";
    std::filesystem::create_directory(folder);
    const std::string path = CopyWith("bytes", "a b\n\xC3\xA9/libnail.so");
    const Loaded module(path);
    EXPECT_EQ(InMemory(module, "TABLE", "Gauge"), "bytes");
}

TEST_F(ModuleResource, SurvivesStrip) {
    const std::string path = CopyWith("bytes");
    const auto size = std::filesystem::file_size(path);
    ASSERT_EQ(Shell("strip '" + path + "'"), 0);
    EXPECT_LT(std::filesystem::file_size(path), size);
    {
        const Loaded module(path);
        EXPECT_EQ(InMemory(module, "TABLE", "Gauge"), "bytes");
        const HRSRC place = FindResourceA(module, "Gauge", "TABLE");
        EXPECT_EQ(reinterpret_cast<UINT_PTR>(LoadResource(module, place)) % 16, 0u);
    }
    EXPECT_TRUE(Put(path, "TABLE", "Gauge", "more bytes"));
    const Loaded module(path);
    EXPECT_EQ(InMemory(module, "TABLE", "Gauge"), "more bytes");
}

// That program drops all that is not loaded, unless it is told to keep it.
TEST_F(ModuleResource, SurvivesTheOtherStripOnlyWhenTold) {
    if (Shell("llvm-strip --version") != 0) GTEST_SKIP() << "no llvm-strip here";
    const std::string path = CopyWith("bytes");
    const std::string kept = directory / "kept.so";
    const std::string lost = directory / "lost.so";
    const std::string strip = "llvm-strip --strip-all '" + path + "' -o ";
    ASSERT_EQ(Shell(strip + "'" + kept + "' --keep-section=.ztrsrc"), 0);
    EXPECT_EQ(InFile(kept, "TABLE", "Gauge"), "bytes");
    EXPECT_EQ(InMemory(Loaded(kept), "TABLE", "Gauge"), "bytes");
    ASSERT_EQ(Shell(strip + "'" + lost + "'"), 0);
    ResourceFile file;
    EXPECT_TRUE(file.Open(lost.c_str()));
    EXPECT_FALSE(file.HasSection());
}

TEST_F(ModuleResource, IsSeenByTheToolsForObjectFiles) {
    const std::string path = CopyWith("bytes");
    const std::string out = directory / "out";
    ASSERT_EQ(std::system(("readelf -SW '" + path + "' >'" + out + "' 2>&1").c_str()), 0);
    EXPECT_THAT(BytesOf(out), HasSubstr("] .ztrsrc           PROGBITS        0000000000000000"));
    EXPECT_THAT(BytesOf(out), Not(HasSubstr("Warning")));
    ASSERT_EQ(Shell("objcopy --dump-section '.ztrsrc=" + out + "' '" + path + "' /dev/null"), 0);
    EXPECT_THAT(BytesOf(out), testing::StartsWith("ZTRSRC"));
    EXPECT_THAT(BytesOf(out), HasSubstr("bytes"));
}

TEST_F(ModuleResource, InADamagedSectionIsNotFound) {
    const std::string path = CopyWith("bytes");
    std::string bytes = BytesOf(path);
    bytes[bytes.find("ZTRSRC") + 8] = '\x7F';
    MakeFile(path, bytes);
    const Loaded module(path);
    EXPECT_EQ(FindResourceA(module, "Gauge", "TABLE"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{EBADMSG});
    EXPECT_NE(GetProcAddress(module, "CauseRaisedBy"), nullptr) << "the module itself is well";
}

TEST_F(ModuleResource, InAModuleThatIsCutOffIsNotFoundOrTheModuleIsNotLoaded) {
    const std::string whole = BytesOf(CopyWith(std::string(3000, 'x')));
    const std::string path = directory / "cut.so";
    std::vector<std::size_t> sizes = {0, 3, 4, 16, 63, 64, whole.size() - 1, whole.size() - 3000};
    for (std::size_t size = 64; size < whole.size(); size += whole.size() / 61)
        sizes.push_back(size);
    int loaded = 0;
    for (const std::size_t size : sizes) {
        MakeFile(path, whole.substr(0, size));
        const HMODULE module = LoadLibraryExA(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
        if (!module) {
            EXPECT_EQ(GetLastError(), DWORD{ENOEXEC}) << size;
            continue;
        }
        ++loaded;
        EXPECT_EQ(FindResourceA(module, "Gauge", "TABLE"), nullptr) << size;
        EXPECT_TRUE(FreeLibrary(module));
        std::filesystem::remove(path);
    }
    EXPECT_GT(loaded, 0) << "one of which only the resources are cut off loads";
}
