// Rewrites the drawing on standard input so that Ozmira draws it as a browser does.
#include <OzmiraConform/OzmiraConform.h>

#include <iostream>
#include <iterator>
#include <string>

int main() {
    const std::string text(std::istreambuf_iterator<char>(std::cin), {});
    const ozm::conform::Result result = ozm::conform::Conform(text);
    for (const ozm::conform::Finding& finding : result.findings) {
        std::cerr << finding.line << ':' << finding.column << ": " << finding.message << "; "
                  << finding.remedy << '\n';
    }
    std::cout << result.text;
    return result.isRefused ? 1 : 0;
}
