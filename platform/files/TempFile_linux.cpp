#include <fcntl.h>

#include <platform/base/LastError.h>
#include <platform/files/TempFile.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <sys/random.h>
#include <unistd.h>

namespace {

CString WithSlash(LPCTSTR directory) {
    CString path = directory;
    if (path.IsEmpty() || path.GetAt(path.GetLength() - 1) != '/') path += '/';
    return path;
}

CString NameFor(const CString& directory, LPCTSTR prefix, UINT unique) {
    CString name;
    name.Format("%s%s%X.tmp", directory.GetString(), prefix, unique);
    return name;
}

UINT RandomNumber() {
    UINT number = 0;
    while (number == 0) {
        if (getrandom(&number, sizeof number, 0) < 0 && errno != EINTR) return 1;
    }
    return number;
}

bool MakeFile(const CString& path) {
    const int descriptor = open(path, O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0600);
    if (descriptor < 0) return false;
    close(descriptor);
    return true;
}

// A directory and a prefix that make a name; the last error tells what is wrong.
bool CanName(LPCTSTR directory, LPCTSTR prefix) {
    const bool can = directory && *directory && !(prefix && std::strchr(prefix, '/'));
    if (!can) SetLastError(EINVAL);
    return can;
}

// The number of the new file, 0 on failure; its path goes to `path`.
UINT MakeUniqueFile(LPCTSTR directory, LPCTSTR prefix, CString& path) {
    constexpr int attempts = 1000;
    if (!CanName(directory, prefix)) return 0;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const UINT unique = RandomNumber();
        path = NameFor(WithSlash(directory), prefix ? prefix : "", unique);
        if (MakeFile(path)) return unique;
        if (errno != EEXIST) return 0;
    }
    return 0;
}

bool CopyOut(const CString& path, LPTSTR text) {
    const auto bytes = static_cast<std::size_t>(path.GetLength()) + 1;
    if (bytes > MAX_PATH) return false;
    std::memcpy(text, path.GetString(), bytes);
    return true;
}

UINT RefuseLongName() {
    SetLastError(ENAMETOOLONG);
    return 0;
}

}  // namespace

CString AfxGetTempPath() {
    const char* directory = std::getenv("TMPDIR");
    return WithSlash(directory && *directory ? directory : "/tmp");
}

DWORD GetTempPath(DWORD size, LPTSTR text) {
    const CString path = AfxGetTempPath();
    const auto length = static_cast<DWORD>(path.GetLength());
    if (!text || size < length + 1) return length + 1;
    std::memcpy(text, path.GetString(), length + 1);
    return length;
}

CString AfxGetTempFileName(LPCTSTR directory, LPCTSTR prefix) {
    CString path;
    return MakeUniqueFile(directory, prefix, path) ? path : CString();
}

UINT GetTempFileName(LPCTSTR directory, LPCTSTR prefix, UINT unique, LPTSTR text) {
    if (!text || !CanName(directory, prefix)) return 0;
    CString path;
    if (unique) {
        path = NameFor(WithSlash(directory), prefix ? prefix : "", unique);
        return CopyOut(path, text) ? unique : RefuseLongName();
    }
    const UINT made = MakeUniqueFile(directory, prefix, path);
    if (!made || CopyOut(path, text)) return made;
    unlink(path);
    return RefuseLongName();
}
