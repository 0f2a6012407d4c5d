#ifndef VELLACORE_CORE_ASSERT_H
#define VELLACORE_CORE_ASSERT_H

namespace Vellacore {

// The engine's fatal check: logs "[E] file(line)expression" and aborts. Never returns.
[[noreturn]] void Assert(char const* expression, char const* file, int line);

} // namespace Vellacore

#endif
