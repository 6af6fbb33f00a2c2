#include "platform/quartz/QuartzImage.h"

#include <algorithm>
#include <vector>

#include "tests/platform/quartz/Canvas.h"

using namespace lx;
using namespace lx::test;

namespace {

// A provider over bytes of its own, which it gives up with the last reference.
CGDataProviderRef providerOf(const std::vector<uint8_t> &bytes) {
    auto *copy = new std::vector<uint8_t>(bytes);
    return CGDataProviderCreateWithData(
        copy, copy->data(), copy->size(),
        [](void *info, const void *, size_t) { delete static_cast<std::vector<uint8_t> *>(info); });
}

CGImageHandle imageOf(size_t width, size_t height, size_t bits, const std::vector<uint8_t> &bytes,
                      int32_t alphaInfo = kCGImageAlphaNone) {
    const CGDataProviderRef provider = providerOf(bytes);
    CGImageHandle image(CGImageCreate(width, height, 8, bits, width * bits / 8, CGColorSpaceCreateDeviceRGB(),
                                      alphaInfo, provider, nullptr, 0, 0));
    CGDataProviderRelease(provider);
    return image;
}

CGImageHandle maskOf(size_t width, size_t height, const std::vector<uint8_t> &bytes) {
    const CGDataProviderRef provider = providerOf(bytes);
    CGImageHandle image(CGImageMaskCreate(width, height, 8, 8, width, provider, nullptr, 0));
    CGDataProviderRelease(provider);
    return image;
}

} // namespace

TEST(CGDataProvider, TellsItsReleaseOnce) {
    static int released;
    static const void *releasedData;
    static size_t releasedSize;
    released = 0;
    int info = 0;
    const uint8_t data[4] = {};
    const CGDataProviderRef provider =
        CGDataProviderCreateWithData(&info, data, sizeof data, [](void *info, const void *data, size_t size) {
            ++released;
            ++*static_cast<int *>(info);
            releasedData = data;
            releasedSize = size;
        });
    const CGImageRef image = CGImageCreate(1, 1, 8, 32, 4, CGColorSpaceCreateDeviceRGB(), kCGImageAlphaLast,
                                           provider, nullptr, 0, 0);
    CGDataProviderRelease(provider);
    EXPECT_EQ(released, 0) << "the image needs it";
    EXPECT_EQ(CGImageRetain(image), image);
    CGImageRelease(image);
    EXPECT_EQ(released, 0);
    CGImageRelease(image);
    EXPECT_EQ(released, 1);
    EXPECT_EQ(info, 1);
    EXPECT_EQ(releasedData, data);
    EXPECT_EQ(releasedSize, 4u);
}

TEST(CGDataProvider, IsNullForNullData) {
    EXPECT_EQ(CGDataProviderCreateWithData(nullptr, nullptr, 10, nullptr), nullptr);
    CGDataProviderRelease(nullptr);
}

TEST(CGColorSpace, IsOneOfTwo) {
    EXPECT_NE(CGColorSpaceCreateDeviceRGB(), nullptr);
    EXPECT_NE(CGColorSpaceCreateDeviceGray(), nullptr);
    CGColorSpaceRelease(CGColorSpaceCreateDeviceRGB());
    CGColorSpaceRelease(nullptr);
}

