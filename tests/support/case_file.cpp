#include "support/case_file.h"

#include "support/test_files.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace ampora::test {

std::string ReplayCases(const std::string& name, const std::vector<std::string>& inputWords,
                        const CasePlayer& play) {
    std::istringstream file(ReadBytes(DataDir() / name));
    std::string out, line, title;
    std::vector<std::string> inputs;
    bool open = false;
    const auto finish = [&] {
        out += open ? play(title, inputs) : "";
        open = false;
        inputs.clear();
    };
    while (std::getline(file, line)) {
        const bool input =
            std::any_of(inputWords.begin(), inputWords.end(),
                        [&](const std::string& word) { return line.rfind(word, 0) == 0; });
        if (line == "==" || line.rfind("== ", 0) == 0 || line.rfind("# ", 0) == 0) {
            finish();
            out += line + "\n";
            open = line[0] == '=';
            title = line.size() > 3 ? line.substr(3) : "";
        } else if (input && open) {
            inputs.push_back(line);
            out += line + "\n";
        }
    }
    finish();
    return out;
}

std::string EscapedLine(const std::string& bytes) {
    std::string out;
    for (const char c : bytes) {
        out += c == '\r'   ? "\\r"
               : c == '\n' ? "\\n"
               : c == '\t' ? "\\t"
               : c == '\\' ? "\\\\"
                           : std::string(1, c);
    }
    return out;
}

std::string UnescapedLine(const std::string& line) {
    std::string out;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] != '\\' || i + 1 == line.size()) {
            out += line[i];
            continue;
        }
        const char c = line[++i];
        out += c == 'r' ? '\r' : c == 'n' ? '\n' : c == 't' ? '\t' : c;
    }
    return out;
}

} // namespace ampora::test
