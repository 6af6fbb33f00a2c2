// Making and deleting images.

#include "image/Image.h"

#include <array>
#include <cstring>
#include <limits>

#include <oxlume/LxMem.h>
#include <oxlume/LxNativeImage.h>

#include "foundation/Library.h"
#include "image/BufferPool.h"

namespace lx {
namespace {

// The pools of the storage classes pool2K to pool64K, in their order.
constinit std::array<BufferPool, 4> pools = {BufferPool(2048), BufferPool(4096), BufferPool(16384),
                                             BufferPool(65536)};
constinit std::array<ImageStatistics, storageCount> statistics = {};
constinit ImageContextFunctions contexts = {nullptr, nullptr};
constinit NativeRelease releaseNative = nullptr;

BufferPool *poolOf(Storage storage) {
    const uint32_t index = static_cast<uint32_t>(storage) - static_cast<uint32_t>(Storage::pool2K);
    return index < pools.size() ? &pools[index] : nullptr;
}

// The smallest class that holds `bytes`; a size equal to a bound belongs to the smaller class.
Storage storageFor(int64_t bytes) {
    if (bytes <= int64_t{inlineBytes})
        return Storage::inlined;
    for (const Storage storage : {Storage::pool2K, Storage::pool4K, Storage::pool16K, Storage::pool64K})
        if (bytes <= poolOf(storage)->bufferSize())
            return storage;
    return Storage::heap;
}

// The bytes that an image of a class accounts for. On purpose: the 16K pool accounts for none.
int32_t memSizeFor(Storage storage, int64_t bytes) {
    switch (storage) {
    case Storage::inlined:
        return inlineBytes;
    case Storage::pool16K:
    case Storage::external:
        return 0;
    case Storage::heap:
        return static_cast<int32_t>(bytes);
    default:
        return static_cast<int32_t>(poolOf(storage)->bufferSize());
    }
}

// Where the pixels of a new image go, and what it accounts for.
struct Placement {
    Storage storage;
    int32_t memSize;
};

Placement pooledPlacement(int64_t bytes) {
    const Storage storage = storageFor(bytes);
    return {storage, memSizeFor(storage, bytes)};
}

Placement lendingPlacement(int64_t bytes) {
    if (bytes <= int64_t{inlineBytes})
        return {Storage::inlined, 0};
    return {Storage::heap, static_cast<int32_t>(bytes)};
}

// Bytes from one pixel to the next in storage, by the whole type argument.
int64_t pixelStride(int32_t type) {
    switch (type) {
    case kLxPixelA:
        return 1;
    case kLxPixelRGB:
        return 3;
    default:
        return 4;
    }
}

struct Extent {
    int64_t width, height;
    explicit Extent(const LxRectL &rect)
        : width(int64_t{rect.x1} - rect.x0), height(int64_t{rect.y1} - rect.y0) {}
    bool isEmpty() const { return width < 1 || height < 1; }
};

bool fitsInt32(int64_t value) {
    return value >= std::numeric_limits<int32_t>::min() && value <= std::numeric_limits<int32_t>::max();
}

// A zeroed record with its mutex, or null.
LxImage *allocateRecord() {
    auto *image = static_cast<LxImage *>(LxMem_calloc(1, sizeof(LxImage)));
    if (image == nullptr)
        return nullptr;
    image->lock = static_cast<LxMutex *>(LxMem_calloc(1, sizeof(LxMutex)));
    if (image->lock == nullptr) {
        LxMem_free(image);
        return nullptr;
    }
    LxMutex_Init(image->lock, 1);
    return image;
}

void releaseRecord(LxImage *image) {
    LxMem_free(image->lock);
    LxMem_free(image);
}

// Gives the image pixels of its own; false if memory is short.
bool allocatePixels(LxImage &image, Storage storage, int64_t bytes, bool clear) {
    image.storage = static_cast<uint32_t>(storage);
    if (storage == Storage::inlined)
        return true; // zero with the record
    if (BufferPool *pool = poolOf(storage)) {
        image.pixels = pool->take(clear);
        return image.pixels != nullptr;
    }
    image.pixels = static_cast<uint8_t *>(LxMem_malloc(static_cast<uint32_t>(bytes)));
    if (image.pixels != nullptr && clear)
        std::memset(image.pixels, 0, static_cast<size_t>(bytes));
    return image.pixels != nullptr;
}

void releasePixels(LxImage &image) {
    const auto storage = static_cast<Storage>(image.storage);
    if (BufferPool *pool = poolOf(storage))
        pool->give(image.pixels);
    else if (storage == Storage::heap)
        LxMem_free(image.pixels);
}

// Writes what the two creators have in common, and counts the image.
void finish(LxImage &image, int32_t type, const LxRectL &rect, int32_t rowBytes, bool empty, bool flipped) {
    image.type = static_cast<uint32_t>(type) & 7;
    image.empty = empty;
    image.flipped = flipped;
    image.rect = rect;
    image.rowBytes = rowBytes;
    ImageStatistics &counters = statistics[image.storage];
    ++counters.images;
    counters.bytes += static_cast<uint64_t>(image.memSize);
}

// An image with pixels of its own, placed by their number of bytes.
LxImage *createPlaced(int32_t type, const LxRectL &rect, Placement (*place)(int64_t bytes), bool empty,
                      bool clear, bool flipped) {
    const Extent extent(rect);
    if (extent.isEmpty())
        return nullptr;
    const int64_t rowBytes = (pixelStride(type) * extent.width + 3) & ~int64_t{3};
    if (!fitsInt32(rowBytes) || !fitsInt32(rowBytes * extent.height))
        return nullptr;
    const int64_t bytes = rowBytes * extent.height;

    LxImage *image = allocateRecord();
    if (image == nullptr)
        return nullptr;
    const Placement placement = place(bytes);
    if (!allocatePixels(*image, placement.storage, bytes, clear)) {
        releaseRecord(image);
        return nullptr;
    }
    image->memSize = placement.memSize;
    finish(*image, type, rect, static_cast<int32_t>(rowBytes), empty, flipped);
    return image;
}

const bool registered = (registerModule(Module::images, {nullptr,
                                                         [] {
                                                             for (BufferPool &pool : pools)
                                                                 pool.drain();
                                                         }}),
                         true);

} // namespace

LxImage *createImage(int32_t type, LxRectL rect, bool clear, bool flipped) {
    return createPlaced(type, rect, pooledPlacement, true, clear, flipped);
}

LxImage *createLendingImage(int32_t type, LxRectL rect, bool empty, bool clear, bool flipped) {
    return createPlaced(type, rect, lendingPlacement, empty, clear, flipped);
}

void registerNativeRelease(NativeRelease release) {
    releaseNative = release;
}

void registerImageContexts(ImageContextFunctions functions) {
    contexts = functions;
}

ImageStatistics imageStatistics(Storage storage) {
    return statistics[static_cast<size_t>(storage)];
}

} // namespace lx

