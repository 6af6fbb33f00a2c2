// The image record, and the small readers on it that the other subsystems use.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include <oxlume/LxExtras.h>
#include <oxlume/LxImage.h>

#include "foundation/Mutex.h"
#include "foundation/Numeric.h"

namespace lx {

// Where an image's pixels live, by their bytes: see storageFor in Image.cpp.
enum class Storage : uint32_t { inlined, pool2K, pool4K, pool16K, pool64K, heap, external };
constexpr size_t storageCount = 7;

constexpr size_t inlineBytes = 16;

// What a picture's marker pixels said: nine words of segments or six words of a tile grid. The two share
// their memory on purpose, and callers can read the one where the other is stored.
struct CutArea {
    // Word 0 holds the segment switches, words 1 to 36 nine rectangles by rows.
    static constexpr int slots = 9;
    // The tile grid is in words 0 to 5.
    enum Tile { tileX, tileY, tileCountX, tileCountY, tileW, tileH };

    int32_t words[1 + 4 * slots];

    uint32_t switches() const { return static_cast<uint32_t>(words[0]); }
    void setSwitches(uint32_t bits) { words[0] = static_cast<int32_t>(bits); }

    LxRectL segment(int slot) const {
        const int32_t *word = words + 1 + 4 * slot;
        return {word[0], word[1], word[2], word[3]};
    }
    void setSegment(int slot, LxRectL rect) {
        int32_t *word = words + 1 + 4 * slot;
        word[0] = rect.x0;
        word[1] = rect.y0;
        word[2] = rect.x1;
        word[3] = rect.y1;
    }
};

} // namespace lx

struct _LxImage {
    uint32_t storage : 3; // an lx::Storage
    uint32_t type : 3;    // an LxPixelType; 6 and 7 mean nothing
    uint32_t native : 3;  // an LxNativeType: the kind of platform object behind the image, 0 for none
    uint32_t planar : 1;  // never set
    uint32_t empty : 1;   // the caller's mark
    uint32_t flipped : 1; // rows are stored bottom-up
    uint32_t tiled : 1;   // `cut` holds a tile grid
    uint32_t segment : 3; // the segment layout in `cut`, 0 for none
    int32_t rowBytes;
    LxRectL rect;
    LxGC *gc; // made on first demand, owned
    lx::CutArea cut;
    void *nativeHandle; // the platform's object, or null
    void *dataProvider; // the platform's source of its pixels, or null
    int32_t memSize;
    union {
        uint8_t inlinePixels[lx::inlineBytes]; // storage class `inlined`
        uint8_t *pixels;                       // every other class
    };
    LxMutex *lock; // recursive, owned
};

namespace lx {

inline bool isInline(const LxImage &image) {
    return image.storage == static_cast<uint32_t>(Storage::inlined);
}

// The first stored row.
inline uint8_t *firstRow(LxImage &image) {
    return isInline(image) ? image.inlinePixels : image.pixels;
}
inline const uint8_t *firstRow(const LxImage &image) {
    return isInline(image) ? image.inlinePixels : image.pixels;
}

inline int32_t width(const LxImage &image) {
    return std::abs(wrappingSubtract(image.rect.x1, image.rect.x0));
}
inline int32_t height(const LxImage &image) {
    return std::abs(wrappingSubtract(image.rect.y1, image.rect.y0));
}

// The stored row that holds the logical row `y`: the same one, counted from the bottom in a flipped image.
inline int32_t storedRow(const LxImage &image, int32_t y) {
    return image.flipped != 0 ? wrappingSubtract(wrappingSubtract(height(image), y), 1) : y;
}

// The true address of the logical row `y`, which must lie inside.
inline uint8_t *rowAddress(LxImage &image, int32_t y) {
    return firstRow(image) + ptrdiff_t{storedRow(image, y)} * image.rowBytes;
}
inline const uint8_t *rowAddress(const LxImage &image, int32_t y) {
    return firstRow(image) + ptrdiff_t{storedRow(image, y)} * image.rowBytes;
}

// The image made by LxImage_Create, under its own name for the code of the library.
LxImage *createImage(int32_t type, LxRectL rect, bool clear, bool flipped);

// An image whose pixels are lent to an object of the platform: as LxImage_Create, but they are never pooled.
// Up to 16 bytes they live in the record and account for nothing.
LxImage *createLendingImage(int32_t type, LxRectL rect, bool empty, bool clear, bool flipped);

// How the platform's objects behind an image of kind kLxNativeCGImage are released, with the image. The
// bridges put their function here; without them there are no such images.
using NativeRelease = void (*)(LxImage &image);
void registerNativeRelease(NativeRelease release);

// How an image makes and drops its context. The module of contexts puts its functions here at its start of
// life, so that this folder needs none of it; without them images have no context.
struct ImageContextFunctions {
    LxGC *(*create)(LxImage *image, LxRectD clip);
    void (*remove)(LxGC *gc);
};
void registerImageContexts(ImageContextFunctions functions);

// Cumulative counters of the images made, by storage class. Nothing takes from them.
struct ImageStatistics {
    uint64_t images;
    uint64_t bytes; // by memSize
};
ImageStatistics imageStatistics(Storage storage);

} // namespace lx
