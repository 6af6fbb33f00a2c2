#include "svg/SvgScanner.h"

#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/Memory.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

// The tokens of a text, each number followed by nothing but its value in `numbers`.
struct Tokens {
    std::vector<int> tokens;
    std::vector<double> numbers;
};

Tokens scan(const std::string &text) {
    LxSVGScanner scanner;
    scanner.begin(text.c_str());
    Tokens result;
    while (const int token = scanner.next()) {
        result.tokens.push_back(token);
        if (token == svgNumber)
            result.numbers.push_back(scanner.number());
    }
    return result;
}

using Ints = std::vector<int>;
using Numbers = std::vector<double>;

} // namespace

TEST(SvgScanner, PathLettersHaveTheirNumbers) {
    EXPECT_EQ(scan("MmCcSsQqTtLlHhVvZz").tokens,
              (Ints{1000, 1001, 1002, 1003, 1004, 1005, 1006, 1007, 1008, 1009, 1010, 1011, 1012, 1013, 1014,
                    1015, 1016, 1016}));
    EXPECT_EQ(scan("ABDaXx").tokens, Ints());
}

TEST(SvgScanner, TheLongestWordWins) {
    EXPECT_EQ(scan("width height viewBox fill stroke stroke-width").tokens,
              (Ints{400, 401, 402, 403, 404, 405}));
    EXPECT_EQ(scan("fills").tokens, (Ints{403, 1005}));
    EXPECT_EQ(scan("stroke-widths").tokens, (Ints{405, 1005}));
    EXPECT_EQ(scan("stroke-wid").tokens, (Ints{404})); // "-wid" is stepped over.
    EXPECT_EQ(scan("strok").tokens, (Ints{1005, 1009}));
    EXPECT_EQ(scan("heigh").tokens, (Ints{1013, 1013}));
    EXPECT_EQ(scan("viewbox").tokens, (Ints{1015}));
    EXPECT_EQ(scan("Width").tokens, (Ints{1009, 1013}));
}

TEST(SvgScanner, NumbersHaveAnExponentOnlyBehindAFraction) {
    const auto numbers = [](const char *text) { return scan(text).numbers; };
    EXPECT_EQ(numbers("12 -7 0.5 .25 -.125 -3.75"), (Numbers{12, -7, 0.5, 0.25, -0.125, -3.75}));
    EXPECT_EQ(numbers("1e3"), (Numbers{1, 3}));
    EXPECT_EQ(numbers("1.0e3 1.5E+2 25.0e-1"), (Numbers{1000, 150, 2.5}));
    EXPECT_EQ(numbers("1.5e 1.5e+ 1.5e-x"), (Numbers{1.5, 1.5, 1.5}));
    EXPECT_EQ(numbers("5. 6"), (Numbers{5, 6}));
    EXPECT_EQ(numbers("1.2.3"), (Numbers{1.2, 0.3}));
    EXPECT_EQ(numbers("1,2,-3-4+5#6%"), (Numbers{1, 2, -3, -4, 5, 6}));
    EXPECT_EQ(numbers("--5 - 5 -"), (Numbers{-5, 5}));
    EXPECT_EQ(numbers("0x10 1.0e400 -1.0e400"), (Numbers{0, 10, HUGE_VAL, -HUGE_VAL}));
    EXPECT_EQ(numbers("inf nan"), Numbers());
}

namespace {

// The tokens as patterns: where several fit, the longest wins, and of those the first.
Tokens scanByPatterns(const std::string &text) {
    static const std::pair<std::regex, int> patterns[] = {
        {std::regex("M"), 1000},
        {std::regex("m"), 1001},
        {std::regex("C"), 1002},
        {std::regex("c"), 1003},
        {std::regex("S"), 1004},
        {std::regex("s"), 1005},
        {std::regex("Q"), 1006},
        {std::regex("q"), 1007},
        {std::regex("T"), 1008},
        {std::regex("t"), 1009},
        {std::regex("L"), 1010},
        {std::regex("l"), 1011},
        {std::regex("H"), 1012},
        {std::regex("h"), 1013},
        {std::regex("V"), 1014},
        {std::regex("v"), 1015},
        {std::regex("[Zz]"), 1016},
        {std::regex("width"), 400},
        {std::regex("height"), 401},
        {std::regex("viewBox"), 402},
        {std::regex("fill"), 403},
        {std::regex("stroke"), 404},
        {std::regex("stroke-width"), 405},
        {std::regex("\"HEX6\""), 301},
        {std::regex("-?[0-9]+"), 300},
        {std::regex("-?[0-9]*[.][0-9]+([eE][-+]?[0-9]+)?"), 300},
        {std::regex("\"([^\"\\\\]|\\\\[^])*\""), 302},
    };
    Tokens result;
    for (auto at = text.begin(); at != text.end();) {
        std::ptrdiff_t longest = 0;
        int token = 0;
        for (const auto &[pattern, number] : patterns) {
            std::smatch match;
            if (std::regex_search(at, text.end(), match, pattern, std::regex_constants::match_continuous) &&
                match.length() > longest) {
                longest = match.length();
                token = number;
            }
        }
        if (token != 0)
            result.tokens.push_back(token);
        if (token == 300)
            result.numbers.push_back(std::strtod(std::string(at, at + longest).c_str(), nullptr));
        at += longest != 0 ? longest : 1;
    }
    return result;
}

} // namespace

