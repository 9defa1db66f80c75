#include <gtest/gtest.h>

#include <platform/modules/AFX_MODULE_STATE.h>
#include <platform/modules/ModuleHandle.h>
#include <zt/frame/LibraryStart.h>
#include <algorithm>

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

}  // namespace
}  // namespace ZT
