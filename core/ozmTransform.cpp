#include <Ozmira/ozmTransform.h>

namespace ozm {

Transform TransformConcat(const Transform& n, const Transform& m) {
    return {n.a * m.a + n.b * m.c, n.a * m.b + n.b * m.d,          n.c * m.a + n.d * m.c,
            n.c * m.b + n.d * m.d, n.tx * m.a + n.ty * m.c + m.tx, n.tx * m.b + n.ty * m.d + m.ty};
}

} // namespace ozm