using namespace lx;

LxImage *LxImage_Create(int32_t type, int32_t x, int32_t y, int32_t maxX, int32_t maxY, int32_t clear,
                        int32_t flipped) {
    return createImage(type, {x, y, maxX, maxY}, clear != 0, (flipped & 1) != 0);
}

LxImage *LxImage_CreateEx(int32_t type, int32_t x, int32_t y, int32_t maxX, int32_t maxY, void *data,
                          int32_t rowBytes, int32_t empty, int32_t clear, int32_t flipped) {
    LxImage *image = allocateRecord();
    if (image == nullptr)
        return nullptr;
    const LxRectL rect = {x, y, maxX, maxY};
    const Extent extent(rect);
    // On purpose: a bad rectangle is found only now, and the record made for it is never released.
    if (extent.isEmpty() || !fitsInt32(pixelStride(type) * extent.width) ||
        !fitsInt32(int64_t{rowBytes} * extent.height))
        return nullptr;
    const int64_t bytes = rowBytes * extent.height;
    image->storage = static_cast<uint32_t>(Storage::external);
    image->pixels = static_cast<uint8_t *>(data);
    if (clear != 0 && data != nullptr && bytes > 0)
        std::memset(data, 0, static_cast<size_t>(bytes));
    finish(*image, type, rect, rowBytes, (empty & 1) != 0, (flipped & 1) != 0);
    return image;
}

void LxImage_Delete(LxImage *image) {
    if (image == nullptr)
        return;
    LxMutex *lock = image->lock;
    LxMutex_Lock(lock);
    if (image->native == kLxNativeCGImage && releaseNative != nullptr)
        releaseNative(*image);
    releasePixels(*image);
    if (image->gc != nullptr)
        contexts.remove(image->gc);
    LxMem_free(image);
    LxMutex_Unlock(lock);
    LxMem_free(lock);
}

void LxImage_Lock(LxImage *image) {
    if (image != nullptr)
        LxMutex_Lock(image->lock);
}

void LxImage_Unlock(LxImage *image) {
    if (image != nullptr)
        LxMutex_Unlock(image->lock);
}

LxGC *LxImage_GC(LxImage *image) {
    if (image == nullptr)
        return nullptr;
    if (image->gc == nullptr && contexts.create != nullptr)
        image->gc = contexts.create(image, LxImage_RectD(image));
    return image->gc;
}
