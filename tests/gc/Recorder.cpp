#include "tests/gc/Recorder.h"

#include <sstream>

#include <oxlume/LxMem.h>

#include "path/PathReader.h"

namespace lx::test {
namespace {

// How the arguments of slots are written.
void write(std::ostream &out, int32_t number) {
    out << number;
}
void write(std::ostream &out, double number) {
    out << number;
}
void write(std::ostream &out, const char *words) {
    out << words;
}
void write(std::ostream &out, const LxColor &color) {
    out << "color " << color.type << ":";
    for (const uint8_t byte : color.content.bytes)
        out << ' ' << int{byte};
}
void write(std::ostream &out, const LxColor *color) {
    write(out, *color);
}
void write(std::ostream &out, const LxBlend *blend) {
    out << "blend " << LxBlend_Mode(blend) << ' ' << LxBlend_Opacity(blend) << ' ' << LxBlend_Channel(blend);
}
void write(std::ostream &out, const LxRectL *rect) {
    if (rect == nullptr)
        out << "no rect";
    else
        out << "rect " << rect->x0 << ' ' << rect->y0 << ' ' << rect->x1 << ' ' << rect->y1;
}
void write(std::ostream &out, LxImage *image) {
    if (image == nullptr)
        out << "no image";
    else
        out << "image of " << LxImage_w(image) << " columns";
}
void write(std::ostream &out, const LxPath *path) {
    out << '(' << describe(path) << ')';
}
void write(std::ostream &out, const LxPointD *points) {
    out << "from " << points->x << ' ' << points->y;
}
void write(std::ostream &out, const LxMatrix &m) {
    out << "matrix";
    for (const double element : {m.m0, m.m1, m.m2, m.m3, m.m4, m.m5, m.m6, m.m7, m.m8})
        out << ' ' << element;
}

// The shortest form of numbers that keeps ten digits.
std::ostringstream makeStream() {
    std::ostringstream out;
    out.precision(10);
    return out;
}

template <class... Arguments>
void record(LxRenderer *renderer, const char *slot, const Arguments &...arguments) {
    std::ostringstream out = makeStream();
    out << slot;
    ((out << ' ', write(out, arguments)), ...);
    static_cast<Recorder *>(renderer->privateState)->calls.push_back(out.str());
}

// Puts a function into a slot that records its call under the slot's name and answers zero.
#define RECORD(renderer, slot)                                                                               \
    do {                                                                                                     \
        struct Name {                                                                                        \
            static const char *get() { return #slot; }                                                       \
        };                                                                                                   \
        install<Name>((renderer).slot);                                                                      \
    } while (false)

template <class Name, class Result, class... Arguments>
void install(Result (*&slot)(LxRenderer *, Arguments...)) {
    slot = [](LxRenderer *renderer, Arguments... arguments) {
        record(renderer, Name::get(), arguments...);
        return Result();
    };
}

bool attach(LxRenderer &renderer, void *target) {
    auto *recorder = static_cast<Recorder *>(target);
    if (recorder == nullptr || recorder->refuses)
        return false;
    renderer.privateState = recorder;
    return true;
}

bool createAll(LxRenderer &renderer, void *target) {
    if (!attach(renderer, target))
        return false;
    RECORD(renderer, pixel);
    RECORD(renderer, fill);
    RECORD(renderer, pixelColor);
    RECORD(renderer, line);
    RECORD(renderer, frame);
    RECORD(renderer, ellipse);
    RECORD(renderer, poly);
    RECORD(renderer, path);
    RECORD(renderer, sync);
    RECORD(renderer, flush);
    RECORD(renderer, resize);
    RECORD(renderer, spare);
    RECORD(renderer, setMatrix);
    RECORD(renderer, drawImage);
    RECORD(renderer, spare2);
    RECORD(renderer, drawText);
    RECORD(renderer, hLine);
    RECORD(renderer, vLine);
    RECORD(renderer, lineL);
    RECORD(renderer, frameL);
    RECORD(renderer, ellipseL);
    return true;
}

bool createBasics(LxRenderer &renderer, void *target) {
    if (!attach(renderer, target))
        return false;
    RECORD(renderer, pixel);
    RECORD(renderer, path);
    return true;
}

void remove(LxRenderer *renderer) {
    record(renderer, "delete", renderer->kind);
    LxMem_free(renderer);
}

template <char Family>
int32_t start() {
    RecordingKinds::libraryCalls.push_back(std::string("start ") + Family);
    return 1;
}

template <char Family>
void end() {
    RecordingKinds::libraryCalls.push_back(std::string("end ") + Family);
}

constexpr RendererKind recordingSoftware = {createAll, remove, start<'S'>, end<'S'>};
constexpr RendererKind all = {createAll, remove, start<'O'>, end<'O'>};
constexpr RendererKind basics = {createBasics, remove, start<'Q'>, end<'Q'>};

} // namespace

Calls RecordingKinds::libraryCalls;

RecordingKinds::RecordingKinds(bool software)
    : replaced_{registerRendererKind(RendererFamily::software, &recordingSoftware),
                registerRendererKind(RendererFamily::openGL, &all),
                registerRendererKind(RendererFamily::quartz, &basics)} {
    if (!software)
        registerRendererKind(RendererFamily::software, replaced_[0]);
    libraryCalls.clear();
}

RecordingKinds::~RecordingKinds() {
    registerRendererKind(RendererFamily::software, replaced_[0]);
    registerRendererKind(RendererFamily::openGL, replaced_[1]);
    registerRendererKind(RendererFamily::quartz, replaced_[2]);
}

ContextHandle makeContext(const LxRectD &bounds, int32_t kind, Recorder &recorder) {
    ContextHandle gc(LxGC_CreateWithRect(bounds, bounds));
    LxGC_AddRenderer(gc.get(), kind, &recorder, nullptr);
    return gc;
}

std::string describe(const LxPath *path) {
    static constexpr char names[] = "NMLQCAP????????Z";
    std::ostringstream out = makeStream();
    readItems(*path, [&](uint32_t tag, int32_t position, int32_t) {
        out << (position == 0 ? "" : ", ") << names[tag & 15];
        for (int32_t word = 1; word < itemSize(tag); ++word)
            out << ' ' << coordinateOf(path->words[position + word]);
    });
    return out.str();
}

} // namespace lx::test
