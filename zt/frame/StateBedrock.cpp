#include <zt/frame/StateBedrock.h>
#include <utility>

namespace ZT {

ETri StateBedrock::m_tri = eUnknown;
StateBedrock::AssertHandler StateBedrock::m_pAssert = nullptr;
bool StateBedrock::m_bNet = false;
uint64 StateBedrock::m_uNique = 0;

StateBedrock::AssertHandler StateBedrock::SetAssertHandler(AssertHandler handler) {
    return std::exchange(m_pAssert, handler);
}

void StateBedrock::Assert(const char* textA, const char* textB, std::int32_t number) {
    if (m_pAssert != nullptr) m_pAssert(textA, textB, number);
}

void StateBedrock::MakeUnique(CString& s) {
    // The text deliberately carries the low 32 bits of the counter only.
    const auto number = static_cast<std::uint32_t>(m_uNique++);
    s.Format("%s_ztuid%u", s.GetString(), number);
}

}  // namespace ZT
