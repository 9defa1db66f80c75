#include <zt/modules/MessageZt.h>

namespace ZT {

MessageZt::MessageZt() = default;

MessageZt::MessageZt(EEvent, void* p, OW::EType t) : m_ow(p, t) {}

MessageZt::~MessageZt() = default;

void MessageZt::Construct() {
    m_event = eEventNone;
    m_pData = 0;
}

}  // namespace ZT
