#include <oxlume/cpp/Path.hpp>

#include <string>
#include <type_traits>

#include <gtest/gtest.h>

using namespace oxlume;

static_assert(sizeof(Path) == sizeof(void *));
static_assert(!std::is_copy_constructible_v<Path> && std::is_nothrow_move_constructible_v<Path>);

namespace {

std::string text(Point p) {
    return std::to_string(static_cast<int>(p.x)) + "," + std::to_string(static_cast<int>(p.y));
}

// What a walk reports: M for a move, L for a segment's end, Z for an end.
std::string walked(const Path &path, const Matrix *matrix = nullptr) {
    std::string all;
    path.walk([&](Point to) { all.append("M").append(text(to)).append(" "); },
              [&](Point, Point to) { all.append("L").append(text(to)).append(" "); },
              [&] { all.append("Z "); }, matrix);
    return all;
}

} // namespace

TEST(CppPath, BuildsInChains) {
    Path path;
    path.moveTo({1, 2}).lineTo({3, 4}).lineTo({5, 6}).close();
    EXPECT_EQ(walked(path), "M1,2 L3,4 L5,6 L1,2 Z ");
    EXPECT_FALSE(path.isClosed()) << "the close item itself is no return";
    EXPECT_TRUE(path.mend());
    EXPECT_TRUE(path.isClosed());
}

TEST(CppPath, WalksThroughAMatrix) {
    const Matrix moved = Matrix::translation(10, 20);
    EXPECT_EQ(walked(Path().addLine({1, 2}, {3, 4}), &moved), "M11,22 L13,24 ");
}

TEST(CppPath, ShapesClosed) {
    EXPECT_EQ(walked(Path().addRect({1, 2, 5, 6}).flatten()).back(), ' ');
    const Point corners[] = {{0, 0}, {4, 0}, {4, 4}};
    EXPECT_EQ(walked(Path().addPolygon(corners, 3)), "M0,0 L4,0 L4,4 L0,0 Z ");
    EXPECT_GT(Path().addCircle({5, 5}, 4).info().lines, 8);
    EXPECT_GT(Path().addEllipse({5, 5}, 4, 2).info().lines, 8);
    EXPECT_GT(Path().addPie({5, 5}, 4, 0, 90, 8).info().lines, 8);
    EXPECT_GT(Path().addRing({5, 5}, 2, 4, 0, 90, 8).info().lines, 8);
    EXPECT_GT(Path().moveTo({0, 0}).curveTo({5, 0}, {5, 5}).info().lines, 8);
    EXPECT_GT(Path().moveTo({0, 0}).curveTo({50, 0}, {50, 50}, {0, 50}).info().lines, 2);
    EXPECT_EQ(Path().addFitted(corners, 3, 1.0).info().moves, 1);
}

TEST(CppPath, TransformsOutlinesAndClips) {
    EXPECT_EQ(walked(Path().addLine({1, 2}, {3, 4}).transform(Matrix::scaling(2, 2))), "M2,4 L6,8 ");
    Path stroke;
    stroke.addLine({0, 5}, {10, 5}).outline(2);
    EXPECT_NE(walked(stroke).find("0,4"), std::string::npos);
    EXPECT_NE(walked(stroke).find("10,6"), std::string::npos);
    const Path clipped = Path(Path().addRect({0, 0, 10, 10}).clip({2, 2, 4, 4}).release());
    EXPECT_NE(walked(clipped).find("4,4"), std::string::npos);
    EXPECT_EQ(walked(clipped).find("10"), std::string::npos);
}

TEST(CppPath, OwnsMovesAndCopies) {
    Path path;
    path.addLine({1, 2}, {3, 4});
    Path copied = path.copy();
    Path moved = std::move(path);
    EXPECT_FALSE(path);
    EXPECT_TRUE(moved);
    path.lineTo({1, 1}).clear();
    EXPECT_EQ(walked(moved), "M1,2 L3,4 ");
    moved.clear();
    EXPECT_EQ(walked(moved), "");
    EXPECT_EQ(walked(copied.add(copied)), "M1,2 L3,4 Z M1,2 L3,4 ");
    EXPECT_EQ(walked(copied.removeItem(1)), "M1,2 Z M1,2 L3,4 ");
    LxPath *raw = copied.release();
    EXPECT_FALSE(copied);
    LxPath_Delete(raw);
}
