#include "page/comparison_page.h"

#include "base/base64.h"
#include "report/finding_json.h"

namespace ozm::tool {
namespace {

void WriteColumn(JSONWriter& json, const PageColumn& column) {
    json.Object([&] {
        json.Key("pictures");
        json.Array([&] {
            for (const std::string& url : column.pictures) json.Value(url);
        });
        if (!column.tinted.empty()) json.Member("tinted", column.tinted);
    });
}

void WriteSettings(JSONWriter& json, const PageSettings& settings) {
    json.Member("title", settings.title);
    json.Key("columns");
    json.Array([&] {
        for (const std::string& name : settings.columns) json.Value(name);
    });
    json.Key("scales");
    json.Value(settings.scales);
    if (!settings.tint.empty()) json.Member("tint", settings.tint);
    if (settings.sourceColumn) json.Member("sourceColumn", *settings.sourceColumn);
    json.Member("hasFindings", settings.hasFindings);
}

/// JSON that can stand inside a `script` element: no tag can begin in it.
std::string WithoutTags(std::string_view json) {
    std::string text;
    text.reserve(json.size());
    for (const char c : json) {
        if (c == '<') {
            text += "\\u003c";
        } else {
            text += c;
        }
    }
    return text;
}

} // namespace

std::string DataURL(std::string_view mediaType, std::span<const uint8_t> bytes) {
    return "data:" + std::string(mediaType) + ";base64," + EncodeBase64(bytes);
}

std::string DescribePageIcon(const PageIcon& icon) {
    StringOutput output;
    JSONWriter json(output);
    json.Object([&] {
        json.Member("name", icon.name);
        json.Member("width", icon.width);
        json.Member("height", icon.height);
        if (!icon.problem.empty()) json.Member("problem", icon.problem);
        if (!icon.status.empty()) json.Member("status", icon.status);
        if (icon.difference) json.Member("difference", *icon.difference);
        json.Key("columns");
        json.Array([&] {
            for (const PageColumn& column : icon.columns) WriteColumn(json, column);
        });
        json.Key("findings");
        json.Array([&] {
            for (const conform::Finding& finding : icon.findings) WriteJSON(json, finding);
        });
    });
    return WithoutTags(output.Take());
}

std::string MakePage(const PageSettings& settings, std::span<const std::string> icons) {
    StringOutput output;
    JSONWriter json(output);
    json.Object([&] { WriteSettings(json, settings); });
    std::string data = WithoutTags(output.Take());
    data.pop_back(); // the icons follow as a last member
    std::string page(kPageParts[0]);
    page += data + ",\"icons\":[";
    for (size_t i = 0; i < icons.size(); ++i) {
        if (i > 0) page += ",\n";
        page += icons[i];
    }
    page += "]}";
    page += kPageParts[1];
    return page;
}

} // namespace ozm::tool
