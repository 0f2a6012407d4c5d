#ifndef VELLACORE_VELLACORE_H
#define VELLACORE_VELLACORE_H

// The whole public interface of the engine.

#include "Vellacore/Core/Types.h"
#include "Vellacore/Core/Assert.h"
#include "Vellacore/Core/Logger.h"
#include "Vellacore/Core/Object.h"
#include "Vellacore/Core/Path.h"

#include "Vellacore/Memory/Array.h"
#include "Vellacore/Memory/Memory.h"
#include "Vellacore/Memory/Ptr.h"
#include "Vellacore/Memory/TypeInfo.h"

#include "Vellacore/Math/Fixed.h"

#endif
