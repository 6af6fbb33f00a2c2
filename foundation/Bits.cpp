// Utilities on raw bytes and on arrays of bits.

#include <cstring>

#include <oxlume/LxMem.h>

namespace {

constexpr uint8_t bitOf(uint32_t n) {
    return static_cast<uint8_t>(0x80u >> (n % 8));
}

const uint8_t &byteOf(const void *buffer, uint32_t n) {
    return static_cast<const uint8_t *>(buffer)[n / 8];
}

uint8_t &byteOf(void *buffer, uint32_t n) {
    return static_cast<uint8_t *>(buffer)[n / 8];
}

} // namespace

void LxMemset(void *destination, int32_t value, uint32_t length) {
    if (length != 0)
        std::memset(destination, value, length);
}

void LxMemInvert(void *buffer, uint32_t length) {
    auto *bytes = static_cast<uint8_t *>(buffer);
    // The compiler makes vectors of this; whatever the address and length, the bytes come out the same.
    for (uint32_t i = 0; i < length; ++i)
        bytes[i] = static_cast<uint8_t>(~bytes[i]);
}

// On purpose: two reserved entry points without effect, kept so that clients link.
int32_t LxMemCopy(void *, const void *, uint32_t) {
    return 0;
}

int32_t LxMemIsEqual(const void *, const void *, uint32_t) {
    return 0;
}

int32_t LxTestBit(const void *buffer, uint32_t n) {
    return (byteOf(buffer, n) & bitOf(n)) != 0;
}

void LxSetBit(void *buffer, uint32_t n) {
    byteOf(buffer, n) |= bitOf(n);
}

void LxClearBit(void *buffer, uint32_t n) {
    byteOf(buffer, n) &= static_cast<uint8_t>(~bitOf(n));
}

void LxInvertBit(void *buffer, uint32_t n) {
    byteOf(buffer, n) ^= bitOf(n);
}
