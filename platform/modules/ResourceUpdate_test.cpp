#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <platform/base/LastError.h>
#include <platform/modules/TestModules_test.hpp>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <random>
#include <thread>
#include <vector>

using testing::HasSubstr;

namespace {

std::string Repeated(char letter, std::size_t count) {
    return std::string(count, letter);
}

// Where the last segment of a module ends in its file.
std::size_t EndOfSegments(const std::string& bytes) {
    const Elf64_Ehdr head = HeadOf(bytes);
    std::size_t end = head.e_phoff + head.e_phnum * sizeof(Elf64_Phdr);
    for (std::size_t i = 0; i < head.e_phnum; ++i) {
        Elf64_Phdr segment;
        std::memcpy(&segment, bytes.data() + head.e_phoff + i * sizeof segment, sizeof segment);
        end = std::max<std::size_t>(end, segment.p_offset + segment.p_filesz);
    }
    return end;
}

// Whether the module loads and its functions run.
bool Runs(const std::string& path) {
    const HMODULE module = AfxLoadLibrary(path.c_str());
    const auto raised =
        reinterpret_cast<INT (*)(void (*)())>(GetProcAddress(module, "CauseRaisedBy"));
    const bool runs = raised && raised([] {}) == 0;
    AfxFreeLibrary(module);
    return runs;
}

}  // namespace

using ResourceUpdate = TestModules;

TEST_F(ResourceUpdate, AddsAResource) {
    const std::string path = Copy();
    EXPECT_EQ(InFile(path, "TABLE", "Gauge"), "(none)");
    EXPECT_TRUE(Put(path, "TABLE", "Gauge", "1 2 3"));
    EXPECT_EQ(InFile(path, "TABLE", "Gauge"), "1 2 3");
    EXPECT_EQ(Files(), 1);
}

TEST_F(ResourceUpdate, LeavesTheOthers) {
    const std::string path = CopyWith("table");
    EXPECT_TRUE(Put(path, "TABLE", "Gauge", "german table", 7));
    EXPECT_TRUE(Put(path, "ICON", "Gauge", "icon"));
    EXPECT_EQ(InFile(path, "TABLE", "Gauge"), "table");
    EXPECT_EQ(InFile(path, "TABLE", "Gauge", 7), "german table");
    EXPECT_EQ(InFile(path, "ICON", "Gauge"), "icon");
}

TEST_F(ResourceUpdate, ReplacesTheResourceOfThisAddress) {
    const std::string path = CopyWith("old");
    EXPECT_TRUE(Put(path, "table", "GAUGE", "new and longer"));
    EXPECT_EQ(InFile(path, "TABLE", "Gauge"), "new and longer");
    ResourceFile file;
    ASSERT_TRUE(file.Open(path.c_str()));
    EXPECT_EQ(file.GetCount(), 1u);
    EXPECT_EQ(file.GetAt(0)->name, "GAUGE");
}

TEST_F(ResourceUpdate, MakesSeveralChangesAtOnce) {
    const std::string path = CopyWith("goes");
    const HANDLE update = BeginUpdateResourceA(path.c_str(), FALSE);
    ASSERT_NE(update, nullptr);
    EXPECT_TRUE(UpdateResourceA(update, "B", "b", 1033, "bb", 2));
    EXPECT_TRUE(UpdateResourceA(update, "A", "a", 1033, "a", 1));
    EXPECT_TRUE(UpdateResourceA(update, "A", "a", 1033, "aa", 2));
    EXPECT_TRUE(UpdateResourceA(update, "TABLE", "Gauge", 1033, nullptr, 0));
    EXPECT_EQ(InFile(path, "TABLE", "Gauge"), "goes") << "nothing is written before the end";
    EXPECT_TRUE(EndUpdateResourceA(update, FALSE));
    EXPECT_EQ(InFile(path, "A", "a"), "aa");
    EXPECT_EQ(InFile(path, "B", "b"), "bb");
    EXPECT_EQ(InFile(path, "TABLE", "Gauge"), "(none)");
}

