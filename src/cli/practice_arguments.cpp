#include "cli/practice_arguments.h"

#include "tables/number_text.h"

#include <array>
#include <filesystem>

namespace ampora::cli {

namespace {

constexpr std::string_view kGenerateUsage =
    "usage: ampora-cli generate --nodes N --supernodes S --sources K [--seed X] [--nice]\n"
    "                           -o FILE.amq\n";
constexpr std::string_view kWorksheetUsage =
    "usage: ampora-cli worksheet --count C [--nodes N --supernodes S --sources K] [--seed X]\n"
    "                            -o SHEET.(pdf|html) --key KEY.(pdf|html)\n";

struct PracticeOption {
    std::string_view name;
    bool generate;
    bool worksheet;
    std::string_view value; // what must follow it; empty for a flag
    long long low;
    long long high;
};

constexpr std::array<PracticeOption, 8> kOptions = {{
    {"--nodes", true, true, "a number of nodes from 2 to 10", kMinPracticeNodes, kMaxPracticeNodes},
    {"--supernodes", true, true, "a number of supernodes from 0 to 3", 0, kMaxPracticeSuperNodes},
    {"--sources", true, true, "a number of current sources from 0 to 4", 0, kMaxPracticeSources},
    {"--seed", true, true, "a seed from 0 to 4294967295", 0, 4294967295LL},
    {"--count", false, true, "a number of circuits from 1 to 30", 1, kMaxWorksheetCircuits},
    {"--nice", true, false, "", 0, 0},
    {"-o", true, true, "the name of the file to write", 0, 0},
    {"--key", false, true, "the name of the answer key's file", 0, 0},
}};

const PracticeOption* FindOption(const std::string& name) {
    for (const PracticeOption& option : kOptions) {
        if (option.name == name) {
            return &option;
        }
    }
    return nullptr;
}

bool IsSheetFile(const std::string& name) {
    const std::string extension = std::filesystem::path(name).extension().string();
    return extension == ".pdf" || extension == ".html";
}

// Where a counted option's value goes.
void ReadCount(PracticeOptions& options, std::string_view name, long long value) {
    const int count = static_cast<int>(value);
    if (name == "--nodes") {
        options.shape.Nodes = count;
    } else if (name == "--supernodes") {
        options.shape.SuperNodes = count;
    } else if (name == "--sources") {
        options.shape.Sources = count;
    } else if (name == "--count") {
        options.count = count;
    } else {
        options.seed = static_cast<std::uint32_t>(value);
    }
}

std::string RangeError(const PracticeOption& option, const std::string& given) {
    if (option.name == "--seed") {
        return given + ": the seed is a whole number from 0 to 4294967295";
    }
    const std::string what = option.name == "--count"        ? "the circuits"
                             : option.name == "--nodes"      ? "the nodes"
                             : option.name == "--supernodes" ? "the supernodes"
                                                             : "the current sources";
    return given + ": " + what + " run from " + std::to_string(option.low) + " to " +
           std::to_string(option.high);
}

std::string MissingError(const PracticeOptions& options, PracticeCommand command) {
    if (command == PracticeCommand::Generate) {
        if (!options.shape.Nodes) {
            return "no --nodes N given: the circuit needs its number of nodes";
        }
        if (!options.shape.SuperNodes) {
            return "no --supernodes S given: the circuit needs its number of supernodes";
        }
        if (!options.shape.Sources) {
            return "no --sources K given: the circuit needs its number of current sources";
        }
        if (options.output.empty()) {
            return "no -o FILE.amq given: the circuit needs a file to write";
        }
        return "";
    }
    if (options.count == 0) {
        return "no --count C given: the worksheet needs its number of circuits";
    }
    if (options.output.empty()) {
        return "no -o SHEET given: the worksheet needs a file to write";
    }
    if (options.key.empty()) {
        return "no --key KEY given: the answer key needs a file to write";
    }
    return "";
}

} // namespace

std::string_view PracticeUsage(PracticeCommand command) {
    return command == PracticeCommand::Generate ? kGenerateUsage : kWorksheetUsage;
}

ParsedPracticeArguments ParsePracticeArguments(const std::vector<std::string>& args,
                                               PracticeCommand command) {
    ParsedPracticeArguments parsed;
    PracticeOptions& options = parsed.options;
    const bool generate = command == PracticeCommand::Generate;
    for (std::size_t k = 0; k < args.size() && parsed.Valid(); ++k) {
        const std::string& arg = args[k];
        const PracticeOption* option = FindOption(arg);
        if (option == nullptr) {
            parsed.error = arg.empty() || arg.front() != '-'
                               ? "\"" + arg + "\": " + (generate ? "generate" : "worksheet") +
                                     " reads no circuit file; it makes its own"
                               : arg + ": no such option";
            break;
        }
        if (!(generate ? option->generate : option->worksheet)) {
            parsed.error = arg + (generate ? ": only worksheet takes this option"
                                           : ": only generate takes this option");
            break;
        }
        if (option->value.empty()) {
            options.nice = true;
            continue;
        }
        if (k + 1 == args.size()) {
            parsed.error = arg + ": " + std::string(option->value) + " must follow it";
            break;
        }
        const std::string& value = args[++k];
        const std::string given = arg + " " + value;
        if (arg == "-o" || arg == "--key") {
            const bool amq = std::filesystem::path(value).extension() == ".amq";
            if (value.empty()) {
                parsed.error = arg + " \"\": the file name is empty";
            } else if (generate && !amq) {
                parsed.error = given + ": the circuit is written as .amq";
            } else if (!generate && !IsSheetFile(value)) {
                parsed.error = given + (arg == "-o" ? ": the worksheet" : ": the answer key") +
                               " is written as .pdf or .html";
            } else {
                (arg == "-o" ? options.output : options.key) = value;
            }
            continue;
        }
        const std::optional<long long> number = ParseInteger(value);
        if (!number || *number < option->low || *number > option->high) {
            parsed.error = RangeError(*option, given);
        } else {
            ReadCount(options, option->name, *number);
        }
    }
    if (parsed.Valid()) {
        parsed.error = MissingError(options, command);
    }
    return parsed;
}

} // namespace ampora::cli
