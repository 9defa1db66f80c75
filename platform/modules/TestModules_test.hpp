/// @file
/// For tests: copies of a module to change, and what stands in them.

#pragma once

#include <gtest/gtest.h>

#include <platform/modules/ModuleResource.h>
#include <platform/modules/ResourceFile.h>
#include <platform/modules/ResourceUpdate.h>
#include <platform/files/TestDirectory_test.hpp>

#include <elf.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>

/// Puts one resource into a module's file.
inline bool Put(const std::string& path, LPCSTR type, LPCSTR name, std::string_view bytes,
                WORD language = 1033) {
    const HANDLE update = BeginUpdateResourceA(path.c_str(), FALSE);
    if (!update) return false;
    const BOOL put = UpdateResourceA(update, type, name, language, bytes.data(),
                                     static_cast<DWORD>(bytes.size()));
    return EndUpdateResourceA(update, !put) && put;
}

/// The bytes of a resource in a module's file; "(none)" if it is not there, or the
/// failure if the file cannot be read.
inline std::string InFile(const std::string& path, std::string_view type, std::string_view name,
                          WORD language = 1033) {
    ResourceFile file;
    if (!file.Open(path.c_str())) return file.Failure().GetString();
    const auto found = file.Find(type, name, language);
    return found ? std::string(found->bytes.begin(), found->bytes.end()) : "(none)";
}

/// The bytes of a resource of a loaded module; "(none)" if it is not there.
inline std::string InMemory(HMODULE module, LPCSTR type, LPCSTR name) {
    const HRSRC place = FindResourceA(module, name, type);
    if (!place) return "(none)";
    const auto* bytes = static_cast<const char*>(LockResource(LoadResource(module, place)));
    return {bytes, SizeofResource(module, place)};
}

/// The head of the module that these bytes are.
inline Elf64_Ehdr HeadOf(const std::string& bytes) {
    Elf64_Ehdr head{};
    std::memcpy(&head, bytes.data(), sizeof head);
    return head;
}

/// Runs `work` in a process of its own and answers how that ended: its exit status, or
/// 1000 and the signal. What `work` answers becomes the exit status.
template <class Work>
int InChild(Work work) {
    const pid_t child = fork();
    if (child == 0) _exit(work());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

/// A directory with copies of the test module.
struct TestModules : testing::Test {
    TestDirectory directory;

    /// A new copy under this name.
    std::string Copy(const std::string& name = "libnail.so",
                     const std::string& module = ZT_TEST_MODULE) const {
        const std::string path = directory / name;
        std::filesystem::copy_file(module, path);
        return path;
    }
    /// A new copy with one resource, of type "TABLE" and name "Gauge".
    std::string CopyWith(std::string_view bytes, const std::string& name = "libnail.so",
                         const std::string& module = ZT_TEST_MODULE) const {
        const std::string path = Copy(name, module);
        EXPECT_TRUE(Put(path, "TABLE", "Gauge", bytes));
        return path;
    }
    /// The same of a module that has no record of an extension module, so that nothing is
    /// kept of it before it is asked.
    std::string PlainWith(std::string_view bytes, const std::string& name = "libplain.so") const {
        return CopyWith(bytes, name, ZT_PLAIN_MODULE);
    }
    /// How many files there are.
    std::ptrdiff_t Files() const {
        return std::distance(std::filesystem::directory_iterator(directory.Path()), {});
    }
};
