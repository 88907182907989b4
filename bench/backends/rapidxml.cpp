#include "backend.h"

#include <rapidxml/rapidxml.hpp>

namespace bench {

namespace {

// The flags that Ozmira parses with. They leave the text unmodified.
constexpr int kFlags = rapidxml::parse_no_data_nodes | rapidxml::parse_no_string_terminators |
                       rapidxml::parse_no_entity_translation;

bool Parse(const std::string& text) {
    rapidxml::xml_document<char> document;
    try {
        document.parse<kFlags>(const_cast<char*>(text.c_str()));
    } catch (const rapidxml::parse_error&) {
        return false;
    }
    return document.first_node() != nullptr;
}

} // namespace

const Backend kRapidXMLBackend{"RapidXML", Parse, nullptr};

} // namespace bench