TEST_F(ResourceUpdate, CopiesTheBytesAtOnce) {
    const std::string path = Copy();
    const HANDLE update = BeginUpdateResourceA(path.c_str(), FALSE);
    char bytes[] = "then";
    EXPECT_TRUE(UpdateResourceA(update, "T", "n", 1033, bytes, 4));
    std::memcpy(bytes, "late", 4);
    EXPECT_TRUE(EndUpdateResourceA(update, FALSE));
    EXPECT_EQ(InFile(path, "T", "n"), "then");
}

TEST_F(ResourceUpdate, CanDropWhatWasThere) {
    const std::string path = CopyWith("goes");
    const HANDLE update = BeginUpdateResourceA(path.c_str(), TRUE);
    EXPECT_TRUE(UpdateResourceA(update, "A", "a", 1033, "stays", 5));
    EXPECT_TRUE(EndUpdateResourceA(update, FALSE));
    EXPECT_EQ(InFile(path, "TABLE", "Gauge"), "(none)");
    EXPECT_EQ(InFile(path, "A", "a"), "stays");
}

TEST_F(ResourceUpdate, CanBeDiscarded) {
    const std::string path = CopyWith("stays");
    const std::string before = BytesOf(path);
    const HANDLE update = BeginUpdateResourceA(path.c_str(), TRUE);
    EXPECT_TRUE(UpdateResourceA(update, "A", "a", 1033, "never", 5));
    EXPECT_TRUE(EndUpdateResourceA(update, TRUE));
    EXPECT_TRUE(BytesOf(path) == before);
}

TEST_F(ResourceUpdate, KeepsAResourceWithoutBytes) {
    const std::string path = Copy();
    EXPECT_TRUE(Put(path, "T", "empty", ""));
    EXPECT_EQ(InFile(path, "T", "empty"), "");
}

TEST_F(ResourceUpdate, TakesTheLastResourceAway) {
    const std::string path = CopyWith("goes");
    const HANDLE update = BeginUpdateResourceA(path.c_str(), FALSE);
    EXPECT_TRUE(UpdateResourceA(update, "TABLE", "Gauge", 1033, nullptr, 0));
    EXPECT_TRUE(EndUpdateResourceA(update, FALSE));
    ResourceFile file;
    EXPECT_TRUE(file.Open(path.c_str()));
    EXPECT_EQ(file.GetCount(), 0u);
    EXPECT_TRUE(Runs(path));
}

TEST_F(ResourceUpdate, NumbersStandForTheirText) {
    const std::string path = Copy();
    EXPECT_TRUE(Put(path, MAKEINTRESOURCEA(10), MAKEINTRESOURCEA(65535), "numbered"));
    EXPECT_EQ(InFile(path, "#10", "#65535"), "numbered");
}

TEST_F(ResourceUpdate, LargeResourceComesBack) {
    const std::string path = Copy();
    std::string bytes(3'000'001, 0);
    std::mt19937 random(1);
    for (char& byte : bytes) byte = static_cast<char>(random());
    EXPECT_TRUE(Put(path, "T", "large", bytes));
    EXPECT_TRUE(InFile(path, "T", "large") == bytes);
}

TEST_F(ResourceUpdate, LeavesAllThatIsLoadedInItsPlace) {
    const std::string path = Copy();
    const std::string before = BytesOf(path);
    EXPECT_TRUE(Put(path, "T", "n", Repeated('x', 5000)));
    const std::string after = BytesOf(path);
    const std::size_t end = EndOfSegments(before);
    EXPECT_EQ(EndOfSegments(after), end);
    EXPECT_TRUE(before.compare(64, end - 64, after, 64, end - 64) == 0);
    // Of the head only what tells of the table of sections has changed.
    Elf64_Ehdr expected = HeadOf(before);
    expected.e_shoff = HeadOf(after).e_shoff;
    expected.e_shnum = static_cast<Elf64_Half>(expected.e_shnum + 1);
    EXPECT_EQ(std::memcmp(&expected, after.data(), sizeof expected), 0);
    EXPECT_TRUE(Runs(path));
}

