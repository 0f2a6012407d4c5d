#ifndef VELLACORE_CORE_PATH_H
#define VELLACORE_CORE_PATH_H

#include <string>

namespace Vellacore {

// Path splitting for asset names. A forward slash anywhere wins; only a path without one is split
// at its last backslash, so "a\b/c" gives "c" and "a\b/", and "a\b" gives "b" and "a\".

// Everything after the separator; the path itself when it has none.
std::string ExtractFilename(std::string path);
// Everything up to and including the separator; the path itself when it has none.
std::string ExtractFilepath(std::string path);
// The file name without its extension (the text after its last dot is removed).
std::string ExtractFilenameExt(std::string path);

} // namespace Vellacore

#endif
