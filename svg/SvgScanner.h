// The scanner of attribute values: words, path letters and numbers, and everything else stepped over.
#pragma once

#include <cstddef>

namespace lx {

// The numbers that tokens go by. An odd path command is relative to the current point.
enum SvgToken : int {
    svgEnd = 0,
    svgNumber = 300, // an optional "-", digits with an optional fraction, and only behind one an exponent
    svgColor = 301,  // the text "HEX6" with its quotation marks
    svgString = 302, // a text in quotation marks; a backslash takes the next character with it
    svgWidth = 400,
    svgHeight = 401,
    svgViewBox = 402,
    svgFill = 403,
    svgStroke = 404,
    svgStrokeWidth = 405,
    svgMove = 1000,
    svgMoveRelative,
    svgCurve,
    svgCurveRelative,
    svgSmoothCurve,
    svgSmoothCurveRelative,
    svgQCurve,
    svgQCurveRelative,
    svgSmoothQCurve,
    svgSmoothQCurveRelative,
    svgLine,
    svgLineRelative,
    svgHorizontal,
    svgHorizontalRelative,
    svgVertical,
    svgVerticalRelative,
    svgClose
};

} // namespace lx

// Scans one text after the other. On purpose, the number of the last token that was one stays behind from
// text to text: a command that lacks its numbers takes that.
class LxSVGScanner {
public:
    LxSVGScanner() = default;
    ~LxSVGScanner();
    LxSVGScanner(const LxSVGScanner &) = delete;
    LxSVGScanner &operator=(const LxSVGScanner &) = delete;

    // Begins with a copy of a text. Without memory for it the process ends with status 2, after a message.
    void begin(const char *text);

    // The next token; after the last, the end again and again. Letters and words are taken wherever they
    // stand, the longest that fits.
    int next();

    // The value of the last number.
    double number() const { return number_; }

    // The value of the last number once the next token is read, whatever that is.
    double nextNumber() {
        next();
        return number_;
    }

private:
    char *buffer_ = nullptr; // ends with two zero bytes
    const char *place_ = "";
    bool openQuote_ = false; // a text in quotation marks had no end: none after it has one
    double number_ = 0;
};
