#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <platform/files/CMemFile.h>
#include <platform/modules/AFX_MODULE_STATE.h>
#include <platform/modules/AfxModuleEntry.h>
#include <platform/object/CDumpContext.h>
#include <platform/object/CFileException.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Bolt : public CObject {
    DECLARE_DYNCREATE(Bolt)
};
IMPLEMENT_DYNCREATE(Bolt, CObject)

class Nut : public CObject {
    DECLARE_DYNAMIC(Nut)
};
IMPLEMENT_DYNAMIC(Nut, CObject)

HMODULE Platform() {
    return AfxModuleFromAddress(reinterpret_cast<const void*>(&AfxInitExtensionModule));
}

std::vector<CDynLinkLibrary*> Libraries() {
    const auto& list = AfxGetModuleState()->m_libraryList;
    return {list.begin(), list.end()};
}

bool HasClass(const AfxClassList& list, const CRuntimeClass* aClass) {
    return std::find(list.begin(), list.end(), aClass) != list.end();
}

// Runs `body` in a process of its own, since what it does to the lists of classes
// is not taken back; the process ends well if all checks held.
template <class Body>
void InAProcessOfItsOwn(Body body) {
    const auto run = [&] {
        body();
        std::_Exit(testing::Test::HasFailure() ? 1 : 0);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
}

}  // namespace

TEST(AfxInitExtensionModule, FillsTheRecord) {
    InAProcessOfItsOwn([] {
        AFX_EXTENSION_MODULE record;
        EXPECT_TRUE(AfxInitExtensionModule(record, Platform()));
        EXPECT_TRUE(record.bInitialized);
        EXPECT_EQ(record.hModule, Platform());
        EXPECT_EQ(record.hResource, Platform());
        EXPECT_NE(record.pFirstSharedClass, nullptr);
    });
}

TEST(AfxInitExtensionModule, WithoutAModuleFailsAndLeavesTheRecord) {
    AFX_EXTENSION_MODULE record;
    EXPECT_FALSE(AfxInitExtensionModule(record, nullptr));
    EXPECT_FALSE(record.bInitialized);
    EXPECT_EQ(record.hModule, nullptr);
}

TEST(AfxInitExtensionModule, OfAStartedRecordChangesNothing) {
    AFX_EXTENSION_MODULE record;
    record.bInitialized = TRUE;
    EXPECT_TRUE(AfxInitExtensionModule(record, Platform()));
    EXPECT_EQ(record.hModule, nullptr);
}

TEST(AfxInitExtensionModule, TakesTheClassesOfItsModuleAndNoOthers) {
    InAProcessOfItsOwn([] {
        const AfxClassList& common = AfxGetModuleState()->m_classList;
        EXPECT_TRUE(HasClass(common, RUNTIME_CLASS(Bolt)));
        EXPECT_TRUE(HasClass(common, RUNTIME_CLASS(CFileException)));
        AFX_EXTENSION_MODULE record;
        AfxInitExtensionModule(record, Platform());
        AfxClassList own;
        own.m_pHead = record.pFirstSharedClass;
        EXPECT_TRUE(HasClass(common, RUNTIME_CLASS(Bolt)));
        EXPECT_TRUE(HasClass(common, RUNTIME_CLASS(Nut)));
        EXPECT_FALSE(HasClass(common, RUNTIME_CLASS(CFileException)));
        EXPECT_TRUE(HasClass(own, RUNTIME_CLASS(CFileException)));
        EXPECT_TRUE(HasClass(own, RUNTIME_CLASS(CObject)));
        EXPECT_FALSE(HasClass(own, RUNTIME_CLASS(Bolt)));
    });
}

TEST(CDynLinkLibrary, TakesItsFieldsFromTheRecord) {
    AFX_EXTENSION_MODULE record;
    record.bInitialized = TRUE;
    record.hModule = Platform();
    record.hResource = GetModuleHandle(nullptr);
    InAProcessOfItsOwn([&] {
        const CDynLinkLibrary library(record, FALSE);
        EXPECT_EQ(library.m_hModule, Platform());
        EXPECT_EQ(library.m_hResource, GetModuleHandle(nullptr));
        EXPECT_FALSE(library.m_bSystem);
        EXPECT_EQ(library.m_classList.GetHead(), record.pFirstSharedClass);
        const CDynLinkLibrary another(record, TRUE);
        EXPECT_TRUE(another.m_bSystem);
    });
}

