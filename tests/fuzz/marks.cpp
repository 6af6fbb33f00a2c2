// Pictures with any marker pixels: the scan, and all that reads what it stored.
//
// Input: type, width, height, flipped, row padding, then pixels, one bit for each that says whether it is a
// marker.

#include <cstring>
#include <vector>

#include "image/Image.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 5)
        return 0;
    const int32_t type = data[0] % 8;
    const int32_t width = data[1] % 64 + 1;
    const int32_t height = data[2] % 64 + 1;
    const int32_t rowBytes = width * 4 + data[4] % 8;
    std::vector<uint8_t> pixels(static_cast<size_t>(rowBytes) * static_cast<size_t>(height));
    const size_t pixelBytes = type == kLxPixelRGB ? 3 : 4;
    for (size_t i = 0; i < (size - 5) * 8 && i < static_cast<size_t>(width * height); ++i)
        if ((data[5 + i / 8] >> (i % 8) & 1) != 0)
            std::memcpy(&pixels[i / static_cast<size_t>(width) * static_cast<size_t>(rowBytes) +
                                i % static_cast<size_t>(width) * pixelBytes],
                        "\x00\xFF\xFF\xFF", pixelBytes);
    LxImage *image = LxImage_CreateEx(type, 0, 0, width, height, pixels.data(), rowBytes, 0, 0, data[3] & 1);
    LxImage_ReadSegmentMarks(image);
    int32_t v[9];
    LxImage_SegmentW(image, &v[0], &v[1], &v[2]);
    LxImage_SegmentH(image, &v[0], &v[1], &v[2]);
    LxImage_SegmentX(image, &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7], &v[8]);
    LxImage_SegmentY(image, &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7], &v[8]);
    LxImage_SetTile(image, data[1], data[2]);
    LxImage_TileRectL(image);
    if (LxImage_isTiled(image) != 0 && LxImage_isSegmented(image) != 0)
        __builtin_trap(); // a picture is one or the other
    LxImage_Delete(image);
    return 0;
}
