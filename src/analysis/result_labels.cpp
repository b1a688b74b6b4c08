#include "analysis/result_labels.h"

#include "analysis/format_number.h"
#include "tables/number_text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>

namespace ampora {

namespace {

enum class Arrow { kUp, kDown, kLeft, kRight };

constexpr std::string_view kUnknown = "?";

bool Known(double current) {
    return current != kUnknownCurrent && std::isfinite(current);
}

// The number texts already written for the labels of one view. Devices in one chain carry
// the same current, and like devices in it the same voltage and power, so a view repeats
// many numbers: each is formatted once. A text is found again only by the very bits of the
// value it was written for, so it is the text FormatNumber would write.
class NumberTexts {
  public:
    explicit NumberTexts(int sigFigs) : sigFigs_(sigFigs) {}

    void Append(std::string& out, double value) {
        if (MaxFormattedSize(sigFigs_) > kTextRoom) { // more figures than anyone uses
            out.append(FormatNumber(value, sigFigs_));
            return;
        }
        const auto bits = std::bit_cast<std::uint64_t>(value);
        // Fibonacci hashing: the top bits of the product mix every bit of the value.
        const std::size_t at = (bits * 0x9E3779B97F4A7C15u) >> (64 - kSlotBits);
        Slot& slot = slots_[at];
        if (!filled_[at] || slot.bits != bits) {
            slot.bits = bits;
            slot.size = static_cast<std::uint8_t>(
                WriteFormattedNumber(slot.text.data(), value, sigFigs_) - slot.text.data());
            filled_[at] = true;
        }
        out.append(slot.text.data(), slot.size);
    }