TEST(CDynLinkLibrary, LinksItselfInAndOut) {
    EXPECT_THAT(Libraries(), IsEmpty());
    auto first = std::make_unique<CDynLinkLibrary>(Platform(), Platform());
    auto second = std::make_unique<CDynLinkLibrary>(Platform(), nullptr);
    auto third = std::make_unique<CDynLinkLibrary>(Platform(), nullptr);
    EXPECT_THAT(Libraries(), ElementsAre(third.get(), second.get(), first.get()));
    EXPECT_EQ(AfxGetModuleState()->m_libraryList.GetHead(), third.get());
    second.reset();
    EXPECT_THAT(Libraries(), ElementsAre(third.get(), first.get()));
    third.reset();
    first.reset();
    EXPECT_THAT(Libraries(), IsEmpty());
}

TEST(CDynLinkLibrary, ClassesAreFoundOnlyWhileItIsLinked) {
    InAProcessOfItsOwn([] {
        AFX_EXTENSION_MODULE record;
        EXPECT_EQ(CRuntimeClass::FromName("CFileException"), RUNTIME_CLASS(CFileException));
        AfxInitExtensionModule(record, Platform());
        EXPECT_EQ(CRuntimeClass::FromName("CFileException"), nullptr);
        auto library = std::make_unique<CDynLinkLibrary>(record);
        EXPECT_EQ(CRuntimeClass::FromName("CFileException"), RUNTIME_CLASS(CFileException));
        EXPECT_EQ(CRuntimeClass::FromName("Bolt"), RUNTIME_CLASS(Bolt));
        library.reset();
        EXPECT_EQ(CRuntimeClass::FromName("CFileException"), nullptr);
        EXPECT_EQ(CRuntimeClass::FromName("Bolt"), RUNTIME_CLASS(Bolt));
    });
}

TEST(CDynLinkLibrary, TakesClassesThatTheModuleRegisteredAfterItsStart) {
    InAProcessOfItsOwn([] {
        AFX_EXTENSION_MODULE record;
        AfxInitExtensionModule(record, GetModuleHandle(nullptr));
        static CRuntimeClass lateClass = {"Late",  8,       AFX_NO_SCHEMA, nullptr,
                                          nullptr, nullptr, nullptr};
        static const AFX_CLASSINIT registration(&lateClass);
        EXPECT_TRUE(HasClass(AfxGetModuleState()->m_classList, &lateClass));
        const CDynLinkLibrary library(record);
        EXPECT_FALSE(HasClass(AfxGetModuleState()->m_classList, &lateClass));
        EXPECT_TRUE(HasClass(library.m_classList, &lateClass));
        EXPECT_TRUE(HasClass(library.m_classList, RUNTIME_CLASS(Nut)));
    });
}

TEST(CDynLinkLibrary, ClassThatGoesAwayLeavesTheListsOfAllLinks) {
    InAProcessOfItsOwn([] {
        static CRuntimeClass passing = {"Passing", 8,       AFX_NO_SCHEMA, nullptr,
                                        nullptr,   nullptr, nullptr};
        // A registration in static memory, as that of a module is.
        alignas(AFX_CLASSINIT) static std::byte room[sizeof(AFX_CLASSINIT)];
        auto* registration = new (room) AFX_CLASSINIT(&passing);
        AFX_EXTENSION_MODULE record;
        AfxInitExtensionModule(record, GetModuleHandle(nullptr));
        const CDynLinkLibrary first(record);
        const CDynLinkLibrary second(record);
        EXPECT_EQ(CRuntimeClass::FromName("Passing"), &passing);
        registration->~AFX_CLASSINIT();
        EXPECT_EQ(CRuntimeClass::FromName("Passing"), nullptr);
        EXPECT_FALSE(HasClass(first.m_classList, &passing));
        EXPECT_FALSE(HasClass(second.m_classList, &passing));
        EXPECT_TRUE(HasClass(first.m_classList, RUNTIME_CLASS(Bolt)));
        EXPECT_TRUE(HasClass(second.m_classList, RUNTIME_CLASS(Bolt)));
    });
}

