#include "section/ModelDocument.h"

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <zt/persist/PCExBase.h>

#include "section/DocumentFile.h"
#include "section/DocumentParts.h"

namespace section {
namespace {

constexpr const char* kRoot = "Section";
constexpr int kVersion = 4;

/// The directions of a run, as the context's mode.
constexpr int kLoading = 0;
constexpr int kStoring = 1;

// ---------------------------------------------- parts that the objects have in common

/// The limits of a range. Missing limits would leave the range as it was; here they
/// are a failure, and so are limits that make no interval.
void PersistRange(ZT::PCExBase& pc, ZT::RangeR1& range) {
    range.PersistXML(pc);
    const double length = range.GetLength();
    if (pc.IsLoading() && !(length >= 0.0 && std::isfinite(length))) {
        FailAt(pc, "Rg");
    }
}

/// An arc in radians. A full and an empty one have limits too.
void PersistArc(ZT::PCExBase& pc, const char* name, ZT::RangeS1& arc) {
    OpenElement(pc, name);
    int state = pc.IsStoring() ? arc.m_eState : -1;
    pc.PersistInt("State", state);
    if (state < ZT::RangeS1::eStateFull || state > ZT::RangeS1::eStatePartial) {
        FailAt(pc, "State");
    }
    arc.m_eState = static_cast<ZT::RangeS1::EState>(state);
    if (pc.IsLoading()) {
        arc.m_min = arc.m_max = std::numeric_limits<double>::quiet_NaN();
    }
    arc.PersistXML(pc);
    for (const double limit : {arc.m_min, arc.m_max}) {
        if (!(std::abs(limit) <= ZT::zPi + ZT::zToler)) {
            FailAt(pc, "Rg");
        }
    }
    pc.PopElement(false);
}

/// The run of a cyclic group as state, first, last and rank.
void PersistRun(ZT::PCExBase& pc, const char* name, ZT::RangeZGroup& run) {
    int row[] = {-1, -1, -1, -1};
    if (pc.IsStoring()) {
        row[0] = run.m_eState, row[1] = run.m_first, row[2] = run.m_last, row[3] = run.m_rank;
    }
    pc.PersistDataInt(name, row, 4, true);
    run.m_eState = static_cast<ZT::RangeS1::EState>(row[0]);
    run.m_first = row[1];
    run.m_last = row[2];
    run.m_rank = row[3];
    const bool isState = 0 <= row[0] && row[0] <= ZT::RangeS1::eStatePartial;
    if (!isState || row[1] < 0 || row[2] < 0 || !run.IsValid()) {
        FailAt(pc, name);
    }
}

/// The first and the last of a run of segments between `knots` knots.
void PersistIndices(ZT::PCExBase& pc, const char* name, ZT::RangeInt& run, ZT::uint64 knots) {
    int row[] = {-1, -1};
    if (pc.IsStoring()) {
        row[0] = run.m_min, row[1] = run.m_max;
    }
    pc.PersistDataInt(name, row, 2, true);
    run.Set(row[0], row[1]);
    if (row[0] < 0 || run.IsEmpty() || static_cast<ZT::uint64>(row[1]) + 1 >= knots) {
        FailAt(pc, name);
    }
}

/// A length, which is neither missing nor below `least`.
void PersistLength(ZT::PCExBase& pc, const char* name, double& length, double least) {
    if (pc.IsLoading()) {
        length = std::numeric_limits<double>::quiet_NaN();
    }
    pc.PersistData(name, &length, 1, true);
    if (!(length >= least && std::isfinite(length))) {
        FailAt(pc, name);
    }
}

/// A part of a whole, from 0 to 1.
void PersistShare(ZT::PCExBase& pc, const char* name, double& share) {
    PersistLength(pc, name, share, 0.0);
    if (share > 1.0) {
        FailAt(pc, name);
    }
}

/// The elements of a list one after another, all with the tag `name`. Each of them
/// finds the cursor on its own element when loading.
template <class T>
void PersistList(ZT::PCExBase& pc, const char* name, std::vector<T>& list) {
    if (pc.IsStoring()) {
        for (T& element : list) {
            element.PersistXML(pc);
        }
        return;
    }
    list.clear();
    const IXMLDOMNodeListPtr nodes = pc.GetCurElem()->selectNodes(name);
    for (const IXMLDOMNodePtr& node : *nodes) {
        pc.Push(node);
        list.emplace_back().PersistXML(pc);
        pc.PopElement(false);
    }
    if (list.empty()) {
        FailAt(pc, name);
    }
}

/// The version of the document. A number of this program's own, so that a later one
/// can tell what it has before it.
void PersistVersion(ZT::PCExBase& pc) {
    int version = kVersion;
    pc.PersistInt("Version", version);
    if (version != kVersion) {
        throw Failure("a model of version " + std::to_string(version) +
                      ", and this program knows version " + std::to_string(kVersion));
    }
}

// --------------------------------------------------------------------- starting a run

/// Stores `model` under `root`, or loads it, as `mode` says.
void Run(int mode, const IXMLDOMDocumentPtr& document, const IXMLDOMElementPtr& root,
         Model& model) {
    ZT::PC context;
    context.m_mode = mode;
    ZT::PCExBase cursor(&context, document);
    cursor.m_bIndent = true;
    cursor.Push(root);
    PersistVersion(cursor);
    model.PersistXML(cursor);
    cursor.PopElement(false);
}

std::string TextOf(const IXMLDOMParseError& error) {
    std::string reason = Printable(error.reason());
    if (error.line() == 0) {
        return reason;
    }
    return "line " + std::to_string(error.line()) + ", column " + std::to_string(error.linepos()) +
           ": " + reason;
}

IXMLDOMElementPtr LoadRoot(const IXMLDOMDocumentPtr& document, const std::filesystem::path& path) {
    if (!document->load(path.string())) {
        throw Failure(TextOf(document->parseError()));
    }
    IXMLDOMElementPtr root = document->documentElement();
    if (root->nameView() != kRoot) {
        throw Failure("no stored model: its root is " + Quoted(root->nameView()) + ", not '" +
                      kRoot + "'");
    }
    return root;
}

}  // namespace

// ------------------------------------------------------------------- the objects' records

void Bounds::PersistXML(ZT::PCExBase& pc) {
    OpenElement(pc, "Bounds");
    for (const Axis axis : {eAxisX, eAxisY, eAxisZ}) {
        constexpr const char* kNames[] = {"X", "Y", "Z"};
        OpenElement(pc, kNames[axis]);
        PersistRange(pc, m_axes[axis]);
        pc.PopElement(false);
    }
    pc.PopElement(false);
}

void FacingCounts::PersistXML(ZT::PCExBase& pc) {
    OpenElement(pc, "Facings");
    PersistCount(pc, "Side", m_nSide);
    PersistCount(pc, "Horizontal", m_nHorizontal);
    PersistCount(pc, "Degenerate", m_nDegenerate);
    pc.PopElement(false);
}

void ContourFigures::PersistXML(ZT::PCExBase& pc) {
    OpenElement(pc, "Contours");
    PersistCount(pc, "Loops", m_nLoops);
    PersistCount(pc, "Open", m_nOpen);
    PersistLength(pc, "Length", m_length, 0.0);
    PersistRun(pc, "Run", m_run);
    pc.PopElement(false);
}

void FillFigures::PersistXML(ZT::PCExBase& pc) {
    OpenElement(pc, "Fill");
    PersistLength(pc, "Material", m_material, 0.0);
    PersistLength(pc, "Voids", m_voids, 0.0);
    PersistShare(pc, "Carried", m_carried);
    PersistCount(pc, "Slivers", m_nSlivers);
    PersistCount(pc, "Unpaired", m_nUnpaired);
    pc.PopElement(false);
}

void ReachFigures::PersistXML(ZT::PCExBase& pc) {
    OpenElement(pc, "Reach");
    PersistCount(pc, "Contours", m_nContours);
    PersistCount(pc, "Reached", m_nReached);
    if (m_nReached > m_nContours) {
        FailAt(pc, "Reached");
    }
    PersistLength(pc, "Free", m_free, 0.0);
    PersistArc(pc, "Hardest", m_hardest);
    pc.PopElement(false);
}

void Layer::PersistXML(ZT::PCExBase& pc) {
    pc.PersistElement("Layer", false);
    PersistRange(pc, m_range);
    PersistCount(pc, "Facets", m_nFacets);
    PersistArc(pc, "Facing", m_facing);
    m_contours.PersistXML(pc);
    m_fill.PersistXML(pc);
    m_reach.PersistXML(pc);
    pc.PopIfStoring();
}

void Layers::PersistXML(ZT::PCExBase& pc) {
    OpenElement(pc, "Layers");
    PersistRange(pc, m_height);
    PersistLength(pc, "Step", m_step, ZT::zToler);
    ZT::uint64 knots = KnotCount();
    PersistCount(pc, "Knots", knots);
    PersistIndices(pc, "LongestCover", m_longestCover, knots);
    PersistCount(pc, "ScanLines", m_nScanLines);
    if (m_nScanLines > static_cast<ZT::uint64>(ScanLines::kMostEach)) {
        FailAt(pc, "ScanLines");
    }
    PersistList(pc, "Layer", m_layers);
    if (knots != KnotCount()) {
        FailAt(pc, "Knots");
    }
    pc.PopElement(false);
}

void Model::PersistXML(ZT::PCExBase& pc) {
    OpenElement(pc, "Model");
    pc.PersistString("File", m_source, true);
    m_bounds.PersistXML(pc);
    m_facings.PersistXML(pc);
    m_layers.PersistXML(pc);
    m_mesh.PersistXML(pc);
    m_input.PersistXML(pc);
    pc.PopElement(false);
}

// -------------------------------------------------------------------- storing and loading

void StoreModel(Model model, const std::filesystem::path& path) {
    try {
        const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
        Run(kStoring, document, document->appendChild(document->createElement(kRoot)), model);
        SaveDocument(document, path);
    } catch (const _com_error& error) {
        throw NamingFile(path, TextOf(error));
    }
}

Model LoadModel(const std::filesystem::path& path) {
    try {
        const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
        const IXMLDOMElementPtr root = LoadRoot(document, path);
        Model model;
        Run(kLoading, document, root, model);
        return model;
    } catch (const Failure& failure) {
        throw NamingFile(path, failure.what());
    } catch (const _com_error& error) {
        throw NamingFile(path, TextOf(error));
    }
}

}  // namespace section
