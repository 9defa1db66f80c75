#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <platform/modules/ModuleHandle.h>
#include <zt/memory/ResourceManager.h>
#include <platform/files/TestDirectory_test.hpp>

#include <sys/stat.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <string>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

const std::string greeting = "Good morning.\n";

// What a run of the program gave.
struct Ran {
    int status = -1;
    std::string out;
    std::string errors;
};

std::string Quoted(const std::string& text) {
    return '\'' + text + '\'';
}

// A directory with a copy of a module that has no resources.
struct Ztres : testing::Test {
    TestDirectory directory;
    std::string module = directory / "libnail.so";

    void SetUp() override { std::filesystem::copy_file(ZT_TEST_MODULE, module); }

    Ran Run(const std::string& arguments) const {
        const std::string out = directory / "out";
        const std::string errors = directory / "errors";
        const int status = std::system(
            (Quoted(ZTRES_PROGRAM) + ' ' + arguments + " >" + Quoted(out) + " 2>" + Quoted(errors))
                .c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : 1000, BytesOf(out), BytesOf(errors)};
    }
    // Runs a command on the module.
    Ran On(const std::string& command, const std::string& rest = "") const {
        return Run(command + ' ' + Quoted(module) + ' ' + rest);
    }
    std::string File(const std::string& bytes) const {
        MakeFile(directory / "file", bytes);
        return Quoted(directory / "file");
    }
};

// A failure tells why in one line.
testing::AssertionResult FailsWith(const Ran& ran, int status, const std::string& line) {
    if (ran.status == status && ran.errors == line + '\n' && ran.out.empty())
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "status " << ran.status << ", " << ran.errors << ran.out;
}

}  // namespace

TEST_F(Ztres, PutsListsGetsAndRemoves) {
    EXPECT_EQ(On("put", "TABLE Gauge " + File("1 2 3")).status, 0);
    EXPECT_EQ(On("put", "ICON 'Nail head' --language 7 " + File("nail")).status, 0);
    EXPECT_EQ(On("list").out, "ICON\tNail head\t7\t4\nTABLE\tGauge\t1033\t5\n");
    EXPECT_EQ(On("get", "TABLE Gauge").out, "1 2 3");
    EXPECT_EQ(On("get", "--language 7 ICON 'Nail head'").out, "nail");
    EXPECT_EQ(On("get", "TABLE Gauge " + Quoted(directory / "got")).out, "");
    EXPECT_EQ(BytesOf(directory / "got"), "1 2 3");
    EXPECT_EQ(On("put", "TABLE Gauge " + File("4")).status, 0);
    EXPECT_EQ(On("get", "TABLE Gauge").out, "4");
    EXPECT_EQ(On("remove", "TABLE Gauge").status, 0);
    EXPECT_EQ(On("list").out, "ICON\tNail head\t7\t4\n");
    EXPECT_EQ(On("remove", "ICON 'Nail head' --language 7").status, 0);
    const Ran none = On("list");
    EXPECT_EQ(none.status, 0);
    EXPECT_EQ(none.out + none.errors, "");
}

TEST_F(Ztres, CarriesAnyBytes) {
    std::string bytes(100'000, 0);
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * i);
    EXPECT_EQ(On("put", "T n " + File(bytes)).status, 0);
    EXPECT_TRUE(On("get", "T n").out == bytes);
    EXPECT_EQ(On("put", "T n " + File("")).status, 0);
    EXPECT_EQ(On("list").out, "T\tn\t1033\t0\n");
}

TEST_F(Ztres, TellsThatAModuleHasNoSection) {
    const Ran ran = On("list");
    EXPECT_EQ(ran.status, 0);
    EXPECT_EQ(ran.out, "");
    EXPECT_EQ(ran.errors, "ztres: " + module + ": no section .ztrsrc\n");
}

