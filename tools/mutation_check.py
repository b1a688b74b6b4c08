#!/usr/bin/env python3
"""Plants small faults in the code one at a time and runs the tests against each.

A fault that no test notices (a survivor) marks a gap in the suite. Each fault is a literal
piece of source text and its replacement; a fault whose text is no longer found once, after
the code has changed, is listed as not applied rather than guessed at.

    tools/mutation_check.py [--build DIR] [--only WORD[,WORD...]]

The build folder (default build-mutation/) is configured on first use. The source tree is
restored after every fault, also when the run is interrupted.
"""
import argparse
import os
import pathlib
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent

# (area, file, text, replacement, what the fault does)
FAULTS = [
    ("document", "src/tables/number_text.cpp",
     "if (text.front() == '+') {", "if (text.front() == '-') {",
     "a typed leading plus sign is no longer taken"),
    ("document", "src/document/amq_file.cpp",
     'Count("the wire count", kMaxWires)', 'Count("the wire count", kMaxWires - 1)',
     "the reader refuses a full wire table"),
    ("document", "src/document/amq_file.cpp",
     '"line " + std::to_string(lines_.Number()) + ": "',
     '"line " + std::to_string(lines_.Number() + 1) + ": "',
     "reading stops name the wrong line"),
    ("document", "src/document/amq_file.cpp",
     "if (CountLiveWires(circuit) == 0) {\n        return false;",
     "if (CountLiveWires(circuit) == 0) {\n        return true;",
     "an empty drawing asks to be saved"),
    ("document", "src/document/safe_file_write.cpp",
     "O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode)", "O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600)",
     "a new file is created readable by its owner alone"),
    ("document", "src/document/safe_file_write.cpp",
     "::unlink(temporary.c_str());", "(void)temporary;",
     "a failed write leaves its temporary file behind"),
    ("analysis", "src/analysis/format_number.cpp",
     "if (magnitude > 0.0001 && magnitude < 10000) {", "if (magnitude > 0.001 && magnitude < 10000) {",
     "values between 0.0001 and 0.001 are written in scientific form"),
    ("analysis", "src/analysis/gauss_jordan.cpp",
     "constexpr double kNegligible = 1e-10;", "constexpr double kNegligible = 1e-2;",
     "small pivots are taken for zero"),
    ("analysis", "src/analysis/gauss_jordan.cpp",
     "pivotRow[k] /= p;", "pivotRow[k] *= p;",
     "the pivot row is multiplied instead of divided"),
    ("analysis", "src/analysis/branch_sums.cpp",
     'chain.CurrentName = "-" + twin.CurrentName;', "chain.CurrentName = twin.CurrentName;",
     "a chain's twin loses the minus sign of its current name"),
    ("analysis", "src/analysis/branch_sums.cpp",
     '"I" + std::to_string(topology.NumCurrents)', '"I" + std::to_string(topology.NumCurrents + 1)',
     "battery currents are numbered from 2"),
    ("analysis", "src/analysis/circuit_checks.cpp",
     "if (topology.NumLooseEnds > 0) {", "if (topology.NumLooseEnds > 1) {",
     "a single loose end is let through"),
    ("analysis", "src/analysis/circuit_checks.cpp",
     "        return kIdenticalParallelBranchesMessage;", "        return kDifferentParallelVoltagesMessage;",
     "identical parallel batteries get the wrong message"),
    ("analysis", "src/analysis/node_naming.cpp",
     "if (references > 1) {", "if (references > 2) {",
     "two nodes named 0 are let through"),
    ("analysis", "src/analysis/node_naming.cpp",
     'char text[16] = "V";', 'char text[16] = "N";',
     "AutoName's first pattern writes the wrong letter"),
    ("analysis", "src/analysis/chain_currents.cpp",
     "(current < 0 && signedChain < 0)", "(current < 0 && signedChain > 0)",
     "a negative chain current is placed against the travel"),
    ("analysis", "src/analysis/result_labels.cpp",
     "ScreenArrow(IsVerticalKind(e.Kind), e.Current > 0)", "ScreenArrow(IsVerticalKind(e.Kind), e.Current < 0)",
     "current arrows point the wrong way"),
    ("analysis", "src/analysis/result_labels.cpp",
     "const bool upOrLeft = (rise > 0) == (e.Branch > 0);", "const bool upOrLeft = (rise > 0) != (e.Branch > 0);",
     "voltage arrows point the wrong way"),
    ("equations", "src/equations/supernodes.cpp",
     "1e-6 * std::max(", "1e-2 * std::max(",
     "battery voltages 1 % apart count as equal"),
    ("equations", "src/equations/counting_text.cpp",
     'eliminated == 1 ? "unknown, "sv : "unknowns, "sv', 'eliminated == 2 ? "unknown, "sv : "unknowns, "sv',
     "the counting text gets the plural wrong"),
    ("equations", "src/equations/counting_text.cpp",
     'ws.Naming.HasReference != 0 ? "more "sv : ""sv', 'ws.Naming.HasReference == 0 ? "more "sv : ""sv',
     "the counting text says 'more' in the wrong case"),
    ("equations", "src/equations/counting_text.cpp",
     "if (n != 2) {", "if (n != 3) {",
     "the redundancy sentence picks the wrong form"),
    ("equations", "src/equations/kcl_equations.cpp",
     "sign(chain.EMF < 0 ? '+' : '-');", "sign(chain.EMF < 0 ? '-' : '+');",
     "a battery's voltage enters the equation with the wrong sign"),
    ("equations", "src/equations/kcl_equations.cpp",
     "sign(chain.SourceCurrent < 0 ? '+' : '-');", "sign(chain.SourceCurrent < 0 ? '-' : '+');",
     "a current source enters the equation with the wrong sign"),
    ("equations", "src/equations/kcl_equations.cpp",
     'equation += " = 0";', 'equation += "= 0";',
     "the equations lose a blank"),
    ("editor", "src/editor/editing_tools.cpp",
     "std::min(w.X1, w.X2) + 20 < e.X", "std::min(w.X1, w.X2) + 16 < e.X",
     "a device may sit 16 units from a wire's left end"),
    ("editor", "src/editor/editing_tools.cpp",
     "std::fabs(o.X - e.X) < 36 &&", "std::fabs(o.X - e.X) < 32 &&",
     "devices may come 32 units apart"),
    ("editor", "src/editor/editing_tools.cpp",
     "if (state.UndoAvailable != 1) {", "if (state.UndoAvailable != 0) {",
     "Undo Erase works only when nothing was erased"),
    ("editor", "src/editor/snapping.cpp",
     "static_cast<double>(v) + 3.0", "static_cast<double>(v) + 4.0",
     "points snap to the grid one unit early"),
    ("editor", "src/editor/snapping.cpp",
     "if (std::fabs(endY - startY) <= std::fabs(endX - startX)) {",
     "if (std::fabs(endY - startY) < std::fabs(endX - startX)) {",
     "a diagonal drag becomes vertical instead of horizontal"),
    ("settings", "src/settings/preferences.cpp",
     "w.Width >= 3000 && w.Height >= 3000", "w.Width >= 3000 && w.Height >= 300",
     "a window too low to use is accepted"),
    ("settings", "src/settings/preferences.cpp",
     "if (!value || *value < low || *value > high) {", "if (!value || *value < low || *value >= high) {",
     "the highest allowed setting falls back to the default"),
    ("settings", "src/settings/recent_files.cpp",
     "std::size_t found = kRecentFileCount - 1;", "std::size_t found = kRecentFileCount - 2;",
     "a new recent file pushes out the wrong one"),
    ("settings", "src/settings/recent_files.cpp",
     'return folder.empty() ? "/" : folder;', "return folder;",
     "a file at the root gives an empty folder"),
    ("report", "src/report/markup_printer.cpp",
     "surface.CurrentY() + CurrentFontSet(state).LineStep", "surface.CurrentY() + 2 * CurrentFontSet(state).LineStep",
     "a new line skips two lines"),
    ("report", "src/report/report_builder.cpp",
     '"The total power dissipated by the resistors is "', '"The total power dissipated by the resistor is "',
     "the power paragraph's text changes"),
    ("report", "src/report/report_builder.cpp",
     'table += c + 1 < columns ? "    " : "\\r\\n";', 'table += c + 1 < columns ? "   " : "\\r\\n";',
     "the matrix table's columns narrow"),
    ("report", "src/report/rtf_writer.cpp",
     "if (c == '\\\\' || c == '{' || c == '}') {", "if (c == '\\\\' || c == '{') {",
     "a closing brace in the text is not escaped in RTF"),
    ("report", "src/report/html_writer.cpp",
     'html += "&lt;";', 'html += "<";',
     "a < in the report's text is not escaped in HTML"),
    ("editor", "src/editor/edit_history.cpp",
     "history.Steps.size() > kHistorySteps + 1", "history.Steps.size() > kHistorySteps + 2",
     "the edit history keeps one step too many"),
    ("practice", "src/practice/practice_circuit.cpp",
     "static_cast<float>(random.Pick(E12Tenths())) / 10.0f",
     "static_cast<float>(random.Pick(E12Tenths())) / 1.0f",
     "practice resistors come out ten times their E12 value"),
    ("cli", "src/cli/cli_arguments.cpp",
     "NumberIn(*value, 1, 17)", "NumberIn(*value, 1, 18)",
     "--sigfigs 18 is let through"),
    ("workflow", "src/workflow/step_transitions.cpp",
     "if (found.nodes > kMaxNodes) {", "if (found.nodes > kMaxNodes + 1) {",
     "a drawing with one node more than the table holds is not refused by its message"),
    ("workflow", "src/workflow/step_transitions.cpp",
     "column <= unknowns + 1; ++column", "column <= unknowns; ++column",
     "an overflow in the right-hand side is not refused"),
]


