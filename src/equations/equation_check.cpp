#include "equations/equation_check.h"

#include "analysis/format_number.h"
#include "analysis/result_labels.h"
#include "document/number_text.h"
#include "equations/chains_by_start.h"
#include "equations/student_equation.h"
#include "equations/supernode_queries.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>

namespace ampora {

namespace {

// An equation as "coefficients . unknowns = constant" over the node unknowns, then the
// battery currents, then the constant: the layout of a row of the augmented matrix, with
// room for the battery currents that a student may write but no node equation holds.
using Form = std::vector<double>;

// What the names in a student's equation stand for.
struct Names {
    std::vector<std::string> texts;
    std::vector<int> nodeSlot;     // the node named, 0 for a battery current
    std::vector<int> currentChain; // the battery chain whose current it is, 0 for a node
};

Names EquationNames(const Workspace& ws) {
    Names names;
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        // The reference's "0" reads as the number it stands for.
        const std::string& name = ws.circuit.NodeLabels[slot].Name;
        names.texts.push_back(name == "0" ? std::string() : name);
        names.nodeSlot.push_back(slot);
        names.currentChain.push_back(0);
    }
    for (int b = 1; b <= ws.topology.NumBranches; ++b) {
        const std::string& name = ws.topology.Branches[b].CurrentName;
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

// A node's voltage in the unknowns: the unknown that carries it (0 for none) plus an offset.
// A member of a supernode is its anchor plus the batteries between them; the reference,
// and a member of the supernode that holds it, is a number.
struct Voltage {
    int variable = 0;
    double offset = 0;
};

Voltage VoltageOf(const Workspace& ws, int slot) {
    const int position = ws.naming.NodeRank[slot];
    if (IsReferencePosition(ws, position)) {
        return {};
    }
    const NodeLabel& node = ws.circuit.NodeLabels[slot];
    return {EqnVarWithNode(ws.equations, position), node.Alias.empty() ? 0.0 : node.AliasOffset};
}

struct Problem {
    int unknowns = 0;
    int currents = 0;
    std::size_t Size() const { return static_cast<std::size_t>(unknowns + currents + 1); }
};

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
        form[static_cast<std::size_t>(c - 1)] = ws.equations.Augmented(row, c);
    }
    form.back() = ws.equations.Augmented(row, problem.unknowns + 1);
    return form;
}

// One chain's current out of its start node, and its parts that a student may get wrong.
struct Term {
    int chain = 0;
    Form whole;
    Form battery; // the series batteries' share, E/R; empty without one
    Form end;     // the end node's share, -V(end)/R
    // The members' offsets from their anchors, written through the anchors' voltages.
    Form startOffset;
    Form endOffset;
};

Term TermOf(const Workspace& ws, const Problem& problem, int b) {
    const Branch& chain = ws.topology.Branches[b];
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
    const EqnVar& var = ws.equations.EqnVars[static_cast<std::size_t>(variable - 1)];
    if (var.SuperNode > 0) {
        const std::vector<std::int16_t>& nodes = ws.equations.SuperNodes[var.SuperNode].Nodes;
        return {nodes.begin(), nodes.end()};
    }
    return {var.Node};
}

// The chains whose currents the equation of `variable` adds up: those leaving its node, or
// every member of its supernode but for the chains that stay inside the supernode.
std::vector<int> ChainsOf(const Workspace& ws, const ChainsByStart& byStart, int variable) {
    const std::vector<int> members = MembersOf(ws, variable);
    std::vector<int> chains;
    for (const int member : members) {
        const int slot = NodeAt(ws, member);
        for (const int b : ChainsFrom(byStart, slot)) {
            const int end = ws.topology.Branches[b].EndNode;
            const bool inside =
                std::find(members.begin(), members.end(), ws.naming.NodeRank[end]) != members.end();
            if (end != slot && !inside) {
                chains.push_back(b);
            }
        }
    }
    return chains;
}

// The chain as traced from its other end has the same points in reverse.
std::string ReversedPath(const std::string& path) {
    std::string reversed;
    std::size_t end = path.size();
    while (end > 0) {
        const std::size_t cut = path.rfind(';', end - 1);
        const std::size_t begin = cut == std::string::npos ? 0 : cut + 1;
        reversed += reversed.empty() ? "" : ";";
        reversed.append(path, begin, end - begin);
        end = cut == std::string::npos ? 0 : cut;
    }
    return reversed;
}

// The devices on a chain or on its twin, in slot order.
std::vector<const Element*> DevicesOn(const Workspace& ws, int b) {
    const Branch& chain = ws.topology.Branches[b];
    const std::string reversed = ReversedPath(chain.Path);
    std::vector<const Element*> devices;
    for (int slot = 1; slot <= ws.circuit.NumElements; ++slot) {
        const Element& element = ws.circuit.Elements[slot];
        const int on = std::abs(element.Branch);
        if (element.Kind == kEmpty || on == 0 || on > ws.topology.NumBranches) {
            continue;
        }
        const Branch& other = ws.topology.Branches[on];
        if (on == b || (other.StartNode == chain.EndNode && other.EndNode == chain.StartNode &&
                        other.Path == reversed)) {
            devices.push_back(&element);
        }
    }
    return devices;
}

// "the 30 Ω resistor", "the 10 Ω and 20 Ω resistors": the chain's devices of one sort.
std::string DevicesText(const Workspace& ws, int b, bool (*sort)(int), std::string_view one,
                        std::string_view several) {
    std::vector<std::string> values;
    for (const Element* element : DevicesOn(ws, b)) {
        if (sort(element->Kind)) {
            values.push_back(ValueWithUnit(*element));
        }
    }
    if (values.empty()) {
        return "";
    }
    std::string text = "the ";
    for (std::size_t k = 0; k < values.size(); ++k) {
        text += k == 0 ? "" : k + 1 == values.size() ? " and " : ", ";
        text += values[k];
    }
    text += ' ';
    text += values.size() > 1 ? several : one;
    return text;
}

std::string NodeName(const Workspace& ws, int slot) {
    return ws.circuit.NodeLabels[slot].Name;
}

std::string Between(const Workspace& ws, int b) {
    const Branch& chain = ws.topology.Branches[b];
    return " between " + NodeName(ws, chain.StartNode) + " and " + NodeName(ws, chain.EndNode);
}

// "the 30 Ω resistor between V4 and 0", or the current source or the battery the chain holds.
std::string ChainText(const Workspace& ws, int b) {
    const Branch& chain = ws.topology.Branches[b];
    std::string devices =
        chain.SourceCurrent != 0
            ? DevicesText(ws, b, IsCurrentSource, "current source", "current sources")
            : DevicesText(ws, b, IsResistor, "resistor", "resistors");
    if (devices.empty()) {
        devices = "the chain";
    }
    return devices + Between(ws, b);
}

std::string BatteryText(const Workspace& ws, int b) {
    const std::string batteries = DevicesText(ws, b, IsBattery, "battery", "batteries");
    return batteries.empty() ? "the battery" : batteries;
}

struct Tolerance {
    double relative;
};

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

// Of two mistakes that explain the equation equally, the one that leaves the rest of it as
// the student wrote it: a multiple near 1, and not negated. With two terms, one of them
// with the wrong sign is the other with the wrong sign and the whole equation negated.
double Unlikeliness(double lambda) {
    return std::fabs(std::log(std::fabs(lambda))) + (lambda < 0 ? 1 : 0);
}

struct Explanation {
    double unlikeliness = 0;
    std::string hint;
};

// Keeps the likeliest of the explanations offered, the first of equals.
class Likeliest {
  public:
    template <typename MakeHint> void Offer(std::optional<double> lambda, MakeHint makeHint) {
        if (!lambda) {
            return;
        }
        const double unlikeliness = Unlikeliness(*lambda);
        if (best_.hint.empty() || unlikeliness < best_.unlikeliness - 1e-9) {
            best_ = {unlikeliness, makeHint()};
        }
    }
    const std::string& Hint() const { return best_.hint; }

