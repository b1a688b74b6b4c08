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

std::vector<std::filesystem::path> ExampleFiles() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(ExamplesDir())) {
        if (entry.path().extension() == ".amq") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
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
    const auto path = std::filesystem::path(AMPORA_SOURCE_DIR) / "tests" / "data" / name;
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
