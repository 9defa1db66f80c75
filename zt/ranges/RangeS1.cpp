#include <zt/ranges/RangeS1.h>

#include <platform/files/CArchive.h>
#include <sibling/RangeS1.h>

namespace ZT {

RangeR1::EClass RangeS1::GetClass() const {
    return eClassS1;
}

void RangeS1::Set(double a, double b) {
    // The angles as they arrive: any `a` below -pi is at -pi here, deliberately.
    if (zToler > std::fabs(b - zPi) && zSeamBand > a + zPi) {
        SetFull();
        return;
    }
    const double start = S1::Factorize(a);
    const double end = S1::Factorize(b);
    if (end > zPiMinus && start < zSeamBand - zPi) {
        SetFull();
    } else {
        StoreArc(start, end, eStatePartial);
    }
}

void RangeS1::Copy(const RangeR1& r) {
    Set(r.m_min, r.m_max);
    SettleState(r.m_min, r.m_max);
}

// The state after `Set(a, b)` where equal limits mean the whole circle.
void RangeS1::SettleState(double a, double b) {
    if (S1::Equal(a, b, false)) {
        SetFull();
    } else {
        m_eState = eStatePartial;  // Also of a full circle that Set has found, deliberately.
    }
}

void RangeS1::CopyToPw(PW::RangeS1* target) const {
    RangeR1::CopyToPw(target);
    target->SetState(static_cast<PW::RangeS1::EState>(m_eState));
}

void RangeS1::SetComplimentary() {
    double a = m_max;
    double b = m_min;
    if (IsFull()) a = b = 0.0;  // Ends up full again, unlike GetComplimentary, deliberately.
    if (IsEmpty()) a = b = zPi;
    Set(a, b);
    SettleState(a, b);
}

bool RangeS1::IsSingular() const {
    if (IsFull()) return true;
    if (IsEmpty()) return false;
    return HoldsByLimits(zPi) && std::fabs(m_max - zPi) > zToler;
}

bool RangeS1::IsSingular(double a, double b) {
    const double end = S1::Factorize(b);
    return S1::InRange(zPi, S1::Factorize(a), end, true) && std::fabs(end - zPi) > zToler;
}

bool RangeS1::IsValid() const {
    if (!S1::IsValid(m_min) || !S1::IsValid(m_max)) return false;
    if (!S1::Equal(m_min, m_max, false)) return m_eState == eStatePartial;
    return !(zToler > std::fabs(m_min - zPi) && m_eState == eStatePartial);
}

void RangeS1::Serialize(CArchive& archive) {
    RangeR1::Serialize(archive);
    if (archive.IsStoring()) {
        archive << static_cast<unsigned char>(m_eState);
    } else {
        unsigned char state = 0;
        archive >> state;
        m_eState = ByteToState(state);
    }
}

RangeS1::EState RangeS1::ByteToState(unsigned char byte) {
    if (byte == eStateEmpty) return eStateEmpty;
    return byte == eStateFull ? eStateFull : eStatePartial;
}

}  // namespace ZT
