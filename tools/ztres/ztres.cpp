// Lists, reads and changes the resources in a module's file.

#include <platform/base/LastError.h>
#include <platform/modules/ResourceFile.h>
#include <platform/modules/ResourceUpdate.h>

#include <charconv>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace {

constexpr const char* usage =
    "usage: ztres list MODULE\n"
    "       ztres get MODULE TYPE NAME [FILE] [--language N]\n"
    "       ztres put MODULE TYPE NAME FILE [--language N]\n"
    "       ztres remove MODULE TYPE NAME [--language N]\n";

constexpr const char* help =
    "\n"
    "Resources are bytes that a module (a program or a shared library) carries in the\n"
    "section .ztrsrc of its own file. Each has a type, a name and a language.\n"
    "\n"
    "  list     prints type, name, language and size in bytes of each resource\n"
    "  get      writes the bytes to FILE, or to the standard output\n"
    "  put      adds the bytes of FILE, or replaces the resource by them\n"
    "  remove   takes the resource away\n"
    "\n"
    "  --language N   the language's number; 1033 if it is not given\n"
    "\n"
    "The module is not loaded, and a change leaves it as it was or changes it whole.\n"
    "Exit status: 0 if all is well, 1 for a failure, 2 for wrong arguments.\n";

// Wrong arguments.
struct UsageError : std::runtime_error {
    using runtime_error::runtime_error;
};

// What could not be done.
struct Failure : std::runtime_error {
    using runtime_error::runtime_error;
};

// The arguments without the options.
struct Arguments {
    std::vector<std::string> words;
    WORD language = defaultResourceLanguage;

    const std::string& Module() const { return words[1]; }
    const char* Type() const { return words[2].c_str(); }
    const char* Name() const { return words[3].c_str(); }
};

WORD Language(const std::string& text) {
    WORD number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        throw UsageError("'" + text + "' is no number of a language");
    return number;
}

// What stands behind "--" is no option.
Arguments Parse(const std::vector<std::string>& given) {
    Arguments arguments;
    for (auto word = given.begin(); word != given.end(); ++word) {
        if (*word == "--") {
            arguments.words.insert(arguments.words.end(), word + 1, given.end());
            return arguments;
        }
        if (word->size() < 2 || word->front() != '-') {
            arguments.words.push_back(*word);
            continue;
        }
        if (*word != "--language") throw UsageError("unknown option '" + *word + "'");
        if (++word == given.end()) throw UsageError("--language lacks its number");
        arguments.language = Language(*word);
    }
    return arguments;
}

std::string Address(const Arguments& arguments) {
    return arguments.words[2] + '/' + arguments.words[3] + " in language " +
           std::to_string(arguments.language);
}

void Open(ResourceFile& file, const std::string& path) {
    if (!file.Open(path.c_str())) throw Failure(path + ": " + file.Failure().GetString());
}

[[noreturn]] void ThrowSystemFailure(const std::string& path, const std::string& what) {
    throw Failure(path + ": " + what + ": " + SystemErrorText(GetLastError()));
}

void List(const Arguments& arguments) {
    ResourceFile file;
    Open(file, arguments.Module());
    for (DWORD i = 0; i < file.GetCount(); ++i) {
        const ResourceRecord record = file.GetAt(i).value_or(ResourceRecord());
        std::printf("%.*s\t%.*s\t%u\t%zu\n", static_cast<int>(record.type.size()),
                    record.type.data(), static_cast<int>(record.name.size()), record.name.data(),
                    unsigned{record.language}, record.bytes.size());
    }
    if (!file.HasSection())
        std::fprintf(stderr, "ztres: %s: no section .ztrsrc\n", arguments.Module().c_str());
}

void Write(ByteView bytes, std::FILE* file, const std::string& path) {
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    if (!written || std::fflush(file) != 0) ThrowSystemFailure(path, "cannot write");
}

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// A device stays.
void RemoveHalfWritten(const std::string& path) {
    std::error_code failure;
    if (std::filesystem::is_regular_file(path, failure)) std::filesystem::remove(path, failure);
}

