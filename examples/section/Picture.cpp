#include "section/Picture.h"

#include <algorithm>
#include <cmath>

#include "section/DocumentFile.h"
#include "section/Label.h"
#include "section/Number.h"
#include "section/PicturePanels.h"
#include "section/PictureShapes.h"
#include "section/SvgText.h"

namespace section {
namespace {

// ------------------------------------------------------------------------ choosing layers

/// How much changes from the first of `chosen` up to each of them. Each of three things
/// counts for a third of the whole: the mere number of layers, the share of material and
/// the number of contours.
std::vector<double> ChangesUpTo(const Layers& layers, const std::vector<std::size_t>& chosen) {
    const std::size_t count = chosen.size();
    std::vector<double> shares(count), contours(count), changes(count);
    const auto at = [&](std::size_t i) -> const Layer& { return layers.All()[chosen[i]]; };
    const auto contoursAt = [&](std::size_t i) {
        return static_cast<double>(at(i).m_contours.m_nLoops + at(i).m_contours.m_nOpen);
    };
    for (std::size_t i = 1; i < count; ++i) {
        const double share = at(i).m_fill.Share() - at(i - 1).m_fill.Share();
        shares[i] = shares[i - 1] + std::abs(share);
        contours[i] = contours[i - 1] + (contoursAt(i) != contoursAt(i - 1) ? 1.0 : 0.0);
    }
    const auto part = [](double value, double whole) { return whole > 0.0 ? value / whole : 0.0; };
    for (std::size_t i = 0; i < count; ++i) {
        changes[i] = part(static_cast<double>(i), static_cast<double>(count - 1)) +
                     part(shares[i], shares.back()) + part(contours[i], contours.back());
    }
    return changes;
}

std::vector<std::size_t> LayersWithContours(const Layers& layers) {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < layers.All().size(); ++i) {
        const ContourFigures& contours = layers.All()[i].m_contours;
        if (contours.m_nLoops + contours.m_nOpen > 0) {
            found.push_back(i);
        }
    }
    return found;
}

// ---------------------------------------------------------------------- around the panels

/// The longest round length that takes no more than `width` pixels; 0 if none does.
double ScaleLength(const View& view, double width) {
    const double longest = width / view.Scale();
    const double power = std::pow(10.0, std::floor(std::log10(longest)));
    const double digit = longest / power;
    return std::isfinite(power) ? power * (digit < 2 ? 1 : digit < 5 ? 2 : 5) : 0.0;
}

std::string ScaleBar(const View& view, const Spot& place) {
    const double length = ScaleLength(view, 100.0);
    const double width = length * view.Scale();
    if (!(width > 0.0)) {
        return {};
    }
    const auto line = [&](double x0, double y0, double x1, double y1) {
        return LinePath({{place.x + x0, place.y + y0}, {place.x + x1, place.y + y1}}, false, 0.0);
    };
    return Lines(line(-width, 0, 0, 0) + line(-width, -4, -width, 4) + line(0, -4, 0, 4), kInk) +
           Words({place.x - width / 2, place.y - 8},
                 Number(length) + (length == 1.0 ? " STL unit" : " STL units"), 11, kFaintInk,
                 false, "middle");
}

/// Which way the axes go.
std::string AxesSign(const Spot& place) {
    const auto line = [&](double x0, double y0, double x1, double y1) {
        return LinePath({{place.x + x0, place.y + y0}, {place.x + x1, place.y + y1}}, false, 0.0);
    };
    const std::string data = line(0, 0, 26, 0) + line(22, -3, 26, 0) + line(22, 3, 26, 0) +
                             line(0, 0, 0, -26) + line(-3, -22, 0, -26) + line(3, -22, 0, -26);
    return Lines(data, kInk) + Words({place.x + 30, place.y + 4}, "x", 12, kInk) +
           Words({place.x - 3, place.y - 31}, "y", 12, kInk);
}

/// An entry of the legend: a sample of 34 pixels about a line, and what it stands for.
struct Entry {
    std::string sample;
    std::string text;
};

std::vector<Entry> LegendEntries(const Occurring& occurring, bool filled) {
    const auto stripes = [](double thickness, const char* colour) {
        return Bars("M0 -4.5h30M0 0h30M0 4.5h30", thickness, colour);
    };
    std::vector<Entry> entries;
    if (filled) {
        entries.push_back({stripes(2.8, kCarried), occurring.hanging
                                                       ? "material, the layer below carries it"
                                                       : "material"});
    }
    if (occurring.hanging) {
        entries.push_back({stripes(2.8, kHanging), "material with nothing right below it"});
    }
    if (filled) {
        entries.push_back({stripes(0.5, kVoid), "void inside the bounds"});
    }
    entries.push_back({Lines("M0 4L10 -4L20 4L30 -4", kInk), "contour"});
    if (occurring.chains) {
        entries.push_back(
            {Lines("M0 4L10 -4L20 4L30 -4", kChain, "5 2"), "open chain: the mesh has a hole"});
    }
    if (occurring.fans) {
        entries.push_back({Fan(SectorPath({15, 6}, 14, 0.5, 2.1)) + Dot({15, 6}),
                           "directions that reach the dot"});
    }
    if (occurring.marks) {
        entries.push_back({Mark({15, 0}), "point that no direction reaches"});
    }
    return entries;
}

constexpr double kLegendRow = 26.0;
constexpr int kLegendColumns = 3;

std::string Legend(const std::vector<Entry>& entries, double top) {
    std::string text;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const double column = static_cast<double>(i % kLegendColumns);
        const double row = static_cast<double>(i / kLegendColumns);
        text += MovedGroup({kMargin + Layout::kAround + column * 310.0, top + row * kLegendRow},
                           entries[i].sample + Words({42, 4}, entries[i].text, 12, kInk));
    }
    return text;
}