TEST_F(Ztres, TakesWordsBehindTwoDashesAsTheyStand) {
    EXPECT_EQ(On("put", "-- --type -n " + File("x")).status, 0);
    EXPECT_EQ(On("list").out, "--type\t-n\t1033\t1\n");
}

TEST_F(Ztres, TakesTheLowestLanguageWhenNoneIsNamedAndThereIsNoEnglish) {
    ASSERT_EQ(On("put", "T n --language 12 " + File("french")).status, 0);
    ASSERT_EQ(On("put", "T n --language 7 " + File("german")).status, 0);
    EXPECT_EQ(On("get", "T n").out, "german");
    EXPECT_TRUE(FailsWith(On("get", "T n --language 1033"), 1,
                          "ztres: " + module + ": no T/n in language 1033 in section .ztrsrc"));
    ASSERT_EQ(On("put", "T n " + File("english")).status, 0) << "a change is of 1033";
    EXPECT_EQ(On("get", "T n").out, "english");
    EXPECT_EQ(On("remove", "T n").status, 0);
    EXPECT_EQ(On("list").out, "T\tn\t7\t6\nT\tn\t12\t6\n");
    EXPECT_TRUE(FailsWith(On("remove", "T n"), 1,
                          "ztres: " + module + ": no T/n in language 1033 in section .ztrsrc"));
}

TEST_F(Ztres, HelpsWithUsageAndCommands) {
    for (const char* option : {"--help", "-h", "help", "list --help", "get -h", "help list"}) {
        const Ran ran = Run(option);
        EXPECT_EQ(ran.status, 0) << option;
        EXPECT_EQ(ran.errors, "");
        EXPECT_THAT(ran.out, StartsWith("usage: ztres list MODULE\n"));
        for (const char* word : {"get", "put", "remove", "--language N", "Exit status"})
            EXPECT_THAT(ran.out, HasSubstr(word));
    }
}

TEST_F(Ztres, RefusesWrongArguments) {
    const std::string help = "; see 'ztres --help'";
    EXPECT_TRUE(FailsWith(Run(""), 2, "ztres: no command" + help));
    EXPECT_TRUE(FailsWith(Run("show x"), 2, "ztres: unknown command 'show'" + help));
    EXPECT_TRUE(FailsWith(Run("list"), 2, "ztres: wrong number of arguments for 'list'" + help));
    EXPECT_TRUE(
        FailsWith(Run("list a b"), 2, "ztres: wrong number of arguments for 'list'" + help));
    EXPECT_TRUE(FailsWith(Run("get a b"), 2, "ztres: wrong number of arguments for 'get'" + help));
    EXPECT_TRUE(
        FailsWith(Run("put a b c"), 2, "ztres: wrong number of arguments for 'put'" + help));
    EXPECT_TRUE(FailsWith(Run("remove a b c d"), 2,
                          "ztres: wrong number of arguments for 'remove'" + help));
    EXPECT_TRUE(FailsWith(Run("list --all x"), 2, "ztres: unknown option '--all'" + help));
    EXPECT_TRUE(
        FailsWith(Run("list x --language"), 2, "ztres: --language lacks its number" + help));
    for (const std::string number : {"english", "-1", "65536", "7x"})
        EXPECT_TRUE(FailsWith(Run("list x --language " + number), 2,
                              "ztres: '" + number + "' is no number of a language" + help));
    EXPECT_TRUE(FailsWith(Run("get a '' c"), 2, "ztres: a type or a name is empty" + help));
}

TEST_F(Ztres, TellsWhatIsNotThere) {
    EXPECT_TRUE(FailsWith(On("get", "T n"), 1,
                          "ztres: " + module + ": no T/n in any language in section .ztrsrc"));
    EXPECT_TRUE(FailsWith(On("remove", "T n --language 7"), 1,
                          "ztres: " + module + ": no T/n in language 7 in section .ztrsrc"));
    const std::string no = directory / "no";
    EXPECT_TRUE(FailsWith(Run("list " + no), 1, "ztres: " + no + ": No such file or directory"));
    EXPECT_TRUE(FailsWith(On("put", "T n " + no), 1,
                          "ztres: " + no + ": cannot read: No such file or directory"));
    const std::string folder = directory.Path();
    EXPECT_TRUE(FailsWith(On("put", "T n " + folder), 1,
                          "ztres: " + folder + ": cannot read: Is a directory"));
}

