// Files and runs of the program for the tests.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace app {

inline std::string ReadWhole(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// A folder that lives as long as this object, and the program run in it.
class Folder {
  public:
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "tavin-test-XXXXXX").string();
        path_ = ::mkdtemp(name.data());
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

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

    struct Outcome {
        int exitCode;
        std::string out;
        std::string err;
    };
    // Runs the program with the shell's words `arguments` here; standard output and error are kept.
    Outcome Run(const std::string& arguments) const {
        const std::string out = path_.string() + ".out";
        const std::string err = path_.string() + ".err";
        const std::string command =
            "cd " + path_.string() + " && { " TAVIN_PROGRAM " " + arguments + "; } >" + out + " 2>" + err;
        const int status = std::system(command.c_str());
        Outcome outcome{WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadWhole(out), ReadWhole(err)};
        std::filesystem::remove(out);
        std::filesystem::remove(err);
        return outcome;
    }

  private:
    std::filesystem::path path_;
};

}  // namespace app
