#include "section/CommandLine.h"

#include <cstddef>
#include <string_view>

#include <zt/numerics/Constants.h>

#include "section/Failure.h"
#include "section/Input.h"
#include "section/Number.h"

namespace section {
namespace {

Failure Misuse(const std::string& text) {
    return Failure(text + "; see section --help");
}

void SetLayers(Options& options, const std::string& value) {
    if (!ParseNumber(value, options.m_cut.m_count) || options.m_cut.m_count < 1 ||
        options.m_cut.m_count > kMostLayers) {
        throw Misuse("--layers takes a whole number from 1 to " + std::to_string(kMostLayers) +
                     ", not " + Quoted(value));
    }
}

void SetStep(Options& options, const std::string& value) {
    if (!ParseNumber(value, options.m_cut.m_step) || !(options.m_cut.m_step > ZT::zToler) ||
        !(options.m_cut.m_step < ZT::zFinite)) {
        throw Misuse("--step takes a height above " + Number(ZT::zToler) + ", not " +
                     Quoted(value));
    }
}

void SetFolder(Options& options, const std::string& value) {
    if (value.empty()) {
        throw Misuse("--out takes the name of a folder");
    }
    options.m_folder = value;
    options.m_bFolder = true;
}

void SetRead(Options& options, const std::string&) {
    options.m_bRead = true;
}
void SetWithoutInput(Options& options, const std::string&) {
    options.m_bInput = false;
}
void SetHelp(Options& options, const std::string&) {
    options.m_bHelp = true;
}

struct Option {
    char letter;
    std::string_view name;
    bool takesValue;
    void (*apply)(Options& options, const std::string& value);
};

constexpr Option kOptions[] = {
    {'l', "layers", true, SetLayers}, {'s', "step", true, SetStep},
    {'o', "out", true, SetFolder},    {'w', "without-input", false, SetWithoutInput},
    {'r', "read", false, SetRead},    {'h', "help", false, SetHelp},
};

/// The option that `argument` begins with, as "-l" or as "--layers" or
/// "--layers=…", or null.
const Option* FindOption(std::string_view argument) {
    for (const Option& option : kOptions) {
        const std::string letter{'-', option.letter};
        const std::string name = "--" + std::string(option.name);
        if (argument == letter || argument.substr(0, argument.find('=')) == name) {
            return &option;
        }
    }
    return nullptr;
}

/// The arguments, taken from the front.
class Arguments {
public:
    explicit Arguments(const std::vector<std::string>& all) : m_all(all) {}

    bool AtEnd() const { return m_next == m_all.size(); }
    const std::string& Take() { return m_all[m_next++]; }

private:
    const std::vector<std::string>& m_all;
    std::size_t m_next = 0;
};

/// What stands behind '=' in `argument`, or else the argument after it.
std::string ValueOf(const Option& option, const std::string& argument, Arguments& rest) {
    const std::size_t equals = argument.find('=');
    if (!option.takesValue) {
        if (equals != argument.npos) {
            throw Misuse("--" + std::string(option.name) + " takes no value");
        }
        return {};
    }
    if (equals != argument.npos) {
        return argument.substr(equals + 1);
    }
    if (rest.AtEnd()) {
        throw Misuse("--" + std::string(option.name) + " lacks its value");
    }
    return rest.Take();
}

void SetFile(Options& options, const std::string& argument) {
    if (argument.empty()) {
        throw Misuse("FILE is an empty name");
    }
    if (!options.m_file.empty()) {
        throw Misuse("one FILE at a time: " + Quoted(argument) + " is a second one");
    }
    options.m_file = argument;
}

void Apply(Options& options, const std::string& argument, Arguments& rest) {
    if (argument.size() < 2 || argument[0] != '-') {
        SetFile(options, argument);
        return;
    }
    const Option* const option = FindOption(argument);
    if (option == nullptr) {
        throw Misuse("unknown option " + Quoted(argument));
    }
    option->apply(options, ValueOf(*option, argument, rest));
}

void CheckTogether(const Options& options, bool layersGiven) {
    if (layersGiven && options.m_cut.m_step != 0.0) {
        throw Misuse("either --layers or --step");
    }
    if (options.m_bRead && (layersGiven || options.m_cut.m_step != 0.0)) {
        throw Misuse("--read goes without --layers and --step");
    }
    if (options.m_bRead && !options.m_bInput) {
        throw Misuse("--read goes without --without-input");
    }
    if (options.m_bRead && options.m_file.empty()) {
        throw Misuse("--read takes the FILE of a stored model");
    }
}

}  // namespace

Options ParseCommandLine(const std::vector<std::string>& arguments) {
    constexpr int kNotGiven = 0;
    Options options;
    options.m_cut.m_count = kNotGiven;
    Arguments rest(arguments);
    while (!rest.AtEnd() && !options.m_bHelp) {
        const std::string& argument = rest.Take();
        if (argument == "--") {
            break;
        }
        Apply(options, argument, rest);
    }
    while (!rest.AtEnd() && !options.m_bHelp) {
        SetFile(options, rest.Take());
    }
    const bool layersGiven = options.m_cut.m_count != kNotGiven;
    if (!options.m_bHelp) {
        CheckTogether(options, layersGiven);
    }
    if (!layersGiven) {
        options.m_cut.m_count = Cut().m_count;
    }
    return options;
}

std::string HelpText() {
    return "Usage: section [OPTION]... [FILE]\n"
           "\n"
           "Cuts the triangle mesh in the STL file FILE (ASCII or binary) into layers along z.\n"
           "For each layer it counts the facets that the layer meets and finds the arc of\n"
           "directions that they face; at the middle of the layer it finds the contours, the\n"
           "material and the voids along scan lines, and from where a tool can reach the\n"
           "contours. It stores it all as XML, loads it again to compare, draws the most\n"
           "telling layers, and prints a table. Without FILE it takes a mesh of the Debian\n"
           "package assimp-testmodels. Lengths are in the unit of the file.\n"
           "\n"
           "  -l, --layers N   cut layers of a round height, about N of them, 1 to " +
           std::to_string(kMostLayers) + " (default " + std::to_string(Cut().m_count) +
           ")\n"
           "  -s, --step H     cut layers of the height H, between whole multiples of it\n"
           "  -o, --out DIR    write model.xml and section.svg into the folder DIR\n"
           "                   (default out)\n"
           "  -w, --without-input\n"
           "                   don't store the bytes of FILE in model.xml; those of a FILE of\n"
           "                   more than " +
           std::to_string(Input::kMost) +
           " bytes never are\n"
           "  -r, --read       FILE is a stored model.xml: load and print it; with --out,\n"
           "                   draw section.svg again from the mesh that is stored in it\n"
           "  -h, --help       print this text\n"
           "\n"
           "The exit status is 0, or 1 if something is wrong, which one line then tells.\n";
}

}  // namespace section
