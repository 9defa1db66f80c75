#include <link.h>
#include <sys/auxv.h>
#include <unistd.h>

#include <platform/modules/detail/LoadedFile.h>

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// A line of the table of mappings: the addresses, what is mapped there, and its path.
struct Mapping {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;
    std::string identity;
    std::string path;
};

// The system writes a line end in a path as its octal number.
std::string WithLineEnds(std::string path) {
    constexpr std::string_view written = "\\012";
    for (std::size_t at = 0; (at = path.find(written, at)) != std::string::npos; ++at)
        path.replace(at, written.size(), "\n");
    return path;
}

std::optional<Mapping> Parse(std::string line) {
    if (!line.empty() && line.back() == '\n') line.pop_back();
    Mapping mapping;
    char device[32];
    char inode[32];
    int path = 0;
    const int read = std::sscanf(line.c_str(), "%" SCNxPTR "-%" SCNxPTR " %*s %*s %31s %31s %n",
                                 &mapping.begin, &mapping.end, device, inode, &path);
    if (read != 4 || path == 0) return std::nullopt;
    mapping.identity = std::string(device) + ' ' + inode;
    mapping.path = WithLineEnds(line.substr(static_cast<std::size_t>(path)));
    return mapping;
}

std::optional<Mapping> MappingAt(std::uintptr_t address) {
    const std::unique_ptr<std::FILE, CloseFile> table(std::fopen("/proc/self/maps", "re"));
    if (!table) return std::nullopt;
    char* line = nullptr;
    std::size_t room = 0;
    std::optional<Mapping> found;
    while (!found && getline(&line, &room, table.get()) > 0) {
        found = Parse(line);
        if (found && (address < found->begin || address >= found->end)) found.reset();
    }
    std::free(line);
    return found;
}

// The file from which the program runs, under a name that lasts as long as the program.
constexpr const char* programFile = "/proc/self/exe";

// The system's name for the program's file is that of its loader if the program was
// started by naming the loader.
bool IsProgram(const Mapping& mapping) {
    const auto head = static_cast<std::uintptr_t>(getauxval(AT_PHDR));
    if (head < mapping.begin || head >= mapping.end) return false;
    std::error_code failure;
    const std::filesystem::path path = std::filesystem::read_symlink(programFile, failure);
    return !failure && path.native() == mapping.path;
}

int ReadCountOfUnloads(dl_phdr_info* info, std::size_t, void* count) {
    *static_cast<unsigned long long*>(count) = info->dlpi_subs;
    return 1;
}

}  // namespace

std::optional<LoadedFile> LoadedFileOf(HMODULE module) {
    const std::optional<Mapping> mapping = MappingAt(reinterpret_cast<std::uintptr_t>(module));
    if (!mapping || mapping->path.empty() || mapping->path.front() != '/') return std::nullopt;
    if (IsProgram(*mapping)) return LoadedFile{mapping->identity, programFile};
    bool there = false;
    const std::string path = WithoutMarkOfRemoval(mapping->path, &there);
    return LoadedFile{mapping->identity, there ? path : std::string()};
}

unsigned long long CountOfUnloads() {
    unsigned long long count = 0;
    dl_iterate_phdr(ReadCountOfUnloads, &count);
    return count;
}

// A file may bear the mark in its own name.
std::string WithoutMarkOfRemoval(std::string path, bool* there) {
    constexpr std::string_view mark = " (deleted)";
    *there = !path.ends_with(mark) || access(path.c_str(), F_OK) == 0;
    return *there ? path : path.substr(0, path.size() - mark.size());
}
