#include "gc/renderers/OpenGLImages.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include <GL/gl.h>

#include "image/Image.h"

namespace lx {
namespace {

struct PixelFormat {
    GLenum format;
    GLenum type;
    int64_t bytes; // of a pixel, as OpenGL reads it and as rows are sized
};

// By pixel type; the numbers 6 and 7 have none.
constexpr PixelFormat pixelFormats[] = {
    {GL_LUMINANCE, GL_UNSIGNED_BYTE, 1}, // A
    {GL_RGB, GL_UNSIGNED_BYTE, 3},       // RGB
    {GL_RGBA, GL_UNSIGNED_BYTE, 4},      // RGBA
    {GL_RGBA, GL_UNSIGNED_BYTE, 4},      // RGBA premultiplied
    {GL_LUMINANCE, GL_FLOAT, 4},         // F
    {GL_LUMINANCE, GL_INT, 4},           // L
};

// Bytes from a pixel of the image to the end of its memory.
int64_t bytesBehind(const LxImage &image, const void *pixel, int64_t pixelBytes) {
    const int64_t row = width(image) * pixelBytes;
    const int64_t rowBytes = image.rowBytes;
    const int64_t end = rowBytes > 0 ? (height(image) - 1) * rowBytes + std::min(row, rowBytes) : row;
    return end - (static_cast<const uint8_t *>(pixel) - firstRow(image));
}

int64_t unpackState(GLenum name, GLint initial) {
    GLint value = initial;
    glGetIntegerv(name, &value);
    return value;
}

// How many rows of so many pixels OpenGL can read from so many bytes.
int64_t readableRows(int64_t bytes, int64_t width, int64_t pixelBytes) {
    const int64_t alignment = unpackState(GL_UNPACK_ALIGNMENT, 4);
    const int64_t rowLength = unpackState(GL_UNPACK_ROW_LENGTH, 0);
    const int64_t skippedPixels = unpackState(GL_UNPACK_SKIP_PIXELS, 0);
    const int64_t skippedRows = unpackState(GL_UNPACK_SKIP_ROWS, 0);
    const int64_t rowPixels = rowLength > 0 ? rowLength : width;
    const int64_t stride = (rowPixels * pixelBytes + alignment - 1) / alignment * alignment;
    const int64_t lastRow = (skippedPixels + width) * pixelBytes;
    return bytes < lastRow ? 0 : (bytes - lastRow) / stride + 1 - skippedRows;
}

} // namespace

void drawPixels(const LxImage &image, int32_t width, int32_t height) {
    const void *pixels = LxImage_ConstPointer(&image, 0, 0);
    if (image.type >= std::size(pixelFormats) || pixels == nullptr || width < 1 || height < 1)
        return;
    const PixelFormat &format = pixelFormats[image.type];
    // On purpose: the rows lie forward in memory from the first pixel on. That is the last stored row in a
    // flipped image, which so shows only this one.
    const int64_t rows = std::min<int64_t>(
        height, readableRows(bytesBehind(image, pixels, format.bytes), width, format.bytes));
    if (rows > 0)
        glDrawPixels(width, static_cast<GLsizei>(rows), format.format, format.type, pixels);
}

} // namespace lx
