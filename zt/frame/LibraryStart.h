/// @file
/// The start of the library in a host.

#pragma once

#include <zt/frame/ZT.h>

namespace ZT {

/// Joins the library to the host's chain of modules, in which classes and resources
/// are looked up by name. A host calls it once after loading the library; further
/// calls do nothing. Loading alone does not join the chain.
///
/// Not synchronised: a host calls it from one thread.
ZT_API void InitBedrockDll();

}  // namespace ZT
