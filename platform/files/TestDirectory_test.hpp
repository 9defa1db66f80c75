/// @file
/// For tests: a directory of one's own, and what an operation on a file raised.

#pragma once

#include <platform/object/CFileException.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include <stdlib.h>

/// A new directory that goes away with all that is in it.
class TestDirectory {
public:
    TestDirectory() {
        std::string pattern = std::filesystem::temp_directory_path() / "platformXXXXXX";
        if (!mkdtemp(pattern.data())) throw std::runtime_error("no directory for the test");
        m_path = pattern;
    }
    ~TestDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TestDirectory(const TestDirectory&) = delete;
    TestDirectory& operator=(const TestDirectory&) = delete;

    const std::filesystem::path& Path() const { return m_path; }
    std::string operator/(const std::string& name) const { return m_path / name; }

private:
    std::filesystem::path m_path;
};

inline std::string BytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void MakeFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

/// What `operation` raised.
struct Raised {
    int cause = -1;
    int osError = -1;
    std::string path;
};

template <class Operation>
Raised RaisedBy(Operation operation) {
    try {
        operation();
    } catch (CFileException* exception) {
        Raised raised{exception->m_cause, exception->m_lOsError,
                      exception->m_strFileName.GetString()};
        exception->Delete();
        return raised;
    }
    return {};
}

template <class Operation>
int CauseOf(Operation operation) {
    return RaisedBy(operation).cause;
}
