// `oxlume blend DST.png SRC.png -o OUT.png`: one picture laid over another, as it is, as a frame that its
// marker pixels cut into pieces, or one of the tiles that they cut it into.

#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <oxlume/LxBlend.h>

#include "geometry/Rect.h"
#include "image/Image.h"
#include "tools/BlendNames.h"
#include "tools/Command.h"
#include "tools/PngFile.h"
#include "tools/Progress.h"

namespace tool {
namespace {

struct Arguments {
    std::string destination, source, out, mask;
    std::string mode = "SrcOver", channel = "rgba";
    int opacity = 255;
    std::vector<int32_t> at = {0, 0};
    std::vector<int32_t> frame, tile; // empty where SRC is laid as it is
};

ImageHandle readMask(const std::string &path) {
    ImageHandle mask = readPng(path);
    if (LxImage_Type(mask.get()) != kLxPixelA)
        throw Failure(path + ": a mask is a grey picture, and this one has colours or transparency");
    return mask;
}

LxRectL frameOf(const Arguments &arguments, LxImage &source) {
    const LxRectL frame = {arguments.frame[0], arguments.frame[1], arguments.frame[2], arguments.frame[3]};
    if (lx::isEmpty(frame))
        throw Failure("--frame: X0,Y0 is the corner above and left of X1,Y1");
    LxImage_ReadSegmentMarks(&source);
    if (LxImage_isSegmented(&source) == 0)
        throw Failure(arguments.source + ": no marker pixels cut it into the pieces of a frame");
    return frame;
}

ImageHandle tileOf(const Arguments &arguments, LxImage &source) {
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

void blend(const Arguments &arguments) {
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

} // namespace

void addBlendCommand(CLI::App &program) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *command = program.add_subcommand("blend", "Lay one picture over another");
    command->add_option("DST", arguments->destination, "PNG file that is laid on")->required();
    command->add_option("SRC", arguments->source, "PNG file to lay over it")->required();
    command->add_option("-o,--out", arguments->out, "PNG file to write")->required();
    command->add_option("--mode", arguments->mode, "Blend mode, as `oxlume modes --list` names them")
        ->capture_default_str();
    command->add_option("--opacity", arguments->opacity, "0 to 255")
        ->capture_default_str()
        ->check(CLI::Range(0, 255));
    command->add_option("--channel", arguments->channel, "red, green, blue, alpha, rgb or rgba")
        ->capture_default_str();
    command->add_option("--mask", arguments->mask, "Grey PNG file that lies on SRC and gates it");
    CLI::Option *const at = command->add_option("--at", arguments->at, "Where SRC goes in DST, as X,Y")
                                ->delimiter(',')
                                ->expected(2)
                                ->capture_default_str();
    CLI::Option *const frame =
        command
            ->add_option("--frame", arguments->frame,
                         "Stretch SRC, cut into pieces by its marker pixels, over X0,Y0,X1,Y1 of DST")
            ->delimiter(',')
            ->expected(4);
    command
        ->add_option("--tile", arguments->tile,
                     "Lay the tile X,Y, from 0,0, of those that SRC's marker pixels cut it into")
        ->delimiter(',')
        ->expected(2)
        ->excludes(frame);
    frame->excludes(at);
    command->callback([arguments] { blend(*arguments); });
}

} // namespace tool
