// A table of all modes, RGBA onto RGBA in place, beside memcpy of the same bytes and beside the operators of
// the same name of pixman, cairo and Qt; then masks and opacities, the cells, and plain loops that the
// compiler makes vectors of.
//
//     bench_blend [--table] [SIZE...]        sides of square images, by default 256 and 1024
//
// With --table all is printed as Markdown. Read ratios, and only within one run. The peers blend
// premultiplied pixels, so their arithmetic is not ours: their operators multiply both alphas in, and ours
// mix straight colours by one weight.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <oxlume/LxBlend.h>

#include "bench/blend/Measure.h"
#include "bench/blend/Peers.h"
#include "bench/blend/PlainLoops.h"
#include "blend/Mode.h"
#include "foundation/VectorLevel.h"

using namespace bench;
using lx::Mode;

namespace {

bool printsMarkdown = false;

using Row = std::vector<std::string>;

void printRow(const Row &row) {
    for (size_t i = 0; i < row.size(); ++i) {
        if (printsMarkdown)
            std::printf("%s%s%s", i == 0 ? "| " : " | ", row[i].c_str(), i + 1 == row.size() ? " |\n" : "");
        else
            std::printf(i == 0 ? "%-26s" : "%10s", row[i].c_str());
    }
    if (!printsMarkdown)
        std::printf("\n");
    std::fflush(stdout);
}

void printHead(const char *title, const Row &columns) {
    std::printf(printsMarkdown ? "\n### %s\n\n" : "\n%s\n", title);
    printRow(columns);
    if (printsMarkdown) {
        Row line(columns.size(), "---:");
        line[0] = "---";
        printRow(line);
    }
}

std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, value < 100 ? "%.2f" : "%.0f", value);
    return text;
}

struct Fastest {
    double rate = 0;
    const char *name = "";
};

class Bench {
public:
    explicit Bench(int size)
        : size_(size), a_(makePixels(count(), 4, 1)), b_(makePixels(count(), 4, 2)),
          other_(makePixels(count(), 4, 4)), mask_(makePixels(count(), 1, 3)), peers_(makePeers(size)) {}

    double copying() {
        return rateOf(count(), [&] {
            std::memcpy(a_.data(), b_.data(), 4 * count());
            asm volatile("" ::"r"(a_.data()) : "memory");
        });
    }

    double plainLoop(Mode mode) {
        const auto choose =
            lx::vectorLevel() == lx::VectorLevel::avx2 ? avx2::plainLoop : baseline::plainLoop;
        const PlainLoop loop = choose(mode);
        if (loop == nullptr)
            return 0;
        return rateOf(count(), [&] {
            loop(reinterpret_cast<uint32_t *>(a_.data()), reinterpret_cast<const uint32_t *>(b_.data()),
                 count());
        });
    }

    // In place where the layouts of the result and of a are one, but for the form with three images.
    double ours(const LxBlend &blend, bool masked = false, int out = 2, int a = 2, int b = 2,
                bool threeImages = false) {
        const auto kernel = LxBlend_SelectMapBlendFunction(out, a, b);
        const auto strideOf = [&](int type) { return size_ * (type == 0 ? 1 : type == 1 ? 3 : 4); };
        uint8_t *const to = out == a && !threeImages ? a_.data() : other_.data();
        const auto side = static_cast<uint32_t>(size_);
        return rateOf(count(), [&] {
            kernel(&blend, to, a_.data(), b_.data(), masked ? mask_.data() : nullptr, strideOf(out),
                   strideOf(a), strideOf(b), size_, side, side);
        });
    }

    Fastest fastestPeer(Mode mode, bool masked = false) {
        Fastest fastest;
        for (const auto &peer : peers_) {
            if (!peer->has(mode, masked))
                continue;
            const double rate = rateOf(count(), [&] { peer->paint(mode, masked); });
            if (rate > fastest.rate)
                fastest = {rate, peer->name()};
        }
        return fastest;
    }

private:
    size_t count() const { return static_cast<size_t>(size_) * static_cast<size_t>(size_); }

    const int size_;
    std::vector<uint8_t> a_, b_, other_, mask_;
    std::vector<std::unique_ptr<Peer>> peers_;
};

LxBlend blendOf(Mode mode, int opacity = 255) {
    return LxBlend(static_cast<int32_t>(mode), opacity);
}

