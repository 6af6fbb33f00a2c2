#include <cstring>
#include <vector>

#include <gtest/gtest.h>
#include <oxlume/LxMem.h>

#include "tests/support/Random.h"

TEST(Bits, BitZeroIsTheTopBitOfByteZero) {
    uint8_t buffer[2] = {};
    LxSetBit(buffer, 0);
    EXPECT_EQ(buffer[0], 0x80);
    EXPECT_EQ(buffer[1], 0);
}

TEST(Bits, BitFifteenIsTheLowBitOfByteOne) {
    uint8_t buffer[2] = {};
    LxSetBit(buffer, 15);
    EXPECT_EQ(buffer[0], 0);
    EXPECT_EQ(buffer[1], 0x01);
}

TEST(Bits, EachOperationTouchesItsBitOnly) {
    for (uint32_t n = 0; n < 32; ++n) {
        const uint32_t byte = n / 8;
        const uint8_t bit = static_cast<uint8_t>(1 << (7 - n % 8));
        for (const uint8_t fill : {0x00, 0xFF, 0x5A}) {
            uint8_t buffer[4];
            const auto expectByte = [&](uint8_t expected) {
                for (uint32_t i = 0; i < 4; ++i)
                    EXPECT_EQ(buffer[i], i == byte ? expected : fill) << "bit " << n << " byte " << i;
            };
            std::memset(buffer, fill, 4);
            EXPECT_EQ(LxTestBit(buffer, n), (fill & bit) != 0 ? 1 : 0);
            expectByte(fill);
            LxSetBit(buffer, n);
            expectByte(fill | bit);
            std::memset(buffer, fill, 4);
            LxClearBit(buffer, n);
            expectByte(fill & ~bit);
            std::memset(buffer, fill, 4);
            LxInvertBit(buffer, n);
            expectByte(fill ^ bit);
        }
    }
}

TEST(Bits, BitNumbersAreUnsigned) {
    std::vector<uint8_t> buffer((1u << 29), 0);
    LxSetBit(buffer.data(), 0xFFFFFFFF);
    EXPECT_EQ(buffer.back(), 0x01);
    EXPECT_EQ(LxTestBit(buffer.data(), 0xFFFFFFFF), 1);
}

TEST(MemInvert, ComplementsEveryByteAtAnyAddressAndLength) {
    lx::test::Random random;
    for (uint32_t offset = 0; offset < 5; ++offset) {
        for (const uint32_t length : {0u, 1u, 3u, 4u, 6u, 8u, 31u, 32u, 100u, 257u}) {
            std::vector<uint8_t> buffer(offset + length + 8);
            for (uint8_t &byte : buffer)
                byte = random.byte();
            std::vector<uint8_t> expected = buffer;
            for (uint32_t i = 0; i < length; ++i)
                expected[offset + i] = static_cast<uint8_t>(255 - expected[offset + i]);
            LxMemInvert(buffer.data() + offset, length);
            EXPECT_EQ(buffer, expected) << "offset " << offset << " length " << length;
        }
    }
}

TEST(MemInvert, LengthZeroDoesNothing) {
    uint8_t byte = 0x12;
    LxMemInvert(&byte, 0);
    LxMemInvert(nullptr, 0);
    EXPECT_EQ(byte, 0x12);
}

TEST(Memset, FillsWithTheLowByte) {
    uint8_t buffer[4] = {1, 2, 3, 4};
    LxMemset(buffer, 0x1AB, 3);
    EXPECT_EQ(buffer[0], 0xAB);
    EXPECT_EQ(buffer[2], 0xAB);
    EXPECT_EQ(buffer[3], 4);
    LxMemset(nullptr, 1, 0);
}

TEST(ReservedMemoryEntries, CopyNothingAndFindNothingEqual) {
    uint8_t a[3] = {1, 2, 3};
    const uint8_t b[3] = {7, 8, 9};
    EXPECT_EQ(LxMemCopy(a, b, 3), 0);
    EXPECT_EQ(a[0], 1);
    EXPECT_EQ(a[2], 3);
    EXPECT_EQ(LxMemIsEqual(a, a, 3), 0);
}