  private:
    Explanation best_;
};

double Largest(std::span<const double> values) {
    double largest = 0;
    for (const double v : values) {
        largest = std::max(largest, std::fabs(v));
    }
    return largest;
}

// The values of the circuit's devices and chains, and the members' offsets: a decimal
// that is one of these was copied, not rounded.
bool IsCircuitValue(const Workspace& ws, double value) {
    const auto same = [value](double known) {
        return std::fabs(std::fabs(value) - std::fabs(known)) <= 1e-6 * std::fabs(known);
    };
    for (int slot = 1; slot <= ws.circuit.NumElements; ++slot) {
        if (ws.circuit.Elements[slot].Kind != kEmpty && same(ws.circuit.Elements[slot].Value)) {
            return true;
        }
    }
    for (int b = 1; b <= ws.topology.NumBranches; ++b) {
        const Branch& chain = ws.topology.Branches[b];
        if (same(chain.Resistance) || same(chain.EMF) || same(chain.SourceCurrent)) {
            return true;
        }
    }
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        if (same(ws.circuit.NodeLabels[slot].AliasOffset)) {
            return true;
        }
    }
    return false;
}

class Judge {
  public:
    Judge(const Workspace& ws, int variable)
        : ws_(ws), variable_(variable), names_(EquationNames(ws)) {
        problem_.unknowns = ws.equations.NumUnknowns;
        problem_.currents = CurrentCount(names_);
        byStart_ = GroupChainsByStart(ws.topology);
        program_ = ProgramForm(ws, problem_, variable);
    }

