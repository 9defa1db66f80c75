/// @file
/// Whole files for the DOM.

#pragma once

#include <platform/xml/detail/DomBuffer.h>

/// Reads a whole file; 0, or the system's error number.
int ReadDomFile(const char* path, DomBuffer& content);
