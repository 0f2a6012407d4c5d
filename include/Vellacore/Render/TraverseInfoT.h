#ifndef VELLACORE_RENDER_TRAVERSEINFOT_H
#define VELLACORE_RENDER_TRAVERSEINFOT_H

#include "Vellacore/Math/Fixed.h"
#include "Vellacore/Math/Matrix4T.h"

namespace Vellacore {

// One object met by the draw traversal and the matrix that places it: the world matrix of its
// nearest Transform ancestor, or the identity the walk started from. Both pointers are plain, so
// collecting costs no reference counting; a record is valid only within the Draw() that made it.
template <class T>
struct TraverseInfoT {
    T* m_Object;
    Matrix4T<Fixed> const* m_Matrix;
};

} // namespace Vellacore

#endif
