/// @file
/// A file that is written whole or not at all.

#pragma once

#include <platform/base/Export.h>

#include <cstddef>
#include <string>

/// Writes a file so that its path shows the old content or the new, and nothing in
/// between: into a new file beside it, which takes its name in the end, with the mode
/// and, as far as the system allows, the owner of the old one. A path that is no regular
/// file is written to directly. A symbolic link stays one, and the file that it names is
/// replaced, or made if it is not there. Without `Finish` the old file stays. Every
/// operation answers 0 or the system's error number.
///
/// A path to an open file of the process, as "/dev/stdout" and "/dev/fd/3", is written to
/// directly as well, from where that file stands. The folder of any other file has to be
/// one that may be written to, even if the file itself may be; and other names of the file
/// (hard links) keep the old content.
///
/// Until `Finish`, the new file has no name, so that nothing is left of it when the process
/// is killed. While `Finish` runs, and from the start where the file system knows no files
/// without names, its name begins with ".new-", and a process that is killed then leaves it.
class ZTP_API FileReplacement {
public:
    /// With `named`, the new file has a name from the start on every file system.
    explicit FileReplacement(bool named = false) : m_named(named) {}
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;
    ~FileReplacement();

    int Open(const char* path);
    int Write(const void* data, std::size_t size);
    /// Brings the content to the disk and the new file into its place.
    int Finish();

    /// The descriptor of what is written, open for reading as well unless it is written to
    /// directly.
    int Descriptor() const { return m_file; }

private:
    int OpenBeside();
    int Replace();
    int Name();
    int Close();

    bool m_named;
    int m_file = -1;
    // Whether the path itself is written to.
    bool m_direct = false;
    std::string m_path;
    // The new file's own name, while it has one.
    std::string m_temporary;
};
