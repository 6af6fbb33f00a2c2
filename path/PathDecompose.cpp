// Paths: transforming, flattening, point arrays, counts.

#include "path/PathBuilder.h"
#include "path/PathOperations.h"
#include "path/PathWalk.h"

namespace lx {
namespace {

// Writes what it draws as items. It draws no closing segment: the close item stands for it.
class FlatteningPen : public BasicPen<FlatteningPen> {
public:
    explicit FlatteningPen(PathBuilder &out) : out_(out) {}

    void moveTo(const LxPointD &point) {
        out_.move(point);
        BasicPen::moveTo(point);
    }
    void close() {
        flags |= noSubpath;
        current = start;
        out_.close();
    }
    void segment(const LxPointD &, const LxPointD &to) { out_.line(to); }

private:
    PathBuilder &out_;
};

// Counts what it draws. On purpose a move does not move it, and it closes to the origin.
class CountingPen : public BasicPen<CountingPen> {
public:
    LxPathInfo info = {};

    void moveTo(const LxPointD &) {
        info.points = wrappingAdd(info.points, 1);
        info.moves = wrappingAdd(info.moves, 1);
    }
    void segment(const LxPointD &, const LxPointD &) {
        info.points = wrappingAdd(info.points, 1);
        info.lines = wrappingAdd(info.lines, 1);
    }
};

// Writes raw runs of points. The number behind the 6 stays 0.
class PointArrayPen : public BasicPen<PointArrayPen> {
public:
    explicit PointArrayPen(PathBuilder &out) : out_(out) {}

    void moveTo(const LxPointD &point) {
        BasicPen::moveTo(point);
        out_.add(Item<4>{kLxPathPolygon, 0, wordOf(point.x), wordOf(point.y)});
    }
    void close() {
        BasicPen::close();
        out_.add(Item<1>{kLxPathClose});
    }
    void segment(const LxPointD &, const LxPointD &to) { out_.add(Item<2>{wordOf(to.x), wordOf(to.y)}); }

private:
    PathBuilder &out_;
};

void flatten(const LxPath &path, const LxMatrix *matrix, PathBuilder &out) {
    FlatteningPen pen(out);
    walkItems(path, matrix, pen);
}

LxPathInfo count(const LxPath &path, const LxMatrix *matrix) {
    CountingPen pen;
    walkItems(path, matrix, pen);
    return pen.info;
}

// Room is made for as many words as there are points, and two; what is written may need more.
LxPath *createPointArray(const LxPath &path, const LxMatrix *matrix) {
    const int64_t room = int64_t{count(path, matrix).points} + 2;
    PathBuilder out(room);
    PointArrayPen pen(out);
    walkItems(path, matrix, pen);
    return out.moveIntoNewPath(room);
}

LxPath *createTransformed(const LxPath &path, const LxMatrix *matrix, const LxRectD *clip) {
    LxPath *result = clip != nullptr ? LxPath_CreateDecomposed(&path, matrix) : LxPath_CreateCopy(&path);
    if (result == nullptr)
        return nullptr;
    if (clip != nullptr)
        clipPath(*result, *clip);
    else if (matrix != nullptr)
        transformPath(*result, *matrix);
    return result;
}

} // namespace

void transformPath(LxPath &path, const LxMatrix &matrix) {
    readItems(path, [&](uint32_t tag, int32_t position, int32_t n) {
        // The points of an item follow its tag; those of a polygon, its number of points.
        constexpr int32_t pointsOfItem[] = {0, 1, 1, 2, 3, 2};
        const bool polygon = tag == kLxPathPolygon;
        const int32_t points = polygon ? n : tag < std::size(pointsOfItem) ? pointsOfItem[tag] : 0;
        uint32_t *words = path.words + position + (polygon ? 2 : 1);
        for (int32_t i = 0; i < points; ++i, words += 2) {
            const LxPointD point = transform(matrix, pointAt(words));
            words[0] = wordOf(point.x);
            words[1] = wordOf(point.y);
        }
    });
}

const LxPath *transformed(const LxPath &path, const LxMatrix &matrix, const LxRectD &clip,
                          PathScratch &scratch) {
    scratch.words.restart();
    flatten(path, &matrix, scratch.words);
    return scratch.words.failed() ? nullptr : &clipped(scratch.words.path(), clip, scratch.clippedWords);
}

} // namespace lx

using namespace lx;

void LxPath_Transform(LxPath *path, const LxMatrix *matrix) {
    if (path != nullptr && matrix != nullptr)
        transformPath(*path, *matrix);
}

void LxPath_Decompose(LxPath *path, const LxMatrix *matrix) {
    if (path == nullptr)
        return;
    PathBuilder out;
    flatten(*path, matrix, out);
    out.moveInto(*path);
}

LxPath *LxPath_CreateDecomposed(const LxPath *path, const LxMatrix *matrix) {
    if (path == nullptr)
        return nullptr;
    PathBuilder out;
    flatten(*path, matrix, out);
    return out.moveIntoNewPath();
}

LxPath *LxPath_CreateTransformed(const LxPath *path, const LxMatrix *matrix, const LxRectD *clip) {
    return path != nullptr ? createTransformed(*path, matrix, clip) : nullptr;
}

LxPath *LxPath_CreatePointArray(const LxPath *path, const LxMatrix *matrix) {
    return path != nullptr ? createPointArray(*path, matrix) : nullptr;
}

LxPathInfo LxPath_Info(const LxPath *path, const LxMatrix *matrix) {
    return path != nullptr ? count(*path, matrix) : LxPathInfo{};
}
