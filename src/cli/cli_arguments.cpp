#include "cli/cli_arguments.h"

#include "cli/cli.h"
#include "report/report_files.h"
#include "tables/number_text.h"

#include <array>
#include <ostream>
#include <utility>

namespace ampora::cli {

namespace {

constexpr std::string_view kCheckUsage = "usage: ampora-cli check FILE.amq\n";
constexpr std::string_view kSolveUsage =
    "usage: ampora-cli solve [--autoname[=1|2|3]] [--sigfigs N] [--text] [--exact]\n"
    "                        [--gj FILE.gj] FILE.amq\n";
constexpr std::string_view kReportUsage =
    "usage: ampora-cli report [--autoname[=1|2|3]] [--sigfigs N] [--font 1..4] FILE.amq\n"
    "                         -o OUT.(html|rtf|pdf)\n";
constexpr std::string_view kPictureUsage =
    "usage: ampora-cli picture [--autoname[=1|2|3]] [--sigfigs N]\n"
    "                          [--view values|currents|voltages|power] FILE.amq\n"
    "                          -o OUT.(svg|png)\n";
constexpr std::string_view kCheckEquationUsage =
    "usage: ampora-cli check-equation [--autoname[=1|2|3]] FILE.amq --at NAME \"EQUATION\"\n";
constexpr std::string_view kGradeUsage =
    "usage: ampora-cli grade [--autoname[=1|2|3]] [--sigfigs N] FILE.amq ANSWERS.txt\n";
constexpr std::string_view kAllUsage =
    "usage: ampora-cli check FILE.amq\n"
    "       ampora-cli solve [--autoname[=1|2|3]] [--sigfigs N] [--text] [--exact]\n"
    "                        [--gj FILE.gj] FILE.amq\n"
    "       ampora-cli report [--autoname[=1|2|3]] [--sigfigs N] [--font 1..4] FILE.amq\n"
    "                         -o OUT.(html|rtf|pdf)\n"
    "       ampora-cli picture [--autoname[=1|2|3]] [--sigfigs N]\n"
    "                          [--view values|currents|voltages|power] FILE.amq\n"
    "                          -o OUT.(svg|png)\n"
    "       ampora-cli check-equation [--autoname[=1|2|3]] FILE.amq --at NAME \"EQUATION\"\n"
    "       ampora-cli grade [--autoname[=1|2|3]] [--sigfigs N] FILE.amq ANSWERS.txt\n"
    "       ampora-cli generate --nodes N --supernodes S --sources K [--seed X] [--nice]\n"
    "                           -o FILE.amq\n"
    "       ampora-cli worksheet --count C [--nodes N --supernodes S --sources K] [--seed X]\n"
    "                            -o SHEET.(pdf|html) --key KEY.(pdf|html)\n";

// Which commands take an option, so that an option given to the wrong one is named as such
// rather than as unknown.
constexpr unsigned Bit(Command command) {
    return 1u << static_cast<unsigned>(command);
}

struct OptionUse {
    std::string_view name;
    unsigned takenBy;         // one Bit per command
    std::string_view missing; // what must follow an option that takes a value
};
constexpr std::array<OptionUse, 9> kOptionUses = {
    {{"--autoname",
      Bit(Command::Solve) | Bit(Command::Report) | Bit(Command::Picture) |
          Bit(Command::CheckEquation) | Bit(Command::Grade),
      ""},
     {"--sigfigs",
      Bit(Command::Solve) | Bit(Command::Report) | Bit(Command::Picture) | Bit(Command::Grade),
      "a number of significant figures from 1 to 17"},
     {"--text", Bit(Command::Solve), ""},
     {"--exact", Bit(Command::Solve), ""},
     {"--gj", Bit(Command::Solve), "the name of the matrix file"},
     {"--font", Bit(Command::Report), "a font set from 1 to 4"},
     {"--view", Bit(Command::Picture), "a view (values, currents, voltages or power)"},
     {"-o", Bit(Command::Report) | Bit(Command::Picture), "the name of the report's file"},
     {"--at", Bit(Command::CheckEquation), "the name of a node"}}};

constexpr std::array<std::string_view, 4> kViewNames = {"values", "currents", "voltages", "power"};

std::string_view OptionName(const std::string& arg) {
    const std::string_view name(arg);
    return name.substr(0, name.find('='));
}

const OptionUse* FindOption(std::string_view name) {
    for (const OptionUse& use : kOptionUses) {
        if (use.name == name) {
            return &use;
        }
    }
    return nullptr;
}

bool Takes(const OptionUse& use, Command command) {
    return (use.takenBy & Bit(command)) != 0;
}

std::string_view CommandName(Command command) {
    switch (command) {
    case Command::Check:
        return "check";
    case Command::Solve:
        return "solve";
    case Command::Report:
        return "report";
    case Command::Picture:
        return "picture";
    case Command::CheckEquation:
        return "check-equation";
    case Command::Grade:
        break;
    }
    return "grade";
}

// "only solve takes this option", "only solve, report, picture and grade take this option".
std::string WhoTakes(const OptionUse& use) {
    std::vector<std::string_view> names;
    for (const Command command : {Command::Solve, Command::Report, Command::Picture,
                                  Command::CheckEquation, Command::Grade}) {
        if (Takes(use, command)) {
            names.push_back(CommandName(command));
        }
    }
    std::string text = "only ";
    for (std::size_t k = 0; k < names.size(); ++k) {
        text += k == 0 ? "" : k + 1 == names.size() ? " and " : ", ";
        text += names[k];
    }
    return text + (names.size() == 1 ? " takes this option" : " take this option");
}

// What a command reads besides the circuit file, and what it says when that is missing.
struct SecondArgument {
    std::string RunOptions::*field = nullptr;
    std::string_view missing;
    std::string_view another;
};

std::optional<SecondArgument> SecondOf(Command command) {
    if (command == Command::CheckEquation) {
        return SecondArgument{&RunOptions::equation,
                              "no equation given: write it in quotes after the circuit file",
                              "a second equation; one equation is checked at a time"};
    }
    if (command == Command::Grade) {
        return SecondArgument{&RunOptions::answers, "no answers file (ANSWERS.txt) given",
                              "a third file; grade reads a circuit file and a file of answers"};
    }
    return std::nullopt;
}

std::optional<std::int16_t> ViewNamed(const std::string& text) {
    for (std::size_t k = 0; k < kViewNames.size(); ++k) {
        if (text == kViewNames[k]) {
            return static_cast<std::int16_t>(k);
        }
    }
    return std::nullopt;
}

// -o: the report's file (.html, .rtf, .pdf) or the picture's (.svg, .png).
std::string OutputError(const std::string& given, const std::string& value, Command command) {
    if (value.empty()) {
        return command == Command::Picture ? "-o \"\": the picture's file name is empty"
                                           : "-o \"\": the report's file name is empty";
    }
    if (command == Command::Picture) {
        return DrawingFormatOf(value) ? "" : given + ": the picture is written as .svg or .png";
    }
    return ReportFormatOf(value) ? "" : given + ": the report is written as .html, .rtf or .pdf";
}

// A whole number in [low, high] after an option, or nothing.
std::optional<std::int16_t> NumberIn(const std::string& text, int low, int high) {
    const std::optional<long long> value = ParseInteger(text);
    if (!value || *value < low || *value > high) {
        return std::nullopt;
    }
    return static_cast<std::int16_t>(*value);
}

} // namespace

std::string_view Usage() {
    return kAllUsage;
}

std::string_view UsageOf(Command command) {
    switch (command) {
    case Command::Check:
        return kCheckUsage;
    case Command::Solve:
        return kSolveUsage;
    case Command::Report:
        return kReportUsage;
    case Command::Picture:
        return kPictureUsage;
    case Command::CheckEquation:
        return kCheckEquationUsage;
    case Command::Grade:
        break;
    }
    return kGradeUsage;
}

ParsedArguments ParseArguments(const std::vector<std::string>& args, Command command) {
    ParsedArguments parsed;
    RunOptions& options = parsed.options;
    bool havePath = false;
    bool haveSecond = false;
    const std::optional<SecondArgument> second = SecondOf(command);
    for (std::size_t k = 0; k < args.size() && parsed.Valid(); ++k) {
        const std::string& arg = args[k];
        if (arg.empty()) {
            parsed.error = "\"\": an empty argument names no circuit file";
            break;
        }
        // An equation may begin with a minus sign: "-V1/10 = 2".
        const bool equation = command == Command::CheckEquation && havePath && !haveSecond &&
                              FindOption(OptionName(arg)) == nullptr && !arg.starts_with("--");
        if (arg.front() != '-' || equation) {
            if (havePath && second) {
                if (haveSecond) {
                    parsed.error = arg + ": " + std::string(second->another);
                    break;
                }
                options.*(second->field) = arg;
                haveSecond = true;
                continue;
            }
            if (havePath) {
                parsed.error = arg + ": a second circuit file, after " + options.path +
                               "; one file is read at a time";
                break;
            }
            options.path = arg;
            havePath = true;
            continue;
        }
        const OptionUse* use = FindOption(OptionName(arg));
        if (use == nullptr) {
            parsed.error = arg + ": no such option";
            break;
        }
        if (!Takes(*use, command)) {
            parsed.error = arg + ": " + WhoTakes(*use);
            break;
        }
        // The options that take a value take the next argument, whatever it looks like.
        const std::string* value = k + 1 < args.size() ? &args[k + 1] : nullptr;
        const std::string given = value != nullptr ? arg + " " + *value : arg;
        if (use->name == "--autoname") {
            if (arg == "--autoname") {
                options.autoNamePattern = 1;
            } else if (const auto pattern = NumberIn(arg.substr(11), 1, 3)) {
                options.autoNamePattern = *pattern;
            } else {
                parsed.error = arg + ": the naming pattern is 1, 2 or 3";
            }
            continue;
        }
        if (use->name == "--text" || use->name == "--exact") {
            if (arg != use->name) {
                parsed.error = arg + ": " + std::string(use->name) + " takes no value";
            }
            (use->name == "--text" ? options.text : options.exact) = true;
            continue;
        }
        if (arg != use->name) { // "--sigfigs=5": these take their value as the next argument
            parsed.error = arg + ": write " + std::string(use->name) + " and its value apart";
            break;
        }
        if (value == nullptr) {
            const bool pictureFile = use->name == "-o" && command == Command::Picture;
            parsed.error =
                arg + ": " +
                std::string(pictureFile ? "the name of the picture's file" : use->missing) +
                " must follow it";
            break;
        }
        ++k;
        if (use->name == "--sigfigs") {
            if (const auto figures = NumberIn(*value, 1, 17)) {
                options.sigFigs = *figures;
            } else {
                parsed.error = given + ": the significant figures run from 1 to 17";
            }
        } else if (use->name == "--at") {
            options.at = *value;
            if (value->empty()) {
                parsed.error = "--at \"\": the node's name is empty";
            }
        } else if (use->name == "--font") {
            if (const auto font = NumberIn(*value, 1, 4)) {
                options.fontIndex = *font;
            } else {
                parsed.error = given + ": the font set runs from 1 to 4";
            }
        } else if (use->name == "--view") {
            if (const auto view = ViewNamed(*value)) {
                options.viewMode = *view;
            } else {
                parsed.error = given + ": the view is values, currents, voltages or power";
            }
        } else if (use->name == "--gj") {
            if (value->empty()) {
                parsed.error = "--gj \"\": the matrix file's name is empty";
            }
            options.gjPath = *value;
        } else {
            parsed.error = OutputError(given, *value, command);
            options.output = *value;
        }
    }
    if (!parsed.Valid()) {
        return parsed;
    }
    if (!havePath) {
        parsed.error = "no circuit file (FILE.amq) given";
    } else if (command == Command::Report && options.output.empty()) {
        parsed.error = "no -o OUT given: the report needs a file to write";
    } else if (command == Command::Picture && options.output.empty()) {
        parsed.error = "no -o OUT given: the picture needs a file to write";
    } else if (command == Command::CheckEquation && options.at.empty()) {
        parsed.error = "no --at NAME given: name the node or supernode the equation is written at";
    } else if (second && !haveSecond) {
        parsed.error = std::string(second->missing);
    }
    return parsed;
}

int ReportArgumentError(std::ostream& err, const std::string& error, Command command) {
    err << "ampora-cli: " << error << "\n" << UsageOf(command);
    return kExitUsage;
}

} // namespace ampora::cli
