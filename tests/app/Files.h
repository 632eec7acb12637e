// Files and runs of the program for the tests.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "TestPaths.h"
#include "tests/core/TestFolder.h"

namespace app {

// A folder, and the program run in it.
class Folder : public TestFolder {
  public:
    struct Outcome {
        int exitCode;
        std::string out;
        std::string err;
    };
    // Runs the program with the shell's words `arguments` here; standard output and error are kept.
    Outcome Run(const std::string& arguments) const {
        const std::string out = Root().string() + ".out";
        const std::string err = Root().string() + ".err";
        const std::string command =
            "cd " + Root().string() + " && { " TAVIN_PROGRAM " " + arguments + "; } >" + out + " 2>" + err;
        const int status = std::system(command.c_str());
        Outcome outcome{WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadWhole(out), ReadWhole(err)};
        std::filesystem::remove(out);
        std::filesystem::remove(err);
        return outcome;
    }
};

// A run that ends with one message.
struct RefusedRun {
    const char* arguments;
    int exitCode;
    const char* message;  // a part of it
};

// Whether the run wrote the message alone, and no file beside the `files` that were there.
inline void ExpectRefused(const Folder& folder, const RefusedRun& refusal, std::size_t files) {
    SCOPED_TRACE(refusal.arguments);
    const auto run = folder.Run(refusal.arguments);
    EXPECT_EQ(run.exitCode, refusal.exitCode);
    EXPECT_NE(run.err.find(refusal.message), std::string::npos) << run.err;
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(folder.Count(), files);
}

}  // namespace app
