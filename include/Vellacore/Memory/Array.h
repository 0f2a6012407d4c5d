#ifndef VELLACORE_MEMORY_ARRAY_H
#define VELLACORE_MEMORY_ARRAY_H

#include <vector>

namespace Vellacore {

// The growable array passed across every interface (vertices, indices, keys, glyph data).
template <class T>
using Array = std::vector<T>;

} // namespace Vellacore

#endif
