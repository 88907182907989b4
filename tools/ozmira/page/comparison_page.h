// A page of HTML that shows icons side by side: what an application shows beside what a browser draws, or old
// pictures beside new ones. The page needs nothing but itself.
#pragma once

#include "report/json_writer.h"

#include <OzmiraConform/OzmiraConform.h>

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ozm::tool {

/// The page before and after its data.
extern const std::array<std::string_view, 2> kPageParts;

/// The pictures of an icon in one column of the page, as URLs that hold them.
struct PageColumn {
    std::vector<std::string> pictures; ///< One, or one for each scale; none where there is nothing to show.
    std::string tinted;                ///< Empty where a tint changes nothing.
};

/// One icon of the page.
struct PageIcon {
    std::string name;
    double width = 0, height = 0; ///< In points; 0 when unknown.
    std::string problem;          ///< Why something is missing; empty if nothing is.
    std::string status;           ///< A word such as "changed"; may be empty.
    std::vector<PageColumn> columns;
    std::vector<conform::Finding> findings;
    std::optional<double>
        difference; ///< 0...255 between the first two columns; the page measures it if absent.
};

/// What holds for all icons of a page.
struct PageSettings {
    std::string title;
    std::vector<std::string> columns; ///< Their names. The first two are compared.
    std::vector<double> scales;       ///< Pixels per point of the pictures of a column.
    std::string tint; ///< The colour of tinted pictures, in the notation of CSS; may be empty.
    std::optional<size_t>
        sourceColumn; ///< The column whose pictures are the files themselves, shown as text.
    bool hasFindings = false;
};

/// A `data:` URL that holds a file.
std::string DataURL(std::string_view mediaType, std::span<const uint8_t> bytes);

/// An icon as JSON, for `MakePage`.
std::string DescribePageIcon(const PageIcon& icon);

/// The page of icons that `DescribePageIcon` described.
std::string MakePage(const PageSettings& settings, std::span<const std::string> icons);

} // namespace ozm::tool
