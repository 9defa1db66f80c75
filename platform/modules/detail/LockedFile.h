/// @file
/// A module's file that is about to be replaced.

#pragma once

/// The file at a path, open for reading and locked against others that lock it, while
/// this is the file of that path. Only those that replace a file by this class heed the
/// lock.
class LockedFile {
public:
    LockedFile() = default;
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;
    ~LockedFile();

    /// Waits until nobody else holds the lock; 0, or the system's error number. A file
    /// that goes away meanwhile is none (ENOENT). A file that must not be written to is
    /// refused (EACCES): one whose owner may not write is read-only for everybody.
    int Open(const char* path);

    int Descriptor() const { return m_file; }

private:
    void Close();

    int m_file = -1;
};
