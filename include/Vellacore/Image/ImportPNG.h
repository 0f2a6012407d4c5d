#ifndef VELLACORE_IMAGE_IMPORTPNG_H
#define VELLACORE_IMAGE_IMPORTPNG_H

#include "Vellacore/Image/Image.h"

#include <string>

namespace Vellacore {
namespace Import {

// Loads a PNG of any colour type and bit depth as 8-bit channels: palettes and grey below 8 bits
// are expanded, 16-bit samples keep their high byte, transparency chunks become an alpha channel.
// With flip set the rows are stored bottom row first, the order GL texture coordinates expect.
// Returns a new image (reference count 0), or null after one error line in the log.
Image* ImportPNG(std::string path, bool flip);

} // namespace Import
} // namespace Vellacore

#endif