/// Which layers are shown.
std::string ShownText(const Model& model, std::size_t shown) {
    const std::size_t all = model.m_layers.All().size();
    const std::size_t filled = LayersWithContours(model.m_layers).size();
    if (shown == 0) {
        return "No layer has a contour at its middle height.";
    }
    const std::string empty =
        filled < all ? " " + Plural(all - filled, "layer") + " without a contour left out." : "";
    if (shown == filled) {
        return "Every layer with a contour is shown." + empty;
    }
    return std::to_string(shown) + " of " + std::to_string(filled) +
           " layers are shown, closer together where the share of material and the number of "
           "contours change more." +
           empty;
}

std::string Heading(const Model& model, std::size_t shown) {
    const Layers& layers = model.m_layers;
    const double left = kMargin + Layout::kAround;
    const std::string facts = Plural(model.m_mesh.FacetCount(), "facet") + "; " +
                              Plural(layers.All().size(), "layer") + " along z, each " +
                              Number(layers.Thickness()) +
                              " thick, from z = " + Number(layers.Height().m_min) + " to " +
                              Number(layers.Height().m_max) + "; lengths in STL units";
    return Words({left, 44}, "Sections of " + LabelOf(model), 20, kInk, true) +
           Words({left, 66}, facts, 12, kFaintInk) +
           Words({left, 83}, ShownText(model, shown), 12, kFaintInk);
}

/// What a reader has to know besides the legend, line by line.
std::vector<std::string> Notes(const Model& model, const ScanLines& lines,
                               const Occurring& occurring, double detail) {
    std::vector<std::string> notes{
        "Each layer is cut at its middle height. Seen from above.",
        "Reach: in the plane of the section, for a tool without width, at eight points of a "
        "contour; where fans would overlap, those of some points only are drawn."};
    if (!lines.Places().empty()) {
        const double spacing =
            model.m_bounds.m_axes[eAxisY].GetLength() / static_cast<double>(lines.Places().size());
        notes[0] += " Material and voids along " + std::to_string(lines.Places().size()) +
                    " scan lines, " + Number(spacing) +
                    " apart; shares are shares of their length inside the bounds.";
    }
    if (occurring.hanging && occurring.lowest) {
        notes.emplace_back("The lowest layer is drawn as if it were carried.");
    }
    if (occurring.chains) {
        notes.emplace_back(
            "An open line crosses the contours an odd number of times; its last "
            "crossing of an open chain counts for nothing.");
    }
    if (detail > 1.0) {
        notes.emplace_back("Details below " + Pixels(detail) + " pixels are left out.");
    }
    return notes;
}

constexpr double kNoteRow = 17.0;

