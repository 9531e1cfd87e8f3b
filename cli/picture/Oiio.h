#pragma once

/// What reading and writing pictures share of OpenImageIO. For ReadPicture.cpp and
/// WritePicture.cpp alone.

#include "cli/picture/Picture.h"

#include <OpenImageIO/imageio.h>

#include <string>

namespace zel {

struct PictureAttributes {
    OIIO::ImageSpec spec;
};

/// A depth in words, as the library names its samples, and as files say it.
struct DepthFacts {
    Depth depth;
    const char* name;
    OIIO::TypeDesc::BASETYPE type;  // between the library and us; 10 and 12 bits widened
    int bits;                       // of a sample in the file
};

const DepthFacts& FactsOf(Depth depth);

/// Error texts of the library may have several lines, the first of which says most.
std::string FirstLine(const std::string& text);

/// The library works in the thread that calls it: threads of its own make a picture no
/// faster, and when memory runs out in one of them, it goes on with what is gone already.
void UseOneThread();

}  // namespace zel
