#include "svg/SvgScanner.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include <oxlume/LxMem.h>

#include "platform/XmlNumber.h"

using namespace lx;

namespace {

struct Word {
    std::string_view text;
    SvgToken token;
};

// A word stands before those that it begins with.
constexpr Word words[] = {
    {"M", svgMove},
    {"m", svgMoveRelative},
    {"C", svgCurve},
    {"c", svgCurveRelative},
    {"L", svgLine},
    {"l", svgLineRelative},
    {"Z", svgClose},
    {"z", svgClose},
    {"H", svgHorizontal},
    {"height", svgHeight},
    {"h", svgHorizontalRelative},
    {"V", svgVertical},
    {"viewBox", svgViewBox},
    {"v", svgVerticalRelative},
    {"S", svgSmoothCurve},
    {"stroke-width", svgStrokeWidth},
    {"stroke", svgStroke},
    {"s", svgSmoothCurveRelative},
    {"Q", svgQCurve},
    {"q", svgQCurveRelative},
    {"T", svgSmoothQCurve},
    {"t", svgSmoothQCurveRelative},
    {"width", svgWidth},
    {"fill", svgFill},
    {"\"HEX6\"", svgColor},
};

constexpr size_t endMark = 2; // zero bytes behind the text

[[noreturn]] void endProcess(const char *message) {
    std::fprintf(stderr, "%s\n", message);
    std::exit(2);
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

const char *skipDigits(const char *p) {
    while (isDigit(*p))
        ++p;
    return p;
}

// The end of the number that begins at `p`, or `p` itself.
const char *numberEnd(const char *p) {
    const char *digits = *p == '-' ? p + 1 : p;
    const char *end = skipDigits(digits);
    if (*end != '.' || !isDigit(end[1]))
        return end > digits ? end : p;
    end = skipDigits(end + 1);
    if (*end == 'e' || *end == 'E') {
        const char *exponent = end[1] == '-' || end[1] == '+' ? end + 2 : end + 1;
        if (isDigit(*exponent))
            end = skipDigits(exponent);
    }
    return end;
}

// The end of the quoted text that begins at `p`, or null if nothing ends it.
const char *stringEnd(const char *p) {
    for (++p; *p != '"'; ++p) {
        if (*p == '\\')
            ++p;
        if (*p == '\0')
            return nullptr;
    }
    return p + 1;
}

const Word *wordAt(const char *p) {
    for (const Word &word : words)
        if (*p == word.text.front() && std::strncmp(p, word.text.data(), word.text.size()) == 0)
            return &word;
    return nullptr;
}

} // namespace

LxSVGScanner::~LxSVGScanner() {
    LxMem_free(buffer_);
}

void LxSVGScanner::begin(const char *text) {
    const size_t length = std::strlen(text);
    LxMem_free(buffer_);
    buffer_ = static_cast<char *>(LxMem_malloc(static_cast<uint32_t>(length + endMark)));
    if (buffer_ == nullptr)
        endProcess("out of dynamic memory in yy_scan_bytes()");
    std::memcpy(buffer_, text, length);
    std::memset(buffer_ + length, 0, endMark);
    place_ = buffer_;
    openQuote_ = false;
}

int LxSVGScanner::next() {
    for (; *place_ != '\0'; ++place_) {
        if (const char *end = numberEnd(place_); end != place_) {
            number_ = decimalNumber({place_, end});
            place_ = end;
            return svgNumber;
        }
        if (const Word *word = wordAt(place_)) {
            place_ += word->text.size();
            return word->token;
        }
        if (*place_ == '"' && !openQuote_) {
            if (const char *end = stringEnd(place_)) {
                place_ = end;
                return svgString;
            }
            // Every later quotation mark stands behind a backslash, so reading on from it ends no better.
            openQuote_ = true;
        }
    }
    return svgEnd;
}
