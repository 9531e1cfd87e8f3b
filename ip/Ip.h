#pragma once

/// The pixel-format image library. Every name is global and has C++ linkage.
///
/// Conventions of all families:
///   frames     address of row 0, signed bytes from row to row, width and height
///              in pixels; any alignment; frames may exceed 2 GiB
///   rows       `scan` or `dst`, `src`: address of the row's first byte
///   words      little-endian unless a layout says otherwise
///   checks     none: the caller owns every buffer and its size
///   threads    any, at once on disjoint destinations, after IpInitialize()

#include "ip/IpCopy.h"
#include "ip/IpFill.h"
#include "ip/IpLut.h"
#include "ip/IpPlanar.h"
#include "ip/IpScale.h"
#include "ip/IpTables.h"
#include "ip/IpTest.h"
#include "ip/IpTransform.h"
