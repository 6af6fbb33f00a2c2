#include "gc/renderers/Spans.h"

#include "foundation/VectorLevel.h"

namespace lx {

namespace baseline {
const SpanFunctions *spans();
}
namespace avx2 {
const SpanFunctions *spans();
}

const SpanFunctions &spanFunctions() {
    static constexpr const SpanFunctions *(*levels[])() = LX_VECTOR_TABLE(spans);
    return *levels[vectorLevelIndex()]();
}

} // namespace lx
