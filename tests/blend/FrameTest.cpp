// Segmented images drawn as frames. The source has a letter of its own for each pixel of its three by three
// cells, two pixels wide and high each, so that a result shows which pixel of the source went where.
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "blend/Composite.h"
#include "tests/blend/OnePixel.h"
#include "tests/support/ImageHandle.h"

using namespace lx;
using namespace lx::test;

namespace {

using Picture = std::vector<std::string>;

//     columns   0 1   3 4   6 7
const Picture sheet = {"AB|CD|EF", //
                       "GH|IJ|KL", //
                       "--+--+--", //
                       "MN|OP|QR", //
                       "ST|UV|WX", //
                       "--+--+--", //
                       "YZ|ab|cd", //
                       "ef|gh|ij"};

constexpr LxRectL cell(int32_t column, int32_t row) {
    return {3 * column, 3 * row, 3 * column + 1, 3 * row + 1};
}

ImageHandle makeImageOf(const Picture &rows, int32_t x = 0, int32_t y = 0) {
    const auto w = static_cast<int32_t>(rows[0].size()), h = static_cast<int32_t>(rows.size());
    ImageHandle image(LxImage_Create(kLxPixelA, x, y, x + w, y + h, 1, 0));
    for (int32_t row = 0; row < h; ++row)
        std::memcpy(rowAddress(*image, row), rows[static_cast<size_t>(row)].data(), static_cast<size_t>(w));
    return image;
}

// The sheet, cut in a layout whose slots hold the cells told.
ImageHandle makeFrame(uint32_t layout, const std::vector<std::pair<int, LxRectL>> &slots,
                      uint32_t switches = 0) {
    ImageHandle image = makeImageOf(sheet, 100, 50);
    image->segment = layout & 7;
    for (const auto &[slot, rect] : slots)
        image->cut.setSegment(slot, rect);
    image->cut.setSwitches(switches);
    return image;
}

ImageHandle makeGrid() {
    std::vector<std::pair<int, LxRectL>> slots;
    for (int slot = 0; slot < 9; ++slot)
        slots.emplace_back(slot, cell(slot % 3, slot / 3));
    return makeFrame(1, slots);
}

Picture dots(size_t w, size_t h) {
    return Picture(h, std::string(w, '.'));
}

Picture drawn(const ImageHandle &frame, size_t w, size_t h, const LxRectL *rect = nullptr) {
    // In memory of its own, however small, so that every pixel has its true address.
    std::string pixels(w * h, '.');
    const auto right = static_cast<int32_t>(w), low = static_cast<int32_t>(h);
    const ImageHandle out(LxImage_CreateEx(kLxPixelA, 0, 0, right, low, pixels.data(), right, 0, 0, 0));
    LxBlend blend = blendOf(Mode::src);
    LxBlend_Image_Image(&blend, out.get(), frame.get(), nullptr, rect);
    EXPECT_EQ(LxImage_x(frame.get()), 100);
    EXPECT_EQ(LxImage_y(frame.get()), 50);
    Picture rows;
    for (size_t y = 0; y < h; ++y)
        rows.push_back(pixels.substr(y * w, w));
    return rows;
}

// What the grid gives when the columns and rows of the result show those of the sheet.
Picture expectedOf(const std::vector<int> &columns, const std::vector<int> &rows) {
    Picture result;
    for (const int y : rows) {
        result.emplace_back();
        for (const int x : columns)
            result.back() += sheet[static_cast<size_t>(y)][static_cast<size_t>(x)];
    }
    return result;
}

} // namespace

TEST(Frame, TheGridRepeatsItsSidesAndItsMiddle) {
    EXPECT_EQ(drawn(makeGrid(), 9, 7), expectedOf({0, 1, 3, 4, 3, 4, 3, 6, 7}, {0, 1, 3, 4, 3, 6, 7}));
    EXPECT_EQ(drawn(makeGrid(), 4, 4), expectedOf({0, 1, 6, 7}, {0, 1, 6, 7}));
    EXPECT_EQ(drawn(makeGrid(), 6, 6), expectedOf({0, 1, 3, 4, 6, 7}, {0, 1, 3, 4, 6, 7}));
}

TEST(Frame, TheGridsEndsOverlapWhereThereIsNoRoom) {
    // Three wide: the right end is drawn over the left one, the lower over the upper, and (0, 2) last.
    EXPECT_EQ(drawn(makeGrid(), 3, 4), (Picture{"AEF", "GKL", "YZd", "efj"}));
}

TEST(Frame, ARectanglePlacesTheFrame) {
    const LxRectL rect = {2, 1, 7, 5};
    EXPECT_EQ(drawn(makeGrid(), 9, 6, &rect),
              (Picture{".........", "..ABCEF..", "..GHIKL..", "..YZacd..", "..efgij..", "........."}));
}

TEST(Frame, EmptyAreasDrawNothing) {
    const LxRectL flat = {2, 1, 7, 1}, crossed = {7, 5, 2, 1};
    EXPECT_EQ(drawn(makeGrid(), 9, 6, &flat), dots(9, 6));
    EXPECT_EQ(drawn(makeGrid(), 9, 6, &crossed), dots(9, 6));
}

TEST(Frame, HugeAreasAreDrawnWhereTheyShow) {
    const LxRectL huge = {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX};
    const Picture result = drawn(makeGrid(), 6, 3, &huge);
    // The middle starts at INT32_MIN + 2 and repeats every 2: even places show its first column.
    EXPECT_EQ(result, expectedOf({3, 4, 3, 4, 3, 4}, {3, 4, 3}));
}

