#include <zt/persist/PCExBase.h>
#include <zt/ranges/RangeR1.h>

namespace ZT {

void RangeR1::PersistXML(PCExBase& pc) {
    double limits[] = {m_min, m_max};
    pc.PersistData("Rg", limits, 2, true);
    if (pc.IsStoring()) return;
    m_min = limits[0];
    m_max = limits[1];
}

}  // namespace ZT
