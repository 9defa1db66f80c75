#include "section/Program.h"

#include <new>
#include <system_error>
#include <utility>

#include <platform/object/CException.h>

#include "section/CommandLine.h"
#include "section/Failure.h"
#include "section/Model.h"
#include "section/ModelDocument.h"
#include "section/Picture.h"
#include "section/Report.h"
#include "section/StlReader.h"
#include "section/Texts.h"

namespace section {
namespace {

namespace fs = std::filesystem;

/// A mesh with many limbs side by side on one layer.
constexpr const char* kUsualMesh = "/usr/share/assimp/models/STL/Spider_binary.stl";

std::uintmax_t SizeOf(const fs::path& path) {
    std::error_code missing;
    const std::uintmax_t size = fs::file_size(path, missing);
    return missing ? 0 : size;
}

void MakeFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error || !fs::is_directory(folder, error)) {
        throw Failure(Printable(folder.string()) + ": can't be made a folder" +
                      (error ? ": " + error.message() : ""));
    }
}

Mesh ReadMesh(const fs::path& path, ProgressLine& progress) {
    progress.Stage("reading " + Printable(path.filename().string()));
    return ReadStlFile(
        path, [&](std::uint64_t done, std::uint64_t total) { progress.Advance(done, total); });
}

/// What the job makes of a mesh.
struct Result {
    Model model;
    std::string picture;
};

Result Work(const fs::path& path, const Options& options, ProgressLine& progress) {
    Mesh mesh = ReadMesh(path, progress);
    const std::string name = Printable(path.filename().string());
    progress.Stage("cutting " + name + ", " + std::to_string(mesh.FacetCount()) + " facets");
    Model model(path.string(), std::move(mesh), options.m_cut);
    if (options.m_bInput) {
        model.m_input = Input(path);
    }
    progress.Stage("drawing " + name);
    std::string picture = DrawModel(model);
    return {std::move(model), std::move(picture)};
}

/// Stores `model`, loads it again and holds the two against each other. Gives the loaded
/// one, which is what a later `--read` prints.
Model StoreAndCompare(const Model& model, const fs::path& path, ProgressLine& progress) {
    progress.Stage("storing " + Printable(path.string()));
    StoreModel(model, path);
    progress.Stage("loading " + Printable(path.string()));
    Model loaded = LoadModel(path);
    const std::string difference = FirstDifference(model, loaded);
    if (!difference.empty()) {
        throw Failure(Printable(path.string()) + ": loaded again, it differs in the " + difference);
    }
    return loaded;
}

void CutMesh(const Options& options, ProgressLine& progress, std::ostream& out) {
    CheckTexts();
    const fs::path file = options.m_file.empty() ? UsualMesh(kUsualMesh) : options.m_file;
    const Result result = Work(file, options, progress);
    const fs::path document = options.m_folder / "model.xml";
    const fs::path picture = options.m_folder / "section.svg";
    MakeFolder(options.m_folder);
    const Model loaded = StoreAndCompare(result.model, document, progress);
    progress.Stage("storing " + Printable(picture.string()));
    StorePicture(result.picture, picture);
    progress.Clear();
    PrintModel(out, loaded);
    out << "\nWritten   " << Printable(document.string())
        << "\n          loaded again: the same bytes, and numbers within six digits\n          "
        << Printable(picture.string()) << '\n';
}

/// The picture of a stored model. The bounds are those of its mesh, which came back exactly.
std::string DrawAgain(Model model) {
    model.m_bounds = Bounds(model.m_mesh);
    return DrawModel(model);
}

/// Prints a stored model, and draws it again if a folder is named.
void ReadModel(const Options& options, ProgressLine& progress, std::ostream& out) {
    CheckTexts();
    progress.Stage("loading " + Printable(options.m_file.string()));
    const Model model = LoadModel(options.m_file);
    const fs::path picture = options.m_folder / "section.svg";
    if (options.m_bFolder) {
        MakeFolder(options.m_folder);
        StorePicture(DrawAgain(model), picture);
    }
    progress.Clear();
    PrintModel(out, model);
    if (options.m_bFolder) {
        out << "\nWritten   " << Printable(picture.string()) << '\n';
    }
}

void Run(const Options& options, ProgressLine& progress, std::ostream& out) {
    if (options.m_bHelp) {
        out << HelpText();
    } else if (options.m_bRead) {
        ReadModel(options, progress, out);
    } else {
        CutMesh(options, progress, out);
    }
    if (!out.flush()) {
        throw Failure("the standard output can't be written");
    }
}

void RunArguments(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
                  bool errIsTerminal) {
    const Options options = ParseCommandLine(arguments);
    ProgressLine progress(err, ProgressKind(SizeOf(options.m_file), errIsTerminal));
    Run(options, progress, out);
}

/// The text of a framework exception, which ends here.
std::string TextAndEnd(CException* exception) {
    char text[256] = {};
    const bool known = exception->GetErrorMessage(text, sizeof text);
    exception->Delete();
    return known ? Printable(text) : std::string("unknown failure");
}

}  // namespace

fs::path UsualMesh(const fs::path& path) {
    if (!fs::exists(path)) {
        throw Failure("no FILE is given, and " + path.string() +
                      " isn't there; install the package assimp-testmodels or name an STL file");
    }
    return path;
}

ProgressLine::EKind ProgressKind(std::uintmax_t size, bool terminal) {
    constexpr std::uintmax_t kLarge = std::uintmax_t{64} << 20;
    if (terminal) {
        return ProgressLine::eTerminal;
    }
    return size >= kLarge ? ProgressLine::ePlain : ProgressLine::eSilent;
}

int RunProgram(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
               bool errIsTerminal) {
    std::string failure;
    try {
        RunArguments(arguments, out, err, errIsTerminal);
        return 0;
    } catch (const std::bad_alloc&) {
        failure = "not enough memory";
    } catch (const std::exception& exception) {
        failure = exception.what();
    } catch (CException* exception) {
        failure = TextAndEnd(exception);
    }
    err << "section: " << failure << std::endl;
    return 1;
}

}  // namespace section