TEST(CDynLinkLibrary, LaterModuleIsAskedFirst) {
    CRuntimeClass early = {"Shared", 8, AFX_NO_SCHEMA, nullptr, nullptr, nullptr, nullptr};
    CRuntimeClass late = early;
    CDynLinkLibrary first(Platform(), nullptr);
    first.m_classList.AddHead(&early);
    CDynLinkLibrary second(Platform(), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("Shared"), &early);
    second.m_classList.AddHead(&late);
    EXPECT_EQ(CRuntimeClass::FromName("Shared"), &late);
}

TEST(CDynLinkLibrary, IsDumpedWithItsModule) {
    CDynLinkLibrary library(Platform(), Platform());
    CRuntimeClass aClass = {"Listed", 8, AFX_NO_SCHEMA, nullptr, nullptr, nullptr, nullptr};
    library.m_classList.AddHead(&aClass);
    CMemFile file;
    CDumpContext dc(&file);
    dc.SetDepth(1);
    library.Dump(dc);
    std::string text(file.GetLength(), 0);
    file.SeekToBegin();
    file.Read(text.data(), static_cast<UINT>(text.size()));
    EXPECT_THAT(text, testing::StartsWith("a CDynLinkLibrary at $"));
    EXPECT_THAT(text, testing::HasSubstr("libztplatform"));
    EXPECT_THAT(text, testing::EndsWith("\nListed\n"));
}

TEST(AfxTermExtensionModule, DeletesTheLinksOfItsModule) {
    AFX_EXTENSION_MODULE record;
    record.bInitialized = TRUE;
    record.hModule = Platform();
    auto* own = new CDynLinkLibrary(Platform(), nullptr);
    auto* second = new CDynLinkLibrary(Platform(), nullptr);
    const CDynLinkLibrary other(GetModuleHandle(nullptr), nullptr);
    EXPECT_THAT(Libraries(), ElementsAre(&other, second, own));
    AfxTermExtensionModule(record, FALSE);
    EXPECT_THAT(Libraries(), ElementsAre(&other));
    EXPECT_FALSE(record.bInitialized);
    EXPECT_EQ(record.hModule, nullptr);
    EXPECT_EQ(record.pFirstSharedClass, nullptr);
}

TEST(AfxTermExtensionModule, DeletesAllLinksIfToldSo) {
    AFX_EXTENSION_MODULE record;
    record.bInitialized = TRUE;
    record.hModule = Platform();
    new CDynLinkLibrary(Platform(), nullptr);
    new CDynLinkLibrary(GetModuleHandle(nullptr), nullptr);
    AfxTermExtensionModule(record, TRUE);
    EXPECT_THAT(Libraries(), IsEmpty());
}

TEST(AfxTermExtensionModule, OfARecordThatWasNotStartedDoesNothing) {
    AFX_EXTENSION_MODULE record;
    const CDynLinkLibrary library(nullptr, nullptr);
    AfxTermExtensionModule(record, TRUE);
    EXPECT_THAT(Libraries(), ElementsAre(&library));
}

TEST(AfxModuleEntry, StartsAndEndsTheModuleOfItsRecord) {
    InAProcessOfItsOwn([] {
        static AFX_EXTENSION_MODULE record;
        {
            const AfxModuleEntry entry(record);
            EXPECT_TRUE(record.bInitialized);
            EXPECT_EQ(record.hModule, GetModuleHandle(nullptr));
            new CDynLinkLibrary(record);
            EXPECT_EQ(CRuntimeClass::FromName("Bolt"), RUNTIME_CLASS(Bolt));
        }
        EXPECT_FALSE(record.bInitialized);
        EXPECT_THAT(Libraries(), IsEmpty());
        EXPECT_EQ(CRuntimeClass::FromName("Bolt"), nullptr);
    });
}

TEST(ModuleState, IsOneAProcess) {
    EXPECT_NE(AfxGetModuleState(), nullptr);
    EXPECT_EQ(AfxGetModuleState(), AfxGetModuleState());
    EXPECT_EQ(AfxGetInstanceHandle(), GetModuleHandle(nullptr));
}

TEST(ModuleState, ResourceModuleIsTheProgramUnlessItIsChanged) {
    EXPECT_EQ(AfxGetResourceHandle(), GetModuleHandle(nullptr));
    AfxSetResourceHandle(Platform());
    EXPECT_EQ(AfxGetResourceHandle(), Platform());
    EXPECT_EQ(AfxGetInstanceHandle(), GetModuleHandle(nullptr));
    AfxSetResourceHandle(GetModuleHandle(nullptr));
}