TEST_F(ResourceUpdate, DoesNotMakeTheFileGrowEachTime) {
    const std::string path = CopyWith(Repeated('a', 1000));
    const auto size = std::filesystem::file_size(path);
    EXPECT_LT(size, std::filesystem::file_size(ZT_TEST_MODULE) + 1000 + 500);
    for (int i = 0; i < 5; ++i) EXPECT_TRUE(Put(path, "TABLE", "Gauge", Repeated('b', 1000)));
    EXPECT_EQ(std::filesystem::file_size(path), size);
    EXPECT_TRUE(Put(path, "TABLE", "Gauge", Repeated('b', 200)));
    EXPECT_EQ(std::filesystem::file_size(path), size - 800);
}

TEST_F(ResourceUpdate, KeepsWhatStandsBehindTheModule) {
    const std::string path = Copy();
    MakeFile(path, BytesOf(path) + "a trailer");
    for (const char* bytes : {"first", "second"}) {
        EXPECT_TRUE(Put(path, "T", "n", bytes));
        EXPECT_EQ(InFile(path, "T", "n"), bytes);
        EXPECT_THAT(BytesOf(path), HasSubstr("a trailer"));
    }
    EXPECT_TRUE(Runs(path));
}

TEST_F(ResourceUpdate, DoesNotMakeAFileWithSomethingBehindTheModuleGrowEachTime) {
    const std::string path = Copy();
    // The zeros at its end and in it are part of it.
    const std::string trailer = "a trailer" + Repeated('\0', 40) + "ends" + Repeated('\0', 5);
    MakeFile(path, BytesOf(path) + trailer);
    EXPECT_TRUE(Put(path, "T", "n", Repeated('x', 1000)));
    const auto size = std::filesystem::file_size(path);
    for (int i = 0; i < 5; ++i) EXPECT_TRUE(Put(path, "T", "n", Repeated('x', 1000)));
    EXPECT_EQ(std::filesystem::file_size(path), size);
    EXPECT_THAT(BytesOf(path), HasSubstr(Repeated('x', 1000)));
    const HANDLE update = BeginUpdateResourceA(path.c_str(), FALSE);
    EXPECT_TRUE(UpdateResourceA(update, "T", "n", 1033, nullptr, 0));
    EXPECT_TRUE(EndUpdateResourceA(update, FALSE));
    EXPECT_THAT(BytesOf(path), Not(HasSubstr("xxx"))) << "what was taken away is gone";
    EXPECT_THAT(BytesOf(path), HasSubstr(trailer));
    EXPECT_LT(std::filesystem::file_size(path), size - 900);
    EXPECT_TRUE(Runs(path));
}

TEST_F(ResourceUpdate, LeavesDeadBytesBeforeALateTrailerOnce) {
    const std::string path = Copy();
    EXPECT_TRUE(Put(path, "T", "n", Repeated('d', 1000)));
    MakeFile(path, BytesOf(path) + "a trailer");
    EXPECT_TRUE(Put(path, "T", "n", Repeated('x', 1000)));
    const auto size = std::filesystem::file_size(path);
    EXPECT_THAT(BytesOf(path), HasSubstr(Repeated('d', 1000))) << "they stand before the trailer";
    for (const char letter : {'y', 'z'}) {
        EXPECT_TRUE(Put(path, "T", "n", Repeated(letter, 1000)));
        EXPECT_EQ(std::filesystem::file_size(path), size);
    }
    const std::string bytes = BytesOf(path);
    EXPECT_THAT(bytes, HasSubstr("a trailer"));
    EXPECT_THAT(bytes, HasSubstr(Repeated('z', 1000)));
    EXPECT_THAT(bytes, Not(testing::AnyOf(HasSubstr("xxxx"), HasSubstr("yyyy"))));
    EXPECT_TRUE(Runs(path));
}

