#include "cli/cli_arguments.h"

#include "cli/cli.h"
#include "report/report_files.h"
#include "tables/number_text.h"

#include <array>
#include <ostream>

namespace ampora::cli {

namespace {

constexpr std::string_view kCheckUsage = "usage: ampora-cli check FILE.amq\n";
constexpr std::string_view kSolveUsage =
    "usage: ampora-cli solve [--autoname[=1|2|3]] [--sigfigs N] [--text] [--exact]\n"
    "                        [--gj FILE.gj] FILE.amq\n";
constexpr std::string_view kReportUsage =
    "usage: ampora-cli report [--autoname[=1|2|3]] [--sigfigs N] [--font 1..4] FILE.amq\n"
    "                         -o OUT.(html|rtf|pdf)\n";
constexpr std::string_view kAllUsage =
    "usage: ampora-cli check FILE.amq\n"
    "       ampora-cli solve [--autoname[=1|2|3]] [--sigfigs N] [--text] [--exact]\n"
    "                        [--gj FILE.gj] FILE.amq\n"
    "       ampora-cli report [--autoname[=1|2|3]] [--sigfigs N] [--font 1..4] FILE.amq\n"
    "                         -o OUT.(html|rtf|pdf)\n";

// Which commands take an option, so that an option given to the wrong one is named as such
// rather than as unknown.
struct OptionUse {
    std::string_view name;
    bool solve;
    bool report;
    std::string_view missing; // what must follow an option that takes a value
};
constexpr std::array<OptionUse, 7> kOptionUses = {
    {{"--autoname", true, true, ""},
     {"--sigfigs", true, true, "a number of significant figures from 1 to 17"},
     {"--text", true, false, ""},
     {"--exact", true, false, ""},
     {"--gj", true, false, "the name of the matrix file"},
     {"--font", false, true, "a font set from 1 to 4"},
     {"-o", false, true, "the name of the report's file"}}};

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
    return command == Command::Solve ? use.solve : command == Command::Report && use.report;
}

std::string WhoTakes(const OptionUse& use) {
    if (use.solve && use.report) {
        return "only solve and report take this option";
    }
    return use.solve ? "only solve takes this option" : "only report takes this option";
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
        break;
    }
    return kReportUsage;
}

ParsedArguments ParseArguments(const std::vector<std::string>& args, Command command) {
    ParsedArguments parsed;
    RunOptions& options = parsed.options;
    bool havePath = false;
    for (std::size_t k = 0; k < args.size() && parsed.Valid(); ++k) {
        const std::string& arg = args[k];
        if (arg.empty()) {
            parsed.error = "\"\": an empty argument names no circuit file";
            break;
        }
        if (arg.front() != '-') {
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
            parsed.error = arg + ": " + std::string(use->missing) + " must follow it";
            break;
        }
        ++k;
        if (use->name == "--sigfigs") {
            if (const auto figures = NumberIn(*value, 1, 17)) {
                options.sigFigs = *figures;
            } else {
                parsed.error = given + ": the significant figures run from 1 to 17";
            }
        } else if (use->name == "--font") {
            if (const auto font = NumberIn(*value, 1, 4)) {
                options.fontIndex = *font;
            } else {
                parsed.error = given + ": the font set runs from 1 to 4";
            }
        } else if (use->name == "--gj") {
            if (value->empty()) {
                parsed.error = "--gj \"\": the matrix file's name is empty";
            }
            options.gjPath = *value;
        } else if (value->empty()) {
            parsed.error = "-o \"\": the report's file name is empty";
        } else if (!ReportFormatOf(*value)) {
            parsed.error = given + ": the report is written as .html, .rtf or .pdf";
        } else {
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
    }
    return parsed;
}

int ReportArgumentError(std::ostream& err, const std::string& error, Command command) {
    err << "ampora-cli: " << error << "\n" << UsageOf(command);
    return kExitUsage;
}

} // namespace ampora::cli
