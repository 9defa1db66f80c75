// The whole job on one mesh, without its files: measure, cut, fill, look round, draw.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "section/Model.h"
#include "section/Picture.h"

namespace section {
namespace {

Point Middle(const Point& a, const Point& b) {
    return {(a[0] + b[0]) / 2, (a[1] + b[1]) / 2, (a[2] + b[2]) / 2};
}

/// Halves every facet at the edge against corner 0. In the building below, a neighbour
/// across that edge has it against its own corner 0, and so have the halves: both get the
/// same middle, and no hole comes up.
std::vector<Facet> Halved(const std::vector<Facet>& facets) {
    std::vector<Facet> halves;
    halves.reserve(2 * facets.size());
    for (const Facet& facet : facets) {
        const Point middle = Middle(facet[1], facet[2]);
        halves.push_back({middle, facet[0], facet[1]});
        halves.push_back({middle, facet[2], facet[0]});
    }
    return halves;
}

/// A square plate of width 2 and height 1 with five square chimneys, whose walls, floors and
/// roofs are right-angled triangles with the right angle at corner 0.
class Building {
public:
    Building() {
        AddBox({-1, -1, 0}, {1, 1, 1});
        for (const float x : {-0.75f, 0.25f}) {
            for (const float y : {-0.75f, 0.25f}) {
                AddBox({x, y, 1}, {x + 0.5f, y + 0.5f, 2});
            }
        }
        AddBox({-0.125f, -0.125f, 1}, {0.125f, 0.125f, 3});
    }

    std::vector<Facet> m_facets;

private:
    void AddSide(const Point& corner, const Point& u, const Point& v, const Point& opposite) {
        m_facets.push_back({corner, u, v});
        m_facets.push_back({opposite, v, u});
    }

    void AddBox(const Point& low, const Point& high) {
        for (std::size_t axis = 0; axis < eAxisCount; ++axis) {
            const std::size_t other = (axis + 1) % eAxisCount, third = (axis + 2) % eAxisCount;
            Point corner = low, u = low, v = low, opposite = high;
            u[other] = high[other];
            v[third] = high[third];
            opposite[axis] = low[axis];
            AddSide(corner, v, u, opposite);
            for (Point* const point : {&corner, &u, &v, &opposite}) {
                (*point)[axis] = high[axis];
            }
            AddSide(corner, u, v, opposite);
        }
    }
};

/// The building with at least `count` facets, bent so that no facet is a plain one.
Mesh MeshOf(std::size_t count) {
    std::vector<Facet> facets = Building().m_facets;
    while (facets.size() < count) {
        facets = Halved(facets);
    }
    for (Facet& facet : facets) {
        for (Point& corner : facet) {
            corner[eAxisX] += 0.1f * std::sin(3 * corner[eAxisZ]);
            corner[eAxisY] += 0.05f * std::sin(7 * corner[eAxisX]);
            corner[eAxisZ] += 0.02f * std::sin(5 * corner[eAxisY]);
        }
    }
    return facets;
}

void WholeJob(benchmark::State& state) {
    const Mesh mesh = MeshOf(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        const Model model("building.stl", mesh, Cut());
        benchmark::DoNotOptimize(DrawModel(model));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(mesh.FacetCount()));
}

BENCHMARK(WholeJob)
    ->Name("Section_WholeJob/ours")
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace section
