// What strangers' drawings are made of beside plain shapes: strokes in all styles, fills by either rule,
// gradients in all directions, clip paths, elements used again.

#include <cmath>
#include <initializer_list>
#include <utility>
#include <vector>

#include "tests/tools/SvgProgram.h"

using namespace lx::test;

namespace {

class SvgFeatures : public SvgProgram {
protected:
    // Whether pixels of a picture are painted at all.
    static void expectPainted(const tool::ImageHandle &image,
                              std::initializer_list<std::pair<int, int>> places, bool painted) {
        for (const auto &[x, y] : places)
            EXPECT_EQ(at(image, x, y).content.rgba.a, painted ? 255 : 0) << x << ' ' << y;
    }
};

} // namespace

TEST_F(SvgFeatures, EvenOddFillsLeaveHolesOpen) {
    // Two squares that run the same way.
    const std::string squares = "<path d='M1 1H15V15H1ZM5 5H11V11H5Z' fill-rule='";
    expectPainted(pictureOf(squares + "nonzero'/>"), {{3, 3}, {8, 8}}, true);
    const auto image = pictureOf(squares + "evenodd'/>");
    expectPainted(image, {{3, 3}, {12, 8}}, true);
    expectPainted(image, {{8, 8}, {0, 8}}, false);
}

TEST_F(SvgFeatures, DashesAreCutFromTheStart) {
    // 4 long, then 2 left out; the pattern starts 1 inside its dash: to 3, from 5 to 9, from 11 to 15.
    const auto image = pictureOf("<path d='M0 8H16' stroke='red' stroke-width='4' stroke-dasharray='4 2' "
                                 "stroke-dashoffset='1'/>");
    expectPainted(image, {{0, 8}, {2, 8}, {5, 8}, {8, 8}, {11, 8}, {14, 8}}, true);
    expectPainted(image, {{3, 8}, {4, 8}, {9, 8}, {10, 8}, {15, 8}}, false);
}

TEST_F(SvgFeatures, DashesGoAroundCornersAndAnOddListIsToldTwice) {
    // 3 on, 3 off: down the corner at (6, 2) the second dash has one pixel to the left and two below.
    const auto image = pictureOf("<path d='M-1 2H6V16' fill='none' stroke='red' stroke-width='2' "
                                 "stroke-dasharray='3'/>");
    expectPainted(image, {{0, 1}, {5, 2}, {6, 3}, {6, 8}, {6, 9}}, true);
    expectPainted(image, {{3, 1}, {6, 5}, {6, 6}}, false);
}

TEST_F(SvgFeatures, DashesOfNoLengthAreWholeLines) {
    for (const char *dashes : {"none", "0", "0,0", "-1", "4 -2", "x"})
        expectPainted(pictureOf(std::string("<path d='M0 8H16' stroke='red' stroke-width='4' "
                                            "stroke-dasharray='") +
                                dashes + "'/>"),
                      {{0, 8}, {5, 8}, {15, 8}}, true);
}

TEST_F(SvgFeatures, CapsReachBeyondTheEnds) {
    const auto line = [&](const std::string &cap) {
        return pictureOf("<path d='M6 8H10' stroke='red' stroke-width='8' stroke-linecap='" + cap + "'/>");
    };
    expectPainted(line("butt"), {{5, 8}, {10, 8}}, false);
    expectPainted(line("square"), {{2, 4}, {2, 11}, {13, 4}, {13, 11}}, true);
    expectPainted(line("square"), {{1, 8}, {14, 8}}, false);
    const auto round = line("round");
    expectPainted(round, {{3, 8}, {12, 8}, {4, 6}, {11, 9}}, true);
    expectPainted(round, {{2, 4}, {13, 11}}, false); // the corners, 4.9 away of 4
}

TEST_F(SvgFeatures, PointsShowTheirCapsAlone) {
    const std::string point = "<path d='M8 8L8 8' stroke='red' stroke-width='8' stroke-linecap='";
    expectPainted(pictureOf(point + "butt'/>"), {{8, 8}}, false);
    expectPainted(pictureOf(point + "square'/>"), {{4, 4}, {11, 11}}, true);
    expectPainted(pictureOf(point + "round'/>"), {{8, 5}, {5, 8}, {10, 8}}, true);
    expectPainted(pictureOf(point + "round'/>"), {{4, 4}, {11, 11}}, false);
}