TEST_F(Ztres, RefusesWhatIsNoModule) {
    const std::string text = directory / "text";
    MakeFile(text, "This is a text.");
    const std::string line = "ztres: " + text + ": no module, so it can have no section .ztrsrc";
    for (const std::string arguments : {"list @", "get @ T n", "put @ T n @", "remove @ T n"}) {
        std::string command = arguments;
        for (std::size_t at; (at = command.find('@')) != std::string::npos;)
            command.replace(at, 1, Quoted(text));
        EXPECT_TRUE(FailsWith(Run(command), 1, line)) << command;
    }
    EXPECT_EQ(BytesOf(text), "This is a text.");
}

TEST_F(Ztres, RefusesAModuleThatIsCutOff) {
    ASSERT_EQ(On("put", "T n " + File("x")).status, 0);
    const std::string cut = BytesOf(module).substr(0, 5000);
    MakeFile(module, cut);
    const std::string damage = "ztres: " + module +
                               ": section .ztrsrc is damaged: it, or the table of sections, "
                               "reaches out of the file";
    EXPECT_TRUE(FailsWith(On("list"), 1, damage));
    EXPECT_TRUE(FailsWith(On("get", "T n"), 1, damage));
    EXPECT_TRUE(FailsWith(On("put", "T n " + File("y")), 1, damage));
    EXPECT_TRUE(FailsWith(On("remove", "T n"), 1, damage));
    EXPECT_TRUE(BytesOf(module) == cut);
}

TEST_F(Ztres, ChangesTheProgramThatRuns) {
    const std::string own = directory / "own";
    std::filesystem::copy_file(ZTRES_PROGRAM, own);
    const std::string line = Quoted(own) + " put " + Quoted(own) + " T n " + File("in itself");
    ASSERT_EQ(std::system(line.c_str()), 0);
    EXPECT_EQ(Run("get " + Quoted(own) + " T n").out, "in itself");
    EXPECT_EQ(std::system((Quoted(own) + " help >" + Quoted(directory / "out")).c_str()), 0)
        << "it still runs";
}

TEST_F(Ztres, RefusesADamagedSection) {
    ASSERT_EQ(On("put", "T n " + File("x")).status, 0);
    std::string bytes = BytesOf(module);
    bytes[bytes.find("ZTRSRC") + 12] = 1;
    MakeFile(module, bytes);
    for (const char* command : {"list", "get", "put", "remove"}) {
        const std::string rest = command == std::string("list") ? "" : "T n ";
        const std::string file = command == std::string("put") ? File("y") : "";
        EXPECT_TRUE(
            FailsWith(On(command, rest + file), 1,
                      "ztres: " + module +
                          ": section .ztrsrc is damaged: its head is not closed with a zero"))
            << command;
    }
    EXPECT_TRUE(BytesOf(module) == bytes);
}

TEST_F(Ztres, RefusesAReadOnlyModule) {
    ASSERT_EQ(chmod(module.c_str(), 0444), 0);
    const std::string before = BytesOf(module);
    EXPECT_TRUE(
        FailsWith(On("put", "T n " + File("x")), 1,
                  "ztres: " + module + ": cannot change section .ztrsrc: Permission denied"));
    EXPECT_TRUE(BytesOf(module) == before);
}

