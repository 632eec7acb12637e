#include "selections/Selection.h"

#include <algorithm>
#include <new>

#include "selections/Term.h"

namespace selections {

using Term = Selection::Term;

namespace {

std::string TextOf(const Term& term);

// The operand's text, in parentheses where it binds no closer than what it is an operand of.
std::string OperandText(const Term& operand, Operation of) {
    const bool isLoose = operand.operation == Operation::Rule ? false : operand.operation >= of;
    const bool isNotNot = of == Operation::Not && operand.operation == Operation::Not;
    return isLoose && !isNotNot ? "(" + TextOf(operand) + ")" : TextOf(operand);
}

std::string TextOfRule(const Term& term) {
    std::string text = term.rule->name;
    const bool isRange = term.rule->parameters[0].kind == ParameterKind::XBound ||
                         term.rule->parameters[0].kind == ParameterKind::YBound;
    for (std::size_t i = 0; i < term.arguments.size(); ++i)
        text += (i ? (isRange ? ":" : ",") : (isRange ? "=" : "(")) + term.arguments[i].text;
    if (!isRange && !term.arguments.empty()) text += ")";
    if (term.operands.empty()) return text;
    const Term& operand = term.operands[0];
    const bool isRule = operand.operation == Operation::Rule;
    return (isRule ? TextOf(operand) : "(" + TextOf(operand) + ")") + " " + text;
}

std::string TextOf(const Term& term) {
    if (term.operation == Operation::Rule) return TextOfRule(term);
    if (term.operation == Operation::Not) return "not " + OperandText(term.operands[0], Operation::Not);
    std::string text;
    for (const auto& operand : term.operands) {
        if (!text.empty()) text += term.operation == Operation::And ? " and " : " or ";
        text += OperandText(operand, term.operation);
    }
    return text;
}

template <class Visit>
void ForEachRule(const Term& term, Visit visit) {
    if (term.operation == Operation::Rule) visit(term);
    for (const auto& operand : term.operands) ForEachRule(operand, visit);
}

class Finder {
  public:
    Finder(const Samples& samples, const PlaceSet& selectedSoFar)
        : samples_(samples), valid_(samples), selected_(selectedSoFar) {}

    PlaceSet Find(const Term& term) const {
        PlaceSet found(samples_.PlaceCount());
        if (term.operation == Operation::Rule) {
            const PlaceSet operand = term.operands.empty() ? selected_ : Find(term.operands[0]);
            term.rule->find({samples_, valid_, term.arguments, operand}, found);
            return found;
        }
        found = Find(term.operands[0]);
        if (term.operation == Operation::Not) found.Complement();
        for (std::size_t i = 1; i < term.operands.size(); ++i) {
            const PlaceSet next = Find(term.operands[i]);
            if (term.operation == Operation::And)
                found.Intersect(next);
            else
                found.Unite(next);
        }
        return found;
    }
    void AddJudged(Judges judges, PlaceSet& found) const {
        const long last = valid_.Count() - 1;
        AddValid(valid_, found, [&](long k) {
            switch (judges) {
                case Judges::None:
                    return false;
                case Judges::Every:
                    return true;
                case Judges::LaterOfPairs:
                    return k > 0 && valid_.X(k) != valid_.X(k - 1);
                case Judges::Inner:
                    return k > 0 && k < last;
            }
            return false;
        });
    }

  private:
    const Samples& samples_;
    const ValidPoints valid_;
    const PlaceSet& selected_;
};

}  // namespace

Selection::Selection() : root_(1) { root_[0].rule = RuleNamed("all"); }
Selection::Selection(std::vector<Term> root) : root_(std::move(root)) {}
Selection::~Selection() = default;
Selection::Selection(const Selection&) = default;
Selection::Selection(Selection&&) noexcept = default;
Selection& Selection::operator=(const Selection&) = default;
Selection& Selection::operator=(Selection&&) noexcept = default;

std::optional<Selection> Selection::Read(std::string_view text, SelectionFault& fault,
                                         TimeFromText readTime) try {
    auto term = ReadTerm(text, fault, readTime);
    if (!term) return std::nullopt;
    std::vector<Term> root;
    root.push_back(std::move(*term));
    return Selection(std::move(root));
} catch (const std::bad_alloc&) {
    return std::nullopt;
}

std::string Selection::Text() const { return TextOf(root_[0]); }

bool Selection::IsAll() const {
    return root_[0].operation == Operation::Rule && root_[0].rule == RuleNamed("all");
}

bool Selection::AsksForReasons() const {
    bool asks = false;
    ForEachRule(root_[0], [&](const Term& term) { asks |= term.rule == RuleNamed("reason"); });
    return asks;
}

std::string Selection::Misfit(const Samples& samples) const {
    std::string misfit;
    if (AsksForReasons() && !samples.rejection)
        misfit = "reason(...) finds nothing: the series has no rejection codes";
    ForEachRule(root_[0], [&](const Term& term) {
        if (samples.xIsTime) return;
        for (const auto& argument : term.arguments) {
            if (argument.time)
                misfit = "\"" + argument.text + "\" is a time, and the x axis holds numbers, not times";
            if (argument.secondsPerUnit > 0)
                misfit = "\"" + argument.text + "\" has a unit of time and needs an x axis of times";
        }
    });
    return misfit;
}

bool Selection::Find(const Samples& samples, const PlaceSet& selectedSoFar, PlaceSet& found) const try {
    const bool isNone = selectedSoFar.PlaceCount() != samples.PlaceCount();
    const PlaceSet none(isNone ? samples.PlaceCount() : 0);
    found = Finder(samples, isNone ? none : selectedSoFar).Find(root_[0]);
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

bool Selection::FindJudged(const Samples& samples, PlaceSet& found) const try {
    PlaceSet judged(samples.PlaceCount());
    const Finder finder(samples, judged);
    std::vector<Judges> asked;
    ForEachRule(root_[0], [&](const Term& term) { asked.push_back(term.rule->judges); });
    std::sort(asked.begin(), asked.end());
    asked.erase(std::unique(asked.begin(), asked.end()), asked.end());
    for (const Judges judges : asked) finder.AddJudged(judges, judged);
    found = std::move(judged);
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

std::vector<std::string> Selection::StandardNames() const {
    std::vector<std::string> names;
    ForEachRule(root_[0], [&](const Term& term) {
        const std::string name = term.rule->standardName;
        if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
    });
    return names;
}

std::vector<RuleText> RuleTexts() {
    std::vector<selections::RuleText> texts;
    for (const auto& rule : Rules()) texts.push_back({rule.form, rule.meaning});
    return texts;
}

}  // namespace selections
