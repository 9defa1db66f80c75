/// @file
/// Whole files for the DOM.

#pragma once

#include <cstddef>
#include <string>

#include <platform/xml/detail/DomBuffer.h>

/// Reads a whole file; 0, or the system's error number.
int ReadDomFile(const char* path, DomBuffer& content);

/// Writes a file so that its path shows the old content or the new, and nothing in
/// between: into a new file beside it, which takes its name in the end. A path that is
/// no regular file is written to directly. Without `Finish` the old file stays. Every
/// operation answers 0 or the system's error number.
class DomFileWriter {
public:
    DomFileWriter() = default;
    DomFileWriter(const DomFileWriter&) = delete;
    DomFileWriter& operator=(const DomFileWriter&) = delete;
    ~DomFileWriter();

    int Open(const char* path);
    int Write(const void* data, std::size_t size);
    /// Brings the content to the disk and the new file into its place.
    int Finish();

private:
    int OpenBeside();
    int Replace(unsigned mode);
    int Close();

    int m_file = -1;
    std::string m_path;
    // Empty when the path itself is written to.
    std::string m_temporary;
};
