// A module of the suite from its own file: it starts, and is reached by name and by query.

#include <gtest/gtest.h>
#include <platform/modules/AFX_MODULE_STATE.h>
#include <platform/modules/ModuleHandle.h>
#include <platform/modules/ModuleResource.h>
#include <platform/modules/ResourceUpdate.h>
#include <platform/object/CMemoryException.h>
#include <tests/AllocationCount.h>
#include <tests/Raises.h>
#include <zt/modules/DynaModule.h>
#include <zt/modules/QC.h>
#include <platform/files/TestDirectory_test.hpp>

#include <filesystem>
#include <memory>
#include <string>

namespace ZT {
namespace {

// The module with the resource "Gauge" of type "TABLE", loaded while the test runs.
struct StartedModule : testing::Test {
    TestDirectory directory;
    std::string file = directory / "libgauge.so";
    HMODULE handle = nullptr;

    void SetUp() override {
        std::filesystem::copy_file(ZT_GAUGE_MODULE, file);
        const HANDLE update = BeginUpdateResourceA(file.c_str(), FALSE);
        ASSERT_TRUE(UpdateResourceA(update, "TABLE", "Gauge", 1033, "1 2 3", 5));
        ASSERT_TRUE(EndUpdateResourceA(update, FALSE));
        CString reason;
        handle = AfxLoadLibrary(file.c_str(), &reason);
        ASSERT_NE(handle, nullptr) << reason;
    }
    void TearDown() override { Unload(); }
    void Unload() {
        if (handle) AfxFreeLibrary(handle);
        handle = nullptr;
    }

    template <class Function>
    Function* Exported(LPCSTR name) const {
        return reinterpret_cast<Function*>(GetProcAddress(handle, name));
    }
    bool Start() const { return Exported<bool()>("StartGaugeModule")(); }
    DynaModule& Module() const { return *Exported<DynaModule*()>("TheGaugeModule")(); }
};

// The links whose resources hold the table.
int LinksWithTheTable() {
    int count = 0;
    for (const CDynLinkLibrary* const link : AfxGetModuleState()->m_libraryList)
        count += FindResourceA(link->m_hResource, "Gauge", "TABLE") != nullptr;
    return count;
}

std::string TheTable() {
    for (const CDynLinkLibrary* const link : AfxGetModuleState()->m_libraryList) {
        const HMODULE module = link->m_hResource;
        const HRSRC found = FindResourceA(module, "Gauge", "TABLE");
        if (!found) continue;
        const void* const bytes = LockResource(LoadResource(module, found));
        return {static_cast<const char*>(bytes), SizeofResource(module, found)};
    }
    return "none";
}

TEST_F(StartedModule, IsInNoChainBeforeItsStart) {
    EXPECT_FALSE(Module().IsMFCChainOK());
    EXPECT_EQ(CRuntimeClass::FromName("TestGauge"), nullptr);
    EXPECT_EQ(LinksWithTheTable(), 0);
}

TEST_F(StartedModule, ShowsItsClassesAndResourcesOnce) {
    EXPECT_TRUE(Start());
    EXPECT_TRUE(Module().IsMFCChainOK());
    const std::unique_ptr<CObject> gauge(CRuntimeClass::CreateObject("TestGauge"));
    ASSERT_NE(gauge, nullptr);
    EXPECT_STREQ(gauge->GetRuntimeClass()->m_lpszClassName, "TestGauge");
    EXPECT_EQ(LinksWithTheTable(), 1);
    EXPECT_EQ(TheTable(), "1 2 3");
}

TEST_F(StartedModule, SecondStartChangesNothing) {
    EXPECT_TRUE(Start());
    EXPECT_FALSE(Start());
    EXPECT_TRUE(Module().IsMFCChainOK());
    EXPECT_EQ(LinksWithTheTable(), 1);
}

TEST_F(StartedModule, WithoutMemoryItIsNotStartedAndCanBeLater) {
    auto* const start = Exported<bool()>("StartGaugeModule");
    EXPECT_TRUE(testing_support::Raises<CMemoryException>([&] {
        const testing_support::MemoryFor none(0);
        start();
    }));
    EXPECT_FALSE(Module().IsMFCChainOK());
    EXPECT_EQ(LinksWithTheTable(), 0);
    EXPECT_TRUE(Start());
    EXPECT_TRUE(Module().IsMFCChainOK());
    EXPECT_EQ(LinksWithTheTable(), 1);
}

TEST_F(StartedModule, CanBeStartedAgainOnceItIsBackToItsDefaults) {
    EXPECT_TRUE(Start());
    Module().Construct();
    EXPECT_FALSE(Module().IsMFCChainOK());
    EXPECT_TRUE(Start());
    EXPECT_TRUE(Module().IsMFCChainOK());
    EXPECT_EQ(LinksWithTheTable(), 2);
}

TEST_F(StartedModule, LeavesTheChainWhenItIsUnloaded) {
    Start();
    Unload();
    EXPECT_EQ(CRuntimeClass::FromName("TestGauge"), nullptr);
    EXPECT_EQ(LinksWithTheTable(), 0);
}

TEST_F(StartedModule, AnswersThroughTheGraph) {
    _GUID id = {1, 2, 3, {}};
    DynaModule host(&id, DynaModule::eConfigDefault);
    host.AddUser(&Module());
    QC qc(&DMID_TARN);
    qc.m_nKey = 21;
    EXPECT_TRUE(host.Execute(qc));
    EXPECT_EQ(qc.m_pResult, 42u);
    // Identifiers are compared by value.
    _GUID copy = DMID_TARN;
    qc.SetModuleId(&copy);
    qc.m_nKey = 4;
    EXPECT_TRUE(host.Execute(qc));
    EXPECT_EQ(qc.m_pResult, 8u);
}

}  // namespace
}  // namespace ZT