TEST(CGImageCreate, RefusesFormsThatItDoesNotKnow) {
    const CGDataProviderRef provider = providerOf(std::vector<uint8_t>(64));
    const CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
    const auto create = [&](size_t w, size_t h, size_t component, size_t pixel, size_t row, int32_t alpha) {
        return CGImageHandle(
            CGImageCreate(w, h, component, pixel, row, space, alpha, provider, nullptr, 0, 0));
    };
    EXPECT_NE(create(2, 2, 8, 32, 8, 6), nullptr);
    EXPECT_EQ(create(0, 2, 8, 32, 8, 0), nullptr);
    EXPECT_EQ(create(2, 0, 8, 32, 8, 0), nullptr);
    EXPECT_EQ(create(32768, 1, 8, 32, 200000, 0), nullptr);
    EXPECT_EQ(create(1, SIZE_MAX, 8, 32, 8, 0), nullptr);
    EXPECT_EQ(create(2, 2, 16, 32, 8, 0), nullptr);
    EXPECT_EQ(create(2, 2, 8, 16, 8, 0), nullptr);
    EXPECT_EQ(create(2, 2, 8, 32, 7, 0), nullptr);
    EXPECT_EQ(create(2, 2, 8, 32, 8, 7), nullptr);
    EXPECT_EQ(create(2, 2, 8, 32, 8, -1), nullptr);
    const float decode[2] = {0, 1};
    EXPECT_EQ(CGImageCreate(2, 2, 8, 32, 8, nullptr, 0, provider, nullptr, 0, 0), nullptr);
    EXPECT_EQ(CGImageCreate(2, 2, 8, 32, 8, space, 0, nullptr, nullptr, 0, 0), nullptr);
    EXPECT_EQ(CGImageCreate(2, 2, 8, 32, 8, space, 0, provider, decode, 0, 0), nullptr);
    EXPECT_EQ(CGImageMaskCreate(2, 2, 8, 8, 2, nullptr, nullptr, 0), nullptr);
    EXPECT_EQ(CGImageMaskCreate(2, 2, 8, 8, 2, provider, decode, 0), nullptr);
    CGDataProviderRelease(provider);
}

TEST(CGImageCreate, ReportsItsForm) {
    const CGImageHandle image = imageOf(3, 2, 24, std::vector<uint8_t>(18));
    EXPECT_EQ(CGImageGetWidth(image.get()), 3u);
    EXPECT_EQ(CGImageGetHeight(image.get()), 2u);
    EXPECT_EQ(CGImageGetBitsPerPixel(image.get()), 24u);
    EXPECT_EQ(CGImageGetBytesPerRow(image.get()), 9u);
    EXPECT_EQ(CGImageGetAlphaInfo(image.get()), kCGImageAlphaNone);
    EXPECT_EQ(CGImageIsMask(image.get()), 0);
    EXPECT_EQ(CGImageIsMask(maskOf(1, 1, {0}).get()), 1);
    EXPECT_EQ(CGImageGetWidth(nullptr), 0u);
    EXPECT_EQ(CGImageGetHeight(nullptr), 0u);
    EXPECT_EQ(CGImageGetBitsPerPixel(nullptr), 0u);
    EXPECT_EQ(CGImageGetBytesPerRow(nullptr), 0u);
    EXPECT_EQ(CGImageGetAlphaInfo(nullptr), 0);
    EXPECT_EQ(CGImageIsMask(nullptr), 0);
    EXPECT_EQ(CGImageRetain(nullptr), nullptr);
    CGImageRelease(nullptr);
}

TEST(CGContextDrawImage, ReadsEveryLayout) {
    const struct {
        size_t bits;
        int32_t alphaInfo;
        std::vector<uint8_t> bytes;
        Pixel expected; // on a clear target
    } cases[] = {
        {8, kCGImageAlphaNone, {70}, {70, 70, 70, 255}},
        {8, kCGImageAlphaFirst, {70}, {70, 70, 70, 255}},
        {24, kCGImageAlphaNone, {10, 20, 30}, {10, 20, 30, 255}},
        {24, kCGImageAlphaFirst, {10, 20, 30}, {10, 20, 30, 255}},
        {32, kCGImageAlphaNone, {10, 20, 30, 40}, {10, 20, 30, 255}},
        {32, kCGImageAlphaNoneSkipLast, {10, 20, 30, 40}, {10, 20, 30, 255}},
        {32, kCGImageAlphaNoneSkipFirst, {10, 20, 30, 40}, {20, 30, 40, 255}},
        // 100 * 51 / 255 = 20, 200 * 51 / 255 = 40, 255 * 51 / 255 = 51
        {32, kCGImageAlphaLast, {100, 200, 255, 51}, {20, 40, 51, 51}},
        {32, kCGImageAlphaFirst, {51, 100, 200, 255}, {20, 40, 51, 51}},
        {32, kCGImageAlphaPremultipliedLast, {20, 40, 51, 51}, {20, 40, 51, 51}},
        {32, kCGImageAlphaPremultipliedFirst, {51, 20, 40, 51}, {20, 40, 51, 51}},
        {32, kCGImageAlphaPremultipliedLast, {20, 40, 200, 51}, {20, 40, 51, 51}},
    };
    for (const auto &one : cases) {
        Canvas canvas(1, 1, nothing);
        CGContextDrawImage(canvas, {0, 0, 1, 1}, imageOf(1, 1, one.bits, one.bytes, one.alphaInfo).get());
        EXPECT_EQ(canvas.at(0, 0), one.expected) << one.bits << " bits, alpha info " << one.alphaInfo;
    }
}

