#include "blend/VectorForms.h"

#include "foundation/VectorLevel.h"

namespace lx {
namespace baseline {
const VectorForms &levelForms();
}
namespace avx2 {
const VectorForms &levelForms();
}

const VectorForms &vectorForms() {
    using Forms = const VectorForms &(*)();
    static constexpr Forms forms[] = LX_VECTOR_TABLE(levelForms);
    return forms[vectorLevelIndex()]();
}

} // namespace lx
