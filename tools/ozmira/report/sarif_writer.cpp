#include "report/sarif_writer.h"

#include "report/finding_text.h"

#include <algorithm>
#include <string_view>

namespace ozm::tool {
namespace {

constexpr const char* kSchema = "https://json.schemastore.org/sarif-2.1.0.json";

/// A path as a reference of RFC 3986, relative as the path is.
std::string URIOf(std::string_view path) {
    if (path == "-") return "stdin";
    constexpr std::string_view kHex = "0123456789ABCDEF", kPlain = "/-._~";
    std::string uri = path.starts_with('/') ? "file://" : "";
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isLetterOrDigit =
            (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (isLetterOrDigit || kPlain.find(c) != std::string_view::npos) {
            uri += c;
        } else {
            uri += {'%', kHex[byte >> 4], kHex[byte & 15]};
        }
    }
    return uri;
}

void WriteText(JSONWriter& json, std::string_view key, std::string_view text) {
    json.Key(key);
    json.Object([&] { json.Member("text", text); });
}

void WriteRule(JSONWriter& json, const conform::RuleInfo& rule) {
    // "{}" stands for what differs from finding to finding.
    std::string message(rule.message);
    if (const size_t at = message.find("{}"); at != std::string::npos) message.replace(at, 2, "...");
    json.Object([&] {
        json.Member("id", rule.id);
        WriteText(json, "shortDescription", message);
        WriteText(json, "help", rule.remedy);
        json.Key("defaultConfiguration");
        json.Object([&] { json.Member("level", conform::SeverityName(rule.severity)); });
    });
}

/// The table's rules and the one for files that can't be read.
std::vector<conform::RuleInfo> AllRules() {
    const auto rules = conform::Rules();
    std::vector<conform::RuleInfo> all(rules.begin(), rules.end());
    all.push_back({kUnreadableRule,
                   conform::Severity::Error,
                   "the file can't be read",
                   "name a drawing that can be read",
                   {},
                   false});
    return all;
}

void WriteResult(JSONWriter& json, const std::string& file, const conform::Finding& finding,
                 size_t ruleIndex) {
    json.Object([&] {
        json.Member("ruleId", finding.rule);
        json.Member("ruleIndex", ruleIndex);
        json.Member("level", conform::SeverityName(finding.severity));
        WriteText(json, "message", finding.message + "; " + std::string(finding.remedy));
        json.Key("locations");
        json.Array([&] {
            json.Object([&] {
                json.Key("physicalLocation");
                json.Object([&] {
                    json.Key("artifactLocation");
                    json.Object([&] { json.Member("uri", std::string_view(URIOf(file))); });
                    json.Key("region");
                    json.Object([&] {
                        json.Member("startLine", finding.line);
                        json.Member("startColumn", finding.column);
                    });
                });
            });
        });
    });
}

} // namespace

void WriteSARIF(JSONWriter& json, const std::function<void(const FindingSink&)>& writeFiles) {
    const std::vector<conform::RuleInfo> rules = AllRules();
    const auto indexOf = [&](std::string_view id) {
        const auto found =
            std::find_if(rules.begin(), rules.end(), [&](const auto& rule) { return rule.id == id; });
        return static_cast<size_t>(found - rules.begin());
    };
    json.Object([&] {
        json.Member("$schema", std::string_view(kSchema));
        json.Member("version", std::string_view("2.1.0"));
        json.Key("runs");
        json.Array([&] {
            json.Object([&] {
                json.Key("tool");
                json.Object([&] {
                    json.Key("driver");
                    json.Object([&] {
                        json.Member("name", std::string_view("ozmira"));
                        json.Member("version", std::string_view(OZMIRA_TOOL_VERSION));
                        json.Key("rules");
                        json.Array([&] {
                            for (const conform::RuleInfo& rule : rules) WriteRule(json, rule);
                        });
                    });
                });
                json.Member("columnKind", std::string_view("unicodeCodePoints"));
                json.Key("results");
                json.Array([&] {
                    writeFiles([&](const std::string& file, std::span<const conform::Finding> findings) {
                        for (const conform::Finding& f : findings)
                            WriteResult(json, file, f, indexOf(f.rule));
                    });
                });
            });
        });
    });
}

} // namespace ozm::tool
