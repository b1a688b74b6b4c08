#pragma once
// A shipped example stretched across the canvas: every x coordinate multiplied, so that the
// circuit is drawn as wide as a maximised window and its diagrams are far wider than a page.

#include <regex>
#include <sstream>
#include <string>

namespace ampora::test {

// amq is the text of a circuit file; the x of every wire end ("x1,y1,x2,y2"), device
// ("x,y,kind,value") and node label ("name","name",x,y) is multiplied by factor.
inline std::string StretchedAcross(const std::string& amq, int factor) {
    const auto times = [factor](const std::string& x) {
        return std::to_string(std::stoi(x) * factor);
    };
    const std::regex wire(R"(^(-?\d+),([^,]+),([^,]+),([^,\r]+)\r?$)");
    const std::regex label(R"(^(".*",".*"),(-?\d+),(-?\d+)\r?$)");
    std::istringstream in(amq);
    std::string out;
    std::smatch m;
    // A wire and a device look alike: the section decides, counted by the lines before.
    int section = -1;
    int left = 0;
    for (std::string line; std::getline(in, line);) {
        if (left == 0 && section < 2) {
            ++section;
            left = std::stoi(line);
            out += line + "\n";
            continue;
        }
        --left;
        if (section == 0 && std::regex_match(line, m, wire)) {
            line = times(m[1]) + "," + m[2].str() + "," + times(m[3]) + "," + m[4].str();
        } else if (section == 1 && std::regex_match(line, m, wire)) {
            line = times(m[1]) + "," + m[2].str() + "," + m[3].str() + "," + m[4].str();
        } else if (section == 2 && std::regex_match(line, m, label)) {
            line = m[1].str() + "," + times(m[2]) + "," + m[3].str();
        }
        out += line + "\r\n";
    }
    return out;
}

} // namespace ampora::test
