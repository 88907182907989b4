#include "generated_svg.h"

#include <cstdint>

namespace bench {

namespace {

constexpr double kSide = 1000;

/// Pseudo-random numbers, the same ones each time: a linear congruential generator with the multiplier of
/// Knuth, The Art of Computer Programming, volume 2, section 3.3.4.
class Numbers {
public:
    /// A number from 0 to `below` - 1.
    uint64_t Below(uint64_t below) {
        m_state = m_state * 6364136223846793005u + 1442695040888963407u;
        return (m_state >> 33) % below;
    }
    /// A number from 0.10 to `below` - 0.01, as text with two decimals.
    std::string Coordinate(uint64_t below) {
        return std::to_string(Below(below)) + '.' + std::to_string(10 + Below(90));
    }

private:
    uint64_t m_state = 1;
};

/// A closed shape of two curves and two lines, about 20 units wide.
void AppendShape(std::string& data, Numbers& numbers) {
    data += 'M' + numbers.Coordinate(980) + ' ' + numbers.Coordinate(980);
    for (const char* direction : {" ", " -"}) {
        data += 'c';
        for (int i = 0; i < 6; ++i) data += direction + numbers.Coordinate(12);
        data += 'l';
        for (int i = 0; i < 2; ++i) data += direction + numbers.Coordinate(8);
    }
    data += 'z';
}

std::string PathElement(Numbers& numbers, const std::string& attributes = {}) {
    std::string data;
    AppendShape(data, numbers);
    return "<path" + attributes + " d=\"" + data + "\"/>";
}

std::string Drawing(const std::string& content) {
    const std::string side = std::to_string(static_cast<int>(kSide));
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
           "viewBox=\"0 0 " +
           side + ' ' + side + "\">" + content + "</svg>";
}

std::string Quoted(size_t number) { return "\"n" + std::to_string(number) + '"'; }

/// Maps the numbers below `count` onto each other so that neighbours end up far apart.
size_t Scatter(size_t number, size_t count) { return (number * 7919 + count / 2) % count; }

} // namespace

std::string PathOfSize(size_t bytes) {
    Numbers numbers;
    std::string data;
    while (data.size() < bytes) AppendShape(data, numbers);
    return Drawing("<path d=\"" + data + "\"/>");
}

std::string FlatGroups(size_t count) {
    Numbers numbers;
    std::string content;
    for (size_t i = 0; i < count; ++i) {
        content += "<g id=" + Quoted(i) + " fill=\"#123\">" + PathElement(numbers) + "</g>";
    }
    return Drawing(content);
}

std::string NestedGroups(size_t count) {
    Numbers numbers;
    std::string content;
    for (size_t i = 0; i < count; ++i) content += "<g id=" + Quoted(i) + '>' + PathElement(numbers);
    for (size_t i = 0; i < count; ++i) content += "</g>";
    return Drawing(content);
}

std::string UseReferences(size_t count) {
    Numbers numbers;
    std::string content = "<defs>";
    for (size_t i = 0; i < count; ++i) content += PathElement(numbers, " id=" + Quoted(i));
    content += "</defs>";
    for (size_t i = 0; i < count; ++i) {
        content += "<use xlink:href=\"#n" + std::to_string(Scatter(i, count)) + "\" x=\"1\"/>";
    }
    return Drawing(content);
}

std::string ClippedPaths(size_t count) {
    Numbers numbers;
    std::string content;
    for (size_t i = 0; i < count; ++i) {
        content += "<clipPath id=" + Quoted(i) + '>' + PathElement(numbers) + "</clipPath>";
    }
    for (size_t i = 0; i < count; ++i) {
        content += PathElement(numbers, " clip-path=\"url(#n" + std::to_string(Scatter(i, count)) + ")\"");
    }
    return Drawing(content);
}

std::string LargeShapes() {
    std::string content = "<linearGradient id=\"a\"><stop stop-color=\"#fc0\"/><stop offset=\"1\" "
                          "stop-color=\"#05c\"/></linearGradient>";
    for (int i = 0; i < 4; ++i) {
        const std::string at = std::to_string(100 + 200 * i);
        content += "<circle cx=\"" + at + "\" cy=\"300\" r=\"250\" fill=\"url(#a)\"/>";
        content += "<rect x=\"" + at + "\" y=\"400\" width=\"300\" height=\"500\" rx=\"40\" opacity=\".5\"/>";
        content += "<path d=\"M0 " + at + "C300 0 700 1000 1000 " + at +
                   "\" fill=\"none\" stroke=\"#c00\" stroke-width=\"30\"/>";
    }
    return Drawing(content);
}

} // namespace bench
