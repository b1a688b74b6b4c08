#include "report/equation_drawing.h"

#include "equations/equation_parse.h"
#include "report/markup_printer.h"
#include "report/palette.h"
#include "report/style_codes.h"

#include <algorithm>

namespace ampora {

namespace {

// The surface measures widths only, so heights come from the set's line step: a text cell
// is about 0.8 of a line, and the fraction bar and the minus sign sit a little above the
// middle of the cell.
constexpr float kCellPerLine = 0.8f;
constexpr float kAxisInCell = 0.55f;
// Spacing in lines at the normal size.
constexpr float kOperatorSpace = 0.16f;
constexpr float kRelationSpace = 0.26f;
constexpr float kProductSpace = 0.1f;
constexpr float kBarOverhang = 0.1f;
constexpr float kBarGap = 0.1f;
// The longest name tail still set as a subscript: Va, V12, Vout; longer names stay whole.
constexpr std::size_t kLongestSubscript = 3;

const std::string kMinus = "\u2212";

// One run of marked-up text (position of its cell's top-left) or one line, relative to the
// piece's left end and its axis.
struct Mark {
    bool isLine = false;
    float x = 0;
    float y = 0;
    float x2 = 0;
    float y2 = 0;
    std::string markup;
    float size = 0;
};

struct Piece {
    float width = 0;
    float ascent = 0;  // above the axis
    float descent = 0; // below the axis
    std::vector<Mark> marks;
};

std::size_t CodePoints(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

// A group in a numerator or denominator loses its parentheses: the bar groups it.
const EquationNode& WithoutParentheses(const EquationNode& node) {
    return node.kind == EquationNode::Kind::Group ? node.children.front() : node;
}

class EquationSetter {
  public:
    EquationSetter(DrawingSurface& surface, MarkupState& state)
        : surface_(surface), state_(state), set_(CurrentFontSet(state)) {}

    Piece Equation(const std::vector<EquationNode>& sides) {
        Piece equation;
        for (std::size_t i = 0; i < sides.size(); ++i) {
            const Piece side = Node(sides[i], set_.NormalSize);
            if (i > 0) {
                const float space = Space(kRelationSpace, set_.NormalSize);
                Append(equation, Text("=", set_.NormalSize), equation.width > 0 ? space : 0);
                Append(equation, side, side.width > 0 ? space : 0);
            } else {
                Append(equation, side, 0);
            }
        }
        return equation;
    }

    void Draw(const Piece& equation, float left, float top) {
        const float axis = top + equation.ascent;
        for (const Mark& mark : equation.marks) {
            if (mark.isLine) {
                surface_.DrawLine(left + mark.x, axis + mark.y, left + mark.x2, axis + mark.y2);
                continue;
            }
            UsePlainFont(mark.size);
            surface_.SetCurrentX(left + mark.x);
            surface_.SetCurrentY(axis + mark.y);
            PrintStyledWord(surface_, state_, mark.markup);
        }
    }

    void UsePlainFont(float size) {
        surface_.SetFontName(set_.FontName);
        surface_.SetFontSize(size);
        surface_.SetFontBold(false);
        surface_.SetFontItalic(false);
        surface_.SetFontUnderline(false);
        surface_.SetForeColor(QBColor(0));
    }

    float CellHeight(float size) const {
        return kCellPerLine * set_.LineStep * size / set_.NormalSize;
    }

  private:
    float Space(float lines, float size) const {
        return lines * set_.LineStep * size / set_.NormalSize;
    }

    Piece Text(const std::string& markup, float size, bool subscripted = false) {
        UsePlainFont(size);
        Piece piece;
        piece.width = StyledWordWidth(surface_, state_, markup);
        const float cell = CellHeight(size);
        piece.ascent = kAxisInCell * cell;
        piece.descent = cell - piece.ascent;
        if (subscripted) {
            piece.descent = std::max(piece.descent,
                                     set_.LowerShift + CellHeight(set_.SmallSize) - piece.ascent);
        }
        Mark mark;
        mark.y = -piece.ascent;
        mark.markup = markup;
        mark.size = size;
        piece.marks.push_back(std::move(mark));
        return piece;
    }

    // The first letter in italic, a short tail as an upright subscript: Va, V1, I2.
    Piece Name(const std::string& name, float size) {
        std::size_t first = 1;
        while (first < name.size() && (static_cast<unsigned char>(name[first]) & 0xC0) == 0x80) {
            ++first;
        }
        const std::string tail = name.substr(first);
        if (tail.empty() || CodePoints(tail) > kLongestSubscript) {
            return Text("@i" + name + "@i", size);
        }
        return Text("@i" + name.substr(0, first) + "@i@l" + tail + "@l", size, true);
    }

    Piece Number(const std::string& number, float size) {
        std::string shown = number;
        const std::size_t minus = shown.find('-');
        if (minus != std::string::npos) {
            shown.replace(minus, 1, kMinus);
        }
        return Text(shown, size);
    }

    static void Append(Piece& into, const Piece& piece, float gap) {
        const float shift = into.width + gap;
        for (Mark mark : piece.marks) {
            mark.x += shift;
            mark.x2 += shift;
            into.marks.push_back(std::move(mark));
        }
        into.width = shift + piece.width;
        into.ascent = std::max(into.ascent, piece.ascent);
        into.descent = std::max(into.descent, piece.descent);
    }

    static void Place(Piece& into, const Piece& piece, float dx, float dy) {
        for (Mark mark : piece.marks) {
            mark.x += dx;
            mark.x2 += dx;
            mark.y += dy;
            mark.y2 += dy;
            into.marks.push_back(std::move(mark));
        }
    }

    Piece Node(const EquationNode& node, float size) {
        switch (node.kind) {
        case EquationNode::Kind::Number:
            return Number(node.text, size);
        case EquationNode::Kind::Name:
            return Name(node.text, size);
        case EquationNode::Kind::Group:
            return Group(Node(node.children.front(), size), size);
        case EquationNode::Kind::Sum:
            return Sum(node, size);
        case EquationNode::Kind::Multiply: {
            Piece product = Node(node.children[0], size);
            Append(product, Node(node.children[1], size), Space(kProductSpace, size));
            return product;
        }
        case EquationNode::Kind::Divide:
            return Fraction(node, size);
        }
        return {};
    }

    Piece Sum(const EquationNode& sum, float size) {
        Piece piece;
        for (std::size_t i = 0; i < sum.children.size(); ++i) {
            const char sign = sum.signs[i];
            const std::string shown = sign == '-' ? kMinus : std::string(1, sign);
            if (i == 0) {
                if (sign != 0) {
                    Append(piece, Text(shown, size), 0);
                }
                Append(piece, Node(sum.children[i], size), 0);
                continue;
            }
            const float space = Space(kOperatorSpace, size);
            Append(piece, Text(shown, size), space);
            Append(piece, Node(sum.children[i], size), space);
        }
        return piece;
    }

    // Numerator and denominator at the size of the text around them, numbers over numbers
    // included: a coefficient such as 1/1000 is read digit by digit and must not shrink
    // below the chosen font.
    Piece Fraction(const EquationNode& division, float size) {
        const EquationNode& top = WithoutParentheses(division.children[0]);
        const EquationNode& bottom = WithoutParentheses(division.children[1]);
        const Piece numerator = Node(top, size);
        const Piece denominator = Node(bottom, size);
        const float overhang = Space(kBarOverhang, size);
        const float gap = Space(kBarGap, size);

        Piece fraction;
        fraction.width = std::max(numerator.width, denominator.width) + 2 * overhang;
        fraction.ascent = gap + numerator.descent + numerator.ascent;
        fraction.descent = gap + denominator.ascent + denominator.descent;
        Place(fraction, numerator, (fraction.width - numerator.width) / 2,
              -(gap + numerator.descent));
        Mark bar;
        bar.isLine = true;
        bar.x2 = fraction.width;
        fraction.marks.push_back(bar);
        Place(fraction, denominator, (fraction.width - denominator.width) / 2,
              gap + denominator.ascent);
        return fraction;
    }

    // Parentheses round a fraction are set large enough to hold it.
    Piece Group(const Piece& inner, float size) {
        const bool tall = inner.ascent + inner.descent > CellHeight(size) * 1.05f;
        const float parenSize = tall ? std::max(size, set_.LargeSize) : size;
        Piece group;
        Append(group, Text("(", parenSize), 0);
        Append(group, inner, 0);
        Append(group, Text(")", parenSize), 0);
        return group;
    }

    DrawingSurface& surface_;
    MarkupState& state_;
    const FontSet& set_;
};

// What cannot be read as an equation is printed as it stands. The markup printer cannot show
// an "@" (it starts a code), so each "@" is printed directly between the pieces around it.
EquationExtent PrintAsText(DrawingSurface& surface, MarkupState& state, EquationSetter& setter,
                           std::string_view text) {
    const float normal = CurrentFontSet(state).NormalSize;
    const float left = surface.CurrentX();
    const float top = surface.CurrentY();
    setter.UsePlainFont(normal);
    std::size_t start = 0;
    while (true) {
        const std::size_t at = text.find('@', start);
        std::string piece(
            text.substr(start, at == std::string_view::npos ? text.npos : at - start));
        PrintMarkup(surface, state, 0, 0, 0, piece);
        if (at == std::string_view::npos) {
            break;
        }
        surface.Print("@");
        start = at + 1;
    }
    const bool wrapped = surface.CurrentY() != top;
    const float width =
        wrapped ? std::max(surface.RightEdge(), surface.CurrentX()) : surface.CurrentX() - left;
    return {width, surface.CurrentY() - top + setter.CellHeight(normal)};
}

} // namespace

EquationExtent DrawEquation(DrawingSurface& surface, MarkupState& state, std::string_view text) {
    const SavedFontState callers = CaptureFontState(surface, state);
    // Subscripts are opened and closed inside each run, from the plain baseline.
    state.BaselineShift[state.FontIndex] = 0;
    state.ScriptState[state.FontIndex] = 0;

    const float left = surface.CurrentX();
    const float top = surface.CurrentY();
    EquationSetter setter(surface, state);
    EquationExtent extent;
    if (const auto sides = ParseEquation(text)) {
        const Piece equation = setter.Equation(*sides);
        setter.Draw(equation, left, top);
        if (equation.width > 0) {
            extent = {equation.width, equation.ascent + equation.descent};
        }
    } else {
        extent = PrintAsText(surface, state, setter, text);
    }

    RestoreFontState(surface, state, callers);
    surface.SetCurrentX(left);
    surface.SetCurrentY(top + extent.Height);
    return extent;
}

} // namespace ampora