TEST_F(ResourceUpdate, GivesAModuleWithoutSectionsItsFirst) {
    const std::string path = Copy();
    std::string bytes = BytesOf(path);
    Elf64_Ehdr head = HeadOf(bytes);
    head.e_shoff = 0;
    head.e_shnum = head.e_shstrndx = 0;
    std::memcpy(bytes.data(), &head, sizeof head);
    MakeFile(path, bytes);
    EXPECT_TRUE(Put(path, "T", "n", "first"));
    EXPECT_TRUE(Put(path, "T", "n", "second"));
    EXPECT_EQ(InFile(path, "T", "n"), "second");
    EXPECT_TRUE(Runs(path));
}

TEST_F(ResourceUpdate, KeepsTheMode) {
    const std::string path = Copy();
    for (const mode_t mode : {0700u, 0640u, 0755u}) {
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        EXPECT_TRUE(Put(path, "T", "n", "bytes"));
        struct stat status {};
        ASSERT_EQ(stat(path.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, mode);
    }
}

TEST_F(ResourceUpdate, KeepsTheOwner) {
    const std::string path = Copy();
    if (chown(path.c_str(), 12345, 23456) != 0) GTEST_SKIP() << "nobody may give files away here";
    EXPECT_TRUE(Put(path, "T", "n", "bytes"));
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 12345u);
    EXPECT_EQ(status.st_gid, 23456u);
}

TEST_F(ResourceUpdate, LeavesASymbolicLinkOne) {
    const std::string path = Copy("libnail.so.5");
    const std::string link = directory / "libnail.so";
    std::filesystem::create_symlink("libnail.so.5", link);
    EXPECT_TRUE(Put(link, "T", "n", "bytes"));
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(InFile(path, "T", "n"), "bytes");
}

