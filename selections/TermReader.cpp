// Reads selections: or, and, not, grow, and at the bottom parentheses and rules.
#include <algorithm>
#include <cctype>

#include "platform/core/NearestName.h"
#include "selections/Term.h"

namespace selections {

namespace {

using Term = Selection::Term;

constexpr int kDeepest = 200;

char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }
bool IsLetter(char c) { return Lower(c) >= 'a' && Lower(c) <= 'z'; }
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

class TermReader {
  public:
    TermReader(std::string_view text, TimeFromText readTime, SelectionFault& fault)
        : text_(text), readTime_(readTime), fault_(fault) {}

    bool Read(Term& term) {
        if (!ReadOr(term)) return false;
        SkipBlanks();
        if (at_ == text_.size()) return true;
        return Fault(at_, text_[at_] == ')' ? "this parenthesis was never opened"
                                            : "expected and, or, grow(...) or the end");
    }

  private:
    bool Fault(std::size_t position, std::string message) {
        fault_ = {position, std::move(message)};
        return false;
    }
    void SkipBlanks() {
        while (at_ < text_.size() && IsBlank(text_[at_])) ++at_;
    }
    bool Take(char c) {
        SkipBlanks();
        if (at_ == text_.size() || text_[at_] != c) return false;
        ++at_;
        return true;
    }
    // The word that begins here, in small letters.
    std::string Word(std::size_t from) const {
        std::string word;
        while (from < text_.size() && IsLetter(text_[from])) word += Lower(text_[from++]);
        return word;
    }
    bool TakeWord(std::string_view word) {
        SkipBlanks();
        if (Word(at_) != word) return false;
        at_ += word.size();
        return true;
    }

    // Operands of one operation and a word between each two.
    template <class ReadOperand>
    bool ReadList(Term& term, Operation operation, std::string_view word, ReadOperand readOperand) {
        if (!readOperand(term)) return false;
        if (!TakeWord(word)) return true;
        Term list;
        list.operation = operation;
        list.operands.push_back(std::move(term));
        do {
            if (!readOperand(list.operands.emplace_back())) return false;
        } while (TakeWord(word));
        term = std::move(list);
        return true;
    }
    bool ReadOr(Term& term) {
        return ReadList(term, Operation::Or, "or", [this](Term& operand) { return ReadAnd(operand); });
    }
    bool ReadAnd(Term& term) {
        return ReadList(term, Operation::And, "and", [this](Term& operand) { return ReadNot(operand); });
    }
    bool ReadNot(Term& term) {
        if (++depth_ > kDeepest) return Fault(at_, "too many parentheses or nots inside one another");
        const bool read = TakeWord("not") ? ReadNegated(term) : ReadGrown(term);
        --depth_;
        return read;
    }
    bool ReadNegated(Term& term) {
        term.operation = Operation::Not;
        return ReadNot(term.operands.emplace_back());
    }
    bool ReadGrown(Term& term) {
        if (!ReadSingle(term)) return false;
        int times = 0;
        for (SkipBlanks(); Word(at_) == "grow"; SkipBlanks()) {
            if (++times > kDeepest) return Fault(at_, "grown too many times");
            Term grown;
            if (!ReadRule(grown)) return false;
            grown.operands.push_back(std::move(term));
            term = std::move(grown);
        }
        return true;
    }
    bool ReadSingle(Term& term) {
        const std::size_t opened = at_;
        if (!Take('(')) return ReadRule(term);
        if (!ReadOr(term)) return false;
        if (Take(')')) return true;
        SkipBlanks();
        if (at_ < text_.size()) return Fault(at_, "expected and, or, grow(...) or )");
        return Fault(text_.find('(', opened), "this parenthesis is not closed");
    }

    bool ReadRule(Term& term) {
        SkipBlanks();
        const std::size_t from = at_;
        const std::string word = Word(at_);
        if (at_ == text_.size()) return Fault(at_, "expected a rule, not or (");
        if (word.empty()) return Fault(at_, "expected a rule, not or (, but found " + Quoted(at_));
        term.rule = RuleNamed(word == "none" ? "all" : word);
        if (!term.rule || word == "or" || word == "and") return UnknownRule(from, word);
        at_ += word.size();
        if (word == "x" || word == "y") return ReadRange(term);
        return ReadArguments(term, from);
    }
    std::string Quoted(std::size_t from) const {
        std::size_t end = from;
        while (end < text_.size() && !IsBlank(text_[end]) && end - from < 20) ++end;
        return "\"" + std::string(text_.substr(from, end - from)) + "\"";
    }
    bool UnknownRule(std::size_t from, const std::string& word) {
        std::vector<std::string> names;
        for (const auto& rule : Rules()) names.emplace_back(rule.name);
        const std::string nearest = NearestName(word, names);
        if (!nearest.empty())
            return Fault(from, "there is no rule \"" + word + "\"; did you mean " + nearest + "?");
        std::string list;
        for (const auto& name : names) list += (list.empty() ? "" : ", ") + name;
        return Fault(from, "there is no rule \"" + word + "\"; the rules are " + list);
    }