TEST_F(SvgFeatures, JoinsAreMitredRoundOrBevelled) {
    const auto corner = [&](const std::string &join) {
        return pictureOf("<path d='M10 16V6H0' fill='none' stroke='red' stroke-width='8' stroke-linejoin='" +
                         join + "'/>");
    };
    // The corner stands at (14, 2): a round join passes at 4 of the 5.7 from (10, 6) to it, a bevel at 2.8.
    expectPainted(corner("miter"), {{13, 2}, {12, 3}, {11, 4}}, true);
    expectPainted(corner("miter' stroke-miterlimit='1.4"), {{13, 2}}, false);
    expectPainted(corner("round"), {{13, 2}}, false);
    expectPainted(corner("round"), {{11, 4}}, true);
    expectPainted(corner("bevel"), {{13, 2}, {12, 3}}, false);
    expectPainted(corner("bevel"), {{10, 5}}, true);
}

TEST_F(SvgFeatures, EachCornerHasAMitreOfItsOwn) {
    // The first corner is square, the second too sharp for the limit of 4: its line ends at its bevel.
    const auto image = pictureOf("<path d='M2 16V4H14L2 6' fill='none' stroke='red' stroke-width='2'/>");
    expectPainted(image, {{1, 3}}, true);
    expectPainted(image, {{15, 3}, {15, 4}}, false);
}

TEST_F(SvgFeatures, SlantedGradientsGoFromCornerToCorner) {
    const auto image = pictureOf("<linearGradient id='a' x2='1' y2='1'><stop stop-color='black'/>"
                                 "<stop offset='1' stop-color='white'/></linearGradient>"
                                 "<rect width='16' height='16' fill='url(#a)'/>");
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            EXPECT_NEAR(at(image, x, y).content.rgba.r, 255 * (x + y + 1) / 32.0, 1);
}

TEST_F(SvgFeatures, RadialGradientsAreRound) {
    const auto image =
        pictureOf("<radialGradient id='a'><stop stop-color='white'/><stop offset='1'/></radialGradient>"
                  "<rect width='16' height='16' fill='url(#a)'/>");
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x) {
            const double t = std::hypot(x - 7.5, y - 7.5) / 8;
            EXPECT_NEAR(at(image, x, y).content.rgba.r, t < 1 ? 255 * (1 - t) : 0, 1) << x << ' ' << y;
        }
}

TEST_F(SvgFeatures, RadialGradientsRunFromTheirFocus) {
    // On the line through the focus (4, 8) and the centre (8, 8) of the circle of 8: to the right it is 12 to
    // the rim, to the left 4.
    const auto image = pictureOf("<radialGradient id='a' gradientUnits='userSpaceOnUse' cx='8' cy='8' r='8' "
                                 "fx='4' fy='8'><stop stop-color='white'/><stop offset='1'/></radialGradient>"
                                 "<rect y='7.5' width='16' height='1' fill='url(#a)' id='row'/>"
                                 "<rect width='16' height='16' fill='url(#a)'/>");
    EXPECT_NEAR(at(image, 9, 8).content.rgba.r, 255 * (1 - 5.5 / 12), 3);
    EXPECT_NEAR(at(image, 2, 8).content.rgba.r, 255 * (1 - 1.5 / 4), 12); // half a pixel below the line
    EXPECT_GT(at(image, 4, 8).content.rgba.r, 200);
}

TEST_F(SvgFeatures, GradientsGoOnBehindTheirEnds) {
    const auto colors = [&](const std::string &spread) {
        const auto image = pictureOf("<linearGradient id='a' gradientUnits='userSpaceOnUse' x2='4' "
                                     "spreadMethod='" +
                                     spread +
                                     "'><stop stop-color='black'/><stop offset='1' stop-color='white'/>"
                                     "</linearGradient><rect width='16' height='16' fill='url(#a)'/>");
        std::vector<int> row;
        for (int x = 0; x < 16; ++x)
            row.push_back(at(image, x, 8).content.rgba.r);
        return row;
    };
    const auto pad = colors("pad"), repeat = colors("repeat"), reflect = colors("reflect");
    for (size_t x = 4; x < 16; ++x) {
        EXPECT_EQ(pad[x], 255);
        EXPECT_NEAR(repeat[x], pad[x % 4], 1);
        EXPECT_NEAR(reflect[x], x / 4 % 2 == 0 ? pad[x % 4] : pad[3 - x % 4], 1);
    }
}

