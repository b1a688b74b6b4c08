#include "support/ngspice_oracle.h"

#include "support/test_files.h"
#include "tables/number_text.h"

#include <charconv>
#include <cstdlib>
#include <map>
#include <sstream>

namespace ampora::test {

namespace {

std::string ExactText(float value) {
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, static_cast<double>(value));
    return std::string(text, end.ptr);
}

std::string PointName(int point, int ground) {
    return point == ground ? "0" : "p" + std::to_string(point);
}

// "name = value" lines of `print all`, names as ngspice writes them (lower case).
std::map<std::string, double> PrintedValues(const std::string& output) {
    std::map<std::string, double> values;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t equals = line.find(" = ");
        if (equals == std::string::npos || line.find(' ') != equals) {
            continue;
        }
        const auto value = ParseDouble(line.substr(equals + 3));
        if (value) {
            values[line.substr(0, equals)] = *value;
        }
    }
    return values;
}

} // namespace

std::string NgspiceNetlist(const LatticeCircuit& lattice, int ground) {
    std::string netlist = "lattice " + DescribeLattice(lattice) + "\n";
    for (std::size_t e = 0; e < lattice.edges.size(); ++e) {
        const LatticeEdge& edge = lattice.edges[e];
        const std::string id = std::to_string(e);
        const std::string from = PointName(edge.from, ground);
        const std::string middle = "m" + id;
        const std::string value = ExactText(edge.value);
        // The device lies between `from` and the middle point, the ammeter between the
        // middle point and `to`, measuring the current from `from` to `to`.
        switch (edge.device) {
        case LatticeDevice::Resistor:
            netlist += "R" + id + " " + from + " " + middle + " " + value + "\n";
            break;
        case LatticeDevice::Battery: // V(n+) - V(n-) = value, + towards `to` when forward
            netlist += "VB" + id + " " +
                       (edge.forward ? middle + " " + from : from + " " + middle) + " DC " + value +
                       "\n";
            break;
        case LatticeDevice::CurrentSource: // pushes its current out at n-
            netlist += "IS" + id + " " +
                       (edge.forward ? from + " " + middle : middle + " " + from) + " DC " + value +
                       "\n";
            break;
        case LatticeDevice::None:
            netlist += "VW" + id + " " + from + " " + middle + " DC 0\n";
            break;
        }
        netlist += "VA" + id + " " + middle + " " + PointName(edge.to, ground) + " DC 0\n";
    }
    netlist += ".options reltol=1e-12 abstol=1e-18 vntol=1e-15\n"
               ".control\nset numdgt=16\nop\nprint all\n.endc\n.end\n";
    return netlist;
}

std::optional<OracleSolution> SolveWithNgspice(const LatticeCircuit& lattice, int ground,
                                               const std::string& folder, std::string& log) {
    const std::string netlist = folder + "/lattice.cir";
    const std::string output = folder + "/lattice.out";
    WriteBytes(netlist, NgspiceNetlist(lattice, ground));
    const std::string command = "ngspice -b '" + netlist + "' > '" + output + "' 2>&1";
    const int status = std::system(command.c_str());
    log = ReadBytes(output);
    if (status == -1 || log.find("command not found") != std::string::npos) {
        log = "ngspice could not be run (tools/setup.sh installs it)\n" + log;
        return std::nullopt;
    }
    const std::map<std::string, double> values = PrintedValues(log);
    OracleSolution solution;
    const std::vector<int> degree = Degrees(lattice);
    for (int p = 0; p < lattice.columns * lattice.rows; ++p) {
        if (p == ground || degree[p] == 0) {
            solution.voltage.push_back(0);
            continue;
        }
        const auto found = values.find(PointName(p, ground));
        if (found == values.end()) {
            return std::nullopt;
        }
        solution.voltage.push_back(found->second);
    }
    for (std::size_t e = 0; e < lattice.edges.size(); ++e) {
        const auto found = values.find("va" + std::to_string(e) + "#branch");
        if (found == values.end()) {
            return std::nullopt;
        }
        // The ammeter's current runs rightward or downward; on the screen up and left count.
        solution.screenCurrent.push_back(-found->second);
    }
    return solution;
}

} // namespace ampora::test