    // The text of a range ends at a parenthesis, at and, or, grow, or at the end.
    std::size_t RangeEnd(std::size_t from) const {
        for (std::size_t at = from; at < text_.size(); ++at) {
            if (text_[at] == ')') return at;
            if (!IsBlank(text_[at])) continue;
            std::size_t next = at;
            while (next < text_.size() && IsBlank(text_[next])) ++next;
            const std::string word = Word(next);
            if (word == "and" || word == "or" || word == "grow") return at;
        }
        return text_.size();
    }
    // Times hold colons themselves: the range is split at the first one that leaves readable bounds.
    bool ReadRange(Term& term) {
        const Parameter* parameters = term.rule->parameters;
        if (!Take('=')) return Fault(at_, std::string("expected ") + term.rule->form);
        const std::string_view range = text_.substr(at_, RangeEnd(at_) - at_);
        term.arguments.resize(2);
        for (auto colon = range.find(':'); colon != range.npos; colon = range.find(':', colon + 1)) {
            const bool read =
                ReadArgument(parameters[0].kind, range.substr(0, colon), readTime_, term.arguments[0]) &&
                ReadArgument(parameters[1].kind, range.substr(colon + 1), readTime_, term.arguments[1]);
            if (!read || (term.arguments[0].isOpen && term.arguments[1].isOpen)) continue;
            at_ += range.size();
            return true;
        }
        return Fault(at_, std::string("expected ") + ExpectedArgument(parameters[0].kind));
    }

    bool ReadArguments(Term& term, std::size_t from) {
        const selections::Rule& rule = *term.rule;
        if (Take('(')) {
            while (true) {
                const std::size_t begin = at_;
                const std::size_t end = std::min(text_.find_first_of(",()", begin), text_.size());
                if (end == text_.size()) return Fault(end, "expected , or )");
                if (text_[end] == '(') return Fault(end, "expected , or ) here");
                at_ = end + 1;
                const bool nothing = std::all_of(text_.begin() + static_cast<std::ptrdiff_t>(begin),
                                                 text_.begin() + static_cast<std::ptrdiff_t>(end), IsBlank);
                const bool isLast = text_[end] == ')';
                if (nothing && isLast && term.arguments.empty()) break;
                if (!AddArgument(term, begin, end)) return false;
                if (isLast) break;
            }
        }
        return AddFallbacks(term, rule, from);
    }
    bool AddArgument(Term& term, std::size_t begin, std::size_t end) {
        const selections::Rule& rule = *term.rule;
        const std::size_t index = rule.repeats ? 0 : term.arguments.size();
        while (begin < end && IsBlank(text_[begin])) ++begin;
        if (index >= std::size(rule.parameters) || rule.parameters[index].kind == ParameterKind::None)
            return Fault(begin, "too much: " + Form(rule));
        const ParameterKind kind = rule.parameters[index].kind;
        Argument argument;
        if (!ReadArgument(kind, text_.substr(begin, end - begin), readTime_, argument))
            return Fault(begin, Form(rule) + " needs " + ExpectedArgument(kind) + " here");
        term.arguments.push_back(std::move(argument));
        return true;
    }
    bool AddFallbacks(Term& term, const selections::Rule& rule, std::size_t from) {
        for (std::size_t i = term.arguments.size(); i < std::size(rule.parameters); ++i) {
            const Parameter& parameter = rule.parameters[i];
            if (parameter.kind == ParameterKind::None) break;
            Argument argument;
            if (!parameter.fallback)
                return Fault(from, Form(rule) + " lacks " + ExpectedArgument(parameter.kind));
            ReadArgument(parameter.kind, parameter.fallback, readTime_, argument);
            term.arguments.push_back(std::move(argument));
        }
        const bool bothOpen =
            term.arguments.size() == 2 && term.arguments[0].isOpen && term.arguments[1].isOpen;
        return bothOpen ? Fault(from, Form(rule) + " needs a limit") : true;
    }
    static std::string Form(const selections::Rule& rule) { return rule.form; }

    std::string_view text_;
    TimeFromText readTime_;
    SelectionFault& fault_;
    std::size_t at_ = 0;
    int depth_ = 0;
};

}  // namespace

std::optional<Term> ReadTerm(std::string_view text, SelectionFault& fault, TimeFromText readTime) {
    Term term;
    if (!TermReader(text, readTime, fault).Read(term)) return std::nullopt;
    return term;
}

}  // namespace selections
