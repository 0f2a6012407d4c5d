#ifndef VELLACORE_TESTS_ALLOCATIONCOUNTER_H
#define VELLACORE_TESTS_ALLOCATIONCOUNTER_H

namespace VellacoreTest {

// Calls of the global operator new (every form but the aligned ones) since the program started,
// from the tests and the engine alike. A memory checker that brings its own operator new stops the
// count; a test can tell by seeing no growth where it knows there is some.
unsigned long AllocationCount();

} // namespace VellacoreTest

#endif
