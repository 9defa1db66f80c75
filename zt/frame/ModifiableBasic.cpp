#include <platform/time/TickCount.h>
#include <zt/frame/ModifiableBasic.h>

namespace ZT {

ModifiableBasic::ModifiableBasic() : m_timeModified(GetTickCount()) {}

void ModifiableBasic::SetModified() {
    m_timeModified = GetTickCount();
}

}  // namespace ZT
