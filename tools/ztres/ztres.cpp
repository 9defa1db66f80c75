// Lists, reads and changes the resources in a module's file.

#include <platform/base/LastError.h>
#include <platform/files/detail/FileReplacement.h>
#include <platform/modules/ResourceFile.h>
#include <platform/modules/ResourceUpdate.h>

#include <charconv>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace {

constexpr const char* usage =
    "usage: ztres list MODULE\n"
    "       ztres get MODULE TYPE NAME [FILE] [--language N]\n"
    "       ztres put MODULE TYPE NAME FILE [--language N]\n"
    "       ztres remove MODULE TYPE NAME [--language N]\n"
    "       ztres help\n";

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
    "  --language N   the language's number; without it 1033, for get the lowest\n"
    "                 language if there is none of 1033\n"
    "\n"
    "get replaces FILE by a new file in its folder, which must be one you may write to;\n"
    "its other names (hard links) keep the old bytes. A device, /dev/stdout and /dev/fd/N\n"
    "are written to directly.\n"
    "\n"
    "The module is not loaded, and a change leaves it as it was or changes it whole.\n"
    "Exit status: 0 if all is well, 1 for a failure, 2 for wrong arguments.\n";

constexpr const char* cannotWrite = "cannot write";

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
    std::optional<WORD> language;
    bool help = false;

    // The language of a change.
    WORD OneLanguage() const { return language.value_or(defaultResourceLanguage); }
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
        if (*word == "--help" || *word == "-h") {
            arguments.help = true;
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

[[noreturn]] void ThrowMissing(const Arguments& arguments, std::optional<WORD> language) {
    const std::string of = language ? "language " + std::to_string(*language) : "any language";
    throw Failure(arguments.Module() + ": no " + arguments.words[2] + '/' + arguments.words[3] +
                  " in " + of + " in section .ztrsrc");
}

void Open(ResourceFile& file, const std::string& path) {
    if (!file.Open(path.c_str())) throw Failure(path + ": " + file.Failure().GetString());
}

[[noreturn]] void ThrowSystemFailure(const std::string& path, const std::string& what) {
    throw Failure(path + ": " + what + ": " + SystemErrorText(GetLastError()));
}

void Print(ByteView bytes) {
    const bool printed = std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size();
    if (!printed || std::fflush(stdout) != 0) ThrowSystemFailure("standard output", cannotWrite);
}

void Print(const std::string& text) {
    Print({reinterpret_cast<const BYTE*>(text.data()), text.size()});
}

void Help(const Arguments&) {
    Print(std::string(usage) + help);
}

void List(const Arguments& arguments) {
    ResourceFile file;
    Open(file, arguments.Module());
    std::string lines;
    for (DWORD i = 0; i < file.GetCount(); ++i) {
        const ResourceRecord record = file.GetAt(i).value_or(ResourceRecord());
        lines.append(record.type).append("\t").append(record.name).append("\t");
        lines += std::to_string(record.language) + '\t' + std::to_string(record.bytes.size());
        lines += '\n';
    }
    Print(lines);
    if (!file.HasSection())
        std::fprintf(stderr, "ztres: %s: no section .ztrsrc\n", arguments.Module().c_str());
}

// A file that is there keeps its content if the new one cannot be written whole.
void WriteFile(ByteView bytes, const std::string& path) {
    FileReplacement file;
    int error = file.Open(path.c_str());
    if (error == 0) error = file.Write(bytes.data(), bytes.size());
    if (error == 0) error = file.Finish();
    if (error == 0) return;
    SetLastError(static_cast<DWORD>(error));
    ThrowSystemFailure(path, cannotWrite);
}

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::optional<ResourceRecord> Find(const ResourceFile& file, const Arguments& arguments) {
    return arguments.language ? file.Find(arguments.Type(), arguments.Name(), *arguments.language)
                              : file.FindAny(arguments.Type(), arguments.Name());
}

void Get(const Arguments& arguments) {
    ResourceFile file;
    Open(file, arguments.Module());
    const auto found = Find(file, arguments);
    if (!found) ThrowMissing(arguments, arguments.language);
    if (arguments.words.size() == 4) return Print(found->bytes);
    const std::string& path = arguments.words[4];
    std::error_code failure;
    if (std::filesystem::equivalent(path, arguments.Module(), failure))
        throw Failure(path + ": " + cannotWrite + ": this is the module itself");
    WriteFile(found->bytes, path);
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
    const bool put =
        UpdateResourceA(update, arguments.Type(), arguments.Name(), arguments.OneLanguage(), bytes,
                        static_cast<DWORD>(size)) != FALSE;
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
    if (!file.Find(arguments.Type(), arguments.Name(), arguments.OneLanguage()))
        ThrowMissing(arguments, arguments.OneLanguage());
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
    {"list", 2, 2, List},     {"get", 4, 5, Get},   {"put", 5, 5, PutIn},
    {"remove", 4, 4, Remove}, {"help", 1, 2, Help},
};

void Run(const Arguments& arguments) {
    if (arguments.help) return Help(arguments);
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
