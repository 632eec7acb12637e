// A selection as a tree.
#pragma once

#include "selections/Rule.h"
#include "selections/Selection.h"

namespace selections {

enum class Operation { Rule, Not, And, Or };

struct Selection::Term {
    Operation operation = Operation::Rule;
    const selections::Rule* rule = nullptr;
    std::vector<Argument> arguments;
    std::vector<Term> operands;  // of a rule: what stands before it, if anything
};

// Reads a whole text; nothing when it is none.
std::optional<Selection::Term> ReadTerm(std::string_view text, SelectionFault& fault, TimeFromText readTime);
// Reads one argument; false when it is none.
bool ReadArgument(ParameterKind kind, std::string_view text, TimeFromText readTime, Argument& argument);
// What is expected of such an argument, for people.
const char* ExpectedArgument(ParameterKind kind);

}  // namespace selections
