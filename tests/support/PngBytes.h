// PNG files made byte by byte, independently of the program's own writer, broken ones included.
#pragma once

#include <cstdint>
#include <string>
#include <vector>
#include <zlib.h>

namespace lx::test {

inline std::string bigEndian(uint32_t value) {
    return {static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
            static_cast<char>(value)};
}

inline std::string pngChunk(const std::string &name, const std::string &content) {
    const std::string body = name + content;
    const uLong sum = crc32(0, reinterpret_cast<const Bytef *>(body.data()), static_cast<uInt>(body.size()));
    return bigEndian(static_cast<uint32_t>(content.size())) + body + bigEndian(static_cast<uint32_t>(sum));
}

inline std::string pngSignature() {
    return std::string("\x89PNG\r\n\x1a\n", 8);
}

inline std::string pngHeader(uint32_t width, uint32_t height, int depth, int colourType) {
    return pngChunk("IHDR", bigEndian(width) + bigEndian(height) + static_cast<char>(depth) +
                                static_cast<char>(colourType) + std::string(3, '\0'));
}

inline std::string pngData(const std::string &rows) {
    std::vector<Bytef> packed(compressBound(rows.size()));
    uLongf size = packed.size();
    compress(packed.data(), &size, reinterpret_cast<const Bytef *>(rows.data()), rows.size());
    return pngChunk("IDAT", std::string(reinterpret_cast<const char *>(packed.data()), size));
}

// A file of unfiltered rows, each without its filter byte; `between` holds chunks before the pixels.
inline std::string pngFile(uint32_t width, uint32_t height, int depth, int colourType,
                           const std::vector<std::string> &rows, const std::string &between = "") {
    std::string all;
    for (const std::string &row : rows)
        all += '\0' + row;
    return pngSignature() + pngHeader(width, height, depth, colourType) + between + pngData(all) +
           pngChunk("IEND", "");
}

} // namespace lx::test
