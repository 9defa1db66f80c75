#include <gtest/gtest.h>

#include <platform/files/CArchive.h>
#include <platform/files/CMemFile.h>
#include <platform/modules/AFX_MODULE_STATE.h>
#include <platform/modules/ModuleHandle.h>
#include <platform/object/CArchiveException.h>
#include <platform/object/CFileException.h>
#include <platform/object/CInvalidArgException.h>

#include <memory>

// A module that is loaded from a file of its own, as a client module of a program is.

namespace {

// The module as long as the test runs.
struct ExtensionModule : testing::Test {
    HMODULE module = nullptr;

    void SetUp() override {
        CString reason;
        module = AfxLoadLibrary(ZT_TEST_MODULE, &reason);
        ASSERT_NE(module, nullptr) << reason;
    }
    void TearDown() override {
        if (module) {
            EXPECT_TRUE(AfxFreeLibrary(module));
        }
    }
    void Unload() {
        EXPECT_TRUE(AfxFreeLibrary(module));
        module = nullptr;
    }

    template <class Function>
    Function* Exported(LPCSTR name) const {
        return reinterpret_cast<Function*>(GetProcAddress(module, name));
    }
    void Link() const { Exported<void()>("InitNailModule")(); }
};

CDynLinkLibrary* LinkOf(HMODULE module) {
    for (CDynLinkLibrary* library : AfxGetModuleState()->m_libraryList)
        if (library->m_hModule == module) return library;
    return nullptr;
}

}  // namespace

TEST_F(ExtensionModule, IsFoundByItsFile) {
    EXPECT_EQ(GetModuleHandle(ZT_TEST_MODULE), module);
    EXPECT_STREQ(AfxGetModuleFileName(module), ZT_TEST_MODULE);
    EXPECT_EQ(AfxModuleFromAddress(GetProcAddress(module, "InitNailModule")), module);
}

TEST_F(ExtensionModule, ClassIsFoundOnceTheModuleIsInTheChain) {
    EXPECT_EQ(CRuntimeClass::FromName("TestNail"), nullptr);
    Link();
    CDynLinkLibrary* const link = LinkOf(module);
    ASSERT_NE(link, nullptr);
    const CRuntimeClass* const nail = CRuntimeClass::FromName("TestNail");
    ASSERT_NE(nail, nullptr);
    EXPECT_STREQ(nail->m_lpszClassName, "TestNail");
    EXPECT_EQ(AfxModuleFromAddress(nail), module);
    EXPECT_NE(CRuntimeClass::FromName("TestNailException"), nullptr);
}

TEST_F(ExtensionModule, ObjectIsMadeByNameAndTravelsThroughAnArchive) {
    Link();
    const std::unique_ptr<CObject> nail(CRuntimeClass::CreateObject("TestNail"));
    ASSERT_NE(nail, nullptr);
    EXPECT_EQ(nail->GetRuntimeClass(), CRuntimeClass::FromName("TestNail"));
    EXPECT_TRUE(nail->IsKindOf(RUNTIME_CLASS(CObject)));

    CMemFile file;
    CArchive storing(&file, CArchive::store);
    storing << nail.get();
    storing.Close();
    file.SeekToBegin();
    CArchive loading(&file, CArchive::load);
    CObject* loaded = nullptr;
    loading >> loaded;
    const std::unique_ptr<CObject> owner(loaded);
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(loaded->GetRuntimeClass(), nail->GetRuntimeClass());
}

TEST_F(ExtensionModule, ExceptionOfTheModuleIsCaughtByItsClass) {
    try {
        Exported<void()>("RaiseFileException")();
        FAIL() << "nothing was raised";
    } catch (CFileException* exception) {
        EXPECT_EQ(exception->m_cause, CFileException::diskFull);
        EXPECT_EQ(exception->m_strFileName, "nail.dat");
        exception->Delete();
    }
}

TEST_F(ExtensionModule, ExceptionOfAnUnknownClassIsCaughtByItsBase) {
    try {
        Exported<void()>("RaiseOwnException")();
        FAIL() << "nothing was raised";
    } catch (CException* exception) {
        EXPECT_STREQ(exception->GetRuntimeClass()->m_lpszClassName, "TestNailException");
        char text[80];
        EXPECT_TRUE(exception->GetErrorMessage(text, sizeof text));
        EXPECT_STREQ(text, "The nail is bent.");
        exception->Delete();
    }
}

TEST_F(ExtensionModule, ExceptionOfTheHostIsCaughtInTheModule) {
    const auto causeRaisedBy = Exported<INT(void (*)())>("CauseRaisedBy");
    EXPECT_EQ(causeRaisedBy([] { AfxThrowFileException(CFileException::badSeek); }),
              CFileException::badSeek);
    EXPECT_EQ(causeRaisedBy([] {}), CFileException::none);
}

TEST_F(ExtensionModule, ExceptionOfTheHostPassesThroughTheModule) {
    const auto causeRaisedBy = Exported<INT(void (*)())>("CauseRaisedBy");
    try {
        causeRaisedBy([] { AfxThrowInvalidArgException(); });
        FAIL() << "nothing was raised";
    } catch (CInvalidArgException* exception) {
        exception->Delete();
    }
}

TEST_F(ExtensionModule, TakesItsClassesAndItsLinkAlongWhenItIsUnloaded) {
    Link();
    const HMODULE place = module;
    Unload();
    EXPECT_EQ(GetModuleHandle(ZT_TEST_MODULE), nullptr);
    EXPECT_EQ(LinkOf(place), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("TestNail"), nullptr);
    EXPECT_EQ(CRuntimeClass::CreateObject("TestNail"), nullptr);
}

TEST_F(ExtensionModule, CanBeLoadedAgain) {
    Link();
    Unload();
    SetUp();
    EXPECT_EQ(CRuntimeClass::FromName("TestNail"), nullptr);
    Link();
    EXPECT_NE(CRuntimeClass::FromName("TestNail"), nullptr);
}

TEST_F(ExtensionModule, ObjectOfAnUnloadedModuleIsRefusedByTheArchive) {
    Link();
    CMemFile file;
    CArchive storing(&file, CArchive::store);
    std::unique_ptr<CObject> nail(CRuntimeClass::CreateObject("TestNail"));
    storing << nail.get();
    storing.Close();
    nail.reset();
    Unload();
    file.SeekToBegin();
    CArchive loading(&file, CArchive::load);
    try {
        CObject* loaded = nullptr;
        loading >> loaded;
        FAIL() << "nothing was raised";
    } catch (CArchiveException* exception) {
        EXPECT_EQ(exception->m_cause, CArchiveException::badClass);
        exception->Delete();
    }
}
