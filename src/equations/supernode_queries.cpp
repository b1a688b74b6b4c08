#include "equations/supernode_queries.h"

#include "tables/number_text.h"

#include <cmath>

namespace ampora {

bool IsOnList(std::int16_t value, const std::vector<std::int16_t>& list) {
    for (const std::int16_t item : list) {
        if (item == value) {
            return true;
        }
    }
    return false;
}

bool IsBranchOfSN(const Equations& equations, int branch, int superNode) {
    if (superNode < 1 || superNode > equations.NumSuperNodes) {
        return false;
    }
    return IsOnList(static_cast<std::int16_t>(branch), equations.SuperNodes[superNode].SNBranches);
}

bool IsNormalNode(const Workspace& ws, int position) {
    if (position < 1 || position > ws.Circuit.NumNodes) {
        return false;
    }
    for (int s = 1; s <= ws.Equations.NumSuperNodes; ++s) {
        if (IsOnList(static_cast<std::int16_t>(position), ws.Equations.SuperNodes[s].Nodes)) {
            return false;
        }
    }
    return true;
}

bool IsAnchorNode(const Equations& equations, int position, int& superNode) {
    for (int s = 1; s <= equations.NumSuperNodes; ++s) {
        const auto& nodes = equations.SuperNodes[s].Nodes;
        if (!nodes.empty() && nodes.front() == position) {
            superNode = s;
            return true;
        }
    }
    superNode = 0;
    return false;
}

int EqnVarWithNode(const Equations& equations, int position) {
    for (std::size_t i = 0; i < equations.EqnVars.size(); ++i) {
        const EqnVar& var = equations.EqnVars[i];
        const bool carries = var.SuperNode > 0 ? IsOnList(static_cast<std::int16_t>(position),
                                                          equations.SuperNodes[var.SuperNode].Nodes)
                                               : var.Node == position;
        if (carries) {
            return static_cast<int>(i) + 1;
        }
    }
    return 0;
}

void SortAndPack(std::vector<std::int16_t>& list, bool ascending) {
    if (list.size() <= 1) {
        return;
    }
    for (std::size_t limit = list.size() - 1; limit > 0; --limit) {
        bool exchanged = false;
        for (std::size_t k = 0; k < limit; ++k) {
            const bool outOfOrder = ascending ? list[k] > list[k + 1] : list[k] < list[k + 1];
            if (outOfOrder) {
                std::swap(list[k], list[k + 1]);
                exchanged = true;
            }
        }
        if (!exchanged) {
            break;
        }
    }
    std::size_t kept = 1;
    for (std::size_t k = 1; k < list.size(); ++k) {
        if (list[k] != list[kept - 1]) {
            list[kept++] = list[k];
        }
    }
    list.resize(kept);
}

void AppendNegAlias(std::string& out, std::string_view alias) {
    const auto negateParts = [&](std::size_t sign, char otherSign) {
        out += '-';
        out.append(alias.substr(0, sign));
        out += otherSign;
        out.append(alias.substr(sign + 1));
    };
    if (ParseDouble(alias)) {
        out += alias.front() == '-' ? '+' : '-';
        out.append(alias.substr(alias.front() == '-' ? 1 : 0));
        return;
    }
    const auto plus = alias.find('+');
    const auto minus = alias.find('-');
    if (minus != std::string_view::npos && plus == std::string_view::npos) {
        negateParts(minus, '+');
    } else if (plus != std::string_view::npos && minus == std::string_view::npos) {
        negateParts(plus, '-');
    } else {
        out += '-';
        out.append(alias);
    }
}

std::string NegAlias(const std::string& alias) {
    std::string negated;
    AppendNegAlias(negated, alias);
    return negated;
}

int NodeAt(const Workspace& ws, int position) {
    return ws.Naming.NodeOrder[position];
}

bool IsReferencePosition(const Workspace& ws, int position) {
    return ws.Naming.HasReference != 0 && position == 1;
}

std::string SuperEqnString(const Workspace& ws, int member, int anchor, float offset) {
    const bool toReference = IsReferencePosition(ws, anchor);
    std::string text = ws.Circuit.NodeLabels[NodeAt(ws, member)].Name + "=";
    if (!toReference) {
        text += ws.Circuit.NodeLabels[NodeAt(ws, anchor)].Name;
    }
    if (offset > 0) {
        text += (toReference ? "" : "+") + SingleText(offset);
    } else if (offset < 0) {
        text += "-" + SingleText(std::fabs(offset));
    } else if (toReference) {
        text += "0";
    }
    return text;
}

std::string SuperAltEqnString(const Workspace& ws, int member, int anchor, float offset) {
    std::string text = ws.Circuit.NodeLabels[NodeAt(ws, member)].Name;
    if (!IsReferencePosition(ws, anchor)) {
        text += "-" + ws.Circuit.NodeLabels[NodeAt(ws, anchor)].Name;
    }
    text += "=";
    if (offset == 0) {
        text += "0";
    } else {
        text += offset < 0 ? "-" + SingleText(std::fabs(offset)) : SingleText(offset);
    }
    return text;
}

} // namespace ampora