TEST_F(Ztres, TellsThatTheOutputCannotBeWritten) {
    ASSERT_EQ(On("put", "T n " + File("x")).status, 0);
    EXPECT_TRUE(FailsWith(On("get", "T n /nowhere/file"), 1,
                          "ztres: /nowhere/file: cannot write: No such file or directory"));
    EXPECT_TRUE(FailsWith(On("get", "T n /dev/full"), 1,
                          "ztres: /dev/full: cannot write: No space left on device"));
    EXPECT_TRUE(std::filesystem::exists("/dev/full")) << "a device is not taken away";
}

TEST_F(Ztres, MakesWhatALinkNames) {
    ASSERT_EQ(On("put", "T n " + File("bytes")).status, 0);
    std::filesystem::create_symlink("target", directory / "link");
    EXPECT_EQ(On("get", "T n " + Quoted(directory / "link")).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(directory / "link"));
    EXPECT_EQ(BytesOf(directory / "target"), "bytes");
}

TEST_F(Ztres, WritesToTheStandardOutputByItsPath) {
    ASSERT_EQ(On("put", "T n " + File("bytes")).status, 0);
    const std::string out = directory / "got";
    const std::string get = Quoted(ZTRES_PROGRAM) + " get " + Quoted(module) + " T n ";
    const std::string commands = "(printf 'first '; " + get + "/dev/stdout; printf ' '; " + get +
                                 "/dev/fd/1; printf ' last')";
    EXPECT_EQ(std::system((commands + " >" + Quoted(out)).c_str()), 0);
    EXPECT_EQ(BytesOf(out), "first bytes bytes last");
    EXPECT_EQ(std::system((commands + " | cat >" + Quoted(out)).c_str()), 0);
    EXPECT_EQ(BytesOf(out), "first bytes bytes last");
}

TEST_F(Ztres, TellsThatTheStandardOutputCannotBeWritten) {
    ASSERT_EQ(On("put", "T n " + File("x")).status, 0);
    const std::string line = "ztres: standard output: cannot write: No space left on device\n";
    const std::string errors = directory / "errors";
    for (const std::string& arguments :
         {"list " + Quoted(module), "get " + Quoted(module) + " T n", std::string("help")}) {
        const int status = std::system(
            (Quoted(ZTRES_PROGRAM) + ' ' + arguments + " >/dev/full 2>" + Quoted(errors)).c_str());
        EXPECT_EQ(WEXITSTATUS(status), 1) << arguments;
        EXPECT_EQ(BytesOf(errors), line) << arguments;
    }
}

TEST_F(Ztres, DoesNotWriteOverTheModule) {
    ASSERT_EQ(On("put", "T n " + File("x")).status, 0);
    const std::string before = BytesOf(module);
    EXPECT_TRUE(FailsWith(On("get", "T n " + Quoted(module)), 1,
                          "ztres: " + module + ": cannot write: this is the module itself"));
    EXPECT_TRUE(BytesOf(module) == before);
}

