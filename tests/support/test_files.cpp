#include "support/test_files.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>

namespace ampora::test {

std::filesystem::path ExamplesDir() {
    return std::filesystem::path(AMPORA_SOURCE_DIR) / "examples";
}

std::filesystem::path DataDir() {
    return std::filesystem::path(AMPORA_SOURCE_DIR) / "tests" / "data";
}

std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& folder,
                                           const std::string& extension) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == extension) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::filesystem::path> ExampleFiles() {
    return FilesIn(ExamplesDir(), ".amq");
}

std::vector<std::string> NamesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string ReplaceAll(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

void WriteBytes(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string ExpectedText(const std::string& name, const std::string& actual) {
    const auto path = DataDir() / name;
    const char* update = std::getenv("AMPORA_UPDATE_TEST_DATA");
    if (update != nullptr && std::string(update) == "1") {
        std::filesystem::create_directories(path.parent_path());
        WriteBytes(path, actual);
    }
    if (!std::filesystem::exists(path)) {
        return "(no file " + path.string() + ")";
    }
    return ReadBytes(path);
}

TempDir::TempDir() {
    std::random_device random;
    path_ = std::filesystem::temp_directory_path() /
            ("ampora-test-" + std::to_string(random()) + std::to_string(random()));
    std::filesystem::create_directories(path_);
}

TempDir::~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

} // namespace ampora::test
