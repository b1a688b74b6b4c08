#include "equations/equation_check.h"

#include "analysis/format_number.h"
#include "equations/chain_words.h"
#include "equations/equation_forms.h"
#include "equations/student_equation.h"
#include "equations/supernode_queries.h"
#include "tables/number_text.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>

namespace ampora {

namespace {

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
    for (int slot = 1; slot <= ws.Circuit.NumElements; ++slot) {
        if (ws.Circuit.Elements[slot].Kind != kEmpty && same(ws.Circuit.Elements[slot].Value)) {
            return true;
        }
    }
    for (int b = 1; b <= ws.Topology.NumBranches; ++b) {
        const Branch& chain = ws.Topology.Branches[b];
        if (same(chain.Resistance) || same(chain.EMF) || same(chain.SourceCurrent)) {
            return true;
        }
    }
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        if (same(ws.Circuit.NodeLabels[slot].AliasOffset)) {
            return true;
        }
    }
    return false;
}

class Judge {
  public:
    Judge(const Workspace& ws, int variable)
        : ws_(ws), variable_(variable), names_(EquationNames(ws)) {
        problem_.unknowns = ws.Equations.NumUnknowns;
        problem_.currents = CurrentCount(names_);
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
        return ws_.Equations.EqnVars[static_cast<std::size_t>(variable - 1)].VarName;
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
        for (const BatteryConstraint& constraint : ws_.Equations.Constraints) {
            if (constraint.Position == ws_.Naming.NodeRank[slot]) {
                return constraint.Text;
            }
        }
        return NodeName(ws_, slot);
    }

    // One term of the program's equation written wrong, or one term too many.
    std::string OneTermWrong() const {
        const std::vector<int> chains = ChainsOf(ws_, variable_);
        const std::vector<int> members = MembersOf(ws_, variable_);
        const auto isMember = [&](int slot) {
            return std::find(members.begin(), members.end(), ws_.Naming.NodeRank[slot]) !=
                   members.end();
        };
        Likeliest likeliest;
        for (const int b : chains) {
            const Term term = TermOf(ws_, problem_, b);
            const Branch& chain = ws_.Topology.Branches[b];
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
            for (const auto& end : {std::pair{&term.startOffset, chain.StartNode},
                                    std::pair{&term.endOffset, chain.EndNode}}) {
                // Named, not bound: clang 14 cannot capture a structured binding.
                const auto* offset = end.first;
                const int slot = end.second;
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
        for (int b = 1; b <= ws_.Topology.NumBranches; ++b) {
            const Branch& chain = ws_.Topology.Branches[b];
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
                           ShortestText(ws_.Topology.Branches[b].Resistance) + " \u03A9";
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
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        if (ws.Circuit.NodeLabels[slot].Name == name) {
            return EqnVarWithNode(ws.Equations, ws.Naming.NodeRank[slot]);
        }
    }
    return 0;
}

std::string WhyNoEquationAt(const Workspace& ws, std::string_view name) {
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        if (ws.Circuit.NodeLabels[slot].Name == name) {
            return IsReferencePosition(ws, ws.Naming.NodeRank[slot])
                       ? std::string(name) + " is the reference node, which has no equation"
                       : std::string(name) +
                             " is in the supernode of the reference node, which has no equation";
        }
    }
    return "no node is named " + std::string(name);
}

std::string EquationCaption(const Workspace& ws, int variable) {
    const EqnVar& var = ws.Equations.EqnVars.at(static_cast<std::size_t>(variable - 1));
    return (var.SuperNode > 0 ? "supernode " : "node ") + var.VarName;
}

std::vector<std::string> EquationAnchors(const Workspace& ws) {
    std::vector<std::string> anchors;
    for (const EqnVar& var : ws.Equations.EqnVars) {
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
    for (int slot = 1; slot <= ws.Circuit.NumNodes && !verdict.known; ++slot) {
        if (ws.Circuit.NodeLabels[slot].Name == name) {
            verdict.known = true;
            actual = ws.Circuit.NodeLabels[slot].Voltage;
        }
    }
    for (int b = 1; b <= ws.Topology.NumBranches && !verdict.known; ++b) {
        const Branch& chain = ws.Topology.Branches[b];
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
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        const NodeLabel& node = ws.Circuit.NodeLabels[slot];
        if (node.Name != name && node.Name != "0" && SameAtFigures(value, node.Voltage, sigFigs)) {
            verdict.hint = "that is the voltage of " + node.Name + figures;
            return verdict;
        }
    }
    verdict.hint = "not right" + figures;
    return verdict;
}

} // namespace ampora
