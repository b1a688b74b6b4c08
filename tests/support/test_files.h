#pragma once
// Paths of the shipped examples and a private temporary folder for each test.

#include <filesystem>
#include <string>
#include <vector>

namespace ampora::test {

std::filesystem::path ExamplesDir();
std::vector<std::filesystem::path> ExampleFiles();
std::string ReadBytes(const std::filesystem::path& path);
void WriteBytes(const std::filesystem::path& path, const std::string& bytes);

// A fresh folder, removed when the object goes.
class TempDir {
  public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

  private:
    std::filesystem::path path_;
};

} // namespace ampora::test
