// Finds what Ozmira would draw differently from a browser, and rewrites drawings so that it does not.
#pragma once

#include <Ozmira/OzmiraExport.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ozm::conform {

/// How much a finding matters.
enum class Severity : uint8_t {
    Error,   ///< Nothing can be drawn.
    Warning, ///< Something is drawn differently from a browser.
    Note,    ///< Worth knowing; nothing looks different.
};

/// "error", "warning" or "note".
OZM_CXX_EXPORT std::string_view SeverityName(Severity severity);

/// One difference between Ozmira and a browser, and where it is caused.
struct Finding {
    uint32_t line = 1;     ///< From 1.
    uint32_t column = 1;   ///< From 1, in characters (code points of UTF-8).
    std::string_view rule; ///< Its identifier, such as "relative-after-z"; lives forever.
    Severity severity = Severity::Warning;
    std::string message;       ///< What is different: one sentence without a full stop.
    std::string_view remedy;   ///< What to do about it; lives forever.
    bool isConvertible = true; ///< `Conform` can rewrite it.
};

/// The description of a rule.
struct RuleInfo {
    std::string_view id;
    Severity severity;
    std::string_view message; ///< "{}" stands for the detail of a finding.
    std::string_view remedy;
    std::string_view anchor; ///< Of the section in docs/differences.md.
    bool isConvertible;
};

/// Every rule, in the order of the page on differences.
OZM_CXX_EXPORT std::span<const RuleInfo> Rules();

/// The findings about a drawing, in the order of the text. Text that a browser shows nothing of has one
/// finding of severity `Error`. Throws nothing but `std::bad_alloc`.
OZM_CXX_EXPORT std::vector<Finding> Check(std::string_view svg);

/// How to rewrite a drawing.
struct Options {
    /// Decimals of coordinates, 0...12; absent: three for a view box of 24 units, fewer for larger ones.
    std::optional<int> decimals;
    /// Turn every stroke into a filled outline, which an application can tint.
    bool outlineStrokes = false;
    /// Leave out what can't be rewritten instead of refusing the drawing.
    bool lossy = false;
};

/// The result of rewriting a drawing.
struct Result {
    /// The drawing for Ozmira; the input itself, byte for byte, when it has no error and no warning. Empty
    /// when refused.
    std::string text;
    /// What was found in the input: the causes of each change, and of a refusal.
    std::vector<Finding> findings;
    bool isChanged = false; ///< `text` is not the input.
    bool isRefused = false; ///< Some finding can't be rewritten (and `lossy` is not set), or is an error.
};

/// Rewrites a drawing so that Ozmira draws what a browser does. The result has no finding of severity `Error`
/// or `Warning`, and rewriting it again changes nothing. Throws nothing but `std::bad_alloc`.
OZM_CXX_EXPORT Result Conform(std::string_view svg, const Options& options = {});

} // namespace ozm::conform
