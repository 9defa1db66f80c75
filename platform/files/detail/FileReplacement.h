/// @file
/// A file that is written whole or not at all.

#pragma once

#include <cstddef>
#include <string>

/// Writes a file so that its path shows the old content or the new, and nothing in
/// between: into a new file beside it, which takes its name in the end, with the mode
/// and, as far as the system allows, the owner of the old one. A path that is no regular
/// file is written to directly; a symbolic link stays one, and the file that it names is
/// replaced. Without `Finish` the old file stays. Every operation answers 0 or the
/// system's error number.
class FileReplacement {
public:
    FileReplacement() = default;
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;
    ~FileReplacement();

    int Open(const char* path);
    int Write(const void* data, std::size_t size);
    /// Brings the content to the disk and the new file into its place.
    int Finish();

    /// The descriptor of what is written, open for reading as well when the path is a
    /// regular file or new.
    int Descriptor() const { return m_file; }

private:
    int OpenBeside();
    int Replace();
    int Name();
    int Close();

    int m_file = -1;
    // Whether the path itself is written to.
    bool m_direct = false;
    std::string m_path;
    // The new file's own name, while it has one.
    std::string m_temporary;
};
