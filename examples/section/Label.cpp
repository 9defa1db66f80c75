#include "section/Label.h"

#include <filesystem>

#include "section/Number.h"
#include "section/Texts.h"

namespace section {

std::string LabelOf(const Model& model) {
    const auto size = [&](Axis axis) { return Number(model.m_bounds.m_axes[axis].GetLength()); };
    std::string label = FilledResource(
        kLabelText,
        {{"name", std::filesystem::path(std::string(model.m_source)).filename().string()},
         {"width", size(eAxisX)},
         {"depth", size(eAxisY)},
         {"height", size(eAxisZ)},
         {"layers", Plural(model.m_layers.All().size(), "layer")}});
    // The line feed at the end of the file.
    while (label.ends_with('\n')) {
        label.pop_back();
    }
    return label;
}

}  // namespace section
