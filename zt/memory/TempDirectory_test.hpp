// The directory for temporary files, and limits on them, in tests.

#pragma once

#include <platform/files/TestDirectory_test.hpp>

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>

#include <signal.h>
#include <sys/resource.h>

namespace ZT {

/// Lets the temporary files of a test be made in a directory of its own.
class TempDirectory {
public:
    TempDirectory() { Name(m_directory.Path()); }
    ~TempDirectory() {
        if (m_had)
            setenv("TMPDIR", m_before.c_str(), 1);
        else
            unsetenv("TMPDIR");
    }
    TempDirectory(const TempDirectory&) = delete;
    TempDirectory& operator=(const TempDirectory&) = delete;

    /// Another place for them.
    static void Name(const std::filesystem::path& path) { setenv("TMPDIR", path.c_str(), 1); }

    const TestDirectory& Directory() const { return m_directory; }

    std::size_t FileCount() const {
        const std::filesystem::directory_iterator files(m_directory.Path());
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    /// The path of the only file; empty if there is not exactly one.
    std::string OnlyFile() const {
        if (FileCount() != 1) return {};
        return std::filesystem::directory_iterator(m_directory.Path())->path();
    }

private:
    const char* const m_value = std::getenv("TMPDIR");
    const bool m_had = m_value;
    const std::string m_before = m_value ? m_value : "";
    TestDirectory m_directory;
};

/// While it lives, no file of this process grows beyond `bytes`: as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        m_signal = signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        signal(SIGXFSZ, m_signal);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_before{};
    sighandler_t m_signal;
};

}  // namespace ZT
