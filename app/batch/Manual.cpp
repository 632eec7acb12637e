#include "app/batch/Manual.h"

#include <sstream>

#include "app/table/OutputFile.h"

namespace app {

namespace {

// Text for roff: its own signs doubled, and no line that begins like a request.
std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        const bool lineBegins = escaped.empty() || escaped.back() == '\n';
        if (lineBegins && (c == '.' || c == '\'')) escaped += "\\&";
        if (c == '\\')
            escaped += "\\e";
        else if (c == '-')
            escaped += "\\-";
        else
            escaped += c;
    }
    return escaped;
}

std::string OptionEntry(const BoundOption& option) {
    std::string entry = ".TP\n";
    std::string names;
    for (const auto& name : option.Names())
        names += (names.empty() ? "\\fB" : ", \\fB") + Escaped(name) + "\\fR";
    entry += names;
    if (option.text.value && option.text.value[0]) entry += " \\fI" + Escaped(option.text.value) + "\\fR";
    return entry + "\n" + Escaped(option.text.help) + ".\n";
}

std::string Synopsis(const Command& command) {
    std::string line = ".B tavin";
    if (command.name[0]) line += std::string(" ") + command.name;
    line += "\n";
    std::string operands;
    for (const auto& option : command.options) {
        if (option.IsOperand())
            operands += std::string(" \\fI") + option.text.names + "\\fR" + (option.repeatable ? "..." : "");
        else if (option.text.traits & kRequired)
            operands += " \\fB" + Escaped(option.Names().front()) + "\\fR \\fI" + option.text.value + "\\fR";
    }
    return line + "[\\fIOPTIONS\\fR]" + operands + "\n.br\n";
}

std::string Preformatted(const std::string& text) { return ".PP\n.nf\n" + Escaped(text) + "\n.fi\n"; }

}  // namespace

std::string ManualPage(const std::vector<Command>& commands) {
    const Command& program = commands.front();
    std::string page = ".TH TAVIN 1 \"\" \"tavin " TAVIN_VERSION
                       "\" \"User Commands\"\n.SH NAME\ntavin \\- " +
                       Escaped("show and clean series of measurements") + "\n.SH SYNOPSIS\n";
    for (const auto& command : commands) page += Synopsis(command);
    page += ".SH DESCRIPTION\n" + Escaped(program.summary) + "\n" + Preformatted(program.details);
    for (const auto& command : commands) {
        if (!command.name[0]) continue;
        page += std::string(".SH TAVIN ") + command.name + "\n" + Escaped(command.summary) + ".\n";
        const char* group = "Options";
        for (const auto& option : command.options) {
            if (std::string(group) != option.group) page += ".SS " + Escaped(group = option.group) + "\n";
            page += OptionEntry(option);
        }
        page += Preformatted(command.details);
    }
    return page;
}

Result<int> PrintText(const std::string& what, const std::vector<Command>& commands) {
    const auto print = what == "bash"   ? BashCompletion
                       : what == "zsh"  ? ZshCompletion
                       : what == "fish" ? FishCompletion
                                        : ManualPage;
    OutputFile output;
    if (!output.Open("-") || !output.Write(print(commands)) || !output.Commit()) return output.Error();
    return kDone;
}

}  // namespace app
