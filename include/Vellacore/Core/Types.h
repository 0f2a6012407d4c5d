#ifndef VELLACORE_CORE_TYPES_H
#define VELLACORE_CORE_TYPES_H

#include <cstdint>

namespace Vellacore {

// The engine's integer names; sizes are the same on the handheld and on a PC.
typedef std::int32_t I32;
typedef std::uint32_t U32;
typedef std::int16_t I16;
typedef std::uint16_t U16;
typedef std::uint8_t U8;
typedef std::int64_t I64;
typedef std::uint64_t U64;

// Unsigned-to-signed narrowing is modular on every compiler the engine supports (and from C++20
// on by definition); going through it keeps wrap-around arithmetic free of signed overflow.
inline constexpr I32 WrapI32(U32 v) { return static_cast<I32>(v); }

} // namespace Vellacore

#endif
