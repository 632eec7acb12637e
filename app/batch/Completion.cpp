// Completions for the shells, from the same tables as --help.
#include <string>

#include "app/batch/Manual.h"

namespace app {

namespace {

// In single quotes of a shell. A quote in the text ends them, stands by itself, and begins them again.
std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

// The text with a backslash before each of `signs`.
std::string Guarded(const std::string& text, const char* signs) {
    std::string guarded;
    for (const char c : text) {
        if (std::string(signs).find(c) != std::string::npos) guarded += '\\';
        guarded += c;
    }
    return guarded;
}

std::string CommandNames(const std::vector<Command>& commands) {
    std::string names;
    for (const auto& command : commands)
        if (command.name[0]) names += (names.empty() ? "" : " ") + std::string(command.name);
    return names;
}

// What the operand of a command completes to: words or files.
const BoundOption* Operand(const Command& command) {
    for (const auto& option : command.options)
        if (option.IsOperand()) return &option;
    return nullptr;
}

std::string BashReply(const OptionText& text) {
    if (text.words[0])
        return "mapfile -t COMPREPLY < <(compgen -W \"" + std::string(text.words) + "\" -- \"$cur\")";
    if (text.completes == Completes::Nothing) return "COMPREPLY=()";
    return std::string("compopt -o filenames; mapfile -t COMPREPLY < <(compgen ") +
           (text.completes == Completes::Folders ? "-d" : "-f") + " -- \"$cur\")";
}

std::string BashCases(const Command& command) {
    std::string cases;
    std::string names;
    for (const auto& option : command.options) {
        if (option.IsOperand()) continue;
        std::string pattern;
        for (const auto& name : option.Names()) {
            names += name + " ";
            pattern += (pattern.empty() ? "\"" : "|\"") + std::string(command.name) + " " + name + "\"";
        }
        if (option.text.value)
            cases += "        " + pattern + ") " + BashReply(option.text) + "; return ;;\n";
    }
    const std::string scope = command.name[0] ? "\"" + std::string(command.name) + " \"*" : "\" \"*";
    cases += "        " + scope + ") options=\"" + names + "--help" + (command.name[0] ? "" : " --version") +
             "\"\n";
    if (const BoundOption* operand = Operand(command))
        cases += "            [[ $cur == -* ]] || { " + BashReply(operand->text) + "; } ;;\n";
    return cases;
}

std::string ZshAction(const OptionText& text) {
    if (text.words[0]) return "(" + std::string(text.words) + ")";
    if (text.completes == Completes::Folders) return "_files -/";
    return text.completes == Completes::Files ? "_files" : " ";
}

std::string ZshSpec(const BoundOption& option) {
    const std::string value = option.text.value ? option.text.value : "";
    const std::string message = ":" + Guarded(value.empty() ? option.text.names : value, ":\\") + ":";
    if (option.IsOperand()) return Quoted((option.repeatable ? "*" : "") + message + ZshAction(option.text));
    std::string specs;
    for (const auto& name : option.Names()) {
        const std::string spec = (option.repeatable ? "*" : "") + name + "[" +
                                 Guarded(option.text.help, "[]:\\") + "]" +
                                 (option.text.value ? message + ZshAction(option.text) : "");
        specs += (specs.empty() ? "" : " ") + Quoted(spec);
    }
    return specs;
}

std::string FishLine(const Command& command, const BoundOption& option) {
    const std::string name = command.name;
    std::string line = "complete -c tavin -n " +
                       Quoted(name.empty() ? "__fish_use_subcommand" : "__fish_seen_subcommand_from " + name);
    if (!option.IsOperand())
        for (const auto& spelling : option.Names())
            line += spelling[1] == '-' ? " -l " + spelling.substr(2) : " -s " + spelling.substr(1);
    const OptionText& text = option.text;
    const char* const need = option.IsOperand() ? "" : " -r";
    if (text.value && text.words[0])
        line += std::string(need) + " -f -a " + Quoted(text.words);
    else if (text.value && text.completes == Completes::Folders)
        line += std::string(need) + " -f -a '(__fish_complete_directories)'";
    else if (text.value)
        line += std::string(need) + (text.completes == Completes::Files ? " -F" : " -f");
    return line + " -d " + Quoted(Guarded(text.help, "\\")) + "\n";
}

}  // namespace

std::string BashCompletion(const std::vector<Command>& commands) {
    std::string script =
        "# Completion of tavin for bash.\n_tavin() {\n"
        "    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]} command=\"\" "
        "options=\"\"\n"
        "    COMPREPLY=()\n"
        "    if ((COMP_CWORD > 1)); then\n        case ${COMP_WORDS[1]} in\n            ";
    std::string names = CommandNames(commands);
    std::string pattern = names;
    for (char& c : pattern)
        if (c == ' ') c = '|';
    script +=
        pattern + ") command=${COMP_WORDS[1]} ;;\n        esac\n    fi\n    case \"$command $prev\" in\n";
    for (std::size_t i = 1; i < commands.size(); ++i) script += BashCases(commands[i]);
    script += BashCases(commands.front());
    script +=
        "    esac\n    if [[ $cur == -* ]]; then\n"
        "        mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$cur\")\n"
        "    elif ((COMP_CWORD == 1)); then\n"
        "        mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -W \"" +
        names + "\" -- \"$cur\")\n    fi\n}\ncomplete -F _tavin tavin\n";
    return script;
}

std::string ZshCompletion(const std::vector<Command>& commands) {
    std::string script = "#compdef tavin\n# Completion of tavin for zsh.\nlocal -a commands=(\n";
    std::string cases;
    for (const auto& command : commands) {
        if (!command.name[0]) continue;
        script += "    " + Quoted(std::string(command.name) + ":" + Guarded(command.summary, ":\\")) + "\n";
        cases += std::string("    ") + command.name + ")\n        _arguments -s";
        for (const auto& option : command.options) cases += " \\\n            " + ZshSpec(option);
        cases += " \\\n            '--help[print help]' ;;\n";
    }
    return script +
           ")\nif ((CURRENT == 2)); then\n    _describe command commands\n    _files\n"
           "    [[ $PREFIX == -* ]] && compadd -- --help --version\n    return\nfi\n"
           "local command=$words[2]\nshift words\n((CURRENT--))\ncase $command in\n" +
           cases + "    *) _files ;;\nesac\n";
}

std::string FishCompletion(const std::vector<Command>& commands) {
    std::string script = "# Completion of tavin for fish.\ncomplete -c tavin -l help -d 'print help'\n";
    for (const auto& command : commands) {
        if (command.name[0])
            script += "complete -c tavin -n __fish_use_subcommand -a " + std::string(command.name) + " -d " +
                      Quoted(command.summary) + "\n";
        for (const auto& option : command.options) script += FishLine(command, option);
    }
    return script;
}

}  // namespace app
