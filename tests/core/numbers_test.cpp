#include <Ozmira/ozmDebug.h>
#include <Ozmira/SVG/ozmSVGParser.h>

#include "document_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <sstream>
#include <string>

using namespace ozm;
using namespace std::literals;

namespace {

/// `toDouble` is defined by `strtod`, which depends on the locale: this is correct only in the "C" locale.
double Expected(const std::string& text) {
    errno = 0;
    const double value = std::strtod(text.c_str(), nullptr);
    return errno == ERANGE ? 0.0 : value;
}

/// Compares bits, so that -0 differs from 0 and NaN equals itself.
void ExpectSameAsStrtod(const std::string& text) {
    const double value = StringView(text).toDouble();
    EXPECT_EQ(std::bit_cast<uint64_t>(value), std::bit_cast<uint64_t>(Expected(text))) << '"' << text << '"';
}

/// Random texts, the same ones in every run.
class RandomText {
public:
    explicit RandomText(uint32_t seed) : m_random(seed) {}

    size_t Below(size_t limit) { return m_random() % limit; }

    std::string Of(const std::string& characters, size_t longest) {
        std::string text(Below(longest + 1), ' ');
        for (char& c : text) c = characters[Below(characters.size())];
        return text;
    }

    std::string Number() {
        const std::string sign = Pick({"", "", "-", "+"});
        const std::string fraction =
            Below(3) != 0 ? std::string(".") + Of("0123456789", Pick<size_t>({3, 6, 20})) : "";
        const std::string exponent = Below(4) == 0 ? Pick({"e"s, "E-"s, "e+"s}) + Of("0123456789", 3) : "";
        return sign + Of("0123456789", Pick<size_t>({2, 4, 25})) + fraction + exponent;
    }

    template <typename T>
    T Pick(std::initializer_list<T> choices) {
        return choices.begin()[Below(choices.size())];
    }
    std::string Pick(std::initializer_list<const char*> choices) {
        return choices.begin()[Below(choices.size())];
    }

private:
    std::mt19937 m_random;
};

/// Switches to a locale with a decimal comma. If the system has none, one is compiled in a temporary folder.
class CommaLocale {
public:
    CommaLocale() {
        for (const char* name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8"}) {
            if (Set(name)) return;
        }
        m_folder = std::filesystem::temp_directory_path() /
                   ("ozmira-locale-" + std::to_string(std::random_device()()));
        std::filesystem::create_directory(m_folder);
        const std::string make =
            "localedef -i de_DE -f UTF-8 '" + (m_folder / "de_DE.UTF-8").string() + "' 2>/dev/null";
        if (std::system(make.c_str()) != 0) return;
        setenv("LOCPATH", m_folder.c_str(), 1);
        Set("de_DE.UTF-8");
    }
    ~CommaLocale() {
        std::setlocale(LC_ALL, "C");
        if (!m_folder.empty()) std::filesystem::remove_all(m_folder);
        unsetenv("LOCPATH");
    }

    bool IsSet() const { return m_isSet; }

private:
    bool Set(const char* name) {
        m_isSet = std::setlocale(LC_ALL, name) && *std::localeconv()->decimal_point == ',';
        return m_isSet;
    }

    bool m_isSet = false;
    std::filesystem::path m_folder;
};

} // namespace

