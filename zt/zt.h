/// @file
/// The whole library in one include.

#pragma once
