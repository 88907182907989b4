// Drawings that take every part of checking and rewriting.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace ozm::test {

struct ConformingSample {
    std::string text;
    bool combinesAreas = false; ///< With the library for polygons.

    friend std::ostream& operator<<(std::ostream& out, const ConformingSample& sample) {
        return out << sample.text;
    }
};

const std::vector<ConformingSample>& ConformingSamples();

} // namespace ozm::test
