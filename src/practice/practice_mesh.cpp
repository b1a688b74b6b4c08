#include "practice/practice_mesh.h"

#include <algorithm>
#include <numeric>

namespace ampora {

float PracticeMesh::X(int point) const {
    return kMeshLeft + kMeshSpacing * static_cast<float>(point % columns - firstColumn);
}

float PracticeMesh::Y(int point) const {
    return kMeshTop + kMeshSpacing * static_cast<float>(point / columns - firstRow);
}

namespace {

std::vector<int> Degrees(const PracticeMesh& mesh) {
    std::vector<int> degree(static_cast<std::size_t>(mesh.columns * mesh.rows), 0);
    for (const MeshLink& link : mesh.links) {
        ++degree[static_cast<std::size_t>(link.from)];
        ++degree[static_cast<std::size_t>(link.to)];
    }
    return degree;
}

// A wire that leads nowhere is taken away, until none is left.
void PruneLooseLinks(PracticeMesh& mesh) {
    for (bool changed = true; changed;) {
        changed = false;
        const std::vector<int> degree = Degrees(mesh);
        const auto loose = [&](const MeshLink& link) {
            return degree[static_cast<std::size_t>(link.from)] == 1 ||
                   degree[static_cast<std::size_t>(link.to)] == 1;
        };
        const auto kept = std::remove_if(mesh.links.begin(), mesh.links.end(), loose);
        changed = kept != mesh.links.end();
        mesh.links.erase(kept, mesh.links.end());
    }
}

bool Joined(const PracticeMesh& mesh) {
    std::vector<int> group(static_cast<std::size_t>(mesh.columns * mesh.rows));
    std::iota(group.begin(), group.end(), 0);
    const auto root = [&](int p) {
        while (group[static_cast<std::size_t>(p)] != p) {
            p = group[static_cast<std::size_t>(p)];
        }
        return p;
    };
    for (const MeshLink& link : mesh.links) {
        group[static_cast<std::size_t>(root(link.from))] = root(link.to);
    }
    const int first = root(mesh.links.front().from);
    return std::all_of(mesh.links.begin(), mesh.links.end(),
                       [&](const MeshLink& link) { return root(link.from) == first; });
}

// The point across `link` from `point`.
int Across(const MeshLink& link, int point) {
    return link.from == point ? link.to : link.from;
}

// Traces every chain once, from the node met first. False when a chain comes back to the
// node it left: a loop that no current can be asked about.
bool TraceChains(PracticeMesh& mesh) {
    const std::vector<int> degree = Degrees(mesh);
    std::vector<int> nodeIndex(degree.size(), -1);
    for (std::size_t p = 0; p < degree.size(); ++p) {
        if (degree[p] >= 3) {
            nodeIndex[p] = static_cast<int>(mesh.nodes.size());
            mesh.nodes.push_back(static_cast<int>(p));
        }
    }
    std::vector<bool> walked(mesh.links.size(), false);
    for (std::size_t n = 0; n < mesh.nodes.size(); ++n) {
        const int start = mesh.nodes[n];
        for (std::size_t first = 0; first < mesh.links.size(); ++first) {
            const MeshLink& link = mesh.links[first];
            if (walked[first] || (link.from != start && link.to != start)) {
                continue;
            }
            MeshChain chain{static_cast<int>(n), -1, {start}};
            std::size_t at = first;
            int point = start;
            while (true) {
                walked[at] = true;
                point = Across(mesh.links[at], point);
                chain.points.push_back(point);
                if (nodeIndex[static_cast<std::size_t>(point)] >= 0) {
                    break;
                }
                // A corner or a straight joint: on along its other link.
                for (std::size_t next = 0; next < mesh.links.size(); ++next) {
                    const MeshLink& other = mesh.links[next];
                    if (next != at && (other.from == point || other.to == point)) {
                        at = next;
                        break;
                    }
                }
            }
            chain.end = nodeIndex[static_cast<std::size_t>(point)];
            if (chain.end == chain.start) {
                return false;
            }
            mesh.chains.push_back(std::move(chain));
        }
    }
    return true;
}

} // namespace

std::optional<PracticeMesh> TryPracticeMesh(PracticeRandom& random, int nodes) {
    // Lattices wider than tall, read left to right, with room for the nodes asked for
    // (a full lattice has all its points as nodes but the four corners) and not many more.
    struct Size {
        int columns, rows;
    };
    std::vector<Size> sizes;
    for (int rows = 2; rows <= 3; ++rows) {
        for (int columns = rows; columns <= 5; ++columns) {
            const int full = columns * rows - 4;
            if (full >= nodes && full <= nodes + 4) {
                sizes.push_back({columns, rows});
            }
        }
    }
    // Wider lattices only for the nodes that need them.
    if (std::any_of(sizes.begin(), sizes.end(),
                    [](const Size& s) { return s.columns <= kColumnsOnCanvas; })) {
        std::erase_if(sizes, [](const Size& s) { return s.columns > kColumnsOnCanvas; });
    }
    if (sizes.empty()) {
        return std::nullopt;
    }
    const Size size = random.Pick(sizes);
    PracticeMesh mesh;
    mesh.columns = size.columns;
    mesh.rows = size.rows;
    const int keep = random.Between(70, 100);
    for (int row = 0; row < mesh.rows; ++row) {
        for (int column = 0; column < mesh.columns; ++column) {
            const int point = row * mesh.columns + column;
            if (column + 1 < mesh.columns && random.Percent(keep)) {
                mesh.links.push_back({point, point + 1});
            }
            if (row + 1 < mesh.rows && random.Percent(keep)) {
                mesh.links.push_back({point, point + mesh.columns});
            }
        }
    }
    PruneLooseLinks(mesh);
    if (mesh.links.empty() || !Joined(mesh) || !TraceChains(mesh) ||
        static_cast<int>(mesh.nodes.size()) != nodes) {
        return std::nullopt;
    }
    mesh.firstColumn = mesh.columns;
    mesh.firstRow = mesh.rows;
    for (const MeshLink& link : mesh.links) {
        mesh.firstColumn = std::min(mesh.firstColumn, link.from % mesh.columns);
        mesh.firstRow = std::min(mesh.firstRow, link.from / mesh.columns);
    }
    return mesh;
}

} // namespace ampora
