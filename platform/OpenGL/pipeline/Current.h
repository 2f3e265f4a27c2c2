// The context that OpenGL's functions are called for.
#pragma once

#include "FixedFunction.h"

namespace opengl {

/// Defined by who links the functions.
FixedFunction& Current();

} // namespace opengl