def run(command, **kwargs):
    return subprocess.run(command, cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          text=True, **kwargs)


# Tests that take seconds each (the window's report, the PDFs, the package, ngspice) run only
# when the quick ones let a fault through, so most faults are judged in seconds.
SLOW_TESTS = "^(install_and_package|ui_report_window_test|CliReportProgram\\..*|NgspiceOracle\\..*|PracticeCircuit\\..*)$"


def build_and_test(build):
    built = run(["cmake", "--build", str(build), "-j2"])
    if built.returncode != 0:
        return "does not build"
    for selection in (["-E", SLOW_TESTS], ["-R", SLOW_TESTS, "-E", "^install_and_package$"]):
        tested = run(["ctest", "--test-dir", str(build), "-j2", "--timeout", "120",
                      "--stop-on-failure", *selection])
        if tested.returncode != 0:
            return "caught"
    return "SURVIVED"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", default=str(ROOT / "build-mutation"))
    parser.add_argument("--only", default="",
                        help="only the faults whose area or file has one of these comma-parted words")
    args = parser.parse_args()
    build = pathlib.Path(args.build)
    if not (build / "build.ninja").exists():
        launcher = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if run(["which", "ccache"]).returncode == 0 else []
        # Optimised without debug information: each fault rebuilds and relinks quickly.
        run(["cmake", "-S", ".", "-B", str(build), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=", "-DCMAKE_CXX_FLAGS=-O1",
             "-DAMPORA_BUILD_BENCHMARKS=OFF", *launcher], check=True)
    if build_and_test(build) != "SURVIVED":
        sys.exit("the unchanged tree does not build or its tests fail; fix that first")

    tally = {}
    for area, name, text, replacement, what in FAULTS:
        if args.only and not any(w in area or w in name for w in args.only.split(",")):
            continue
        path = ROOT / name
        original = path.read_text()
        if original.count(text) != 1:
            outcome = "not applied"
        else:
            started = time.time()
            try:
                path.write_text(original.replace(text, replacement))
                outcome = build_and_test(build)
            finally:
                path.write_text(original)
                # The restored file must not look older than the object built from the fault.
                os.utime(path)
            outcome += f" ({time.time() - started:.0f} s)"
        tally.setdefault(outcome.split(" (")[0], []).append(f"{area}: {what}")
        print(f"{outcome:22} {area:9} {name}: {what}", flush=True)
    run(["cmake", "--build", str(build), "-j2"])
    print()
    for outcome, faults in sorted(tally.items()):
        print(f"{outcome}: {len(faults)}")
    survivors = tally.get("SURVIVED", [])
    sys.exit(1 if survivors else 0)


if __name__ == "__main__":
    main()