void printModes(Bench &bench, const char *title) {
    const double copying = bench.copying();
    std::printf(
        printsMarkdown
            ? "\n## %s\n\nmemcpy: %.0f MP/s. Peers blend premultiplied pixels, so the arithmetic differs.\n"
            : "\n%s; memcpy: %.0f MP/s\n",
        title, copying);
    printHead("Modes, RGBA onto RGBA", {"mode", "MP/s", "of memcpy", "of peer", "peer"});
    const auto print = [&](const std::string &name, double rate, const Fastest &peer) {
        Row row = {name, number(rate), number(rate / copying), "", ""};
        if (peer.rate > 0) {
            row[3] = number(rate / peer.rate);
            row[4] = peer.name;
        }
        printRow(row);
    };
    for (int mode = 0; mode < lx::modeCount; ++mode) {
        const auto m = static_cast<Mode>(mode);
        print(LxBlend_ModeName(mode), bench.ours(blendOf(m)), bench.fastestPeer(m));
    }
    const Fastest over = bench.fastestPeer(Mode::srcOver),
                  overMasked = bench.fastestPeer(Mode::srcOver, true);
    print("SrcOver, half", bench.ours(blendOf(Mode::srcOver, 128)), over);
    print("SrcOver, mask", bench.ours(blendOf(Mode::srcOver), true), overMasked);
    print("SrcOver, half, mask", bench.ours(blendOf(Mode::srcOver, 128), true), overMasked);
    print("Multiply, mask", bench.ours(blendOf(Mode::multiply), true),
          bench.fastestPeer(Mode::multiply, true));
    for (const Mode mode : {Mode::clear, Mode::src, Mode::srcOver, Mode::multiply}) {
        const std::string name = std::string(LxBlend_ModeName(static_cast<int32_t>(mode))) + ", three images";
        print(name, bench.ours(blendOf(mode), false, 2, 2, 2, true), {});
    }
}

void printPlainLoops(Bench &bench) {
    printHead("Plain loops", {"mode", "loop MP/s", "ours", "of loop"});
    for (int mode = 0; mode < lx::modeCount; ++mode) {
        const auto m = static_cast<Mode>(mode);
        const double loop = bench.plainLoop(m);
        if (loop == 0)
            continue;
        const double ours = bench.ours(blendOf(m));
        printRow({LxBlend_ModeName(mode), number(loop), number(ours), number(ours / loop)});
    }
}

// Every cell beside the one of four bytes, which is in place or not as the cell is.
void printCells(Bench &bench) {
    constexpr Mode modes[] = {Mode::srcOver, Mode::multiply};
    constexpr int opacities[] = {255, 128};
    Row columns = {"out, a, b of the cell"};
    double inPlace[2][2], apart[2][2];
    for (size_t m = 0; m < 2; ++m) {
        for (size_t o = 0; o < 2; ++o) {
            columns.push_back(std::string(m == 0 ? "Src" : "Mult") + ' ' + std::to_string(opacities[o]));
            columns.push_back("of RGBA");
            inPlace[m][o] = bench.ours(blendOf(modes[m], opacities[o]));
            apart[m][o] = bench.ours(blendOf(modes[m], opacities[o]), false, 2, 2, 2, true);
        }
    }
    printHead("Cells", columns);
    for (int cell = 0; cell < 27; ++cell) {
        const int out = cell / 9, a = cell / 3 % 3, b = cell % 3;
        static constexpr const char *names[] = {"A", "RGB", "RGBA"};
        Row row = {std::string(names[out]) + ", " + names[a] + ", " + names[b]};
        for (size_t m = 0; m < 2; ++m) {
            for (size_t o = 0; o < 2; ++o) {
                LxBlend blend = blendOf(modes[m], opacities[o]);
                if (out == 0 && a == 0 && b == 2)
                    LxBlend_SetChannel(&blend, 5); // its rgba channel draws nothing
                const double rate = bench.ours(blend, false, out, a, b);
                row.push_back(number(rate));
                row.push_back(number(rate / (out == a ? inPlace : apart)[m][o]));
            }
        }
        printRow(row);
    }
}

void printAll(int size) {
    Bench bench(size);
    const std::string side = std::to_string(size);
    printModes(bench, (side + " x " + side + ", " + lx::vectorLevelName(lx::vectorLevel())).c_str());
    printPlainLoops(bench);
    printCells(bench);
}

} // namespace

int main(int argc, char **argv) {
    if (const char *name = std::getenv("OXLUME_VECTOR_LEVEL");
        name != nullptr && std::strcmp(name, "baseline") == 0)
        lx::capVectorLevel(lx::VectorLevel::baseline);
    std::vector<int> sizes;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--table") == 0) {
            printsMarkdown = true;
            continue;
        }
        const int size = std::atoi(argv[i]);
        if (size < 1 || size > 16384) {
            std::fprintf(stderr, "bench_blend [--table] [SIZE...]: sizes are 1 to 16384\n");
            return 1;
        }
        sizes.push_back(size);
    }
    if (sizes.empty())
        sizes = {256, 1024};
    for (const int size : sizes)
        printAll(size);
    return 0;
}