TEST(ToDouble, EqualsStrtodOnChosenTexts) {
    const std::string zeros(400, '0');
    const std::string built[] = {
        "",
        "\t\n\v\f\r-7",
        "1"s + '\0' + "2",
        "nan"s + '\0',
        "0." + zeros + "1",
        "1" + zeros,
        "1" + zeros + "e-400",
        "0." + zeros + "1e401",
        std::string(300, ' ') + "4",
        std::string(5000, '1'),
    };
    for (const std::string& text : built) ExpectSameAsStrtod(text);

    std::istringstream chosen(
        // Plain numbers, and texts that are not numbers.
        " 7|abc|-|+|.|-.|+.|1,5|5.|.5|-0|-0.0e5|0e999999999999|1.5 junk|1.2.3|"
        // Overflow, underflow, and numbers close to either.
        "1e999|-1e999|1e-999|1.7976931348623157e308|1.7976931348623159e308|2.2250738585072014e-308|"
        "2.2250738585072011e-308|4.9e-324|5e-324|2e-324|1e-320|4.4501477170144028e-308|"
        "1e99999999999999999999|"
        "1e-99999999999999999999|"
        // Malformed exponents.
        "1e|1e+|1ex|1.5e 3|1e--1|"
        // Hexadecimal numbers, infinity and NaN, and texts that only resemble them.
        "0x1F|-0X1.8p3|0x|0x.p1|0x1p-2000|00x1|1x5|0x1.ffffffffffffffp1023|inf|-inf|INFINITY|infinit|nan|-"
        "nan|"
        "NaN(123)|nan(|+ inf|.inf|in|"
        // 2^53 and above, halfway cases, more digits than an integer can hold.
        "9007199254740992|9007199254740993|9007199254740993.0000000000000000000000001|18446744073709551616|"
        "184467440737095516160|99999999999999999999|1e22|1e23|8.5e22|123456789012345678901234567890|0.1|"
        "0.30000000000000004|3.1415926535897932384626433832795|0.000001|1234567|12345678|1234567.|1234.567|."
        "1234567|");
    for (std::string text; std::getline(chosen, text, '|');) ExpectSameAsStrtod(text);
    EXPECT_EQ(StringView().toDouble(), 0);
}

TEST(ToDouble, EqualsStrtodOnRandomTexts) {
    RandomText random(1);
    for (int i = 0; i < 20000; ++i)
        ExpectSameAsStrtod(random.Number() + random.Of("0123456789eE.+-xXpPinfa ,", 3));
}

TEST(ToDouble, IgnoresTextPastTheView) {
    const std::string text = "12345678901234567890";
    for (uint64_t length = 0; length <= text.size(); ++length) {
        EXPECT_EQ(StringView(text.data(), length).toDouble(), Expected(text.substr(0, length)));
    }
}

TEST(NumberReaders, AgreeWithToDouble) {
    RandomText random(2);
    for (int i = 0; i < 5000; ++i) {
        const std::string text = random.Number() + random.Of("0 ,-.eE%", 9);
        const StringView scanned = ScanScientificNumber(text);
        const std::vector<double> numbers = SVGParser().ParsePathCommandArguments(text);
        ASSERT_EQ(numbers.empty(), scanned.empty()) << text;
        if (!numbers.empty()) {
            EXPECT_EQ(std::bit_cast<uint64_t>(numbers[0]), std::bit_cast<uint64_t>(scanned.toDouble()))
                << text;
        }
        Dimension dimension;
        if (SVGParser().ParseDimension(text, dimension, SVGParser::UnitAttributeFormat::CaseSensitive)) {
            const std::string decimal = text.substr(0, text.find_first_not_of("-0123456789."));
            const size_t secondSign = decimal.find('-', 1);
            EXPECT_EQ(dimension.value, StringView(decimal.substr(0, secondSign)).toDouble()) << text;
        }
    }
}

TEST(Numbers, DoNotDependOnTheLocale) {
    const CommaLocale comma;
    ASSERT_TRUE(comma.IsSet())
        << "no locale has a decimal comma, and localedef cannot make one; install the package \"locales\"";
    ASSERT_EQ(std::strtod("1,5", nullptr), 1.5);
    EXPECT_EQ(StringView("1.5").toDouble(), 1.5);
    EXPECT_EQ(StringView("1,5").toDouble(), 1);
    EXPECT_EQ(StringView("0x1.8p0").toDouble(), 1.5);
    EXPECT_EQ(StringView("3.14159265358979323846264338327950288").toDouble(), 3.141592653589793);
    EXPECT_EQ(StringView("2.5e-310").toDouble(), 0);
    EXPECT_EQ(test::ElementsText("<path d='M1.5,2.5' opacity='.25' transform='translate(.5)'/>"),
              "Path M1.5,2.5 transform=1,0,0,1,0.5,0 {Opacity=0.25}\n");
    PathCommand move(PathCommand::Type::MoveTo);
    move.point = {1234567.5, 2};
    EXPECT_EQ(to_string(move), "<MoveTo: 1234567.500000, 2.000000>>");
}
