// SVG files that are none, or hostile.
#pragma once

#include <string>

namespace lx::test {

// `content` inside of `levels` groups.
inline std::string nestedSvg(int levels, const std::string &content) {
    std::string text = "<svg>";
    for (int i = 0; i < levels; ++i)
        text += "<g id='a'>";
    text += content;
    for (int i = 0; i < levels; ++i)
        text += "</g>";
    return text + "</svg>";
}

// Path data of ten megabytes: a move to (0, 0), and lines to and fro between (1, 1) and (2, 2).
// Under sanitizers, whose realloc copies the path each time that it grows, one megabyte.
inline std::string longPathData() {
#ifdef OXLUME_SANITIZED
    constexpr size_t length = 1'000'000;
#else
    constexpr size_t length = 10'000'000;
#endif
    std::string data = "M0 0";
    while (data.size() < length)
        data += "L1,1L2,2";
    return data;
}

// The head of a file with entities that refer to themselves and to a file.
inline const char *const hostileEntities =
    "<!DOCTYPE svg [<!ENTITY a '&a;&a;'><!ENTITY b SYSTEM 'file:///etc/passwd'>]>";

// ASCII text in UTF-16, with its mark.
inline std::string inUtf16(const std::string &text, bool bigEndian) {
    std::string wide = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char c : text) {
        if (bigEndian)
            wide += {'\0', c};
        else
            wide += {c, '\0'};
    }
    return wide;
}

} // namespace lx::test
