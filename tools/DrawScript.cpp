#include "tools/DrawScript.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>
#include <optional>
#include <vector>

#include <oxlume/LxPath.h>

#include "tools/BlendNames.h"
#include "tools/Failure.h"

namespace tool {
namespace {

enum class Kind {
    number, // any finite number
    bounds, // a number that is held to the limit of whole coordinates
    whole,  // a whole number, held to the same
    byte,   // 0 to 255
    side,   // of the picture
    mode,   // a blend mode by its name or number
    channel,
    style, // and so on: a number that may be written as a name
    render,
    gradientType,
    curve,
    index,     // 0 to 9
    attribute, // 0 to 22
    text,
    points, // x and y of one or more points, to the end of the line
    path    // the items of a path, to the end of the line
};

// What the words of a command's form stand for. Others are whole numbers if they end in #, bounds if in ~,
// and else numbers.
struct WordKind {
    std::string_view word;
    Kind kind;
};

constexpr WordKind wordKinds[] = {
    {"R", Kind::byte},          {"G", Kind::byte},        {"B", Kind::byte},
    {"A", Kind::byte},          {"W", Kind::side},        {"H", Kind::side},
    {"MODE", Kind::mode},       {"OPACITY", Kind::byte},  {"STYLE", Kind::style},
    {"CHANNEL", Kind::channel}, {"RENDER", Kind::render}, {"TYPE", Kind::gradientType},
    {"CURVE", Kind::curve},     {"INDEX", Kind::index},   {"ID", Kind::attribute},
    {"GRADIENT", Kind::text},   {"NAME", Kind::text},     {"FILE", Kind::text},
    {"MASK", Kind::text},       {"TEXT", Kind::text},     {"POINTS", Kind::points},
    {"PATH", Kind::path},
};

// Numbers that have names.
struct NamedNumber {
    Kind kind;
    std::string_view name;
    int32_t number;
};

constexpr NamedNumber namedNumbers[] = {
    {Kind::style, "bevel", 0},
    {Kind::style, "items", kLxStrokeItems},
    {Kind::style, "mitre", kLxStrokeMitre},
    {Kind::render, "none", 0},
    {Kind::render, "fill", kLxRenderFill},
    {Kind::render, "stroke", kLxRenderStroke},
    {Kind::render, "both", kLxRenderFill | kLxRenderStroke},
    {Kind::gradientType, "across", kLxGradientAcross},
    {Kind::gradientType, "down", kLxGradientDown},
    {Kind::gradientType, "none", kLxGradientNone},
    {Kind::gradientType, "inward", kLxGradientInward},
    {Kind::gradientType, "diagonal", kLxGradientDiagonal},
    {Kind::gradientType, "diagonalUp", kLxGradientDiagonalUp},
    {Kind::curve, "linear", kLxGradientLinear},
    {Kind::curve, "curved", kLxGradientCurved},
    {Kind::curve, "sine", kLxGradientSine},
    {Kind::curve, "sphereInc", kLxGradientSphereInc},
    {Kind::curve, "sphereDec", kLxGradientSphereDec},
};

Kind kindOf(std::string_view word) {
    for (const WordKind &known : wordKinds)
        if (known.word == word)
            return known.kind;
    return word.ends_with('#') ? Kind::whole : word.ends_with('~') ? Kind::bounds : Kind::number;
}

std::string_view shown(std::string_view word) {
    return word.ends_with('#') || word.ends_with('~') ? word.substr(0, word.size() - 1) : word;
}

std::vector<std::string_view> wordsOf(std::string_view form) {
    std::vector<std::string_view> words;
    while (!form.empty()) {
        const size_t length = std::min(form.find(' '), form.size());
        words.push_back(form.substr(0, length));
        form.remove_prefix(std::min(length + 1, form.size()));
    }
    return words;
}

// The command as its user writes it: "image FILE [X Y]".
std::string usage(const DrawForm &form) {
    std::string text(form.name);
    bool isOptional = false;
    for (const std::string_view word : wordsOf(form.words)) {
        if (word == "?") {
            isOptional = true;
            text += " [";
            continue;
        }
        text += text.ends_with('[') ? "" : " ";
        text += kindOf(word) == Kind::points ? "X Y ..." : shown(word);
    }
    return text + (isOptional ? "]" : "");
}

// A piece of the script as a message shows it: not too much of it, and nothing that moves a terminal.
std::string quoted(std::string_view piece) {
    constexpr size_t most = 40;
    std::string text = "'";
    for (const char c : piece.substr(0, most))
        text += static_cast<unsigned char>(c) < ' ' || c == '\x7f' ? '?' : c;
    return text + (piece.size() > most ? "...'" : "'");
}

// How many letters must be put in, left out or changed to make `b` of `a`.
size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i + 1;
        for (size_t j = 0; j < b.size(); ++j) {
            const size_t changed = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

const DrawForm &formNamed(const std::string &name) {
    const DrawForm *nearest = nullptr;
    size_t least = 4; // what is farther away is no slip of the keyboard
    for (const DrawForm &form : drawForms()) {
        if (form.name == name)
            return form;
        // Letters that one of the two has more are as many slips.
        const size_t more = std::max(name.size(), form.name.size()) - std::min(name.size(), form.name.size());
        if (more >= least || name.size() < 3)
            continue;
        const size_t distance = editDistance(name, form.name);
        if (distance < least) {
            least = distance;
            nearest = &form;
        }
    }
    throw Failure("unknown command " + quoted(name) +
                  (nearest != nullptr ? ", did you mean '" + std::string(nearest->name) + "'?" : ""));
}

// Splits a line into its words.
std::vector<std::string> splitLine(std::string_view line) {
    static constexpr std::string_view separators = " \t\r,";
    std::vector<std::string> words;
    for (;;) {
        const size_t start = line.find_first_not_of(separators);
        if (start == std::string_view::npos || line[start] == '#')
            return words;
        line.remove_prefix(start);
        const bool isQuoted = line[0] == '"';
        if (isQuoted)
            line.remove_prefix(1);
        const size_t end = isQuoted ? line.find('"') : std::min(line.find_first_of(separators), line.size());
        if (end == std::string_view::npos)
            throw Failure("a quote is not closed");
        words.emplace_back(line.substr(0, end));
        line.remove_prefix(std::min(end + 1, line.size()));
    }
}

double numberIn(std::string_view word, const std::string &text) {
    double value = 0;
    const char *end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || behind != end || !std::isfinite(value))
        throw Failure(std::string(word) + " is no number: " + quoted(text));
    return value;
}

double numberWithin(std::string_view word, const std::string &text, int32_t low, int32_t high,
                    bool isWhole = true) {
    const double value = numberIn(word, text);
    if ((isWhole && value != std::trunc(value)) || value < low || value > high)
        throw Failure(std::string(word) + " is no " + (isWhole ? "whole " : "") + "number of " +
                      std::to_string(low) + " to " + std::to_string(high) + ": " + quoted(text));
    return value;
}

// The number that bears the name; none where it should be read as a number.
std::optional<double> numberNamed(Kind kind, std::string_view word, const std::string &text) {
    if (text.find_first_of("0123456789.+-") == 0)
        return {};
    if (kind == Kind::mode)
        return modeNamed(text);
    if (kind == Kind::channel)
        return channelNamed(text);
    std::string valid;
    for (const NamedNumber &named : namedNumbers) {
        if (named.kind != kind)
            continue;
        if (named.name == text)
            return named.number;
        valid += (valid.empty() ? "" : ", ") + std::string(named.name);
    }
    throw Failure(quoted(text) + " is no " + std::string(word) + "; there are " + valid);
}

// One command of a script, ready to be drawn.
struct Step {
    int line;
    const DrawForm *form;
    DrawValues values;
};

void readValue(std::string_view word, const std::string &text, const DrawLimits &limits, DrawValues &values) {
    const Kind kind = kindOf(word);
    word = shown(word);
    const auto within = [&](int32_t low, int32_t high) { return numberWithin(word, text, low, high); };
    const int32_t farthest = 2 * limits.side;
    switch (kind) {
    case Kind::text:
        values.texts.push_back(text);
        break;
    case Kind::number:
        values.numbers.push_back(numberIn(word, text));
        break;
    case Kind::bounds:
        values.numbers.push_back(numberWithin(word, text, -farthest, farthest, false));
        break;
    case Kind::whole:
        values.numbers.push_back(within(-farthest, farthest));
        break;
    case Kind::side:
        values.numbers.push_back(within(1, limits.side));
        break;
    case Kind::index:
        values.numbers.push_back(within(0, 9));
        break;
    case Kind::attribute:
        values.numbers.push_back(within(0, 22));
        break;
    case Kind::byte:
        values.numbers.push_back(within(0, 255));
        break;
    default: {
        const std::optional<double> named = numberNamed(kind, word, text);
        values.numbers.push_back(named ? *named : within(0, 255));
    }
    }
}

// The rest of a line, for the commands that take all of it.
void readRest(Kind kind, const std::vector<std::string> &words, DrawValues &values) {
    if (kind == Kind::points) {
        for (size_t i = 1; i < words.size(); ++i)
            values.numbers.push_back(numberIn(i % 2 == 1 ? "X" : "Y", words[i]));
        return;
    }
    std::string path;
    for (size_t i = 1; i < words.size(); ++i)
        path += words[i] + ' ';
    values.texts.push_back(std::move(path));
}

DrawValues readValues(const DrawForm &form, const std::vector<std::string> &words, const DrawLimits &limits) {
    DrawValues values;
    std::vector<std::string_view> wanted = wordsOf(form.words);
    const size_t given = words.size() - 1;
    const Kind first = wanted.empty() ? Kind::number : kindOf(wanted[0]);
    if (first == Kind::points ? given > 0 && given % 2 == 0 : first == Kind::path && given > 0) {
        readRest(first, words, values);
        return values;
    }
    const auto mark = std::find(wanted.begin(), wanted.end(), "?");
    if (mark != wanted.end()) {
        if (static_cast<ptrdiff_t>(given) == mark - wanted.begin())
            wanted.erase(mark, wanted.end());
        else
            wanted.erase(mark);
    }
    if (given != wanted.size() || first == Kind::points || first == Kind::path)
        throw Failure("expected " + usage(form));
    for (size_t i = 0; i < given; ++i)
        readValue(wanted[i], words[i + 1], limits, values);
    return values;
}

// Runs what stands on a line; a Failure in it then tells where.
template <class Work>
void onLine(const std::string &name, int line, Work &&work) {
    try {
        work();
    } catch (const Failure &failure) {
        throw Failure(name + ":" + std::to_string(line) + ": " + failure.what());
    }
}

// The size comes first, and the background, if there is one, next.
void checkPlace(const DrawForm &form, size_t place) {
    if ((form.name == "size") != (place == 0))
        throw Failure(place == 0 ? "the first command must be size W H"
                                 : "size stands only at the beginning");
    if (form.name == "background" && place != 1)
        throw Failure("background stands only behind size; fill stores a colour everywhere later on");
}

std::vector<Step> readSteps(std::string_view text, const std::string &name, const DrawLimits &limits) {
    std::vector<Step> steps;
    int line = 0;
    while (!text.empty()) {
        const size_t length = std::min(text.find('\n'), text.size());
        onLine(name, ++line, [&] {
            const std::vector<std::string> words = splitLine(text.substr(0, length));
            if (words.empty())
                return;
            const DrawForm &form = formNamed(words[0]);
            checkPlace(form, steps.size());
            steps.push_back({line, &form, readValues(form, words, limits)});
        });
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    if (steps.empty())
        throw Failure(name + ": no commands");
    return steps;
}

} // namespace

void drawScript(std::string_view text, const std::string &name, Drawing &drawing, const DrawLimits &limits,
                const std::function<void(size_t done, size_t commands)> &report) {
    if (text.size() > limits.bytes)
        throw Failure(name + ": longer than " + std::to_string(limits.bytes) + " bytes");
    const std::vector<Step> steps = readSteps(text, name, limits);
    for (size_t done = 0; done < steps.size(); ++done) {
        const Step &step = steps[done];
        if (report)
            report(done, steps.size());
        onLine(name, step.line, [&] { step.form->draw(drawing, step.values); });
    }
}

std::string drawCommandList() {
    std::string list;
    for (const DrawForm &form : drawForms())
        list += usage(form) + '\n';
    return list;
}

} // namespace tool