    EquationVerdict Check(std::string_view text) {
        EquationVerdict verdict;
        const StudentEquation read = ReadStudentEquation(text, names_.texts);
        if (!read.Read()) {
            verdict.error = read.error;
            return verdict;
        }
        student_ = StudentForm(ws_, names_, problem_, read.sum);
        raw_ = read.sum;
        roundsDecimals_ = std::ranges::any_of(read.decimals, [this](const WrittenDecimal& d) {
            return !IsCircuitValue(ws_, d.value);
        });
        tolerance_ = ToleranceOf(read.decimals);
        if (IsMultipleOf(student_, program_, tolerance_)) {
            verdict.equivalent = true;
            verdict.equationOf = VariableName(variable_);
            return verdict;
        }
        verdict.hint = Hint(read.sum, verdict.equationOf);
        return verdict;
    }

  private:
    // Exact but for the single precision of the tables, or to the figures of the least
    // precise decimal the student worked out. One of one or two figures is taken as exact:
    // 0.33 for 1/3 is rounded too far.
    Tolerance ToleranceOf(const std::vector<WrittenDecimal>& decimals) const {
        Tolerance tolerance{1e-5};
        for (const WrittenDecimal& decimal : decimals) {
            if (decimal.digits >= 3 && !IsCircuitValue(ws_, decimal.value)) {
                tolerance.relative =
                    std::max(tolerance.relative, 0.5 * std::pow(10.0, 1 - decimal.digits));
            }
        }
        return tolerance;
    }

    std::string VariableName(int variable) const {
        return ws_.equations.EqnVars[static_cast<std::size_t>(variable - 1)].VarName;
    }

    std::string Caption() const { return EquationCaption(ws_, variable_); }

    std::span<const double> Coefficients(const Form& form) const {
        return std::span<const double>(form.data(), form.size() - 1);
    }

    std::string Hint(const LinearSum& sum, std::string& equationOf) const {
        const double written = std::max(Largest(sum.coefficients), std::fabs(sum.constant));
        const double left = Largest(Coefficients(student_));
        if (left <= 1e-9 * written && std::fabs(student_.back()) <= 1e-9 * written) {
            return Largest(sum.coefficients) > 0
                       ? "it holds whatever the unknowns are: it says only what the batteries "
                         "of the supernode say, not how the currents add up"
                       : "it holds whatever the unknowns are: both sides are the same";
        }
        if (left <= 1e-9 * written) {
            return "the unknowns cancel and leave two different numbers, so it can never hold: "
                   "check the voltages of the batteries";
        }
        for (int c = 0; c < problem_.currents; ++c) {
            if (student_[static_cast<std::size_t>(problem_.unknowns + c)] != 0) {
                return "a node equation holds no battery current such as " +
                       names_.texts[names_.texts.size() -
                                    static_cast<std::size_t>(problem_.currents - c)] +
                       ": the currents inside a supernode are left out, and the supernode's "
                       "equation adds up only the currents that leave it";
            }
        }
        if (roundsDecimals_ && IsMultipleOf(student_, program_, Tolerance{0.05})) {
            return "it is close, but its decimals are rounded too far: write them to three "
                   "significant figures or more, or as fractions such as 1/30";
        }
        for (int other = 1; other <= problem_.unknowns; ++other) {
            if (other != variable_ &&
                IsMultipleOf(student_, ProgramForm(ws_, problem_, other), tolerance_)) {
                equationOf = VariableName(other);
                return "this is the equation of " + EquationCaption(ws_, other) + ", not of " +
                       Caption();
            }
        }
        if (std::string hint = OneTermWrong(); !hint.empty()) {
            return hint;
        }
        return CoefficientHint();
    }

    std::optional<double> Explains(const Form& change, double times) const {
        if (change.empty()) {
            return std::nullopt;
        }
        return MultipleOf(student_, Plus(program_, change, times), tolerance_);
    }

    bool WroteByName(int slot) const {
        return raw_.coefficients[static_cast<std::size_t>(slot - 1)] != 0;
    }