TEST_F(Ztres, LeavesNoOutputHalfWritten) {
    ASSERT_EQ(On("put", "T n " + File(std::string(100'000, 'x'))).status, 0);
    const std::string folder = directory / "folder";
    std::filesystem::create_directory(folder);
    const std::string there = folder + "/there";
    MakeFile(there, "old");
    const std::string fresh = folder + "/fresh";
    for (const std::string& got : {there, fresh}) {
        const int status = std::system(("trap '' XFSZ; ulimit -f 20; " + Quoted(ZTRES_PROGRAM) +
                                        " get " + Quoted(module) + " T n " + Quoted(got) + " 2>" +
                                        Quoted(directory / "errors"))
                                           .c_str());
        EXPECT_EQ(WEXITSTATUS(status), 1);
        EXPECT_EQ(BytesOf(directory / "errors"),
                  "ztres: " + got + ": cannot write: File too large\n");
    }
    EXPECT_EQ(BytesOf(there), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
    EXPECT_EQ(On("get", "T n " + Quoted(there)).status, 0);
    EXPECT_TRUE(BytesOf(there) == std::string(100'000, 'x'));
}

namespace {

// The module that was given its resources while it was built, or a copy of it.
class Carrier {
public:
    explicit Carrier(const std::string& path) : m_module(LoadLibraryA(path.c_str())) {}
    ~Carrier() { FreeLibrary(m_module); }
    Carrier(const Carrier&) = delete;
    Carrier& operator=(const Carrier&) = delete;

    HMODULE Module() const { return m_module; }

    // What the module finds in itself.
    std::string Own(const char* name) const {
        const auto own =
            reinterpret_cast<const unsigned char* (*)(const char*, const char*, unsigned int*)>(
                GetProcAddress(m_module, "OwnResource"));
        unsigned int size = 0;
        const unsigned char* const bytes = own ? own(name, "TEXT", &size) : nullptr;
        return bytes ? std::string(bytes, bytes + size) : "failure " + std::to_string(size);
    }

private:
    HMODULE m_module;
};

std::string FromOutside(const std::string& path, const char* name) {
    unsigned int size = 0;
    bool temporary = false;
    unsigned char* const bytes =
        ZT::ResourceManager::LoadResource(path.c_str(), name, "TEXT", size, &temporary);
    std::string text = bytes ? std::string(bytes, bytes + size) : "failure " + std::to_string(size);
    if (temporary) delete[] bytes;
    return text;
}

}  // namespace

TEST(AddedResource, IsReadByTheModuleItself) {
    const Carrier carrier(ZTRES_TEST_MODULE);
    ASSERT_NE(carrier.Module(), nullptr);
    EXPECT_EQ(carrier.Own("Greeting"), greeting);
    EXPECT_EQ(carrier.Own("odd name; \"quoted\""), greeting);
    EXPECT_EQ(carrier.Own("Missing"), "failure 5");
}

TEST(AddedResource, IsReadFromOutside) {
    EXPECT_EQ(FromOutside(ZTRES_TEST_MODULE, "Greeting"), greeting);
    EXPECT_EQ(FromOutside(ZTRES_TEST_MODULE, "Greeting"), greeting) << "loaded anew";
    const Carrier carrier(ZTRES_TEST_MODULE);
    EXPECT_EQ(FromOutside(ZTRES_TEST_MODULE, "Greeting"), greeting) << "loaded already";
}

TEST(AddedResource, OfTheProgramIsThatOfTheCallingModule) {
    unsigned int size = 0;
    const unsigned char* const bytes = ZT::ResourceManager::LoadResource("Own", "TEXT", size);
    ASSERT_NE(bytes, nullptr) << size;
    EXPECT_EQ(std::string(bytes, bytes + size), greeting);
}

// What the module is linked anew for.
TEST(AddedResource, IsNeededToLinkItsModule) {
    const std::string needs = std::string(ZTRES_TEST_MODULE_NEEDS) + '|';
    EXPECT_THAT(needs, HasSubstr("/testdata/greeting.txt|"));
    EXPECT_THAT(needs, HasSubstr("/testdata/gruss.txt|"));
}

TEST_F(Ztres, SeesWhatTheBuildAdded) {
    const Ran ran = Run("list '" ZTRES_TEST_MODULE "'");
    EXPECT_EQ(ran.out,
              "TEXT\tGreeting\t1031\t14\n"
              "TEXT\tGreeting\t1033\t14\n"
              "TEXT\todd name; \"quoted\"\t1033\t14\n");
}

TEST_F(Ztres, AddedResourceSurvivesStrip) {
    const std::string stripped = directory / "stripped.so";
    ASSERT_EQ(std::system(("strip -o " + Quoted(stripped) + " '" ZTRES_TEST_MODULE "'").c_str()),
              0);
    EXPECT_EQ(FromOutside(stripped, "Greeting"), greeting);
    const Carrier carrier(stripped);
    EXPECT_EQ(carrier.Own("Greeting"), greeting);
}