  private:
    static constexpr int kSlotBits = 6; // 64 slots: more than the distinct numbers of a view
    static constexpr std::size_t kTextRoom = 32; // enough for 24 figures
    struct Slot {                                // read only once filled
        std::uint64_t bits;
        std::uint8_t size;
        std::array<char, kTextRoom> text;
    };
    int sigFigs_;
    std::array<Slot, std::size_t{1} << kSlotBits> slots_;
    std::array<bool, std::size_t{1} << kSlotBits> filled_{};
};

// Up, down and left arrows stand before the number, a right arrow after it.
template <typename AppendNumber>
void AppendWithArrow(std::string& out, Arrow arrow, AppendNumber appendNumber) {
    switch (arrow) {
    case Arrow::kUp:
        out.append("\u2191 ");
        break;
    case Arrow::kDown:
        out.append("\u2193 ");
        break;
    case Arrow::kLeft:
        out.append("\u2190 ");
        break;
    case Arrow::kRight:
        appendNumber(out);
        out.append(" \u2192");
        return;
    }
    appendNumber(out);
}

void AppendWithArrow(std::string& out, Arrow arrow, double magnitude, NumberTexts& numbers) {
    AppendWithArrow(out, arrow, [&](std::string& text) { numbers.Append(text, magnitude); });
}

// The arrow for a quantity that is positive up (vertical) or left (horizontal).
Arrow ScreenArrow(bool vertical, bool positive) {
    if (vertical) {
        return positive ? Arrow::kUp : Arrow::kDown;
    }
    return positive ? Arrow::kLeft : Arrow::kRight;
}

Arrow BatteryArrow(int kind) {
    switch (kind) {
    case kBatteryUp:
        return Arrow::kUp;
    case kBatteryDown:
        return Arrow::kDown;
    case kBatteryLeft:
        return Arrow::kLeft;
    default:
        return Arrow::kRight;
    }
}

void AppendValueWithUnit(std::string& out, const Element& element) {
    constexpr std::string_view kVolts = " V", kOhms = " \u03A9", kAmperes = " A";
    const std::string_view unit = IsBattery(element.Kind)    ? kVolts
                                  : IsResistor(element.Kind) ? kOhms
                                                             : kAmperes;
    std::array<char, 40> text; // the number's 32 characters of room and the unit
    char* end = WriteShortestText(text.data(), text.data() + 32, element.Value);
    end = std::copy(unit.begin(), unit.end(), end);
    out.append(text.data(), static_cast<std::size_t>(end - text.data()));
}

void AppendCurrentLabel(std::string& out, const Element& e, NumberTexts& numbers) {
    if (!Known(e.Current)) {
        out.append(kUnknown);
    } else if (e.Current == 0) {
        out.push_back('0');
    } else {
        AppendWithArrow(out, ScreenArrow(IsVerticalKind(e.Kind), e.Current > 0),
                        std::fabs(e.Current), numbers);
    }
}

void AppendVoltageLabel(std::string& out, const Workspace& ws, const Element& e,
                        NumberTexts& numbers) {
    if (IsBattery(e.Kind)) {
        AppendWithArrow(out, BatteryArrow(e.Kind), [&](std::string& text) {
            std::array<char, 32> value;
            const char* end = WriteShortestText(value.data(), value.data() + value.size(), e.Value);
            text.append(value.data(), static_cast<std::size_t>(end - value.data()));
        });
        return;
    }
    if (IsResistor(e.Kind)) {
        if (!Known(e.Current)) {
            out.append(kUnknown);
        } else if (e.Current == 0) {
            out.push_back('0');
        } else {
            // The arrow points to the higher potential: against the current in a resistor.
            AppendWithArrow(out, ScreenArrow(IsVerticalKind(e.Kind), e.Current < 0),
                            e.Value * std::fabs(e.Current), numbers);
        }
        return;
    }
    const double rise = SourceVoltageRise(ws, e);
    if (std::isnan(rise)) {
        out.append(kUnknown);
    } else if (rise == 0) {
        out.push_back('0');
    } else {
        // The rise is along the chain's travel, which runs up or left where Branch > 0.
        const bool upOrLeft = (rise > 0) == (e.Branch > 0);
        AppendWithArrow(out, ScreenArrow(IsVerticalKind(e.Kind), upOrLeft), std::fabs(rise),
                        numbers);
    }
}

// Power delivered by a source (positive) or absorbed by a resistor; NaN when unknown.
double ElementPower(const Workspace& ws, const Element& e) {
    if (IsCurrentSource(e.Kind)) {
        const double rise = SourceVoltageRise(ws, e);
        if (std::isnan(rise)) {
            return rise;
        }
        return ws.topology.Branches[std::abs(e.Branch)].SourceCurrent * rise;
    }
    if (!Known(e.Current)) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    if (IsResistor(e.Kind)) {
        return e.Current * e.Current * e.Value;
    }
    return (e.Kind == kBatteryUp || e.Kind == kBatteryLeft) ? e.Value * e.Current
                                                            : -e.Current * e.Value;
}

void AppendPowerLabel(std::string& out, double power, NumberTexts& numbers) {
    if (std::isnan(power)) {
        out.append(kUnknown);
    } else {
        numbers.Append(out, power);
    }
}

// The label of a live element in a view.
void AppendLabel(std::string& out, const Workspace& ws, const Element& e, int viewMode,
                 NumberTexts& numbers) {
    switch (viewMode) {
    case kViewCurrents:
        AppendCurrentLabel(out, e, numbers);
        break;
    case kViewVoltages:
        AppendVoltageLabel(out, ws, e, numbers);
        break;
    case kViewPower:
        AppendPowerLabel(out, ElementPower(ws, e), numbers);
        break;
    default:
        AppendValueWithUnit(out, e);
        break;
    }
}

} // namespace

std::string ValueWithUnit(const Element& element) {
    std::string text;
    AppendValueWithUnit(text, element);
    return text;
}

double SourceVoltageRise(const Workspace& ws, const Element& element) {
    if (element.Branch == 0) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    const Branch& chain = ws.topology.Branches[std::abs(element.Branch)];
    const double end = ws.circuit.NodeLabels[chain.EndNode].Voltage;
    const double start = ws.circuit.NodeLabels[chain.StartNode].Voltage;
    return end - start - chain.EMF + static_cast<double>(chain.SourceCurrent) * chain.Resistance;
}

std::string ElementLabel(const Workspace& ws, int slot, int viewMode, int sigFigs) {
    std::string label;
    NumberTexts numbers(sigFigs);
    AppendLabel(label, ws, ws.circuit.Elements[slot], viewMode, numbers);
    return label;
}

std::vector<std::string> WriteLabels(Workspace& ws, int sigFigs) {
    std::vector<std::string> labels(static_cast<std::size_t>(ws.circuit.NumElements) + 1);
    ws.PowerIn = 0;
    ws.PowerOut = 0;
    NumberTexts numbers(sigFigs);
    for (int slot = 1; slot <= ws.circuit.NumElements; ++slot) {
        const Element& e = ws.circuit.Elements[slot];
        if (e.Kind == kEmpty) {
            continue;
        }
        std::string& label = labels[static_cast<std::size_t>(slot)];
        if (ws.ViewMode != kViewPower) {
            AppendLabel(label, ws, e, ws.ViewMode, numbers);
            continue;
        }
        const double power = ElementPower(ws, e);
        AppendPowerLabel(label, power, numbers);
        if (!std::isnan(power)) {
            (IsResistor(e.Kind) ? ws.PowerOut : ws.PowerIn) += power;
        }
    }
    return labels;
}

std::vector<std::string> NodeLabelTexts(const Workspace& ws, int viewMode, int sigFigs) {
    std::vector<std::string> texts(static_cast<std::size_t>(ws.circuit.NumNodes) + 1);
    for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
        const NodeLabel& node = ws.circuit.NodeLabels[slot];
        texts[static_cast<std::size_t>(slot)] =
            viewMode == kViewVoltages ? node.Name + " = " + FormatNumber(node.Voltage, sigFigs)
                                      : node.Name;
    }
    return texts;
}

std::string ResultsStatusText(const Workspace& ws, int sigFigs) {
    if (ws.ViewMode == kViewPower) {
        return " Power in = " + FormatNumber(ws.PowerIn, sigFigs) +
               " watts, Power out = " + FormatNumber(ws.PowerOut, sigFigs) + " watts.  ";
    }
    return " Step 3: Click a button above or click a tab on the report.  ";
}

std::string ViewButtonStatusText(int viewMode) {
    switch (viewMode) {
    case kViewCurrents:
        return " Viewing: currents in amperes ";
    case kViewVoltages:
        return " Viewing: voltages in volts ";
    case kViewPower:
        return " Viewing: output power in watts ";
    default:
        return " Viewing: circuit element values ";
    }
}

} // namespace ampora
