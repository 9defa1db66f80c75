/// @file
/// The record of a command from one module to another.

#pragma once

#include <platform/com/Guid.h>
#include <zt/frame/ZT.h>

namespace ZT {

/// A command that one module gives another: the sender fills it and sends it through the graph
/// of modules, and the module that executes it may write into the same record.
///
/// The command is routed by `m_pModuleId`, or offered to all modules when that is null. The
/// fields said to be for the modules have no meaning in this library: it defaults and copies
/// them. The identifier and the texts are kept by their addresses and must outlive the record;
/// it owns nothing.
class ZT_API OpC {
public:
    /// All fields at their defaults: zero, null and false, and -1 in `m_nSelect`.
    OpC();
    /// Addresses `module`.
    explicit OpC(_GUID* module);
    /// Addresses `module`, with two texts, which are not copied.
    OpC(_GUID* module, const char* name, const char* text);
    /// Two texts, which are not copied.
    OpC(const char* name, const char* text);
    /// All fields as they stand.
    OpC(const OpC&) = default;
    OpC& operator=(const OpC&) = default;
    virtual ~OpC();

    /// Back to the defaults, but `m_tail` stays.
    void Construct();
    /// Copies the command without its address: all fields but `m_pModuleId` and `m_tail`.
    void Copy(const OpC& other);

    const char* m_pszName = nullptr;  ///< The first text, not owned.
    const char* m_pszText = nullptr;  ///< The second text, not owned.
    uint64 m_nWord1 = 0;              ///< For the modules.
    uint64 m_nWord2 = 0;              ///< For the modules.
    uint64 m_nWord3 = 0;              ///< For the modules.
    _GUID* m_pModuleId = nullptr;     ///< The module addressed, not owned; null for any.
    ulong m_nValue = 0;               ///< For the modules.
    uint64 m_blockA[5] = {};          ///< For the modules.
    unsigned char m_flagsA[3] = {};   ///< For the modules.
    std::int32_t m_nSelect = -1;      ///< For the modules.
    uint64 m_blockB[5] = {};          ///< For the modules.
    /// For the modules. Only a copy of the whole record changes it.
    ulong m_tail[5] = {};
};

}  // namespace ZT
