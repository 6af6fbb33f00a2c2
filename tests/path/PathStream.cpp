#include "tests/path/PathStream.h"

#include <algorithm>
#include <ostream>

#include <oxlume/LxMem.h>

namespace lx::test {

PathHandle Stream::path() const {
    PathHandle path = emptyPath();
    ensureRoom(*path, static_cast<int64_t>(words.size()));
    std::copy(words.begin(), words.end(), path->words);
    path->count = static_cast<int32_t>(words.size());
    return path;
}

std::ostream &operator<<(std::ostream &out, const Stream &stream) {
    static constexpr const char *names[] = {"nothing", "move", "line", "qcurve", "curve", "arc"};
    static constexpr int numbers[] = {0, 2, 2, 4, 6, 5};
    static constexpr int words[] = {0, 0, 0, 0, 0, 2};
    for (size_t i = 0; i < stream.words.size();) {
        const uint32_t tag = stream.words[i++];
        if (tag == 15) {
            out << "\n  close";
        } else if (tag < std::size(names)) {
            out << "\n  " << names[tag];
            for (int k = 0; k < numbers[tag] && i < stream.words.size(); ++k)
                out << ' ' << std::bit_cast<float>(stream.words[i++]);
            for (int k = 0; k < words[tag] && i < stream.words.size(); ++k)
                out << ' ' << stream.words[i++];
        } else {
            out << "\n  word " << tag;
        }
    }
    return out << '\n';
}

} // namespace lx::test