TEST(Frame, ThreeColumns) {
    const ImageHandle frame = makeFrame(2, {{0, cell(0, 0)}, {1, cell(1, 0)}, {2, cell(2, 0)}});
    EXPECT_EQ(drawn(frame, 7, 3), (Picture{"ABCDCEF", "GHIJIKL", "......."}));
}

TEST(Frame, ThreeRowsLeaveTheirTopAlone) {
    const ImageHandle frame = makeFrame(3, {{0, cell(0, 0)}, {3, cell(0, 1)}, {6, cell(0, 2)}});
    EXPECT_EQ(drawn(frame, 3, 7), (Picture{"...", "...", "MN.", "ST.", "MN.", "YZ.", "ef."}));
}

TEST(Frame, FiveColumnsDrawWhatTheSwitchesSay) {
    const std::vector<std::pair<int, LxRectL>> slots = {
        {0, cell(0, 0)}, {1, cell(1, 0)}, {2, cell(2, 0)}, {3, cell(0, 1)}, {5, cell(2, 1)}};
    EXPECT_EQ(drawn(makeFrame(4, slots, 0b000111), 7, 2), (Picture{"ABCDCEF", "GHIJIKL"}));
    EXPECT_EQ(drawn(makeFrame(4, slots, 0b101010), 7, 2), (Picture{"MNCDCQR", "STIJIWX"}))
        << "the alternates";
    EXPECT_EQ(drawn(makeFrame(4, slots, 0b000010), 7, 2), (Picture{"CDCDCDC", "IJIJIJI"}))
        << "the middle alone";
    EXPECT_EQ(drawn(makeFrame(4, slots, 0b000001), 7, 2), (Picture{"AB.....", "GH....."}));
    EXPECT_EQ(drawn(makeFrame(4, slots, 0), 7, 2), dots(7, 2));
}

TEST(Frame, FiveColumnsSqueezeTheirEnds) {
    const std::vector<std::pair<int, LxRectL>> slots = {{0, {0, 0, 4, 1}}, {1, cell(1, 0)}, {2, cell(2, 0)}};
    // 5 + 2 in 5: squeezed once to 4 + 1, and there the right end is 1.
    EXPECT_EQ(drawn(makeFrame(4, slots, 7), 5, 1), (Picture{"AB|CF"}));
    // In 4 the same, so that the ends overlap; no middle.
    EXPECT_EQ(drawn(makeFrame(4, slots, 7), 4, 1), (Picture{"AB|F"}));
}

TEST(Frame, TheRightEndIsPlacedByItsFarEdge) {
    // The width is that of slot 2 and the piece that of slot 5, which is narrower: it ends where the area
    // does.
    const std::vector<std::pair<int, LxRectL>> slots = {{2, {3, 0, 7, 1}}, {5, cell(2, 1)}};
    EXPECT_EQ(drawn(makeFrame(4, slots, 0b100100), 7, 1), (Picture{"..OP|QR"}))
        << "the source shows beside the piece, over the width of slot 2";
}

TEST(Frame, FiveRows) {
    const std::vector<std::pair<int, LxRectL>> slots = {{0, cell(0, 0)}, {3, cell(0, 1)}, {6, cell(0, 2)}};
    EXPECT_EQ(drawn(makeFrame(5, slots, 0b11), 3, 7),
              (Picture{"AB.", "GH.", "MN.", "ST.", "MN.", "...", "..."}));
    EXPECT_EQ(drawn(makeFrame(5, slots, 0b10), 3, 7),
              (Picture{"...", "...", "MN.", "ST.", "MN.", "...", "..."}));
    EXPECT_EQ(drawn(makeFrame(5, slots, 0), 3, 7), dots(3, 7));
}

TEST(Frame, SixPiecesPaintNothing) {
    for (const uint32_t layout : {6u, 7u}) {
        std::vector<std::pair<int, LxRectL>> slots;
        for (int slot = 0; slot < 9; ++slot)
            slots.emplace_back(slot, cell(slot % 3, slot / 3));
        EXPECT_EQ(drawn(makeFrame(layout, slots, 63), 7, 7), dots(7, 7));
    }
}

TEST(Frame, AnEmptyPieceIsLeftOut) {
    ImageHandle frame = makeGrid();
    frame->cut.setSegment(0, {0, 0, 0, 1}); // one pixel wide counts as empty
    EXPECT_EQ(drawn(frame, 7, 5)[0], "..CDCEF") << "the width comes from the first piece below";
}

TEST(Frame, AFirstSourceOfItsOwnMovesAlongAndComesBack) {
    const ImageHandle out = makeImageOf(dots(7, 5)), frame = makeGrid();
    const ImageHandle a = makeImageOf(Picture(8, std::string(8, '\1')), -3, -4);
    LxBlend blend = blendOf(Mode::add);
    LxBlend_Image_Image_Image(&blend, out.get(), a.get(), frame.get(), nullptr, nullptr);
    EXPECT_EQ(LxImage_x(a.get()), -3);
    EXPECT_EQ(LxImage_y(a.get()), -4);
    Picture rows;
    for (int32_t y = 0; y < 5; ++y)
        rows.emplace_back(reinterpret_cast<const char *>(rowAddress(*out, y)), 7);
    Picture expected = expectedOf({0, 1, 3, 4, 3, 6, 7}, {0, 1, 3, 6, 7});
    for (std::string &row : expected) {
        for (char &c : row)
            ++c;
    }
    EXPECT_EQ(rows, expected);
}