    // "V5=V3+5": how the batteries fix a member's voltage through its anchor's.
    std::string ConstraintOf(int slot) const {
        for (const BatteryConstraint& constraint : ws_.equations.Constraints) {
            if (constraint.Position == ws_.naming.NodeRank[slot]) {
                return constraint.Text;
            }
        }
        return NodeName(ws_, slot);
    }

    // One term of the program's equation written wrong, or one term too many.
    std::string OneTermWrong() const {
        const std::vector<int> chains = ChainsOf(ws_, byStart_, variable_);
        const std::vector<int> members = MembersOf(ws_, variable_);
        const auto isMember = [&](int slot) {
            return std::find(members.begin(), members.end(), ws_.naming.NodeRank[slot]) !=
                   members.end();
        };
        Likeliest likeliest;
        for (const int b : chains) {
            const Term term = TermOf(ws_, problem_, b);
            const Branch& chain = ws_.topology.Branches[b];
            const auto chainText = [&] { return ChainText(ws_, b); };
            likeliest.Offer(Explains(term.whole, -2), [&] {
                return chain.SourceCurrent != 0
                           ? "the current of " + chainText() + " has the wrong sign"
                           : "one term has the wrong sign: the current through " + chainText();
            });
            likeliest.Offer(Explains(term.whole, -1), [&] {
                return "a term is missing: the current through " + chainText();
            });
            likeliest.Offer(Explains(term.battery, -2), [&] {
                return BatteryText(ws_, b) + " in series with " + chainText() +
                       " has the wrong sign in its term";
            });
            likeliest.Offer(Explains(term.battery, -1), [&] {
                return BatteryText(ws_, b) + " in series with " + chainText() +
                       " is missing from its term";
            });
            likeliest.Offer(Explains(term.end, -2), [&] {
                return "in the term of " + chainText() + ", " + NodeName(ws_, chain.EndNode) +
                       " has the wrong sign";
            });
            for (const auto& [offset, slot] : {std::pair{&term.startOffset, chain.StartNode},
                                               std::pair{&term.endOffset, chain.EndNode}}) {
                if (WroteByName(slot)) {
                    continue; // the student wrote the member itself, not through its anchor
                }
                likeliest.Offer(Explains(*offset, -2), [&] {
                    return "in the term of " + chainText() + ", " + NodeName(ws_, slot) +
                           " is written with the wrong sign of the batteries' voltage: " +
                           ConstraintOf(slot);
                });
            }
        }
        // A current the equation leaves out: one inside the supernode, or a resistor's
        // elsewhere (another source's current would only be a wrong constant).
        for (int b = 1; b <= ws_.topology.NumBranches; ++b) {
            const Branch& chain = ws_.topology.Branches[b];
            const bool inside = isMember(chain.StartNode) && isMember(chain.EndNode);
            const bool ownTerm = std::find(chains.begin(), chains.end(), b) != chains.end();
            if (ownTerm || chain.EndNode == chain.StartNode ||
                (chain.SourceCurrent == 0 && chain.Resistance == 0) ||
                (chain.SourceCurrent != 0 && !inside)) {
                continue;
            }
            likeliest.Offer(Explains(TermOf(ws_, problem_, b).whole, 1), [&] {
                return "a term is extra: the current through " + ChainText(ws_, b) +
                       (inside ? " stays inside " : " does not leave ") + Caption();
            });
        }
        if (!likeliest.Hint().empty()) {
            return likeliest.Hint();
        }
        for (const int b : chains) {
            const Term term = TermOf(ws_, problem_, b);
            if (term.end.empty()) {
                continue;
            }
            likeliest.Offer(
                InPlane(student_, program_, Plus(term.whole, term.battery, -1), tolerance_), [&] {
                    return "the term of " + ChainText(ws_, b) +
                           " is not right: it is the voltage across the chain "
                           "divided by " +
                           ShortestText(ws_.topology.Branches[b].Resistance) + " \u03A9";
                });
        }
        return likeliest.Hint();
    }

