/// @file
/// The context of a run that stores or loads objects.

#pragma once

#include <platform/text/CString.h>
#include <zt/frame/Export.h>

#include <cstdint>

namespace ZT {

/// The schema of a stored document. What each number stands for is settled by the
/// modules that store; the library carries the value along. 0 is no known schema.
enum ESchema2 : std::int32_t {
    eSchemaNone = 0,
    eSchema1,
    eSchema2,
    eSchema3,
    eSchema4,
    eSchema5,
    eSchema6,
    eSchema7,
    eSchema8,
    eSchema9,
    eSchema10,
    eSchema11,
    eSchema12,
    eSchema13,
    eSchema14,
    eSchema15,
    eSchema16,
    eSchema17,
    eSchema18,
    eSchema19,
    eSchema20,
    eSchema21,
    eSchema22,
    eSchema23
};

/// The context that travels with a run: which way the run goes, which version and
/// schema its document has, and slots that client modules fill for their own
/// records.
///
/// The cursor `PCExBase` holds a bare pointer to one context and asks it nothing but
/// the direction. Whoever starts a run sets `m_mode`: 0 for loading, 1 for storing; a
/// fresh context has -1 and is neither. A context serves another run after
/// `Construct`, or after a new `m_mode`.
class ZT_API PC {
public:
    /// Every field at its default.
    PC();

    /// Version and schema; a schema outside 1 to 23 becomes 0.
    PC(unsigned int version, unsigned int schema);

    /// Version and schema; the schema is taken as it stands, also one that is no
    /// enumerator.
    PC(unsigned int version, ESchema2 schema);

    /// Defaults, with `exInfo` as the text of the extended information.
    PC(CString exInfo);

    /// What `Copy` takes over. `m_pExObject` is null, not that of `other`.
    PC(const PC& other);

    virtual ~PC();

    /// Takes all fields over, `m_pExObject` included.
    PC& operator=(const PC& other);

    /// Takes all fields over except `m_pExObject`, which stays: a context derived
    /// from another one keeps its own extended object.
    void Copy(const PC& other);

    /// Takes over the extended information alone: `m_strExInfo`, `m_nExData`, and
    /// `m_pExObject` if `other` has one. A null one never clears this one's.
    void CopyExInfo(const PC& other);

    /// Puts every field back to its default, except the two strings, which keep
    /// their text.
    void Construct();

    std::uint32_t m_nVersion = 0;     ///< For client modules.
    ESchema2 m_schema = eSchemaNone;  ///< For client modules.
    std::uint64_t m_nUserData = 0;    ///< For client modules.
    std::int32_t m_mode = -1;         ///< 0 loading, 1 storing, -1 neither.
    CString m_strName;                ///< For client modules.
    CString m_strExInfo;              ///< Extended information.
    std::uint64_t m_nExData = 0;      ///< Extended information.
    std::uint64_t m_nData = 0;        ///< For client modules.
    std::int32_t m_nParamA = -1;      ///< For client modules.
    std::int32_t m_nParamB = 14;      ///< For client modules.
    void* m_pExObject = nullptr;      ///< Extended information; not owned.
};

}  // namespace ZT
