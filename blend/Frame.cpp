// A segmented image drawn as a frame: corners as they are, sides repeated along their length, the middle
// repeated both ways.

#include <algorithm>

#include "blend/Composite.h"
#include "foundation/Numeric.h"

namespace lx {
namespace {

// A target in 64 bits, so that no area of 32 can overflow.
struct Target {
    int64_t x0, y0, x1, y1;
};

struct Piece {
    int32_t column, row;
};

class FramePainter {
public:
    FramePainter(LxBlend &blend, const Operands &operands, const LxRectL &area)
        : blend_(blend), on_(operands), area_(area), layout_(LxImage_SegmentType(&operands.b)) {
        readSwitches();
        readSizes();
    }

    void paint() {
        switch (layout_) {
        case 1:
            start({0, 0});
            farEdge({2, 0});
            corner({2, 2});
            corner({0, 2});
            across({1, 0});
            across({1, 2});
            down({0, 1});
            down({2, 1});
            both({1, 1});
            return;
        case 2:
            start({0, 0});
            farEdge({2, 0});
            across({1, 0});
            return;
        case 3: // on purpose: the first piece of this layout is not drawn
            corner({0, 2});
            down({0, 1});
            return;
        case 4:
            if (on(0) || on(3))
                start({0, on(3) ? 1 : 0});
            if (on(2) || on(5))
                farEdge({2, on(5) ? 1 : 0});
            if (on(2))
                corner({0, 2});
            if (on(1))
                across({1, 0});
            return;
        case 5:
            if (on(0))
                start({0, 0});
            if (on(1))
                down({0, 1});
            return;
        default: // on purpose: layouts 6 and 7 paint nothing
            return;
        }
    }

private:
    bool on(int flag) const { return flags_[flag] != 0; }

    void readSwitches() {
        LxImage_SegmentFlag(&on_.b, &flags_[0], &flags_[1], &flags_[2], &flags_[3], &flags_[4], &flags_[5]);
    }

    // In pixels: the rectangles of pieces count their last row and column as inside.
    static int64_t extent(int32_t size) { return int64_t{std::max(size, 0)} + 1; }

    void readSizes() {
        int32_t sizes[6];
        LxImage_SegmentW(&on_.b, &sizes[0], &sizes[1], &sizes[2]);
        LxImage_SegmentH(&on_.b, &sizes[3], &sizes[4], &sizes[5]);
        left_ = extent(sizes[0]);
        middleW_ = extent(sizes[1]);
        right_ = extent(sizes[2]);
        top_ = extent(sizes[3]);
        middleH_ = extent(sizes[4]);
        bottom_ = extent(sizes[5]);
        const int64_t areaW = int64_t{area_.x1} - area_.x0, areaH = int64_t{area_.y1} - area_.y0;
        if (layout_ == 4)
            readEnds(areaW);
        innerW_ = std::max<int64_t>(0, areaW - left_ - right_);
        innerH_ = std::max<int64_t>(0, areaH - top_ - bottom_);
    }

    // Layout 4 takes each end from the piece that its switches choose, and squeezes both to fit.
    void readEnds(int64_t areaW) {
        int32_t widths[9];
        LxImage_SegmentX(&on_.b, &widths[0], &widths[1], &widths[2], &widths[3], &widths[4], &widths[5],
                         &widths[6], &widths[7], &widths[8]);
        left_ = on(0) ? extent(widths[0]) : on(3) ? extent(widths[3]) : 0;
        right_ = on(2) ? extent(widths[2]) : on(5) ? extent(widths[5]) : 0;
        const int64_t excess = left_ + right_ - areaW;
        if (excess <= 0)
            return;
        // Both give one pixel at a time until they fit or one of them is down to its last; an end of no width
        // has none to give.
        const int64_t most = std::max<int64_t>(0, left_ == 0    ? right_ - 1
                                                  : right_ == 0 ? left_ - 1
                                                                : std::min(left_, right_) - 1);
        const int64_t taken = std::min(most, left_ == 0 || right_ == 0 ? excess : (excess + 1) / 2);
        left_ = std::max<int64_t>(left_ - taken, left_ == 0 ? 0 : 1);
        right_ = std::max<int64_t>(right_ - taken, right_ == 0 ? 0 : 1);
    }

    void start(Piece piece) {
        if (left_ > 0)
            draw(piece, {area_.x0, area_.y0, std::min<int64_t>(area_.x0 + left_, area_.x1),
                         std::min<int64_t>(area_.y0 + top_, area_.y1)});
    }

    // The one piece that is placed by its far edge, which matters when another slot gave the width.
    void farEdge(Piece piece) {
        if (right_ <= 0)
            return;
        const LxRectL rect = LxImage_SegmentRectL(&on_.b, piece.column, piece.row);
        const int64_t x0 = area_.x1 - right_;
        drawAt(piece, {x0, area_.y0, area_.x1, area_.y0 + top_}, int64_t{area_.x1} - 1 - rect.x1,
               int64_t{area_.y0} - rect.y0);
    }

