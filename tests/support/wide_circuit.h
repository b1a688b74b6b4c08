#pragma once
// A shipped example stretched across the canvas: every x coordinate multiplied, so that the
// circuit is drawn as wide as a maximised window and its diagrams are far wider than a page.

#include <sstream>
#include <string>
#include <vector>

namespace ampora::test {

// amq is the text of a circuit file; the x of every wire end, device and node label is
// multiplied by factor, everything else is kept.
inline std::string StretchedAcross(const std::string& amq, int factor) {
    std::istringstream in(amq);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        lines.push_back(line);
    }
    const auto fields = [](const std::string& line) {
        std::vector<std::string> parts;
        std::istringstream split(line);
        for (std::string part; std::getline(split, part, ',');) {
            parts.push_back(part);
        }
        return parts;
    };
    const auto times = [factor](const std::string& number) {
        return std::to_string(std::stoi(number) * factor);
    };
    // Wires (x1, y1, x2, y2), devices (x, y, kind, value), node labels (name, name, x, y).
    const std::vector<std::vector<int>> stretched = {{0, 2}, {0}, {2}};
    std::string out;
    std::size_t at = 0;
    for (const std::vector<int>& columns : stretched) {
        if (at >= lines.size()) {
            break;
        }
        const int count = std::stoi(lines[at]);
        out += lines[at++] + "\r\n";
        for (int k = 0; k < count && at < lines.size(); ++k, ++at) {
            std::vector<std::string> parts = fields(lines[at]);
            for (const int column : columns) {
                parts[static_cast<std::size_t>(column)] =
                    times(parts[static_cast<std::size_t>(column)]);
            }
            std::string line;
            for (std::size_t p = 0; p < parts.size(); ++p) {
                line += (p > 0 ? "," : "") + parts[p];
            }
            out += line + "\r\n";
        }
    }
    for (; at < lines.size(); ++at) {
        out += lines[at] + "\r\n";
    }
    return out;
}

} // namespace ampora::test
