#include "base/suggestion.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace ozm::tool {
namespace {

/// The optimal string alignment distance: Levenshtein's, with the exchange of neighbours as one change.
size_t Distance(std::string_view a, std::string_view b) {
    std::vector<size_t> beforeLast, last(b.size() + 1), row(b.size() + 1);
    for (size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (size_t i = 1; i <= a.size(); ++i) {
        beforeLast = std::move(last);
        last = std::move(row);
        row.assign(b.size() + 1, i);
        for (size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] != b[j - 1])});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
        }
    }
    return row[b.size()];
}

} // namespace

std::string Suggest(std::string_view word, std::span<const std::string> candidates) {
    std::string best;
    size_t least = word.size();
    for (const std::string& candidate : candidates) {
        const size_t distance = Distance(word, candidate);
        if (distance < least && 3 * distance <= candidate.size()) {
            least = distance;
            best = candidate;
        }
    }
    return best;
}

} // namespace ozm::tool