TEST_F(SvgFeatures, ElementsAreUsedAgain) {
    const auto image =
        pictureOf("<defs><g id='g'><rect width='3' height='3'/></g><symbol id='s' viewBox='0 0 1 1'>"
                  "<rect width='1' height='1'/></symbol></defs><use href='#g' fill='red'/>"
                  "<use xlink:href='#g' x='8' y='2' fill='blue'/><use href='#s' y='8' width='4' height='6'/>"
                  "<use href='#nothing'/><use href='other.svg#g'/>");
    expectPixel(image, 1, 1, rgba(255, 0, 0));
    expectPixel(image, 9, 3, rgba(0, 0, 255));
    expectPixel(image, 9, 1, {});
    expectPixel(image, 4, 1, {});
    // 4 by 4 in the middle of 4 by 6.
    expectPixel(image, 3, 9, rgba(0, 0, 0));
    expectPixel(image, 3, 12, rgba(0, 0, 0));
    expectPixel(image, 3, 8, {});
    expectPixel(image, 3, 13, {});
}

TEST_F(SvgFeatures, DrawingsInsideTheDrawingHaveAViewOfTheirOwn) {
    const auto image = pictureOf("<svg x='8' y='4' width='8' height='8' viewBox='0 0 2 2'>"
                                 "<rect width='1' height='1' fill='red'/></svg>");
    expectPixel(image, 8, 4, rgba(255, 0, 0));
    expectPixel(image, 11, 7, rgba(255, 0, 0));
    expectPixel(image, 12, 7, {});
    expectPixel(image, 7, 5, {});
}

TEST_F(SvgFeatures, ClipPathsCutWhatTheyClip) {
    const std::string clips =
        "<clipPath id='a'><rect x='2' y='2' width='8' height='8'/><circle cx='13' cy='13' r='3'/></clipPath>"
        "<clipPath id='b' clipPathUnits='objectBoundingBox'><rect width='.5' height='1'/></clipPath>"
        "<clipPath id='e'><path d='M0 0H16V16H0ZM4 4H12V12H4Z' clip-rule='evenodd'/></clipPath>"
        "<clipPath id='none'/>";
    const std::string square = "<rect width='16' height='16' fill='red' clip-path='url(#";
    const auto one = pictureOf(clips + square + "a)'/>");
    expectPainted(one, {{2, 2}, {9, 9}, {13, 13}}, true);
    expectPainted(one, {{1, 2}, {10, 9}, {10, 15}}, false);
    const auto half = pictureOf(clips + square + "b)'/>");
    expectPainted(half, {{0, 0}, {7, 15}}, true);
    expectPainted(half, {{8, 0}}, false);
    const auto ring = pictureOf(clips + square + "e)'/>");
    expectPainted(ring, {{1, 1}, {14, 8}}, true);
    expectPainted(ring, {{8, 8}}, false);
    // One inside the other, and one that is empty.
    const auto both = pictureOf(clips + "<g clip-path='url(#a)'>" + square + "e)'/></g>");
    expectPainted(both, {{3, 3}, {13, 13}}, true);
    expectPainted(both, {{8, 8}, {1, 1}, {14, 8}}, false);
    expectPainted(pictureOf(clips + square + "none)'/>"), {{8, 8}}, false);
    expectPainted(pictureOf(clips + square + "nothing)'/>"), {{8, 8}}, true);
}

TEST_F(SvgFeatures, ColoursMayHaveAnAlpha) {
    const auto image = pictureOf("<rect width='4' height='4' fill='#f008'/>"
                                 "<rect x='4' width='4' height='4' fill='#ff000033'/>"
                                 "<rect x='8' width='4' height='4' fill='rgba(255, 0, 0, .4)'/>");
    expectPixel(image, 1, 1, rgba(255, 0, 0, 136));
    expectPixel(image, 5, 1, rgba(255, 0, 0, 51));
    expectPixel(image, 9, 1, rgba(255, 0, 0, 102));
}
