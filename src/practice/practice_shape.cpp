#include "practice/practice_shape.h"

#include <algorithm>

namespace ampora {

int MaxPracticeSources(int nodes, int superNodes) {
    // Three branch ends at every node: at least 3N/2 branches, and the fewest a circuit of
    // N nodes may have. N - 1 of them join the nodes (the battery-only ones among them);
    // a circuit whose only resistors sit beside a supernode's battery needs one more.
    const int fewestBranches = (3 * nodes + 1) / 2;
    const int joining = std::max(nodes - 1, superNodes + 1);
    return std::clamp(fewestBranches - joining, 0, kMaxPracticeSources);
}

std::string ShapeRefusal(const PracticeShape& shape) {
    const std::string nodes = std::to_string(shape.Nodes);
    if (2 * shape.SuperNodes > shape.Nodes) {
        return nodes + " nodes hold at most " + std::to_string(shape.Nodes / 2) +
               (shape.Nodes / 2 == 1 ? " supernode" : " supernodes") +
               ": a supernode joins two nodes of its own by a battery.";
    }
    const int most = MaxPracticeSources(shape.Nodes, shape.SuperNodes);
    if (shape.Sources > most) {
        return "A circuit of " + nodes + " nodes" +
               (shape.SuperNodes > 0 ? " and " + std::to_string(shape.SuperNodes) +
                                           (shape.SuperNodes == 1 ? " supernode" : " supernodes")
                                     : std::string()) +
               " has room for at most " + std::to_string(most) +
               (most == 1 ? " current source." : " current sources.");
    }
    return "";
}

} // namespace ampora
