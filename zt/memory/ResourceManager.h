/// @file
/// Named blocks of bytes in module files.

#pragma once

#include <zt/frame/ZT.h>

struct HINSTANCE__;

namespace ZT {

class HXBlob;

/// Reads a named resource out of a module file and writes one into a module file: the way
/// in which a client module carries data of its own. The class has no state.
///
/// A resource is addressed by its name, its type and the module. The order of these
/// arguments is that of each signature: name before type.
///
/// A load that fails gives null, and a code in the place of the size:
///
/// | code | meaning |
/// |---|---|
/// | 1 | the module state holds no instance handle |
/// | 2 | the path of the calling module has fewer than 5 characters |
/// | 3 | the calling module is not found by its path |
/// | 4 | the module handle is null |
/// | 5 | the module has no such resource |
/// | 6 | the resource is found but cannot be loaded, which does not occur on this system |
/// | 7 | the loaded resource cannot be locked, which does not occur on this system |
/// | 10 | the module file could not be loaded |
/// | 11 | the module had to be loaded, and the resource in it is missing or empty |
///
/// `HXBlob::LoadResource` adds 8 for a null type and 9 for a null name.
///
/// A file is named by its path. Mind that a `file` without a slash is no path to a load,
/// which takes the loaded module of that name or searches as the system does for libraries,
/// while a write takes the file of the current directory: give it as "./name" to both.
///
/// The bytes of a module that stays loaded belong to that module: they can only be read,
/// nobody frees them, and they go away with it. docs/resources.md tells how they are kept.
class ZT_API ResourceManager {
public:
    ResourceManager() = default;
    ResourceManager(const ResourceManager&) = default;
    ResourceManager& operator=(const ResourceManager&) = default;
    virtual ~ResourceManager();

    /// The bytes of a resource of a loaded module; its size, or a failure code, goes to
    /// `nSize`. A resource of size 0 gives a pointer that is not null.
    static unsigned char* LoadResource(HINSTANCE__* hModule, const char* name, const char* type,
                                       unsigned int& nSize);

    /// The same for the calling module: the one whose instance handle is in the module
    /// state (`AfxGetModuleState`), the program unless a caller has put another one there.
    /// A path of 260 characters and more is cut, and the module is then not found.
    static unsigned char* LoadResource(const char* name, const char* type, unsigned int& nSize);

    /// The same for the module of a file, or for the calling module if `file` is null.
    ///
    /// A module that is loaded is asked as it is. Any other is loaded, which runs its code,
    /// and the result is then a copy: `*pbTemporary` is true, the caller frees the bytes
    /// with array `delete`, and the module is unloaded again. `pbTemporary` may be null for
    /// a module that is known to be loaded; with a copy nobody is then told to free it.
    /// Hazards: with a null `file` nothing is written to `*pbTemporary`, so start it at
    /// false; after code 11 the module stays loaded, for good, as it does when the memory
    /// for the copy is missing, which raises the memory exception.
    static unsigned char* LoadResource(const char* file, const char* name, const char* type,
                                       unsigned int& nSize, bool* pbTemporary);

    /// Copies a resource of the calling module into `blob`, whose old block is freed.
    /// False if `name` or `type` is null, and then nothing changes, or if the load fails:
    /// the size of the blob then holds the failure code while the block stays as it was,
    /// so the blob must not be read. Want of memory raises the memory exception.
    bool LoadResource(const char* name, const char* type, HXBlob& blob);

    /// Writes the bytes of `blob` as a resource of language 1033 into a module file; its
    /// other resources stay. The file holds the old state or the new one at every moment,
    /// and a module that is loaded from it keeps its old bytes. A blob without size and
    /// block takes the resource away. False on failure, and the reason is in the last
    /// error. When the resource cannot be put into the update, the update is left open,
    /// and what it holds in memory is lost.
    static bool UpdateResourceA(const char* file, const char* name, const char* type, HXBlob& blob);
};

}  // namespace ZT
