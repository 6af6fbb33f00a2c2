// The commands of draw scripts: what each is called, which arguments it takes, and what it does.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <oxlume/LxGC.h>
#include <oxlume/LxGradient.h>

#include "tools/Canvas.h"
#include "tools/ImageHandle.h"

namespace tool {

// Answers the image of a file that a script names, or throws a Failure.
using ImageLoader = std::function<ImageHandle(const std::string &file)>;

struct DeleteGradient {
    void operator()(LxGradient *gradient) const { LxGradient_Delete(gradient); }
};

// A drawing under way: the picture, and what the script has named.
class Drawing {
public:
    explicit Drawing(ImageLoader load, CanvasMaker makeCanvas = makeSoftwareCanvas)
        : load_(std::move(load)), makeCanvas_(makeCanvas) {}

    // Begins a transparent picture.
    void begin(int32_t width, int32_t height) { canvas_ = makeCanvas_(width, height); }
    LxGC *context() const { return canvas_->context(); }
    ImageHandle finish() { return canvas_->finish(); }

    // The gradient of that name, made where there is none yet.
    LxGradient *makeGradient(const std::string &name);
    // The gradient of that name, or null for "none". Throws a Failure if there is no such gradient.
    LxGradient *gradient(const std::string &name) const;

    // The image in that file, loaded once.
    LxImage *image(const std::string &file);
    // The same, which must be a grey one. Masks lie at the origin of the picture, wherever the image goes.
    LxImage *mask(const std::string &file);

private:
    ImageLoader load_;
    CanvasMaker makeCanvas_;
    std::map<std::string, std::unique_ptr<LxGradient, DeleteGradient>> gradients_;
    std::map<std::string, ImageHandle> images_;
    int64_t pixels_ = 0;             // of all images
    std::unique_ptr<Canvas> canvas_; // deleted first, with the context that refers to the rest
};

// A command's arguments: its numbers and its texts, each in the order of the line.
struct DrawValues {
    std::vector<double> numbers;
    std::vector<std::string> texts;
};

// A command: its name, a word for each argument (wordKinds in DrawScript.cpp tells what they stand for), with
// those behind a ? left out or given together, and what it does.
struct DrawForm {
    std::string_view name;
    std::string_view words;
    void (*draw)(Drawing &drawing, const DrawValues &values);
};

std::span<const DrawForm> drawForms();

} // namespace tool