std::string NoteRows(const std::vector<std::string>& notes, double top) {
    std::string text;
    for (std::size_t i = 0; i < notes.size(); ++i) {
        text += Words({kMargin + Layout::kAround, top + kNoteRow * static_cast<double>(i)},
                      notes[i], 11, kFaintInk);
    }
    return text;
}

/// What stands below the panels.
struct Foot {
    std::string text;
    double height;

    Foot(const Model& model, const Layout& layout, const Occurring& occurring, double detail,
         double top) {
        const ScanLines lines = model.m_layers.LinesIn(model.m_bounds);
        const std::vector<Entry> entries = LegendEntries(occurring, !lines.Places().empty());
        const std::vector<std::string> notes = Notes(model, lines, occurring, detail);
        const std::size_t rows = (entries.size() + kLegendColumns - 1) / kLegendColumns;
        const double legend = static_cast<double>(std::max<std::size_t>(rows, 2)) * kLegendRow + 6;
        const double right = kPageWidth - kMargin - Layout::kAround;
        text = Legend(entries, top) + AxesSign({right - 30, top + 16}) +
               ScaleBar(layout.view, {right - 80, top + 16}) + NoteRows(notes, top + legend);
        height = legend + static_cast<double>(notes.size()) * kNoteRow;
    }
};

std::string Drawn(const Model& model, const std::deque<Section>& sections, double detail) {
    constexpr double kTop = 102.0;
    const Layout layout(model.m_bounds, std::max<std::size_t>(sections.size(), 1));
    Panels panels(model, layout, detail);
    std::string body = Heading(model, sections.size());
    for (std::size_t i = 0; i < sections.size(); ++i) {
        body += MovedGroup(layout.CellAt(i, kTop), panels.Draw(sections[i]));
    }
    double bottom = kTop;
    if (!sections.empty()) {
        const double top = kTop + layout.rows * layout.cellHeight + 30.0;
        const Foot foot(model, layout, panels.Occurred(), detail, top);
        body += foot.text;
        bottom = top + foot.height;
    }
    const std::string width = Pixels(kPageWidth), height = Pixels(bottom + kMargin);
    return SvgElement(
        "svg",
        {{"xmlns", "http://www.w3.org/2000/svg"},
         {"width", width},
         {"height", height},
         {"viewBox", "0 0 " + width + ' ' + height},
         {"font-family", "sans-serif"}},
        "\n" + SvgElement("title", {}, Escaped("Sections of " + LabelOf(model))) +
            SvgElement("rect", {{"width", width}, {"height", height}, {"fill", "#ffffff"}}) + body);
}

}  // namespace

// ------------------------------------------------------------------------------ interface

std::vector<std::size_t> TellingLayers(const Layers& layers, std::size_t most) {
    const std::vector<std::size_t> all = LayersWithContours(layers);
    if (all.size() <= most) {
        return all;
    }
    const std::vector<double> changes = ChangesUpTo(layers, all);
    std::vector<std::size_t> telling;
    std::size_t next = 0;
    for (std::size_t taken = 0; taken < most; ++taken) {
        const double due =
            changes.back() * static_cast<double>(taken) / static_cast<double>(most - 1);
        const std::size_t last = all.size() - (most - taken);
        while (next < last && changes[next] < due) {
            ++next;
        }
        telling.push_back(all[next++]);
    }
    return telling;
}

std::string SectionPicture(const Model& model, const std::deque<Section>& sections) {
    constexpr std::size_t kMostBytes = 400000;
    constexpr double kFinest = 0.4, kCoarsest = 20.0;
    double detail = kFinest;
    std::string svg = Drawn(model, sections, detail);
    while (svg.size() > kMostBytes && detail < kCoarsest) {
        detail *= 2;
        svg = Drawn(model, sections, detail);
    }
    return svg;
}

std::string DrawModel(const Model& model) {
    const std::vector<std::size_t> telling = TellingLayers(model.m_layers, kMostPanels);
    return SectionPicture(model, model.m_layers.SectionsOf(model.m_mesh, model.m_bounds, telling));
}

void StorePicture(const std::string& svg, const std::filesystem::path& path) {
    try {
        const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
        document->put_preserveWhiteSpace(true);
        if (!document->loadXML(svg)) {
            throw Failure(Printable(document->parseError().reason()));
        }
        SaveDocument(document, path);
    } catch (const _com_error& error) {
        throw NamingFile(path, TextOf(error));
    }
}

}  // namespace section