TEST_F(ResourceUpdate, ByThePathOfAnOpenFileReplacesItToo) {
    const std::string path = CopyWith("old");
    const std::string before = BytesOf(path);
    const int file = open(path.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(file, 0);
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    EXPECT_TRUE(Put(link, "TABLE", "Gauge", "new"));
    EXPECT_EQ(InFile(path, "TABLE", "Gauge"), "new");
    EXPECT_TRUE(BytesOf(link) == before) << "what is open is the old file";
    close(file);
}

TEST_F(ResourceUpdate, OfALoadedModuleChangesTheFileOnly) {
    const std::string path = CopyWith("old");
    const HMODULE module = AfxLoadLibrary(path.c_str());
    ASSERT_NE(module, nullptr);
    EXPECT_TRUE(Put(path, "TABLE", "Gauge", "new"));
    EXPECT_EQ(InMemory(module, "TABLE", "Gauge"), "old");
    EXPECT_EQ(InFile(path, "TABLE", "Gauge"), "new");
    EXPECT_TRUE(AfxFreeLibrary(module));
    const HMODULE again = AfxLoadLibrary(path.c_str());
    EXPECT_EQ(InMemory(again, "TABLE", "Gauge"), "new");
    EXPECT_TRUE(AfxFreeLibrary(again));
}

TEST_F(ResourceUpdate, KnowsItsFileInAnotherDirectory) {
    const std::string path = CopyWith("old");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(directory.Path());
    const HANDLE update = BeginUpdateResourceA("libnail.so", FALSE);
    std::filesystem::current_path(before);
    EXPECT_TRUE(UpdateResourceA(update, "TABLE", "Gauge", 1033, "new", 3));
    EXPECT_TRUE(EndUpdateResourceA(update, FALSE));
    EXPECT_EQ(InFile(path, "TABLE", "Gauge"), "new");
}

// A module of 32 bits for a machine that puts the highest byte first: a head, and one
// segment, which holds both.
TEST_F(ResourceUpdate, ChangesAModuleOfAnotherMachine) {
    std::string bytes = {0x7F, 'E', 'L', 'F', ELFCLASS32, ELFDATA2MSB, EV_CURRENT};
    bytes.resize(16);
    const auto put = [&bytes](std::initializer_list<unsigned> words) {
        for (const unsigned word : words)
            for (const int shift : {24, 16, 8, 0}) bytes += static_cast<char>(word >> shift & 0xFF);
    };
    put({ET_DYN << 16 | EM_MIPS, 1, 0, 52, 0, 0, 52 << 16 | 32, 1 << 16, 0});
    ASSERT_EQ(bytes.size(), 52u);
    put({PT_LOAD, 0, 0, 0, 84, 84, PF_R, 4096});
    const std::string path = directory / "foreign.so";
    MakeFile(path, bytes);
    EXPECT_TRUE(Put(path, "T", "n", "first"));
    EXPECT_TRUE(Put(path, "T", "m", "second"));
    EXPECT_EQ(InFile(path, "T", "n"), "first");
    EXPECT_EQ(InFile(path, "T", "m"), "second");
    EXPECT_EQ(BytesOf(path).substr(52, 32), bytes.substr(52));
}

namespace {

// A module of a segment for its headers, and of one that has no bytes in the file and stands
// where the names of the sections begin, as does a section without bytes.
std::string WithEmptySegment(std::size_t offset) {
    const std::string names = {'\0', '.', 'n', '\0'};
    const auto size = static_cast<Elf64_Word>(names.size());
    Elf64_Ehdr head{};
    std::memcpy(head.e_ident, ELFMAG, SELFMAG);
    head.e_ident[EI_CLASS] = ELFCLASS64;
    head.e_ident[EI_DATA] = ELFDATA2LSB;
    head.e_ident[EI_VERSION] = EV_CURRENT;
    head.e_type = ET_DYN;
    head.e_machine = EM_X86_64;
    head.e_version = EV_CURRENT;
    head.e_phoff = head.e_ehsize = sizeof head;
    head.e_shoff = offset + size;
    head.e_phentsize = sizeof(Elf64_Phdr);
    head.e_phnum = 2;
    head.e_shentsize = sizeof(Elf64_Shdr);
    head.e_shnum = 3;
    head.e_shstrndx = 1;
    const Elf64_Phdr segments[] = {{PT_LOAD, PF_R, 0, 0, 0, 176, 176, 4096},
                                   {PT_LOAD, PF_R | PF_W, offset, 4096, 4096, 0, 100, 1}};
    const Elf64_Shdr sections[] = {{},
                                   {1, SHT_STRTAB, 0, 0, offset, size, 0, 0, 1, 0},
                                   {1, SHT_NOBITS, 0, 0, offset, 100, 0, 0, 1, 0}};
    std::string bytes(reinterpret_cast<const char*>(&head), sizeof head);
    bytes.append(reinterpret_cast<const char*>(segments), sizeof segments);
    bytes.resize(offset);
    bytes += names;
    return bytes.append(reinterpret_cast<const char*>(sections), sizeof sections);
}

}  // namespace

TEST_F(ResourceUpdate, KeepsTheFileUpToWhatHasNoBytesInIt) {
    const std::string path = directory / "zeros.so";
    const std::string before = WithEmptySegment(4096);
    MakeFile(path, before);
    for (const char* bytes : {"first", "other"}) {
        ASSERT_TRUE(Put(path, "T", "n", bytes)) << GetLastError();
        EXPECT_EQ(InFile(path, "T", "n"), bytes);
        EXPECT_EQ(BytesOf(path).substr(64, 4096 - 64), before.substr(64, 4096 - 64));
    }
    const auto size = std::filesystem::file_size(path);
    EXPECT_TRUE(Put(path, "T", "n", "third"));
    EXPECT_EQ(std::filesystem::file_size(path), size);
}

TEST_F(ResourceUpdate, KeepsTheFileUpToASectionWithoutBytes) {
    const std::string path = directory / "zeros.so";
    std::string bytes = WithEmptySegment(4096);
    // The segment stands with the other one, so that the section alone needs the place.
    const Elf64_Off offset = 64;
    std::memcpy(bytes.data() + 64 + 56 + offsetof(Elf64_Phdr, p_offset), &offset, sizeof offset);
    MakeFile(path, bytes);
    for (const char* content : {"first", "second"}) {
        ASSERT_TRUE(Put(path, "T", "n", content)) << GetLastError();
        EXPECT_EQ(InFile(path, "T", "n"), content);
    }
}

// A file that is refused, how it begins, and the code.
struct Refused {
    const char* what;
    std::string bytes;
    int error;
};

TEST_F(ResourceUpdate, RefusesWhatIsNoModule) {
    const std::string module = BytesOf(ZT_TEST_MODULE);
    const Refused files[] = {
        {"nothing", "", ENOEXEC},
        {"a text", "This is not a module, although it is longer than the head of one.", ENOEXEC},
        {"four bytes of a module", module.substr(0, 4), ENOEXEC},
        {"a head", module.substr(0, 64), ENOEXEC},
    };
    for (const Refused& file : files) {
        const std::string path = directory / "file";
        MakeFile(path, file.bytes);
        EXPECT_EQ(BeginUpdateResourceA(path.c_str(), FALSE), nullptr) << file.what;
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(file.error)) << file.what;
        EXPECT_EQ(BytesOf(path), file.bytes);
    }
}

