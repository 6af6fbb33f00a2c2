// `oxlume blend DST.png SRC.png -o OUT.png`: one picture laid over another.

#include <memory>
#include <string>
#include <vector>

#include <oxlume/LxBlend.h>

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
};

ImageHandle readMask(const std::string &path) {
    ImageHandle mask = readPng(path);
    if (LxImage_Type(mask.get()) != kLxPixelA)
        throw Failure(path + ": a mask is a grey picture, and this one has colours or transparency");
    return mask;
}

void blend(const Arguments &arguments) {
    LxBlend how =
        LxBlend_WithChannel(modeNamed(arguments.mode), arguments.opacity, channelNamed(arguments.channel));
    const ImageHandle destination = readPng(arguments.destination), source = readPng(arguments.source);
    const ImageHandle mask = arguments.mask.empty() ? nullptr : readMask(arguments.mask);
    for (LxImage *image : {source.get(), mask.get()})
        LxImage_MoveTo(image, arguments.at[0], arguments.at[1]);
    {
        const Progress progress("blending", 0);
        LxBlend_Image_Image(&how, destination.get(), source.get(), mask.get(), nullptr);
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
    command->add_option("--at", arguments->at, "Where SRC goes in DST, as X,Y")
        ->delimiter(',')
        ->expected(2)
        ->capture_default_str();
    command->callback([arguments] { blend(*arguments); });
}

} // namespace tool
