#include "tools/PathText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <string>

#include "tools/Failure.h"

namespace tool {
namespace {

using Numbers = std::array<double, 6>;

// The items that can be written down, each by its name or by a letter, and then its numbers.
struct ItemForm {
    std::string_view name;
    std::string_view letter;
    size_t numbers;
    void (*add)(LxPath *path, const Numbers &n);
};

constexpr ItemForm itemForms[] = {
    {"move", "M", 2, [](LxPath *path, const Numbers &n) { LxPath_AddMoveTo(path, n[0], n[1]); }},
    {"line", "L", 2, [](LxPath *path, const Numbers &n) { LxPath_AddLineTo(path, n[0], n[1]); }},
    {"qcurve", "Q", 4,
     [](LxPath *path, const Numbers &n) { LxPath_AddQCurveTo(path, n[0], n[1], n[2], n[3]); }},
    {"curve", "C", 6,
     [](LxPath *path, const Numbers &n) { LxPath_AddCurveTo(path, n[0], n[1], n[2], n[3], n[4], n[5]); }},
    {"close", "Z", 0, [](LxPath *path, const Numbers &) { LxPath_AddClose(path); }},
};

constexpr bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Splits at blanks, commas and semicolons, and between the letters of a name and what stands beside them.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    // The next piece; empty at the end.
    std::string_view next() {
        const size_t start = text_.find_first_not_of(separators);
        if (start == std::string_view::npos)
            return {};
        text_.remove_prefix(start);
        const bool name = isLetter(text_[0]);
        size_t length = 1;
        while (length < text_.size() && separators.find(text_[length]) == std::string_view::npos &&
               (isLetter(text_[length]) == name || isExponent(length, name)))
            ++length;
        const std::string_view piece = text_.substr(0, length);
        text_.remove_prefix(length);
        return piece;
    }

private:
    static constexpr std::string_view separators = " \t\r\n,;";

    // An e inside a number.
    bool isExponent(size_t at, bool name) const {
        return !name && (text_[at] == 'e' || text_[at] == 'E') && at + 1 < text_.size() &&
               !isLetter(text_[at + 1]);
    }

    std::string_view text_;
};

double numberOf(std::string_view piece) {
    double value = 0;
    const auto [end, error] = std::from_chars(piece.data(), piece.data() + piece.size(), value);
    if (piece.empty() || error != std::errc() || end != piece.data() + piece.size())
        throw Failure(piece.empty() ? "the path ends where a number should be"
                                    : "\"" + std::string(piece) + "\" is no number of a path");
    return value;
}

} // namespace

PathHandle parsePath(std::string_view text) {
    PathHandle path(LxPath_Create());
    Scanner scanner(text);
    for (std::string_view piece = scanner.next(); !piece.empty(); piece = scanner.next()) {
        const auto *form = std::find_if(std::begin(itemForms), std::end(itemForms), [&](const ItemForm &f) {
            return piece == f.name || piece == f.letter;
        });
        if (form == std::end(itemForms))
            throw Failure("\"" + std::string(piece) + "\" is no item of a path");
        Numbers numbers = {};
        for (size_t i = 0; i < form->numbers; ++i)
            numbers[i] = numberOf(scanner.next());
        form->add(path.get(), numbers);
    }
    return path;
}

} // namespace tool
