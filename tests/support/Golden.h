// Golden pictures: PNG files under tests/golden that a test's pictures must equal byte for byte.
//
// A new picture is written to the place that the failure names, to be looked at and, if right, copied into
// the tree.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include <oxlume/LxImage.h>

#include "tests/support/ImageHandle.h"
#include "tools/Failure.h"
#include "tools/PngFile.h"

namespace lx::test {

// Expected, actual and difference side by side, on a mismatch.
inline ImageHandle sideBySide(const LxImage *expected, const LxImage *actual) {
    const int32_t width = std::max(LxImage_w(expected), LxImage_w(actual));
    const int32_t height = std::max(LxImage_h(expected), LxImage_h(actual));
    ImageHandle all = makeImage(kLxPixelRGB, 3 * width, height);
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const auto *e = static_cast<const uint8_t *>(LxImage_ConstPointer(expected, x, y));
            const auto *a = static_cast<const uint8_t *>(LxImage_ConstPointer(actual, x, y));
            const auto bytes = [&](const LxImage *image) { return LxImage_BytesPerPixel(image); };
            for (int32_t c = 0; c < 3; ++c) {
                const auto put = [&](int32_t column, uint8_t value) {
                    static_cast<uint8_t *>(LxImage_Pointer(all.get(), column * width + x, y))[c] = value;
                };
                const uint8_t ev = e != nullptr ? e[c < bytes(expected) ? c : 0] : 0;
                const uint8_t av = a != nullptr ? a[c < bytes(actual) ? c : 0] : 0;
                put(0, ev);
                put(1, av);
                put(2, ev == av ? 0 : 255);
            }
        }
    }
    return all;
}

inline bool samePictures(const LxImage *a, const LxImage *b) {
    if (LxImage_Type(a) != LxImage_Type(b) || LxImage_w(a) != LxImage_w(b) || LxImage_h(a) != LxImage_h(b))
        return false;
    const auto rowBytes = static_cast<ptrdiff_t>(LxImage_w(a)) * LxImage_BytesPerPixel(a);
    for (int32_t y = 0; y < LxImage_h(a); ++y) {
        const auto *rowA = static_cast<const uint8_t *>(LxImage_ConstPointer(a, 0, y));
        const auto *rowB = static_cast<const uint8_t *>(LxImage_ConstPointer(b, 0, y));
        if (!std::equal(rowA, rowA + rowBytes, rowB))
            return false;
    }
    return true;
}

// `name` is the file's path under tests/golden, without its ending.
inline void expectGolden(const ImageHandle &actual, const std::string &name) {
    const std::filesystem::path golden = std::filesystem::path(OXLUME_GOLDEN) / (name + ".png");
    const std::filesystem::path output = std::filesystem::path(OXLUME_GOLDEN_OUTPUT) / name;
    std::filesystem::create_directories(output.parent_path());
    const std::string actualFile = output.string() + ".png";
    try {
        const tool::ImageHandle expected = tool::readPng(golden.string());
        if (samePictures(expected.get(), actual.get()))
            return;
        const std::string comparison = output.string() + "-comparison.png";
        tool::writePng(comparison, *sideBySide(expected.get(), actual.get()));
        tool::writePng(actualFile, *actual);
        ADD_FAILURE() << name << " differs: see " << actualFile << " and " << comparison;
    } catch (const tool::Failure &failure) {
        tool::writePng(actualFile, *actual);
        ADD_FAILURE() << failure.what() << "; the picture is in " << actualFile;
    }
}

} // namespace lx::test
