/// @file
/// The description of one object of a query.

#pragma once

#include <zt/frame/ZT.h>

namespace ZT {

/// A slot that describes one object of a query. Its fields are for the modules; it owns
/// nothing.
class ZT_API QCObj {
public:
    /// What the object is to the query. All values but the default belong to the modules.
    enum EQueryType : std::int32_t {
        eQueryNone = 0,
    };

    /// The defaults: nothing is described.
    QCObj() = default;
    /// The defaults, with `t` in `m_eQuery`.
    explicit QCObj(EQueryType t) : m_eQuery(t) {}

    /// Back to the defaults.
    void Construct() { *this = QCObj(); }

    EQueryType m_eQuery = eQueryNone;
    std::int32_t m_nIndex = -1;
    void* m_pObject = nullptr;
    ulong m_nTag = 0;
    void* m_pExtra = nullptr;
};

}  // namespace ZT