TEST(CGContextDrawImage, GoesOverWhatIsThere) {
    Canvas canvas(1, 1);
    CGContextDrawImage(canvas, {0, 0, 1, 1}, imageOf(1, 1, 32, {0, 0, 0, 102}, kCGImageAlphaLast).get());
    EXPECT_TRUE(isClose(canvas.at(0, 0), {153, 153, 153, 255}, 1)) << canvas.at(0, 0); // 255 - 102
    CGContextSetAlpha(canvas, 0.5f);
    CGContextDrawImage(canvas, {0, 0, 1, 1}, imageOf(1, 1, 8, {0}).get());
    EXPECT_TRUE(isClose(canvas.at(0, 0), {76, 76, 76, 255}, 1)) << canvas.at(0, 0);
}

TEST(CGContextDrawImage, CoversTheRectangleWithItsFirstRowOnTop) {
    const std::vector<uint8_t> bytes = {255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0}; // red, green; blue, black
    for (const LxCGRect rect : {LxCGRect{1, 2, 6, 4}, {7, 6, -6, -4}}) {
        Canvas canvas(8, 8);
        CGContextSetInterpolationQuality(canvas, kCGInterpolationNone);
        CGContextDrawImage(canvas, rect, imageOf(2, 2, 24, bytes).get());
        for (int32_t y = 0; y < 8; ++y)
            for (int32_t x = 0; x < 8; ++x) {
                const bool inside = x >= 1 && x < 7 && y >= 2 && y < 6;
                const Pixel cell = y < 4 ? (x < 4 ? red : green) : (x < 4 ? blue : black);
                EXPECT_EQ(canvas.at(x, y), inside ? cell : white) << x << ", " << y;
            }
    }
}

TEST(CGContextDrawImage, ShrinksFarFromTheOrigin) {
    // At 40 pixels of the picture a pixel, the target's origin lies 80,000 pixels of the picture away.
    std::vector<uint8_t> bytes(4000, 0);
    std::fill(bytes.begin(), bytes.begin() + 2000, 200);
    Canvas canvas(2200, 1);
    CGContextSetInterpolationQuality(canvas, kCGInterpolationNone);
    CGContextDrawImage(canvas, {2000, 0, 100, 1}, imageOf(4000, 1, 8, bytes).get());
    for (int32_t x = 0; x < 2200; ++x) {
        const uint8_t expected = x < 2000 || x >= 2100 ? 255 : x < 2050 ? 200 : 0;
        ASSERT_EQ(canvas.at(x, 0).r, expected) << x;
    }
}

TEST(CGContextDrawImage, ReachesFarBeyondTheTarget) {
    Canvas canvas(4, 4);
    CGContextDrawImage(canvas, {-1000000, 0, 2000000, 4},
                       imageOf(128, 1, 8, std::vector<uint8_t>(128)).get());
    canvas.expectAll(black);
    CGContextDrawImage(canvas, {-3000000, 0, 6000000, 4}, imageOf(1, 1, 8, {255}).get()); // cannot be held
    canvas.expectAll(black);
}

TEST(CGContextDrawImage, StandsUprightWhereYGrowsUp) {
    const SurfaceHandle surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 1, 4));
    const QuartzHandle context(LxQuartz_CreateWithSurfaceYUp(surface.get(), 4));
    CGContextDrawImage(context.get(), {0, 1, 1, 2}, imageOf(1, 2, 8, {10, 20}).get());
    CGContextFlush(context.get());
    const uint8_t *data = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    const uint8_t expected[4] = {0, 10, 20, 0};
    for (int y = 0; y < 4; ++y)
        EXPECT_EQ(data[y * stride], expected[y]) << y;
}