TEST_F(ResourceUpdate, RefusesPathsOfNoFile) {
    EXPECT_EQ(BeginUpdateResourceA((directory / "no").c_str(), FALSE), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ENOENT});
    EXPECT_EQ(BeginUpdateResourceA(directory.Path().c_str(), FALSE), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{EISDIR});
    EXPECT_EQ(BeginUpdateResourceA("/dev/null", FALSE), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{EINVAL});
    EXPECT_EQ(BeginUpdateResourceA("", FALSE), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ENOENT});
    EXPECT_EQ(BeginUpdateResourceA(nullptr, FALSE), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{EINVAL});
}

TEST_F(ResourceUpdate, RefusesAReadOnlyModule) {
    const std::string path = CopyWith("old");
    const std::string before = BytesOf(path);
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    EXPECT_EQ(BeginUpdateResourceA(path.c_str(), FALSE), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{EACCES});
    EXPECT_TRUE(BytesOf(path) == before);
}

TEST_F(ResourceUpdate, FailsInTheEndIfTheFileBecameReadOnlyOrWentAway) {
    const std::string path = CopyWith("old");
    HANDLE update = BeginUpdateResourceA(path.c_str(), FALSE);
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    EXPECT_FALSE(EndUpdateResourceA(update, FALSE));
    EXPECT_EQ(GetLastError(), DWORD{EACCES});
    ASSERT_EQ(chmod(path.c_str(), 0644), 0);
    update = BeginUpdateResourceA(path.c_str(), FALSE);
    std::filesystem::remove(path);
    EXPECT_FALSE(EndUpdateResourceA(update, FALSE));
    EXPECT_EQ(GetLastError(), DWORD{ENOENT});
    EXPECT_EQ(Files(), 0);
}

