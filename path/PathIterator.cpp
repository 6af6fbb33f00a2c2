#include "path/PathIterator.h"

#include <oxlume/LxMem.h>

#include "path/PathWalk.h"

namespace lx {
namespace {

void defaultBegin(LxPathIterator *iterator) {
    iterator->flags |= noSubpath;
    iterator->segments = 0;
    iterator->steps = quadraticSteps;
    iterator->step = quadraticStep;
    iterator->step2 = quadraticStep * quadraticStep;
    iterator->step3 = quadraticStep * quadraticStep * quadraticStep;
}

void defaultMoveTo(LxPathIterator *iterator, const LxPointD *point) {
    drawMove(*iterator, *point);
}

void defaultLineTo(LxPathIterator *iterator, const LxPointD *point) {
    drawLine(*iterator, *point);
}

void defaultQCurveTo(LxPathIterator *iterator, const LxPointD *control, const LxPointD *end) {
    drawQuadratic(*iterator, *control, *end, iterator->steps, iterator->step, iterator->step2);
}

void defaultCurveTo(LxPathIterator *iterator, const LxPointD *control1, const LxPointD *control2,
                    const LxPointD *end) {
    drawCubic(*iterator, *control1, *control2, *end);
}

void defaultArcTo(LxPathIterator *, const LxPointD *, const LxPointD *, double, uint32_t, uint32_t) {}

void defaultClose(LxPathIterator *iterator) {
    drawClose(*iterator);
}

void ignoreMove(LxPathIterator *, const LxPointD *) {}
void ignoreSegment(LxPathIterator *, const LxPointD *, const LxPointD *) {}
void ignoreEnd(LxPathIterator *) {}

// Hands a walk's items to an iterator's slots.
struct SlotCaller {
    LxPathIterator &iterator;

    void moveTo(const LxPointD &point) { iterator.moveTo(&iterator, &point); }
    void lineTo(const LxPointD &point) { iterator.lineTo(&iterator, &point); }
    void qcurveTo(const LxPointD &control, const LxPointD &end) {
        iterator.qcurveTo(&iterator, &control, &end);
    }
    void curveTo(const LxPointD &control1, const LxPointD &control2, const LxPointD &end) {
        iterator.curveTo(&iterator, &control1, &control2, &end);
    }
    void arcTo(const LxPointD &point1, const LxPointD &point2, double radius, uint32_t word1,
               uint32_t word2) {
        iterator.arcTo(&iterator, &point1, &point2, radius, word1, word2);
    }
    void close() { iterator.close(&iterator); }
};

void iterate(const LxPath &path, LxPathIterator &iterator, const LxMatrix *matrix) {
    SlotCaller caller{iterator};
    iterator.begin(&iterator);
    if (walkItems(path, matrix, caller) == WalkEnd::complete)
        iterator.end(&iterator);
}

// The form of a slot that takes pointers into the words, or null where the slot is the default one, which
// takes points and so has no part in a mutable walk.
template <class MutableSlot, class Slot>
MutableSlot mutableSlot(Slot slot, Slot defaultSlot) {
    return slot != defaultSlot ? reinterpret_cast<MutableSlot>(reinterpret_cast<void (*)()>(slot)) : nullptr;
}

void iterateInPlace(LxPath &path, LxPathIterator &iterator) {
    iterator.begin(&iterator);
    const WalkEnd walkEnd = readItems(path, [&](uint32_t tag, int32_t position, int32_t n) {
        uint32_t *words = path.words + position + 1;
        const auto number = [&](int32_t i) { return reinterpret_cast<float *>(words + i); };
        const auto passPoint = [&](auto slot) {
            if (slot != nullptr)
                slot(&iterator, number(0), number(1));
        };
        const auto lineTo = mutableSlot<MutablePointSlot>(iterator.lineTo, defaultLineTo);
        switch (tag) {
        case kLxPathMove:
            passPoint(mutableSlot<MutablePointSlot>(iterator.moveTo, defaultMoveTo));
            break;
        case kLxPathLine:
            passPoint(lineTo);
            break;
        case kLxPathQCurve:
            if (const auto slot = mutableSlot<MutableQCurveSlot>(iterator.qcurveTo, defaultQCurveTo))
                slot(&iterator, number(0), number(1), number(2), number(3));
            break;
        case kLxPathCurve:
            if (const auto slot = mutableSlot<MutableCurveSlot>(iterator.curveTo, defaultCurveTo))
                slot(&iterator, number(0), number(1), number(2), number(3), number(4), number(5));
            break;
        case kLxPathArc:
            if (const auto slot = mutableSlot<MutableArcSlot>(iterator.arcTo, defaultArcTo))
                slot(&iterator, number(0), number(1), number(2), number(3), number(4), words + 5, words + 6);
            break;
        case kLxPathPolygon:
            for (int32_t i = 0; i < n && position + 4 + 2 * int64_t{i} <= path.capacity; ++i) {
                words = path.words + position + 2 + 2 * int64_t{i};
                passPoint(lineTo);
            }
            break;
        case kLxPathClose:
            iterator.close(&iterator);
            break;
        default:
            break;
        }
    });
    if (walkEnd == WalkEnd::complete)
        iterator.end(&iterator);
}

} // namespace

void setDefaultSlots(LxPathIterator &iterator) {
    iterator.begin = defaultBegin;
    iterator.moveTo = defaultMoveTo;
    iterator.lineTo = defaultLineTo;
    iterator.qcurveTo = defaultQCurveTo;
    iterator.curveTo = defaultCurveTo;
    iterator.arcTo = defaultArcTo;
    iterator.close = defaultClose;
    iterator.end = ignoreEnd;
    iterator.onMove = ignoreMove;
    iterator.onSegment = ignoreSegment;
    iterator.onSubpathEnd = ignoreEnd;
}

} // namespace lx

