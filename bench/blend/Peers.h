// Other libraries' image surfaces, square, of premultiplied pixels: what they make of the modes whose names
// they share.
#pragma once

#include <memory>
#include <vector>

#include "blend/Mode.h"

namespace bench {

class Peer {
public:
    Peer() = default;
    Peer(const Peer &) = delete;
    Peer &operator=(const Peer &) = delete;
    virtual ~Peer() = default;
    virtual const char *name() const = 0;

    // Whether there is an operator of that name, with a mask or without.
    virtual bool has(lx::Mode mode, bool masked) const = 0;
    virtual void paint(lx::Mode mode, bool masked) = 0;
};

// Those that the program was built with.
std::vector<std::unique_ptr<Peer>> makePeers(int size);

std::unique_ptr<Peer> makePixmanPeer(int size);
std::unique_ptr<Peer> makeCairoPeer(int size);
std::unique_ptr<Peer> makeQtPeer(int size);

} // namespace bench