TEST(CGContextDrawImage, SmoothsOnlyWhereAskedTo) {
    for (const int32_t quality :
         {kCGInterpolationDefault, kCGInterpolationNone, kCGInterpolationLow, kCGInterpolationHigh}) {
        Canvas canvas(8, 1);
        CGContextSetInterpolationQuality(canvas, quality);
        CGContextDrawImage(canvas, {0, 0, 8, 1}, imageOf(2, 1, 8, {0, 255}).get());
        const bool smooth = quality >= kCGInterpolationLow;
        const uint8_t middle = canvas.at(3, 0).r;
        EXPECT_EQ(middle != 0 && middle != 255, smooth) << quality;
        EXPECT_EQ(canvas.at(0, 0).r, 0);
        EXPECT_EQ(canvas.at(7, 0).r, 255);
    }
}

TEST(CGContextDrawImage, AMaskLetsTheFillColourThroughWhereItIsZero) {
    Canvas canvas(3, 1);
    CGContextSetRGBFillColor(canvas, 1, 0, 0, 1);
    CGContextDrawImage(canvas, {0, 0, 3, 1}, maskOf(3, 1, {0, 255, 153}).get());
    EXPECT_EQ(canvas.at(0, 0), red);
    EXPECT_EQ(canvas.at(1, 0), white);
    EXPECT_TRUE(isClose(canvas.at(2, 0), {255, 153, 153, 255}, 1)) << canvas.at(2, 0); // covered by 102 / 255
}

TEST(CGContextDrawImage, ShowsMemoryAsItIsThen) {
    uint8_t grey = 10;
    const CGDataProviderRef provider = CGDataProviderCreateWithData(nullptr, &grey, 1, nullptr);
    const CGImageHandle image(
        CGImageCreate(1, 1, 8, 8, 1, CGColorSpaceCreateDeviceGray(), 0, provider, nullptr, 0, 0));
    CGDataProviderRelease(provider);
    Canvas canvas(2, 1);
    CGContextDrawImage(canvas, {0, 0, 1, 1}, image.get());
    grey = 20;
    CGContextDrawImage(canvas, {1, 0, 1, 1}, image.get());
    EXPECT_EQ(canvas.at(0, 0).r, 10);
    EXPECT_EQ(canvas.at(1, 0).r, 20);
}

TEST(CGContextDrawImage, RowsThatTheProviderLacksAreTransparent) {
    const CGDataProviderRef provider = providerOf({1, 2, 3, 4, 5}); // the second row is one byte short
    const CGImageHandle image(
        CGImageCreate(3, 3, 8, 8, 3, CGColorSpaceCreateDeviceGray(), 0, provider, nullptr, 0, 0));
    CGDataProviderRelease(provider);
    Canvas canvas(3, 3);
    CGContextDrawImage(canvas, {0, 0, 3, 3}, image.get());
    EXPECT_EQ(canvas.at(2, 0).r, 3);
    for (int32_t x = 0; x < 3; ++x) {
        EXPECT_EQ(canvas.at(x, 1), white);
        EXPECT_EQ(canvas.at(x, 2), white);
    }
}

TEST(CGContextDrawImage, KeepsThePath) {
    Canvas canvas(4, 4);
    CGContextMoveToPoint(canvas, 0, 0);
    CGContextAddLineToPoint(canvas, 2, 0);
    CGContextDrawImage(canvas, {3, 3, 1, 1}, imageOf(1, 1, 8, {0}).get());
    CGContextAddLineToPoint(canvas, 2, 2);
    CGContextAddLineToPoint(canvas, 0, 2);
    CGContextSetRGBFillColor(canvas, 0, 1, 0, 1);
    CGContextDrawPath(canvas, kCGPathFill);
    EXPECT_EQ(canvas.at(3, 3), black);
    EXPECT_EQ(canvas.at(1, 1), green);
    EXPECT_EQ(canvas.at(2, 2), white);
}

TEST(CGContextDrawImage, LeavesOtherObjectsAlone) {
    Canvas canvas(2, 2);
    const void *object[8] = {&canvas}; // as one of the platform's objects begins with its class
    CGContextDrawImage(canvas, {0, 0, 2, 2}, reinterpret_cast<CGImageRef>(object));
    CGContextDrawImage(canvas, {0, 0, 2, 2}, nullptr);
    canvas.expectAll(white);
}
