#include <sibling/RangeS1.h>

namespace PW {

RangeS1::RangeS1() : m_eState(eStateEmpty) {}

RangeS1::RangeS1(double lo, double hi) : Range(lo, hi), m_eState(eStatePartial) {}

RangeS1::~RangeS1() = default;

}  // namespace PW