    // (2, 2) and (0, 2).
    void corner(Piece piece) {
        if (bottom_ <= 0)
            return;
        const int64_t y0 = area_.y1 - bottom_;
        if (piece.column == 2)
            draw(piece, {area_.x1 - right_, y0, area_.x1, area_.y1});
        else
            draw(piece, {area_.x0, y0, area_.x0 + left_, area_.y1});
    }

    // Calls `step` with each start and end of a run that repeats every `size` from `from` to `to`, but for
    // those that end before `low` or begin at or after `high`, where nothing can be drawn.
    template <class Step>
    static void repeat(int64_t from, int64_t to, int64_t size, int64_t low, int64_t high, Step step) {
        const int64_t skipped = low > from ? (low - from) / size : 0;
        for (int64_t at = from + skipped * size; at < to && at < high; at += size)
            step(at, std::min(at + size, to));
    }

    template <class Step>
    void repeatAcross(Step step) {
        const LxRectL drawable = drawableArea(on_);
        repeat(area_.x0 + left_, area_.x0 + left_ + innerW_, middleW_, drawable.x0, drawable.x1, step);
    }

    template <class Step>
    void repeatDown(Step step) {
        const LxRectL drawable = drawableArea(on_);
        repeat(area_.y0 + top_, area_.y0 + top_ + innerH_, middleH_, drawable.y0, drawable.y1, step);
    }

    void across(Piece piece) {
        const int64_t y0 = piece.row == 0 ? area_.y0 : area_.y1 - bottom_;
        const int64_t y1 = piece.row == 0 ? area_.y0 + top_ : area_.y1;
        repeatAcross([&](int64_t x0, int64_t x1) { draw(piece, {x0, y0, x1, y1}); });
    }

    void down(Piece piece) {
        const int64_t x0 = piece.column == 0 ? area_.x0 : area_.x1 - right_;
        const int64_t x1 = piece.column == 0 ? area_.x0 + left_ : area_.x1;
        repeatDown([&](int64_t y0, int64_t y1) { draw(piece, {x0, y0, x1, y1}); });
    }

    void both(Piece piece) {
        repeatDown([&](int64_t y0, int64_t y1) {
            repeatAcross([&](int64_t x0, int64_t x1) { draw(piece, {x0, y0, x1, y1}); });
        });
    }

    // The piece's top-left corner lands on the target's.
    void draw(Piece piece, const Target &target) {
        const LxRectL rect = LxImage_SegmentRectL(&on_.b, piece.column, piece.row);
        drawAt(piece, target, target.x0 - rect.x0, target.y0 - rect.y0);
    }

    void drawAt(Piece piece, const Target &target, int64_t x, int64_t y) {
        const LxRectL rect = LxImage_SegmentRectL(&on_.b, piece.column, piece.row);
        if (LxRectL_isEmpty(&rect) != 0)
            return;
        const auto limited = [](int64_t value, int32_t low, int32_t high) {
            return static_cast<int32_t>(std::clamp<int64_t>(value, low, high));
        };
        const LxRectL visible = {
            limited(target.x0, area_.x0, area_.x1), limited(target.y0, area_.y0, area_.y1),
            limited(target.x1, area_.x0, area_.x1), limited(target.y1, area_.y0, area_.y1)};
        if (visible.x0 >= visible.x1 || visible.y0 >= visible.y1)
            return;
        const auto position = [](int64_t value) {
            return static_cast<int32_t>(static_cast<uint32_t>(value));
        };
        LxImage_MoveTo(&on_.b, position(x), position(y));
        if (&on_.a != &on_.out)
            LxImage_MoveTo(&on_.a, position(x), position(y));
        compositeRectangle(blend_, on_, &visible);
    }

    LxBlend &blend_;
    const Operands &on_;
    const LxRectL area_;
    const int32_t layout_;
    int32_t flags_[6];
    int64_t left_, middleW_, right_, top_, middleH_, bottom_; // extents of the pieces in pixels
    int64_t innerW_, innerH_;                                 // what the repeated pieces have to fill
};

} // namespace

void compositeFrame(LxBlend &blend, const Operands &operands, const LxRectL &area) {
    if (area.x0 >= area.x1 || area.y0 >= area.y1)
        return;
    const LxPointL b = LxImage_Pos(&operands.b), a = LxImage_Pos(&operands.a);
    FramePainter(blend, operands, area).paint();
    LxImage_MoveTo(&operands.b, b.x, b.y);
    if (&operands.a != &operands.out)
        LxImage_MoveTo(&operands.a, a.x, a.y);
}

} // namespace lx
