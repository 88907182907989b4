#include <Ozmira/ozmDebug.h>

#include <iomanip>
#include <ios>
#include <locale>
#include <ostream>
#include <sstream>

namespace ozm {
namespace {

/// A stream that writes numbers with six decimals and in the same way in every locale.
class DumpStream : public std::ostringstream {
public:
    DumpStream() {
        imbue(std::locale::classic());
        *this << std::fixed << std::setprecision(6);
    }
};

std::ostream& operator<<(std::ostream& out, const TVec2<double>& point) {
    return out << point.x << ", " << point.y;
}

void WriteGroup(std::ostream& out, const std::vector<uint64_t>& children) {
    out << "<Group>" << std::endl;
    for (const uint64_t child : children) out << '\t' << child << std::endl;
    out << "<\\Group>" << std::endl;
}

} // namespace

std::string to_string(const PathCommand::Type& type) {
    switch (type) {
    case PathCommand::Type::MoveTo: return "MoveTo";
    case PathCommand::Type::ClosePath: return "ClosePath";
    case PathCommand::Type::LineTo: return "LineTo";
    case PathCommand::Type::HorizontalLineTo: return "HorizontalLineTo";
    case PathCommand::Type::VerticalLineTo: return "VerticalLineTo";
    case PathCommand::Type::CurveTo: return "CurveTo";
    }
    return "Unknown PathCommand::Type";
}

std::string to_string(const Element::Type& type) {
    switch (type) {
    case Element::Type::Group: return "Group";
    case Element::Type::Path: return "Path";
    case Element::Type::Ellipse: return "Ellipse";
    case Element::Type::Rect: return "Rect";
    case Element::Type::Use: return "Use";
    default: return "Unknown Element::Type";
    }
}

std::string to_string(const PathCommand& command) {
    DumpStream out;
    out << '<' << to_string(command.type) << ": ";
    switch (command.type) {
    case PathCommand::Type::MoveTo: out << command.point << '>'; break;
    case PathCommand::Type::ClosePath: out << '>'; break;
    case PathCommand::Type::LineTo:
        for (const TVec2<double>& point : command.points) out << '(' << point << ") ";
        break;
    case PathCommand::Type::CurveTo:
        for (const BezierCurve& curve : command.curves) {
            out << '(' << curve.control1 << ") (" << curve.control2 << ") (" << curve.end << "), ";
        }
        break;
    default: break;
    }
    out << '>';
    return out.str();
}

std::string to_string(const Path& path) {
    DumpStream out;
    out << "<Path>:" << std::endl;
    for (const PathCommand& command : path.commands) out << '\t' << to_string(command) << std::endl;
    out << "</path>";
    return out.str();
}

std::string to_string(const Group& group) {
    DumpStream out;
    WriteGroup(out, group.children);
    return out.str();
}

std::string to_string(const Element& element) {
    DumpStream out;
    out << "<Element>" << std::endl;
    if (element.type == Element::Type::Group) WriteGroup(out, element.children);
    if (element.type == Element::Type::Path) out << to_string(element.path);
    out << "<\\Element>" << std::endl;
    return out.str();
}

} // namespace ozm
