// A module of the suite, which the tests load, start, and reach through the graph.

#include <platform/base/Export.h>
#include <platform/modules/AfxModuleEntry.h>
#include <zt/modules/DynaModule.h>
#include <zt/modules/QC.h>

namespace {

AFX_EXTENSION_MODULE extension;

// A class that the host knows by name alone.
class TestGauge : public CObject {
    DECLARE_DYNCREATE(TestGauge)
};
IMPLEMENT_DYNCREATE(TestGauge, CObject)

const AfxModuleEntry entry(extension);

// Answers what is addressed to it.
class GaugeModule : public ZT::DynaModule {
public:
    using DynaModule::DynaModule;
    using DynaModule::Execute;

    bool Execute(ZT::QC& qc) override {
        if (qc.m_pModuleId == nullptr || *qc.m_pModuleId != *GetID()) {
            return DynaModule::Execute(qc);
        }
        qc.m_pResult = qc.m_nKey * 2;
        return qc.ReturnFound(true);
    }
};

GaugeModule gauge(&ZT::DMID_TARN, ZT::DynaModule::eConfigDefault);

}  // namespace

extern "C" ZTP_API ZT::DynaModule* TheGaugeModule() {
    return &gauge;
}

extern "C" ZTP_API bool StartGaugeModule() {
    return gauge.Start(extension);
}
