#include "tools/RendererOption.h"

#include <map>
#include <string>

namespace tool {

void addRendererOption(CLI::App &command, CanvasMaker &makeCanvas) {
    static const std::map<std::string, CanvasMaker> makers = {
        {"software", makeSoftwareCanvas}, {"quartz", makeQuartzCanvas}, {"opengl", makeOpenGLCanvas}};
    command
        .add_option_function<std::string>(
            "--renderer", [&makeCanvas](const std::string &name) { makeCanvas = makers.at(name); },
            "What draws: software, quartz or opengl")
        ->check(CLI::IsMember({"software", "quartz", "opengl"}))
        ->default_str("software");
}

} // namespace tool
