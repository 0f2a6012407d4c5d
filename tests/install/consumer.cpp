// Smallest program that uses an installed Vellacore: the umbrella header, and a call that has to be
// resolved in libvellacore.so (fixed-point division goes through fpdiv).
#include <Vellacore/Vellacore.h>

#include <cstdio>

int main() {
    using Vellacore::Fixed;
    const Fixed a(3);
    const Fixed b(2);
    const Fixed q = a / b;
    std::printf("vellacore consumer: 3 / 2 = raw %ld (%d + %ld/65536)\n",
                static_cast<long>(q.GetRaw()), q.ToInt(), static_cast<long>(q.GetRaw() & 0xFFFF));
    return q.GetRaw() == 98304 ? 0 : 1;
}