using namespace lx;

LxPathIterator *LxPath_CreateIterator(void) {
    auto *iterator = static_cast<LxPathIterator *>(LxMem_calloc(1, sizeof(LxPathIterator)));
    if (iterator != nullptr)
        setDefaultSlots(*iterator);
    return iterator;
}

void LxPath_DeleteIterator(LxPathIterator *iterator) {
    LxMem_free(iterator);
}

void LxPathIterator_SetCallback(LxPathIterator *iterator, int32_t kind, LxPathCallback callback) {
    if (iterator == nullptr)
        return;
    const auto set = [callback](auto &slot, auto ignore) {
        slot = callback != nullptr ? reinterpret_cast<decltype(ignore)>(callback) : ignore;
    };
    switch (kind) {
    case kLxPathOnMove:
        set(iterator->onMove, ignoreMove);
        break;
    case kLxPathOnSegment:
        set(iterator->onSegment, ignoreSegment);
        break;
    case kLxPathOnSubpathEnd:
        set(iterator->onSubpathEnd, ignoreEnd);
        break;
    default:
        break;
    }
}

void *LxPathIterator_User(const LxPathIterator *iterator) {
    return iterator != nullptr ? iterator->user : nullptr;
}

void *LxPathIterator_Data(const LxPathIterator *iterator) {
    return iterator != nullptr ? iterator->data : nullptr;
}

void LxPathIterator_SetUser(LxPathIterator *iterator, void *user) {
    if (iterator != nullptr)
        iterator->user = user;
}

void LxPathIterator_SetData(LxPathIterator *iterator, void *data) {
    if (iterator != nullptr)
        iterator->data = data;
}

void LxPath_IterateConst(const LxPath *path, LxPathIterator *iterator, const LxMatrix *matrix, void *user,
                         void *data) {
    if (path == nullptr || iterator == nullptr)
        return;
    iterator->user = user;
    iterator->data = data;
    iterate(*path, *iterator, matrix);
}

void LxPath_Iterate(LxPath *path, LxPathIterator *iterator, const void *, void *user, void *data) {
    if (path == nullptr || iterator == nullptr)
        return;
    iterator->user = user;
    iterator->data = data;
    iterateInPlace(*path, *iterator);
}