    std::string CoefficientHint() const {
        const std::size_t own = static_cast<std::size_t>(variable_ - 1);
        const std::span<const double> program = Coefficients(program_);
        const std::span<const double> student = Coefficients(student_);
        if (student[own] == 0 || program[own] == 0) {
            return VariableName(variable_) + " is missing: every resistor that leaves " +
                   Caption() + " gives a term with " + VariableName(variable_);
        }
        const double lambda = student[own] / program[own];
        for (std::size_t c = 0; c < program.size(); ++c) {
            if (c == own) {
                continue;
            }
            const double expected = lambda * program[c];
            const double difference = std::fabs(student[c] - expected);
            if (difference <=
                tolerance_.relative * std::max(std::fabs(student[c]), std::fabs(expected))) {
                continue;
            }
            const std::string name = VariableName(static_cast<int>(c + 1));
            if (program[c] == 0) {
                return name + " should not be there: no resistor joins it to " + Caption();
            }
            return "the terms with " + name + " are not right: check the resistors that join " +
                   name + " to " + Caption();
        }
        return "the constant is wrong: check the batteries and the current sources of " + Caption();
    }

    const Workspace& ws_;
    int variable_;
    Names names_;
    Tolerance tolerance_{1e-5};
    Problem problem_;
    ChainsByStart byStart_;
    Form program_;
    Form student_;
    bool roundsDecimals_ = false; // writes a decimal that is not a value of the circuit
    LinearSum raw_;               // as written, before the members are put through their anchors
};

// Half a unit of the last of `sigFigs` figures of `value`.
double HalfLastFigure(double value, int sigFigs) {
    const double exponent = std::floor(std::log10(std::fabs(value)));
    return 0.5 * std::pow(10.0, exponent - sigFigs + 1);
}

bool SameAtFigures(double found, double actual, int sigFigs) {
    if (FormatNumber(found, sigFigs) == FormatNumber(actual, sigFigs)) {
        return true;
    }
    return FormatNumber(actual, sigFigs) != "0" &&
           std::fabs(found - actual) <= HalfLastFigure(actual, sigFigs) * (1 + 1e-9);
}

} // namespace

int EquationAtNode(const Workspace& ws, std::string_view name) {
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        if (ws.circuit.NodeLabels[slot].Name == name) {
            return EqnVarWithNode(ws.equations, ws.naming.NodeRank[slot]);
        }
    }
    return 0;
}

std::string WhyNoEquationAt(const Workspace& ws, std::string_view name) {
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        if (ws.circuit.NodeLabels[slot].Name == name) {
            return IsReferencePosition(ws, ws.naming.NodeRank[slot])
                       ? std::string(name) + " is the reference node, which has no equation"
                       : std::string(name) +
                             " is in the supernode of the reference node, which has no equation";
        }
    }
    return "no node is named " + std::string(name);
}

std::string EquationCaption(const Workspace& ws, int variable) {
    const EqnVar& var = ws.equations.EqnVars.at(static_cast<std::size_t>(variable - 1));
    return (var.SuperNode > 0 ? "supernode " : "node ") + var.VarName;
}

std::vector<std::string> EquationAnchors(const Workspace& ws) {
    std::vector<std::string> anchors;
    for (const EqnVar& var : ws.equations.EqnVars) {
        anchors.push_back(var.VarName);
    }
    return anchors;
}

EquationVerdict CheckEquation(const Workspace& ws, int variable, std::string_view text) {
    return Judge(ws, variable).Check(text);
}

AnswerVerdict CheckAnswer(const Workspace& ws, std::string_view name, double value, int sigFigs) {
    AnswerVerdict verdict;
    double actual = 0;
    std::string quantity;
    for (int slot = 1; slot <= ws.circuit.NumNodes && !verdict.known; ++slot) {
        if (ws.circuit.NodeLabels[slot].Name == name) {
            verdict.known = true;
            actual = ws.circuit.NodeLabels[slot].Voltage;
        }
    }
    for (int b = 1; b <= ws.topology.NumBranches && !verdict.known; ++b) {
        const Branch& chain = ws.topology.Branches[b];
        if (chain.CurrentName == name && chain.Current != kUnknownCurrent) {
            verdict.known = true;
            actual = chain.Current;
        }
    }
    if (!verdict.known) {
        return verdict;
    }
    verdict.right = SameAtFigures(value, actual, sigFigs);
    if (verdict.right) {
        return verdict;
    }
    const std::string figures =
        " to " + std::to_string(sigFigs) + " significant figure" + (sigFigs == 1 ? "" : "s");
    if (value != 0 && SameAtFigures(-value, actual, sigFigs)) {
        verdict.hint = "the size is right but the sign is wrong";
        return verdict;
    }
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        const NodeLabel& node = ws.circuit.NodeLabels[slot];
        if (node.Name != name && node.Name != "0" && SameAtFigures(value, node.Voltage, sigFigs)) {
            verdict.hint = "that is the voltage of " + node.Name + figures;
            return verdict;
        }
    }
    verdict.hint = "not right" + figures;
    return verdict;
}

} // namespace ampora
