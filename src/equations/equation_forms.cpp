#include "equations/equation_forms.h"

#include "equations/supernode_queries.h"

#include <algorithm>
#include <cmath>

namespace ampora {

Names EquationNames(const Workspace& ws) {
    Names names;
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        // The reference's "0" reads as the number it stands for.
        const std::string& name = ws.Circuit.NodeLabels[slot].Name;
        names.texts.push_back(name == "0" ? std::string() : name);
        names.nodeSlot.push_back(slot);
        names.currentChain.push_back(0);
    }
    for (int b = 1; b <= ws.Topology.NumBranches; ++b) {
        const std::string& name = ws.Topology.Branches[b].CurrentName;
        if (!name.empty() && name.front() == 'I') {
            names.texts.push_back(name);
            names.nodeSlot.push_back(0);
            names.currentChain.push_back(b);
        }
    }
    return names;
}

int CurrentCount(const Names& names) {
    return static_cast<int>(std::count_if(names.currentChain.begin(), names.currentChain.end(),
                                          [](int chain) { return chain != 0; }));
}

Voltage VoltageOf(const Workspace& ws, int slot) {
    const int position = ws.Naming.NodeRank[slot];
    if (IsReferencePosition(ws, position)) {
        return {};
    }
    const NodeLabel& node = ws.Circuit.NodeLabels[slot];
    return {EqnVarWithNode(ws.Equations, position), node.Alias.empty() ? 0.0 : node.AliasOffset};
}

Form StudentForm(const Workspace& ws, const Names& names, const Problem& problem,
                 const LinearSum& sum) {
    Form form(problem.Size(), 0.0);
    int current = 0;
    for (std::size_t k = 0; k < names.texts.size(); ++k) {
        const double c = sum.coefficients[k];
        if (names.nodeSlot[k] == 0) {
            form[static_cast<std::size_t>(problem.unknowns + current++)] += c;
            continue;
        }
        const Voltage voltage = VoltageOf(ws, names.nodeSlot[k]);
        if (voltage.variable != 0) {
            form[static_cast<std::size_t>(voltage.variable - 1)] += c;
        }
        form.back() -= c * voltage.offset;
    }
    form.back() -= sum.constant;
    return form;
}

Form ProgramForm(const Workspace& ws, const Problem& problem, int row) {
    Form form(problem.Size(), 0.0);
    for (int c = 1; c <= problem.unknowns; ++c) {
        form[static_cast<std::size_t>(c - 1)] = ws.Equations.Augmented(row, c);
    }
    form.back() = ws.Equations.Augmented(row, problem.unknowns + 1);
    return form;
}

Term TermOf(const Workspace& ws, const Problem& problem, int b) {
    const Branch& chain = ws.Topology.Branches[b];
    Term term{b, Form(problem.Size(), 0.0), {}, {}, {}, {}};
    if (chain.SourceCurrent != 0) {
        term.whole.back() = -chain.SourceCurrent;
        return term;
    }
    const double g = 1.0 / chain.Resistance;
    const Voltage start = VoltageOf(ws, chain.StartNode);
    const Voltage end = VoltageOf(ws, chain.EndNode);
    term.end = Form(problem.Size(), 0.0);
    if (end.variable != 0) {
        term.end[static_cast<std::size_t>(end.variable - 1)] -= g;
    }
    term.end.back() += end.offset * g;
    if (end.offset != 0) {
        term.endOffset = Form(problem.Size(), 0.0);
        term.endOffset.back() = end.offset * g;
    }
    if (start.offset != 0) {
        term.startOffset = Form(problem.Size(), 0.0);
        term.startOffset.back() = -start.offset * g;
    }
    term.whole = term.end;
    if (start.variable != 0) {
        term.whole[static_cast<std::size_t>(start.variable - 1)] += g;
    }
    term.whole.back() -= start.offset * g;
    if (chain.EMF != 0) {
        term.battery = Form(problem.Size(), 0.0);
        term.battery.back() = -chain.EMF * g;
        term.whole.back() += term.battery.back();
    }
    return term;
}

