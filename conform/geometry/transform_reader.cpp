#include "geometry/transform_reader.h"

#include "geometry/css_units.h"
#include "geometry/number_text.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace ozm::conform {

namespace {

enum class Kind : uint8_t { Number, Angle, LengthX, LengthY, Factor };

/// A transform function: what its arguments are, and how many are needed.
struct Function {
    std::string_view name;
    int least, most;
    Kind kinds[3]; ///< The last one stands for all further arguments.
    bool isForStyleOnly;
    Matrix (*matrix)(const double* arguments, int count);
};

Matrix RotationAround(const double* v, int count) {
    const Matrix turn = Matrix::Rotation(v[0]);
    if (count < 3) return turn;
    return Matrix::Translation(v[1], v[2]) * turn * Matrix::Translation(-v[1], -v[2]);
}

// Angles arrive in radians, lengths in user units, percentages of factors as fractions.
constexpr Function kFunctions[] = {
    {"matrix",
     6,
     6,
     {Kind::Number, Kind::Number, Kind::Number},
     false,
     [](const double* v, int) { return Matrix{v[0], v[1], v[2], v[3], v[4], v[5]}; }},
    {"translate",
     1,
     2,
     {Kind::LengthX, Kind::LengthY, Kind::LengthY},
     false,
     [](const double* v, int count) { return Matrix::Translation(v[0], count > 1 ? v[1] : 0); }},
    {"scale",
     1,
     2,
     {Kind::Factor, Kind::Factor, Kind::Factor},
     false,
     [](const double* v, int count) { return Matrix::Scaling(v[0], count > 1 ? v[1] : v[0]); }},
    {"rotate", 1, 3, {Kind::Angle, Kind::LengthX, Kind::LengthY}, false, RotationAround},
    {"skewX",
     1,
     1,
     {Kind::Angle, Kind::Angle, Kind::Angle},
     false,
     [](const double* v, int) { return Matrix::SkewX(v[0]); }},
    {"skewY",
     1,
     1,
     {Kind::Angle, Kind::Angle, Kind::Angle},
     false,
     [](const double* v, int) { return Matrix::SkewY(v[0]); }},
    {"skew",
     1,
     2,
     {Kind::Angle, Kind::Angle, Kind::Angle},
     true,
     [](const double* v, int count) {
         return Matrix{1, count > 1 ? std::tan(v[1]) : 0, std::tan(v[0]), 1, 0, 0};
     }},
    {"translateX",
     1,
     1,
     {Kind::LengthX, Kind::LengthX, Kind::LengthX},
     true,
     [](const double* v, int) { return Matrix::Translation(v[0], 0); }},
    {"translateY",
     1,
     1,
     {Kind::LengthY, Kind::LengthY, Kind::LengthY},
     true,
     [](const double* v, int) { return Matrix::Translation(0, v[0]); }},
    {"scaleX",
     1,
     1,
     {Kind::Factor, Kind::Factor, Kind::Factor},
     true,
     [](const double* v, int) { return Matrix::Scaling(v[0], 1); }},
    {"scaleY",
     1,
     1,
     {Kind::Factor, Kind::Factor, Kind::Factor},
     true,
     [](const double* v, int) { return Matrix::Scaling(1, v[0]); }},
    {"rotateZ",
     1,
     1,
     {Kind::Angle, Kind::Angle, Kind::Angle},
     true,
     [](const double* v, int) { return Matrix::Rotation(v[0]); }},
};

/// Reads a transform list.
class TransformReader {
public:
    TransformReader(std::string_view text, TransformSyntax syntax, const TransformUnits& units)
        : m_p(text.data()), m_end(m_p + text.size()), m_isStyle(syntax == TransformSyntax::Style),
          m_units(units) {}

    std::optional<Matrix> Read() {
        SkipSpaces(m_p, m_end);
        const char* const begin = m_p;
        const std::string_view all(m_p, static_cast<size_t>(m_end - m_p));
        if (EqualsIgnoringCase(all.substr(0, 4), "none")) {
            m_p += 4;
            SkipSpaces(m_p, m_end);
            if (m_p == m_end) return Matrix{};
            m_p = begin;
        }
        Matrix matrix;
        bool needsFunction = m_isStyle; // An empty attribute is the identity, an empty declaration none.
        while (m_p != m_end || needsFunction) {
            const std::optional<Matrix> next = ReadFunction();
            if (!next) return {};
            matrix = matrix * *next;
            needsFunction = Separate();
        }
        if (!IsFinite(matrix)) return {};
        return matrix;
    }

private:
    /// Skips what stands between two functions; true after a comma.
    bool Separate() {
        if (!m_isStyle) return SkipSpacesAndComma(m_p, m_end);
        SkipSpaces(m_p, m_end);
        return false;
    }

    std::optional<Matrix> ReadFunction() {
        const Function* const function = ReadName();
        if (!function) return {};
        double values[6];
        int count = 0;
        for (bool isMore = true; isMore; ++count) {
            if (count == function->most) return {};
            if (!ReadArgument(function->kinds[std::min(count, 2)], values[count])) return {};
            const bool hasComma = SkipSpacesAndComma(m_p, m_end);
            if (m_p == m_end) return {};
            isMore = *m_p != ')';
            if (hasComma != isMore && (m_isStyle || hasComma)) return {};
        }
        ++m_p;
        const bool isRotation = function->matrix == RotationAround;
        if (count < function->least || (isRotation && (count == 2 || (count == 3 && m_isStyle)))) return {};
        return function->matrix(values, count);
    }

