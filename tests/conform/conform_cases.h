// Drawings with what is found in them and what they are rewritten to.
#pragma once

#include <OzmiraConform/OzmiraConform.h>

#include <span>
#include <string>
#include <vector>

namespace ozm::conform::test {

/// A drawing of 24 by 24 units with this body; that of a result lacks the prefix for links.
std::string Drawing(const std::string& body);
std::string DrawingWithLinks(const std::string& body);

/// The rules of findings in their order, separated by blanks.
std::string RulesOf(const std::vector<Finding>& findings);

/// True with an error or a warning among the findings.
bool HasDifference(const std::vector<Finding>& findings);

/// The rewritten drawing is the drawing itself.
constexpr const char* kSame = "=";

/// A drawing, the rules of its findings, and the result.
struct Case {
    const char* body;   ///< Of a drawing with links; or a whole file.
    const char* rules;  ///< Of the findings, in their order.
    const char* result; ///< Its body, or a whole file; null where the drawing is refused.
};

/// Checks and rewrites the drawings of a table. What is written must have nothing left to rewrite.
void ExpectCases(std::span<const Case> cases);

/// Expects that nothing is found in drawings with these bodies, and that they stay as they are.
void ExpectUnchanged(std::span<const char* const> bodies);

} // namespace ozm::conform::test
