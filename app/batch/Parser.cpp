#include "app/batch/Parser.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <map>

#include "tavin/tavin.h"

namespace app {

namespace {

// Options that may be repeated take one value each time: no dots behind them.
class Formatter : public CLI::Formatter {
  public:
    std::string make_option_opts(const CLI::Option* option) const override {
        std::string text = CLI::Formatter::make_option_opts(option);
        const auto dots = text.find(" ...");
        return dots == std::string::npos ? text : text.erase(dots, 4);
    }
};

class CommandParser {
  public:
    explicit CommandParser(const std::vector<Command>& commands)
        : commands_(commands), program_(commands.front().summary, "tavin") {
        program_.set_version_flag("--version", "tavin " TAVIN_VERSION, "Print the version and exit");
        program_.require_subcommand(0, 1);
        for (const auto& command : commands) Declare(command);
    }

    Result<Parsed> Parse(std::vector<std::string> words) {
        std::reverse(words.begin(), words.end());
        try {
            program_.parse(words);
        } catch (const CLI::ParseError& error) {
            return Answer(error);
        }
        Parsed parsed{Chosen(), {}};
        for (const auto& [command, parser] : parsers_)
            if (command == &commands_.front() || command == parsed.command)
                if (const auto failure = TakeValues(*parser, parsed.given)) return *failure;
        return parsed;
    }

  private:
    void Declare(const Command& command) {
        const bool isProgram = command.name[0] == '\0';
        CLI::App* const parser =
            isProgram ? &program_ : program_.add_subcommand(command.name, command.summary);
        parsers_.emplace_back(&command, parser);
        parser->footer(command.details);
        parser->formatter(std::make_shared<Formatter>());
        for (const auto& option : command.options) Declare(*parser, option);
    }

    void Declare(CLI::App& parser, const BoundOption& bound) {
        const OptionText& text = bound.text;
        CLI::Option* option = nullptr;
        if (!text.value)
            option = parser.add_flag(text.names);
        else if (!bound.repeatable)
            option = parser.add_option(text.names, one_);
        else
            option = parser.add_option(text.names, many_)->allow_extra_args(bound.IsOperand());
        option->description(text.help)->required(text.traits & kRequired);
        // CLI11 puts operands into a group of their own, and only under the name of its own group.
        if (!bound.IsOperand()) option->group(bound.group);
        if (text.value) option->type_name(text.value);
        options_[option] = &bound;
    }

    const Command* Chosen() const {
        for (const auto& [command, parser] : parsers_)
            if (parser != &program_ && parser->parsed()) return command;
        return &commands_.front();
    }

    std::optional<Failure> TakeValues(const CLI::App& parser, std::string& given) const {
        std::map<const CLI::Option*, std::size_t> used;
        for (const CLI::Option* option : parser.parse_order()) {
            const auto found = options_.find(option);
            if (found == options_.end()) continue;
            const BoundOption& bound = *found->second;
            const std::string value = bound.text.value ? option->results()[used[option]++] : "";
            if (const auto failure = TakeValue(bound, value)) return failure;
            if (!(bound.text.traits & kAside)) given += bound.LongestName() + " " + value + "\n";
        }
        return std::nullopt;
    }

    static std::optional<Failure> TakeValue(const BoundOption& bound, const std::string& value) {
        const std::string words = " " + std::string(bound.text.words) + " ";
        const bool known = words == "  " || (value.find(' ') == std::string::npos && !value.empty() &&
                                             words.find(" " + value + " ") != std::string::npos);
        if (!known) return UnknownWord(bound.LongestName(), value, bound.text.words);
        return bound.take(value);
    }

    // --help and --version end here as well: what they print has to arrive.
    Result<Parsed> Answer(const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) {
            program_.exit(error, std::cout, std::cerr);
            std::cout.flush();
            if (std::cout) return Parsed{};
            return Refusal("cannot write standard output");
        }
        const Command& command = *Chosen();
        const std::string name = command.name;
        return UsageError(error.what() + Suggestion(command) + "\nTry tavin" +
                          (name.empty() ? "" : " " + name) + " --help.");
    }

    // For the first word that nothing takes, if it looks like an option.
    std::string Suggestion(const Command& command) const {
        std::vector<std::string> names;
        for (const auto& option : command.options)
            if (!option.IsOperand()) names.push_back(option.LongestName());
        for (const auto& word : program_.remaining(true)) {
            const std::string nearest = NearestName(word.substr(0, word.find('=')), names);
            if (word.size() > 2 && word[0] == '-' && !nearest.empty())
                return "\nDid you mean " + nearest + "?";
        }
        return "";
    }

    const std::vector<Command>& commands_;
    CLI::App program_;
    std::vector<std::pair<const Command*, CLI::App*>> parsers_;
    std::map<const CLI::Option*, const BoundOption*> options_;
    // CLI11 wants places for values; the options' own results, which are in order, are used.
    std::string one_;
    std::vector<std::string> many_;
};

}  // namespace

Result<Parsed> Parse(const std::vector<Command>& commands, const std::vector<std::string>& words) {
    return CommandParser(commands).Parse(words);
}

}  // namespace app
