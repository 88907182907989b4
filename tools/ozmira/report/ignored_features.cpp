#include "report/ignored_features.h"

#include <Ozmira/SVG/ozmXMLNode.h>
#include <rapidxml/rapidxml.hpp>

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace ozm::tool {
namespace {

using namespace std::string_view_literals;

constexpr std::array kContainers = {"g"sv, "a"sv, "defs"sv, "clipPath"sv};
constexpr std::array kShapes = {"path"sv, "rect"sv,     "circle"sv,  "ellipse"sv,
                                "line"sv, "polyline"sv, "polygon"sv, "use"sv};
constexpr std::array kGradients = {"linearGradient"sv, "radialGradient"sv};
constexpr std::array kInvisible = {"title"sv, "desc"sv, "metadata"sv};

template <size_t Count>
bool IsOneOf(std::string_view name, const std::array<std::string_view, Count>& names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// Walks the elements as the parser does and counts what the parser ignores.
class FeatureFinder {
public:
    std::map<std::string, uint64_t> Find(XMLNode svg) {
        m_open.push_back(svg);
        while (!m_open.empty()) {
            const XMLNode parent = m_open.back();
            m_open.pop_back();
            for (XMLNode node = parent.FirstChild(); node; node = node.NextSibling()) Visit(parent, node);
        }
        return std::move(m_counts);
    }

private:
    void Count(std::string_view feature) { ++m_counts[std::string(feature)]; }

    void Visit(XMLNode parent, XMLNode node) {
        const std::string_view name = node.Name();
        const bool inContainer = !IsOneOf(parent.Name(), kShapes) && !IsOneOf(parent.Name(), kGradients);
        const bool isStop = name == "stop" && IsOneOf(parent.Name(), kGradients);
        const bool isKnown =
            IsOneOf(name, kContainers) || IsOneOf(name, kShapes) || IsOneOf(name, kGradients);
        if (inContainer && isKnown) {
            CheckAttributes(node);
            m_open.push_back(node);
        } else if (!isStop && !IsOneOf(name, kInvisible) && name.find(':') == std::string_view::npos) {
            Count(name);
        }
    }

    void CheckAttributes(XMLNode node) {
        const std::string_view name = node.Name();
        StringView value;
        if (name == "path" && node.FindAttribute("d", value)) CheckPathData(value);
        if (name == "use" && !node.FindAttribute("xlink:href", value)) Count("use without xlink:href");
        if (IsOneOf(name, kGradients) &&
            (node.FindAttribute("xlink:href", value) || node.FindAttribute("href", value))) {
            Count("gradient that refers to another");
        }
        if (node.FindAttribute("stroke-dasharray", value) && value != StringView("none"sv)) {
            Count("stroke-dasharray");
        }
        if (node.FindAttribute("stroke", value) && value.HasPrefix("url(")) Count("stroke that is no colour");
        for (const std::string_view attribute : {"mask"sv, "filter"sv}) {
            if (node.FindAttribute(attribute, value)) Count(attribute);
        }
    }

    void CheckPathData(std::string_view data) {
        if (data.find_first_of("Aa") != std::string_view::npos) Count("arc in path data");
        if (data.find_first_of("QqTt") != std::string_view::npos) Count("quadratic curve in path data");
    }

    std::vector<XMLNode> m_open;
    std::map<std::string, uint64_t> m_counts;
};

} // namespace

std::map<std::string, uint64_t> FindIgnoredFeatures(const std::string& text) {
    std::string copy(text, 0, text.find('\0')); // the parser stops at the first NUL
    rapidxml::xml_document<char> xml;
    xml.parse<rapidxml::parse_fastest>(copy.data());
    const auto* const svg = xml.first_node("svg");
    return svg ? FeatureFinder().Find(XMLNode(svg)) : std::map<std::string, uint64_t>();
}

} // namespace ozm::tool
