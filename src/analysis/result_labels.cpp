#include "analysis/result_labels.h"

#include "analysis/format_number.h"
#include "tables/number_text.h"

#include <cmath>
#include <limits>

namespace ampora {

namespace {

enum class Arrow { kUp, kDown, kLeft, kRight };

constexpr const char* kUnknown = "?";

bool Known(double current) {
    return current != kUnknownCurrent && std::isfinite(current);
}

// Up, down and left arrows stand before the number, a right arrow after it.
std::string WithArrow(Arrow arrow, const std::string& number) {
    switch (arrow) {
    case Arrow::kUp:
        return "\u2191 " + number;
    case Arrow::kDown:
        return "\u2193 " + number;
    case Arrow::kLeft:
        return "\u2190 " + number;
    default:
        return number + " \u2192";
    }
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

std::string CurrentLabel(const Element& e, int sigFigs) {
    if (!Known(e.Current)) {
        return kUnknown;
    }
    if (e.Current == 0) {
        return "0";
    }
    return WithArrow(ScreenArrow(IsVerticalKind(e.Kind), e.Current > 0),
                     FormatNumber(std::fabs(e.Current), sigFigs));
}

std::string VoltageLabel(const Workspace& ws, const Element& e, int sigFigs) {
    if (IsBattery(e.Kind)) {
        return WithArrow(BatteryArrow(e.Kind), ShortestText(e.Value));
    }
    if (IsResistor(e.Kind)) {
        if (!Known(e.Current)) {
            return kUnknown;
        }
        if (e.Current == 0) {
            return "0";
        }
        // The arrow points to the higher potential: against the current in a resistor.
        return WithArrow(ScreenArrow(IsVerticalKind(e.Kind), e.Current < 0),
                         FormatNumber(e.Value * std::fabs(e.Current), sigFigs));
    }
    const double rise = SourceVoltageRise(ws, e);
    if (std::isnan(rise)) {
        return kUnknown;
    }
    if (rise == 0) {
        return "0";
    }
    // The rise is along the chain's travel, which runs up or left where Branch > 0.
    const bool upOrLeft = (rise > 0) == (e.Branch > 0);
    return WithArrow(ScreenArrow(IsVerticalKind(e.Kind), upOrLeft),
                     FormatNumber(std::fabs(rise), sigFigs));
}

// Power delivered by a source (positive) or absorbed by a resistor; NaN when unknown.
double ElementPower(const Workspace& ws, const Element& e) {
    if (IsCurrentSource(e.Kind)) {
        const double rise = SourceVoltageRise(ws, e);
        if (std::isnan(rise)) {
            return rise;
        }
        return ws.Topology.Branches[std::abs(e.Branch)].SourceCurrent * rise;
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

std::string PowerLabel(double power, int sigFigs) {
    return std::isnan(power) ? std::string(kUnknown) : FormatNumber(power, sigFigs);
}

} // namespace

std::string ValueWithUnit(const Element& element) {
    const char* unit = IsBattery(element.Kind) ? " V" : IsResistor(element.Kind) ? " \u03A9" : " A";
    return ShortestText(element.Value) + unit;
}

double SourceVoltageRise(const Workspace& ws, const Element& element) {
    if (element.Branch == 0) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    const Branch& chain = ws.Topology.Branches[std::abs(element.Branch)];
    const double end = ws.Circuit.NodeLabels[chain.EndNode].Voltage;
    const double start = ws.Circuit.NodeLabels[chain.StartNode].Voltage;
    return end - start - chain.EMF + static_cast<double>(chain.SourceCurrent) * chain.Resistance;
}

std::string ElementLabel(const Workspace& ws, int slot, int viewMode, int sigFigs) {
    const Element& e = ws.Circuit.Elements[slot];
    switch (viewMode) {
    case kViewCurrents:
        return CurrentLabel(e, sigFigs);
    case kViewVoltages:
        return VoltageLabel(ws, e, sigFigs);
    case kViewPower:
        return PowerLabel(ElementPower(ws, e), sigFigs);
    default:
        return ValueWithUnit(e);
    }
}

std::vector<std::string> WriteLabels(Workspace& ws, int sigFigs) {
    std::vector<std::string> labels(static_cast<std::size_t>(ws.Circuit.NumElements) + 1);
    ws.PowerIn = 0;
    ws.PowerOut = 0;
    for (int slot = 1; slot <= ws.Circuit.NumElements; ++slot) {
        const Element& e = ws.Circuit.Elements[slot];
        if (e.Kind == kEmpty) {
            continue;
        }
        labels[static_cast<std::size_t>(slot)] = ElementLabel(ws, slot, ws.ViewMode, sigFigs);
        if (ws.ViewMode == kViewPower) {
            const double power = ElementPower(ws, e);
            if (!std::isnan(power)) {
                (IsResistor(e.Kind) ? ws.PowerOut : ws.PowerIn) += power;
            }
        }
    }
    return labels;
}

std::vector<std::string> NodeLabelTexts(const Workspace& ws, int viewMode, int sigFigs) {
    std::vector<std::string> texts(static_cast<std::size_t>(ws.Circuit.NumNodes) + 1);
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        const NodeLabel& node = ws.Circuit.NodeLabels[slot];
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
