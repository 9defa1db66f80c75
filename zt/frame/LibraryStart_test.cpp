#include <gtest/gtest.h>

#include <platform/modules/AFX_MODULE_STATE.h>
#include <platform/modules/ModuleHandle.h>
#include <zt/frame/LibraryStart.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace {

// While it is set, no memory is left for those who ask without an exception.
bool noMemory = false;

}  // namespace

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    if (noMemory) return nullptr;
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

namespace ZT {
namespace {

HMODULE Library() {
    return AfxModuleFromAddress(reinterpret_cast<const void*>(&InitBedrockDll));
}

std::ptrdiff_t CountLinks() {
    const auto& chain = AfxGetModuleState()->m_libraryList;
    return std::count_if(chain.begin(), chain.end(),
                         [](const CDynLinkLibrary* link) { return link->m_hModule == Library(); });
}

// Read while the program's static objects are made, when the library is loaded and
// nobody has called it yet.
const std::ptrdiff_t kLinksAtLoad = CountLinks();

TEST(LibraryStart, LoadingDoesNotJoinTheChain) {
    EXPECT_EQ(kLinksAtLoad, 0);
}

TEST(LibraryStart, FirstCallJoinsTheChainAndASecondDoesNothing) {
    InitBedrockDll();
    ASSERT_EQ(CountLinks(), 1);
    const CDynLinkLibrary* const link = AfxGetModuleState()->m_libraryList.GetHead();
    EXPECT_EQ(link->m_hModule, Library());
    EXPECT_EQ(link->m_hResource, Library());
    EXPECT_FALSE(link->m_bSystem);
    InitBedrockDll();
    EXPECT_EQ(CountLinks(), 1);
    EXPECT_EQ(AfxGetModuleState()->m_libraryList.GetHead(), link);
}

[[noreturn]] void StartWithoutMemory() {
    noMemory = true;
    InitBedrockDll();
    noMemory = false;
    const bool linked = CountLinks() != 0;
    InitBedrockDll();
    std::_Exit(linked || CountLinks() != 0 ? 1 : 0);
}

TEST(LibraryStart, WithoutMemoryForTheLinkNoLaterCallTriesAgain) {
    // A process that begins anew: in this one the library may have joined already.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(StartWithoutMemory(), testing::ExitedWithCode(0), "");
}

// Tells on standard error when it ends.
struct WatchedLink : CDynLinkLibrary {
    WatchedLink(HMODULE module, const char* name)
        : CDynLinkLibrary(module, nullptr), m_name(name) {}
    ~WatchedLink() override { std::fprintf(stderr, "<%s ended>", m_name); }

    const char* m_name;
};

[[noreturn]] void EndWithWatchedLinks() {
    new WatchedLink(Library(), "own");
    new WatchedLink(GetModuleHandle(nullptr), "other");
    std::exit(0);
}

TEST(LibraryStart, EndOfTheLibraryEndsItsLinksAndNoOthers) {
    EXPECT_EXIT(EndWithWatchedLinks(), testing::ExitedWithCode(0), "^<own ended>$");
}

}  // namespace
}  // namespace ZT
