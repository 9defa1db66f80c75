/// @file
/// What the records of a document have in common.

#pragma once

#include <cstdint>

#include <platform/xml/Dom.h>
#include <zt/persist/PCExBase.h>

namespace section {

/// Throws `Failure` that names the element `name` of the current one as missing or damaged.
[[noreturn]] void FailAt(const ZT::PCExBase& pc, const char* name);

/// Opens a container in both directions; it is closed with `PopElement(false)`.
void OpenElement(ZT::PCExBase& pc, const char* name);

/// A number of things. The cursor makes 0 of a missing one, which is a number like others;
/// here it is a failure.
void PersistCount(ZT::PCExBase& pc, const char* name, ZT::uint64& count);

/// Whether the child "Dt" of `block` has the hexadecimal digits of `bytes` bytes, and nothing
/// else. A block without bytes has no such child.
bool HasDigits(const IXMLDOMElementPtr& block, std::uint64_t bytes);

}  // namespace section