    const Function* ReadName() {
        const char* const begin = m_p;
        while (m_p != m_end && ToLower(*m_p) >= 'a' && ToLower(*m_p) <= 'z') ++m_p;
        const std::string_view name(begin, static_cast<size_t>(m_p - begin));
        if (!m_isStyle) SkipSpaces(m_p, m_end);
        if (m_p == m_end || *m_p != '(') return nullptr;
        ++m_p;
        SkipSpaces(m_p, m_end);
        const auto found = std::find_if(std::begin(kFunctions), std::end(kFunctions), [&](const Function& f) {
            return m_isStyle ? EqualsIgnoringCase(f.name, name) : f.name == name && !f.isForStyleOnly;
        });
        return found == std::end(kFunctions) ? nullptr : found;
    }

    bool ReadArgument(Kind kind, double& value) {
        if (!ReadNumber(m_p, m_end, value)) return false;
        const char* const begin = m_p;
        while (m_p != m_end && (*m_p == '%' || (ToLower(*m_p) >= 'a' && ToLower(*m_p) <= 'z'))) ++m_p;
        const std::string_view unit(begin, static_cast<size_t>(m_p - begin));
        if (!m_isStyle && !unit.empty()) return false;
        const std::optional<double> factor = UnitFactor(kind, unit, value);
        if (factor) value *= *factor;
        return factor.has_value();
    }

    /// What to multiply a value by; none for a unit that does not fit.
    std::optional<double> UnitFactor(Kind kind, std::string_view unit, double value) const {
        const bool mayLackUnit = !m_isStyle || value == 0;
        switch (kind) {
        case Kind::Number: return unit.empty() ? std::optional<double>(1) : std::nullopt;
        case Kind::Factor:
            if (unit.empty()) return 1;
            return unit == "%" ? std::optional<double>(0.01) : std::nullopt;
        case Kind::Angle:
            if (unit.empty()) return mayLackUnit ? std::optional<double>(kRadiansPerDegree) : std::nullopt;
            if (const std::optional<double> degrees = AngleUnit(unit)) return *degrees * kRadiansPerDegree;
            return {};
        default: break;
        }
        if (unit.empty()) return mayLackUnit ? std::optional<double>(1) : std::nullopt;
        if (unit == "%") return (kind == Kind::LengthX ? m_units.percentBase.x : m_units.percentBase.y) / 100;
        if (EqualsIgnoringCase(unit, "em")) return m_units.fontSize;
        if (EqualsIgnoringCase(unit, "ex")) return m_units.fontSize / 2;
        if (EqualsIgnoringCase(unit, "rem")) return m_units.rootFontSize;
        return AbsoluteLengthUnit(unit);
    }

    const char* m_p;
    const char* const m_end;
    const bool m_isStyle;
    const TransformUnits& m_units;
};

/// A transform list of one item.
class TransformText {
public:
    TransformText(int decimals, double extent, std::string& out)
        : m_decimals(decimals), m_factorDecimals(decimals + Magnitude(extent)), m_out(out) {}

    void Begin(std::string_view name) {
        m_out += name;
        m_out += '(';
        m_first = m_out.size();
    }
    void AddFactor(double value) { Add(value, m_factorDecimals); }
    void AddLength(double value) { Add(value, m_decimals); }
    void End() { m_out += ')'; }

private:
    static int Magnitude(double extent) {
        return extent > 0 && std::isfinite(extent) ? static_cast<int>(std::ceil(std::log10(extent))) + 1 : 1;
    }
    void Add(double value, int decimals) {
        if (m_out.size() != m_first) m_out += ' ';
        WriteNumber(value, std::clamp(decimals, 0, 15), m_out);
    }

    const int m_decimals, m_factorDecimals;
    size_t m_first = 0;
    std::string& m_out;
};

} // namespace

std::optional<Matrix> ReadTransform(std::string_view text, TransformSyntax syntax,
                                    const TransformUnits& units) {
    return TransformReader(text, syntax, units).Read();
}

Matrix OzmiraTransform(std::string_view text) {
    Transform t;
    SVGParser().ParseTransform(text, t);
    return {t.a, t.b, t.c, t.d, t.tx, t.ty};
}

void WriteTransform(const Matrix& m, int decimals, double extent, std::string& out) {
    if (m == Matrix{}) return;
    TransformText text(decimals, extent, out);
    const bool isUpright = m.b == 0 && m.c == 0, isMoved = m.e != 0 || m.f != 0;
    if (isUpright && m.a == 1 && m.d == 1) {
        text.Begin("translate");
        text.AddLength(m.e);
        if (m.f != 0) text.AddLength(m.f);
    } else if (isUpright && !isMoved) {
        text.Begin("scale");
        text.AddFactor(m.a);
        if (m.d != m.a) text.AddFactor(m.d);
    } else {
        text.Begin("matrix");
        for (const double factor : {m.a, m.b, m.c, m.d}) text.AddFactor(factor);
        text.AddLength(m.e);
        text.AddLength(m.f);
    }
    text.End();
}

} // namespace ozm::conform
