#include "svg/SvgPathData.h"

#include <oxlume/LxPoint.h>

namespace lx {
namespace {

// Reads the numbers of one command after the other and draws it.
class PathReader {
public:
    PathReader(LxPath *path, LxSVGScanner &scanner) : path_(path), scanner_(scanner) {}

    void draw(int command);

private:
    // The next pair of numbers, counted from `origin_` for a relative command.
    LxPointD point() {
        const double x = scanner_.nextNumber();
        const double y = scanner_.nextNumber();
        return relative_ ? LxPointD{origin_.x + x, origin_.y + y} : LxPointD{x, y};
    }

    double number(double origin) {
        const double value = scanner_.nextNumber();
        return relative_ ? origin + value : value;
    }

    void lineTo(LxPointD end) {
        LxPath_AddLineTo(path_, end.x, end.y);
        current_ = end;
    }

    LxPath *path_;
    LxSVGScanner &scanner_;
    LxPointD current_ = {0, 0};
    LxPointD origin_ = {0, 0}; // the current point at the start of the command
    bool relative_ = false;
};

void PathReader::draw(int command) {
    origin_ = current_;
    relative_ = command % 2 != 0;
    switch (command) {
    case svgMove:
    case svgMoveRelative:
        current_ = point();
        LxPath_AddMoveTo(path_, current_.x, current_.y);
        break;
    case svgCurve:
    case svgCurveRelative: {
        const LxPointD control1 = point();
        const LxPointD control2 = point();
        current_ = point();
        LxPath_AddCurveTo(path_, control1.x, control1.y, control2.x, control2.y, current_.x, current_.y);
        break;
    }
    case svgSmoothCurve:
    case svgSmoothCurveRelative: // On purpose: the pen moves and nothing is drawn.
        point();
        current_ = point();
        break;
    case svgQCurve:
    case svgQCurveRelative: // On purpose: two lines, by way of the control point.
        lineTo(point());
        lineTo(point());
        break;
    case svgLine:
    case svgLineRelative:
        lineTo(point());
        break;
    case svgHorizontal:
    case svgHorizontalRelative:
        lineTo({number(origin_.x), origin_.y});
        break;
    case svgVertical:
    case svgVerticalRelative:
        lineTo({origin_.x, number(origin_.y)});
        break;
    case svgClose: // On purpose: the pen stays where it is.
        LxPath_AddClose(path_);
        break;
    default: // On purpose: bare numbers, and the commands for smooth quadratic curves, are passed over.
        break;
    }
}

} // namespace

void addPathData(LxPath *path, const char *data, LxSVGScanner &scanner) {
    scanner.begin(data);
    PathReader reader(path, scanner);
    while (const int token = scanner.next())
        reader.draw(token);
}

} // namespace lx
