// A folder of a test's own, which goes with everything in it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

inline std::string ReadWhole(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

class TestFolder {
  public:
    TestFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "tavin-test-XXXXXX").string();
        path_ = ::mkdtemp(name.data());
    }
    ~TestFolder() { std::filesystem::remove_all(path_); }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    const std::filesystem::path& Root() const { return path_; }
    std::string Path(const std::string& name) const { return (path_ / name).string(); }
    void Write(const std::string& name, const std::string& text) const {
        std::ofstream(path_ / name, std::ios::binary) << text;
    }
    std::string Read(const std::string& name) const { return ReadWhole(path_ / name); }
    bool Has(const std::string& name) const { return std::filesystem::exists(path_ / name); }
    // Everything in the folder, to see that nothing was left behind.
    std::size_t Count() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(path_), std::filesystem::directory_iterator()));
    }

  private:
    std::filesystem::path path_;
};