TEST_F(ResourceUpdate, DoesNotMakeAFileAgainThatGoesAwayWhileItWaits) {
    const std::string path = CopyWith("old");
    const HANDLE update = BeginUpdateResourceA(path.c_str(), FALSE);
    // Another one has the file.
    const int other = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    BOOL ended = TRUE;
    DWORD error = 0;
    std::thread waiting([&] {
        ended = EndUpdateResourceA(update, FALSE);
        error = GetLastError();
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    std::filesystem::remove(path);
    close(other);
    waiting.join();
    EXPECT_FALSE(ended);
    EXPECT_EQ(error, DWORD{ENOENT});
    EXPECT_EQ(Files(), 0);
}

TEST_F(ResourceUpdate, RefusesBadArguments) {
    const std::string path = CopyWith("stays");
    const HANDLE update = BeginUpdateResourceA(path.c_str(), FALSE);
    ASSERT_NE(update, nullptr);
    const auto refused = [&](HANDLE handle, LPCSTR type, LPCSTR name, const void* data,
                             DWORD size) {
        SetLastError(0);
        return !UpdateResourceA(handle, type, name, 1033, data, size) && GetLastError() == EINVAL;
    };
    EXPECT_TRUE(refused(nullptr, "T", "n", "x", 1));
    EXPECT_TRUE(refused(update, nullptr, "n", "x", 1));
    EXPECT_TRUE(refused(update, "T", nullptr, "x", 1));
    EXPECT_TRUE(refused(update, "", "n", "x", 1));
    EXPECT_TRUE(refused(update, "T", "", "x", 1));
    EXPECT_TRUE(refused(update, "T", "n", nullptr, 1));
    EXPECT_FALSE(UpdateResourceA(update, "T", "missing", 1033, nullptr, 0));
    EXPECT_EQ(GetLastError(), DWORD{ENOENT});
    EXPECT_TRUE(UpdateResourceA(update, "T", "n", 1033, "x", 1)) << "the update stays open";
    EXPECT_TRUE(EndUpdateResourceA(update, FALSE));
    EXPECT_EQ(InFile(path, "T", "n"), "x");
    EXPECT_EQ(InFile(path, "TABLE", "Gauge"), "stays");
    EXPECT_FALSE(EndUpdateResourceA(nullptr, FALSE));
    EXPECT_EQ(GetLastError(), DWORD{EINVAL});
    SetLastError(0);
    EXPECT_FALSE(EndUpdateResourceA(update, FALSE)) << "it has ended";
    EXPECT_EQ(GetLastError(), DWORD{EINVAL});
    EXPECT_TRUE(refused(update, "T", "n", "x", 1));
}

TEST_F(ResourceUpdate, LeavesAModuleThatIsCutOffAnywhereAsItIs) {
    const std::string whole = BytesOf(CopyWith("table"));
    const std::string path = directory / "cut.so";
    const std::size_t step = whole.size() / 97 + 1;
    std::vector<std::size_t> sizes = {0, 1, 16, 52, 63, 64, whole.size() - 1};
    for (std::size_t size = 100; size < whole.size(); size += step) sizes.push_back(size);
    for (const std::size_t size : sizes) {
        MakeFile(path, whole.substr(0, size));
        EXPECT_FALSE(Put(path, "T", "n", "bytes")) << size;
        EXPECT_TRUE(GetLastError() == ENOEXEC || GetLastError() == EBADMSG) << size;
        EXPECT_TRUE(BytesOf(path) == whole.substr(0, size)) << size;
    }
    EXPECT_EQ(Files(), 2);
}

TEST_F(ResourceUpdate, PassesOverADamagedSectionOnlyToDropIt) {
    const std::string path = CopyWith("table");
    std::string bytes = BytesOf(path);
    bytes.replace(bytes.find("ZTRSRC"), 6, "ZTRZRC");
    MakeFile(path, bytes);
    EXPECT_EQ(BeginUpdateResourceA(path.c_str(), FALSE), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{EBADMSG});
    const HANDLE update = BeginUpdateResourceA(path.c_str(), TRUE);
    ASSERT_NE(update, nullptr);
    EXPECT_TRUE(UpdateResourceA(update, "T", "n", 1033, "x", 1));
    EXPECT_TRUE(EndUpdateResourceA(update, FALSE));
    EXPECT_EQ(InFile(path, "T", "n"), "x");
    EXPECT_TRUE(Runs(path));
}

TEST_F(ResourceUpdate, OnAFullDiskLeavesTheOldModule) {
    const std::string path = CopyWith("old");
    const std::string before = BytesOf(path);
    const std::string large = CopyWith(Repeated('x', 100'000), "large.so");
    const auto needed = std::filesystem::file_size(large);
    std::filesystem::remove(large);
    // The room ends in the copy of the module, in the resources, and at the very end.
    for (const rlim_t room : {rlim_t{1000}, needed - 50'000, needed - 1}) {
        EXPECT_EQ(InChild([&] {
                      std::signal(SIGXFSZ, SIG_IGN);
                      const rlimit limit = {room, room};
                      setrlimit(RLIMIT_FSIZE, &limit);
                      if (Put(path, "TABLE", "Gauge", Repeated('x', 100'000))) return 1;
                      return GetLastError() == EFBIG ? 0 : 2;
                  }),
                  0)
            << room;
        EXPECT_TRUE(BytesOf(path) == before) << room;
        EXPECT_EQ(Files(), 1) << room;
    }
    EXPECT_TRUE(Put(path, "TABLE", "Gauge", Repeated('x', 100'000)));
}

TEST_F(ResourceUpdate, KilledAtAnyMomentLeavesTheOldModuleOrTheNew) {
    const std::string path = CopyWith(Repeated('a', 70'000));
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    ASSERT_EQ(InChild([&] { return Put(path, "TABLE", "Gauge", Repeated('a', 70'000)) ? 0 : 1; }),
              0);
    const auto work = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start);
    std::mt19937 random(5);
    int changed = 0;
    std::string before = InFile(path, "TABLE", "Gauge");
    for (int i = 0; i < 80; ++i) {
        const pid_t child = fork();
        if (child == 0) {
            for (char letter = 'a';; letter = letter == 'z' ? 'a' : static_cast<char>(letter + 1))
                if (!Put(path, "TABLE", "Gauge",
                         Repeated(letter, 70'000 + 1000 * static_cast<std::size_t>(letter - 'a'))))
                    _exit(1);
        }
        // From the first moment to some updates later.
        std::this_thread::sleep_for(3 * work * (random() % 1000) / 1000);
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "an update failed";

        const std::string bytes = InFile(path, "TABLE", "Gauge");
        ASSERT_GE(bytes.size(), 70'000u) << bytes;
        ASSERT_EQ(bytes.size(), 70'000 + 1000 * static_cast<std::size_t>(bytes[0] - 'a'));
        ASSERT_TRUE(bytes == Repeated(bytes[0], bytes.size()));
        changed += bytes != before;
        before = bytes;
        if (i % 20 == 0) {
            ASSERT_TRUE(Runs(path));
        }
    }
    // What a killed process leaves is told by its name.
    for (const auto& entry : std::filesystem::directory_iterator(directory.Path())) {
        const std::string name = entry.path().filename();
        EXPECT_TRUE(name == "libnail.so" || name.starts_with(".new-")) << name;
    }
    EXPECT_GT(changed, 0) << "no child came as far as an update";
    EXPECT_TRUE(Runs(path));
}

TEST_F(ResourceUpdate, BySeveralProcessesAtOnceLosesNothing) {
    const std::string path = Copy();
    const auto putAll = [&](const std::string& type) {
        for (int i = 0; i < 15; ++i)
            if (!Put(path, type.c_str(), MAKEINTRESOURCEA(static_cast<WORD>(i + 1)), type))
                return 1;
        return 0;
    };
    std::vector<pid_t> children;
    for (const char* type : {"A", "B", "C"}) {
        children.push_back(fork());
        if (children.back() == 0) _exit(putAll(type));
    }
    for (const pid_t child : children) {
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    ResourceFile file;
    ASSERT_TRUE(file.Open(path.c_str())) << file.Failure();
    EXPECT_EQ(file.GetCount(), 45u);
    EXPECT_EQ(Files(), 1);
}