TEST(SvgScanner, RandomTextGivesTheTokensOfThePatterns) {
    static constexpr const char *pieces[] = {"M",
                                             "m",
                                             "C",
                                             "S",
                                             "s",
                                             "Q",
                                             "q",
                                             "T",
                                             "t",
                                             "L",
                                             "l",
                                             "H",
                                             "h",
                                             "V",
                                             "v",
                                             "Z",
                                             "z",
                                             "A",
                                             "e",
                                             "E",
                                             "0",
                                             "1",
                                             "7",
                                             "23",
                                             ".",
                                             "-",
                                             "+",
                                             ",",
                                             " ",
                                             "\n",
                                             "\t",
                                             "#",
                                             "%",
                                             "\"",
                                             "\\",
                                             "\"HEX6\"",
                                             "HEX6",
                                             "width",
                                             "height",
                                             "viewBox",
                                             "fill",
                                             "stroke",
                                             "stroke-width",
                                             "-width",
                                             "view",
                                             "fi",
                                             "\xC3\xA9"};
    Random random;
    for (int i = 0; i < 600; ++i) {
        std::string text;
        for (int n = random.integer(0, 14); n > 0; --n)
            text += pieces[static_cast<size_t>(random.integer(0, std::size(pieces) - 1))];
        const Tokens actual = scan(text), expected = scanByPatterns(text);
        ASSERT_EQ(actual.tokens, expected.tokens) << text;
        ASSERT_EQ(actual.numbers, expected.numbers) << text;
    }
}

TEST(SvgScanner, QuotedTextIsOneToken) {
    EXPECT_EQ(scan("M \"L 5 5\" Z").tokens, (Ints{1000, 302, 1016}));
    EXPECT_EQ(scan("\"a\\\"M\" Z").tokens, (Ints{302, 1016}));
    EXPECT_EQ(scan("\"a\\\\\"M").tokens, (Ints{302, 1000}));
    EXPECT_EQ(scan("\"\"").tokens, (Ints{302}));
    EXPECT_EQ(scan("\"HEX6\"").tokens, (Ints{301}));
    EXPECT_EQ(scan("\"HEX6 \"").tokens, (Ints{302}));
    EXPECT_EQ(scan("HEX6").tokens, (Ints{1012, 300}));
}

TEST(SvgScanner, AQuoteWithoutAnEndIsSteppedOver) {
    EXPECT_EQ(scan("\"M 5").tokens, (Ints{1000, 300}));
    EXPECT_EQ(scan("\"M\" \"L\\").tokens, (Ints{302, 1010}));
    EXPECT_EQ(scan("\"\\\"M").tokens, (Ints{1000}));
    // Another text begins anew.
    LxSVGScanner scanner;
    scanner.begin("\"M");
    EXPECT_EQ(scanner.next(), svgMove);
    EXPECT_EQ(scanner.next(), svgEnd);
    scanner.begin("\"M\"");
    EXPECT_EQ(scanner.next(), svgString);
}

TEST(SvgScanner, BackslashesAndQuotesWithoutEndTakeLinearTime) {
    std::string text;
    for (int i = 0; i < 1000000; ++i)
        text += "\\\"";
    EXPECT_EQ(scan(text).tokens, Ints());
    EXPECT_EQ(scan("\"" + text).tokens, Ints());
}

TEST(SvgScanner, TheEndComesAgainAndTheLastNumberStays) {
    LxSVGScanner scanner;
    EXPECT_EQ(scanner.number(), 0);
    EXPECT_EQ(scanner.next(), svgEnd); // Before any text.
    scanner.begin("7.5 M");
    EXPECT_EQ(scanner.nextNumber(), 7.5);
    EXPECT_EQ(scanner.nextNumber(), 7.5); // That was the letter.
    EXPECT_EQ(scanner.next(), svgEnd);
    EXPECT_EQ(scanner.next(), svgEnd);
    scanner.begin("");
    EXPECT_EQ(scanner.nextNumber(), 7.5);
}

TEST(SvgScanner, ACopyIsScanned) {
    std::string text = "1 2";
    LxSVGScanner scanner;
    scanner.begin(text.c_str());
    text = "9 9";
    EXPECT_EQ(scanner.nextNumber(), 1);
    EXPECT_EQ(scanner.nextNumber(), 2);
}

TEST(SvgScanner, NumbersDoNotGoByTheLocale) {
    const char *comma = nullptr;
    for (const char *name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8"})
        comma = comma != nullptr ? comma : std::setlocale(LC_ALL, name);
    EXPECT_EQ(scan("1.5,2.5").numbers, (Numbers{1.5, 2.5}));
    std::setlocale(LC_ALL, "C");
}

namespace {

constexpr SystemAllocator barren = {[](size_t) -> void * { return nullptr; },
                                    [](size_t, size_t) -> void * { return nullptr; },
                                    [](void *, size_t) -> void * { return nullptr; }};

[[noreturn]] void scanWithoutMemory() {
    setSystemAllocator(&barren);
    LxSVGScanner scanner;
    scanner.begin("M");
    std::abort(); // Not reached.
}

} // namespace

TEST(SvgScannerDeathTest, EndsTheProcessWithoutMemoryForItsCopy) {
    EXPECT_EXIT(scanWithoutMemory(), testing::ExitedWithCode(2),
                "^out of dynamic memory in yy_scan_bytes\\(\\)\n$");
}

// Every double that is written out with a fraction comes back.
TEST(SvgScanner, RandomNumbersComeBack) {
    Random random;
    for (int i = 0; i < 20000; ++i) {
        const double value = random.real(-1, 1) * std::pow(10.0, random.integer(-200, 200));
        char text[64];
        std::snprintf(text, sizeof text, "%.17e", value);
        const Tokens tokens = scan(text);
        ASSERT_EQ(tokens.numbers, (Numbers{value})) << text;
    }
}
