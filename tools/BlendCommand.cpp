// `oxlume blend DST.png SRC.png -o OUT.png`: one picture laid over another, as it is, as a frame that its
// marker pixels cut into pieces, or one of the tiles that they cut it into.

#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include <oxlume/LxBlend.h>

#include "geometry/Rect.h"
#include "image/Image.h"
#include "tools/BlendNames.h"
#include "tools/Commands.h"
#include "tools/PngFile.h"
#include "tools/Progress.h"

namespace tool {
namespace {

ImageHandle readMask(const std::string &path) {
    ImageHandle mask = readPng(path);
    if (LxImage_Type(mask.get()) != kLxPixelA)
        throw Failure(path + ": a mask is a grey picture, and this one has colours or transparency");
    return mask;
}

LxRectL frameOf(const BlendArguments &arguments, LxImage &source) {
    const LxRectL frame = {arguments.frame[0], arguments.frame[1], arguments.frame[2], arguments.frame[3]};
    if (lx::isEmpty(frame))
        throw Failure("--frame: X0,Y0 is the corner above and left of X1,Y1");
    LxImage_ReadSegmentMarks(&source);
    if (LxImage_isSegmented(&source) == 0)
        throw Failure(arguments.source + ": no marker pixels cut it into the pieces of a frame");
    return frame;
}

ImageHandle tileOf(const BlendArguments &arguments, LxImage &source) {
    LxImage_ReadSegmentMarks(&source);
    if (LxImage_isTiled(&source) == 0)
        throw Failure(arguments.source + ": no marker pixels cut it into tiles");
    int32_t columns, rows;
    LxImage_TileNum(&source, &columns, &rows);
    const int32_t column = arguments.tile[0], row = arguments.tile[1];
    if (column < 0 || row < 0 || column >= columns || row >= rows)
        throw Failure("--tile: " + arguments.source + " has " + std::to_string(columns) + " by " +
                      std::to_string(rows) + " tiles, counted from 0,0");
    LxImage_SetTile(&source, column, row);
    const LxRectL rect =
        lx::cut(LxImage_TileRectL(&source), LxRectL{0, 0, lx::width(source), lx::height(source)});
    if (lx::isEmpty(rect))
        throw Failure(arguments.source + ": its tiles have no pixels");
    ImageHandle tile(LxImage_Create(LxImage_Type(&source), 0, 0, rect.x1 - rect.x0, rect.y1 - rect.y0, 1, 0));
    if (tile == nullptr)
        throw Failure(arguments.source + ": no memory for a tile");
    const int32_t step = LxImage_BytesPerPixel(&source);
    for (int32_t y = rect.y0; y < rect.y1; ++y)
        std::memcpy(lx::rowAddress(*tile, y - rect.y0), lx::rowAddress(source, y) + rect.x0 * step,
                    static_cast<size_t>(rect.x1 - rect.x0) * static_cast<size_t>(step));
    return tile;
}

} // namespace

void blend(const BlendArguments &arguments) {
    LxBlend how =
        LxBlend_WithChannel(modeNamed(arguments.mode), arguments.opacity, channelNamed(arguments.channel));
    const ImageHandle destination = readPng(arguments.destination);
    ImageHandle source = readPng(arguments.source);
    const ImageHandle mask = arguments.mask.empty() ? nullptr : readMask(arguments.mask);
    std::optional<LxRectL> frame;
    if (!arguments.frame.empty())
        frame = frameOf(arguments, *source);
    else if (!arguments.tile.empty())
        source = tileOf(arguments, *source);
    // A frame goes where its area says.
    const LxPointL at = frame ? LxPointL{frame->x0, frame->y0} : LxPointL{arguments.at[0], arguments.at[1]};
    for (LxImage *image : {source.get(), mask.get()})
        LxImage_MoveTo(image, at.x, at.y);
    {
        const Progress progress("blending", 0);
        LxBlend_Image_Image(&how, destination.get(), source.get(), mask.get(), frame ? &*frame : nullptr);
    }
    writePng(arguments.out, *destination);
}

} // namespace tool
