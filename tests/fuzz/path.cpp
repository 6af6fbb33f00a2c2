// Sequences of calls on paths: shapes, editing, clipping, outlining, walks and curve tools.

#include "tests/fuzz/World.h"

using namespace lx::fuzz;

namespace {

// Shapes of few steps: their number says how much work there is.
template <auto function>
constexpr Call pie = [](World &world) {
    LxPath *const path = world.path();
    const LxPointD center = world.next<LxPointD>();
    const auto radius = world.next<double>(), start = world.next<double>(), end = world.next<double>();
    const int32_t steps = world.input.below(64) - 2;
    function(path, center.x, center.y, radius, 4 * start, 4 * end, steps, world.input.below(2));
};

template <auto function>
constexpr Call ring = [](World &world) {
    LxPath *const path = world.path();
    const LxPointD center = world.next<LxPointD>(), radii = world.next<LxPointD>();
    const auto start = world.next<double>(), end = world.next<double>();
    const int32_t steps = world.input.below(64) - 2;
    function(path, center.x, center.y, radii.x, radii.y, 4 * start, 4 * end, steps, world.input.below(2));
};

constexpr Call walk = [](World &world) {
    LxPathIterator *const iterator = LxPath_CreateIterator();
    int segments = 0;
    LxPathIterator_SetCallback(
        iterator, kLxPathOnSegment,
        reinterpret_cast<LxPathCallback>(+[](LxPathIterator *i, const LxPointD *, const LxPointD *) {
            ++*static_cast<int *>(LxPathIterator_User(i));
        }));
    const LxPath *const path = world.next<const LxPath *>();
    LxPath_IterateConst(path, iterator, world.next<const LxMatrix *>(), &segments, nullptr);
    LxPath_DeleteIterator(iterator);
};

constexpr Call calls[] = {
    callOf<LxPath_MakeEmpty>,
    callOf<LxPath_Add>,
    callOf<LxPath_Copy>,
    callOf<LxPath_CreateCopy>,
    callOf<LxPath_CreateClipped>,
    callOf<LxPath_AddMoveTo>,
    callOf<LxPath_AddLineTo>,
    callOf<LxPath_AddQCurveTo>,
    callOf<LxPath_AddCurveTo>,
    callOf<LxPath_AddClose>,
    callOf<LxPath_AddArcTo>,
    callOf<LxPath_PolygonTo>,
    callOf<LxPath_InsertMoveTo>,
    callOf<LxPath_InsertLineTo>,
    callOf<LxPath_InsertQCurveTo>,
    callOf<LxPath_InsertCurveTo>,
    callOf<LxPath_InsertArcTo>,
    callOf<LxPath_InsertPolygonTo>,
    callOf<LxPath_InsertClose>,
    callOf<LxPath_ReplaceByMoveTo>,
    callOf<LxPath_ReplaceByLineTo>,
    callOf<LxPath_ReplaceByQCurveTo>,
    callOf<LxPath_ReplaceByCurveTo>,
    callOf<LxPath_ReplaceByArcTo>,
    callOf<LxPath_ReplaceByPolygonTo>,
    callOf<LxPath_ReplaceByClose>,
    callOf<LxPath_RemoveItem>,
    callOf<LxPath_Close>,
    callOf<LxPath_isClosed>,
    callOf<LxPath_AddLine>,
    callOf<LxPath_SetLine>,
    callOf<LxPath_AddPoly>,
    callOf<LxPath_SetPoly>,
    callOf<LxPath_AddRect>,
    callOf<LxPath_SetRect>,
    callOf<LxPath_AddCircle>,
    callOf<LxPath_SetCircle>,
    callOf<LxPath_AddEllipse>,
    callOf<LxPath_SetEllipse>,
    pie<LxPath_AddPolyPie>,
    pie<LxPath_SetPolyPie>,
    ring<LxPath_AddPolyRing>,
    ring<LxPath_SetPolyRing>,
    callOf<LxPath_Transform>,
    callOf<LxPath_Decompose>,
    callOf<LxPath_CreateDecomposed>,
    callOf<LxPath_CreateTransformed>,
    callOf<LxPath_CreatePointArray>,
    callOf<LxPath_Info>,
    callOf<LxPath_CreateOutlined>,
    callOf<LxPath_Outline>,
    callOf<LxPath_Clip>,
    callOf<LxCubicBezier_HitTest>,
    callOf<LxCubicBezier_Length>,
    callOf<LxCubicBezier_Fit>,
    walk,
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    World world(data, size);
    play(world, calls);
    return 0;
}
