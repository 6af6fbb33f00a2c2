// Qt 5's raster engine beside ours, where its development package is installed.

#include <cstring>

#include <QImage>
#include <QPainter>

#include "bench/blend/Measure.h"
#include "bench/blend/Peers.h"

namespace bench {
namespace {

using lx::Mode;

struct Operator {
    Mode mode;
    QPainter::CompositionMode value;
};

constexpr Operator operators[] = {
    {Mode::clear, QPainter::CompositionMode_Clear},
    {Mode::src, QPainter::CompositionMode_Source},
    {Mode::srcOver, QPainter::CompositionMode_SourceOver},
    {Mode::dstOver, QPainter::CompositionMode_DestinationOver},
    {Mode::srcIn, QPainter::CompositionMode_SourceIn},
    {Mode::dstIn, QPainter::CompositionMode_DestinationIn},
    {Mode::srcOut, QPainter::CompositionMode_SourceOut},
    {Mode::dstOut, QPainter::CompositionMode_DestinationOut},
    {Mode::multiply, QPainter::CompositionMode_Multiply},
    {Mode::screen, QPainter::CompositionMode_Screen},
    {Mode::overlay, QPainter::CompositionMode_Overlay},
    {Mode::dodge, QPainter::CompositionMode_ColorDodge},
    {Mode::burn, QPainter::CompositionMode_ColorBurn},
    {Mode::add, QPainter::CompositionMode_Plus},
    {Mode::difference, QPainter::CompositionMode_Difference},
    {Mode::darken, QPainter::CompositionMode_Darken},
    {Mode::lighten, QPainter::CompositionMode_Lighten},
    {Mode::softLight, QPainter::CompositionMode_SoftLight},
    {Mode::hardLight, QPainter::CompositionMode_HardLight},
};

const Operator *find(Mode mode) {
    for (const Operator &row : operators) {
        if (row.mode == mode)
            return &row;
    }
    return nullptr;
}

class Qt5 : public Peer {
public:
    explicit Qt5(int size) : a_(imageOf(size, 1)), b_(imageOf(size, 2)) {}
    const char *name() const override { return "Qt"; }
    bool has(Mode mode, bool masked) const override { return !masked && find(mode) != nullptr; }
    void paint(Mode mode, bool) override {
        QPainter painter(&a_);
        painter.setCompositionMode(find(mode)->value);
        painter.drawImage(0, 0, b_);
    }

private:
    static QImage imageOf(int size, unsigned seed) {
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        const auto side = static_cast<size_t>(size);
        std::memcpy(image.bits(), makePixels(side * side, 4, seed, true).data(), 4 * side * side);
        return image;
    }

    QImage a_, b_;
};

} // namespace

std::unique_ptr<Peer> makeQtPeer(int size) {
    return std::make_unique<Qt5>(size);
}

} // namespace bench