void Get(const Arguments& arguments) {
    ResourceFile file;
    Open(file, arguments.Module());
    const auto found = file.Find(arguments.Type(), arguments.Name(), arguments.language);
    if (!found)
        throw Failure(arguments.Module() + ": no " + Address(arguments) + " in section .ztrsrc");
    if (arguments.words.size() == 4) return Write(found->bytes, stdout, "standard output");
    const std::string& path = arguments.words[4];
    std::error_code failure;
    if (std::filesystem::equivalent(path, arguments.Module(), failure))
        throw Failure(path + ": cannot write: this is the module itself");
    const std::unique_ptr<std::FILE, CloseFile> out(std::fopen(path.c_str(), "wbe"));
    if (!out) ThrowSystemFailure(path, "cannot write");
    try {
        Write(found->bytes, out.get(), path);
    } catch (const Failure&) {
        RemoveHalfWritten(path);
        throw;
    }
}

std::string Content(const std::string& path) {
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rbe"));
    if (!file) ThrowSystemFailure(path, "cannot read");
    std::string content;
    char block[65536];
    while (const std::size_t size = std::fread(block, 1, sizeof block, file.get())) {
        content.append(block, size);
        if (content.size() > std::numeric_limits<DWORD>::max())
            throw Failure(path + ": too large for a resource, whose size has 32 bits");
    }
    if (std::ferror(file.get())) ThrowSystemFailure(path, "cannot read");
    return content;
}

// Makes one change; null bytes take the resource away.
void Change(const Arguments& arguments, const char* bytes, std::size_t size) {
    const std::string what = "cannot change section .ztrsrc";
    const HANDLE update = BeginUpdateResourceA(arguments.Module().c_str(), FALSE);
    if (!update) ThrowSystemFailure(arguments.Module(), what);
    const bool put = UpdateResourceA(update, arguments.Type(), arguments.Name(), arguments.language,
                                     bytes, static_cast<DWORD>(size)) != FALSE;
    const DWORD error = GetLastError();
    if (EndUpdateResourceA(update, !put) && put) return;
    if (!put) SetLastError(error);
    ThrowSystemFailure(arguments.Module(), what);
}

void PutIn(const Arguments& arguments) {
    const std::string content = Content(arguments.words[4]);
    ResourceFile file;
    Open(file, arguments.Module());
    Change(arguments, content.data(), content.size());
}

void Remove(const Arguments& arguments) {
    ResourceFile file;
    Open(file, arguments.Module());
    if (!file.Find(arguments.Type(), arguments.Name(), arguments.language))
        throw Failure(arguments.Module() + ": no " + Address(arguments) + " in section .ztrsrc");
    Change(arguments, nullptr, 0);
}

// A command, and how many words it takes with itself.
struct Command {
    const char* name;
    std::size_t fewest;
    std::size_t most;
    void (*run)(const Arguments&);
};

constexpr Command commands[] = {
    {"list", 2, 2, List},
    {"get", 4, 5, Get},
    {"put", 5, 5, PutIn},
    {"remove", 4, 4, Remove},
};

void Run(const Arguments& arguments) {
    if (arguments.words.empty()) throw UsageError("no command");
    for (const Command& command : commands) {
        if (arguments.words[0] != command.name) continue;
        const std::size_t count = arguments.words.size();
        if (count < command.fewest || count > command.most)
            throw UsageError("wrong number of arguments for '" + arguments.words[0] + "'");
        for (std::size_t i = 2; i < count && i < 4; ++i)
            if (arguments.words[i].empty()) throw UsageError("a type or a name is empty");
        return command.run(arguments);
    }
    throw UsageError("unknown command '" + arguments.words[0] + "'");
}

}  // namespace

int main(int count, char** values) {
    const std::vector<std::string> given(values + 1, values + count);
    if (given.size() == 1 && (given[0] == "--help" || given[0] == "-h")) {
        std::printf("%s%s", usage, help);
        return 0;
    }
    try {
        Run(Parse(given));
        return 0;
    } catch (const UsageError& error) {
        std::fprintf(stderr, "ztres: %s; see 'ztres --help'\n", error.what());
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "ztres: %s\n", error.what());
        return 1;
    }
}