std::vector<int> MembersOf(const Workspace& ws, int variable) {
    const EqnVar& var = ws.Equations.EqnVars[static_cast<std::size_t>(variable - 1)];
    if (var.SuperNode > 0) {
        const std::vector<std::int16_t>& nodes = ws.Equations.SuperNodes[var.SuperNode].Nodes;
        return {nodes.begin(), nodes.end()};
    }
    return {var.Node};
}

// The chains whose currents the equation of `variable` adds up: those leaving its node, or
// every member of its supernode but for the chains that stay inside the supernode.
std::vector<int> ChainsOf(const Workspace& ws, int variable) {
    const std::vector<int> members = MembersOf(ws, variable);
    std::vector<int> chains;
    for (const int member : members) {
        const int slot = NodeAt(ws, member);
        for (const int b : ChainsFrom(ws.Topology, slot)) {
            const int end = ws.Topology.Branches[b].EndNode;
            const bool inside =
                std::find(members.begin(), members.end(), ws.Naming.NodeRank[end]) != members.end();
            if (end != slot && !inside) {
                chains.push_back(b);
            }
        }
    }
    return chains;
}

// True when every entry of `form` agrees with `target`: within the relative tolerance of
// the larger of the two, or both negligible beside the largest entry of the target.
bool Agrees(const Form& form, const Form& target, Tolerance tolerance) {
    double scale = 0;
    for (const double t : target) {
        scale = std::max(scale, std::fabs(t));
    }
    for (std::size_t k = 0; k < form.size(); ++k) {
        const double difference = std::fabs(form[k] - target[k]);
        const double size = std::max(std::fabs(form[k]), std::fabs(target[k]));
        if (difference > tolerance.relative * size && difference > 1e-9 * scale) {
            return false;
        }
    }
    return true;
}

// The nonzero multiple of `target` that `form` is, if it is one.
std::optional<double> MultipleOf(const Form& form, const Form& target, Tolerance tolerance) {
    double dot = 0;
    double square = 0;
    for (std::size_t k = 0; k < form.size(); ++k) {
        dot += form[k] * target[k];
        square += target[k] * target[k];
    }
    if (square == 0 || dot == 0) {
        return std::nullopt;
    }
    const double lambda = dot / square;
    Form scaled = target;
    for (double& t : scaled) {
        t *= lambda;
    }
    return Agrees(form, scaled, tolerance) ? std::optional<double>(lambda) : std::nullopt;
}

bool IsMultipleOf(const Form& form, const Form& target, Tolerance tolerance) {
    return MultipleOf(form, target, tolerance).has_value();
}

Form Plus(const Form& a, const Form& b, double times) {
    Form sum = a;
    for (std::size_t k = 0; k < sum.size() && k < b.size(); ++k) {
        sum[k] += times * b[k];
    }
    return sum;
}

// The lambda of form = lambda * a + mu * b, mu not zero, when there are such numbers.
std::optional<double> InPlane(const Form& form, const Form& a, const Form& b, Tolerance tolerance) {
    double aa = 0, ab = 0, bb = 0, fa = 0, fb = 0;
    for (std::size_t k = 0; k < form.size(); ++k) {
        aa += a[k] * a[k];
        ab += a[k] * b[k];
        bb += b[k] * b[k];
        fa += form[k] * a[k];
        fb += form[k] * b[k];
    }
    const double det = aa * bb - ab * ab;
    if (det <= 1e-12 * aa * bb) {
        return std::nullopt;
    }
    const double lambda = (fa * bb - fb * ab) / det;
    const double mu = (aa * fb - ab * fa) / det;
    if (lambda == 0 || std::fabs(mu) <= 1e-9 * std::fabs(lambda) * std::sqrt(aa / bb)) {
        return std::nullopt;
    }
    Form fitted = a;
    for (std::size_t k = 0; k < fitted.size(); ++k) {
        fitted[k] = lambda * a[k] + mu * b[k];
    }
    return Agrees(form, fitted, tolerance) ? std::optional<double>(lambda) : std::nullopt;
}

} // namespace ampora
