#include <gtest/gtest.h>

#include "app/batch/Arguments.h"
#include "app/batch/Manual.h"
#include "app/batch/Parser.h"
#include "tests/app/Files.h"

namespace app {
namespace {

TEST(Command, HandsOutValuesInTheOrderOfTheLine) {
    Arguments arguments;
    const auto commands = MakeCommands(arguments);
    const auto parsed =
        Parse(commands, {"clean", "--level", "-5", "--missing", "-99", "in.csv", "-y", "b", "--delete", "-y",
                         "a", "--level=3", "-o", "-", "-q", "--decimal", "comma"});
    ASSERT_TRUE(parsed) << parsed.Error().message;
    const CleanOptions& clean = arguments.clean;
    std::string steps;
    for (const auto& step : clean.steps) steps += step.text + ";";
    EXPECT_EQ(steps, "--level -5;--delete;--level 3;");
    EXPECT_EQ(clean.read.y, (std::vector<std::string>{"b", "a"}));
    EXPECT_EQ(clean.read.missing, (std::vector<std::string>{"-99"}));
    EXPECT_EQ(clean.read.decimalSign, ',');
    EXPECT_EQ(clean.output, "-");
    EXPECT_TRUE(arguments.fleet.quiet);
    EXPECT_EQ(parsed->given,
              "--level -5\n--missing -99\n-y b\n--delete \n-y a\n--level 3\n--decimal comma\n");
}

// Every option stands in each text, and what reads a text finds no fault with it.
TEST(Command, PrintsTextsThatTheirReadersTake) {
    const struct {
        const char* what;
        const char* check;
    } cases[] = {
        {"manual", "man --warnings -l -"}, {"bash", "bash -n"}, {"zsh", "zsh -n"}, {"fish", "fish -n"}};
    const Folder folder;
    Arguments arguments;
    for (const auto& one : cases) {
        const auto run = folder.Run("print " + std::string(one.what));
        ASSERT_EQ(run.exitCode, 0) << run.err;
        for (const auto& command : MakeCommands(arguments))
            for (const auto& option : command.options) {
                const std::string name = option.LongestName();
                std::string shown =
                    std::string(one.what) == "fish" ? name.substr(name.find_first_not_of('-')) : name;
                if (std::string(one.what) == "manual")
                    for (std::size_t at = 0; (at = shown.find('-', at)) != std::string::npos; at += 2)
                        shown.insert(at, "\\");
                EXPECT_TRUE(option.IsOperand() || run.out.find(shown) != std::string::npos)
                    << one.what << name;
            }
        const std::string reader = one.check;
        if (std::system(("command -v " + reader.substr(0, reader.find(' ')) + " >/dev/null").c_str()) != 0)
            continue;
        EXPECT_EQ(folder.Run("print " + std::string(one.what) + " | " + reader + " 2>&1 >/dev/null").out, "")
            << reader;
    }
}

TEST(Command, CompletesInBash) {
    const struct {
        const char* words;
        const char* replies;
    } cases[] = {{"tavin cl", "clean"},
                 {"tavin clean --delet", "--delete --delete-spikes"},
                 {"tavin clean --delimiter b", "blanks bar"},
                 {"tavin clean --median ''", ""},
                 {"tavin plot t", "two words.csv"},
                 {"tavin print ''", "manual bash zsh fish"}};
    const Folder folder;
    folder.Write("two words.csv", "");
    for (const auto& one : cases) {
        folder.Write("complete.sh",
                     "\"$1\" print bash > c.bash; . ./c.bash; compopt() { :; }\nCOMP_WORDS=(" +
                         std::string(one.words) +
                         ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_tavin\necho \"${COMPREPLY[*]}\"\n");
        EXPECT_EQ(folder.Run("--version >/dev/null; bash complete.sh " TAVIN_PROGRAM).out,
                  std::string(one.replies) + "\n")
            << one.words;
    }
}

}  // namespace
}  // namespace app
