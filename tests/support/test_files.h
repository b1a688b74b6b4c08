#pragma once
// Paths of the shipped examples and a private temporary folder for each test.

#include <filesystem>
#include <string>
#include <vector>

namespace ampora::test {

std::filesystem::path ExamplesDir();
std::filesystem::path DataDir(); // tests/data
// The files of `folder` whose names end in `extension`, sorted; ExampleFiles() the .amq
// files of ExamplesDir().
std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& folder,
                                           const std::string& extension);
std::vector<std::filesystem::path> ExampleFiles();
std::vector<std::string> NamesIn(const std::filesystem::path& folder); // sorted, as ls lists
std::string ReplaceAll(std::string text, const std::string& from, const std::string& to);
std::string ReadBytes(const std::filesystem::path& path);
void WriteBytes(const std::filesystem::path& path, const std::string& bytes);

// The hand-checked text of tests/data/NAME, to compare a whole result with:
//     EXPECT_EQ(dump, ExpectedText("analysis/ladder_topology.txt", dump));
// Run with AMPORA_UPDATE_TEST_DATA=1 to write the file from the result first, for a new dump
// or a change meant to alter it; read the difference before committing it.
std::string ExpectedText(const std::string& name, const std::string& actual);

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
